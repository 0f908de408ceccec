#include "sound/truncate.h"

#include <gtest/gtest.h>

#include <limits>

#include "extreme_numbers.h"

namespace quorbel {
namespace {

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
  EXPECT_EQ(truncated(kInfinity), kLargestInt64);
  EXPECT_EQ(truncated(-kInfinity), kSmallestInt64);
  EXPECT_EQ(truncated(9223372036854775808.0), kLargestInt64);
  EXPECT_EQ(truncated(9223372036854774784.0), 9223372036854774784);
  EXPECT_EQ(truncated(-9223372036854775808.0), kSmallestInt64);
  EXPECT_EQ(truncated(-1e300), kSmallestInt64);
}

}  // namespace
}  // namespace quorbel
