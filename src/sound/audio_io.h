#pragma once

#include <AL/al.h>

#include <cstdint>
#include <string>

#include "sound/sample_array.h"

// The sound player: reads a sound file with libsndfile and plays it through OpenAL. What is drawn
// of a sound is computed in waveform.h.

namespace quorbel {

/// Plays one recording: holds the whole file in memory, uploads a part of it to OpenAL and plays
/// that.
///
/// One object at a time: OpenAL has one current context per process, and this object makes its own
/// the current one. All calls come from one thread; OpenAL plays in the background and is polled
/// through `isPlaying`. Units: fractions are of the whole sound (0.0 .. 1.0), segments count single
/// sample values, `frames` counts groups of one value per channel. No operation throws on failure.
///
/// Without a successful `init` sounds can be loaded and looked at, and the playing operations do
/// nothing: OpenAL is not called.
class AudioIO {
 public:
  AudioIO() = default;
  AudioIO(const AudioIO&) = delete;
  AudioIO& operator=(const AudioIO&) = delete;

  /// Stops the sound and gives back the source, the buffer, the context and the device.
  virtual ~AudioIO();

  /// Opens the default sound device. False when there is none or it cannot be used; then nothing
  /// stays open. A second call starts over with a fresh device.
  bool init();

  /// Reads the whole sound file at `path` as 16-bit samples; true on success. Needs no `init`.
  ///
  /// The container and its encoding are found from the file's header by libsndfile; a file without
  /// a header is refused. A file that cannot be opened leaves the sound held so far in place. A
  /// sound too long for the memory leaves no sound. A file that ends before the promised number of
  /// samples (a cut FLAC file, say) fails too, but stays open until the process ends, and what
  /// arrived stays in place, followed by silence. What OpenAL plays meanwhile goes on: OpenAL holds
  /// a copy of it.
  bool load(const std::string& path);

  /// Uploads the samples between the fractions `from` and `to` to OpenAL, for the next `play`; see
  /// `segmentBetween` for how fractions become positions. Does nothing while playing or without
  /// samples.
  ///
  /// Where OpenAL refuses the part, one line goes to standard output and the last part accepted
  /// stays: it refuses an odd number of values of a stereo sound, and more than 2^31 - 1 bytes.
  void setSegment(double from, double to);

  /// Plays the uploaded part from its start. Does nothing while playing or without samples.
  void play();

  /// Stops playing; does nothing when nothing plays.
  void stop();

  /// True while OpenAL plays.
  bool isPlaying() const;

  /// How far playing has got `elapsedMs` milliseconds after `play`, as `playedFraction` computes it
  /// from the sound held now; counted from the start of the part that plays. 0.0 when nothing
  /// plays.
  double positionFraction(std::int32_t elapsedMs) const;

  /// Gives the samples' memory back; does nothing while playing.
  void freeSamples();

  /// The samples, interleaved, or null without a sound; owned by this object and valid until the
  /// next `load` or `freeSamples`. At least max(frames, 0) values, frames x channels of them unless
  /// the file has 2^31 frames or more (then `frames` says less than the array holds).
  const std::int16_t* samples() const { return m_Samples.get(); }

  std::int32_t channels() const { return m_Channels; }
  /// Frames of the file: the low 32 bits of libsndfile's count, so negative from 2^31 on.
  std::int32_t frames() const { return m_Frames; }
  /// Frames per second.
  std::int32_t sampleRate() const { return m_SampleRate; }
  /// The largest sample, 0 when none is positive.
  std::int32_t peak() const { return m_Peak; }
  /// First value of the part last given to OpenAL.
  std::int32_t segmentStart() const { return m_SegmentStart; }
  /// One past the last value of the part last given to OpenAL.
  std::int32_t segmentEnd() const { return m_SegmentEnd; }

 private:
  void closeDevice();

  bool m_Initialised = false;
  std::int32_t m_SegmentStart = 0;
  std::int32_t m_SegmentEnd = 0;
  SampleArray m_Samples;
  std::int32_t m_Channels = 0;
  std::int32_t m_Frames = 0;
  std::int32_t m_SampleRate = 0;
  std::int32_t m_Peak = 0;
  ALuint m_Source = 0;
  ALuint m_Buffer = 0;
};

}  // namespace quorbel
