#include "sound/waveform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "extreme_numbers.h"
#include "sound/sample_array.h"

namespace quorbel {
namespace {

using Samples = std::vector<std::int16_t>;

Waveform monoWaveform(const Samples& samples, int viewWidth) {
  return computeWaveform(samples.data(), static_cast<std::int32_t>(samples.size()), 1, viewWidth);
}

void expectColumn(const Waveform& waveform, std::size_t column, double positive, double negative) {
  ASSERT_LT(column, waveform.columns.size());
  EXPECT_DOUBLE_EQ(waveform.columns[column].positive, positive) << "column " << column;
  EXPECT_DOUBLE_EQ(waveform.columns[column].negative, negative) << "column " << column;
}

TEST(ComputeWaveform, AveragesPositiveValuesAndTheOthersApart) {
  const Waveform waveform = monoWaveform({4, -2, 6, 0, 1, -9, -2, 3, 50, 50, 50, 50}, 3);
  EXPECT_EQ(waveform.viewWidth, 3);
  EXPECT_EQ(waveform.count, 12);
  EXPECT_EQ(waveform.perPixel, 4);
  ASSERT_EQ(waveform.columns.size(), 3u);
  expectColumn(waveform, 0, 10.0 / 4, -2.0 / 4);
  expectColumn(waveform, 1, 4.0 / 4, -11.0 / 4);
}

TEST(ComputeWaveform, AWindowThatEndsWithTheSoundIsNotRead) {
  expectColumn(monoWaveform({4, 4, 8, 8}, 2), 0, 4.0, 0.0);
  expectColumn(monoWaveform({4, 4, 8, 8}, 2), 1, 0.0, 0.0);
}

TEST(ComputeWaveform, AWindowThatEndsBeyondTheSoundIsNotRead) {
  const Waveform waveform = monoWaveform({1, 1, 2, 2, 3, 3, 4}, 3);
  EXPECT_EQ(waveform.perPixel, 2);
  ASSERT_EQ(waveform.columns.size(), 4u);
  expectColumn(waveform, 2, 3.0, 0.0);
  expectColumn(waveform, 3, 0.0, 0.0);
}

TEST(ComputeWaveform, AWindowThatEndsOneValueBeforeTheSoundIsRead) {
  const Waveform waveform = monoWaveform({1, 1, 2, 2, 3}, 2);
  ASSERT_EQ(waveform.columns.size(), 3u);
  expectColumn(waveform, 1, 2.0, 0.0);
  expectColumn(waveform, 2, 0.0, 0.0);
}

TEST(ComputeWaveform, ValuesPerColumnAreRoundedDown) {
  EXPECT_EQ(monoWaveform(Samples(99), 50).perPixel, 1);
  EXPECT_EQ(monoWaveform(Samples(100), 50).perPixel, 2);
  EXPECT_EQ(monoWaveform(Samples(149), 50).perPixel, 2);
  EXPECT_EQ(monoWaveform(Samples(99), 50).columns.size(), 99u);
}

TEST(ComputeWaveform, ASoundShorterThanTheViewHasAColumnForEachValue) {
  const Waveform waveform = monoWaveform({5, -7, 9}, 800);
  EXPECT_EQ(waveform.perPixel, 1);
  ASSERT_EQ(waveform.columns.size(), 3u);
  expectColumn(waveform, 0, 5.0, 0.0);
  expectColumn(waveform, 1, 0.0, -7.0);
  expectColumn(waveform, 2, 0.0, 0.0);
}

TEST(ComputeWaveform, OfAStereoSoundTakesTheFirstFramesByChannelsValues) {
  const Samples interleaved = {10, -20, 30, -40, 50, -60, 70, -80};
  const Waveform waveform = computeWaveform(interleaved.data(), 4, 2, 2);
  EXPECT_EQ(waveform.count, 2);
  EXPECT_EQ(waveform.perPixel, 1);
  ASSERT_EQ(waveform.columns.size(), 2u);
  expectColumn(waveform, 0, 10.0, 0.0);
  expectColumn(waveform, 1, 0.0, 0.0);
}

TEST(ComputeWaveform, FramesByChannelsIsAnIntegerDivision) {
  const Samples interleaved(14, 1);
  EXPECT_EQ(computeWaveform(interleaved.data(), 7, 2, 1).count, 3);
}

TEST(ComputeWaveform, WithoutValuesHasNoColumn) {
  const Samples one = {5};
  EXPECT_TRUE(computeWaveform(nullptr, 100, 1, 10).columns.empty());
  EXPECT_TRUE(computeWaveform(one.data(), 0, 1, 10).columns.empty());
  EXPECT_TRUE(computeWaveform(one.data(), -5, 1, 10).columns.empty());
  EXPECT_TRUE(computeWaveform(one.data(), 1, 0, 10).columns.empty());
  EXPECT_TRUE(computeWaveform(one.data(), 1, 2, 10).columns.empty());
  EXPECT_EQ(computeWaveform(nullptr, 100, 1, 10).viewWidth, 10);
  EXPECT_EQ(computeWaveform(nullptr, 100, 1, 10).perPixel, 1);
}

TEST(ComputeWaveform, AViewWithoutWidthCountsAsOnePixel) {
  EXPECT_EQ(monoWaveform({1, 2, 3}, 0).perPixel, 3);
  EXPECT_EQ(monoWaveform({1, 2, 3}, -4).columns.size(), 1u);
}

TEST(ComputeWaveform, SumsBeyond32BitsDoNotWrap) {
  constexpr int kPerColumn = 200000;
  Samples samples(2 * kPerColumn, 32767);
  expectColumn(monoWaveform(samples, 2), 0, 32767.0, 0.0);
  samples.assign(samples.size(), -32768);
  expectColumn(monoWaveform(samples, 2), 0, 0.0, -32768.0);
}

TEST(ComputeWaveform, ReachesTheEndOfASoundLongerThanAnHour) {
  constexpr std::int32_t kFrames = 48000 * 3700;
  constexpr std::int32_t kPerColumn = kFrames / 1000;
  // Memory that is only read costs nothing here, unlike a filled container of this size.
  const SampleArray samples = allocateSamples(kFrames, 1, std::uint64_t{2} * kFrames);
  ASSERT_NE(samples, nullptr);
  samples[kFrames - 1 - kPerColumn] = 32000;
  const Waveform waveform = computeWaveform(samples.get(), kFrames, 1, 1000);
  EXPECT_EQ(waveform.count, kFrames);
  ASSERT_EQ(waveform.columns.size(), 1000u);
  expectColumn(waveform, 998, 32000.0 / kPerColumn, 0.0);
}

TEST(WaveformOutline, GoesFromTheMiddleOfTheLeftEdgeOverTheColumnsBackToTheMiddle) {
  Waveform waveform;
  waveform.columns = {{100.0, -50.0}, {25.0, 0.0}, {0.0, 0.0}};
  const std::vector<WaveformPoint> points = waveformOutline(waveform, 200, 110);
  const std::vector<std::pair<double, double>> expected = {{0, 55}, {0, 105}, {0, 30}, {1, 67.5},
                                                           {1, 55}, {2, 55},  {2, 55}, {2, 55}};
  ASSERT_EQ(points.size(), expected.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_DOUBLE_EQ(points[i].x, expected[i].first) << "point " << i;
    EXPECT_DOUBLE_EQ(points[i].y, expected[i].second) << "point " << i;
  }
}

TEST(WaveformOutline, TheMiddleIsAnIntegerDivision) {
  EXPECT_EQ(waveformOutline(Waveform{}, 100, 81).at(0).y, 40.0);
}

TEST(WaveformOutline, ALoudSoundIsNotFlattened) {
  Waveform waveform;
  waveform.columns = {{16383.5, -16383.5}};
  const std::vector<WaveformPoint> points = waveformOutline(waveform, 32767, 100);
  EXPECT_DOUBLE_EQ(points.at(1).y, 95.0);
  EXPECT_DOUBLE_EQ(points.at(2).y, 5.0);
}

TEST(WaveformOutline, OfASilentOrWhollyNegativeSoundIsAFlatLine) {
  Waveform waveform;
  waveform.columns = {{0.0, 0.0}, {0.0, -3000.0}};
  for (const WaveformPoint& point : waveformOutline(waveform, 0, 100)) EXPECT_EQ(point.y, 50.0);
}

TEST(WaveformOutline, OfAnEmptySoundIsItsFirstPoint) {
  const std::vector<WaveformPoint> points = waveformOutline(Waveform{}, 0, 100);
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points[0].x, 0.0);
  EXPECT_EQ(points[0].y, 50.0);
}

TEST(CursorColumn, IsTheTruncatedPositionDividedInIntegers) {
  EXPECT_EQ(cursorColumn(0.0, 1000, 10), 0);
  EXPECT_EQ(cursorColumn(0.5, 1000, 10), 50);
  EXPECT_EQ(cursorColumn(0.5099, 1000, 10), 50);
  EXPECT_EQ(cursorColumn(0.51, 1000, 10), 51);
  EXPECT_EQ(cursorColumn(1.0, 1000, 10), 100);
  EXPECT_EQ(cursorColumn(0.999, 7, 1), 6);
  EXPECT_EQ(cursorColumn(-0.0299, 1000, 10), -2);
}

TEST(CursorColumn, ProductsBeyond32BitsDoNotWrap) {
  EXPECT_EQ(cursorColumn(1.5, 2000000000, 2000000), 1500);
  EXPECT_EQ(cursorColumn(1e6, 2000000000, 2000000000), 1000000);
}

TEST(CursorColumn, IsDefinedForEveryPosition) {
  EXPECT_EQ(cursorColumn(kNotANumber, 1000, 10), 0);
  EXPECT_EQ(cursorColumn(kInfinity, 1000, 10), kFarColumn);
  EXPECT_EQ(cursorColumn(-kInfinity, 1000, 10), -kFarColumn);
  EXPECT_EQ(cursorColumn(kInfinity, 0, 1), 0);
  EXPECT_EQ(cursorColumn(1e9, 1000, 1), kFarColumn);
  EXPECT_EQ(cursorColumn(0.5, 1000, 0), 500);
}

TEST(DragRange, IsNoneWithoutMovement) {
  EXPECT_FALSE(dragRange(-1, -1, 100).has_value());
  EXPECT_FALSE(dragRange(40, 40, 100).has_value());
}

TEST(DragRange, StartsWithTheSmallerColumn) {
  const auto rightwards = dragRange(25, 75, 100);
  ASSERT_TRUE(rightwards.has_value());
  EXPECT_DOUBLE_EQ(rightwards->start, 0.25);
  EXPECT_DOUBLE_EQ(rightwards->end, 0.75);
  const auto leftwards = dragRange(75, 25, 100);
  ASSERT_TRUE(leftwards.has_value());
  EXPECT_DOUBLE_EQ(leftwards->start, 0.25);
  EXPECT_DOUBLE_EQ(leftwards->end, 0.75);
}

TEST(DragRange, MayLeaveTheView) {
  const auto range = dragRange(150, -50, 100);
  ASSERT_TRUE(range.has_value());
  EXPECT_DOUBLE_EQ(range->start, -0.5);
  EXPECT_DOUBLE_EQ(range->end, 1.5);
}

TEST(DragRange, OfOnePixelIsARange) { EXPECT_TRUE(dragRange(40, 41, 100).has_value()); }

TEST(DragRange, InAViewWithoutWidthIsFinite) {
  const auto range = dragRange(0, 3, 0);
  ASSERT_TRUE(range.has_value());
  EXPECT_DOUBLE_EQ(range->end, 3.0);
}

TEST(RangeBox, CoversTheRange) {
  const PixelSpan box = rangeBox({0.25, 0.75}, 200);
  EXPECT_DOUBLE_EQ(box.x, 50.0);
  EXPECT_DOUBLE_EQ(box.width, 100.0);
}

TEST(RangeBox, HasANegativeWidthWhenTheRangeEndsBeforeItStarts) {
  const PixelSpan box = rangeBox({1.0, 0.0}, 200);
  EXPECT_DOUBLE_EQ(box.x, 200.0);
  EXPECT_DOUBLE_EQ(box.width, -200.0);
}

TEST(RangeBox, IsFiniteForEveryRange) {
  const PixelSpan whole = rangeBox({-kInfinity, kInfinity}, 200);
  EXPECT_DOUBLE_EQ(whole.x, -kFarColumn);
  EXPECT_DOUBLE_EQ(whole.width, 2.0 * kFarColumn);
  const PixelSpan none = rangeBox({kNotANumber, kNotANumber}, 200);
  EXPECT_DOUBLE_EQ(none.x, 0.0);
  EXPECT_DOUBLE_EQ(none.width, 0.0);
}

}  // namespace
}  // namespace quorbel
