#include "dialogs/about_dialog.h"

#include <atkmm/object.h>

#include "texts/product.h"

namespace quorbel {

AboutDialog::AboutDialog(const Glib::ustring& title, Gtk::Window& parent, bool modal,
                         bool useSeparator)
    : Gtk::Dialog(title, parent, modal, useSeparator), m_Picture(IMAGE_DIR + "about.png") {
  m_Picture.get_accessible()->set_name("About " + PRODUCT_NAME);
  get_vbox()->pack_start(m_Picture, Gtk::PACK_EXPAND_WIDGET, 0);
  set_resizable(false);
  show_all_children();
}

}  // namespace quorbel
