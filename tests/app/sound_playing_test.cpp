// Playing and stopping: what is handed to the player, the cursor, and the nodes being passed.

#include <algorithm>
#include <chrono>

#include "app/colours.h"
#include "app/sound_window_fixture.h"
#include "sound/play_clock.h"

namespace quorbel {
namespace {

constexpr int kLongMs = 30000;  ///< a sound that does not end during a test
constexpr int kShortMs = 300;   ///< one that is waited for

Samples silence(int ms) { return Samples(static_cast<std::size_t>(ms) * 8, 0); }

class SoundPlaying : public SoundWindowTest {
 protected:
  /// The box of a node on the canvas.
  Box boxOfNode(int nodeIndex) const {
    for (const LayoutItem& item : window->m_EdgeLayouts)
      if (item.isNode && item.nodeIndex == nodeIndex) return nodeBox(window->canvasMapping(), item);
    throw std::runtime_error("no such node is drawn");
  }

  /// The nodes whose box is solid green, "" for none.
  std::string litNodes() {
    const auto picture = canvas();
    std::string lit;
    for (int node = 0; node < window->m_Graph.adjacency->nodeCount; ++node) {
      const Box box = boxOfNode(node);
      bool isGreen = true;
      for (int x = box.left + 1; x < box.left + box.width - 1; ++x)
        for (int y = box.top + 1; y < box.top + box.height - 1; ++y)
          isGreen = isGreen && pixel(picture, x, y) == screen::kGreen;
      if (isGreen) lit += std::to_string(node);
    }
    return lit;
  }

  /// The cursor is a red line in columns x - 1 and x, from top to bottom.
  void expectCursor(int x) {
    const auto picture = strip();
    const int beside = std::max(x - 1, 0);
    for (int y = 0; y < picture->get_height(); ++y) {
      ASSERT_TRUE(hasColour(picture, x, y, screen::kRed));
      ASSERT_TRUE(hasColour(picture, beside, y, screen::kRed));
    }
    EXPECT_FALSE(hasColour(picture, x + 1, 2, screen::kRed));
    EXPECT_TRUE(x < 2 || !hasColour(picture, x - 2, 2, screen::kRed));
  }

  bool showsCursor() {
    const auto picture = strip();
    for (int x = 0; x < picture->get_width(); ++x)
      if (hasColour(picture, x, 2, screen::kRed)) return true;
    return false;
  }
};

TEST_F(SoundPlaying, PlayPlaysTheWholeSoundWhenNothingIsSelected) {
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Playing);
  EXPECT_TRUE(w.m_Audio.isPlaying());
  EXPECT_TRUE(w.m_TickConnection.connected());
  EXPECT_EQ(w.m_PlayElapsedMs, 0);
  EXPECT_EQ(w.m_Audio.segmentStart(), 0);
  EXPECT_EQ(w.m_Audio.segmentEnd(), w.m_Audio.frames());
}

TEST_F(SoundPlaying, PlayPlaysTheRangeOfSelectedEdges) {
  TestWindow& w = openWithSound(silence(kLongMs));
  selectEdge(2);
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Audio.isPlaying());
  EXPECT_EQ(w.m_Audio.segmentStart(), w.m_Audio.frames() / 4);
  EXPECT_EQ(w.m_Audio.segmentEnd(), w.m_Audio.frames());
}

TEST_F(SoundPlaying, PlayPlaysADraggedRangeWithEdgesInside) {
  TestWindow& w = openWithSound(silence(kLongMs));
  const int to = stripWidth() * 2 / 5;
  dragOnStrip(0, to);
  ASSERT_EQ(w.m_SelectedEdges.size(), 1u);
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_Audio.segmentStart(), 0);
  EXPECT_EQ(w.m_Audio.segmentEnd(),
            static_cast<int>(static_cast<double>(to) / stripWidth() * w.m_Audio.frames()));
}

