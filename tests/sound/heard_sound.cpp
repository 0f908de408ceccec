#include "heard_sound.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quorbel {
namespace {

using testing::AssertionFailure;

constexpr std::size_t kBlockFrames = 256;
constexpr std::size_t kRampFrames = 64;  // in which the library lowers what it has held

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
std::size_t holdEnd(const Recording& recording, std::size_t end, std::size_t channels) {
  const Samples& heard = recording.samples;
  const std::size_t block = kBlockFrames * channels;
  const std::size_t begun = (recording.taken + end) % block;
  const std::size_t blockEnd = std::min(heard.size(), end + (block - begun) % block);
  for (std::size_t i = end; i < blockEnd; ++i)
    if (heard[i] != heard[i - channels]) return end;
  return blockEnd;
}

/// Takes away what the library adds from `start` on so that the frame before it ends without a
/// click.
void removeRamp(Samples& heard, std::size_t start, std::size_t channels) {
  const std::size_t end = std::min(heard.size(), start + kRampFrames * channels);
  for (std::size_t i = start; i < end; ++i) {
    const std::size_t frame = (i - start) / channels;
    const double last = heard[start - channels + i % channels];
    const double ramp = last * static_cast<double>(kRampFrames - frame) / kRampFrames;
    const int rest = heard[i] - static_cast<int>(std::lround(ramp));
    heard[i] = static_cast<std::int16_t>(std::abs(rest) > 1 ? rest : 0);  // it rounds otherwise
  }
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
  return {info.channels, info.samplerate, samples, 0};
}

testing::AssertionResult takeSound(Recording& recording, const Samples& sound) {
  if (recording.channels == 0) return AssertionFailure() << "nothing was recorded";
  const auto channels = static_cast<std::size_t>(recording.channels);
  Samples& heard = recording.samples;
  const Samples expected = withoutSilence(sound, channels);
  const std::size_t start = silenceEnd(heard, 0, channels);
  if (heard.size() - start < expected.size())
    return AssertionFailure() << "too little was played: " << heard.size() - start << " values of "
                              << expected.size();
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (std::abs(heard[start + i] - expected[i]) > 1)
      return AssertionFailure() << heard[start + i] << " is heard at value " << i << ", not "
                                << expected[i];
  }
  std::size_t end = start + expected.size();
  if (const std::size_t held = holdEnd(recording, end, channels); held > end) {
    end = held;
    removeRamp(heard, end, channels);
  }
  end = silenceEnd(heard, end, channels);
  recording.taken += end;
  heard.erase(heard.begin(), heard.begin() + static_cast<std::ptrdiff_t>(end));
  return testing::AssertionSuccess();
}

}  // namespace quorbel
