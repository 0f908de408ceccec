#include "measures/ranked_paths.h"

#include <algorithm>
#include <numeric>
#include <queue>

#include "measures/detours.h"

namespace quorbel {
namespace {

/// A path that the search knows of: one that it found, with one detour more.
struct Candidate {
  Distance length;
  int without;  ///< index of the path that was found
  Detours::Place place;

  bool operator<(const Candidate& other) const {  // the nearest is the greatest, for the queue
    return std::tie(other.length, other.without, other.place.detour) <
           std::tie(length, without, place.detour);
  }
};

}  // namespace

RankedPaths::RankedPaths(const WordLattice& lattice, const std::vector<double>& scores,
                         std::size_t count)
    : m_Lattice(lattice), m_Scores(scores), m_Ways(bestWaysToEnd(lattice, scores)) {
  if (count == 0 || m_Ways.toEnd[0].cost == std::numeric_limits<double>::infinity()) return;
  search(count);
  // Sums of the same numbers in another order differ in their last digits.
  std::vector<double> exact;
  for (const Found& found : m_Found) exact.push_back(unfolded(found).score);
  m_Ranked.resize(m_Found.size());
  std::iota(m_Ranked.begin(), m_Ranked.end(), std::size_t{0});
  std::stable_sort(m_Ranked.begin(), m_Ranked.end(), [&](std::size_t a, std::size_t b) {
    return exact[a] != exact[b] ? exact[a] > exact[b]
                                : m_Found[a].length.links < m_Found[b].length.links;
  });
}

int RankedPaths::nodeBehindDetour(const Found& found) const {
  return found.detour < 0 ? 0 : m_Lattice.links[slot(found.detour)].end;
}

void RankedPaths::search(std::size_t count) {
  const Detours detours(m_Lattice, m_Scores, m_Ways);
  const int mostLinks = static_cast<int>(m_Lattice.nodes.size()) + kMostLinksAround;
  std::priority_queue<Candidate> candidates;
  const auto consider = [&](int without, const Detours::Place& place) {
    const Distance length = m_Found[slot(without)].length + detours.at(place).more;
    candidates.push({length, without, place});
  };
  const auto keep = [&](const Found& found) {
    m_Found.push_back(found);
    const int index = static_cast<int>(m_Found.size()) - 1;
    detours.first(nodeBehindDetour(found),
                  [&](const Detours::Place& place) { consider(index, place); });
  };
  keep({m_Ways.toEnd[0], -1, -1, 0});
  while (m_Found.size() < count && !candidates.empty()) {
    const Candidate next = candidates.top();
    candidates.pop();
    detours.below(next.place, [&](const Detours::Place& place) { consider(next.without, place); });
    const int link = detours.at(next.place).link;
    const Found& without = m_Found[slot(next.without)];
    const int onBestWay = m_Ways.toEnd[slot(nodeBehindDetour(without))].links -
                          m_Ways.toEnd[slot(m_Lattice.links[slot(link)].start)].links;
    const int linksSoFar = without.linksSoFar + onBestWay + 1;
    if (!m_Lattice.isCyclic || linksSoFar <= mostLinks)
      keep({next.length, next.without, link, linksSoFar});
  }
}

LatticePath RankedPaths::unfolded(const Found& found) const {
  std::vector<int> detours;
  for (const Found* at = &found; at->detour >= 0; at = &m_Found[slot(at->without)])
    detours.push_back(at->detour);
  LatticePath path;
  path.links.reserve(slot(found.length.links));
  int node = 0;
  const auto take = [&](int link) {
    path.links.push_back(slot(link));
    path.score += m_Scores[slot(link)];
    node = m_Lattice.links[slot(link)].end;
  };
  for (; !detours.empty(); detours.pop_back()) {
    while (node != m_Lattice.links[slot(detours.back())].start) take(m_Ways.nextLink[slot(node)]);
    take(detours.back());
  }
  while (m_Ways.nextLink[slot(node)] >= 0) take(m_Ways.nextLink[slot(node)]);
  return path;
}

LatticePath RankedPaths::path(std::size_t rank) const { return unfolded(m_Found[m_Ranked[rank]]); }

}  // namespace quorbel
