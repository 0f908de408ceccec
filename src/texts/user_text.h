#pragma once

#include <glibmm/ustring.h>

#include <string>

namespace quorbel {

/// A text with file names in it, in any encoding, as the toolkit can show it: bytes that are no
/// UTF-8 become replacement characters.
Glib::ustring userText(const std::string& text);

}  // namespace quorbel
