#include "sound_files.h"

#include <cmath>
#include <fstream>
#include <stdexcept>

namespace quorbel {

std::string pathIn(const TemporaryFolder& folder, const std::string& name) {
  return (folder.path() / name).string();
}

Samples testTone(int frames, int channels) {
  Samples samples;
  samples.reserve(static_cast<std::size_t>(frames) * static_cast<std::size_t>(channels));
  for (int frame = 0; frame < frames; ++frame) {
    for (int channel = 0; channel < channels; ++channel) {
      const double wave = 9000.0 * std::sin(0.05 * (channel + 1) * frame + 1.0 + channel);
      samples.push_back(static_cast<std::int16_t>(wave + frame % 2001 * 7919 % 2001));
    }
  }
  return samples;
}

void writeSound(const std::string& path, int format, int sampleRate, int channels,
                const Samples& samples) {
  SF_INFO info{};
  info.format = format;
  info.samplerate = sampleRate;
  info.channels = channels;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  if (file == nullptr) throw std::runtime_error(path + ": " + sf_strerror(nullptr));
  const auto count = static_cast<sf_count_t>(samples.size());
  const sf_count_t written = sf_write_short(file, samples.data(), count);
  sf_close(file);
  if (written != count) throw std::runtime_error(path + ": not written whole");
}

void writeWav(const std::string& path, int sampleRate, int channels, const Samples& samples) {
  writeSound(path, SF_FORMAT_WAV | SF_FORMAT_PCM_16, sampleRate, channels, samples);
}

void writeBytes(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

void copyCut(const std::string& from, const std::string& to, int percent) {
  const std::string bytes = textOf(from);
  writeBytes(to, bytes.substr(0, bytes.size() * static_cast<std::size_t>(percent) / 100));
}

std::optional<Samples> readWhole(const std::string& path) {
  SF_INFO info{};
  SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
  if (file == nullptr) return std::nullopt;
  const bool isLengthKnown = info.frames < SF_COUNT_MAX;
  const sf_count_t count = isLengthKnown ? info.frames * info.channels : 0;
  Samples samples(static_cast<std::size_t>(count));
  const sf_count_t arrived = sf_read_short(file, samples.data(), count);
  sf_close(file);
  if (!isLengthKnown || arrived != count) return std::nullopt;
  return samples;
}

void promiseFlacFrames(const std::string& path, std::uint64_t frames) {
  // The count is the last 36 bits of the eight bytes that begin at byte 18: "fLaC", the block's own
  // header of 4 bytes, and 10 bytes of block and frame sizes stand before them.
  constexpr std::size_t kLastCountByte = 25;
  std::string bytes = textOf(path);
  for (std::size_t i = 0; i < 4; ++i) {
    bytes.at(kLastCountByte - i) = static_cast<char>(frames >> (8 * i) & 0xFF);
  }
  char& shared = bytes.at(kLastCountByte - 4);
  shared = static_cast<char>((shared & 0xF0) | (frames >> 32 & 0x0F));
  writeBytes(path, bytes);
}

}  // namespace quorbel
