#pragma once

#include <cairomm/context.h>

namespace quorbel {

/// A colour with its opacity, each from 0 to 1.
struct Rgba {
  double red, green, blue, alpha;
};

/// Fills a box with rounded corners of `radius` and draws its outline. Where two radii do not fit,
/// the corners meet in the middle of that side. Draws nothing when width or height is 0.
void drawRoundedBox(const Cairo::RefPtr<Cairo::Context>& context, const Rgba& fill,
                    const Rgba& outline, double x, double y, double width, double height,
                    double radius);

}  // namespace quorbel
