#pragma once

#include <cairomm/context.h>
#include <cairomm/surface.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ostream>

#include "app/rounded_box.h"

namespace quorbel {

/// A colour with its opacity, each from 0 to 255, as a picture holds it: red, green and blue are
/// multiplied by the opacity.
struct Pixel {
  int red = 0, green = 0, blue = 0, alpha = 0;

  /// This pixel with a colour painted over it.
  Pixel under(const Rgba& colour) const {
    const auto mix = [&](int below, double above) {
      return static_cast<int>(std::lround(above * colour.alpha * 255 + below * (1 - colour.alpha)));
    };
    return {mix(red, colour.red), mix(green, colour.green), mix(blue, colour.blue), mix(alpha, 1)};
  }

  /// The greatest difference in one of the four.
  int differenceTo(const Pixel& other) const {
    return std::max(std::max(std::abs(red - other.red), std::abs(green - other.green)),
                    std::max(std::abs(blue - other.blue), std::abs(alpha - other.alpha)));
  }
};

inline std::ostream& operator<<(std::ostream& stream, const Pixel& pixel) {
  return stream << pixel.red << ' ' << pixel.green << ' ' << pixel.blue << " / " << pixel.alpha;
}

inline constexpr Pixel kNothing{0, 0, 0, 0};
inline constexpr Pixel kWhite{255, 255, 255, 255};
inline constexpr Pixel kGreen{0, 255, 0, 255};

/// A picture in memory to paint on, transparent at first.
class PaintedPicture {
 public:
  PaintedPicture(int width, int height)
      : m_Surface(Cairo::ImageSurface::create(Cairo::FORMAT_ARGB32, width, height)),
        context(Cairo::Context::create(m_Surface)) {}

  void fillWhite() {
    context->set_source_rgb(1, 1, 1);
    context->paint();
  }

  int width() const { return m_Surface->get_width(); }
  int height() const { return m_Surface->get_height(); }

  Pixel at(int x, int y) const {
    m_Surface->flush();
    const unsigned char* row = m_Surface->get_data() + y * m_Surface->get_stride();
    const unsigned pixel = reinterpret_cast<const unsigned*>(row)[x];
    const auto part = [&](int shift) { return static_cast<int>(pixel >> shift & 255u); };
    return {part(16), part(8), part(0), part(24)};
  }

 private:
  Cairo::RefPtr<Cairo::ImageSurface> m_Surface;

 public:
  Cairo::RefPtr<Cairo::Context> context;
};

/// Checks a pixel; rounding may make each of its parts differ by `tolerance`.
inline void expectPixel(const PaintedPicture& picture, int x, int y, const Pixel& expected,
                        int tolerance = 1) {
  EXPECT_LE(picture.at(x, y).differenceTo(expected), tolerance)
      << "at " << x << ", " << y << ": " << picture.at(x, y) << ", expected " << expected;
}

}  // namespace quorbel
