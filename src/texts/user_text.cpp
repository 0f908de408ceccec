#include "texts/user_text.h"

#include <glib.h>
#include <glibmm/utility.h>

namespace quorbel {

Glib::ustring userText(const std::string& text) {
  return Glib::convert_return_gchar_ptr_to_ustring(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

}  // namespace quorbel
