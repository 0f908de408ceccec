#include "dialogs/open_file_dialog.h"

#include <gtkmm/stock.h>

#include "dialogs/file_dialog.h"

namespace quorbel {

std::optional<std::string> askForFile(Gtk::Window& parent, const OpenFileRequest& request) {
  const FileDialog dialog =
      makeFileDialog(parent, request.title, Gtk::FILE_CHOOSER_ACTION_OPEN, request.folder);
  dialog->add_button(Gtk::Stock::OPEN, request.openResponse);
  Gtk::FileFilter wanted;
  wanted.set_name(request.filterName);
  for (const Glib::ustring& pattern : request.patterns) wanted.add_pattern(pattern);
  dialog->add_filter(wanted);
  Gtk::FileFilter anyFiles;
  anyFiles.set_name("Any files");
  anyFiles.add_pattern("*");
  dialog->add_filter(anyFiles);

  if (dialog->run() != request.openResponse) return std::nullopt;
  return dialog->get_filename();
}

}  // namespace quorbel
