#include "sound/segment.h"

#include <algorithm>

#include "sound/truncate.h"

namespace quorbel {

std::int32_t lowFrameCount(std::int64_t frames) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(frames));
}

Segment segmentBetween(double from, double to, std::int32_t frames) {
  const std::int32_t limit = std::max(frames, 0);
  const auto position = [limit](double fraction) {
    const std::int64_t sample = truncated(fraction * limit);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sample, 0, limit));
  };
  Segment segment{position(from), position(to)};
  if (segment.end < segment.start) std::swap(segment.start, segment.end);
  return segment;
}

double playedFraction(std::int32_t elapsedMs, std::int32_t sampleRate, std::int32_t frames,
                      std::int32_t channels) {
  if (channels <= 0 || frames / channels <= 0) return 0.0;
  // NOLINTNEXTLINE(bugprone-integer-division): whole samples of each channel
  return elapsedMs / 1000.0 * sampleRate / (frames / channels);
}

}  // namespace quorbel
