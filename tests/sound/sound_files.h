#pragma once

#include <sndfile.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "temporary_folder.h"

// Sound files for the tests, made by libsndfile, whole and damaged.

namespace quorbel {

using Samples = std::vector<std::int16_t>;

/// The path of a file in a test's folder.
std::string pathIn(const TemporaryFolder& folder, const std::string& name);

/// Interleaved samples in which every position differs from its neighbours and left from right; the
/// first value of each channel is not 0.
Samples testTone(int frames, int channels);

/// Writes `samples` in the libsndfile format `format` (container | encoding). Throws when
/// libsndfile cannot.
void writeSound(const std::string& path, int format, int sampleRate, int channels,
                const Samples& samples);

/// A 16-bit WAV file.
void writeWav(const std::string& path, int sampleRate, int channels, const Samples& samples);

void writeBytes(const std::string& path, const std::string& bytes);

/// Copies the first `percent` hundredths of the file `from` to `to`.
void copyCut(const std::string& from, const std::string& to, int percent);

/// The samples of a file, interleaved; none when libsndfile cannot read it, does not know its
/// length or finds fewer than it promises. Versions differ in what they make of a file that is cut.
std::optional<Samples> readWhole(const std::string& path);

/// Makes a FLAC file's header promise `frames` frames (below 2^36).
void promiseFlacFrames(const std::string& path, std::uint64_t frames);

}  // namespace quorbel
