// The range on the sound strip: dragging it out, the edges inside it, and its box.

#include <algorithm>

#include "app/colours.h"
#include "app/sound_window_fixture.h"

namespace quorbel {
namespace {

using Ids = std::vector<int>;

constexpr unsigned kBoxOnWhite = 0xFFB2B2;      // red, 0.3
constexpr unsigned kOutlineOnWhite = 0x40FF40;  // green, 0.75

class SoundRangeTest : public SoundWindowTest {
 protected:
  /// A lattice whose nodes stand at 0, 0.25, 0.5 and 1 of a silent sound: the strip is white but
  /// for its middle.
  TestWindow& openSilent() {
    TestWindow& w = openWithSound(Samples(40000, 0));
    setStripHeight(200);
    return w;
  }

  Ids selectedIds() const {
    Ids ids;
    for (const LayoutItem& edge : window->m_SelectedEdges) ids.push_back(edge.linkId);
    std::sort(ids.begin(), ids.end());
    return ids;
  }

  /// The box spans these columns of the strip, in its whole height.
  void expectBox(int left, int right) {
    const auto picture = strip();
    const int height = picture->get_height();
    for (const int y : {40, height / 2 + 30, height - 40}) {
      EXPECT_TRUE(hasColour(picture, left - 3, y, screen::kWhite));
      EXPECT_TRUE(hasColour(picture, left - 1, y, kOutlineOnWhite));
      EXPECT_TRUE(hasColour(picture, left + 3, y, kBoxOnWhite));
      EXPECT_TRUE(hasColour(picture, (left + right) / 2, y, kBoxOnWhite));
      EXPECT_TRUE(hasColour(picture, right - 3, y, kBoxOnWhite));
      EXPECT_TRUE(hasColour(picture, right, y, kOutlineOnWhite));
      EXPECT_TRUE(hasColour(picture, right + 3, y, screen::kWhite));
    }
    const int middle = (left + right) / 2;
    EXPECT_TRUE(hasColour(picture, middle, 3, kBoxOnWhite));
    EXPECT_TRUE(hasColour(picture, middle, height - 4, kBoxOnWhite));
    // Corners of radius 20 pass 2.5 pixels from where they would meet.
    EXPECT_TRUE(hasColour(picture, left, 0, screen::kWhite));
    EXPECT_TRUE(hasColour(picture, left + 4, 4, kBoxOnWhite));
    EXPECT_TRUE(hasColour(picture, right - 1, height - 1, screen::kWhite));
    EXPECT_TRUE(hasColour(picture, right - 5, height - 5, kBoxOnWhite));
  }

  void expectNoBox() {
    const auto picture = strip();
    for (int x = 0; x < picture->get_width(); ++x)
      ASSERT_TRUE(hasColour(picture, x, 40, screen::kWhite));
  }
};

TEST_F(SoundRangeTest, PressBeginsADrag) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 77, 20);
  pressButton();
  EXPECT_TRUE(w.m_Dragging);
  EXPECT_EQ(w.m_DragStartX, 77);
  EXPECT_EQ(w.m_DragCurrentX, 77);
  releaseButton();
  EXPECT_FALSE(w.m_Dragging);
}

TEST_F(SoundRangeTest, PressAndReleaseAreTakenWhereTheyAre) {
  TestWindow& w = openSilent();
  GdkEvent* const event = gdk_event_new(GDK_BUTTON_PRESS);
  event->button.window = GDK_WINDOW(g_object_ref(w.m_SoundArea.get_window()->gobj()));
  event->button.button = 1;
  event->button.x = 77.9;
  EXPECT_TRUE(w.m_SoundArea.event(event));
  EXPECT_EQ(w.m_DragStartX, 77);
  EXPECT_EQ(w.m_DragCurrentX, 77);
  event->type = GDK_BUTTON_RELEASE;
  event->button.x = -0.9;  // towards zero
  EXPECT_TRUE(w.m_SoundArea.event(event));
  EXPECT_EQ(w.m_DragCurrentX, 0);
  EXPECT_EQ(w.m_RangeStart, 0.0);
  EXPECT_EQ(w.m_RangeEnd, 77.0 / stripWidth());

  event->button.x = 100;  // another release than that of a drag sets the range as well
  EXPECT_TRUE(w.m_SoundArea.event(event));
  EXPECT_EQ(w.m_RangeStart, 77.0 / stripWidth());
  EXPECT_EQ(w.m_RangeEnd, 100.0 / stripWidth());
  event->type = GDK_2BUTTON_PRESS;  // a press like any other
  event->button.x = 50;
  EXPECT_TRUE(w.m_SoundArea.event(event));
  EXPECT_TRUE(w.m_Dragging);
  EXPECT_EQ(w.m_DragStartX, 50);
  gdk_event_free(event);
}

