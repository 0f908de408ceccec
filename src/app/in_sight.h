#pragma once

// What of a drawing is in sight, without a window.

#include <optional>
#include <vector>

#include "app/canvas_geometry.h"
#include "lattice/layout_item.h"
#include "layout/node_items.h"

namespace quorbel {

/// Whether any part of a box lies within the visible part of the canvas.
bool isInSight(const Box& box, const Box& seen);

/// The first drawn link, by the time that it begins, of the path that has the links of these ids,
/// if no label and no node of the path is in sight; null if one is, or nothing of it is drawn. It
/// belongs to `items`, which `nodeItems` has indexed.
const LayoutItem* pathOutOfSight(const CanvasMapping& mapping, const std::vector<LayoutItem>& items,
                                 const NodeItems& nodeItems, const std::vector<int>& linkIds,
                                 const Box& seen);

/// The box of the first node, by time, that lights up at this play position (a fraction of the
/// utterance), if none of those that do is in sight. Looks only at nodes that are lit.
std::optional<Box> lightOutOfSight(const CanvasMapping& mapping,
                                   const std::vector<LayoutItem>& items, const NodeItems& nodeItems,
                                   double position, const Box& seen);

}  // namespace quorbel
