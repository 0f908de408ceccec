// Commands of a few lines: leaving the program, and the About dialog.

#include "app/main_window.h"
#include "dialogs/about_dialog.h"
#include "texts/product.h"

namespace quorbel {

void MainWindow::on_quit() { endProgram(); }

/// The first show draws the start-up lattice before the main loop exists: there is nothing to end
/// then, and the program entry asks isQuitting() before it starts one.
void MainWindow::endProgram() {
  m_Quitting = true;
  m_PutOff.clear();
  m_Commands.breakOff();
  if (Gtk::Main::level() > 0) Gtk::Main::quit();
}

void MainWindow::on_about() {
  if (putOffWhileRendering([this] { on_about(); })) return;
  AboutDialog dialog(VERSION_TEXT, *this, true, false);
  dialog.run();
}

}  // namespace quorbel
