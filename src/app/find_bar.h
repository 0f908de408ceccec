#pragma once

#include <gtkmm.h>

namespace quorbel {

/// The bar with which words are found in the drawing. What its parts do is connected by the window.
class FindBar : public Gtk::HBox {
 public:
  FindBar();

  /// Says what was found, the text, both on the bar and to a screen reader, which hears of the
  /// label, too.
  void say(const Glib::ustring& text, const Glib::ustring& label);

  /// Turns the entry red or back.
  void setMissing(bool isMissing);

  Gtk::Entry entry;
  Gtk::Label found;
  Gtk::Button previous;
  Gtk::Button next;
  Gtk::Button close;
};

}  // namespace quorbel
