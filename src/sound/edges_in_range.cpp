#include "sound/edges_in_range.h"

#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace quorbel {
namespace {

/// The time of a node that is not in the drawing; below every time that can be inside a range.
constexpr double kNotFound = -2.0;

using NodeTimes = std::unordered_map<int, double>;

NodeTimes nodeTimes(const std::vector<LayoutItem>& items) {
  NodeTimes times;
  for (const LayoutItem& item : items) {
    if (item.isNode) times.emplace(item.nodeIndex, std::isnan(item.time) ? 0.0 : item.time);
  }
  return times;
}

double timeOf(const NodeTimes& times, int nodeIndex) {
  const auto found = times.find(nodeIndex);
  return found == times.end() ? kNotFound : found->second;
}

}  // namespace

std::vector<LayoutItem> edgesInRange(const std::vector<LayoutItem>& items, double rangeStart,
                                     double rangeEnd) {
  const NodeTimes times = nodeTimes(items);
  std::unordered_set<int> taken;
  std::vector<LayoutItem> inside;
  for (const LayoutItem& item : items) {
    if (item.isNode) continue;
    const double start = timeOf(times, item.startNode);
    const double end = timeOf(times, item.endNode);
    const bool isInside = start > -1.0 && end >= -1.0 && start >= rangeStart && end <= rangeEnd;
    if (isInside && taken.insert(item.linkId).second) inside.push_back(item);
  }
  return inside;
}

}  // namespace quorbel
