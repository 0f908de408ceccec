#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

using Ids = std::vector<int>;

/// The pointer over the canvas: hovering, and double presses that select.
class Pointer : public CanvasTest {
 protected:
  /// Puts the pointer onto the canvas where no label is.
  void beginAside() {
    movePointer(window->m_GraphArea, 3, 3);
    movePointer(window->m_GraphArea, 4, 3);
    takeCanvasRepaints();
  }
};

TEST_F(Pointer, OverNoLabelRepaintsNothing) {
  TestWindow& w = open(kTwoWords);
  beginAside();
  for (int x = 5; x < 25; x += 4) movePointer(w.m_GraphArea, x, 5);
  EXPECT_EQ(w.m_PointerX, 21);
  EXPECT_EQ(w.m_PointerY, 5);
  const Box node = nodeBoxOf(0);
  movePointer(w.m_GraphArea, node.left + node.width / 2, node.top + node.height / 2);
  EXPECT_FALSE(w.m_HoverShown);
  EXPECT_EQ(takeCanvasRepaints(), 0);
}

TEST_F(Pointer, OverALabelRepaintsAtEachMove) {
  TestWindow& w = open(kTwoWords);
  beginAside();
  const auto [x, y] = labelCentre(w, 0);
  for (const int step : {0, 1, 2}) {
    movePointer(w.m_GraphArea, x + step, y);
    EXPECT_TRUE(w.m_HoverShown);
    EXPECT_EQ(takeCanvasRepaints(), 1) << step;
  }
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(Pointer, LeavingALabelRepaintsOnce) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 0);
  movePointer(w.m_GraphArea, x, y);
  movePointer(w.m_GraphArea, x + 1, y);
  ASSERT_TRUE(w.m_HoverShown);
  takeCanvasRepaints();
  movePointer(w.m_GraphArea, x, 3);
  EXPECT_FALSE(w.m_HoverShown);
  EXPECT_EQ(takeCanvasRepaints(), 1);
  movePointer(w.m_GraphArea, x + 1, 3);
  movePointer(w.m_GraphArea, x + 2, 3);
  EXPECT_EQ(takeCanvasRepaints(), 0);
}

TEST_F(Pointer, OverALabelRepaintsTheWholeCanvasAndNotTheStrip) {
  TestWindow& w = open(kTwoWords);
  beginAside();
  GdkRectangle exposed = {};
  w.m_GraphArea.signal_expose_event().connect(
      [&](GdkEventExpose* event) {
        exposed = event->area;
        return false;
      },
      false);
  takeStripRepaints();
  const auto [x, y] = labelCentre(w, 0);
  for (const auto& [toX, toY] : {std::pair(x, y), std::pair(x, 3)}) {
    exposed = {};
    movePointer(w.m_GraphArea, toX, toY);
    EXPECT_EQ(exposed.width, w.m_GraphArea.get_width());
    EXPECT_EQ(exposed.height, w.m_GraphArea.get_height());
  }
  EXPECT_EQ(takeStripRepaints(), 0);
}

TEST_F(Pointer, OnABorderDoesNotHover) {
  TestWindow& w = open(kTwoWords);
  const Box box = labelBoxOf(1);
  const int middleX = box.left + box.width / 2, middleY = box.top + box.height / 2;
  for (const auto& [x, y, isHit] :
       {std::tuple(box.left, middleY, false), std::tuple(box.left + 1, middleY, true),
        std::tuple(box.left + box.width, middleY, false),
        std::tuple(box.left + box.width - 1, middleY, true), std::tuple(middleX, box.top, false),
        std::tuple(middleX, box.top + 1, true), std::tuple(middleX, box.top + box.height, false),
        std::tuple(middleX, box.top + box.height - 1, true)}) {
    sendMotion(x, y);
    EXPECT_EQ(w.m_HoverShown, isHit) << x << ", " << y;
  }
}