TEST_F(SoundPlaying, PlayPlaysAllWhenADraggedRangeHasNoEdgesInside) {
  TestWindow& w = openWithSound(silence(kLongMs));
  dragOnStrip(stripWidth() * 3 / 5, stripWidth() * 4 / 5);
  ASSERT_TRUE(w.m_SelectedEdges.empty());
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_Audio.segmentStart(), 0);
  EXPECT_EQ(w.m_Audio.segmentEnd(), w.m_Audio.frames());
}

TEST_F(SoundPlaying, PlayPlaysAllForAnEdgeWithoutDuration) {
  TestWindow& w = openWithSound(silence(kLongMs), 1,
                                "N=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=1\n"
                                "J=0 S=0 E=1 W=<w in='a'/> a=-1\nJ=1 S=1 E=2 W=<w in='b'/> a=-1\n");
  selectEdge(1);
  EXPECT_EQ(w.m_RangeStart, 0.0);
  EXPECT_EQ(w.m_RangeEnd, 2.0);
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_Audio.segmentStart(), 0);
  EXPECT_EQ(w.m_Audio.segmentEnd(), w.m_Audio.frames());
}

TEST_F(SoundPlaying, StartsAtTheWallClock) {
  TestWindow& w = openWithSound(silence(kLongMs));
  const auto now = [] {
    const std::int64_t microseconds = g_get_real_time();
    return wallClockMs(microseconds / 1000000, microseconds % 1000000);
  };
  const std::int32_t before = now();
  activate("SoundMenuPlay");
  EXPECT_GE(elapsedMs(w.m_PlayStartMs, before), 0);
  EXPECT_GE(elapsedMs(now(), w.m_PlayStartMs), 0);
  EXPECT_LT(elapsedMs(now(), before), kLongMs);
}

TEST_F(SoundPlaying, PlayWhilePlayingDoesNothing) {
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuPlay");
  ASSERT_TRUE(waitFor([&] { return w.m_PlayElapsedMs > 20; }));
  const int startMs = w.m_PlayStartMs;
  w.m_TickConnection.disconnect();
  w.m_SelectedEdges.assign(1, edgeOf(w, 0));
  w.m_RangeStart = 0.1;
  w.m_RangeEnd = 0.2;
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_PlayStartMs, startMs);
  EXPECT_GT(w.m_PlayElapsedMs, 20);
  EXPECT_FALSE(w.m_TickConnection.connected());
  EXPECT_EQ(w.m_Audio.segmentEnd(), w.m_Audio.frames());
}

TEST_F(SoundPlaying, StopIsNoticedByTheNextTick) {
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuPlay");
  activate("SoundMenuStop");
  EXPECT_FALSE(w.m_Audio.isPlaying());
  EXPECT_TRUE(w.m_Playing);
  activate("SoundMenuPlay");  // still counts as playing
  EXPECT_FALSE(w.m_Audio.isPlaying());
  EXPECT_TRUE(waitForEndOfSound());
  EXPECT_FALSE(w.m_TickConnection.connected());
}

TEST_F(SoundPlaying, StopWhileIdleDoesNothing) {
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuStop");
  EXPECT_FALSE(w.m_Playing);
  EXPECT_FALSE(w.m_TickConnection.connected());
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Audio.isPlaying());
}

TEST_F(SoundPlaying, PlayWithoutASoundEndsAtOnce) {
  TestWindow& w = openLattice(kTwoWays);
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Playing);
  EXPECT_TRUE(waitForEndOfSound());
  EXPECT_FALSE(w.m_TickConnection.connected());
}

TEST_F(SoundPlaying, SoundIsPlayedAgain) {
  TestWindow& w = openWithSound(silence(kShortMs));
  for (int times = 0; times < 2; ++times) {
    activate("SoundMenuPlay");
    EXPECT_EQ(w.m_PlayElapsedMs, 0);
    EXPECT_TRUE(w.m_Audio.isPlaying());
    EXPECT_TRUE(waitForEndOfSound());
    EXPECT_GT(w.m_PlayElapsedMs, 0);
  }
}

