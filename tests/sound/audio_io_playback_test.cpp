#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "heard_sound.h"
#include "probe_process.h"
#include "sound_files.h"
#include "temporary_folder.h"

// The player through the real OpenAL Soft: what it plays, recorded by the library's wave writer,
// and how it behaves on the library's silent device.

namespace quorbel {
namespace {

using Words = std::vector<std::string>;

/// The recording is this sound and nothing else.
void expectHeard(Recording recording, const Samples& sound) {
  EXPECT_TRUE(takeSound(recording, sound));
  EXPECT_EQ(restOf(recording), Samples()) << "too much was played";
}

class AudioIOPlayback : public testing::Test {
 protected:
  /// A configuration of the user's own must not change the outcome.
  std::map<std::string, std::string> environmentFor(const std::string& driver) const {
    return {{"ALSOFT_DRIVERS", driver},
            {"ALSOFT_CONF", pathIn(folder_, "openal.conf")},
            {"HOME", folder_.path().string()},
            {"XDG_CONFIG_HOME", folder_.path().string()},
            {"XDG_CONFIG_DIRS", folder_.path().string()}};
  }

  /// Runs the probe with a device that writes what it plays into a file.
  Recording record(const Words& words, int sampleRate, int channels) {
    writeBytes(pathIn(folder_, "openal.conf"),
               recorderSettings(pathIn(folder_, "heard.wav"), sampleRate, channels));
    result_ = runProbe(words, environmentFor("wave"));
    const Recording recording = readRecording(pathIn(folder_, "heard.wav"));
    EXPECT_EQ(recording.channels, channels);
    EXPECT_EQ(recording.sampleRate, sampleRate);
    return recording;
  }

  ProbeResult runSilently(const Words& words) {
    writeBytes(pathIn(folder_, "openal.conf"), "[general]\n");
    return runProbe(words, environmentFor("null"));
  }

  /// A sound file that plays for `ms` milliseconds as mono sound.
  std::string sound(const std::string& name, int sampleRate, int channels, int ms) {
    const std::string path = pathIn(folder_, name);
    samples_ = testTone(sampleRate * ms / 1000, channels);
    writeWav(path, sampleRate, channels, samples_);
    return path;
  }

  Samples part(std::size_t start, std::size_t end) const {
    return Samples(samples_.begin() + static_cast<std::ptrdiff_t>(start),
                   samples_.begin() + static_cast<std::ptrdiff_t>(end));
  }