TEST_F(Pointer, IsCutOffTowardsZero) {
  TestWindow& w = open(kTwoWords);
  sendMotion(10.9, 20.99);
  EXPECT_EQ(w.m_PointerX, 10);
  EXPECT_EQ(w.m_PointerY, 20);
  sendMotion(-0.9, -7.9);
  EXPECT_EQ(w.m_PointerX, 0);
  EXPECT_EQ(w.m_PointerY, -7);
}

TEST_F(Pointer, HitsWithFractionsOfAPixel) {
  TestWindow& w = open(kTwoWords);
  const Box box = labelBoxOf(1);
  const int middleY = box.top + box.height / 2;
  sendMotion(box.left + 0.5, middleY);
  EXPECT_TRUE(w.m_HoverShown);
  EXPECT_EQ(w.m_PointerX, box.left);
  sendMotion(box.left - 0.5, middleY);
  EXPECT_FALSE(w.m_HoverShown);
}

TEST_F(Pointer, OfAHintIsAskedFor) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  movePointer(w.m_GraphArea, 31, 17);
  EXPECT_TRUE(sendMotion(x, y, true));
  EXPECT_EQ(w.m_PointerX, 31);
  EXPECT_EQ(w.m_PointerY, 17);
  EXPECT_TRUE(w.m_HoverShown) << "the event's own place counts for the hit";

  movePointer(w.m_GraphArea, x, y);
  EXPECT_TRUE(sendMotion(3, 3, true));
  EXPECT_EQ(w.m_PointerX, x);
  EXPECT_EQ(w.m_PointerY, y);
  EXPECT_FALSE(w.m_HoverShown);
}

TEST_F(Pointer, IsIgnoredWithoutAPicture) {
  TestWindow& w = showWindow();
  EXPECT_TRUE(sendMotion(50, 60));
  EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 1, 50, 60));
  EXPECT_EQ(w.m_PointerX, 0);
  EXPECT_EQ(w.m_PointerY, 0);
}

TEST_F(Pointer, IsIgnoredWhileTheLatticeIsDrawnAgain) {
  TestWindow& w = open(kTwoWords);
  movePointer(w.m_GraphArea, 3, 3);
  w.m_DragStartX = 5;
  w.m_DragCurrentX = 9;
  const auto [x, y] = labelCentre(w, 1);
  const int atX = x, atY = y;
  int tried = 0;
  duringStage("Loading graph elements...", [&] {
    ++tried;
    EXPECT_TRUE(sendMotion(atX, atY));
    EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 1, atX, atY));
  });
  w.renderGraph();
  ASSERT_EQ(tried, 1);
  EXPECT_EQ(w.m_PointerX, 3);
  EXPECT_EQ(w.m_PointerY, 3);
  EXPECT_FALSE(w.m_HoverShown);
  EXPECT_EQ(selectedIds(), Ids{});
  EXPECT_EQ(w.m_DragStartX, 5);
  EXPECT_EQ(w.m_DragCurrentX, 9);
}

TEST_F(Pointer, RealInputIsIgnoredWhileTheLatticeIsDrawnAgain) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  const int atX = x, atY = y;
  duringStage("Creating graph...", [&] { doubleClick(w.m_GraphArea, atX, atY); });
  w.renderGraph();
  EXPECT_EQ(selectedIds(), Ids{});
}

TEST_F(Pointer, MotionIsHandled) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  EXPECT_TRUE(sendMotion(3, 3));
  EXPECT_TRUE(sendMotion(x, y));
  EXPECT_TRUE(sendMotion(3, 3));
}

