#include "app/scrolling.h"

#include <gtest/gtest.h>

#include <random>

namespace quorbel {
namespace {

TEST(Scrolling, StaysWithinThePicture) {
  EXPECT_EQ(scrollWithin(-0.6, 1000, 400), 0);
  EXPECT_EQ(scrollWithin(0.4, 1000, 400), 0);
  EXPECT_EQ(scrollWithin(0.5, 1000, 400), 1);
  EXPECT_EQ(scrollWithin(599.4, 1000, 400), 599);
  EXPECT_EQ(scrollWithin(600.7, 1000, 400), 600);
  EXPECT_EQ(scrollWithin(5, 401, 400), 1);
  EXPECT_EQ(scrollWithin(5, 400, 400), 0);
  EXPECT_EQ(scrollWithin(5, 100, 400), 0);
}

TEST(Scrolling, KeepsThePointOfTheDrawingWhereItIs) {
  EXPECT_EQ(scrollKeeping(0, {300, 400}, 1000, 2000), 600);
  EXPECT_EQ(scrollKeeping(400, {300, 400}, 1000, 2000), 1000);
  EXPECT_EQ(scrollKeeping(200, {300, 400}, 2000, 1000), 50);
  EXPECT_EQ(scrollKeeping(200, {300, 400}, 1000, 1000), 300);
}

TEST(Scrolling, KeepsThePointAsFarAsTheBordersAllow) {
  EXPECT_EQ(scrollKeeping(300, {0, 400}, 2000, 1000), 0);
  EXPECT_EQ(scrollKeeping(100, {1600, 400}, 2000, 1000), 600);
}

TEST(Scrolling, KeepsThePointOfAPictureThatLayInTheMiddle) {
  // 100 pixels in the middle of 400 begin at 150.
  EXPECT_EQ(scrollKeeping(150, {0, 400}, 100, 1000), 0);
  EXPECT_EQ(scrollKeeping(200, {0, 400}, 100, 1000), 300);
  EXPECT_EQ(scrollKeeping(250, {0, 400}, 100, 1000), 600);
  EXPECT_EQ(scrollKeeping(200, {0, 401}, 99, 990), 290) << "halves are cut off one by one";
}

TEST(Scrolling, BringsAStretchIntoTheMiddle) {
  EXPECT_EQ(scrollToMiddle(500, 40, 2000, 400), 320);
  EXPECT_EQ(scrollToMiddle(100, 40, 2000, 400), 0);
  EXPECT_EQ(scrollToMiddle(1950, 40, 2000, 400), 1600);
  EXPECT_EQ(scrollToMiddle(100, 40, 300, 400), 0);
}

TEST(Scrolling, InAndOutAgainLeadsBack) {
  constexpr unsigned kSeed = 20261122;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  const auto below = [&random](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  for (int round = 0; round < 2000; ++round) {
    const int page = 50 + below(800);
    const int before = page + 1 + below(5000);
    const int after = before + below(before);
    const double scroll = below(before - page);
    const double point = below(page);
    const double in = scrollKeeping(point, {scroll, page}, before, after);
    EXPECT_GE(in, 0);
    EXPECT_LE(in, after - page);
    EXPECT_NEAR(scrollKeeping(point, {in, page}, after, before), scroll, 1)
        << "page " << page << ", " << before << " to " << after << ", point " << point;
  }
}

}  // namespace
}  // namespace quorbel
