// Importing a lattice that is not in the viewer's own form, before it is read. What is asked and
// what the answer means is in lattice_import.h.

#include <fstream>
#include <iostream>
#include <sstream>

#include "app/main_window.h"

namespace quorbel {
namespace {

std::string contentsOf(const std::string& name) {
  std::ifstream stream(name);
  std::ostringstream contents;
  contents << stream.rdbuf();
  return contents.str();
}

}  // namespace

/// Runs the program that imports, while the window lives. None when the user has closed the lattice
/// or left the program meanwhile.
std::optional<ImportedLattice> MainWindow::importLattice(const std::string& path) {
  const Run run(*this);
  setPointer(Gdk::WATCH);
  m_Statusbar.push("Importing...", kRunContext);
  const bool isFile = Glib::file_test(path, Glib::FILE_TEST_IS_REGULAR);
  const int status = m_Commands.run(importCommand(*m_Import, path, isFile));
  m_Statusbar.pop(kRunContext);
  setPointer(Gdk::LEFT_PTR);
  if (m_Commands.isBrokenOff()) return std::nullopt;
  const std::string log = contentsOf(kImportLog);
  if (status == 0) std::cerr << log << std::flush;  // what to mind of the lattice
  return importedLattice(path, status, Glib::file_test(kImportedCopy, Glib::FILE_TEST_EXISTS),
                         contentsOf(kImportAnswer), log);
}

}  // namespace quorbel
