#include "measures/prune.h"

#include <fst/connect.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "measures/best_paths.h"
#include "measures/fst_graph.h"
#include "measures/posteriors.h"

namespace quorbel {
namespace {

using Choice = std::vector<char>;  ///< of each link, whether it is kept

std::size_t sizeOf(const Choice& choice) {
  return static_cast<std::size_t>(std::count(choice.begin(), choice.end(), true));
}

/// Finds the best path and its total; refuses what cannot be pruned.
std::string chooseBestPath(const WordLattice& lattice, Choice& choice, double& total) {
  if (lattice.isCyclic)
    return "the network has a cycle, so its links have no posterior and it cannot be pruned";
  std::vector<LatticePath> paths;
  std::string error = findBestPaths(lattice, *scoresNamed(lattice, kTotalName), 1, paths);
  if (!error.empty()) return error;
  choice.assign(lattice.links.size(), false);
  for (const std::size_t link : paths[0].links) choice[link] = true;
  total = paths[0].score;
  return "";
}

/// The chosen links that lie on a path from start to end of chosen ones.
Choice connected(const WordLattice& lattice, const Choice& choice) {
  const std::vector<double> noScores(lattice.links.size(), 0.0);
  fst::VectorFst<CostArc> graph = fstOf<CostArc>(lattice, noScores, choice);
  fst::Connect(&graph);
  Choice kept(lattice.links.size(), false);
  for (int state = 0; state < graph.NumStates(); ++state)
    for (fst::ArcIterator<fst::VectorFst<CostArc>> arc(graph, state); !arc.Done(); arc.Next())
      kept[static_cast<std::size_t>(arc.Value().ilabel) - 1] = true;
  return kept;
}

/// The links from the likeliest on, of equally likely ones in the order of their ids. Sums of the
/// same numbers in another order differ in their last digits: what differs by no more is equal.
/// `best` is the total of the best path, divided as totals are for posteriors, which says how large
/// such sums are.
std::vector<std::size_t> likeliestFirst(const WordLattice& lattice, double best) {
  constexpr double kNoise = 1e-12;
  std::vector<std::size_t> order(lattice.links.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto posterior = [&](std::size_t link) { return lattice.links[link].logPosterior; };
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return posterior(a) > posterior(b); });
  const auto byId = [&](std::size_t a, std::size_t b) {
    return lattice.links[a].id < lattice.links[b].id;
  };
  for (std::size_t begin = 0, end = 0; begin < order.size(); begin = end) {
    for (++end; end < order.size(); ++end) {
      const double last = posterior(order[end - 1]);
      const double noise = kNoise * std::max(1.0, std::fabs(best) + std::fabs(last));
      if (last - posterior(order[end]) > noise) break;
    }
    std::sort(order.begin() + static_cast<std::ptrdiff_t>(begin),
              order.begin() + static_cast<std::ptrdiff_t>(end), byId);
  }
  return order;
}

/// Makes the lattice what the choice keeps of it.
void keep(WordLattice& lattice, const Choice& choice) {
  std::vector<char> isUsed(lattice.nodes.size(), false);
  isUsed.front() = isUsed.back() = true;
  std::vector<WordLink> links;
  for (std::size_t i = 0; i < choice.size(); ++i) {
    if (!choice[i]) continue;
    isUsed[static_cast<std::size_t>(lattice.links[i].start)] = true;
    isUsed[static_cast<std::size_t>(lattice.links[i].end)] = true;
    links.push_back(std::move(lattice.links[i]));
  }
  std::vector<int> placeOf(lattice.nodes.size(), 0);
  std::vector<WordNode> nodes;
  for (std::size_t i = 0; i < isUsed.size(); ++i) {
    if (!isUsed[i]) continue;
    placeOf[i] = static_cast<int>(nodes.size());
    nodes.push_back(lattice.nodes[i]);
  }
  for (WordLink& link : links) {
    link.start = placeOf[static_cast<std::size_t>(link.start)];
    link.end = placeOf[static_cast<std::size_t>(link.end)];
  }
  lattice.links = std::move(links);
  lattice.nodes = std::move(nodes);
  computePosteriors(lattice);
}

}  // namespace

std::string pruneToLinks(WordLattice& lattice, std::size_t count) {
  Choice best;
  double total = 0.0;
  if (std::string error = chooseBestPath(lattice, best, total); !error.empty()) return error;
  const std::vector<std::size_t> order =
      likeliestFirst(lattice, total / posteriorScale(lattice.scales));
  const auto withLikeliest = [&](std::size_t number) {
    Choice choice = best;
    for (std::size_t i = 0; i < number; ++i) choice[order[i]] = true;
    return connected(lattice, choice);
  };
  // With more links to choose from, never fewer stay: the largest number is found by halving.
  Choice kept = best;
  std::size_t fits = 0;
  std::size_t tooMany = order.size() + 1;
  while (tooMany - fits > 1) {
    const std::size_t middle = fits + (tooMany - fits) / 2;
    Choice choice = withLikeliest(middle);
    if (sizeOf(choice) <= count) {
      fits = middle;
      kept = std::move(choice);
    } else {
      tooMany = middle;
    }
  }
  keep(lattice, kept);
  return "";
}

std::string pruneToBeam(WordLattice& lattice, double beam) {
  Choice choice;
  double best = 0.0;
  if (std::string error = chooseBestPath(lattice, choice, best); !error.empty()) return error;
  const std::vector<double> scores = bestScoresThrough(lattice);
  // Sums of the same numbers in another order differ in their last digits.
  const double tolerance = 1e-9 * std::max(1.0, std::fabs(best));
  for (std::size_t i = 0; i < scores.size(); ++i)
    if (scores[i] >= best - beam - tolerance) choice[i] = true;
  keep(lattice, connected(lattice, choice));
  return "";
}

}  // namespace quorbel
