// The canvas: what an expose draws. Where things lie is in canvas_geometry.h, the boxes over the
// picture are in canvas_painting.h, zoom is in zoom.cpp.

#include <algorithm>

#include "app/canvas_painting.h"
#include "app/main_window.h"

namespace quorbel {
namespace {

Extent extentOf(const Glib::RefPtr<Gdk::Pixbuf>& image) {
  return Extent{image->get_width(), image->get_height()};
}

}  // namespace

CanvasMapping MainWindow::canvasMapping() const {
  return mapCanvas(extentOf(m_refGraphImage), {m_Graph.layoutWidth, m_Graph.layoutHeight},
                   extentOf(m_refShownImage), {m_GraphArea.get_width(), m_GraphArea.get_height()},
                   m_Zoom, m_GraphScroll.get_hadjustment()->get_value(),
                   m_GraphScroll.get_vadjustment()->get_value());
}

bool MainWindow::on_graph_expose(GdkEventExpose* event) {
  const Glib::RefPtr<Gdk::Window> window = m_GraphArea.get_window();
  const Cairo::RefPtr<Cairo::Context> context = window->create_cairo_context();
  context->set_source_rgb(1, 1, 1);
  context->rectangle(0, 0, m_GraphArea.get_width(), m_GraphArea.get_height());
  context->fill();
  if (m_Rendering || !m_refShownImage) return true;

  const CanvasMapping mapping = canvasMapping();
  const int visibleWidth =
      std::min(m_GraphScroll.get_width(), m_refShownImage->get_width() - mapping.scrollX);
  const int visibleHeight =
      std::min(m_GraphScroll.get_height(), m_refShownImage->get_height() - mapping.scrollY);
  if (visibleWidth > 0 && visibleHeight > 0) {
    m_ScaledPicture.prepare({mapping.scrollX, mapping.scrollY, visibleWidth, visibleHeight});
    window->draw_pixbuf(m_GraphArea.get_style()->get_black_gc(), m_refShownImage, mapping.scrollX,
                        mapping.scrollY, mapping.originX, mapping.originY, visibleWidth,
                        visibleHeight, Gdk::RGB_DITHER_NONE, 0, 0);
  }

  CanvasHighlights highlights{m_EdgeLayouts, m_NodeItems, m_SelectedEdges,
                              m_PointerX,    m_PointerY,  std::nullopt};
  if (m_Playing) highlights.playPosition = playPosition();
  const GdkRectangle& area = event->area;
  paintHighlights(context, mapping, highlights, Box{area.x, area.y, area.width, area.height},
                  m_BoxStamps);
  return true;
}

}  // namespace quorbel
