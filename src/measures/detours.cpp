#include "measures/detours.h"

#include <algorithm>
#include <numeric>

namespace quorbel {

void Detours::list(const WordLattice& lattice, const std::vector<double>& scores,
                   const BestWays& ways) {
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const WordLink& link = lattice.links[i];
    const Distance& way = ways.toEnd[slot(link.start)];
    const int index = static_cast<int>(i);
    if (ways.toEnd[slot(link.end)].cost == std::numeric_limits<double>::infinity()) continue;
    if (ways.nextLink[slot(link.start)] == index) continue;
    const Distance detour = through(scores[i], ways.toEnd[slot(link.end)]);
    m_Detours.push_back({{detour - way, index}, link.start, false});
  }
  std::sort(m_Detours.begin(), m_Detours.end(), [](const Listed& a, const Listed& b) {
    return std::tie(a.node, a.detour) < std::tie(b.node, b.detour);
  });
  for (std::size_t i = 0; i + 1 < m_Detours.size(); ++i)
    m_Detours[i].isFollowed = m_Detours[i].node == m_Detours[i + 1].node;
}

Detours::Detours(const WordLattice& lattice, const std::vector<double>& scores,
                 const BestWays& ways)
    : m_HeapOf(lattice.nodes.size(), -1) {
  list(lattice, scores, ways);
  std::vector<int> ownEntry(lattice.nodes.size(), -1);
  for (std::size_t i = 0; i < m_Detours.size(); ++i)
    if (i == 0 || !m_Detours[i - 1].isFollowed)
      ownEntry[slot(m_Detours[i].node)] = add({i, -1, -1, 1});

  // A heap is made of that of the next node, which is nearer to the end by one link.
  std::vector<int> nearestFirst(lattice.nodes.size());
  std::iota(nearestFirst.begin(), nearestFirst.end(), 0);
  std::sort(nearestFirst.begin(), nearestFirst.end(),
            [&](int a, int b) { return ways.toEnd[slot(a)].links < ways.toEnd[slot(b)].links; });
  for (const int node : nearestFirst) {
    const int link = ways.nextLink[slot(node)];
    const int next = link < 0 ? -1 : m_HeapOf[slot(lattice.links[slot(link)].end)];
    m_HeapOf[slot(node)] = merge(ownEntry[slot(node)], next);
  }
}

int Detours::add(Entry entry) {
  m_Entries.push_back(entry);
  return static_cast<int>(m_Entries.size()) - 1;
}

/// A leftist heap of both, which stay as they are: what would change is copied, a way to the right
/// that is never longer than log nodes.
int Detours::merge(int a, int b) {
  if (a < 0 || b < 0) return std::max(a, b);
  if (at({b, entry(b).detour}) < at({a, entry(a).detour})) std::swap(a, b);
  Entry top = entry(a);
  top.right = merge(top.right, b);
  if (rankOf(top.left) < rankOf(top.right)) std::swap(top.left, top.right);
  top.rank = rankOf(top.right) + 1;
  return add(top);
}

}  // namespace quorbel
