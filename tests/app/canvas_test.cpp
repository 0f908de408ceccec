#include "app/box_colours.h"
#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

/// The canvas as it shows, with and without boxes over the drawing.
class Canvas : public CanvasTest {
 protected:
  /// Shows the drawing at this zoom, scrolled to a place.
  void show(float zoom, double scrollX, double scrollY) {
    window->m_Zoom = zoom / 1.25f;
    activate("DisplayZoomIn");
    settle();
    window->m_GraphScroll.get_hadjustment()->set_value(scrollX);
    window->m_GraphScroll.get_vadjustment()->set_value(scrollY);
    settle();
  }

  /// The part of the canvas that can be seen.
  Box visiblePart() const {
    const Gtk::Adjustment& across = *window->m_GraphScroll.get_hadjustment();
    const Gtk::Adjustment& down = *window->m_GraphScroll.get_vadjustment();
    return {static_cast<int>(across.get_value()), static_cast<int>(down.get_value()),
            static_cast<int>(across.get_page_size()), static_cast<int>(down.get_page_size())};
  }

  /// Checks every visible pixel: nothing stands out.
  void expectPlainDrawing() {
    settle();
    const Box part = visiblePart();
    const Glib::RefPtr<Gdk::Drawable> drawable = window->m_GraphArea.get_window();
    const auto picture =
        Gdk::Pixbuf::create(drawable, part.left, part.top, part.width, part.height);
    int inked = 0;
    for (int y = 0; y < part.height && !HasFailure(); ++y) {
      for (int x = 0; x < part.width && !HasFailure(); ++x) {
        const Pixel expected = drawnPixel(part.left + x, part.top + y);
        const unsigned colour = pixel(picture, x, y);
        EXPECT_EQ(colour,
                  static_cast<unsigned>(expected.red << 16 | expected.green << 8 | expected.blue))
            << "at " << part.left + x << ", " << part.top + y;
        if (colour != 0xffffff) ++inked;
      }
    }
    EXPECT_GT(inked, 50) << "an empty part shows nothing";
  }

  void expectWhite() {
    settle();
    const auto picture = pictureOf(window->m_GraphArea);
    for (int y = 0; y < picture->get_height() && !HasFailure(); ++y)
      for (int x = 0; x < picture->get_width() && !HasFailure(); ++x)
        EXPECT_EQ(pixel(picture, x, y), 0xffffffu) << "at " << x << ", " << y;
  }

  /// Checks the middle of a box and the middles of its upper and lower side.
  void expectBox(const Box& box, const std::vector<std::pair<Rgba, Rgba>>& colours) {
    std::vector<Rgba> filled, outlined, outlinedOutside;
    for (const auto& [fill, outline] : colours) {
      filled.push_back(fill);
      outlined.insert(outlined.end(), {fill, outline});
      outlinedOutside.push_back(outline);
    }
    const int middleX = box.left + box.width / 2;
    const int bottom = box.top + box.height;
    expectOverDrawing(middleX, box.top + box.height / 2, filled);
    expectOverDrawing(middleX, box.top - 2);
    expectOverDrawing(middleX, box.top - 1, outlinedOutside);
    expectOverDrawing(middleX, box.top, outlined);
    expectOverDrawing(middleX, box.top + 1, filled);
    expectOverDrawing(middleX, bottom - 2, filled);
    expectOverDrawing(middleX, bottom - 1, outlined);
    expectOverDrawing(middleX, bottom, outlinedOutside);
    expectOverDrawing(middleX, bottom + 1);
  }

  void expectNoBox(const Box& box) {
    const int middleX = box.left + box.width / 2;
    for (int y = box.top - 2; y < box.top + box.height + 2; ++y) expectOverDrawing(middleX, y);
  }

  void expectGreen(const Box& box, bool isGreen) {
    for (const auto& [x, y] : {std::pair(box.left, box.top),
                               std::pair(box.left + box.width - 1, box.top + box.height - 1),
                               std::pair(box.left + box.width / 2, box.top + box.height / 2)}) {
      if (isGreen)
        EXPECT_EQ(canvasPixel(x, y).differenceTo({0, 255, 0, 255}), 0) << x << ", " << y;
      else
        expectOverDrawing(x, y);
    }
  }
};

TEST_F(Canvas, IsWhiteWithoutALattice) {
  showWindow();
  expectWhite();
}

TEST_F(Canvas, IsWhiteAgainWhenTheFileIsClosed) {
  open(kTwoWords);
  activate("FileClose");
  expectWhite();
}

