// The command that exports the drawing: asks for a name and has `dot` draw the lattice again.

#include <optional>

#include "app/main_window.h"
#include "app/while.h"
#include "dialogs/file_dialog.h"
#include "dialogs/message_text.h"
#include "layout/export.h"
#include "layout/export_name.h"

namespace quorbel {
namespace {

/// Asks before a file is replaced, about the name that will be written.
bool mayWrite(Gtk::Window& parent, const std::string& name) {
  if (!Glib::file_test(name, Glib::FILE_TEST_EXISTS)) return true;
  Gtk::MessageDialog dialog(parent, "Replace the file?", false, Gtk::MESSAGE_QUESTION,
                            Gtk::BUTTONS_NONE, true);
  setMessageText(dialog, name + " exists already.");
  dialog.add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
  dialog.add_button("Replace", Gtk::RESPONSE_OK);
  return dialog.run() == Gtk::RESPONSE_OK;
}

/// Runs the dialog until the user gives up or a name is settled. The format is that of the next
/// run of `dot` from here on, and stays so where the name is too short to be looked at, which
/// throws; it is as before when the user gives up.
std::optional<std::string> chooseName(Gtk::FileChooserDialog& dialog, const std::string& format,
                                      Graph& graph) {
  const std::string formatBefore = graph.outputFormat;
  while (dialog.run() == Gtk::RESPONSE_OK) {
    graph.outputFormat = format;
    const std::string name = exportFileName(dialog.get_filename(), format);
    if (mayWrite(dialog, name)) return name;
  }
  graph.outputFormat = formatBefore;
  return std::nullopt;
}

}  // namespace

void MainWindow::on_export(const std::string& format) { exportGraph(format); }

void MainWindow::exportGraph(const std::string& format) {
  if (putOffWhileRendering([this, format] { exportGraph(format); })) return;
  if (!m_FileOpened) {
    show_error(*this, "No graph opened");
    return;
  }
  const std::string error = askAndExport(format);
  if (!error.empty()) show_error(*this, error);
}

/// The dialog stays on screen while `dot` runs. Returns what went wrong, "" after success or when
/// the user gave up or closed the file meanwhile.
std::string MainWindow::askAndExport(const std::string& format) {
  if (!m_ExportDialog) {
    m_ExportDialog =
        makeFileDialog(*this, "Please choose a filename", Gtk::FILE_CHOOSER_ACTION_SAVE);
    m_ExportDialog->add_button(Gtk::Stock::SAVE, Gtk::RESPONSE_OK);
  }
  const FileDialogUse use(*m_ExportDialog, folderForDialogs());
  const std::optional<std::string> name = chooseName(*m_ExportDialog, format, m_Graph);
  if (!name || !m_FileOpened) return "";  // what was put off may have closed the file meanwhile
  const Run run(*this);
  const While exporting(m_Exporting);
  refreshSelectedEdgeScore(m_Graph);
  const std::string error =
      exportDrawing(m_Graph, *name, [this](const std::string& line) { return runCommand(line); });
  return isRunWanted() ? error : "";
}

}  // namespace quorbel
