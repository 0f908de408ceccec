// What the user is told when something fails: the error box, and the last resort for exceptions.

#include <iostream>

#include "app/main_window.h"
#include "dialogs/message_text.h"

namespace quorbel {

void MainWindow::show_error(Gtk::Window& parent, const std::string& message) {
  if (m_Quitting) return;  // nobody is left to answer
  Gtk::MessageDialog dialog(parent, "Error :", false, Gtk::MESSAGE_ERROR, Gtk::BUTTONS_OK, false);
  setMessageText(dialog, message);
  dialog.run();
}

/// As show_error over this window, when the run in progress is over: its box would hold that up.
void MainWindow::sayWhenDrawn(const std::string& message) {
  if (m_RunsInProgress > 0)
    putOffWhileRendering([this, message] { show_error(*this, message); });
  else
    show_error(*this, message);
}

void MainWindow::on_uncaught_exception() {
  std::string text;
  try {
    throw;
  } catch (const Glib::Error& error) {  // not a std::exception in this version of the toolkit
    text = error.what().raw();
  } catch (const std::exception& error) {
    text = error.what();
  }
  std::cout << text << std::endl;
  if (m_RunBrokenOff) endRun();
  sayWhenDrawn(text);
}

}  // namespace quorbel
