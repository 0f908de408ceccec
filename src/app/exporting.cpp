// The command that exports the drawing: asks for a name and has `dot` draw the lattice again.

#include <optional>

#include "app/main_window.h"
#include "dialogs/file_dialog.h"
#include "dialogs/message_text.h"
#include "layout/dia_writer.h"
#include "layout/dot_writer.h"
#include "layout/export_name.h"
#include "layout/file_names.h"
#include "layout/file_stamp.h"

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

/// Runs the dialog until the user gives up or a name is settled.
std::optional<std::string> chooseName(Gtk::FileChooserDialog& dialog, const std::string& format) {
  while (dialog.run() == Gtk::RESPONSE_OK) {
    const std::string name = exportFileName(dialog.get_filename(), format);
    if (mayWrite(dialog, name)) return name;
  }
  return std::nullopt;
}

/// Today's Graphviz knows no DIA format and leaves no file: then the layout that was drawn anew in
/// the same run becomes the diagram.
void drawDiagram(Graph& graph, const std::string& name) {
  const FileStamp diagramBefore = fileStamp(name);
  const FileStamp layoutBefore = fileStamp(kLayoutFile);
  writeDotAndRun(graph, name);
  if (fileStamp(name) == diagramBefore && fileStamp(kLayoutFile) != layoutBefore)
    writeDiaDiagram(kLayoutFile, name);
}

}  // namespace

void MainWindow::on_export(const std::string& format) { exportGraph(format); }

void MainWindow::exportGraph(const std::string& format) {
  if (putOffWhileRendering([this, format] { exportGraph(format); })) return;
  if (!m_FileOpened) {
    show_error(*this, "No graph opened");
    return;
  }
  askAndExport(format);
}

/// The dialog stays on screen while `dot` runs.
void MainWindow::askAndExport(const std::string& format) {
  if (!m_ExportDialog) {
    m_ExportDialog =
        makeFileDialog(*this, "Please choose a filename", Gtk::FILE_CHOOSER_ACTION_SAVE);
    m_ExportDialog->add_button(Gtk::Stock::SAVE, Gtk::RESPONSE_OK);
  }
  const FileDialogUse use(*m_ExportDialog, folderForDialogs());
  const std::optional<std::string> name = chooseName(*m_ExportDialog, format);
  if (!name || !m_FileOpened) return;  // what was put off may have closed the file meanwhile
  refreshSelectedEdgeScore(m_Graph);
  m_Graph.outputFormat = format;
  if (format == "dia")
    drawDiagram(m_Graph, *name);
  else
    writeDotAndRun(m_Graph, *name);
}

}  // namespace quorbel
