#include "layout/node_items.h"

#include <algorithm>
#include <cmath>

namespace quorbel {

void NodeItems::index(const std::vector<LayoutItem>& items) {
  m_Positions.clear();
  for (std::size_t i = 0; i < items.size(); ++i)
    if (items[i].isNode) m_Positions.emplace_back(items[i].nodeIndex, i);
  std::sort(m_Positions.begin(), m_Positions.end());
  m_Times.clear();
  for (const auto& [node, position] : m_Positions)
    if (!std::isnan(items[position].time)) m_Times.emplace_back(items[position].time, position);
  std::sort(m_Times.begin(), m_Times.end());
}

std::pair<NodeItems::Times::const_iterator, NodeItems::Times::const_iterator> NodeItems::between(
    double from, double to) const {
  const auto first = std::upper_bound(
      m_Times.begin(), m_Times.end(), from,
      [](double time, const Times::value_type& item) { return time < item.first; });
  const auto last = std::lower_bound(
      first, m_Times.end(), to,
      [](const Times::value_type& item, double time) { return item.first < time; });
  return {first, last};
}

std::pair<NodeItems::Positions::const_iterator, NodeItems::Positions::const_iterator>
NodeItems::find(int nodeIndex) const {
  struct ByNode {
    bool operator()(const Positions::value_type& a, int b) const { return a.first < b; }
    bool operator()(int a, const Positions::value_type& b) const { return a < b.first; }
  };
  return std::equal_range(m_Positions.begin(), m_Positions.end(), nodeIndex, ByNode());
}

double NodeItems::timeOf(int nodeIndex, const std::vector<LayoutItem>& items) const {
  const auto [first, last] = find(nodeIndex);
  if (first == last) return 0.0;
  const double time = items[first->second].time;
  return std::isnan(time) ? 0.0 : time;
}

}  // namespace quorbel
