#include "heard_sound.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace quorbel {
namespace {

using testing::AssertionFailure;

constexpr std::size_t kBlockFrames = 256;
/// In these the library lowers the frame that it has held to nothing, whatever else is played
/// there; not always, since a source that is given up at once is silent at once.
constexpr std::size_t kRampFrames = 64;

/// Where the next frame begins that is not silent, from the one at `start` on.
std::size_t silenceEnd(const Samples& samples, std::size_t start, std::size_t channels) {
  const auto loud = std::find_if(samples.begin() + static_cast<std::ptrdiff_t>(start),
                                 samples.end(), [](std::int16_t value) { return value != 0; });
  if (loud == samples.end()) return samples.size();
  const auto index = static_cast<std::size_t>(loud - samples.begin());
  return index - index % channels;
}

Samples withoutSilence(Samples samples, std::size_t channels) {
  const auto first = static_cast<std::ptrdiff_t>(silenceEnd(samples, 0, channels));
  samples.erase(samples.begin(), samples.begin() + first);
  while (!samples.empty() &&
         silenceEnd(samples, samples.size() - channels, channels) == samples.size())
    samples.resize(samples.size() - channels);
  return samples;
}

/// Where the block ends in which a sound does, if it is full of the sound's last frame; else `end`.
/// `taken` values came before these.
std::size_t holdEnd(const Samples& heard, std::size_t taken, std::size_t end,
                    std::size_t channels) {
  const std::size_t block = kBlockFrames * channels;
  const std::size_t begun = (taken + end) % block;
  const std::size_t blockEnd = std::min(heard.size(), end + (block - begun) % block);
  for (std::size_t i = end; i < blockEnd; ++i)
    if (heard[i] != heard[i - channels]) return end;
  return blockEnd;
}

/// What is left of the recording, as it stands and without the end of the sound before.
std::array<Samples, 2> readings(const Recording& recording) {
  const auto channels = static_cast<std::size_t>(recording.channels);
  Samples heard = recording.samples;
  const std::size_t rampEnd = recording.held.empty() ? 0 : kRampFrames * channels;
  for (std::size_t i = 0; i < std::min(rampEnd, heard.size()); ++i) {
    const double share = static_cast<double>(kRampFrames - i / channels) / kRampFrames;
    const int rest = heard[i] - static_cast<int>(std::lround(recording.held[i % channels] * share));
    heard[i] = static_cast<std::int16_t>(std::abs(rest) > 1 ? rest : 0);  // it rounds otherwise
  }
  return {recording.samples, heard};
}

testing::AssertionResult isSound(const Samples& heard, std::size_t start, const Samples& sound) {
  if (heard.size() - start < sound.size())
    return AssertionFailure() << "too little was played: " << heard.size() - start << " values of "
                              << sound.size();
  for (std::size_t i = 0; i < sound.size(); ++i) {
    if (std::abs(heard[start + i] - sound[i]) > 1)
      return AssertionFailure() << heard[start + i] << " is heard at value " << i << ", not "
                                << sound[i];
  }
  return testing::AssertionSuccess();
}

}  // namespace

std::string recorderSettings(const std::string& path, int sampleRate, int channels) {
  return "[general]\nsample-type = int16\ndither = false\nstereo-mode = speakers\nhrtf = false\n"
         "output-limiter = false\nperiod_size = " +
         std::to_string(kBlockFrames) + "\nfrequency = " + std::to_string(sampleRate) +
         "\nchannels = " + (channels == 2 ? "stereo" : "mono") + "\n[wave]\nfile = " + path + "\n";
}

Recording readRecording(const std::string& path) {
  SF_INFO info{};
  SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
  if (file == nullptr) return {};
  Samples samples(static_cast<std::size_t>(info.frames * info.channels));
  sf_read_short(file, samples.data(), static_cast<sf_count_t>(samples.size()));
  sf_close(file);
  return {info.channels, info.samplerate, samples, 0, {}};
}

testing::AssertionResult takeSound(Recording& recording, const Samples& sound) {
  if (recording.channels == 0) return AssertionFailure() << "nothing was recorded";
  const auto channels = static_cast<std::size_t>(recording.channels);
  const Samples expected = withoutSilence(sound, channels);
  testing::AssertionResult result = AssertionFailure();
  for (const Samples& heard : readings(recording)) {
    const std::size_t start = silenceEnd(heard, 0, channels);
    result = isSound(heard, start, expected);
    if (!result) continue;
    const std::size_t end = start + expected.size();
    const std::size_t held = holdEnd(heard, recording.taken, end, channels);
    const auto rest = heard.begin() + static_cast<std::ptrdiff_t>(held);
    recording.held.clear();
    if (held > end) recording.held.assign(rest - recording.channels, rest);
    recording.samples = Samples(rest, heard.end());
    recording.taken += held;
    break;
  }
  return result;
}

Samples restOf(const Recording& recording) {
  const auto channels = static_cast<std::size_t>(recording.channels);
  for (const Samples& heard : readings(recording))
    if (silenceEnd(heard, 0, channels) == heard.size()) return {};
  return recording.samples;
}

}  // namespace quorbel
