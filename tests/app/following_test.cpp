// What the window brings into sight by itself.

#include <gtk/gtk.h>

#include <algorithm>

#include "app/canvas_fixture.h"
#include "app/sound_window_fixture.h"

namespace quorbel {
namespace {

/// A path of two links, the second of them as long as the other way with its twelve words.
std::string shortWayBesideALongOne() {
  std::string text = "N=14\n";
  for (int i = 0; i < 14; ++i) text += "I=" + std::to_string(i) + " t=" + std::to_string(i) + "\n";
  text += "J=0 S=0 E=1 W=<w in='begin'/> a=-1\nJ=99 S=1 E=13 W=<w in='short'/> a=-1\n";
  for (int i = 1; i < 13; ++i)
    text += "J=" + std::to_string(i) + " S=" + std::to_string(i) + " E=" + std::to_string(i + 1) +
            " W=<w in='long-word-" + std::to_string(i) + "'/> a=-9\n";
  return text;
}

class PathsInSight : public CanvasTest {
 protected:
  double scrollX() const { return window->m_GraphScroll.get_hadjustment()->get_value(); }

  void showFullSize(double from) {
    window->m_Zoom = 1.0f;
    activate("DisplayZoomIn");
    settle();
    window->m_GraphScroll.get_hadjustment()->set_value(from);
    settle();
  }

  bool isSeen(const Box& box) const {
    const Box seen = window->visiblePart();
    return box.left >= seen.left && box.top >= seen.top &&
           box.left + box.width <= seen.left + seen.width &&
           box.top + box.height <= seen.top + seen.height;
  }
};

TEST_F(PathsInSight, PathOfWhichNothingIsSeenIsScrolledTo) {
  TestWindow& w = open(shortWayBesideALongOne());
  // Somewhere between the nodes of the path and away from its labels.
  const auto isAway = [&](double from) {
    window->m_GraphScroll.get_hadjustment()->set_value(from);
    settle();
    const Box seen = w.visiblePart();
    for (const int id : {0, 99}) {
      const Box label = labelBoxOf(id);
      if (label.left < seen.left + seen.width && label.left + label.width > seen.left) return false;
    }
    return true;
  };
  showFullSize(0);
  double from = 300;
  while (from < 3000 && !isAway(from)) from += 100;
  ASSERT_LT(from, 3000);
  activate("DisplayShortestPath");
  settle();
  EXPECT_TRUE(isSeen(labelBoxOf(0))) << "the first link is in sight";
  EXPECT_LT(scrollX(), from);
  activate("DisplayShortestPath");
  isAway(from);
  const double before = scrollX();
  settle();
  EXPECT_EQ(scrollX(), before) << "switched off, nothing moves";
}

TEST_F(PathsInSight, PathOfWhichAPartIsSeenIsNotScrolledTo) {
  open(chainOf(14));
  showFullSize(700);
  activate("DisplayShortestPath");
  settle();
  EXPECT_EQ(scrollX(), 700);
}

TEST_F(PathsInSight, WordsGetTwoLinesOnceUnlessTheUserMovedTheDivider) {
  TestWindow& w = open(chainOf(20));
  ASSERT_EQ(w.m_LowerPaned.get_position(), 30);
  activate("DisplayValue");
  EXPECT_EQ(w.m_LowerPaned.get_position(), 30) << "no path, no words";
  activate("DisplayDefault");
  activate("DisplayShortestPath");
  settle();
  const int room = w.m_LowerPaned.get_position();
  EXPECT_GT(room, 30);
  // All words are seen: no bar across, and none of them lies below.
  const Gtk::Adjustment& across = *w.m_InfoScroll.get_hadjustment();
  EXPECT_EQ(across.get_upper(), across.get_page_size());
  Gdk::Rectangle last;
  w.m_InfoView.get_iter_location(
      w.m_refInfoBuffer->get_iter_at_offset(w.m_refInfoBuffer->get_char_count() - 2), last);
  EXPECT_LE(last.get_y() + last.get_height(), w.m_InfoScroll.get_vadjustment()->get_page_size());
  EXPECT_EQ(w.m_InfoScroll.get_vadjustment()->get_value(), 0);
  EXPECT_EQ(2 * last.get_height(), room);
  w.m_LowerPaned.set_position(30);
  activate("DisplayShortestPath");
  activate("DisplayShortestPath");
  EXPECT_EQ(w.m_LowerPaned.get_position(), 30) << "once";
}

TEST_F(PathsInSight, DividerThatTheUserMovedStaysThere) {
  TestWindow& w = open(chainOf(20));
  w.m_LowerPaned.set_position(22);
  activate("DisplayShortestPath");
  EXPECT_EQ(w.m_LowerPaned.get_position(), 22);
}

/// The canvas while sound plays.
class FollowedSound : public SoundWindowTest {
 protected:
  /// Opens a chain, at full size and not scrolled, with a sound, and plays it held at its begin.
  TestWindow& playChain() {
    TestWindow& w = openWithSound(Samples(kSampleRate * 20, 0), 1, chainOf(20));
    w.m_Zoom = 1.0f;
    activate("DisplayZoomIn");
    settle();
    w.m_GraphScroll.get_hadjustment()->set_value(0);
    playHeldAt(0);
    w.m_UserScrolledUs.reset();
    return w;
  }

