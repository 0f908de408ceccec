// Commands that have to wait until `dot` has run, and when they are carried out.

#include <gtk/gtk.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <utility>

#include "app/main_window.h"
#include "app/while.h"

namespace quorbel {
namespace {

/// Does something at its end, also when an exception brings it about.
class AtEnd {
 public:
  explicit AtEnd(std::function<void()> act) : m_Act(std::move(act)) {}
  ~AtEnd() { m_Act(); }
  AtEnd(const AtEnd&) = delete;
  AtEnd& operator=(const AtEnd&) = delete;

 private:
  const std::function<void()> m_Act;
};

}  // namespace

MainWindow::Run::Run(MainWindow& window)
    : m_Window(window), m_ExceptionsBefore(std::uncaught_exceptions()) {
  ++m_Window.m_RunsInProgress;
}

MainWindow::Run::~Run() {
  --m_Window.m_RunsInProgress;
  const bool isBrokenOff = std::uncaught_exceptions() > m_ExceptionsBefore;
  if (isBrokenOff && !m_Window.m_Exporting) m_Window.m_RunBrokenOff = true;
  m_Window.lookAtPutOff();
}

/// Whether a run is to go on: the user may have closed the file or left the program.
bool MainWindow::isRunWanted() const { return m_FileOpened && !m_Quitting; }

/// Runs a command line of a run of `dot` while the window lives.
int MainWindow::runCommand(const std::string& commandLine) {
  return isRunWanted() ? m_Commands.run(commandLine) : CommandRun::kBrokenOff;
}

/// Keeps a command until no run is in progress: one that opens a file must not change it under the
/// run, and one that asks the user would hold the run up. Commands keep their order. False when the
/// command can be carried out now.
bool MainWindow::putOffWhileRendering(const std::function<void()>& command, Purpose purpose) {
  const bool isNext = m_PutOff.empty() || m_CarryingOut;
  if (m_RunsInProgress == 0 && isNext) return false;
  m_PutOff.push_back({command, purpose});
  lookAtPutOff();
  return true;
}

/// Ends the run in progress, and forgets the lattices that were to be opened after it: whoever has
/// the file closed wants none of those that were chosen before.
void MainWindow::breakOffRun() {
  m_Commands.breakOff();
  const auto isOpening = [](const PutOffCommand& waiting) {
    return waiting.purpose == Purpose::kOpenLattice;
  };
  m_PutOff.erase(std::remove_if(m_PutOff.begin(), m_PutOff.end(), isOpening), m_PutOff.end());
}

/// Has the events go on with the next command that was put off. This is called whenever something
/// has ended that it may have waited for.
void MainWindow::lookAtPutOff() {
  if (m_PutOff.empty() || m_LookConnection.connected()) return;
  m_LookConnection = Glib::signal_idle().connect(sigc::mem_fun(*this, &MainWindow::carryOutNext),
                                                 Glib::PRIORITY_DEFAULT);
}

/// Carries out the command that was put off first, unless it has to wait: a command is also not to
/// change the file behind a dialog or an open menu. Returns false: it is called once for each look.
bool MainWindow::carryOutNext() {
  m_LookConnection.disconnect();
  const bool hasToWait = m_RunsInProgress > 0 || m_CarryingOut || gtk_grab_get_current();
  if (hasToWait || m_PutOff.empty()) return false;
  const std::function<void()> command = std::move(m_PutOff.front().command);
  m_PutOff.pop_front();
  const AtEnd lookAgain([this] { lookAtPutOff(); });
  const While carryingOut(m_CarryingOut);
  command();
  return false;
}

}  // namespace quorbel
