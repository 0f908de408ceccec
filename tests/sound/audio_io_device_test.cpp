#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "fake_openal.h"
#include "sound/audio_io.h"
#include "sound_files.h"
#include "temporary_folder.h"

// What the player asks of OpenAL, on top of the stand-in.

namespace quorbel {
namespace {

using Calls = std::vector<std::string>;

class AudioIODevice : public testing::Test {
 protected:
  AudioIODevice() { fakeOpenAL() = FakeOpenAL(); }

  /// Loads a sound of `frames` frames with `channels` channels into `audio` and remembers its
  /// samples.
  void loadSound(AudioIO& audio, int frames, int channels, int sampleRate = 16000) {
    sound_ = testTone(frames, channels);
    writeWav(pathIn(folder_, "talk.wav"), sampleRate, channels, sound_);
    ASSERT_TRUE(audio.load(pathIn(folder_, "talk.wav")));
  }

  Samples part(int start, int end) const {
    return Samples(sound_.begin() + start, sound_.begin() + end);
  }

  static Calls takeCalls() {
    Calls calls;
    calls.swap(fakeOpenAL().calls);
    return calls;
  }

  static const FakeUpload& lastUpload() { return fakeOpenAL().uploads.back(); }

  TemporaryFolder folder_;
  Samples sound_;
};

TEST_F(AudioIODevice, IsLeftAloneUntilInit) {
  { AudioIO audio; }
  EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(AudioIODevice, InitMakesOneOfEachAndTheDestructorGivesThemBack) {
  {
    AudioIO audio;
    EXPECT_TRUE(audio.init());
    EXPECT_EQ(takeCalls(), Calls({"open default device", "create context on device",
                                  "make context current", "make 1 buffer", "make 1 source"}));
  }
  EXPECT_EQ(takeCalls(), Calls({"attach 0 to 9", "delete 1 buffer 7", "delete 1 source 9",
                                "make null current", "destroy context", "close device"}));
}

TEST_F(AudioIODevice, TheDestructorStopsWhatPlaysFirst) {
  {
    AudioIO audio;
    ASSERT_TRUE(audio.init());
    loadSound(audio, 100, 1);
    audio.setSegment(0.0, 1.0);
    audio.play();
    takeCalls();
  }
  EXPECT_EQ(takeCalls().at(0), "stop 9");
}

TEST_F(AudioIODevice, ASecondInitGivesTheFirstDeviceBack) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  takeCalls();
  ASSERT_TRUE(audio.init());
  const Calls calls = takeCalls();
  ASSERT_EQ(calls.size(), 11u);
  EXPECT_EQ(calls.at(5), "close device");
  EXPECT_EQ(calls.at(6), "open default device");
}

TEST_F(AudioIODevice, InitFailsWithoutADevice) {
  fakeOpenAL().failToOpen = true;
  {
    AudioIO audio;
    EXPECT_FALSE(audio.init());
  }
  EXPECT_EQ(takeCalls(), Calls({"open default device"}));
}

TEST_F(AudioIODevice, InitClosesTheDeviceWhenThereIsNoContext) {
  fakeOpenAL().failToCreate = true;
  {
    AudioIO audio;
    EXPECT_FALSE(audio.init());
  }
  EXPECT_EQ(takeCalls(),
            Calls({"open default device", "create context on device", "close device"}));
}

TEST_F(AudioIODevice, InitDestroysTheContextThatCannotBeMadeCurrent) {
  fakeOpenAL().failToMakeCurrent = true;
  {
    AudioIO audio;
    EXPECT_FALSE(audio.init());
  }
  EXPECT_EQ(takeCalls(), Calls({"open default device", "create context on device",
                                "make context current", "destroy context", "close device"}));
}

TEST_F(AudioIODevice, IsNotCalledAfterAFailedInit) {
  fakeOpenAL().failToOpen = true;
  fakeOpenAL().state = AL_PLAYING;
  AudioIO audio;
  ASSERT_FALSE(audio.init());
  takeCalls();
  loadSound(audio, 100, 1);
  audio.setSegment(0.0, 1.0);
  audio.play();
  EXPECT_FALSE(audio.isPlaying());
  EXPECT_EQ(audio.positionFraction(100), 0.0);
  audio.stop();
  audio.freeSamples();
  EXPECT_EQ(audio.samples(), nullptr);
  EXPECT_EQ(takeCalls(), Calls());
  EXPECT_EQ(fakeOpenAL().stateQuestions, 0);
  EXPECT_EQ(fakeOpenAL().errorQuestions, 0);
}

TEST_F(AudioIODevice, WithoutSamplesNothingIsUploadedOrPlayed) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  takeCalls();
  audio.setSegment(0.0, 1.0);
  audio.play();
  EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(AudioIODevice, ASegmentIsUploadedToTheDetachedBuffer) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 1000, 1, 22050);
  takeCalls();
  audio.setSegment(0.25, 0.5);
  EXPECT_EQ(takeCalls(), Calls({"attach 0 to 9", "upload to 7"}));
  EXPECT_EQ(lastUpload().format, AL_FORMAT_MONO16);
  EXPECT_EQ(lastUpload().data, audio.samples() + 250);
  EXPECT_EQ(lastUpload().size, 500);
  EXPECT_EQ(lastUpload().frequency, 22050);
  EXPECT_EQ(lastUpload().values, part(250, 500));
  EXPECT_EQ(audio.segmentStart(), 250);
  EXPECT_EQ(audio.segmentEnd(), 500);
}

TEST_F(AudioIODevice, FromOneToZeroUploadsTheWholeSound) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 1000, 1);
  audio.setSegment(1.0, 0.0);
  EXPECT_EQ(lastUpload().values, part(0, 1000));
}

