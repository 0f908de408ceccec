#include "formats/random_lattice.h"

#include <algorithm>
#include <numeric>

namespace quorbel {
namespace {

void walk(const RandomLattice& lattice, int node, std::vector<char>& isPassed, PlainPath& path,
          std::vector<PlainPath>& paths) {
  if (node == lattice.nodeCount - 1) {
    paths.push_back(path);
    return;
  }
  isPassed[static_cast<std::size_t>(node)] = true;
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const RandomLink& link = lattice.links[i];
    if (link.start != node || isPassed[static_cast<std::size_t>(link.end)]) continue;
    const double before = path.total;
    path.links.push_back(i);
    path.total += lattice.total(link);
    walk(lattice, link.end, isPassed, path, paths);
    path.links.pop_back();
    path.total = before;
  }
  isPassed[static_cast<std::size_t>(node)] = false;
}

}  // namespace

double RandomLattice::total(const RandomLink& link) const {
  return link.acoustic + languageScale * link.language + (link.isNull ? 0.0 : wordPenalty);
}

std::string RandomLattice::text() const {
  std::string text =
      "start=0 end=" + std::to_string(nodeCount - 1) +
      "\nlmscale=" + std::to_string(languageScale) + " wdpenalty=" + std::to_string(wordPenalty) +
      "\nN=" + std::to_string(nodeCount) + " L=" + std::to_string(links.size()) + "\n";
  for (int node = 0; node < nodeCount; ++node)
    text += "I=" + std::to_string(node) + " t=" + std::to_string(node) + "\n";
  for (const RandomLink& link : links)
    text += "J=" + std::to_string(link.id) + " S=" + std::to_string(link.start) +
            " E=" + std::to_string(link.end) +
            " W=" + (link.isNull ? "!NULL" : "w" + std::to_string(link.id)) +
            " a=" + std::to_string(link.acoustic) + " l=" + std::to_string(link.language) + "\n";
  return text;
}

RandomLattice randomLattice(std::mt19937& random, const RandomOptions& options) {
  const auto pick = [&](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  // Numbers with few digits, so that their text says them exactly.
  const auto score = [&] {
    const int value = options.hasTies ? -100 * pick(0, 2) : -pick(0, 400);
    return (options.hasPositive && pick(0, 3) == 0 ? -value : value) / 100.0;
  };
  RandomLattice lattice;
  lattice.nodeCount = pick(2, 7);
  lattice.languageScale = options.hasTies ? 1.0 : pick(0, 40) / 10.0;
  lattice.wordPenalty = options.hasTies ? 0.0 : -pick(0, 20) / 10.0;
  const int count = pick(1, 14);
  std::vector<int> ids(static_cast<std::size_t>(count) + 8);
  std::iota(ids.begin(), ids.end(), 0);
  std::shuffle(ids.begin(), ids.end(), random);
  const auto add = [&](int start, int end) {
    lattice.links.push_back(
        {ids[lattice.links.size()], start, end, pick(0, 4) == 0, score(), score()});
  };
  for (int node = 0; node + 1 < lattice.nodeCount;) {  // one path there is
    const int next = pick(node + 1, lattice.nodeCount - 1);
    add(node, next);
    node = next;
  }
  while (static_cast<int>(lattice.links.size()) < count) {
    int start = pick(0, lattice.nodeCount - 2);
    int end = pick(1, lattice.nodeCount - 1);
    if (!options.isCyclic) {
      start = std::min(start, end - 1);
    } else if (end == lattice.nodeCount - 1 && pick(0, 2) > 0) {
      end = pick(1, lattice.nodeCount - 1);
    }
    add(start, end);
  }
  std::shuffle(lattice.links.begin(), lattice.links.end(), random);
  return lattice;
}

std::vector<PlainPath> allPaths(const RandomLattice& lattice) {
  std::vector<char> isPassed(static_cast<std::size_t>(lattice.nodeCount), false);
  std::vector<PlainPath> paths;
  PlainPath path;
  walk(lattice, 0, isPassed, path, paths);
  return paths;
}

}  // namespace quorbel
