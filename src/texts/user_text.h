#pragma once

#include <glib.h>
#include <glibmm/convert.h>

#include <string>

namespace quorbel {

/// A text with file names in it, in any encoding, as the toolkit can show it: bytes that are no
/// UTF-8 become replacement characters.
inline Glib::ustring userText(const std::string& text) {
  return Glib::convert_return_gchar_ptr_to_ustring(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

}  // namespace quorbel
