#include "measures/lattice_sections.h"

#include <algorithm>

namespace quorbel {
namespace {

using Neighbours = std::vector<std::vector<int>>;

Neighbours neighboursOf(const WordLattice& lattice) {
  Neighbours neighbours(lattice.nodes.size());
  for (const WordLink& link : lattice.links) {
    neighbours[slot(link.start)].push_back(link.end);
    neighbours[slot(link.end)].push_back(link.start);
  }
  return neighbours;
}

/// The nodes of a way from the first node to the last; none where there is no way.
std::vector<int> anyWay(const Neighbours& neighbours) {
  const int end = static_cast<int>(neighbours.size()) - 1;
  std::vector<int> next(neighbours.size(), -1);  // on the way to the end
  next[slot(end)] = end;
  std::vector<int> reached = {end};
  for (std::size_t i = 0; i < reached.size() && next[0] < 0; ++i) {
    for (const int node : neighbours[slot(reached[i])]) {
      if (next[slot(node)] >= 0) continue;
      next[slot(node)] = reached[i];
      reached.push_back(node);
    }
  }
  if (next[0] < 0) return {};
  std::vector<int> way = {0};
  while (way.back() != end) way.push_back(next[slot(way.back())]);
  return way;
}

/// Walks along a way and looks how far each of its nodes can be passed by.
class SectionSearch {
 public:
  explicit SectionSearch(const WordLattice& lattice)
      : m_Neighbours(neighboursOf(lattice)), m_PlaceOnWay(lattice.nodes.size(), -1) {
    m_Sections.ofNode.assign(lattice.nodes.size(), kNone);
  }

  LatticeSections search() {
    const std::vector<int> way = anyWay(m_Neighbours);
    for (std::size_t place = 0; place < way.size(); ++place)
      m_PlaceOnWay[slot(way[place])] = static_cast<int>(place);
    for (const int node : way) {
      // No link from what lies before leads beyond: the node is a cut.
      if (m_Farthest <= m_PlaceOnWay[slot(node)]) m_Sections.cuts.push_back(node);
      m_Sections.ofNode[slot(node)] = m_Sections.cuts.size() - 1;
      explore(node);
    }
    if (way.empty()) m_Sections.cuts = {0, static_cast<int>(m_Neighbours.size()) - 1};
    for (std::size_t& section : m_Sections.ofNode)
      if (section == kNone) section = 0;
    return std::move(m_Sections);
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// Takes what can be reached from a node of the way, without its other nodes, into its section.
  void explore(int onWay) {
    std::vector<int> open = {onWay};
    while (!open.empty()) {
      const int from = open.back();
      open.pop_back();
      for (const int node : m_Neighbours[slot(from)]) {
        m_Farthest = std::max(m_Farthest, m_PlaceOnWay[slot(node)]);
        if (m_PlaceOnWay[slot(node)] >= 0 || m_Sections.ofNode[slot(node)] != kNone) continue;
        m_Sections.ofNode[slot(node)] = m_Sections.cuts.size() - 1;
        open.push_back(node);
      }
    }
  }

  const Neighbours m_Neighbours;
  std::vector<int> m_PlaceOnWay;  ///< of each node; -1 beside the way
  int m_Farthest = 0;             ///< the last place on the way that is reached so far
  LatticeSections m_Sections;
};

}  // namespace

std::size_t LatticeSections::ofLink(int start, int end) const {
  // Between two cuts lies the section of the first; a loop at the end belongs to the last.
  return std::min({ofNode[slot(start)], ofNode[slot(end)], count() - 1});
}

LatticeSections sectionsOf(const WordLattice& lattice) { return SectionSearch(lattice).search(); }

}  // namespace quorbel
