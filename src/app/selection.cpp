#include "app/selection.h"

#include <algorithm>

namespace quorbel {

void toggleSelected(std::vector<LayoutItem>& selection, const LayoutItem& edge) {
  const auto found =
      std::find_if(selection.begin(), selection.end(),
                   [&](const LayoutItem& selected) { return selected.linkId == edge.linkId; });
  if (found == selection.end())
    selection.push_back(edge);
  else
    selection.erase(found);
}

SoundRange rangeOf(const std::vector<LayoutItem>& selection, const NodeItems& nodeItems,
                   const std::vector<LayoutItem>& items) {
  SoundRange range{1.0, 0.0};
  for (const LayoutItem& edge : selection) {
    const double start = nodeItems.timeOf(edge.startNode, items);
    const double end = nodeItems.timeOf(edge.endNode, items);
    const bool takesNoTime = start == end;
    range.start = std::min(range.start, takesNoTime ? start - 1.0 : std::min(start, end));
    range.end = std::max(range.end, takesNoTime ? end + 1.0 : std::max(start, end));
  }
  return range;
}

}  // namespace quorbel
