#pragma once

#include <gtkmm/messagedialog.h>

#include <string>

namespace quorbel {

/// Puts a text, in which file names may stand in any encoding, under the heading of a message box.
/// It is wrapped within names too: on one line a path of some thousand characters would make the
/// box wider than the X server allows, which ends the program.
void setMessageText(Gtk::MessageDialog& dialog, const std::string& text);

}  // namespace quorbel
