#include "app/rounded_box.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "app/box_colours.h"
#include "app/painted_picture.h"

namespace quorbel {
namespace {

struct Point {
  double x, y;
};

/// The outline of a rounded box as the corners of a polygon, from its description: each corner is a
/// Bezier curve both control points of which are the corner of the box.
std::vector<Point> outlineOf(double x, double y, double w, double h, double r) {
  const double rx = std::min(r, w / 2);
  const double ry = std::min(r, h / 2);
  std::vector<Point> outline;
  const auto corner = [&](Point from, Point control, Point to) {
    const int steps = 40;
    for (int i = 0; i <= steps; ++i) {
      const double t = static_cast<double>(i) / steps, u = 1 - t;
      const double a = u * u * u, b = 3 * u * u * t + 3 * u * t * t, c = t * t * t;
      outline.push_back(
          {a * from.x + b * control.x + c * to.x, a * from.y + b * control.y + c * to.y});
    }
  };
  corner({x, y + ry}, {x, y}, {x + rx, y});
  corner({x + w - rx, y}, {x + w, y}, {x + w, y + ry});
  corner({x + w, y + h - ry}, {x + w, y + h}, {x + w - rx, y + h});
  corner({x + rx, y + h}, {x, y + h}, {x, y + h - ry});
  return outline;
}

/// How far a point is from the outline, negative outside it.
double depthIn(const std::vector<Point>& outline, Point p) {
  double nearest = 1e9;
  bool isInside = false;
  for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
    const Point &a = outline[j], &b = outline[i];
    const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
    const double along = length == 0 ? 0 : ((p.x - a.x) * dx + (p.y - a.y) * dy) / length;
    const double t = std::clamp(along, 0.0, 1.0);
    nearest = std::min(nearest, std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy));
    if ((a.y > p.y) != (b.y > p.y) && p.x < dx * (p.y - a.y) / dy + a.x) isInside = !isInside;
  }
  return isInside ? nearest : -nearest;
}

struct Shape {
  const char* what;
  int x, y, w, h, r;
};

const Shape kShapes[] = {
    {"corners that fit", 20, 20, 120, 100, 30},
    {"radius of half the width", 20, 20, 80, 120, 40},
    {"radius of more than half the width", 20, 20, 60, 120, 40},
    {"radius of half the height", 20, 20, 120, 80, 40},
    {"radius of more than half the height", 20, 20, 120, 60, 40},
    {"radius of more than half of both", 20, 20, 70, 90, 200},
    {"radius as high as the box", 20, 20, 110, 50, 50},
    {"a label of one character", 20, 20, 12, 20, 20},
    {"no radius", 20, 20, 50, 40, 0},
    {"a single pixel", 20, 20, 1, 1, 1},
};

TEST(RoundedBox, HasItsFillAndOutlineWhereTheCurvesSay) {
  constexpr double kHalfLine = 1.0;       // the toolkit's default line is two pixels wide
  constexpr double kHalfDiagonal = 0.75;  // pixels that the outline's border may cross
  const Pixel filled = kNothing.under(kSelectedNodeFill);
  const Pixel outlinedInside = filled.under(kSelectedNodeOutline);
  const Pixel outlinedOutside = kNothing.under(kSelectedNodeOutline);
  for (const Shape& s : kShapes) {
    SCOPED_TRACE(s.what);
    PaintedPicture picture(170, 170);
    drawRoundedBox(picture.context, kSelectedNodeFill, kSelectedNodeOutline, s.x, s.y, s.w, s.h,
                   s.r);
    const std::vector<Point> outline = outlineOf(s.x, s.y, s.w, s.h, s.r);
    for (int y = s.y - 5; y < s.y + s.h + 5 && !HasFailure(); ++y) {
      for (int x = s.x - 5; x < s.x + s.w + 5 && !HasFailure(); ++x) {
        const double depth = depthIn(outline, {x + 0.5, y + 0.5});
        if (depth < -kHalfLine - kHalfDiagonal) {
          expectPixel(picture, x, y, kNothing, 0);
        } else if (depth > kHalfLine + kHalfDiagonal) {
          expectPixel(picture, x, y, filled);
        } else {  // somewhere between: nothing but mixtures of the three
          const Pixel pixel = picture.at(x, y);
          EXPECT_EQ(pixel.red, 0);
          EXPECT_LE(pixel.green, filled.green);
          EXPECT_LE(pixel.blue, outlinedOutside.blue + 1);
          EXPECT_LE(pixel.alpha, outlinedInside.alpha + 1);
        }
      }
    }
  }
}

