#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace quorbel {

/// `value` without its fraction (towards zero), defined for every double: a NaN gives 0, and what
/// lies beyond 64 bits gives the nearer limit. Node times of a lattice may be NaN or infinite, and
/// converting those with a plain cast is undefined.
inline std::int64_t truncated(double value) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (std::isnan(value)) return 0;
  if (value >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (value < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

}  // namespace quorbel
