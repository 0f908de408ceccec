#pragma once

// Rounded boxes painted many times: most boxes of a drawing have one of a few sizes, and to lay a
// ready shape down is several times as fast as to trace its outline again.

#include <cairomm/context.h>
#include <cairomm/surface.h>

#include <cstddef>
#include <map>
#include <tuple>

#include "app/rounded_box.h"

namespace quorbel {

/// How far the outline of a rounded box reaches beyond it, pixels, rounded up.
inline constexpr int kOutlineReach = 2;

/// Paints rounded boxes and keeps the shapes of those painted before for boxes of the same size,
/// whatever their colours. Leaves the same pixels as drawRoundedBox on a context whose units are
/// pixels.
class BoxStamps {
 public:
  /// What the shapes may take; all are dropped for one that would take more.
  static constexpr std::size_t kMostBytes = 8u << 20u;

  /// As drawRoundedBox; the box lies on whole pixels.
  void draw(const Cairo::RefPtr<Cairo::Context>& context, const Rgba& fill, const Rgba& outline,
            int x, int y, int width, int height, int radius);

  /// Drops all shapes; to be called when the boxes' sizes change.
  void clear();

  /// The memory that the shapes take.
  std::size_t bytes() const { return m_Bytes; }

 private:
  /// How much of each pixel the inside and the outline of a box cover.
  struct Shape {
    Cairo::RefPtr<Cairo::ImageSurface> inside;
    Cairo::RefPtr<Cairo::ImageSurface> outline;
  };

  const Shape& shapeOf(int width, int height, int radius);

  std::map<std::tuple<int, int, int>, Shape> m_Shapes;  ///< by width, height and radius
  std::size_t m_Bytes = 0;
};

}  // namespace quorbel
