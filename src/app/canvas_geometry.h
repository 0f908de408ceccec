#pragma once

// Where nodes and labels of the drawing lie on the canvas: numbers in, numbers out, no widget.

#include <vector>

#include "lattice/layout_item.h"

namespace quorbel {

/// A rectangle on the canvas, in canvas pixels.
struct Box {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  /// Whether the point lies inside; a point on the border does not.
  bool contains(double x, double y) const {
    return left < x && x < left + width && top < y && y < top + height;
  }
};

/// Width and height in pixels.
struct Extent {
  int width = 0;
  int height = 0;
};

/// What turns layout points into canvas pixels.
struct CanvasMapping {
  float ratioX = 0.0f;  ///< pixels of the unzoomed picture per layout point
  float ratioY = 0.0f;  ///< the same downwards; `dot` scales very large pictures down
  int imageHeight = 0;  ///< of the unzoomed picture
  float zoom = 1.0f;    ///< of the shown picture
  int originX = 0;      ///< where the part of the picture that is scrolled to begins on the canvas
  int originY = 0;
  int scrollX = 0;  ///< how far the canvas is scrolled
  int scrollY = 0;
};

/// The mapping for a picture of `image` pixels that shows a drawing of `layout` points, zoomed to
/// `shown` pixels on a canvas of `canvas` pixels that is scrolled by (scrollX, scrollY).
///
/// A canvas that is not scrolled shows the picture in its middle, in each direction by itself.
CanvasMapping mapCanvas(Extent image, Extent layout, Extent shown, Extent canvas, float zoom,
                        double scrollX, double scrollY);

/// The box of a node. Its width is scaled by the vertical ratio, as its height is, which keeps the
/// boxes' proportions where the picture lost its own.
Box nodeBox(const CanvasMapping& mapping, const LayoutItem& node);

/// The box of an edge's label: 12 pixels a character, 20 high, before zooming.
Box labelBox(const CanvasMapping& mapping, const LayoutItem& edge);

/// Radius of the corners of a label's box, canvas pixels.
int labelRadius(float zoom);

/// The first edge in `items` whose label box contains the point (canvas pixels), null if none does.
/// It belongs to `items`.
const LayoutItem* edgeAt(const CanvasMapping& mapping, const std::vector<LayoutItem>& items,
                         double x, double y);

}  // namespace quorbel