TEST_F(Canvas, HasASmallDrawingInItsMiddle) {
  TestWindow& w = open(kTwoWords);
  ASSERT_EQ(w.m_Zoom, 1.0f);
  const int left = w.m_GraphArea.get_width() / 2 - w.m_refShownImage->get_width() / 2;
  const int top = w.m_GraphArea.get_height() / 2 - w.m_refShownImage->get_height() / 2;
  ASSERT_GT(left, 0);
  ASSERT_GT(top, 0);
  EXPECT_EQ(w.canvasMapping().originX, left);
  EXPECT_EQ(w.canvasMapping().originY, top);
  expectPlainDrawing();
}

TEST_F(Canvas, HasAZoomedDrawingInItsMiddle) {
  open(kTwoWords);
  show(0.5f, 0, 0);
  expectPlainDrawing();
}

TEST_F(Canvas, ShowsTheDrawingFromWhereItIsScrolledTo) {
  TestWindow& w = open(chainOf(12));
  show(1.0f, 123.75, 0);
  ASSERT_GT(w.m_refShownImage->get_width(), w.m_GraphScroll.get_width() + 124);
  EXPECT_EQ(w.canvasMapping().scrollX, 123);
  EXPECT_EQ(w.canvasMapping().originX, 123);
  EXPECT_GT(w.canvasMapping().originY, 0) << "not scrolled downwards: in the middle";
  expectPlainDrawing();
}

TEST_F(Canvas, ShowsTheEndOfTheDrawing) {
  TestWindow& w = open(chainOf(12));
  show(1.0f, 0, 0);
  Gtk::Adjustment& across = *w.m_GraphScroll.get_hadjustment();
  across.set_value(across.get_upper() - across.get_page_size());
  settle();
  const Box part = visiblePart();
  ASSERT_EQ(part.left + part.width, w.m_refShownImage->get_width());
  expectPlainDrawing();
}

TEST_F(Canvas, BoxesLieAsPictureLayoutZoomAndScrollingSay) {
  std::string wide = "N=40\n";
  for (int i = 0; i < 40; ++i) wide += "I=" + std::to_string(i) + " t=" + std::to_string(i) + "\n";
  for (int i = 0; i < 160; ++i) {
    const int start = i % 8 == 7 ? 0 : i % 39;
    wide += "J=" + std::to_string(i) + " S=" + std::to_string(start) +
            " E=" + std::to_string(start + 1) + " W=<w in='label" + std::to_string(i) +
            "'/> a=-1\n";
  }
  TestWindow& w = open(wide);
  for (const auto& [zoom, scrollX, scrollY] :
       {std::tuple(1.0f, 0.0, 0.0), std::tuple(1.0f, 300.7, 41.9), std::tuple(0.5f, 123.0, 0.0),
        std::tuple(0.2f, 0.0, 0.0)}) {
    SCOPED_TRACE(std::to_string(zoom));
    show(zoom, scrollX, scrollY);
    const int offsetX = static_cast<int>(w.m_GraphScroll.get_hadjustment()->get_value());
    const int offsetY = static_cast<int>(w.m_GraphScroll.get_vadjustment()->get_value());
    EXPECT_EQ(offsetX, static_cast<int>(scrollX));
    EXPECT_EQ(offsetY, static_cast<int>(scrollY));
    const int canvasWidth = w.m_GraphArea.get_allocation().get_width();
    const int canvasHeight = w.m_GraphArea.get_allocation().get_height();
    const int pictureX = offsetX ? 0 : canvasWidth / 2 - w.m_refShownImage->get_width() / 2;
    const int pictureY = offsetY ? 0 : canvasHeight / 2 - w.m_refShownImage->get_height() / 2;
    const double ratioX = 1.0 * w.m_refGraphImage->get_width() / w.m_Graph.layoutWidth;
    const double ratioY = 1.0 * w.m_refGraphImage->get_height() / w.m_Graph.layoutHeight;
    for (const LayoutItem& item : w.m_EdgeLayouts) {
      const double x = item.x * ratioX;
      const double y = w.m_refGraphImage->get_height() - item.y * ratioY;
      const Box box =
          item.isNode ? nodeBox(w.canvasMapping(), item) : labelBox(w.canvasMapping(), item);
      const double halfWidth =
          item.isNode ? item.width * ratioX / 2 : 6.0 * static_cast<double>(item.label.size());
      const double above = item.isNode ? item.height * ratioY / 2 : 20.0 / 3;
      EXPECT_NEAR(box.left, (x - halfWidth) * zoom + pictureX, 1);
      EXPECT_NEAR(box.top, (y - above) * zoom + pictureY, 1);
      EXPECT_NEAR(box.width, 2 * halfWidth * zoom * (item.isNode ? ratioY / ratioX : 1), 1);
      EXPECT_NEAR(box.height, (item.isNode ? 2 * above : 20) * zoom, 1);
    }
  }
}

