// The pointer over the canvas: hovering and selecting edges.

#include "app/main_window.h"
#include "app/selection.h"

namespace quorbel {

bool MainWindow::on_graph_motion(GdkEventMotion* event) {
  if (m_Rendering || !m_refShownImage || dragTo(*event)) return true;
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
  if (m_Rendering || !m_refShownImage) return true;
  if (event->type == GDK_BUTTON_PRESS) beginDrag(*event);
  if (event->type != GDK_2BUTTON_PRESS || event->button != 1) return true;
  m_PointerX = static_cast<int>(event->x);
  m_PointerY = static_cast<int>(event->y);
  if (const LayoutItem* edge = edgeAt(canvasMapping(), m_EdgeLayouts, m_PointerX, m_PointerY)) {
    selectEdge(*edge, m_ControlHeld);
  } else {
    m_DragStartX = m_DragCurrentX = -1;
    invalidateViews();
  }
  return true;
}

/// Selects an edge instead of what was selected, or (`keepsOthers`) adds it to that or takes it
/// out.
void MainWindow::selectEdge(const LayoutItem& edge, bool keepsOthers) {
  m_DragStartX = m_DragCurrentX = -1;
  if (!keepsOthers) m_SelectedEdges.clear();
  toggleSelected(m_SelectedEdges, edge);
  const SoundRange range = rangeOf(m_SelectedEdges, m_NodeItems, m_EdgeLayouts);
  m_RangeStart = range.start;
  m_RangeEnd = range.end;
  invalidateViews();
  refillAttributeTree();
}

void MainWindow::invalidateViews() {
  m_GraphArea.queue_draw();
  m_SoundArea.queue_draw();
}

}  // namespace quorbel