TEST_F(Pointer, DoublePressSelectsACopyOfTheEdge) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  doubleClick(w.m_GraphArea, x, y);
  ASSERT_EQ(selectedIds(), Ids{1});
  const LayoutItem drawn = edgeOf(w, 1);
  const LayoutItem selected = w.m_SelectedEdges[0];
  EXPECT_EQ(selected.x, drawn.x);
  EXPECT_EQ(selected.y, drawn.y);
  EXPECT_EQ(selected.startNode, 1);
  EXPECT_EQ(selected.endNode, 2);
  EXPECT_EQ(selected.label, "morning / Morgen");
  EXPECT_EQ(selected.word, "<w in='morning' out='Morgen'/>");
  EXPECT_EQ(selected.score, 20.0);
  EXPECT_EQ(w.m_PointerX, x);
  EXPECT_EQ(w.m_PointerY, y);
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(Pointer, DoublePressIsCutOffBeforeItHits) {
  TestWindow& w = open(kTwoWords);
  const Box box = labelBoxOf(1);
  const int middleY = box.top + box.height / 2;
  EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 1, box.left + 0.9, middleY));
  EXPECT_EQ(w.m_PointerX, box.left);
  EXPECT_EQ(selectedIds(), Ids{});
  EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 1, box.left + 1.9, middleY + 0.9));
  EXPECT_EQ(w.m_PointerX, box.left + 1);
  EXPECT_EQ(w.m_PointerY, middleY);
  EXPECT_EQ(selectedIds(), Ids{1});
}

TEST_F(Pointer, DoublePressOnABorderSelectsNothing) {
  open(kTwoWords);
  const Box box = labelBoxOf(1);
  const int middleX = box.left + box.width / 2, middleY = box.top + box.height / 2;
  for (const auto& [x, y] :
       {std::pair(box.left, middleY), std::pair(box.left + box.width, middleY),
        std::pair(middleX, box.top), std::pair(middleX, box.top + box.height)}) {
    sendPress(GDK_2BUTTON_PRESS, 1, x, y);
    EXPECT_EQ(selectedIds(), Ids{}) << x << ", " << y;
  }
  sendPress(GDK_2BUTTON_PRESS, 1, box.left + box.width - 1, box.top + box.height - 1);
  EXPECT_EQ(selectedIds(), Ids{1});
}

TEST_F(Pointer, SinglePressDoesNothing) {
  TestWindow& w = open(kTwoWords);
  beginAside();
  const auto [x, y] = labelCentre(w, 1);
  movePointer(w.m_GraphArea, x, y);
  w.m_PointerX = w.m_PointerY = w.m_DragStartX = 77;
  takeCanvasRepaints();
  pressButton();
  releaseButton();
  EXPECT_EQ(selectedIds(), Ids{});
  EXPECT_EQ(w.m_PointerX, 77);
  EXPECT_EQ(w.m_PointerY, 77);
  EXPECT_EQ(w.m_DragStartX, 77);
  EXPECT_EQ(takeCanvasRepaints(), 0);
}

TEST_F(Pointer, OnlyADoublePressOfButtonOneCounts) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  for (const unsigned button : {2u, 3u}) {
    doubleClick(w.m_GraphArea, x, y, button);
    EXPECT_EQ(selectedIds(), Ids{}) << button;
  }
  w.m_DragStartX = 77;
  for (const GdkEventType type : {GDK_BUTTON_PRESS, GDK_3BUTTON_PRESS})
    EXPECT_TRUE(sendPress(type, 1, x, y));
  EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 2, x, y));
  EXPECT_EQ(selectedIds(), Ids{});
  EXPECT_EQ(w.m_DragStartX, 77);
}

TEST_F(Pointer, DoublePressBesideLabelsKeepsTheSelection) {
  TestWindow& w = open(kTwoWords);
  selectByPointer({1});
  w.m_DragStartX = 5;
  w.m_DragCurrentX = 9;
  w.m_RangeStart = 0.125;
  w.m_RangeEnd = 0.25;
  const std::vector<std::string> rows = treeRows();
  takeCanvasRepaints();
  takeStripRepaints();
  EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 1, 3.5, 4.5));
  EXPECT_EQ(takeCanvasRepaints(), 1);
  EXPECT_EQ(takeStripRepaints(), 1);
  EXPECT_EQ(w.m_PointerX, 3);
  EXPECT_EQ(w.m_PointerY, 4);
  EXPECT_EQ(w.m_DragStartX, -1);
  EXPECT_EQ(w.m_DragCurrentX, -1);
  EXPECT_EQ(selectedIds(), Ids{1});
  EXPECT_EQ(w.m_RangeStart, 0.125);
  EXPECT_EQ(w.m_RangeEnd, 0.25);
  EXPECT_EQ(treeRows(), rows);
}

