#pragma once

#include <cstdint>

// The arithmetic of positions in a sound. What talks to the sound library is in audio_io.h.

namespace quorbel {

/// A stretch of a sound's array of samples: values start .. end - 1, counted in single values (not
/// in frames, even when left and right values alternate). 0 <= start <= end.
struct Segment {
  std::int32_t start = 0;
  std::int32_t end = 0;
};

/// The frame count that fits the player's 32-bit field: the low 32 bits of libsndfile's 64-bit
/// count. A file of 2^31 frames or more therefore gives a count that is negative or much too small,
/// never one above the true count.
std::int32_t lowFrameCount(std::int64_t frames);

/// The stretch between two fractions of a sound of `frames` frames; which of the two is the larger
/// does not matter. Positions are int(fraction x frames), held within 0 .. frames, so that the
/// stretch never leaves an array of at least `frames` values; a NaN counts as 0. A negative
/// `frames` counts as 0.
Segment segmentBetween(double from, double to, std::int32_t frames);

/// What has been played `elapsedMs` milliseconds after the start, as a fraction of a sound:
/// seconds x sampleRate / (frames / channels), the inner division in integers. So a stereo sound's
/// fraction grows twice as fast as its time does, in step with segments, which count single values
/// and end at `frames` of them. 0.0 where frames / channels is not positive.
double playedFraction(std::int32_t elapsedMs, std::int32_t sampleRate, std::int32_t frames,
                      std::int32_t channels);

}  // namespace quorbel
