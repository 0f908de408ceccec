// Zoom: the actions, the wheel, and the picture at the current zoom.

#include <algorithm>

#include "app/main_window.h"
#include "app/scrolling.h"

namespace quorbel {
namespace {

constexpr float kSmallestZoom = 0.2f;
constexpr float kLargestZoom = 1.0f;  ///< the picture as `dot` rendered it is the largest view
constexpr float kZoomIn = 1.25f;
constexpr float kZoomOut = 0.8f;

}  // namespace

void MainWindow::on_zoom_in() { zoomBy(kZoomIn); }

void MainWindow::on_zoom_out() { zoomBy(kZoomOut); }

void MainWindow::zoomBy(float factor) { zoomTo(m_Zoom * factor); }

/// Fits the width; the height is not considered.
void MainWindow::on_zoom_fit() {
  constexpr int kRoomForScrollBar = 30;
  if (!m_refGraphImage) return;
  zoomTo(static_cast<float>(m_GraphScroll.get_width() - kRoomForScrollBar) /
         static_cast<float>(m_refGraphImage->get_width()));
}

/// The point of the drawing at m_ZoomPoint, or in the middle of what is seen, stays where it is.
void MainWindow::zoomTo(float zoom) {
  if (!m_refGraphImage) return;
  const Glib::RefPtr<Gdk::Pixbuf> before = m_refShownImage;
  m_Zoom = zoom;
  rescaleImage();
  resizeCanvas();
  if (!before || !m_refShownImage) return;
  const Box seen = visiblePart();
  const auto [x, y] = m_ZoomPoint.value_or(std::pair(seen.width / 2.0, seen.height / 2.0));
  scrollCanvas(scrollKeeping(x, {m_GraphScroll.get_hadjustment()->get_value(), seen.width},
                             before->get_width(), m_refShownImage->get_width()),
               scrollKeeping(y, {m_GraphScroll.get_vadjustment()->get_value(), seen.height},
                             before->get_height(), m_refShownImage->get_height()));
}

/// The watch cursor shows first: a large picture takes its memory anew, and the next expose scales
/// what is seen.
bool MainWindow::on_graph_scroll(GdkEventScroll* event) {
  if (event->direction != GDK_SCROLL_UP && event->direction != GDK_SCROLL_DOWN) return true;
  const std::pair point(event->x - m_GraphScroll.get_hadjustment()->get_value(),
                        event->y - m_GraphScroll.get_vadjustment()->get_value());
  const Glib::RefPtr<Gdk::Window> window = m_GraphArea.get_window();
  window->set_cursor(Gdk::Cursor(Gdk::WATCH));
  runPendingEvents();
  m_ZoomPoint = point;
  if (event->direction == GDK_SCROLL_UP)
    on_zoom_in();
  else
    on_zoom_out();
  m_ZoomPoint.reset();
  window->set_cursor(Gdk::Cursor(Gdk::LEFT_PTR));
  return true;
}

/// Brings the zoom into its range and the shown picture up to date with it.
void MainWindow::rescaleImage() {
  if (!m_refGraphImage) return;
  m_Zoom = std::clamp(m_Zoom, kSmallestZoom, kLargestZoom);
  m_BoxStamps.clear();
  const auto scaled = [this](int length) {
    return std::max(1, static_cast<int>(static_cast<float>(length) * m_Zoom));
  };
  m_ScaledPicture = ScaledPicture(m_refGraphImage, {scaled(m_refGraphImage->get_width()),
                                                    scaled(m_refGraphImage->get_height())});
  m_refShownImage = m_ScaledPicture.picture();
}

void MainWindow::resizeCanvas() {
  if (m_refShownImage)  // none where the memory for it was short
    m_GraphArea.set_size_request(m_refShownImage->get_width(), m_refShownImage->get_height());
}

}  // namespace quorbel
