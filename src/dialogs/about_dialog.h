#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/image.h>

namespace quorbel {

/// One picture that says what the program is. Has no buttons: it ends when its window is closed.
class AboutDialog : public Gtk::Dialog {
 public:
  /// Loads the picture from IMAGE_DIR; a missing one shows as the toolkit's broken image.
  AboutDialog(const Glib::ustring& title, Gtk::Window& parent, bool modal, bool useSeparator);

 private:
  Gtk::Image m_Picture;
};

}  // namespace quorbel
