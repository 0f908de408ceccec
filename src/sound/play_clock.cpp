#include "sound/play_clock.h"

namespace quorbel {

// Unsigned numbers wrap by definition; signed ones must not overflow.

std::int32_t wallClockMs(std::int64_t seconds, std::int64_t microseconds) {
  const std::uint32_t fromSeconds = static_cast<std::uint32_t>(seconds) * 1000u;
  return static_cast<std::int32_t>(fromSeconds + static_cast<std::uint32_t>(microseconds / 1000));
}

std::int32_t elapsedMs(std::int32_t nowMs, std::int32_t startMs) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(nowMs) -
                                   static_cast<std::uint32_t>(startMs));
}

}  // namespace quorbel