TEST_F(SoundPlaying, TicksCountTheTimeSincePlay) {
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuPlay");
  w.m_PlayStartMs -= 4000;
  const auto before = std::chrono::steady_clock::now();
  EXPECT_TRUE(w.on_play_tick());
  const auto sincePlay = std::chrono::steady_clock::now() - before + std::chrono::seconds(5);
  EXPECT_GE(w.m_PlayElapsedMs, 4000);
  EXPECT_LT(std::chrono::milliseconds(w.m_PlayElapsedMs), sincePlay);
}

TEST_F(SoundPlaying, TickRepaintsBothViewsAndGoesOnWhileSoundPlays) {
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuPlay");
  w.m_TickConnection.disconnect();
  settle();
  PaintCount stripPaints(w.m_SoundArea);
  PaintCount canvasPaints(w.m_GraphArea);
  EXPECT_TRUE(w.on_play_tick());
  EXPECT_TRUE(w.m_Playing);
  settle();
  EXPECT_EQ(stripPaints.take(), 1);
  EXPECT_EQ(canvasPaints.take(), 1);

  w.m_Audio.stop();
  const int elapsedMs = w.m_PlayElapsedMs;
  EXPECT_FALSE(w.on_play_tick());
  EXPECT_FALSE(w.m_Playing);
  EXPECT_EQ(w.m_PlayElapsedMs, elapsedMs);
  settle();
  EXPECT_EQ(stripPaints.take(), 1);
  EXPECT_EQ(canvasPaints.take(), 1);
}

TEST_F(SoundPlaying, TicksComeEveryFiveMilliseconds) {
  using Clock = std::chrono::steady_clock;
  TestWindow& w = openWithSound(silence(kLongMs));
  activate("SoundMenuPlay");
  Clock::duration shortest = std::chrono::hours(1);
  Clock::time_point last = Clock::now();
  int ticks = 0;
  int seen = w.m_PlayElapsedMs;
  EXPECT_TRUE(waitFor([&] {
    if (w.m_PlayElapsedMs == seen) return false;
    const Clock::time_point now = Clock::now();
    if (ticks > 0) shortest = std::min(shortest, now - last);
    last = now;
    seen = w.m_PlayElapsedMs;
    return ++ticks == 100;
  }));
  EXPECT_GT(shortest, std::chrono::milliseconds(2));
  EXPECT_LT(shortest, std::chrono::milliseconds(10));
}

TEST_F(SoundPlaying, CursorStandsWhereTheSoundIs) {
  openWithSound(silence(kLongMs));
  playHeldAt(12000);
  const int count = kLongMs * 8;
  expectCursor(12000 * 8 / (count / stripWidth()));
  window->m_PlayElapsedMs = 0;
  window->m_SoundArea.queue_draw();
  expectCursor(0);
}

TEST_F(SoundPlaying, CursorBeginsAtTheRangeOfSelectedEdges) {
  TestWindow& w = openWithSound(silence(kLongMs));
  selectEdge(3);
  playHeldAt(6000);
  const int count = kLongMs * 8;
  expectCursor((6000 * 8 + count / 2) / (count / stripWidth()));
  EXPECT_EQ(w.m_RangeStart, 0.5);
}

TEST_F(SoundPlaying, CursorBeginsAtTheLeftWithoutASelection) {
  TestWindow& w = openWithSound(silence(kLongMs));
  const int from = stripWidth() * 3 / 5;
  dragOnStrip(from, stripWidth() * 4 / 5);
  EXPECT_EQ(w.m_RangeStart, static_cast<double>(from) / stripWidth());
  playHeldAt(3000);
  EXPECT_EQ(w.m_RangeStart, 0.0);
  const int count = kLongMs * 8;
  expectCursor(3000 * 8 / (count / stripWidth()));
  // The box is that of the drag all the same.
  EXPECT_TRUE(hasColour(strip(), from + 30, 5, 0xFFB2B2));
  w.m_Audio.stop();
  w.on_play_tick();
  strip();
  EXPECT_EQ(w.m_RangeStart, static_cast<double>(from) / stripWidth());
}

