#include <gtk/gtk.h>

#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

using Place = std::pair<double, double>;

/// Dragging the drawing with real buttons.
class Dragging : public CanvasTest {
 protected:
  TestWindow& openScrolled() {
    TestWindow& w = open(bundlesOf(8, 14));
    w.m_Zoom = 1.0f;
    activate("DisplayZoomIn");
    settle();
    w.m_GraphScroll.get_hadjustment()->set_value(300);
    w.m_GraphScroll.get_vadjustment()->set_value(100);
    settle();
    return w;
  }

  Place scrolled() const {
    return {window->m_GraphScroll.get_hadjustment()->get_value(),
            window->m_GraphScroll.get_vadjustment()->get_value()};
  }

  /// Moves the pointer to a place of the visible part, which stays where it is while the canvas
  /// moves.
  void moveTo(int x, int y) {
    const Box seen = window->visiblePart();
    movePointer(window->m_GraphArea, seen.left + x, seen.top + y);
  }

  /// A place of the visible part where no label is.
  std::pair<int, int> emptyPlace() const {
    const Box seen = window->visiblePart();
    for (int y = 150; y < 300; ++y)
      for (int x = 200; x < 400; ++x)
        if (!edgeAt(window->canvasMapping(), window->m_EdgeLayouts, x + seen.left, y + seen.top))
          return {x, y};
    throw std::runtime_error("labels everywhere");
  }

  /// A place of the visible part where a label is.
  std::pair<int, int> labelPlace() const {
    const Box seen = window->visiblePart();
    for (int y = 150; y < 300; ++y)
      for (int x = 200; x < 400; ++x)
        if (edgeAt(window->canvasMapping(), window->m_EdgeLayouts, x + seen.left, y + seen.top))
          return {x, y};
    throw std::runtime_error("no label in sight");
  }

  int cursor() const {
    GdkCursor* const shape = gdk_window_get_cursor(window->m_GraphArea.get_window()->gobj());
    return shape ? gdk_cursor_get_cursor_type(shape) : -1;
  }
};

TEST_F(Dragging, DrawingFollowsThePointer) {
  openScrolled();
  const auto [x, y] = emptyPlace();
  for (const unsigned button : {1u, 2u}) {
    SCOPED_TRACE(button);
    moveTo(x, y);
    pressButton(button);
    moveTo(x + 40, y - 25);
    EXPECT_EQ(scrolled(), Place(260, 125));
    EXPECT_EQ(cursor(), GDK_FLEUR);
    moveTo(x - 60, y + 30);
    EXPECT_EQ(scrolled(), Place(360, 70));
    moveTo(x, y);
    EXPECT_EQ(scrolled(), Place(300, 100));
    releaseButton(button);
    EXPECT_EQ(cursor(), -1);
    moveTo(x + 50, y + 50);
    EXPECT_EQ(scrolled(), Place(300, 100)) << "let go of";
  }
}

TEST_F(Dragging, ShowsTheDrawingWhereItWasDraggedTo) {
  openScrolled();
  const auto [x, y] = emptyPlace();
  moveTo(x, y);
  pressButton(2);
  moveTo(x - 130, y - 7);
  releaseButton(2);
  moveTo(x, 2);
  settle();
  const Box seen = window->visiblePart();
  EXPECT_EQ(seen.left, 430);
  for (const auto& [atX, atY] : {std::pair(1, 60), std::pair(seen.width - 2, 60),
                                 std::pair(seen.width / 2, seen.height - 2)})
    expectOverDrawing(seen.left + atX, seen.top + atY);
}

TEST_F(Dragging, StopsAtTheBorders) {
  TestWindow& w = openScrolled();
  const auto [x, y] = emptyPlace();
  moveTo(x, y);
  pressButton(2);
  moveTo(x + 390, y + 140);
  EXPECT_EQ(scrolled(), Place(0, 0));
  moveTo(x, y);
  EXPECT_EQ(scrolled(), Place(300, 100)) << "the place that was taken hold of comes back";
  w.m_GraphScroll.get_hadjustment()->set_value(300);
  releaseButton(2);
}

TEST_F(Dragging, BeginsWithTheLeftButtonOnlyWhereNoLabelIs) {
  openScrolled();
  const auto [x, y] = labelPlace();
  moveTo(x, y);
  pressButton(1);
  moveTo(x + 40, y);
  EXPECT_EQ(scrolled(), Place(300, 100));
  releaseButton(1);
  moveTo(x, y);
  pressButton(2);
  moveTo(x + 40, y);
  EXPECT_EQ(scrolled(), Place(260, 100)) << "the middle one takes hold anywhere";
  releaseButton(2);
  const auto [emptyX, emptyY] = emptyPlace();
  moveTo(emptyX, emptyY);
  pressButton(3);
  moveTo(emptyX + 40, emptyY);
  EXPECT_EQ(scrolled(), Place(260, 100));
  releaseButton(3);
}

TEST_F(Dragging, LeavesADoublePressWhatItIs) {
  TestWindow& w = openScrolled();
  const Box seen = w.visiblePart();
  const auto [x, y] = labelPlace();
  const LayoutItem* const under =
      edgeAt(w.canvasMapping(), w.m_EdgeLayouts, x + seen.left, y + seen.top);
  ASSERT_TRUE(under);
  doubleClick(w.m_GraphArea, seen.left + x, seen.top + y);
  ASSERT_EQ(selectedIds(), std::vector<int>{under->linkId});
  const auto [emptyX, emptyY] = emptyPlace();
  doubleClick(w.m_GraphArea, seen.left + emptyX, seen.top + emptyY);
  EXPECT_EQ(selectedIds(), std::vector<int>{under->linkId});
  moveTo(emptyX + 30, emptyY);
  EXPECT_EQ(scrolled(), Place(300, 100));
}

TEST_F(Dragging, EndsWhenTheReleaseWasNeverTold) {
  TestWindow& w = openScrolled();
  const auto [x, y] = emptyPlace();
  moveTo(x, y);
  pressButton(2);
  moveTo(x + 10, y);
  EXPECT_EQ(scrolled(), Place(290, 100));
  sendMotion(500, 200);  // no button is held any more
  EXPECT_EQ(cursor(), -1);
  EXPECT_EQ(scrolled(), Place(290, 100));
  EXPECT_EQ(w.m_PointerX, 500) << "a move as any other";
  releaseButton(2);
}

TEST_F(Dragging, IsIgnoredWithoutADrawingAndWhileItIsDrawnAnew) {
  TestWindow& w = showWindow();
  moveTo(100, 100);
  pressButton(2);
  moveTo(120, 100);
  releaseButton(2);
  EXPECT_EQ(cursor(), -1);
  openScrolled();
  moveTo(300, 200);
  w.m_Rendering = true;
  pressButton(2);
  moveTo(330, 200);
  w.m_Rendering = false;
  moveTo(340, 200);
  EXPECT_EQ(scrolled(), Place(300, 100));
  releaseButton(2);
}

}  // namespace
}  // namespace quorbel
