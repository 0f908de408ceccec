#pragma once

#include <cstdint>
#include <limits>

namespace quorbel {

inline constexpr int kLargestInt = std::numeric_limits<int>::max();
inline constexpr int kSmallestInt = std::numeric_limits<int>::min();
inline constexpr std::int64_t kLargestInt64 = std::numeric_limits<std::int64_t>::max();
inline constexpr std::int64_t kSmallestInt64 = std::numeric_limits<std::int64_t>::min();
inline constexpr double kLargestDouble = std::numeric_limits<double>::max();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

}  // namespace quorbel
