// The pipeline from the lattice to the picture, and what has to wait while it runs.

#include <exception>
#include <unordered_map>
#include <utility>

#include "app/main_window.h"
#include "lattice/number_text.h"
#include "layout/dot_writer.h"
#include "layout/file_names.h"
#include "layout/layout_reader.h"

namespace quorbel {
namespace {

constexpr const char* kDotMissing =
    "The program \"dot\" was not found, so the lattice cannot be drawn. It belongs to Graphviz: "
    "install the package \"graphviz\" and draw again.";

/// Counts a run of the pipeline while it lasts, and notes when an exception breaks it off.
class Run {
 public:
  Run(int& runsInProgress, bool& brokenOff)
      : m_RunsInProgress(runsInProgress),
        m_BrokenOff(brokenOff),
        m_ExceptionsBefore(std::uncaught_exceptions()) {
    ++m_RunsInProgress;
  }
  ~Run() {
    --m_RunsInProgress;
    if (std::uncaught_exceptions() > m_ExceptionsBefore) m_BrokenOff = true;
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

 private:
  int& m_RunsInProgress;
  bool& m_BrokenOff;
  const int m_ExceptionsBefore;
};

/// Keeps a flag set while it lasts.
class While {
 public:
  explicit While(bool& flag) : m_Flag(flag) { m_Flag = true; }
  ~While() { m_Flag = false; }
  While(const While&) = delete;
  While& operator=(const While&) = delete;

 private:
  bool& m_Flag;
};

}  // namespace

/// Brings the picture up to date with the lattice and the display settings.
///
/// Exceptions of the layout reader and Glib::Error of a missing picture leave it; m_Rendering then
/// stays set until endRun.
void MainWindow::renderGraph() {
  if (!m_FileOpened || m_Rendering) return;
  const Run run(m_RunsInProgress, m_RunBrokenOff);
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
  writeDotAndRun(m_Graph, std::nullopt, runBySystem);
  m_Statusbar.pop(kRunContext);

  if (!showStage("Loading graph elements...")) return endRun();
  readDotLayout(m_Graph, m_EdgeLayouts);
  m_NodeItems.index(m_EdgeLayouts);
  m_Statusbar.pop(kRunContext);

  if (!showStage("Loading graph image...")) return endRun();
  m_refGraphImage = Gdk::Pixbuf::create_from_file(kImageFile);
  m_Statusbar.pop(kRunContext);

  rescaleImage();
  resizeCanvas();
  m_Rendering = false;
  setPointer(Gdk::LEFT_PTR);
  carrySelectionOver();
  invalidateViews();
  showPathTotals();
}

/// Shows a stage of the run in the status bar and lets pending events through. False when the user
/// left the program meanwhile.
bool MainWindow::showStage(const Glib::ustring& text) {
  m_Statusbar.push(text, kRunContext);
  return runPendingEvents();
}

/// Lets pending events through, for a bounded time: while sound plays, events that take longer than
/// a tick of the cursor would never end. False when the user left the program meanwhile.
bool MainWindow::runPendingEvents() {
  constexpr gint64 kLongestUs = 1000000;
  const gint64 deadline = g_get_monotonic_time() + kLongestUs;
  while (!m_Quitting && Gtk::Main::events_pending() && g_get_monotonic_time() < deadline)
    Gtk::Main::iteration();
  return !m_Quitting;
}

/// Ends a run before its last step, because an exception or the user broke it off.
void MainWindow::endRun() {
  m_RunBrokenOff = false;
  m_Rendering = false;
  m_NodeItems.index(m_EdgeLayouts);
  setPointer(Gdk::LEFT_PTR);
  m_Statusbar.pop(kRunContext);
  invalidateViews();  // what was painted during the run is blank
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

/// Keeps a command that opens or closes a file until no run is in progress: the events that a run
/// lets through must not change the file under it. Commands keep their order. False when the
/// command can be carried out now.
bool MainWindow::putOffWhileRendering(const std::function<void()>& command) {
  const bool isNext = m_PutOff.empty() || m_CarryingOut;
  if (m_RunsInProgress == 0 && isNext) return false;
  constexpr unsigned kLookAgainMs = 20;
  m_PutOff.push_back(command);
  m_Connections.push_back(Glib::signal_timeout().connect(
      sigc::mem_fun(*this, &MainWindow::carryOutNext), kLookAgainMs));
  return true;
}

/// Carries out the command that was put off first, unless it has to wait. True when it has to: a
/// command is also not to change the file behind a dialog or an open menu.
bool MainWindow::carryOutNext() {
  const bool hasToWait = m_RunsInProgress > 0 || m_CarryingOut || gtk_grab_get_current();
  if (hasToWait) return true;
  const std::function<void()> command = std::move(m_PutOff.front());
  m_PutOff.pop_front();
  const While carryingOut(m_CarryingOut);
  command();
  return false;
}

void MainWindow::setPointer(Gdk::CursorType cursor) {
  if (const Glib::RefPtr<Gdk::Window> window = get_window())
    window->set_cursor(Gdk::Cursor(cursor));
}

}  // namespace quorbel
