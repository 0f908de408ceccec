// The pointer over the canvas and the Control key: hovering and selecting edges.

#include "app/main_window.h"
#include "app/selection.h"

namespace quorbel {

bool MainWindow::on_graph_motion(GdkEventMotion* event) {
  if (m_Rendering || !m_refShownImage) return true;
  if (event->is_hint) {
    Gdk::ModifierType ignored;
    m_GraphArea.get_window()->get_pointer(m_PointerX, m_PointerY, ignored);
  } else {
    m_PointerX = static_cast<int>(event->x);
    m_PointerY = static_cast<int>(event->y);
  }
  const bool isOverLabel = edgeAt(canvasMapping(), m_EdgeLayouts, event->x, event->y) != nullptr;
  if (isOverLabel || m_HoverShown) m_GraphArea.queue_draw();
  m_HoverShown = isOverLabel;
  return true;
}

bool MainWindow::on_graph_press(GdkEventButton* event) {
  if (m_Rendering || !m_refShownImage || event->type != GDK_2BUTTON_PRESS || event->button != 1)
    return true;
  m_DragStartX = m_DragCurrentX = -1;
  m_PointerX = static_cast<int>(event->x);
  m_PointerY = static_cast<int>(event->y);
  const LayoutItem* edge = edgeAt(canvasMapping(), m_EdgeLayouts, m_PointerX, m_PointerY);
  if (edge) {
    if (!m_ControlHeld) m_SelectedEdges.clear();
    toggleSelected(m_SelectedEdges, *edge);
    const SoundRange range = rangeOf(m_SelectedEdges, m_NodeItems, m_EdgeLayouts);
    m_RangeStart = range.start;
    m_RangeEnd = range.end;
  }
  invalidateViews();
  if (edge) refillAttributeTree();
  return true;
}

/// Only the left Control key counts, and the release of any other key counts as holding it: after
/// one, the next double press adds to the selection.
bool MainWindow::on_key_event(GdkEventKey* event) {
  const bool isLeftControl = event->keyval == GDK_KEY_Control_L;
  m_ControlHeld = event->type == GDK_KEY_PRESS ? isLeftControl : !isLeftControl;
  return true;
}

void MainWindow::invalidateViews() {
  m_GraphArea.queue_draw();
  m_SoundArea.queue_draw();
}

}  // namespace quorbel
