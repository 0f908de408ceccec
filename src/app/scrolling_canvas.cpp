// Scrolling the canvas by the program. How far is decided in scrolling.h.

#include <algorithm>

#include "app/main_window.h"

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

}  // namespace quorbel
