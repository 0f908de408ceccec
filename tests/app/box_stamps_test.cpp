#include "app/box_stamps.h"

#include <gtest/gtest.h>

#include "app/box_colours.h"
#include "app/painted_picture.h"

namespace quorbel {
namespace {

struct StampedBox {
  const char* what;
  int x, y, width, height, radius;
};

/// Some lie partly outside the pictures, which are 200 pixels wide and 100 high.
const StampedBox kBoxes[] = {
    {"label", 20, 30, 84, 20, 20},
    {"node", 50, 40, 60, 40, 40},
    {"node seen before, elsewhere", 93, 21, 60, 40, 40},
    {"other radius", 10, 10, 60, 40, 5},
    {"beyond the left and top edge", -20, -7, 60, 40, 40},
    {"beyond the right and bottom edge", 170, 85, 84, 20, 20},
    {"one pixel", 3, 3, 1, 1, 1},
    {"as narrow as the outline", 120, 5, 2, 30, 20},
    {"no corners", 130, 70, 25, 13, 0},
    {"no width", 5, 90, 0, 20, 20},
    {"no height", 5, 90, 20, 0, 20},
    {"width below nothing", 190, 90, -12, 6, 6},
    {"wider than any shape that is kept", -700, 50, 1500, 20, 20},
    {"widest shape that is kept", -900, 60, 1000, 20, 20},
    {"highest shape that is kept", 60, -900, 20, 1000, 20},
};

void expectSamePixels(const PaintedPicture& picture, const PaintedPicture& expected,
                      const char* what) {
  for (int y = 0; y < expected.height(); ++y)
    for (int x = 0; x < expected.width(); ++x)
      ASSERT_EQ(picture.at(x, y).differenceTo(expected.at(x, y)), 0)
          << what << " at " << x << ", " << y << ": " << picture.at(x, y) << ", expected "
          << expected.at(x, y);
}

TEST(BoxStamps, LeaveThePixelsOfARoundedBox) {
  PaintedPicture stamped(200, 100), drawn(200, 100);
  stamped.fillWhite();
  drawn.fillWhite();
  BoxStamps stamps;
  for (const auto& [what, x, y, width, height, radius] : kBoxes) {
    stamps.draw(stamped.context, kSelectedNodeFill, kSelectedNodeOutline, x, y, width, height,
                radius);
    drawRoundedBox(drawn.context, kSelectedNodeFill, kSelectedNodeOutline, x, y, width, height,
                   radius);
    expectSamePixels(stamped, drawn, what);
  }
}

TEST(BoxStamps, TakeTheColoursOfEachBox) {
  PaintedPicture stamped(200, 100), drawn(200, 100);
  BoxStamps stamps;
  stamps.draw(stamped.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 20);
  stamps.draw(stamped.context, kSelectedLabelFill, kSelectedLabelOutline, 40, 35, 84, 20, 20);
  drawRoundedBox(drawn.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 20);
  drawRoundedBox(drawn.context, kSelectedLabelFill, kSelectedLabelOutline, 40, 35, 84, 20, 20);
  expectSamePixels(stamped, drawn, "second colours");
}

TEST(BoxStamps, LieWhereTheContextIsMovedTo) {
  PaintedPicture stamped(200, 100), drawn(200, 100);
  stamped.context->translate(-30, -20);
  drawn.context->translate(-30, -20);
  BoxStamps stamps;
  stamps.draw(stamped.context, kSelectedNodeFill, kSelectedNodeOutline, 50, 40, 60, 40, 40);
  drawRoundedBox(drawn.context, kSelectedNodeFill, kSelectedNodeOutline, 50, 40, 60, 40, 40);
  expectSamePixels(stamped, drawn, "moved");
}

TEST(BoxStamps, KeepOneShapeForAllBoxesOfASize) {
  const PaintedPicture picture(200, 100);
  BoxStamps stamps;
  stamps.draw(picture.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 20);
  const std::size_t bytes = stamps.bytes();
  EXPECT_GE(bytes, 2u * 84 * 20);
  stamps.draw(picture.context, kSelectedLabelFill, kSelectedLabelOutline, 60, 10, 84, 20, 20);
  EXPECT_EQ(stamps.bytes(), bytes);
  stamps.draw(picture.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 10);
  EXPECT_EQ(stamps.bytes(), 2 * bytes);
  stamps.clear();
  EXPECT_EQ(stamps.bytes(), 0u);
}

TEST(BoxStamps, TakeBoundedMemoryAndAreMadeAgainWhenDropped) {
  PaintedPicture stamped(200, 100), drawn(200, 100);
  BoxStamps stamps;
  stamps.draw(stamped.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 20);
  std::size_t most = 0;
  for (int width = 970; width <= 1000; ++width) {
    stamps.draw(stamped.context, kSelectedNodeFill, kSelectedNodeOutline, 5, 5, width, 900, 40);
    most = std::max(most, stamps.bytes());
  }
  EXPECT_LE(most, BoxStamps::kMostBytes);
  EXPECT_GE(most, BoxStamps::kMostBytes / 2);
  stamped.fillWhite();
  drawn.fillWhite();
  stamps.draw(stamped.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 20);
  drawRoundedBox(drawn.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 30, 84, 20, 20);
  expectSamePixels(stamped, drawn, "label");
}

}  // namespace
}  // namespace quorbel
