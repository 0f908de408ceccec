#include "measures/best_ways.h"

#include <algorithm>
#include <queue>

namespace quorbel {
namespace {

/// Links lead to later nodes and are sorted by where they start: those behind come first.
void measureFromBehind(const WordLattice& lattice, const std::vector<double>& scores,
                       std::vector<Distance>& toEnd) {
  for (std::size_t i = lattice.links.size(); i-- > 0;) {
    const WordLink& link = lattice.links[i];
    Distance& distance = toEnd[slot(link.start)];
    distance = std::min(distance, through(scores[i], toEnd[slot(link.end)]));
  }
}

/// Dijkstra's algorithm, from the end backwards.
void measureAround(const WordLattice& lattice, const std::vector<double>& scores,
                   std::vector<Distance>& toEnd) {
  struct Reached {
    Distance distance;
    int node;
    bool operator<(const Reached& other) const { return other.distance < distance; }
  };
  const std::vector<std::vector<std::size_t>> entering = enteringLinks(lattice);
  std::priority_queue<Reached> reached;
  reached.push({toEnd.back(), static_cast<int>(toEnd.size()) - 1});
  while (!reached.empty()) {
    const Reached nearest = reached.top();
    reached.pop();
    if (toEnd[slot(nearest.node)] < nearest.distance) continue;  // found shorter since
    for (const std::size_t i : entering[slot(nearest.node)]) {
      const int start = lattice.links[i].start;
      const Distance distance = through(scores[i], nearest.distance);
      if (!(distance < toEnd[slot(start)])) continue;
      toEnd[slot(start)] = distance;
      reached.push({distance, start});
    }
  }
}

}  // namespace

std::vector<std::vector<std::size_t>> enteringLinks(const WordLattice& lattice) {
  std::vector<std::vector<std::size_t>> entering(lattice.nodes.size());
  for (std::size_t i = 0; i < lattice.links.size(); ++i)
    entering[slot(lattice.links[i].end)].push_back(i);
  return entering;
}

BestWays bestWaysToEnd(const WordLattice& lattice, const std::vector<double>& scores) {
  BestWays ways;
  ways.toEnd.resize(lattice.nodes.size());
  ways.toEnd.back() = {0.0, 0};
  const auto measure = lattice.isCyclic ? measureAround : measureFromBehind;
  measure(lattice, scores, ways.toEnd);

  ways.nextLink.assign(lattice.nodes.size(), -1);
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const WordLink& link = lattice.links[i];
    const Distance distance = through(scores[i], ways.toEnd[slot(link.end)]);
    if (distance.cost == std::numeric_limits<double>::infinity()) continue;
    if (ways.nextLink[slot(link.start)] < 0 && !(ways.toEnd[slot(link.start)] < distance))
      ways.nextLink[slot(link.start)] = static_cast<int>(i);
  }
  return ways;
}

}  // namespace quorbel
