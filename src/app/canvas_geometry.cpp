#include "app/canvas_geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace quorbel {
namespace {

constexpr float kCharacterWidth = 12.0f;
constexpr float kLabelHeight = 20.0f;

/// Towards zero; what no pixel can be (a drawing without width gives infinite ratios) is cut off.
int truncate(float value) {
  constexpr float kLargest = 1.0e9f;
  if (std::isnan(value)) return 0;
  return static_cast<int>(std::clamp(value, -kLargest, kLargest));
}

/// Characters, not bytes, of a text in UTF-8.
int characterCount(const std::string& text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
  }));
}

int origin(int scroll, int canvas, int shown) {
  return scroll == 0 ? canvas / 2 - shown / 2 : scroll;
}

/// The layout's y grows upwards, the picture's downwards.
float imageY(const CanvasMapping& mapping, int layoutY) {
  return static_cast<float>(mapping.imageHeight) - static_cast<float>(layoutY) * mapping.ratioY;
}

int canvasX(const CanvasMapping& mapping, float imageX) {
  return truncate(imageX * mapping.zoom + static_cast<float>(mapping.originX) -
                  static_cast<float>(mapping.scrollX));
}

int canvasY(const CanvasMapping& mapping, float imageY) {
  return truncate(imageY * mapping.zoom + static_cast<float>(mapping.originY) -
                  static_cast<float>(mapping.scrollY));
}

}  // namespace

CanvasMapping mapCanvas(Extent image, Extent layout, Extent shown, Extent canvas, float zoom,
                        double scrollX, double scrollY) {
  CanvasMapping mapping;
  mapping.ratioX = static_cast<float>(image.width) / static_cast<float>(layout.width);
  mapping.ratioY = static_cast<float>(image.height) / static_cast<float>(layout.height);
  mapping.imageHeight = image.height;
  mapping.zoom = zoom;
  mapping.scrollX = static_cast<int>(scrollX);
  mapping.scrollY = static_cast<int>(scrollY);
  mapping.originX = origin(mapping.scrollX, canvas.width, shown.width);
  mapping.originY = origin(mapping.scrollY, canvas.height, shown.height);
  return mapping;
}

Box nodeBox(const CanvasMapping& mapping, const LayoutItem& node) {
  const float width = static_cast<float>(node.width);
  const float height = static_cast<float>(node.height);
  const float x = static_cast<float>(node.x) * mapping.ratioX - 0.5f * width * mapping.ratioX;
  const float y = imageY(mapping, node.y) - 0.5f * height * mapping.ratioY;
  return Box{canvasX(mapping, x), canvasY(mapping, y),
             truncate(width * mapping.ratioY * mapping.zoom),
             truncate(height * mapping.ratioY * mapping.zoom)};
}

Box labelBox(const CanvasMapping& mapping, const LayoutItem& edge) {
  const float width = kCharacterWidth * static_cast<float>(characterCount(edge.label));
  const float x = static_cast<float>(edge.x) * mapping.ratioX - 0.5f * width;
  const float y = imageY(mapping, edge.y) - kLabelHeight / 3.0f;
  return Box{canvasX(mapping, x), canvasY(mapping, y), truncate(width * mapping.zoom),
             truncate(kLabelHeight * mapping.zoom)};
}

int labelRadius(float zoom) { return truncate(kLabelHeight * zoom); }

const LayoutItem* edgeAt(const CanvasMapping& mapping, const std::vector<LayoutItem>& items,
                         double x, double y) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const LayoutItem& item) {
    return !item.isNode && labelBox(mapping, item).contains(x, y);
  });
  return found == items.end() ? nullptr : &*found;
}

}  // namespace quorbel
