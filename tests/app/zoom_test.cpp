#include <gtk/gtk.h>

#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

/// A picture of this size in one colour.
Glib::RefPtr<Gdk::Pixbuf> pictureOfSize(int width, int height) {
  const auto picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, width, height);
  picture->fill(0x8090a0ff);
  return picture;
}

class Zoom : public CanvasTest {
 protected:
  /// Has a picture of this size shown unzoomed, as if a lattice had been drawn that large.
  TestWindow& showPicture(int width, int height) {
    TestWindow& w = open(kTwoWords);
    w.m_refGraphImage = pictureOfSize(width, height);
    w.m_Zoom = 1.0f;
    activate("DisplayZoomIn");
    return w;
  }

  /// Checks that the shown picture and the canvas have the size that the zoom gives them.
  void expectShown(int width, int height) {
    EXPECT_EQ(window->m_refShownImage->get_width(), width);
    EXPECT_EQ(window->m_refShownImage->get_height(), height);
    int requestedWidth = 0, requestedHeight = 0;
    window->m_GraphArea.get_size_request(requestedWidth, requestedHeight);
    EXPECT_EQ(requestedWidth, width);
    EXPECT_EQ(requestedHeight, height);
  }
};

struct ZoomStep {
  const char* action;
  float before, after;
};

const ZoomStep kSteps[] = {
    {"DisplayZoomIn", 0.5f, 0.5f * 1.25f},   {"DisplayZoomIn", 0.2f, 0.2f * 1.25f},
    {"DisplayZoomIn", 0.8f, 1.0f},           {"DisplayZoomIn", 0.79f, 0.79f * 1.25f},
    {"DisplayZoomIn", 0.9f, 1.0f},           {"DisplayZoomIn", 1.0f, 1.0f},
    {"DisplayZoomOut", 1.0f, 0.8f},          {"DisplayZoomOut", 0.5f, 0.5f * 0.8f},
    {"DisplayZoomOut", 0.26f, 0.26f * 0.8f}, {"DisplayZoomOut", 0.25f, 0.2f},
    {"DisplayZoomOut", 0.22f, 0.2f},         {"DisplayZoomOut", 0.2f, 0.2f},
};

TEST_F(Zoom, StepsStayWithinTheirRange) {
  TestWindow& w = showPicture(1000, 600);
  for (const ZoomStep& step : kSteps) {
    SCOPED_TRACE(std::string(step.action) + " from " + std::to_string(step.before));
    w.m_Zoom = step.before;
    activate(step.action);
    EXPECT_EQ(w.m_Zoom, step.after);
    expectShown(static_cast<int>(1000 * step.after), static_cast<int>(600 * step.after));
  }
}

TEST_F(Zoom, CutsTheSizeOff) {
  TestWindow& w = showPicture(999, 334);
  w.m_Zoom = 0.625f;
  activate("DisplayZoomOut");
  EXPECT_EQ(w.m_Zoom, 0.5f);
  expectShown(499, 167);  // 499.5 and 167
  w.m_Zoom = 0.9f;
  activate("DisplayZoomOut");
  expectShown(719, 240);  // 719.28 and 240.48
}

TEST_F(Zoom, OfATinyPictureLeavesAPixel) {
  TestWindow& w = showPicture(3, 4);
  w.m_Zoom = 0.2f;
  activate("DisplayZoomOut");
  expectShown(1, 1);
}

TEST_F(Zoom, ScalesTheWholePictureBilinearly) {
  TestWindow& w = open(kTwoWords);
  const auto original = w.m_refGraphImage->copy();
  w.m_Zoom = 0.75f;
  activate("DisplayZoomOut");
  activate("DisplayZoomOut");
  activate("DisplayZoomIn");
  EXPECT_EQ(w.m_Zoom, 0.75f * 0.8f * 0.8f * 1.25f);
  const int width = static_cast<int>(original->get_width() * w.m_Zoom);
  const int height = static_cast<int>(original->get_height() * w.m_Zoom);
  const auto expected = original->scale_simple(width, height, Gdk::INTERP_BILINEAR);
  expectShown(width, height);
  for (int y = 0; y < height && !HasFailure(); ++y)
    for (int x = 0; x < width && !HasFailure(); ++x)
      EXPECT_EQ(pixel(w.m_refShownImage, x, y), pixel(expected, x, y)) << x << ", " << y;
  EXPECT_EQ(w.m_refGraphImage->get_width(), original->get_width());
}

