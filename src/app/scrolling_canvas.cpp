// Scrolling the canvas by the program. How far is decided in scrolling.h.

#include <algorithm>

#include "app/main_window.h"
#include "app/scrolling.h"

namespace quorbel {

Box MainWindow::visiblePart() const {
  const Gtk::Adjustment* const across = m_GraphScroll.get_hadjustment();
  const Gtk::Adjustment* const down = m_GraphScroll.get_vadjustment();
  return {static_cast<int>(across->get_value()), static_cast<int>(down->get_value()),
          static_cast<int>(across->get_page_size()), static_cast<int>(down->get_page_size())};
}

/// Scrolls so that (x, y), canvas pixels, is at the upper left of what is seen. The canvas may have
/// asked for a new size that the toolkit gives it later: the scroll bars get its length now.
void MainWindow::scrollCanvas(double x, double y) {
  const auto scroll = [](Gtk::Adjustment& adjustment, double value, int shown) {
    adjustment.set_upper(std::max(static_cast<double>(shown), adjustment.get_page_size()));
    adjustment.set_value(value);
  };
  scroll(*m_GraphScroll.get_hadjustment(), x, m_refShownImage->get_width());
  scroll(*m_GraphScroll.get_vadjustment(), y, m_refShownImage->get_height());
}

/// The mapping as it is once the toolkit has given the canvas the size that it asked for.
CanvasMapping MainWindow::comingMapping() const {
  const Box seen = visiblePart();
  const Extent shown{m_refShownImage->get_width(), m_refShownImage->get_height()};
  return mapCanvas({m_refGraphImage->get_width(), m_refGraphImage->get_height()},
                   {m_Graph.layoutWidth, m_Graph.layoutHeight}, shown,
                   {std::max(shown.width, seen.width), std::max(shown.height, seen.height)}, m_Zoom,
                   seen.left, seen.top);
}

/// Scrolls so that the label of an edge lies in the middle of what is seen, as far as the borders
/// allow.
void MainWindow::showInMiddle(const LayoutItem& edge) {
  if (!m_refShownImage) return;
  const Box label = labelBox(comingMapping(), edge);
  const Box seen = visiblePart();
  scrollCanvas(scrollToMiddle(label.left, label.width, m_refShownImage->get_width(), seen.width),
               scrollToMiddle(label.top, label.height, m_refShownImage->get_height(), seen.height));
}

}  // namespace quorbel
