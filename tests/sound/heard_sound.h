#pragma once

#include <gtest/gtest.h>

#include <string>

#include "sound_files.h"

// What OpenAL Soft plays, recorded by its wave writer, held against what should be heard.

namespace quorbel {

struct Recording {
  int channels = 0;
  int sampleRate = 0;     ///< in Hz
  Samples samples;        ///< interleaved
  std::size_t taken = 0;  ///< how many there were before these
  Samples held;           ///< the frame that filled the block before these, if one did
};

/// OpenAL Soft's configuration for a device that writes what it plays into a file. Mixing leaves
/// 16-bit samples of the device's own rate and channels as they are.
std::string recorderSettings(const std::string& path, int sampleRate, int channels);

/// Reads what such a device has written; no channels when there is nothing.
Recording readRecording(const std::string& path);

/// Takes one sound off the start of the recording, which is it but for a step of rounding, and
/// silence before it. The library mixes in blocks, and newer versions fill the one in which a sound
/// ends with its last frame; that is taken too. (A sound that ends with a block does not tell; so
/// none may.) A failure says where they differ.
testing::AssertionResult takeSound(Recording& recording, const Samples& sound);

/// What is heard after the sounds that were taken; nothing if that is silence, or what newer
/// versions put there against clicks.
Samples restOf(const Recording& recording);

}  // namespace quorbel