TEST_F(Canvas, ScrollsInBothDirections) {
  TestWindow& w = open(bundlesOf(8, 14));
  show(1.0f, 150, 90);
  ASSERT_EQ(w.canvasMapping().scrollX, 150);
  ASSERT_EQ(w.canvasMapping().scrollY, 90);
  EXPECT_EQ(w.canvasMapping().originY, 90);
  expectPlainDrawing();
}

TEST_F(Canvas, IsWhiteWhileTheLatticeIsDrawnAgain) {
  TestWindow& w = open(kTwoWords);
  const Box node = nodeBoxOf(0);
  const int x = node.left + node.width / 2, y = node.top + node.height / 2;
  ASSERT_NE(canvasPixel(x, y).differenceTo(kWhite), 0) << "nodes at the ends are filled";
  int whitePixels = 0;
  for (const char* stage :
       {"Creating graph...", "Loading graph elements...", "Loading graph image..."}) {
    duringStage(stage, [&] {
      w.m_SelectedEdges = {edgeOf(w, 0)};
      w.m_GraphArea.queue_draw();
      w.m_GraphArea.get_window()->process_updates(false);
      if (canvasPixel(x, y).differenceTo(kWhite) == 0) ++whitePixels;
    });
    w.renderGraph();
  }
  EXPECT_EQ(whitePixels, 3);
  settle();
  EXPECT_NE(canvasPixel(x, y).differenceTo(kWhite), 0);
}

TEST_F(Canvas, SelectedEdgesStandOut) {
  TestWindow& w = open(kTwoWords);
  selectByPointer({1});
  movePointer(w.m_GraphArea, 3, 3);
  expectBox(labelBoxOf(1), {{kSelectedLabelFill, kSelectedLabelOutline}});
  expectBox(nodeBoxOf(1), {{kSelectedNodeFill, kSelectedNodeOutline}});
  expectBox(nodeBoxOf(2), {{kSelectedNodeFill, kSelectedNodeOutline}});
  expectNoBox(labelBoxOf(0));
  expectNoBox(nodeBoxOf(0));
}

TEST_F(Canvas, EdgeUnderThePointerStandsOut) {
  TestWindow& w = open(kTwoWords);
  const auto [x, y] = labelCentre(w, 0);
  movePointer(w.m_GraphArea, x, y);
  movePointer(w.m_GraphArea, x + 1, y);
  expectBox(labelBoxOf(0), {{kHoveredLabelFill, kHoveredLabelOutline}});
  expectBox(nodeBoxOf(0), {{kHoveredNodeFill, kHoveredNodeOutline}});
  expectBox(nodeBoxOf(1), {{kHoveredNodeFill, kHoveredNodeOutline}});
  expectNoBox(labelBoxOf(1));
  expectNoBox(nodeBoxOf(2));
}

TEST_F(Canvas, EdgeUnderThePointerIsPaintedOverTheSelection) {
  open(kTwoWords);
  selectByPointer({0});  // and the pointer stays
  expectBox(labelBoxOf(0), {{kSelectedLabelFill, kSelectedLabelOutline},
                            {kHoveredLabelFill, kHoveredLabelOutline}});
  expectBox(nodeBoxOf(1),
            {{kSelectedNodeFill, kSelectedNodeOutline}, {kHoveredNodeFill, kHoveredNodeOutline}});
}

TEST_F(Canvas, PointerOnTheBorderOfALabelShowsNothing) {
  TestWindow& w = open(kTwoWords);
  const Box box = labelBoxOf(0);
  movePointer(w.m_GraphArea, box.left - 5, box.top + 5);
  for (const int x : {box.left, box.left + box.width}) {
    movePointer(w.m_GraphArea, x, box.top + 5);
    w.m_GraphArea.queue_draw();
    settle();
    expectNoBox(box);
  }
  movePointer(w.m_GraphArea, box.left + 1, box.top + 5);
  expectBox(box, {{kHoveredLabelFill, kHoveredLabelOutline}});
}

TEST_F(Canvas, BoxesMoveWithTheDrawingWhenItIsScrolled) {
  TestWindow& w = open(chainOf(12));
  show(1.0f, 301, 0);
  w.m_SelectedEdges = {edgeOf(w, 4)};
  w.m_GraphArea.queue_draw();
  settle();
  const Box label = labelBoxOf(4);
  ASSERT_GT(label.left, 301);
  ASSERT_LT(label.left + label.width, 301 + w.m_GraphScroll.get_width());
  expectBox(label, {{kSelectedLabelFill, kSelectedLabelOutline}});
  expectBox(nodeBoxOf(5), {{kSelectedNodeFill, kSelectedNodeOutline}});
}

