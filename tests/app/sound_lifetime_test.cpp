// What becomes of a playing sound when the file, the sound or the window goes.

#include "app/sound_window_fixture.h"

namespace quorbel {
namespace {

constexpr int kLongFrames = 30 * 8000;  // does not end during a test

class PlayingSound : public SoundWindowTest {
 protected:
  /// Opens a lattice and plays its sound until the cursor moves.
  TestWindow& play() {
    TestWindow& w = openWithSound(Samples(kLongFrames, 0));
    activate("SoundMenuPlay");
    EXPECT_TRUE(waitFor([&] { return w.m_PlayElapsedMs > 0; }));
    return w;
  }

  /// Lets whatever still waits in the main loop have its turn.
  void runLoopFor(int ms) {
    bool isOver = false;
    Glib::signal_timeout().connect_once([&] { isOver = true; }, static_cast<unsigned>(ms));
    EXPECT_TRUE(waitFor([&] { return isOver; }));
  }

  void expectIdle() const {
    EXPECT_FALSE(window->m_Playing);
    EXPECT_FALSE(window->m_Audio.isPlaying());
    EXPECT_FALSE(window->m_TickConnection.connected());
  }
};

TEST_F(PlayingSound, IsStoppedWithItsFileAndPlaysAgainWithIt) {
  TestWindow& w = play();
  activate("FileClose");
  expectIdle();
  EXPECT_FALSE(w.m_Audio.samples());
  runLoopFor(30);
  expectIdle();
  openLattice(kTwoWays);
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Audio.isPlaying());
  EXPECT_TRUE(waitFor([&] { return w.m_PlayElapsedMs > 0; }));
}

TEST_F(PlayingSound, IsReplacedByThatOfTheNextFile) {
  TestWindow& w = play();
  writeSoundFile("next.wav", testTone(kLongFrames / 2, 1));
  openLattice(kTwoWords, "next.lat");
  expectIdle();
  EXPECT_EQ(w.m_Audio.frames(), kLongFrames / 2);
  runLoopFor(30);
  expectIdle();
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_Audio.segmentEnd(), kLongFrames / 2);
  EXPECT_TRUE(w.m_Audio.isPlaying());
}

TEST_F(PlayingSound, IsStoppedByAFileWithoutSound) {
  TestWindow& w = play();
  openLattice(kTwoWords, "next.lat");
  expectIdle();
  EXPECT_FALSE(w.m_Audio.samples());
}

TEST_F(PlayingSound, IsStoppedByAFileThatCannotBeRead) {
  play();
  openLattice("nonsense\n", "next.lat");
  expectIdle();
}

TEST_F(PlayingSound, GoesOnWhileAnotherSoundIsOpened) {
  TestWindow& w = play();
  const Samples other(8000, -5000);
  answerWithSound(writeSoundFile("other.wav", other));
  activate("FileOpenSound");
  EXPECT_TRUE(w.m_Playing);
  EXPECT_TRUE(w.m_Audio.isPlaying());
  EXPECT_EQ(w.m_Audio.frames(), 8000);
  runLoopFor(30);
  EXPECT_TRUE(w.m_Playing);
  activate("SoundMenuStop");
  EXPECT_TRUE(waitForEndOfSound());
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_Audio.segmentEnd(), 8000);
}

TEST_F(PlayingSound, GoesOnWhileAFileIsOpenedThatIsNoSound) {
  TestWindow& w = play();
  answerWithSound(folder.write("other.wav", "no sound"));
  activate("FileOpenSound");
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_TRUE(w.m_Playing);
  runLoopFor(30);
  activate("SoundMenuStop");
  EXPECT_TRUE(waitForEndOfSound());
}

TEST_F(PlayingSound, GoesOnWhileTheLatticeIsDrawnAnew) {
  TestWindow& w = play();
  activate("DisplayShortestPath");
  EXPECT_TRUE(w.m_ShowPath);
  EXPECT_FALSE(w.m_Rendering);
  EXPECT_TRUE(w.m_Playing);
  const int elapsedMs = w.m_PlayElapsedMs;
  EXPECT_TRUE(waitFor([&] { return w.m_PlayElapsedMs > elapsedMs; }));
}

TEST_F(PlayingSound, EndsWithTheWindow) {
  play();
  window.reset();
  runLoopFor(30);
}

TEST_F(PlayingSound, EndsWithAWindowThatIsClosedByItsTitleBar) {
  TestWindow& w = play();
  closeByWindowManager();
  EXPECT_TRUE(waitFor([&] { return w.isQuitting(); }));
  window.reset();
  runLoopFor(30);
}

}  // namespace
}  // namespace quorbel
