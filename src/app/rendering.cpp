// The pipeline from the lattice to the picture. What has to wait while it runs is in put_off.cpp.

#include <unordered_map>
#include <utility>

#include "app/main_window.h"
#include "app/picture_loading.h"
#include "lattice/number_text.h"
#include "layout/dot_writer.h"
#include "layout/file_names.h"
#include "layout/layout_reader.h"

namespace quorbel {
namespace {

constexpr const char* kDotMissing =
    "The program \"dot\" was not found, so the lattice cannot be drawn. It belongs to Graphviz: "
    "install the package \"graphviz\" and draw again.";

}  // namespace

/// Brings the picture up to date with the lattice and the display settings.
///
/// Exceptions of the layout reader and Glib::Error of a missing picture leave it; m_Rendering then
/// stays set until endRun.
void MainWindow::renderGraph() {
  if (!m_FileOpened || m_Rendering) return;
  if (m_Exporting) {  // which has `dot` at work on the same files
    putOffWhileRendering([this] { renderGraph(); });
    return;
  }
  const Run run(*this);
  setPointer(Gdk::WATCH);
  if (!runPendingEvents()) return endRun();
  m_SoundArea.queue_draw();
  m_Rendering = true;

  if (Glib::find_program_in_path("dot").empty()) {
    m_Rendering = false;
    setPointer(Gdk::LEFT_PTR);
    show_error(*this, kDotMissing);
    return;
  }
  if (!showStage("Creating graph...")) return endRun();
  refreshSelectedEdgeScore(m_Graph);
  const NewPath newPath = std::exchange(m_NewPath, NewPath::None);
  writeDotAndRun(m_Graph, std::nullopt,
                 [this](const std::string& line) { return runCommand(line); });
  if (!isRunWanted()) return endRun();
  m_Statusbar.pop(kRunContext);

  if (!showStage("Loading graph elements...")) return endRun();
  forgetTooltip();
  readDotLayout(m_Graph, m_EdgeLayouts);
  m_NodeItems.index(m_EdgeLayouts);
  m_Statusbar.pop(kRunContext);

  if (!showStage("Loading graph image...")) return endRun();
  const Glib::RefPtr<Gdk::Pixbuf> picture = loadPicture(kImageFile);
  if (!isRunWanted()) return endRun();
  m_refGraphImage = picture;
  m_Statusbar.pop(kRunContext);

  rescaleImage();
  resizeCanvas();
  m_Rendering = false;
  setPointer(Gdk::LEFT_PTR);
  carrySelectionOver();
  invalidateViews();
  showPathTotals();
  makeRoomForPathTexts();
  showNewPath(newPath);
  drawingChanged();
}

/// Shows a stage of the run in the status bar and lets pending events through. False when the run
/// is not wanted any more.
bool MainWindow::showStage(const Glib::ustring& text) {
  m_Statusbar.push(text, kRunContext);
  return runPendingEvents();
}

/// Lets pending events through, for a bounded time: while sound plays, events that take longer than
/// a tick of the cursor would never end. False when a run that lets them through is not wanted any
/// more.
bool MainWindow::runPendingEvents() {
  constexpr gint64 kLongestUs = 1000000;
  const gint64 deadline = g_get_monotonic_time() + kLongestUs;
  while (!m_Quitting && Gtk::Main::events_pending() && g_get_monotonic_time() < deadline)
    Gtk::Main::iteration();
  return isRunWanted();
}

/// Ends a run before its last step, because an exception or the user broke it off.
void MainWindow::endRun() {
  m_RunBrokenOff = false;
  m_Rendering = false;
  m_NodeItems.index(m_EdgeLayouts);
  setPointer(Gdk::LEFT_PTR);
  m_Statusbar.pop(kRunContext);
  invalidateViews();  // what was painted during the run is blank
  drawingChanged();
}

/// Brings what looks at the drawing up to date with another one.
void MainWindow::drawingChanged() {
  forgetTooltip();
  findInNewDrawing();
}

/// Gives selected edges their place in the new drawing. Edges that are no longer drawn keep theirs.
void MainWindow::carrySelectionOver() {
  std::unordered_map<int, LayoutItem*> selected;
  for (LayoutItem& edge : m_SelectedEdges) selected.emplace(edge.linkId, &edge);
  bool isAnyDrawn = false;
  for (const LayoutItem& item : m_EdgeLayouts) {
    if (item.isNode) continue;
    const auto found = selected.find(item.linkId);
    if (found == selected.end()) continue;
    *found->second = item;
    isAnyDrawn = true;
  }
  if (isAnyDrawn) refillAttributeTree();
}

/// "Shortest Path" in the status bar and "Shortest path" in the information text are both meant.
void MainWindow::showPathTotals() {
  m_Statusbar.pop(kRunContext);
  if (m_ShowPath || m_ShowPathWithEdge) {
    std::string totals = "Shortest Path : " + formatNumber(m_Graph.bestPathScore);
    if (m_Graph.hasSelectedEdge)
      totals += "  ---  Shortest Path with the selected edge : " +
                formatNumber(m_Graph.selectedPathScore);
    m_Statusbar.push(totals, kRunContext);
  }
  std::string words;
  if (m_ShowPath) words += "Shortest path : " + m_Graph.bestPathText + "\n";
  if (m_ShowPathWithEdge)
    words += "Shortest path with the selected edge : " + m_Graph.selectedPathText;
  m_refInfoBuffer->set_text(words);
}

void MainWindow::setPointer(Gdk::CursorType cursor) {
  if (const Glib::RefPtr<Gdk::Window> window = get_window())
    window->set_cursor(Gdk::Cursor(cursor));
}

}  // namespace quorbel
