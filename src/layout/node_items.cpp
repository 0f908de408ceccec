#include "layout/node_items.h"

#include <algorithm>
#include <cmath>

namespace quorbel {

void NodeItems::index(const std::vector<LayoutItem>& items) {
  m_Positions.clear();
  for (std::size_t i = 0; i < items.size(); ++i)
    if (items[i].isNode) m_Positions.emplace_back(items[i].nodeIndex, i);
  std::sort(m_Positions.begin(), m_Positions.end());
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
