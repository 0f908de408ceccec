#include "sound/segment.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>

#include "extreme_numbers.h"

namespace quorbel {
namespace {

struct SegmentCase {
  double from;
  double to;
  std::int32_t frames;
  std::int32_t start;
  std::int32_t end;
};

void PrintTo(const SegmentCase& segment, std::ostream* out) {
  *out << segment.from << " to " << segment.to << " of " << segment.frames;
}

class SegmentBetween : public testing::TestWithParam<SegmentCase> {};

TEST_P(SegmentBetween, GivesPositionsWithinTheSound) {
  const SegmentCase& expected = GetParam();
  const Segment segment = segmentBetween(expected.from, expected.to, expected.frames);
  EXPECT_EQ(segment.start, expected.start);
  EXPECT_EQ(segment.end, expected.end);
}

INSTANTIATE_TEST_SUITE_P(Inside, SegmentBetween,
                         testing::Values(SegmentCase{0.0, 1.0, 1000, 0, 1000},
                                         SegmentCase{0.25, 0.5, 1000, 250, 500},
                                         SegmentCase{0.2509, 0.5009, 1000, 250, 500},
                                         SegmentCase{0.5, 0.5, 1000, 500, 500}));

INSTANTIATE_TEST_SUITE_P(Swapped, SegmentBetween,
                         testing::Values(SegmentCase{1.0, 0.0, 1000, 0, 1000},
                                         SegmentCase{0.75, 0.25, 1000, 250, 750},
                                         SegmentCase{2.0, -1.0, 1000, 0, 1000}));

INSTANTIATE_TEST_SUITE_P(Clamped, SegmentBetween,
                         testing::Values(SegmentCase{-0.25, 0.5, 1000, 0, 500},
                                         SegmentCase{0.5, 1.25, 1000, 500, 1000},
                                         SegmentCase{1.5, 2.5, 1000, 1000, 1000},
                                         SegmentCase{-2.5, -1.5, 1000, 0, 0},
                                         SegmentCase{-1e300, 1e300, 1000, 0, 1000}));

INSTANTIATE_TEST_SUITE_P(NotFinite, SegmentBetween,
                         testing::Values(SegmentCase{kNotANumber, 0.5, 1000, 0, 500},
                                         SegmentCase{0.5, kNotANumber, 1000, 0, 500},
                                         SegmentCase{kNotANumber, kNotANumber, 1000, 0, 0},
                                         SegmentCase{-kInfinity, kInfinity, 1000, 0, 1000},
                                         SegmentCase{0.5, kInfinity, 1000, 500, 1000},
                                         SegmentCase{kInfinity, kInfinity, 1000, 1000, 1000}));

// infinity x 0 frames is not a number either.
INSTANTIATE_TEST_SUITE_P(
    OddCounts, SegmentBetween,
    testing::Values(SegmentCase{0.0, 1.0, 0, 0, 0}, SegmentCase{0.0, kInfinity, 0, 0, 0},
                    SegmentCase{0.0, 1.0, -5, 0, 0}, SegmentCase{0.0, 1.0, kSmallestInt, 0, 0},
                    SegmentCase{0.0, 1.0, kLargestInt, 0, kLargestInt},
                    SegmentCase{0.5, 2.0, kLargestInt, 1073741823, kLargestInt}));

TEST(LowFrameCount, KeepsTheLow32Bits) {
  EXPECT_EQ(lowFrameCount(0), 0);
  EXPECT_EQ(lowFrameCount(16000), 16000);
  EXPECT_EQ(lowFrameCount(2147483647), kLargestInt);
  EXPECT_EQ(lowFrameCount(2147483648), kSmallestInt);
  EXPECT_EQ(lowFrameCount(4294967295), -1);
  EXPECT_EQ(lowFrameCount(4294967296), 0);
  EXPECT_EQ(lowFrameCount(4294967296 + 7), 7);
}

TEST(PlayedFraction, OfAMonoSoundIsItsTime) {
  EXPECT_DOUBLE_EQ(playedFraction(500, 16000, 16000, 1), 0.5);
  EXPECT_DOUBLE_EQ(playedFraction(1, 16000, 16000, 1), 0.001);
  EXPECT_DOUBLE_EQ(playedFraction(0, 16000, 16000, 1), 0.0);
  EXPECT_DOUBLE_EQ(playedFraction(3000, 8000, 16000, 1), 1.5);
}

TEST(PlayedFraction, OfAStereoSoundGrowsTwiceAsFast) {
  EXPECT_DOUBLE_EQ(playedFraction(500, 16000, 16000, 2), 1.0);
}

TEST(PlayedFraction, DividesFramesByChannelsInIntegers) {
  EXPECT_DOUBLE_EQ(playedFraction(1000, 1, 7, 2), 1.0 / 3.0);
}

TEST(PlayedFraction, OfASoundWithoutWholeFramesPerChannelIsZero) {
  EXPECT_EQ(playedFraction(500, 16000, 0, 1), 0.0);
  EXPECT_EQ(playedFraction(500, 16000, 1, 2), 0.0);
  EXPECT_EQ(playedFraction(500, 16000, 100, 0), 0.0);
  EXPECT_EQ(playedFraction(500, 16000, kSmallestInt, 1), 0.0);
  EXPECT_EQ(playedFraction(500, 16000, 100, -1), 0.0);
}

TEST(PlayedFraction, OfALongTimeDoesNotWrap) {
  EXPECT_DOUBLE_EQ(playedFraction(kLargestInt, 48000, 48000, 1), 2147483.647);
}

}  // namespace
}  // namespace quorbel
