#include "dialogs/open_file_dialog.h"

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/stock.h>

namespace quorbel {

std::optional<std::string> askForFile(Gtk::Window& parent, const OpenFileRequest& request) {
  Gtk::FileChooserDialog dialog(parent, request.title, Gtk::FILE_CHOOSER_ACTION_OPEN);
  dialog.add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
  dialog.add_button(Gtk::Stock::OPEN, request.openResponse);
  Gtk::FileFilter wanted;
  wanted.set_name(request.filterName);
  for (const Glib::ustring& pattern : request.patterns) wanted.add_pattern(pattern);
  dialog.add_filter(wanted);
  Gtk::FileFilter anyFiles;
  anyFiles.set_name("Any files");
  anyFiles.add_pattern("*");
  dialog.add_filter(anyFiles);
  dialog.set_current_folder(request.folder);

  const int response = dialog.run();
  dialog.hide();
  if (response != request.openResponse) return std::nullopt;
  return dialog.get_filename();
}

}  // namespace quorbel
