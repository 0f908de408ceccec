#include "sound/play_clock.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "extreme_numbers.h"

namespace quorbel {
namespace {

TEST(WallClockMs, AddsSecondsAndWholeMilliseconds) {
  EXPECT_EQ(wallClockMs(0, 0), 0);
  EXPECT_EQ(wallClockMs(0, 999), 0);
  EXPECT_EQ(wallClockMs(0, 1000), 1);
  EXPECT_EQ(wallClockMs(12, 345678), 12345);
  EXPECT_EQ(wallClockMs(1, 999999), 1999);
}

TEST(WallClockMs, WrapsIn32Bits) {
  EXPECT_EQ(wallClockMs(2147483, 647000), kLargestInt);
  EXPECT_EQ(wallClockMs(2147483, 648000), kSmallestInt);
  EXPECT_EQ(wallClockMs(4294967, 295000), -1);
  EXPECT_EQ(wallClockMs(4294967, 296000), 0);
  // 1,700,000,000,000 ms are 396 x 2^32 less 807,049,216.
  EXPECT_EQ(wallClockMs(1700000000, 5000), -807049216 + 5);
}

TEST(WallClockMs, TakesSecondsBeyond32Bits) {
  EXPECT_EQ(wallClockMs((std::int64_t{1} << 32) + 12, 345678), 12345);
}

TEST(ElapsedMs, IsTheDifference) {
  EXPECT_EQ(elapsedMs(1500, 1000), 500);
  EXPECT_EQ(elapsedMs(1000, 1000), 0);
  EXPECT_EQ(elapsedMs(1000, 1500), -500);
}

TEST(ElapsedMs, IsRightAcrossTheWrap) {
  EXPECT_EQ(elapsedMs(kSmallestInt + 4, kLargestInt), 5);
  EXPECT_EQ(elapsedMs(3, -2), 5);
  EXPECT_EQ(elapsedMs(wallClockMs(2147484, 0), wallClockMs(2147483, 0)), 1000);
}

}  // namespace
}  // namespace quorbel
