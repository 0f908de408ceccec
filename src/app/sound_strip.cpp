// The strip that shows the sound: waveform, selected range and play cursor, and dragging a range
// out. The numbers come from waveform.h.

#include "app/main_window.h"
#include "app/rounded_box.h"
#include "sound/edges_in_range.h"

namespace quorbel {
namespace {

constexpr Rgba kRangeFill{1, 0, 0, 0.3};
constexpr Rgba kRangeOutline{0, 1, 0, 0.75};
constexpr double kRangeRadius = 20.0;

void paintWhite(const Cairo::RefPtr<Cairo::Context>& context) {
  context->set_source_rgb(1, 1, 1);
  context->paint();
}

}  // namespace

/// The waveform for the strip's width, computed once per sound and width.
const Waveform& MainWindow::currentWaveform() {
  const int width = m_SoundArea.get_width();
  if (m_Waveform.viewWidth != width)
    m_Waveform = computeWaveform(m_Audio.samples(), m_Audio.frames(), m_Audio.channels(), width);
  return m_Waveform;
}

/// The waveform on white, drawn once per sound and size: the outline has thousands of lines, and
/// the display may need longer for them than lies between two ticks of the cursor.
Glib::RefPtr<Gdk::Pixmap> MainWindow::waveformPicture() {
  const int width = m_SoundArea.get_width();
  const int height = m_SoundArea.get_height();
  int pictureWidth = 0;
  int pictureHeight = 0;
  if (m_refWaveformPicture) m_refWaveformPicture->get_size(pictureWidth, pictureHeight);
  if (pictureWidth == width && pictureHeight == height) return m_refWaveformPicture;

  m_refWaveformPicture = Gdk::Pixmap::create(m_SoundArea.get_window(), width, height);
  const Cairo::RefPtr<Cairo::Context> context = m_refWaveformPicture->create_cairo_context();
  paintWhite(context);
  for (const WaveformPoint& point : waveformOutline(currentWaveform(), m_Audio.peak(), height))
    context->line_to(point.x, point.y);
  context->close_path();
  context->set_source_rgb(0, 0, 1);
  context->stroke();
  return m_refWaveformPicture;
}

bool MainWindow::on_sound_expose(GdkEventExpose*) {
  const Cairo::RefPtr<Cairo::Context> context = m_SoundArea.get_window()->create_cairo_context();
  const int width = m_SoundArea.get_width();
  const int height = m_SoundArea.get_height();
  if (!m_SoundLoaded || !m_Audio.samples()) {
    paintWhite(context);
    return true;
  }
  Gdk::Cairo::set_source_pixmap(context, waveformPicture(), 0, 0);
  context->paint();

  bool hasRange = !m_SelectedEdges.empty();
  if (!hasRange) {
    if (const auto range = dragRange(m_DragStartX, m_DragCurrentX, width)) {
      m_RangeStart = range->start;
      m_RangeEnd = range->end;
      hasRange = true;
    }
  }
  if (hasRange) {
    const PixelSpan span = rangeBox({m_RangeStart, m_RangeEnd}, width);
    drawRoundedBox(context, kRangeFill, kRangeOutline, span.x, 0, span.width, height, kRangeRadius);
  }

  if (m_Playing) {
    const Waveform& waveform = currentWaveform();
    if (m_SelectedEdges.empty()) m_RangeStart = 0.0;
    const double position = playPosition();
    const int x = cursorColumn(position, waveform.count, waveform.perPixel);
    context->move_to(x, 0);
    context->line_to(x, height);
    context->close_path();
    context->set_source_rgb(1, 0, 0);
    context->stroke();
  }
  return true;
}

bool MainWindow::on_sound_press(GdkEventButton* event) {
  if (event->button != 1 || !m_SoundLoaded) return true;
  if (!m_SelectedEdges.empty()) m_GraphArea.queue_draw();
  clear_selection();
  m_Dragging = true;
  m_DragStartX = m_DragCurrentX = static_cast<int>(event->x);
  m_SoundArea.queue_draw();
  return true;
}

bool MainWindow::on_sound_motion(GdkEventMotion* event) {
  if (!m_SoundLoaded || !m_Dragging) return true;
  if (event->is_hint) {
    int ignoredY;
    Gdk::ModifierType ignoredState;
    m_SoundArea.get_window()->get_pointer(m_DragCurrentX, ignoredY, ignoredState);
  } else {
    m_DragCurrentX = static_cast<int>(event->x);
  }
  m_SoundArea.queue_draw();
  return true;
}

bool MainWindow::on_sound_release(GdkEventButton* event) {
  if (event->button != 1 || !m_SoundLoaded) return true;
  m_Dragging = false;
  m_DragCurrentX = static_cast<int>(event->x);
  if (const auto range = dragRange(m_DragStartX, m_DragCurrentX, m_SoundArea.get_width())) {
    m_RangeStart = range->start;
    m_RangeEnd = range->end;
    clear_selection();
    m_SelectedEdges = edgesInRange(m_EdgeLayouts, m_RangeStart, m_RangeEnd);
    m_GraphArea.queue_draw();
  }
  m_SoundArea.queue_draw();
  return true;
}

}  // namespace quorbel
