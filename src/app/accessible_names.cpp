// What a screen reader calls the parts of the window that carry no text of their own.

#include <atkmm/object.h>

#include "app/main_window.h"

namespace quorbel {
namespace {

/// The arrow of the open button is a widget of the toolkit's that only its container knows.
void nameArrow(Gtk::MenuToolButton& button, const Glib::ustring& name) {
  const auto nameIfArrow = [&name](Gtk::Widget& part) {
    if (dynamic_cast<Gtk::ToggleButton*>(&part)) part.get_accessible()->set_name(name);
  };
  if (auto* const box = dynamic_cast<Gtk::Container*>(button.get_child()))
    box->foreach (nameIfArrow);
}

}  // namespace

void MainWindow::nameParts() {
  m_GraphArea.get_accessible()->set_name("Lattice");
  m_SoundArea.get_accessible()->set_name("Waveform");
  m_AttributeTree.get_accessible()->set_name("Attributes of the selected links");
  m_InfoView.get_accessible()->set_name("Words of the paths");
  m_LogoImage.get_accessible()->set_name("Logo of the program");
  m_FundingImage.get_accessible()->set_name("Logo of the funding programme");
  nameArrow(m_OpenButton, "Files beside the lattice");
}

}  // namespace quorbel
