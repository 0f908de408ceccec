#include "dialogs/message_text.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include "texts/user_text.h"

namespace quorbel {

void setMessageText(Gtk::MessageDialog& dialog, const std::string& text) {
  dialog.set_secondary_text(userText(text), false);
  for (Gtk::Widget* part : dialog.get_message_area()->get_children())
    if (auto* const label = dynamic_cast<Gtk::Label*>(part))
      label->set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
}

}  // namespace quorbel
