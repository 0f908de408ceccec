#include "dialogs/open_file_dialog.h"

#include <gtkmm/stock.h>

namespace quorbel {
namespace {

void addFilter(Gtk::FileChooserDialog& dialog, const Glib::ustring& name,
               const std::vector<Glib::ustring>& patterns) {
  auto* const filter = Gtk::manage(new Gtk::FileFilter);
  filter->set_name(name);
  for (const Glib::ustring& pattern : patterns) filter->add_pattern(pattern);
  dialog.add_filter(*filter);
}

FileDialog makeOpenDialog(Gtk::Window& parent, const OpenFileRequest& request) {
  FileDialog dialog = makeFileDialog(parent, request.title, Gtk::FILE_CHOOSER_ACTION_OPEN);
  dialog->add_button(Gtk::Stock::OPEN, request.openResponse);
  for (const FileFilter& filter : request.filters) addFilter(*dialog, filter.name, filter.patterns);
  addFilter(*dialog, "Any files", {"*"});
  return dialog;
}

}  // namespace

std::optional<std::string> askForFile(FileDialog& dialog, Gtk::Window& parent,
                                      const OpenFileRequest& request) {
  if (!dialog) dialog = makeOpenDialog(parent, request);
  const FileDialogUse use(*dialog, request.folder, request.filterInForce);
  if (dialog->run() != request.openResponse) return std::nullopt;
  return dialog->get_filename();
}

}  // namespace quorbel
