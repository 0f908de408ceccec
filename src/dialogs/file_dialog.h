#pragma once

// Dialogs that ask for a file: how they are made, used again, and left. What each asks is with its
// caller.

#include <gtkmm/filechooserdialog.h>

#include <memory>
#include <string>

namespace quorbel {

/// Takes a dialog off the screen and leaves it to the toolkit, whose list of windows it stays in
/// until the program ends.
struct LeaveToToolkit {
  void operator()(Gtk::FileChooserDialog* dialog) const { dialog->hide(); }
};

/// A dialog for files, which its owner makes once and uses again; empty until then.
///
/// It is never deleted. The toolkit looks up the icons of the folders above the files in the
/// background, and where a dialog goes while they are on their way it hands them to freed memory
/// (GTK 2's GtkPathBar). Nothing tells when the last one has come, so a dialog a question would be
/// one too many each time: one of each kind serves as long as its owner lives.
using FileDialog = std::unique_ptr<Gtk::FileChooserDialog, LeaveToToolkit>;

/// A dialog over `parent` with a Cancel button; not yet on screen.
FileDialog makeFileDialog(Gtk::Window& parent, const Glib::ustring& title,
                          Gtk::FileChooserAction action);

/// One question asked with a dialog: begins as with a new dialog, in `folder` (a full path) and the
/// given one of its filters, if it has any, with nothing chosen or typed in; the dialog is off the
/// screen when this is gone.
class FileDialogUse {
 public:
  FileDialogUse(Gtk::FileChooserDialog& dialog, const std::string& folder, std::size_t filter = 0);
  ~FileDialogUse() { m_Dialog.hide(); }
  FileDialogUse(const FileDialogUse&) = delete;
  FileDialogUse& operator=(const FileDialogUse&) = delete;

 private:
  Gtk::FileChooserDialog& m_Dialog;
};

}  // namespace quorbel
