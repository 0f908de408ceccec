// Opening and closing lattices: the open dialog, the menu of sibling files, the start-up lattice.

#include <unistd.h>

#include <fstream>

#include "app/main_window.h"
#include "dialogs/open_file_dialog.h"
#include "dialogs/start_folder.h"
#include "lattice/htk_reader.h"
#include "texts/product.h"
#include "texts/user_text.h"

namespace quorbel {
namespace {

/// The part of a file name before its first dot.
std::string stemOf(const std::string& name) { return name.substr(0, name.find('.')); }

/// Folders cannot be read, and a pipe would keep the window waiting.
bool isReadable(const std::string& path) {
  return Glib::file_test(path, Glib::FILE_TEST_IS_REGULAR) && std::ifstream(path).is_open();
}

/// As above, but a pipe is read by the program that imports it.
bool isImportable(const std::string& path) {
  return !Glib::file_test(path, Glib::FILE_TEST_IS_DIR) && access(path.c_str(), R_OK) == 0;
}

/// What the dialog lists. The second filter, for what the viewer imports, is the one in force.
std::vector<FileFilter> latticeFilters(bool isImporting) {
  std::vector<FileFilter> filters = {{"HTK files", {"*.htk", "*.lat"}}};
  if (isImporting)
    filters.push_back(
        {"All lattices",
         {"*.htk", "*.lat", "*.slf", "*.lat.gz", "*.slf.gz", "*.htk.gz", "*.fst", "*.kaldi.txt"}});
  return filters;
}

}  // namespace

void MainWindow::on_open_dialog() {
  if (putOffWhileRendering([this] { on_open_dialog(); })) return;
  const auto path =
      askForFile(m_LatticeDialog, *this,
                 {"Please choose a HTK file", Gtk::RESPONSE_OK,
                  latticeFilters(m_Import.has_value()), m_Import ? 1u : 0u, folderForDialogs()});
  if (path) open_lattice(build_sibling_menu(*path));
}

std::string MainWindow::folderForDialogs() const {
  return startFolder(m_CurrentDir, Glib::get_current_dir(), Glib::get_home_dir());
}

/// Remembers the folder of `path` and lists the files beside it that share its stem (sound files
/// apart) in the menu of the open button. Returns the base name. Throws Glib::FileError for a
/// folder that cannot be listed, and std::out_of_range for a file that shares the stem and has a
/// name of fewer than three characters (such as "63" in /dev/fd, a pipe: those are for importing).
std::string MainWindow::build_sibling_menu(const std::string& path) {
  const std::string suffixOfSounds = "wav";
  std::string baseName = Glib::path_get_basename(path);
  m_CurrentDir = Glib::path_get_dirname(path);
  m_SiblingMenu.items().clear();

  Glib::Dir folder(m_CurrentDir);
  for (const std::string& name : std::vector<std::string>(folder.begin(), folder.end())) {
    if (stemOf(name) != stemOf(baseName)) continue;
    const bool isLikePipe = m_Import && name.size() < suffixOfSounds.size();
    if (!isLikePipe && name.substr(name.size() - suffixOfSounds.size()) == suffixOfSounds) continue;
    const bool hasMnemonic = true;
    auto* item = Gtk::manage(new Gtk::MenuItem(userText(name), !hasMnemonic));
    item->signal_activate().connect(
        sigc::bind(sigc::mem_fun(*this, &MainWindow::open_lattice), name));
    item->show();
    m_SiblingMenu.append(*item);
  }
  m_OpenButton.set_menu(m_SiblingMenu);
  return baseName;
}

void MainWindow::open_lattice(const std::string& name) {
  const auto openAsNow = [this, folder = m_CurrentDir, name] {
    m_CurrentDir = folder;  // a dialog may have changed it meanwhile
    open_lattice(name);
  };
  if (putOffWhileRendering(openAsNow, Purpose::kOpenLattice)) return;
  on_close();
  const std::string path = m_CurrentDir + "/" + name;
  if (!(m_Import ? isImportable(path) : isReadable(path))) {
    show_error(*this, path + " : file not found or permission denied");
    return;
  }
  ImportedLattice lattice = {path, "", ""};
  if (m_Import) {
    const std::optional<ImportedLattice> imported = importLattice(path);
    if (!imported) return;
    lattice = *imported;
  }
  std::string error = lattice.error;
  if (error.empty()) error = readHtkLattice(m_Graph, lattice.readPath);
  if (!error.empty()) {
    show_error(*this, error);
    return;
  }
  m_FileOpened = true;
  on_display_default();
  if (!m_FileOpened) return;  // closed while it was drawn
  on_zoom_fit();
  m_Statusbar.push(userText("graph : " + path), kFileContext);
  set_title(userText(PRODUCT_NAME + " - " + path + lattice.note));
  loadMatchingSound(path);
}

void MainWindow::on_window_show() {
  m_Quitting = false;
  if (m_StartupPath.empty()) return;
  open_lattice(build_sibling_menu(m_StartupPath));
  m_StartupPath.clear();
}

/// Does not wait for a run: it ends it.
void MainWindow::on_close() {
  if (m_RunsInProgress > 0)
    breakOffRun();
  else if (putOffWhileRendering([this] { on_close(); }))
    return;
  if (!m_FileOpened) return;
  m_Statusbar.remove_all_messages(kRunContext);   // path totals would cover "No file opened"
  m_Statusbar.remove_all_messages(kFileContext);  // none, where the first drawing broke off
  m_Statusbar.push(kNoFile, kFileContext);
  set_title(PRODUCT_NAME);
  m_Zoom = 1.0f;
  m_PointerX = m_PointerY = 0;
  clear_selection();
  m_ShowPath = m_ShowPathWithEdge = m_FileOpened = false;
  setSelectedEdge(m_Graph, false, noSelectedEdge());
  setShowBestPath(m_Graph, false);
  m_NewPath = NewPath::None;
  forgetTooltip();
  m_EdgeLayouts.clear();
  m_NodeItems.index(m_EdgeLayouts);

  m_GraphArea.set_size_request(-1, -1);
  m_refShownImage.reset();
  m_ScaledPicture = ScaledPicture();
  m_refGraphImage.reset();
  m_BoxStamps.clear();
  closeSound();
  m_refInfoBuffer->set_text("");
  drawingChanged();
  invalidateViews();
}

}  // namespace quorbel