TEST_F(AudioIODevice, ASegmentIsHeldWithinTheSound) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 1000, 1);
  audio.setSegment(-0.5, 0.25);
  EXPECT_EQ(lastUpload().values, part(0, 250));
  audio.setSegment(0.75, 1.5);
  EXPECT_EQ(lastUpload().values, part(750, 1000));
  audio.setSegment(2.0, 3.0);
  EXPECT_EQ(lastUpload().size, 0);
  EXPECT_EQ(lastUpload().data, audio.samples() + 1000);
}

TEST_F(AudioIODevice, PositionsInAStereoSoundCountSingleValuesUpToTheFrames) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 1000, 2);
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(lastUpload().format, AL_FORMAT_STEREO16);
  EXPECT_EQ(lastUpload().size, 2000);
  EXPECT_EQ(lastUpload().values, part(0, 1000));
  audio.setSegment(0.25, 0.5);
  EXPECT_EQ(lastUpload().values, part(250, 500));
}

TEST_F(AudioIODevice, MoreThanTwoChannelsAreUploadedAsMono) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 100, 6);
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(lastUpload().format, AL_FORMAT_MONO16);
  EXPECT_EQ(lastUpload().values, part(0, 100));
}

TEST_F(AudioIODevice, AnEmptySoundIsUploadedAsNothing) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 0, 1);
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(lastUpload().size, 0);
}

TEST_F(AudioIODevice, ARefusedUploadPrintsTheErrorThatFollowsTheFirst) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 100, 1);
  fakeOpenAL().pending = {AL_INVALID_VALUE};
  testing::internal::CaptureStdout();
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "OpenAL : Error 0\n");

  fakeOpenAL().pending = {AL_INVALID_VALUE, AL_OUT_OF_MEMORY};
  testing::internal::CaptureStdout();
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "OpenAL : Error " + std::to_string(AL_OUT_OF_MEMORY) + "\n");
}

TEST_F(AudioIODevice, AnAcceptedUploadPrintsNothing) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 100, 1);
  testing::internal::CaptureStdout();
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(fakeOpenAL().errorQuestions, 1);
}

TEST_F(AudioIODevice, PlayAttachesTheBufferAndStarts) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 100, 1);
  audio.setSegment(0.0, 1.0);
  takeCalls();
  audio.play();
  EXPECT_EQ(takeCalls(), Calls({"attach 7 to 9", "play 9"}));
  EXPECT_TRUE(audio.isPlaying());
}

TEST_F(AudioIODevice, WhatPlaysIsNotTouched) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 100, 1);
  audio.setSegment(0.25, 0.5);
  audio.play();
  takeCalls();
  audio.play();
  audio.setSegment(0.5, 1.0);
  audio.freeSamples();
  EXPECT_EQ(takeCalls(), Calls());
  EXPECT_EQ(audio.segmentStart(), 25);
  EXPECT_EQ(audio.segmentEnd(), 50);
  EXPECT_NE(audio.samples(), nullptr);
}

TEST_F(AudioIODevice, StopStopsOnlyWhatPlays) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 100, 1);
  audio.setSegment(0.0, 1.0);
  takeCalls();
  audio.stop();
  EXPECT_EQ(takeCalls(), Calls());
  audio.play();
  takeCalls();
  audio.stop();
  EXPECT_EQ(takeCalls(), Calls({"stop 9"}));
  EXPECT_FALSE(audio.isPlaying());
}

TEST_F(AudioIODevice, OnlyThePlayingStateIsPlaying) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  for (const ALint state : {AL_INITIAL, AL_PAUSED, AL_STOPPED}) {
    fakeOpenAL().state = state;
    EXPECT_FALSE(audio.isPlaying()) << state;
  }
  fakeOpenAL().state = AL_PLAYING;
  EXPECT_TRUE(audio.isPlaying());
}

TEST_F(AudioIODevice, ThePositionIsAFractionWhilePlayingAndZeroOtherwise) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 8000, 1);
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(audio.positionFraction(250), 0.0);
  audio.play();
  EXPECT_DOUBLE_EQ(audio.positionFraction(250), 0.5);
  audio.stop();
  EXPECT_EQ(audio.positionFraction(250), 0.0);
}

TEST_F(AudioIODevice, ThePositionInAStereoSoundGrowsTwiceAsFast) {
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  loadSound(audio, 8000, 2);
  audio.setSegment(0.0, 1.0);
  audio.play();
  EXPECT_DOUBLE_EQ(audio.positionFraction(250), 1.0);
}

TEST_F(AudioIODevice, ASoundThatWasCutShortHasItsPromisedLength) {
  writeSound(pathIn(folder_, "talk.flac"), SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16000, 1, {5, 6, 7});
  promiseFlacFrames(pathIn(folder_, "talk.flac"), 5);
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  ASSERT_FALSE(audio.load(pathIn(folder_, "talk.flac")));
  audio.setSegment(0.0, 1.0);
  EXPECT_EQ(lastUpload().values, Samples({5, 6, 7, 0, 0}));
}

TEST_F(AudioIODevice, ACountBeyond31BitsUploadsNothingOutsideTheSound) {
  writeSound(pathIn(folder_, "talk.flac"), SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16000, 1, {5, 6, 7});
  promiseFlacFrames(pathIn(folder_, "talk.flac"), std::uint64_t{1} << 31);
  AudioIO audio;
  ASSERT_TRUE(audio.init());
  ASSERT_FALSE(audio.load(pathIn(folder_, "talk.flac")));
  EXPECT_LE(audio.frames(), 0);
  audio.setSegment(0.0, 1.0);
  audio.setSegment(-1.0, -0.5);
  for (const FakeUpload& upload : fakeOpenAL().uploads) EXPECT_EQ(upload.size, 0);
}

}  // namespace
}  // namespace quorbel
