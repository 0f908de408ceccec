#include "app/box_stamps.h"

namespace quorbel {
namespace {

/// Shapes of larger boxes would take more memory than they save time.
constexpr int kLargestSide = 1000;

constexpr Rgba kClear{0, 0, 0, 0};
constexpr Rgba kOpaque{0, 0, 0, 1};

Cairo::RefPtr<Cairo::ImageSurface> coverage(const Rgba& fill, const Rgba& outline, int width,
                                            int height, int radius) {
  const auto surface = Cairo::ImageSurface::create(Cairo::FORMAT_A8, width + 2 * kOutlineReach,
                                                   height + 2 * kOutlineReach);
  drawRoundedBox(Cairo::Context::create(surface), fill, outline, kOutlineReach, kOutlineReach,
                 width, height, radius);
  return surface;
}

void layDown(const Cairo::RefPtr<Cairo::Context>& context, const Rgba& colour,
             const Cairo::RefPtr<Cairo::ImageSurface>& shape, int x, int y) {
  context->set_source_rgba(colour.red, colour.green, colour.blue, colour.alpha);
  context->mask(shape, x - kOutlineReach, y - kOutlineReach);
}

}  // namespace

void BoxStamps::draw(const Cairo::RefPtr<Cairo::Context>& context, const Rgba& fill,
                     const Rgba& outline, int x, int y, int width, int height, int radius) {
  if (width <= 0 || height <= 0 || width > kLargestSide || height > kLargestSide) {
    drawRoundedBox(context, fill, outline, x, y, width, height, radius);
    return;
  }
  const Shape& shape = shapeOf(width, height, radius);
  layDown(context, fill, shape.inside, x, y);
  layDown(context, outline, shape.outline, x, y);
}

const BoxStamps::Shape& BoxStamps::shapeOf(int width, int height, int radius) {
  Shape& shape = m_Shapes[{width, height, radius}];
  if (!shape.inside) {
    shape.inside = coverage(kOpaque, kClear, width, height, radius);
    shape.outline = coverage(kClear, kOpaque, width, height, radius);
  }
  return shape;
}

}  // namespace quorbel
