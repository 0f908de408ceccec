#include <algorithm>

#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

/// A picture in which every place looks otherwise.
Glib::RefPtr<Gdk::Pixbuf> chequered(int width, int height) {
  const auto picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, width, height);
  for (int y = 0; y < height; ++y) {
    guint8* pixel = picture->get_pixels() + y * picture->get_rowstride();
    for (int x = 0; x < width; ++x, pixel += 3) {
      pixel[0] = static_cast<guint8>(x / 4);
      pixel[1] = static_cast<guint8>(y / 4);
      pixel[2] = static_cast<guint8>((x / 40 + y / 40) % 2 * 200);
    }
  }
  return picture;
}

/// Where the drawing lies before and after zooming.
class ZoomPlace : public CanvasTest {
 protected:
  /// Shows a picture that is larger than the window in both directions at this zoom, scrolled to a
  /// place.
  TestWindow& showAt(float zoom, double scrollX, double scrollY) {
    if (!window) open(kTwoWords);
    if (!m_Large) window->m_refGraphImage = m_Large = chequered(3000, 2000);
    window->m_Zoom = zoom / 1.25f;
    activate("DisplayZoomIn");
    settle();
    scrollTo(scrollX, scrollY);
    return *window;
  }

  /// Scrolls as far as scroll bars do.
  void scrollTo(double x, double y) {
    const auto scroll = [](Gtk::Adjustment& bar, double to) {
      bar.set_value(std::clamp(to, 0.0, bar.get_upper() - bar.get_page_size()));
    };
    scroll(*window->m_GraphScroll.get_hadjustment(), x);
    scroll(*window->m_GraphScroll.get_vadjustment(), y);
    settle();
  }

  std::pair<double, double> scrolled() const {
    return {window->m_GraphScroll.get_hadjustment()->get_value(),
            window->m_GraphScroll.get_vadjustment()->get_value()};
  }

  /// The point of the unzoomed picture that is shown at a place of the visible part.
  std::pair<double, double> drawnAt(double x, double y) const {
    const CanvasMapping mapping = window->canvasMapping();
    const auto [scrollX, scrollY] = scrolled();
    return {(x + scrollX - mapping.originX + mapping.scrollX) / window->m_Zoom,
            (y + scrollY - mapping.originY + mapping.scrollY) / window->m_Zoom};
  }

  void expectDrawnAt(double x, double y, const std::pair<double, double>& expected) const {
    const auto [drawnX, drawnY] = drawnAt(x, y);
    const double pixel = 1 / window->m_Zoom;  // places on the screen are whole pixels
    EXPECT_NEAR(drawnX, expected.first, 1.1 * pixel);
    EXPECT_NEAR(drawnY, expected.second, 1.1 * pixel);
  }

  /// Turns the wheel over a place of the visible part.
  void turnWheelAt(int x, int y, bool up) {
    const auto [scrollX, scrollY] = scrolled();
    scrollWheel(window->m_GraphArea, static_cast<int>(scrollX) + x, static_cast<int>(scrollY) + y,
                up);
  }

  std::pair<double, double> middle() const {
    return {window->m_GraphScroll.get_hadjustment()->get_page_size() / 2,
            window->m_GraphScroll.get_vadjustment()->get_page_size() / 2};
  }

 private:
  Glib::RefPtr<Gdk::Pixbuf> m_Large;
};

TEST_F(ZoomPlace, WheelKeepsThePointUnderThePointer) {
  for (const float zoom : {0.5f, 0.64f}) {
    for (const auto& [x, y] : {std::pair(200, 100), std::pair(30, 250), std::pair(500, 20)}) {
      SCOPED_TRACE(testing::Message() << zoom << " at " << x << ", " << y);
      showAt(zoom, 310, 190);
      const auto under = drawnAt(x, y);
      turnWheelAt(x, y, true);
      EXPECT_EQ(window->m_Zoom, zoom * 1.25f);
      expectDrawnAt(x, y, under);
      turnWheelAt(x, y, true);
      expectDrawnAt(x, y, under);
      turnWheelAt(x, y, false);
      turnWheelAt(x, y, false);
      expectDrawnAt(x, y, under);
    }
  }
}

TEST_F(ZoomPlace, ShowsTheDrawingOfItsPlace) {
  showAt(0.5f, 310, 190);
  turnWheelAt(200, 100, true);
  settle();
  const auto [scrollX, scrollY] = scrolled();
  const Box seen = window->visiblePart();
  for (const auto& [x, y] : {std::pair(250, 140), std::pair(3, 3), std::pair(9, seen.height - 2),
                             std::pair(seen.width - 1, seen.height - 1)})
    expectOverDrawing(static_cast<int>(scrollX) + x, static_cast<int>(scrollY) + y);
}

