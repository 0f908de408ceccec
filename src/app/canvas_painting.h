#pragma once

// The boxes that are painted over the drawing: a function of data and a Cairo context.

#include <cairomm/context.h>

#include <optional>
#include <vector>

#include "app/box_stamps.h"
#include "app/canvas_geometry.h"
#include "lattice/layout_item.h"
#include "layout/node_items.h"

namespace quorbel {

/// What stands out on the canvas. The lists belong to the caller.
struct CanvasHighlights {
  const std::vector<LayoutItem>& items;     ///< the drawing
  const NodeItems& nodeItems;               ///< index of `items`
  const std::vector<LayoutItem>& selected;  ///< edges to mark as selected
  int pointerX = 0;                         ///< edges whose label is under it are marked, pixels
  int pointerY = 0;
  std::optional<double> playPosition;  ///< while sound plays: where, as a fraction of the utterance
};

/// Paints the boxes of the selected edges, of the edges under the pointer and of the nodes that the
/// sound is about to pass, in this order. Boxes outside `area` (canvas pixels) are left out. The
/// context's units are canvas pixels; its target is opaque and holds what the boxes lie on.
/// `stamps` are kept by the caller from one painting to the next.
void paintHighlights(const Cairo::RefPtr<Cairo::Context>& context, const CanvasMapping& mapping,
                     const CanvasHighlights& highlights, const Box& area, BoxStamps& stamps);

}  // namespace quorbel
