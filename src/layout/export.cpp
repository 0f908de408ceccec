// The command that exports the drawing: asks for a name and has `dot` draw the lattice again.

#include "app/main_window.h"
#include "layout/dot_writer.h"

namespace quorbel {

void MainWindow::on_export(const std::string& format) { exportGraph(format); }

void MainWindow::exportGraph(const std::string& format) {
  if (!m_FileOpened) {
    show_error(*this, "No graph opened");
    return;
  }
  Gtk::FileChooserDialog dialog(*this, "Please choose a filename", Gtk::FILE_CHOOSER_ACTION_SAVE);
  dialog.add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
  dialog.add_button(Gtk::Stock::SAVE, Gtk::RESPONSE_OK);
  if (dialog.run() != Gtk::RESPONSE_OK) return;
  m_Graph.outputFormat = format;
  writeDotAndRun(m_Graph, dialog.get_filename());
}

}  // namespace quorbel
