#pragma once

#include <cstdint>

namespace quorbel {

/// A wall clock reading in milliseconds: seconds x 1000 + microseconds / 1000 in 32 bits. It wraps
/// about every 50 days, so only differences between two readings mean something.
std::int32_t wallClockMs(std::int64_t seconds, std::int64_t microseconds);

/// The milliseconds from the reading `startMs` to the reading `nowMs`, also when the clock wrapped
/// in between; right as long as less than 2^31 ms (24 days) lie between them.
std::int32_t elapsedMs(std::int32_t nowMs, std::int32_t startMs);

}  // namespace quorbel