TEST(RoundedBox, StraightRunsCarryALineOfTwoPixels) {
  PaintedPicture picture(170, 170);
  drawRoundedBox(picture.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 120, 100, 30);
  const Pixel filled = kNothing.under(kSelectedNodeFill);
  const Pixel outside = kNothing.under(kSelectedNodeOutline);
  const Pixel inside = filled.under(kSelectedNodeOutline);
  for (const int middle : {60, 80, 100}) {  // between the corners
    expectPixel(picture, middle, 28, kNothing);
    expectPixel(picture, middle, 29, outside);
    expectPixel(picture, middle, 30, inside);
    expectPixel(picture, middle, 31, filled);
    expectPixel(picture, middle, 128, filled);
    expectPixel(picture, middle, 129, inside);
    expectPixel(picture, middle, 130, outside);
    expectPixel(picture, middle, 131, kNothing);
  }
  for (const int middle : {70, 80, 90}) {
    expectPixel(picture, 18, middle, kNothing);
    expectPixel(picture, 19, middle, outside);
    expectPixel(picture, 20, middle, inside);
    expectPixel(picture, 21, middle, filled);
    expectPixel(picture, 138, middle, filled);
    expectPixel(picture, 139, middle, inside);
    expectPixel(picture, 140, middle, outside);
    expectPixel(picture, 141, middle, kNothing);
  }
}

TEST(RoundedBox, CurvesPassAnEighthOfTheRadiusFromTheCorner) {
  PaintedPicture picture(170, 170);
  drawRoundedBox(picture.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 20, 130, 130, 40);
  // the curve is at 25, 25; a circle's arc would be at 31.7, 31.7
  expectPixel(picture, 22, 22, kNothing);
  EXPECT_GT(picture.at(24, 24).blue, 0);
  expectPixel(picture, 27, 27, kNothing.under(kSelectedNodeFill));
}

TEST(RoundedBox, WithoutWidthOrHeightIsNotDrawn) {
  for (const auto& [width, height] : {std::pair(0, 50), std::pair(50, 0), std::pair(0, 0)}) {
    PaintedPicture picture(100, 100);
    drawRoundedBox(picture.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 20, width, height,
                   20);
    for (int y = 0; y < 100; ++y)
      for (int x = 0; x < 100; ++x) expectPixel(picture, x, y, kNothing, 0);
  }
}

TEST(RoundedBox, LeavesNothingForTheNextOne) {
  PaintedPicture once(170, 170);
  drawRoundedBox(once.context, kSelectedNodeFill, kSelectedNodeOutline, 100, 100, 50, 40, 20);
  PaintedPicture twice(170, 170);
  twice.context->move_to(5, 5);  // a path that somebody else began
  twice.context->line_to(60, 5);
  drawRoundedBox(twice.context, {1, 0, 0, 0.15}, {1, 0, 0, 0.5}, 20, 20, 50, 40, 20);
  drawRoundedBox(twice.context, kSelectedNodeFill, kSelectedNodeOutline, 100, 100, 50, 40, 20);
  for (int y = 80; y < 170; ++y)
    for (int x = 80; x < 170; ++x) expectPixel(twice, x, y, once.at(x, y), 0);
  expectPixel(twice, 30, 5, kNothing, 0);
}

}  // namespace
}  // namespace quorbel