TEST_F(Zoom, FitsTheWidthLessRoomForAScrollBar) {
  TestWindow& w = showPicture(900, 500);
  const float visible = static_cast<float>(w.m_GraphScroll.get_width());
  activate("DisplayZoomFit");
  EXPECT_EQ(w.m_Zoom, (visible - 30) / 900);
  expectShown(static_cast<int>(900 * w.m_Zoom), static_cast<int>(500 * w.m_Zoom));
}

TEST_F(Zoom, FitDoesNotConsiderTheHeight) {
  TestWindow& w = showPicture(900, 5000);
  activate("DisplayZoomFit");
  EXPECT_EQ(w.m_Zoom, static_cast<float>(w.m_GraphScroll.get_width() - 30) / 900);
}

TEST_F(Zoom, FitStaysWithinItsRange) {
  TestWindow& w = showPicture(20000, 50);
  activate("DisplayZoomFit");
  EXPECT_EQ(w.m_Zoom, 0.2f);
  expectShown(4000, 10);
  w.m_refGraphImage = pictureOfSize(100, 50);
  activate("DisplayZoomFit");
  EXPECT_EQ(w.m_Zoom, 1.0f);
  expectShown(100, 50);
}

TEST_F(Zoom, OpeningEndsWithAFit) {
  TestWindow& w = open(chainOf(10));
  const int width = w.m_refGraphImage->get_width();
  ASSERT_GT(width, w.m_GraphScroll.get_width());
  EXPECT_EQ(w.m_Zoom, static_cast<float>(w.m_GraphScroll.get_width() - 30) / width);
  EXPECT_LT(w.m_refShownImage->get_width(), w.m_GraphScroll.get_width());
}

TEST_F(Zoom, FitsALatticeOpenedAtTheFirstShow) {
  TestWindow& w = showWindow(folder.write("start.lat", chainOf(10)));
  EXPECT_EQ(w.m_Zoom, static_cast<float>(w.m_GraphScroll.get_width() - 30) /
                          static_cast<float>(w.m_refGraphImage->get_width()));
}

TEST_F(Zoom, StaysWhenTheLatticeIsDrawnAgain) {
  TestWindow& w = open(chainOf(10));
  activate("DisplayZoomIn");
  const float zoom = w.m_Zoom;
  ASSERT_LT(zoom, 1.0f);
  activate("DisplayValue");
  EXPECT_EQ(w.m_Zoom, zoom);
  EXPECT_EQ(w.m_refShownImage->get_width(),
            static_cast<int>(static_cast<float>(w.m_refGraphImage->get_width()) * zoom));
}

TEST_F(Zoom, DoesNothingWithoutAPicture) {
  TestWindow& w = showWindow();
  for (const char* action : {"DisplayZoomIn", "DisplayZoomOut", "DisplayZoomFit"}) {
    w.m_Zoom = 0.5f;
    activate(action);
    EXPECT_EQ(w.m_Zoom, 0.5f) << action;
    EXPECT_FALSE(w.m_refShownImage);
    int width = 0, height = 0;
    w.m_GraphArea.get_size_request(width, height);
    EXPECT_EQ(width, -1);
    EXPECT_EQ(height, -1);
  }
  scrollWheel(w.m_GraphArea, 50, 50, true);
  EXPECT_EQ(w.m_Zoom, 0.5f);
}