TEST_F(SoundPlaying, CursorOfAStereoSoundMovesTwiceAsFast) {
  openWithSound(silence(2 * kLongMs), 2);
  playHeldAt(6000);
  const int count = kLongMs * 8 / 2;
  expectCursor(6000 * 8 / (count / stripWidth()));
}

TEST_F(SoundPlaying, CursorIsGoneAfterTheEnd) {
  openWithSound(silence(kLongMs));
  playHeldAt(12000);
  ASSERT_TRUE(showsCursor());
  activate("SoundMenuStop");
  window->on_play_tick();
  EXPECT_FALSE(showsCursor());
}

TEST_F(SoundPlaying, NodesLightUpJustBeforeTheyArePassed) {
  openWithSound(silence(kLongMs));
  struct Moment {
    double fraction;
    const char* lit;
  };
  activate("SoundMenuPlay");
  window->m_TickConnection.disconnect();
  for (const Moment& moment :
       {Moment{0.0, ""}, Moment{0.005, ""}, Moment{0.16, ""}, Moment{0.18, "1"},
        Moment{0.2499, "1"}, Moment{0.25, ""}, Moment{0.41, ""}, Moment{0.45, "2"}, Moment{0.5, ""},
        Moment{0.95, "3"}}) {
    SCOPED_TRACE(moment.fraction);
    window->m_PlayElapsedMs = static_cast<int>(moment.fraction * kLongMs);
    window->invalidateViews();
    EXPECT_EQ(litNodes(), moment.lit);
  }
  activate("SoundMenuStop");
  window->on_play_tick();
  EXPECT_EQ(litNodes(), "");
}

TEST_F(SoundPlaying, NodesOfTheRangeLightUpWhileItPlays) {
  openWithSound(silence(kLongMs));
  selectEdge(2);
  playHeldAt(static_cast<int>(0.2 * kLongMs));  // 0.25 further on
  EXPECT_EQ(litNodes(), "2");
}

TEST_F(SoundPlaying, NodesLightUpInStepWithTheRunningSound) {
  constexpr int kMs = 8000;
  openWithSound(silence(kMs));
  const Box box = boxOfNode(1);
  PaintCount paints(window->m_GraphArea);
  const auto isPainted = [&](bool lit) {
    if (paints.take() == 0) return false;
    const Glib::RefPtr<Gdk::Drawable> drawable = window->m_GraphArea.get_window();
    const auto picture =
        Gdk::Pixbuf::create(drawable, box.left + box.width / 2, box.top + box.height / 2, 1, 1);
    return (pixel(picture, 0, 0) == screen::kGreen) == lit;
  };
  activate("SoundMenuPlay");
  EXPECT_TRUE(waitFor([&] { return isPainted(false); }));
  EXPECT_LT(window->m_PlayElapsedMs, 0.25 * kMs);
  EXPECT_TRUE(waitFor([&] { return isPainted(true) || !window->m_Playing; }));
  EXPECT_TRUE(window->m_Playing);
  EXPECT_GE(window->m_PlayElapsedMs, (0.25 - 0.08) * kMs);
  EXPECT_TRUE(waitFor([&] { return isPainted(false); }));
  EXPECT_GE(window->m_PlayElapsedMs, 0.25 * kMs);
  EXPECT_TRUE(window->m_Playing);
}

TEST_F(SoundPlaying, OddPartOfAStereoSoundPrintsOneLineAndAllElseWorks) {
  TestWindow& w = openWithSound(Samples(8006, 0), 2);
  ASSERT_EQ(w.m_Audio.frames(), 4003);
  PrintedText printed;
  activate("SoundMenuPlay");
  EXPECT_TRUE(waitForEndOfSound());
  EXPECT_EQ(printed.take(), "OpenAL : Error 0\n");
  EXPECT_EQ(dialogs, std::vector<std::string>());

  selectEdge(1);  // 0 to 0.5: an odd number of values again
  w.m_RangeEnd = 2000.5 / 4003.0;
  PrintedText printedLater;
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Audio.isPlaying());
  EXPECT_TRUE(waitForEndOfSound());
  EXPECT_EQ(printedLater.take(), "");
}

}  // namespace
}  // namespace quorbel
