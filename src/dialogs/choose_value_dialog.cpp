#include "dialogs/choose_value_dialog.h"

#include <gtkmm/stock.h>

#include <algorithm>

namespace quorbel {

ChooseValueDialog::ChooseValueDialog(const Glib::ustring& title, Gtk::Window& parent, bool modal,
                                     bool useSeparator)
    : Gtk::Dialog(title, parent, modal, useSeparator),
      m_ZeroScore("Use 0-score", false),
      m_Prompt("Choose the score you want to use :", false) {
  add_button(Gtk::Stock::OK, Gtk::RESPONSE_OK);
  add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
}

void ChooseValueDialog::add_value(const Glib::ustring& label) {
  m_Values.push_back(std::make_unique<Gtk::RadioButton>(m_Group, label, false));
}

void ChooseValueDialog::select_value(const Glib::ustring& label) {
  const auto found = std::find_if(m_Values.begin(), m_Values.end(), [&](const auto& button) {
    return button->get_label().raw() == label.raw();
  });
  if (found != m_Values.end()) (*found)->set_active();
}

void ChooseValueDialog::finish_layout() {
  const auto pack = [this](Gtk::Widget& widget) {
    get_vbox()->pack_start(widget, Gtk::PACK_EXPAND_WIDGET, 0);
  };
  pack(m_Prompt);
  for (const auto& button : m_Values) pack(*button);
  pack(m_ZeroScore);
  set_resizable(false);
  show_all_children();
}

Glib::ustring ChooseValueDialog::chosen_value() const {
  const auto found = std::find_if(m_Values.begin(), m_Values.end(),
                                  [](const auto& button) { return button->get_active(); });
  return found == m_Values.end() ? "" : (*found)->get_label();
}

}  // namespace quorbel
