// The tooltip of a label on the canvas. What it shows is in link_text.h.

#include "app/link_text.h"
#include "app/main_window.h"
#include "texts/user_text.h"

namespace quorbel {

/// The toolkit has a widget with tooltips get hints of moves instead of the moves: not so here. A
/// drag has to be told of the button's release.
void MainWindow::on_graph_map() {
  m_GraphArea.set_has_tooltip(true);
  const Glib::RefPtr<Gdk::Window> window = m_GraphArea.get_window();
  window->set_events((window->get_events() & ~Gdk::POINTER_MOTION_HINT_MASK) |
                     Gdk::LEAVE_NOTIFY_MASK | Gdk::BUTTON_RELEASE_MASK);
}

/// The toolkit asks when the pointer has come to rest, and then again at each of its moves: those
/// get by with what is known already.
bool MainWindow::on_graph_tooltip(int x, int y, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
  if (m_Rendering || !m_refShownImage) return false;
  GdkModifierType ignored;
  const bool isMoving = gtk_get_current_event_state(&ignored);
  if (!isMoving) {
    m_TooltipLink = edgeAt(canvasMapping(), m_EdgeLayouts, x, y);
    if (m_TooltipLink) m_TooltipText = userText(linkText(m_Graph, *m_TooltipLink));
  } else if (m_TooltipLink && !labelBox(canvasMapping(), *m_TooltipLink).contains(x, y)) {
    m_TooltipLink = nullptr;
  }
  if (!m_TooltipLink) return false;
  tooltip->set_text(m_TooltipText);
  return true;
}

/// To be called before the drawing is another one.
void MainWindow::forgetTooltip() { m_TooltipLink = nullptr; }

}  // namespace quorbel
