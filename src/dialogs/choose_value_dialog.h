#pragma once

#include <gtkmm/checkbutton.h>
#include <gtkmm/dialog.h>
#include <gtkmm/label.h>
#include <gtkmm/radiobutton.h>

#include <memory>
#include <vector>

namespace quorbel {

/// Offers a list of score names to choose one from, and whether their signs are flipped.
///
/// Names are added first, then `finish_layout` is called, then the dialog is run.
class ChooseValueDialog : public Gtk::Dialog {
 public:
  ChooseValueDialog(const Glib::ustring& title, Gtk::Window& parent, bool modal, bool useSeparator);

  /// Adds a name to choose; the first is the chosen one until another is.
  void add_value(const Glib::ustring& label);

  /// Chooses the first name that equals `label`; without one nothing changes.
  void select_value(const Glib::ustring& label);

  /// Puts prompt, names and check button into the dialog.
  void finish_layout();

  /// The chosen name, "" when none was added.
  Glib::ustring chosen_value() const;

  /// Removes all names.
  void clear_values() { m_Values.clear(); }

  /// "Use 0-score"; the owner sets and reads its state.
  Gtk::CheckButton& zero_score_check() { return m_ZeroScore; }

 private:
  Gtk::RadioButtonGroup m_Group;
  std::vector<std::unique_ptr<Gtk::RadioButton>> m_Values;  ///< in the order added
  Gtk::CheckButton m_ZeroScore;
  Gtk::Label m_Prompt;
};

}  // namespace quorbel
