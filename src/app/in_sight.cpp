#include "app/in_sight.h"

#include <algorithm>
#include <unordered_set>

#include "app/play_light.h"

namespace quorbel {

bool isInSight(const Box& box, const Box& seen) {
  return box.left < seen.left + seen.width && seen.left < box.left + box.width &&
         box.top < seen.top + seen.height && seen.top < box.top + box.height;
}

const LayoutItem* pathOutOfSight(const CanvasMapping& mapping, const std::vector<LayoutItem>& items,
                                 const NodeItems& nodeItems, const std::vector<int>& linkIds,
                                 const Box& seen) {
  const std::unordered_set<int> onPath(linkIds.begin(), linkIds.end());
  const auto isNodeInSight = [&](int nodeIndex) {
    const auto [first, last] = nodeItems.find(nodeIndex);
    return std::any_of(first, last, [&](const auto& node) {
      return isInSight(nodeBox(mapping, items[node.second]), seen);
    });
  };
  const LayoutItem* earliest = nullptr;
  double earliestTime = 0.0;
  for (const LayoutItem& item : items) {
    if (item.isNode || item.x == LayoutItem::kNoPosition || onPath.count(item.linkId) == 0)
      continue;
    if (isInSight(labelBox(mapping, item), seen) || isNodeInSight(item.startNode) ||
        isNodeInSight(item.endNode))
      return nullptr;
    const double time = nodeItems.timeOf(item.startNode, items);
    if (earliest && earliestTime <= time) continue;
    earliest = &item;
    earliestTime = time;
  }
  return earliest;
}

std::optional<Box> lightOutOfSight(const CanvasMapping& mapping,
                                   const std::vector<LayoutItem>& items, const NodeItems& nodeItems,
                                   double position, const Box& seen) {
  if (!isAnyLit(position)) return std::nullopt;
  const auto [first, last] = nodeItems.between(position, position + kPlayAhead);
  if (first == last) return std::nullopt;
  const bool isAnyInSight = std::any_of(first, last, [&](const auto& node) {
    return isInSight(nodeBox(mapping, items[node.second]), seen);
  });
  if (isAnyInSight) return std::nullopt;
  return nodeBox(mapping, items[first->second]);
}

}  // namespace quorbel
