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

std::size_t bytesOf(const Cairo::RefPtr<Cairo::ImageSurface>& surface) {
  return static_cast<std::size_t>(surface->get_stride()) *
         static_cast<std::size_t>(surface->get_height());
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
  const std::tuple size(width, height, radius);
  const auto kept = m_Shapes.find(size);
  if (kept != m_Shapes.end()) return kept->second;
  const Shape shape{coverage(kOpaque, kClear, width, height, radius),
                    coverage(kClear, kOpaque, width, height, radius)};
  const std::size_t bytes = bytesOf(shape.inside) + bytesOf(shape.outline);
  if (m_Bytes + bytes > kMostBytes) clear();
  m_Bytes += bytes;
  return m_Shapes.emplace(size, shape).first->second;
}

void BoxStamps::clear() {
  m_Shapes.clear();
  m_Bytes = 0;
}

}  // namespace quorbel