TEST_F(SoundRangeTest, MotionIsHandled) {
  TestWindow& w = openSilent();
  GdkEvent* const event = gdk_event_new(GDK_MOTION_NOTIFY);
  event->motion.window = GDK_WINDOW(g_object_ref(w.m_SoundArea.get_window()->gobj()));
  EXPECT_TRUE(w.m_SoundArea.event(event));
  gdk_event_free(event);
}

TEST_F(SoundRangeTest, PressIsHandledWithoutASoundToo) {
  TestWindow& w = openSilent();
  w.m_SoundLoaded = false;
  GdkEvent* const event = gdk_event_new(GDK_BUTTON_PRESS);
  event->button.window = GDK_WINDOW(g_object_ref(w.m_SoundArea.get_window()->gobj()));
  event->button.button = 1;
  EXPECT_TRUE(w.m_SoundArea.event(event));
  EXPECT_FALSE(w.m_Dragging);
  gdk_event_free(event);
}

TEST_F(SoundRangeTest, ReleaseOfAClickRepaintsTheStrip) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 77, 20);
  pressButton();
  settle();
  PaintCount stripPaints(w.m_SoundArea);
  releaseButton();
  EXPECT_EQ(stripPaints.take(), 1);
}

TEST_F(SoundRangeTest, PressEmptiesTheSelectionAndTheTreeAndRepaintsBoth) {
  TestWindow& w = openSilent();
  selectEdge(3);
  ASSERT_TRUE(w.m_refTreeStore);
  movePointer(w.m_SoundArea, 77, 20);
  PaintCount stripPaints(w.m_SoundArea);
  PaintCount canvasPaints(w.m_GraphArea);
  pressButton();
  EXPECT_EQ(selectedIds(), Ids());
  EXPECT_FALSE(w.m_refTreeStore);
  EXPECT_EQ(w.m_AttributeTree.get_columns().size(), 0u);
  EXPECT_GT(stripPaints.take(), 0);
  EXPECT_GT(canvasPaints.take(), 0);
  releaseButton();
}

TEST_F(SoundRangeTest, ClickKeepsTheRangeAndEmptiesTheSelection) {
  TestWindow& w = openSilent();
  selectEdge(3);
  ASSERT_EQ(w.m_RangeStart, 0.5);
  ASSERT_EQ(w.m_RangeEnd, 1.0);
  strip();
  click(w.m_SoundArea, 300, 20);
  EXPECT_EQ(w.m_RangeStart, 0.5);
  EXPECT_EQ(w.m_RangeEnd, 1.0);
  EXPECT_EQ(selectedIds(), Ids());
  expectNoBox();
}

TEST_F(SoundRangeTest, MotionMovesTheEndOfTheDragOnlyWhileTheButtonIsHeld) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 50, 20);
  EXPECT_EQ(w.m_DragCurrentX, -1);
  pressButton();
  PaintCount stripPaints(w.m_SoundArea);
  movePointer(w.m_SoundArea, 90, 25);
  EXPECT_EQ(w.m_DragCurrentX, 90);
  EXPECT_EQ(w.m_DragStartX, 50);
  EXPECT_GT(stripPaints.take(), 0);
  releaseButton();
  movePointer(w.m_SoundArea, 200, 20);
  EXPECT_EQ(w.m_DragCurrentX, 90);
  EXPECT_EQ(stripPaints.take(), 1);  // of the release
}

TEST_F(SoundRangeTest, PaintingWritesTheDragIntoTheRange) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 300, 20);
  pressButton();
  movePointer(w.m_SoundArea, 120, 20);
  EXPECT_EQ(w.m_RangeStart, 120.0 / stripWidth());
  EXPECT_EQ(w.m_RangeEnd, 300.0 / stripWidth());
  EXPECT_EQ(selectedIds(), Ids());
  expectBox(120, 300);
  movePointer(w.m_SoundArea, 420, 20);
  EXPECT_EQ(w.m_RangeStart, 300.0 / stripWidth());
  EXPECT_EQ(w.m_RangeEnd, 420.0 / stripWidth());
  expectBox(300, 420);
  releaseButton();
}