TEST_F(Canvas, SelectedEdgeWithoutPositionIsLeftOut) {
  TestWindow& w = open(kTwoWords);
  w.m_SelectedEdges = {edgeOf(w, 0), edgeOf(w, 1)};
  w.m_SelectedEdges[0].x = -1;
  w.m_GraphArea.queue_draw();
  settle();
  expectNoBox(labelBoxOf(0));
  expectNoBox(nodeBoxOf(0));
  expectBox(labelBoxOf(1), {{kSelectedLabelFill, kSelectedLabelOutline}});
}

TEST_F(Canvas, ManySelectedEdgesStandOutAsFewDo) {
  TestWindow& w = open(chainOf(30));
  show(0.5f, 0, 0);
  for (int id = 0; id < 30; ++id) w.m_SelectedEdges.push_back(edgeOf(w, id));
  w.m_GraphArea.queue_draw();
  settle();
  const std::pair<Rgba, Rgba> once{kSelectedNodeFill, kSelectedNodeOutline};
  for (const int id : {1, 4}) {
    expectBox(labelBoxOf(id), {{kSelectedLabelFill, kSelectedLabelOutline}});
    const Box node = nodeBoxOf(id);
    expectOverDrawing(node.left + node.width / 2, node.top + node.height / 2,
                      {kSelectedNodeFill, kSelectedNodeFill});
  }
  expectBox(nodeBoxOf(0), {once});
}

TEST_F(Canvas, RepaintedPartLooksAsBefore) {
  TestWindow& w = open(chainOf(30));
  show(0.5f, 40, 0);
  for (int id = 0; id < 30; ++id) w.m_SelectedEdges.push_back(edgeOf(w, id));
  w.m_GraphArea.queue_draw();
  settle();
  const Box part = visiblePart();
  const Glib::RefPtr<Gdk::Drawable> drawable = w.m_GraphArea.get_window();
  const auto look = [&] {
    settle();
    return Gdk::Pixbuf::create(drawable, part.left, part.top, part.width, part.height);
  };
  const auto before = look();
  w.m_GraphArea.queue_draw_area(150, 0, 217, 1000);
  const auto after = look();
  int greatest = 0;
  for (int y = 0; y < part.height; ++y)
    for (int x = 0; x < part.width; ++x)
      for (int i = 0; i < 3; ++i) {
        const auto at = [&](const Glib::RefPtr<Gdk::Pixbuf>& picture) {
          return picture
              ->get_pixels()[y * picture->get_rowstride() + x * picture->get_n_channels() + i];
        };
        greatest = std::max(greatest, std::abs(at(before) - at(after)));
      }
  EXPECT_LE(greatest, 3);
}

TEST_F(Canvas, NodesAheadOfThePlayPositionAreGreen) {
  TestWindow& w = open(chainOf(4));  // nodes at 0, 0.25, 0.5, 0.75, 1
  const auto showAt = [&](bool isPlaying, double position) {
    w.m_Playing = isPlaying;  // the player itself plays nothing: its fraction is 0
    w.m_RangeStart = position;
    w.m_GraphArea.queue_draw();
    settle();
  };
  showAt(true, 0.2);
  for (int i = 0; i < 5; ++i) expectGreen(nodeBoxOf(i), i == 1);
  showAt(true, 0.75);
  for (int i = 0; i < 5; ++i) expectGreen(nodeBoxOf(i), false);
  showAt(true, 0.93);
  for (int i = 0; i < 5; ++i) expectGreen(nodeBoxOf(i), i == 4);
  showAt(false, 0.2);
  for (int i = 0; i < 5; ++i) expectGreen(nodeBoxOf(i), false);
  w.m_Playing = false;
}

TEST_F(Canvas, SaysThatItHasPaintedItself) {
  TestWindow& w = open(kTwoWords);
  EXPECT_TRUE(sendExpose({0, 0, 50, 50}));
  w.m_Rendering = true;
  EXPECT_TRUE(sendExpose({0, 0, 50, 50}));
  w.m_Rendering = false;
}

TEST_F(Canvas, RepaintsWithoutDrawingTheLatticeAgain) {
  TestWindow& w = open(kTwoWords);
  w.m_GraphArea.queue_draw();
  EXPECT_EQ(takeCanvasRepaints(), 1);
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(Canvas, KeepsTheShapesOfManyBoxesUntilTheirSizesChange) {
  TestWindow& w = open(kTwoWays);
  constexpr std::size_t kMany = 20;
  w.m_SelectedEdges.assign(kMany, edgeOf(w, 1));
  w.invalidateViews();
  settle();
  EXPECT_GT(w.m_BoxStamps.bytes(), 0u);
  w.on_zoom_out();
  EXPECT_EQ(w.m_BoxStamps.bytes(), 0u);
  settle();
  EXPECT_GT(w.m_BoxStamps.bytes(), 0u);
  w.on_close();
  EXPECT_EQ(w.m_BoxStamps.bytes(), 0u);
}

}  // namespace
}  // namespace quorbel
