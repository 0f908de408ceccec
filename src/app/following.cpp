// What the window brings into sight by itself: a path that was switched on, its words, and the
// nodes that the sound passes. What is out of sight is decided in in_sight.h.

#include <algorithm>

#include "app/in_sight.h"
#include "app/main_window.h"
#include "app/scrolling.h"

namespace quorbel {
namespace {

constexpr gint64 kUserScrollCountsUs = 2000000;

}  // namespace

/// After a path was switched on and drawn: scrolls to its first link when nothing of it is in
/// sight.
void MainWindow::showNewPath(NewPath path) {
  if (path == NewPath::None || !m_refShownImage) return;
  const std::vector<int>& links =
      path == NewPath::Best ? m_Graph.bestPathLinks : m_Graph.selectedPathLinks;
  const LayoutItem* const first =
      pathOutOfSight(comingMapping(), m_EdgeLayouts, m_NodeItems, links, visiblePart());
  if (first) showInMiddle(*first);
}

/// Gives the words of the paths two lines once they need more than there is, unless the user has
/// moved the divider.
void MainWindow::makeRoomForPathTexts() {
  if (m_HasMadeRoom || m_LowerPaned.get_position() != kInfoHeight) return;
  const auto heightOf = [this](const Glib::ustring& text) {
    const Glib::RefPtr<Pango::Layout> layout = m_InfoView.create_pango_layout(text);
    layout->set_width(std::max(1, m_InfoScroll.get_width()) * Pango::SCALE);
    layout->set_wrap(Pango::WRAP_WORD_CHAR);
    int width = 0;
    int height = 0;
    layout->get_pixel_size(width, height);
    return height;
  };
  if (heightOf(m_refInfoBuffer->get_text()) <= kInfoHeight) return;
  m_LowerPaned.set_position(heightOf("\n"));
  m_HasMadeRoom = true;
}

/// Scrolls to the nodes that the sound is about to pass when none of them is in sight, unless the
/// user has just scrolled elsewhere. Called at every tick of the play cursor.
void MainWindow::followSound() {
  if (!m_Playing || m_Rendering || !m_refShownImage) return;
  const gint64 now = g_get_monotonic_time();
  if (m_UserScrolledUs && now - *m_UserScrolledUs < kUserScrollCountsUs) return;
  const double position = playPosition();
  const Box seen = visiblePart();
  const auto light = lightOutOfSight(canvasMapping(), m_EdgeLayouts, m_NodeItems, position, seen);
  if (!light) return;
  // A quarter of the way, so that what comes next is in sight, too.
  const double x =
      scrollWithin(light->left - seen.width / 4.0, m_refShownImage->get_width(), seen.width);
  const bool isAtHeight =
      light->top >= seen.top && light->top + light->height <= seen.top + seen.height;
  const double y = isAtHeight ? seen.top
                              : scrollToMiddle(light->top, light->height,
                                               m_refShownImage->get_height(), seen.height);
  m_IsFollowing = true;
  scrollCanvas(x, y);
  m_IsFollowing = false;
}

void MainWindow::on_graph_scrolled() {
  if (!m_IsFollowing) m_UserScrolledUs = g_get_monotonic_time();
}

}  // namespace quorbel