TEST_F(SoundRangeTest, HintsAskForThePointer) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 60, 20);
  pressButton();
  movePointer(w.m_SoundArea, 100, 20);
  GdkEvent* const event = gdk_event_new(GDK_MOTION_NOTIFY);
  event->motion.window = GDK_WINDOW(g_object_ref(w.m_SoundArea.get_window()->gobj()));
  event->motion.x = 222.9;
  event->motion.is_hint = true;
  w.m_SoundArea.event(event);
  EXPECT_EQ(w.m_DragCurrentX, 100);
  event->motion.is_hint = false;
  w.m_SoundArea.event(event);
  EXPECT_EQ(w.m_DragCurrentX, 222);
  event->motion.x = -0.9;  // towards zero
  w.m_SoundArea.event(event);
  EXPECT_EQ(w.m_DragCurrentX, 0);
  gdk_event_free(event);
  releaseButton();
}

TEST_F(SoundRangeTest, ReleaseSelectsTheEdgesInside) {
  TestWindow& w = openSilent();
  selectEdge(0);
  PaintCount canvasPaints(w.m_GraphArea);
  const int width = stripWidth();
  const int from = width / 5;
  const int to = width - 1;
  dragOnStrip(from, to);
  EXPECT_EQ(w.m_RangeStart, static_cast<double>(from) / width);
  EXPECT_EQ(w.m_RangeEnd, static_cast<double>(to) / width);
  EXPECT_EQ(selectedIds(), Ids());  // what ends with the sound ends after the last pixel
  canvasPaints.take();
  dragOnStrip(0, width / 2 + 5);
  EXPECT_EQ(selectedIds(), (Ids{0, 1}));
  EXPECT_GT(canvasPaints.take(), 0);
  EXPECT_FALSE(w.m_refTreeStore);
}

TEST_F(SoundRangeTest, ReleaseEmptiesASelectionMadeDuringTheDrag) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 0, 20);
  pressButton();
  w.m_SelectedEdges.assign(1, edgeOf(w, 3));
  movePointer(w.m_SoundArea, stripWidth() / 2 + 5, 20);
  releaseButton();
  EXPECT_EQ(selectedIds(), (Ids{0, 1}));
}

TEST_F(SoundRangeTest, DragToTheLeftSelectsTheSame) {
  TestWindow& w = openSilent();
  const int width = stripWidth();
  dragOnStrip(width * 3 / 5, width / 5);
  EXPECT_EQ(w.m_RangeStart, width / 5 / static_cast<double>(width));
  EXPECT_EQ(w.m_RangeEnd, width * 3 / 5 / static_cast<double>(width));
  EXPECT_EQ(selectedIds(), Ids());
  dragOnStrip(width * 3 / 5, 0);
  EXPECT_EQ(selectedIds(), (Ids{0, 1}));
}

TEST_F(SoundRangeTest, DragMayLeaveTheStrip) {
  TestWindow& w = openSilent();
  const int width = stripWidth();
  dragOnStrip(width / 5, width + 8);
  EXPECT_EQ(w.m_RangeEnd, (width + 8.0) / width);
  EXPECT_EQ(selectedIds(), (Ids{2, 3}));
  dragOnStrip(width / 2 + 3, -20);
  EXPECT_EQ(w.m_RangeStart, -20.0 / width);
  EXPECT_EQ(selectedIds(), (Ids{0, 1}));
}

TEST_F(SoundRangeTest, AnotherDragReplacesTheSelection) {
  openSilent();
  const int width = stripWidth();
  dragOnStrip(0, width / 3);
  EXPECT_EQ(selectedIds(), Ids{0});
  dragOnStrip(width * 2 / 5, width + 3);
  EXPECT_EQ(selectedIds(), Ids{3});
}

TEST_F(SoundRangeTest, OtherButtonsDoNothing) {
  TestWindow& w = openSilent();
  selectEdge(3);
  for (const unsigned button : {2u, 3u}) {
    movePointer(w.m_SoundArea, 50, 20);
    pressButton(button);
    EXPECT_FALSE(w.m_Dragging);
    movePointer(w.m_SoundArea, 150, 20);
    releaseButton(button);
    EXPECT_EQ(w.m_DragStartX, -1);
    EXPECT_EQ(w.m_DragCurrentX, -1);
    EXPECT_EQ(selectedIds(), Ids{3});
  }
  movePointer(w.m_SoundArea, 50, 20);
  pressButton(1);
  pressButton(3);
  releaseButton(3);
  EXPECT_TRUE(w.m_Dragging);
  releaseButton(1);
  EXPECT_FALSE(w.m_Dragging);
}

