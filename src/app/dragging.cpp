// Dragging the drawing with the pointer.

#include "app/main_window.h"
#include "app/scrolling.h"

namespace quorbel {

/// The middle button takes hold of the drawing anywhere, the left one where no label is.
void MainWindow::beginDrag(const GdkEventButton& event) {
  const auto isOverLabel = [&] {
    return edgeAt(canvasMapping(), m_EdgeLayouts, event.x, event.y) != nullptr;
  };
  if (event.button == 2 || (event.button == 1 && !isOverLabel()))
    m_CanvasDrag = CanvasDrag{event.button, event.x_root, event.y_root,
                              m_GraphScroll.get_hadjustment()->get_value(),
                              m_GraphScroll.get_vadjustment()->get_value()};
}

/// Has the drawing follow the pointer while it is held. False when it is not.
bool MainWindow::dragTo(const GdkEventMotion& event) {
  if (!m_CanvasDrag) return false;
  const unsigned held = m_CanvasDrag->button == 1 ? GDK_BUTTON1_MASK : GDK_BUTTON2_MASK;
  if (!(event.state & held)) {  // let go of where the window was not told
    endDrag();
    return false;
  }
  m_GraphArea.get_window()->set_cursor(Gdk::Cursor(Gdk::FLEUR));
  const Box seen = visiblePart();
  scrollCanvas(scrollWithin(m_CanvasDrag->scrollX - (event.x_root - m_CanvasDrag->rootX),
                            m_refShownImage->get_width(), seen.width),
               scrollWithin(m_CanvasDrag->scrollY - (event.y_root - m_CanvasDrag->rootY),
                            m_refShownImage->get_height(), seen.height));
  return true;
}

void MainWindow::endDrag() {
  if (!m_CanvasDrag) return;
  m_CanvasDrag.reset();
  m_GraphArea.get_window()->set_cursor();
}

bool MainWindow::on_graph_release(GdkEventButton* event) {
  if (m_CanvasDrag && m_CanvasDrag->button == event->button) endDrag();
  return true;
}

}  // namespace quorbel