  double scrollX() const { return window->m_GraphScroll.get_hadjustment()->get_value(); }

  /// Moves the cursor as a tick would at that time, in fractions of the sound.
  void tickAt(double fraction) {
    window->m_PlayElapsedMs = static_cast<int>(20000 * fraction);
    window->followSound();
    settle();
  }

  Box boxOfNode(int nodeIndex) const {
    for (const LayoutItem& item : window->m_EdgeLayouts)
      if (item.isNode && item.nodeIndex == nodeIndex) return nodeBox(window->canvasMapping(), item);
    throw std::runtime_error("no such node is drawn");
  }

  void expectSeen(int nodeIndex, bool isSeen) {
    const Box box = boxOfNode(nodeIndex);
    const Box seen = window->visiblePart();
    EXPECT_EQ(box.left >= seen.left && box.left + box.width <= seen.left + seen.width, isSeen)
        << nodeIndex;
  }
};

TEST_F(FollowedSound, CanvasFollowsTheNodesThatLightUp) {
  playChain();
  tickAt(0.06);
  EXPECT_EQ(scrollX(), 0) << "they are in sight";
  tickAt(0.62);
  expectSeen(13, true);
  const double there = scrollX();
  EXPECT_GT(there, 0);
  EXPECT_NEAR(boxOfNode(13).left - there, window->visiblePart().width / 4, 1);
  tickAt(0.67);
  EXPECT_EQ(scrollX(), there) << "still in sight";
  tickAt(0.1);
  expectSeen(3, true);
  const Glib::RefPtr<Gdk::Drawable> drawable = window->m_GraphArea.get_window();
  const Box lit = boxOfNode(3);
  EXPECT_EQ(pixel(Gdk::Pixbuf::create(drawable, lit.left + lit.width / 2, lit.top + 2, 1, 1), 0, 0),
            0x00ff00u);
}

TEST_F(FollowedSound, UserWhoScrollsIsLeftAloneForTwoSeconds) {
  TestWindow& w = playChain();
  w.m_GraphScroll.get_hadjustment()->set_value(20);
  tickAt(0.62);
  EXPECT_EQ(scrollX(), 20);
  ASSERT_TRUE(w.m_UserScrolledUs);
  w.m_UserScrolledUs = g_get_monotonic_time() - 1900000;
  w.followSound();
  EXPECT_EQ(scrollX(), 20);
  w.m_UserScrolledUs = g_get_monotonic_time() - 2000000;
  w.followSound();
  EXPECT_GT(scrollX(), 20);
  const double there = scrollX();
  tickAt(0.1);
  EXPECT_NE(scrollX(), there) << "following is no scrolling of the user's";
}

TEST_F(FollowedSound, NothingMovesWithoutSound) {
  TestWindow& w = playChain();
  w.m_Playing = false;
  tickAt(0.62);
  EXPECT_EQ(scrollX(), 0);
  w.m_Playing = true;
  w.m_Rendering = true;
  tickAt(0.62);
  EXPECT_EQ(scrollX(), 0);
  w.m_Rendering = false;
}

TEST_F(FollowedSound, EveryTickFollows) {
  TestWindow& w = openWithSound(Samples(kSampleRate * 20, 0), 1, chainOf(20));
  w.m_Zoom = 1.0f;
  activate("DisplayZoomIn");
  settle();
  w.m_GraphScroll.get_hadjustment()->set_value(900);
  w.m_UserScrolledUs.reset();
  activate("SoundMenuPlay");
  EXPECT_TRUE(waitFor([&] { return scrollX() < 300; }));
  activate("SoundMenuStop");
}

}  // namespace
}  // namespace quorbel
