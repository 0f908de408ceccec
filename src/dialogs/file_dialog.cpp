#include "dialogs/file_dialog.h"

#include <glibmm/main.h>
#include <gtkmm/stock.h>

namespace quorbel {

void DeleteAfterItsIcons::operator()(Gtk::FileChooserDialog* dialog) const {
  constexpr unsigned kSecondsForSlowFolders = 60;
  dialog->hide();
  Glib::signal_timeout().connect_seconds_once(
      [kept = std::shared_ptr<Gtk::FileChooserDialog>(dialog)] {}, kSecondsForSlowFolders);
}

FileDialog makeFileDialog(Gtk::Window& parent, const Glib::ustring& title,
                          Gtk::FileChooserAction action, const std::string& folder) {
  FileDialog dialog(new Gtk::FileChooserDialog(parent, title, action));
  dialog->add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
  dialog->set_current_folder(folder);
  return dialog;
}

}  // namespace quorbel