TEST_F(Zoom, RunsNoDotAndRepaintsTheCanvas) {
  TestWindow& w = open(chainOf(10));
  takeCanvasRepaints();
  for (const char* action : {"DisplayZoomOut", "DisplayZoomIn", "DisplayZoomFit"}) {
    w.m_Zoom = 0.7f;
    activate(action);
    EXPECT_GE(takeCanvasRepaints(), 1) << action;
  }
  scrollWheel(w.m_GraphArea, 50, 50, false);
  EXPECT_GE(takeCanvasRepaints(), 1);
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(Zoom, RepaintsACanvasThatKeepsItsSize) {
  TestWindow& w = open(kTwoWords);  // smaller than the window at every zoom
  const int width = w.m_GraphArea.get_width();
  activate("DisplayZoomOut");
  EXPECT_GE(takeCanvasRepaints(), 1);
  EXPECT_EQ(w.m_GraphArea.get_width(), width);
  const Box node = nodeBoxOf(0);
  expectOverDrawing(node.left + node.width / 2, node.top + node.height / 2);
}

TEST_F(Zoom, WheelUpZoomsInAndDownZoomsOut) {
  TestWindow& w = open(chainOf(10));
  w.m_Zoom = 0.5f;
  scrollWheel(w.m_GraphArea, 50, 50, true);
  EXPECT_EQ(w.m_Zoom, 0.5f * 1.25f);
  scrollWheel(w.m_GraphArea, 50, 50, false);
  EXPECT_EQ(w.m_Zoom, 0.5f * 1.25f * 0.8f);
  EXPECT_EQ(w.m_refShownImage->get_width(),
            static_cast<int>(static_cast<float>(w.m_refGraphImage->get_width()) * w.m_Zoom));
}

TEST_F(Zoom, WheelToTheSideDoesNothing) {
  TestWindow& w = open(chainOf(10));
  const float zoom = w.m_Zoom;
  EXPECT_TRUE(sendScroll(GDK_SCROLL_LEFT));
  EXPECT_TRUE(sendScroll(GDK_SCROLL_RIGHT));
  EXPECT_EQ(w.m_Zoom, zoom);
  EXPECT_EQ(gdk_window_get_cursor(w.m_GraphArea.get_window()->gobj()), nullptr);
}

TEST_F(Zoom, WheelIsHandledAndDoesNotScroll) {
  TestWindow& w = open(bundlesOf(8, 14));
  activate("DisplayZoomIn");
  activate("DisplayZoomIn");
  activate("DisplayZoomIn");
  w.m_GraphScroll.get_vadjustment()->set_value(40);
  EXPECT_TRUE(sendScroll(GDK_SCROLL_UP));
  EXPECT_TRUE(sendScroll(GDK_SCROLL_DOWN));
  settle();
  EXPECT_EQ(w.m_GraphScroll.get_vadjustment()->get_value(), 40);
}

/// A window that notes the canvas' pointer at the moment of zooming.
class WatchedWindow : public TestWindow {
 public:
  WatchedWindow() : TestWindow("") {}
  std::vector<GdkCursorType> pointers;
  bool isPendingDone = false;        ///< set by an event that was pending when the wheel was turned
  std::vector<bool> wasPendingDone;  ///< at each step

 protected:
  void on_zoom_in() override {
    note();
    TestWindow::on_zoom_in();
  }
  void on_zoom_out() override {
    note();
    TestWindow::on_zoom_out();
  }

 private:
  void note() {
    GdkCursor* const cursor = gdk_window_get_cursor(m_GraphArea.get_window()->gobj());
    pointers.push_back(cursor ? gdk_cursor_get_cursor_type(cursor) : GDK_X_CURSOR);
    wasPendingDone.push_back(isPendingDone);
  }
};

TEST_F(Zoom, WheelShowsTheWatchBeforeItScales) {
  auto watched = std::make_unique<WatchedWindow>();
  WatchedWindow& w = *watched;
  window = std::move(watched);
  w.show();
  settle();
  openLattice(kTwoWords);
  for (const GdkScrollDirection direction : {GDK_SCROLL_DOWN, GDK_SCROLL_UP}) {
    w.isPendingDone = false;
    w.pointers.clear();
    w.wasPendingDone.clear();
    Glib::signal_idle().connect_once([&w] { w.isPendingDone = true; });
    sendScroll(direction);
    EXPECT_EQ(w.pointers, std::vector<GdkCursorType>{GDK_WATCH});
    EXPECT_EQ(w.wasPendingDone, std::vector<bool>{true});
    GdkCursor* const cursor = gdk_window_get_cursor(w.m_GraphArea.get_window()->gobj());
    ASSERT_TRUE(cursor);
    EXPECT_EQ(gdk_cursor_get_cursor_type(cursor), GDK_LEFT_PTR);
  }
}

}  // namespace
}  // namespace quorbel