TEST_F(ZoomPlace, KeepsALabelUnderThePointer) {
  TestWindow& w = open(bundlesOf(8, 14));
  for (int step = 0; step < 3; ++step) activate("DisplayZoomIn");
  settle();
  const Box before = w.visiblePart();
  ASSERT_GT(w.m_refShownImage->get_width(), before.width);
  for (const int linkId : {45, 52, 60}) {
    SCOPED_TRACE(linkId);
    scrollTo(labelBoxOf(linkId).left - 200, labelBoxOf(linkId).top - 100);
    const auto [x, y] = labelCentre(w, linkId);
    const int atX = x - w.visiblePart().left;
    const int atY = y - w.visiblePart().top;
    scrollWheel(w.m_GraphArea, x, y, true);
    const Box seen = w.visiblePart();
    EXPECT_TRUE(labelBoxOf(linkId).contains(seen.left + atX, seen.top + atY));
    scrollWheel(w.m_GraphArea, seen.left + atX, seen.top + atY, false);
    EXPECT_TRUE(labelBoxOf(linkId).contains(w.visiblePart().left + atX, w.visiblePart().top + atY));
  }
}

TEST_F(ZoomPlace, ActionsKeepTheMiddleOfWhatIsSeen) {
  showAt(0.5f, 420, 260);
  const auto [x, y] = middle();
  const auto before = drawnAt(x, y);
  for (const char* action :
       {"DisplayZoomIn", "DisplayZoomIn", "DisplayZoomOut", "DisplayZoomOut"}) {
    activate(action);
    settle();
    expectDrawnAt(x, y, before);
  }
}

TEST_F(ZoomPlace, GoesNoFurtherThanTheBorders) {
  TestWindow& w = showAt(0.5f, 100, 60);
  for (int step = 0; step < 3; ++step) turnWheelAt(300, 200, false);
  EXPECT_EQ(scrolled(), std::pair(0.0, 0.0)) << "the upper left came to the upper left";
  showAt(1.0f, 5000, 5000);
  const Gtk::Adjustment& across = *w.m_GraphScroll.get_hadjustment();
  const Gtk::Adjustment& down = *w.m_GraphScroll.get_vadjustment();
  turnWheelAt(10, 10, false);
  settle();
  EXPECT_EQ(across.get_value(), across.get_upper() - across.get_page_size());
  EXPECT_EQ(down.get_value(), down.get_upper() - down.get_page_size());
  EXPECT_EQ(across.get_upper(), w.m_refShownImage->get_width());
  EXPECT_EQ(down.get_upper(), w.m_refShownImage->get_height());
}

TEST_F(ZoomPlace, IsKeptWhenTheDrawingOutgrowsTheWindow) {
  TestWindow& w = showAt(0.2f, 0, 0);
  ASSERT_LT(w.m_refShownImage->get_width(), w.m_GraphArea.get_width());
  for (const int aside : {-100, 0, 100}) {
    showAt(0.2f, 0, 0);
    const int x = w.m_GraphArea.get_width() / 2 + aside;
    const auto under = drawnAt(x, 200);
    turnWheelAt(x, 200, true);
    ASSERT_GT(w.m_refShownImage->get_width(), w.m_GraphScroll.get_width());
    expectDrawnAt(x, 200, under);
  }
}

TEST_F(ZoomPlace, FitShowsTheWholeWidthAndKeepsTheHeightOfTheMiddle) {
  TestWindow& w = showAt(1.0f, 420, 260);
  const auto [x, y] = middle();
  const auto before = drawnAt(x, y);
  activate("DisplayZoomFit");
  settle();
  EXPECT_EQ(scrolled().first, 0.0);
  const double furthest = w.m_GraphScroll.get_vadjustment()->get_upper() -
                          w.m_GraphScroll.get_vadjustment()->get_page_size();
  const double wanted = before.second * w.m_Zoom - y;
  EXPECT_NEAR(scrolled().second, std::clamp(wanted, 0.0, furthest), 1);
}

TEST_F(ZoomPlace, NothingIsScaledWhereNobodyLooks) {
  TestWindow& w = showAt(0.8f, 0, 0);
  const int shown = w.m_refShownImage->get_width() * w.m_refShownImage->get_height();
  ASSERT_GT(shown, 2 * ScaledPicture::kScaledAtOnce);
  const Box seen{0, 0, w.m_GraphScroll.get_width(), w.m_GraphScroll.get_height()};
  EXPECT_EQ(w.m_ScaledPicture.prepare(seen), 0) << "an expose has scaled what is seen";
  EXPECT_GT(w.m_ScaledPicture.prepare({seen.width + 128, 0, 300, 300}), 0);
  w.m_GraphScroll.get_vadjustment()->set_value(40);
  settle();
  EXPECT_EQ(w.m_ScaledPicture.prepare({0, 40, seen.width - 20, seen.height - 20}), 0);
}

}  // namespace
}  // namespace quorbel
