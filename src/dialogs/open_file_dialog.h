#pragma once

#include <gtkmm/window.h>

#include <optional>
#include <string>
#include <vector>

#include "dialogs/file_dialog.h"

namespace quorbel {

/// A choice of files that a dialog lists.
struct FileFilter {
  Glib::ustring name;
  std::vector<Glib::ustring> patterns;  ///< such as "*.lat"
};

/// What a dialog that opens files says and shows.
struct OpenFileRequest {
  Glib::ustring title;
  Gtk::ResponseType openResponse;   ///< what the Open button answers
  std::vector<FileFilter> filters;  ///< "Any files" comes after them
  std::size_t filterInForce;        ///< which of them the dialog begins with
  std::string folder;               ///< shown first, a full path; see startFolder
};

/// Asks the user for a file over `parent`. Returns its full path in the file system's encoding,
/// none when the user gives up. The dialog is off the screen when this returns.
///
/// `dialog` is empty or what an earlier call made of it, for the same parent and a request that
/// differed in the folder at most.
std::optional<std::string> askForFile(FileDialog& dialog, Gtk::Window& parent,
                                      const OpenFileRequest& request);

}  // namespace quorbel
