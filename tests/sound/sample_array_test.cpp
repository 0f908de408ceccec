#include "sound/sample_array.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <limits>
#include <string>

#include "extreme_numbers.h"

namespace quorbel {
namespace {

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

TEST(AllocateSamples, GivesSilence) {
  const SampleArray samples = allocateSamples(1000, 2, kNoLimit);
  ASSERT_NE(samples, nullptr);
  for (std::size_t i = 0; i < 2000; ++i) ASSERT_EQ(samples[i], 0) << "at " << i;
}

TEST(AllocateSamples, GivesAnArrayForASoundOfNoFrames) {
  EXPECT_NE(allocateSamples(0, 1, kNoLimit), nullptr);
  EXPECT_NE(allocateSamples(0, 2, 0), nullptr);
}

TEST(AllocateSamples, TakesAtMostTheLimit) {
  EXPECT_NE(allocateSamples(100, 3, 600), nullptr);
  EXPECT_EQ(allocateSamples(100, 3, 599), nullptr);
  EXPECT_EQ(allocateSamples(101, 3, 600), nullptr);
}

TEST(AllocateSamples, RefusesProductsBeyond64Bits) {
  EXPECT_EQ(allocateSamples(kLargestInt64, 1, kNoLimit - 1), nullptr);
  EXPECT_EQ(allocateSamples(kLargestInt64, 1024, kNoLimit), nullptr);
  // 2^61 frames x 4 channels x 2 bytes are 0 in 64 bits.
  EXPECT_EQ(allocateSamples(std::int64_t{1} << 61, 4, kNoLimit), nullptr);
}

TEST(AllocateSamples, IsNullWhenTheSystemRefuses) {
  EXPECT_EQ(allocateSamples(std::int64_t{1} << 62, 1, kNoLimit), nullptr);
}

TEST(AllocateSamples, RefusesNegativeNumbers) {
  EXPECT_EQ(allocateSamples(-1, 1, kNoLimit), nullptr);
  EXPECT_EQ(allocateSamples(1, -1, kNoLimit), nullptr);
}

TEST(MemoryForSamples, IsAtMostHalfOfTheMachinesMemory) {
  std::ifstream meminfo("/proc/meminfo");
  std::string name;
  std::uint64_t totalKibibytes = 0;
  meminfo >> name >> totalKibibytes;
  ASSERT_EQ(name, "MemTotal:");
  EXPECT_LE(memoryForSamples(), totalKibibytes * 512);
  // A machine that builds this has more than that to spare.
  EXPECT_GT(memoryForSamples(), std::uint64_t{16} << 20);
}

}  // namespace
}  // namespace quorbel
