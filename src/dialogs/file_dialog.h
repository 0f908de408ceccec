#pragma once

#include <gtkmm/filechooserdialog.h>

#include <memory>
#include <string>

namespace quorbel {

/// Takes a dialog off the screen and deletes it a minute later.
///
/// The toolkit loads the icons of a folder's files in the background, and gives each to the dialog
/// it was for without a look whether that one still lives (GTK 2's GtkFileSystemModel). A dialog
/// that is answered before all are there must therefore outlive them.
struct DeleteAfterItsIcons {
  void operator()(Gtk::FileChooserDialog* dialog) const;
};

/// A dialog that asks for a file. Gone from the screen when its owner is gone.
using FileDialog = std::unique_ptr<Gtk::FileChooserDialog, DeleteAfterItsIcons>;

/// A dialog over `parent` with a Cancel button, to be run by the caller, who owns it. It shows
/// `folder`, a full path, first.
FileDialog makeFileDialog(Gtk::Window& parent, const Glib::ustring& title,
                          Gtk::FileChooserAction action, const std::string& folder);

}  // namespace quorbel