  TemporaryFolder folder_;
  Samples samples_;
  ProbeResult result_;
};

struct HeardCase {
  int sampleRate;
  int channels;
};

void PrintTo(const HeardCase& heard, std::ostream* out) {
  *out << heard.sampleRate << " Hz, " << heard.channels << " channels";
}

class AudioIOHeard : public AudioIOPlayback, public testing::WithParamInterface<HeardCase> {};

TEST_P(AudioIOHeard, TheWholeSound) {
  const auto [sampleRate, channels] = GetParam();
  const std::string path = sound("talk.wav", sampleRate, channels, 300);
  const Recording recording =
      record({"init", "load", path, "segment", "0", "1", "play", "finished"}, sampleRate, channels);
  EXPECT_EQ(result_.status, 0);
  EXPECT_EQ(result_.output, "init 1\nload 1\ncontext 0\n");
  // As many values as the sound has frames: of a stereo sound that is its first half.
  expectHeard(recording, part(0, samples_.size() / static_cast<std::size_t>(channels)));
}

TEST_P(AudioIOHeard, ARange) {
  const auto [sampleRate, channels] = GetParam();
  const std::string path = sound("talk.wav", sampleRate, channels, 400);
  const std::size_t frames = samples_.size() / static_cast<std::size_t>(channels);
  const Recording recording = record(
      {"init", "load", path, "segment", "0.25", "0.75", "play", "finished"}, sampleRate, channels);
  EXPECT_EQ(result_.status, 0);
  expectHeard(recording, part(frames / 4, frames * 3 / 4));
}

INSTANTIATE_TEST_SUITE_P(Sounds, AudioIOHeard,
                         testing::Values(HeardCase{8000, 1}, HeardCase{16000, 1},
                                         HeardCase{48000, 1}, HeardCase{8000, 2},
                                         HeardCase{16000, 2}, HeardCase{44100, 2},
                                         HeardCase{48000, 2}));

TEST_F(AudioIOPlayback, FromOneToZeroPlaysTheWholeSound) {
  const std::string path = sound("talk.wav", 16000, 1, 200);
  const Recording recording =
      record({"init", "load", path, "segment", "1", "0", "play", "finished"}, 16000, 1);
  expectHeard(recording, samples_);
}

TEST_F(AudioIOPlayback, PlayAndSetSegmentWhilePlayingDoNothing) {
  const std::string path = sound("talk.wav", 16000, 1, 1500);
  const Recording recording = record({"init", "load", path, "segment", "0", "1", "play", "begun",
                                      "play", "segment", "0.5", "1", "play", "finished"},
                                     16000, 1);
  EXPECT_EQ(result_.output, "init 1\nload 1\ncontext 0\n");
  expectHeard(recording, samples_);
}

TEST_F(AudioIOPlayback, ASecondPlayPlaysThePartAgain) {
  const std::string path = sound("talk.wav", 16000, 1, 200);
  Recording recording = record({"init", "load", path, "segment", "0", "0.5", "play", "finished",
                                "segment", "0.5", "1", "play", "finished"},
                               16000, 1);
  EXPECT_TRUE(takeSound(recording, part(0, 1600)));
  EXPECT_TRUE(takeSound(recording, part(1600, 3200)));
  EXPECT_EQ(restOf(recording), Samples()) << "too much was played";
}

TEST_F(AudioIOPlayback, StopEndsTheSoundEarly) {
  const std::string path = sound("talk.wav", 16000, 1, 10000);
  Recording recording = record({"init", "load", path, "segment", "0", "1", "play", "begun",
                                "playing", "stop", "playing", "position", "100"},
                               16000, 1);
  EXPECT_EQ(result_.output, "init 1\nload 1\nplaying 1\nplaying 0\nposition 0\ncontext 0\n");
  EXPECT_LT(recording.samples.size(), samples_.size() / 2);
  EXPECT_TRUE(takeSound(recording, part(0, 1)));
}

TEST_F(AudioIOPlayback, TheEndOfThePlayerEndsTheSound) {
  const std::string path = sound("talk.wav", 16000, 1, 10000);
  Recording recording =
      record({"init", "load", path, "segment", "0", "1", "play", "begun"}, 16000, 1);
  EXPECT_EQ(result_.status, 0);
  EXPECT_EQ(result_.output, "init 1\nload 1\ncontext 0\n");
  EXPECT_LT(recording.samples.size(), samples_.size() / 2);
  EXPECT_TRUE(takeSound(recording, part(0, 1)));
}

TEST_F(AudioIOPlayback, ANewSoundDoesNotDisturbTheOneThatPlays) {
  const std::string other = sound("other.wav", 16000, 1, 100);
  const std::string path = sound("talk.wav", 16000, 1, 1500);
  const Recording recording = record({"init", "load", path, "segment", "0", "1", "play", "begun",
                                      "load", other, "playing", "finished"},
                                     16000, 1);
  EXPECT_EQ(result_.output, "init 1\nload 1\nload 1\nplaying 1\ncontext 0\n");
  expectHeard(recording, samples_);
}

TEST_F(AudioIOPlayback, SamplesAreFreedOnlyWhenNothingPlays) {
  const std::string path = sound("talk.wav", 16000, 1, 5000);
  const ProbeResult result = runSilently({"init", "load", path, "segment", "0", "1", "play", "free",
                                          "samples", "stop", "free", "samples"});
  EXPECT_EQ(result.output, "init 1\nload 1\nsamples 1\nsamples 0\ncontext 0\n");
}

TEST_F(AudioIOPlayback, ThePositionIsThatOfThePlayingSound) {
  const std::string path = sound("talk.wav", 16000, 1, 5000);
  const ProbeResult result =
      runSilently({"init", "load", path, "segment", "0", "1", "position", "250", "play", "position",
                   "250", "stop", "position", "250"});
  EXPECT_EQ(result.output, "init 1\nload 1\nposition 0\nposition 0.05\nposition 0\ncontext 0\n");
}

TEST_F(AudioIOPlayback, AnOddPartOfAStereoSoundIsRefusedWithOneLine) {
  const std::string path = pathIn(folder_, "talk.wav");
  writeWav(path, 16000, 2, testTone(1001, 2));
  const ProbeResult result = runSilently({"init", "load", path, "segment", "0", "1", "play",
                                          "finished", "segment", "0", "0.5", "play", "finished"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "init 1\nload 1\nOpenAL : Error 0\ncontext 0\n");
}

TEST_F(AudioIOPlayback, ARefusedPartLeavesTheLastOneInPlace) {
  samples_ = testTone(4001, 2);
  const std::string path = pathIn(folder_, "talk.wav");
  writeWav(path, 16000, 2, samples_);
  const Recording recording =
      record({"init", "load", path, "segment", "0", "0.5", "segment", "0", "1", "play", "finished"},
             16000, 2);
  EXPECT_EQ(result_.output, "init 1\nload 1\nOpenAL : Error 0\ncontext 0\n");
  expectHeard(recording, part(0, 2000));
}

TEST_F(AudioIOPlayback, AnEmptyPartStopsAtOnce) {
  const std::string path = sound("talk.wav", 16000, 1, 20000);
  const ProbeResult result =
      runSilently({"init", "load", path, "segment", "0.5", "0.5", "play", "finished"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "init 1\nload 1\ncontext 0\n");
}

TEST_F(AudioIOPlayback, AnEmptySoundStopsAtOnce) {
  const std::string path = sound("talk.wav", 16000, 1, 0);
  const ProbeResult result =
      runSilently({"init", "load", path, "segment", "0", "1", "play", "finished"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "init 1\nload 1\ncontext 0\n");
}

TEST_F(AudioIOPlayback, PartsWithoutNumbersStayWithinTheSound) {
  const std::string path = sound("talk.wav", 16000, 1, 100);
  const ProbeResult result =
      runSilently({"init", "load", path, "segment", "nan", "nan", "play", "finished", "segment",
                   "-inf", "inf", "play", "finished", "segment", "inf", "inf", "play", "finished"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "init 1\nload 1\ncontext 0\n");
}

TEST_F(AudioIOPlayback, WithoutADeviceInitFailsAndTheRestDoesNothing) {
  const std::string path = sound("talk.wav", 16000, 1, 100);
  writeBytes(pathIn(folder_, "openal.conf"), "[general]\n");
  const ProbeResult result = runProbe({"init", "load", path, "segment", "0", "1", "play", "playing",
                                       "position", "50", "stop", "samples", "free", "samples"},
                                      environmentFor("no-such-driver"));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output,
            "init 0\nload 1\nplaying 0\nposition 0\nsamples 1\nsamples 0\ncontext 0\n");
}

}  // namespace
}  // namespace quorbel
