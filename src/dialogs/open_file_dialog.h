#pragma once

#include <gtkmm/window.h>

#include <optional>
#include <string>
#include <vector>

#include "dialogs/file_dialog.h"

namespace quorbel {

/// What a dialog that opens files says and shows.
struct OpenFileRequest {
  Glib::ustring title;
  Gtk::ResponseType openResponse;       ///< what the Open button answers
  Glib::ustring filterName;             ///< of the filter in force; "Any files" is the other one
  std::vector<Glib::ustring> patterns;  ///< of the filter in force, such as "*.lat"
  std::string folder;                   ///< shown first, a full path; see startFolder
};

/// Asks the user for a file over `parent`. Returns its full path in the file system's encoding,
/// none when the user gives up. The dialog is off the screen when this returns.
///
/// `dialog` is empty or what an earlier call made of it, for the same parent and a request that
/// differed in the folder at most.
std::optional<std::string> askForFile(FileDialog& dialog, Gtk::Window& parent,
                                      const OpenFileRequest& request);

}  // namespace quorbel