TEST_F(Pointer, DoublePressOnALabelRepaintsBothViewsAndEndsADrag) {
  TestWindow& w = open(kTwoWords);
  beginAside();
  takeStripRepaints();
  w.m_DragStartX = 5;
  w.m_DragCurrentX = 9;
  const auto [x, y] = labelCentre(w, 1);
  EXPECT_TRUE(sendPress(GDK_2BUTTON_PRESS, 1, x, y));
  EXPECT_EQ(takeCanvasRepaints(), 1);
  EXPECT_EQ(takeStripRepaints(), 1);
  EXPECT_EQ(w.m_DragStartX, -1);
  EXPECT_EQ(w.m_DragCurrentX, -1);
}

TEST_F(Pointer, SelectionSpansTheSoundOfItsEdges) {
  TestWindow& w = open(chainOf(4));
  const auto expectRange = [&](double start, double end) {
    EXPECT_EQ(w.m_RangeStart, start);
    EXPECT_EQ(w.m_RangeEnd, end);
  };
  selectByPointer({2});
  expectRange(0.5, 0.75);
  selectByPointer({2, 1});  // the first press selects the edge anew
  expectRange(0.25, 0.75);
  selectByPointer({0, 3});
  expectRange(0.0, 1.0);
}

TEST_F(Pointer, EdgeWithoutTimeSpansTheWholeSound) {
  TestWindow& w = open(
      "N=4\nI=0 t=0\nI=1 t=1\nI=2 t=1\nI=3 t=4\n"
      "J=0 S=0 E=1 W=<w in='before'/> a=-1\nJ=1 S=1 E=2 W=<w in='without'/> a=-1\n"
      "J=2 S=2 E=3 W=<w in='after'/> a=-1\n");
  selectByPointer({1});
  EXPECT_EQ(w.m_RangeStart, -0.75);
  EXPECT_EQ(w.m_RangeEnd, 1.25);
}

TEST_F(Pointer, OfTwoLabelsOverEachOtherTheFirstDrawnIsSelected) {
  TestWindow& w = open(kTwoWords);
  for (LayoutItem& item : w.m_EdgeLayouts)
    if (!item.isNode) item.x = item.y = 40;
  int first = -1;
  for (const LayoutItem& item : w.m_EdgeLayouts)
    if (!item.isNode && first == -1) first = item.linkId;
  const auto [x, y] = labelCentre(w, first);
  sendPress(GDK_2BUTTON_PRESS, 1, x, y);
  EXPECT_EQ(selectedIds(), Ids{first});
}

TEST_F(Pointer, SelectsWhereTheDrawingIsScrolledTo) {
  TestWindow& w = open(chainOf(12));
  w.m_Zoom = 0.8f;
  activate("DisplayZoomIn");
  settle();
  w.m_GraphScroll.get_hadjustment()->set_value(300);
  settle();
  ASSERT_EQ(w.canvasMapping().scrollX, 300);
  selectByPointer({4});
  EXPECT_EQ(selectedIds(), Ids{4});
}

TEST_F(Pointer, SelectsAtEveryZoom) {
  TestWindow& w = open(chainOf(6));
  for (const float zoom : {0.25f, 0.4f, 0.7f, 0.8f}) {
    w.m_Zoom = zoom;
    activate("DisplayZoomOut");
    settle();
    selectByPointer({1});
    EXPECT_EQ(selectedIds(), Ids{1}) << zoom;
    selectByPointer({0});
    EXPECT_EQ(selectedIds(), Ids{0}) << zoom;
  }
}

TEST_F(Pointer, DoublePressAfterClosingDoesNothing) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  activate("FileClose");
  doubleClick(w.m_GraphArea, x, y);
  EXPECT_EQ(selectedIds(), Ids{});
}

}  // namespace
}  // namespace quorbel
