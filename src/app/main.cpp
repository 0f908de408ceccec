// The program entry.

#include <libxml/parser.h>

#include <iostream>
#include <string>

#include "app/main_window.h"

namespace {

/// Shows the window until the user leaves it.
void runViewer(const std::string& startupPath) {
  quorbel::MainWindow window(startupPath);
  sigc::connection lastResort = Glib::add_exception_handler(
      sigc::mem_fun(window, &quorbel::MainWindow::on_uncaught_exception));
  window.show();  // draws the start-up lattice: the user may have left when it returns
  if (!window.isQuitting()) Gtk::Main::run();
  lastResort.disconnect();
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kLibxmlVersion = 20627;
  xmlCheckVersion(kLibxmlVersion);
  Gtk::Main toolkit(argc, argv);
  try {
    runViewer(argc > 1 ? argv[1] : "");
  } catch (const Glib::Error& error) {
    std::cerr << "quorbel: the window could not be built: " << error.what().raw() << std::endl;
    return 1;
  }
  xmlCleanupParser();
  return 0;
}
