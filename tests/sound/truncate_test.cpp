#include "sound/truncate.h"

#include <gtest/gtest.h>

#include <limits>

namespace quorbel {
namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Truncate, CutsTowardsZero) {
  EXPECT_EQ(truncated(2.999), 2);
  EXPECT_EQ(truncated(-2.999), -2);
  EXPECT_EQ(truncated(-0.5), 0);
  EXPECT_EQ(truncated(3.0), 3);
}

TEST(Truncate, KeepsNumbersBeyond32Bits) { EXPECT_EQ(truncated(5e9 + 0.5), 5000000000); }

TEST(Truncate, NotANumberIsZero) {
  EXPECT_EQ(truncated(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(Truncate, NumbersBeyond64BitsGiveTheNearerLimit) {
  EXPECT_EQ(truncated(kInfinity), kLargest);
  EXPECT_EQ(truncated(-kInfinity), kSmallest);
  EXPECT_EQ(truncated(9223372036854775808.0), kLargest);
  EXPECT_EQ(truncated(9223372036854774784.0), 9223372036854774784);
  EXPECT_EQ(truncated(-9223372036854775808.0), kSmallest);
  EXPECT_EQ(truncated(-1e300), kSmallest);
}

}  // namespace
}  // namespace quorbel