TEST_F(SoundRangeTest, WithoutASoundTheStripTakesNoDrag) {
  TestWindow& w = openLattice(kTwoWays);
  selectEdge(3);
  movePointer(w.m_SoundArea, 50, 20);
  pressButton();
  EXPECT_FALSE(w.m_Dragging);
  movePointer(w.m_SoundArea, 150, 20);
  EXPECT_EQ(w.m_DragCurrentX, -1);
  releaseButton();
  EXPECT_EQ(w.m_DragStartX, -1);
  EXPECT_EQ(w.m_DragCurrentX, -1);
  EXPECT_EQ(selectedIds(), Ids{3});
  EXPECT_EQ(w.m_RangeStart, 0.5);
}

TEST_F(SoundRangeTest, ADragCutOffByClosingIsNotMovedAnyMore) {
  TestWindow& w = openSilent();
  movePointer(w.m_SoundArea, 50, 20);
  pressButton();
  activate("FileClose");
  movePointer(w.m_SoundArea, 150, 20);
  EXPECT_EQ(w.m_DragCurrentX, 50);
  releaseButton();
  EXPECT_EQ(w.m_DragCurrentX, 50);
}

TEST_F(SoundRangeTest, BoxShowsTheTimesOfTheSelectedEdges) {
  TestWindow& w = openSilent();
  w.m_HPaned.set_position(w.m_HPaned.get_position() + stripWidth() % 4);  // whole quarters
  settle();
  ASSERT_EQ(stripWidth() % 4, 0);
  dragOnStrip(3, 9);  // the drag is not what counts
  selectEdge(2);
  ASSERT_EQ(w.m_RangeStart, 0.25);
  ASSERT_EQ(w.m_RangeEnd, 1.0);
  const auto picture = strip();
  const int left = stripWidth() / 4;
  EXPECT_TRUE(hasColour(picture, left - 3, 40, screen::kWhite));
  EXPECT_TRUE(hasColour(picture, left - 1, 40, kOutlineOnWhite));
  EXPECT_TRUE(hasColour(picture, left + 3, 40, kBoxOnWhite));
  EXPECT_TRUE(hasColour(picture, stripWidth() - 3, 40, kBoxOnWhite));
  EXPECT_TRUE(hasColour(picture, 6, 40, screen::kWhite));
}

TEST_F(SoundRangeTest, PaintingLeavesTheRangeOfSelectedEdgesAlone) {
  TestWindow& w = openSilent();
  selectEdge(3);
  w.m_DragStartX = 10;
  w.m_DragCurrentX = 200;
  w.m_SoundArea.queue_draw();
  strip();
  EXPECT_EQ(w.m_RangeStart, 0.5);
  EXPECT_EQ(w.m_RangeEnd, 1.0);
}

TEST_F(SoundRangeTest, DoublePressOnTheCanvasTakesTheDragAway) {
  TestWindow& w = openSilent();
  const int width = stripWidth();
  dragOnStrip(width * 3 / 5, width * 4 / 5);
  ASSERT_EQ(selectedIds(), Ids());
  expectBox(width * 3 / 5, width * 4 / 5);
  doubleClick(w.m_GraphArea, 3, 3);
  EXPECT_EQ(w.m_DragStartX, -1);
  expectNoBox();
}

TEST_F(SoundRangeTest, UnselectedRangeFollowsTheWidthOfTheStrip) {
  TestWindow& w = openSilent();
  const int width = stripWidth();
  dragOnStrip(width * 3 / 5, width * 4 / 5);
  w.m_HPaned.set_position(w.m_HPaned.get_position() + 50);
  strip();
  ASSERT_EQ(stripWidth(), width - 50);
  EXPECT_EQ(w.m_RangeStart, width * 3 / 5 / (width - 50.0));
  EXPECT_EQ(w.m_RangeEnd, width * 4 / 5 / (width - 50.0));
  expectBox(width * 3 / 5, width * 4 / 5);
}

TEST_F(SoundRangeTest, BoxLiesOverTheWaveform) {
  openWithSound(quietSound(60000, 8000, 16000));
  setStripHeight(200);
  dragOnStrip(100, 130);
  const auto picture = strip();
  EXPECT_TRUE(hasColour(picture, 90, stripHeight() / 2 + 30, 0x0000FF));
  EXPECT_TRUE(hasColour(picture, 115, stripHeight() / 2 + 30, 0x4C00B2));
  EXPECT_TRUE(hasColour(picture, 115, stripHeight() / 2 - 30, kBoxOnWhite));
}

}  // namespace
}  // namespace quorbel
