#include "layout/layout_collector.h"

#include <cmath>
#include <iostream>
#include <limits>
#include <utility>

#include "lattice/number_text.h"

namespace quorbel {

LayoutCollector::LayoutCollector(Graph& graph, std::vector<LayoutItem>& items)
    : m_Graph(graph), m_Items(items) {
  items.clear();
  for (std::size_t i = 0; i < static_cast<std::size_t>(graph.adjacency->nodeCount); ++i)
    for (Edge& edge : graph.adjacency->outgoing[i]) m_Links.emplace(edge.linkId, &edge);
}

std::optional<LayoutItem> LayoutCollector::nodeItem(int index) const {
  const auto position = static_cast<std::size_t>(index);
  if (index < 0 || position >= m_Graph.nodes.size()) return std::nullopt;
  LayoutItem item;
  item.isNode = true;
  item.nodeIndex = index;
  item.time = m_Graph.nodes[position].time;
  return item;
}

void LayoutCollector::addEdge(LayoutEdge edge) {
  if (!edge.label || !edge.linkId) {
    std::cout << "comment not found in dot file" << std::endl;
    return;
  }
  LayoutItem item;
  item.startNode = edge.startNode;
  item.endNode = edge.endNode;
  item.label = std::move(*edge.label);
  item.linkId = *edge.linkId;
  if (edge.place) {
    item.x = edge.place->x;
    item.y = edge.place->y;
  } else {
    std::cout << "lp not found in dot file" << std::endl;
    item.x = item.y = LayoutItem::kNoPosition;
  }
  if (const auto link = m_Links.find(item.linkId); link != m_Links.end()) {
    item.word = link->second->word;
    item.score = link->second->scores[currentScoreName];
  }
  m_Items.push_back(std::move(item));
}

int nodeSize(std::string inches) {
  // Not the 72 points of an inch: boxes stand out a little around the nodes that they highlight.
  constexpr double kUnitsPerInch = 80.0;
  constexpr double kLargest = std::numeric_limits<int>::max();
  if (const std::size_t comma = inches.find(','); comma != std::string::npos) inches[comma] = '.';
  const double size = parseDouble(inches) * kUnitsPerInch;
  return std::abs(size) < kLargest ? static_cast<int>(size) : 0;
}

}  // namespace quorbel
