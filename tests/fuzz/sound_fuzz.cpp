// Loading a sound file, and everything that is computed from it. No sound is played.

#include "quiet.h"
#include "sound/audio_io.h"
#include "sound/segment.h"
#include "sound/waveform.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int kWidth = 640;
  constexpr int kHeight = 50;
  quorbel::AudioIO audio;
  if (!audio.load(quorbel::fileOf(data, size))) return 0;
  const quorbel::Waveform waveform =
      quorbel::computeWaveform(audio.samples(), audio.frames(), audio.channels(), kWidth);
  quorbel::waveformOutline(waveform, audio.peak(), kHeight);
  quorbel::cursorColumn(0.5, waveform.count, waveform.perPixel);
  quorbel::segmentBetween(0.25, 0.75, audio.frames());
  quorbel::playedFraction(1000, audio.sampleRate(), audio.frames(), audio.channels());
  return 0;
}
