#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>

// Memory for a whole sound. Reading the sound into it is in audio_io.cpp.

namespace quorbel {

struct SampleArrayDeleter {
  void operator()(std::int16_t* samples) const { std::free(samples); }
};

/// An owned array of 16-bit samples, or null.
using SampleArray =
    std::unique_ptr<std::int16_t[], SampleArrayDeleter>;  // NOLINT(modernize-avoid-c-arrays)

/// The bytes that one sound may take now: half of the memory that the kernel says is available
/// (MemAvailable in /proc/meminfo; without that, half of the machine's memory), for a sound that
/// plays is held a second time by OpenAL.
std::uint64_t memoryForSamples();

/// An array of frames x channels samples, all 0; never null for a sound of no frames.
///
/// Null when a number is negative, when the array would take more than `limitBytes`, or when the
/// system refuses the memory. The limit is asked first because a system that overcommits grants far
/// more than it has and ends the process when the array is filled. Memory that nobody writes to
/// costs nothing: a header that promises too much is paid for only as far as samples arrive.
SampleArray allocateSamples(std::int64_t frames, std::int32_t channels, std::uint64_t limitBytes);

}  // namespace quorbel
