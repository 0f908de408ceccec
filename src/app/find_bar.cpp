#include "app/find_bar.h"

#include <atkmm/object.h>

namespace quorbel {
namespace {

constexpr int kSpace = 4;
constexpr int kEntryCharacters = 30;

/// A small button with a picture, which keeps the keyboard's focus where it is.
void dress(Gtk::Button& button, const Gtk::StockID& picture, const Glib::ustring& name) {
  button.add(*Gtk::manage(new Gtk::Image(picture, Gtk::ICON_SIZE_MENU)));
  button.set_relief(Gtk::RELIEF_NONE);
  button.set_focus_on_click(false);
  button.set_tooltip_text(name);
  button.get_accessible()->set_name(name);
}

}  // namespace

FindBar::FindBar() : Gtk::HBox(false, kSpace) {
  entry.set_width_chars(kEntryCharacters);
  entry.get_accessible()->set_name("Find in the labels");
  dress(previous, Gtk::Stock::GO_UP, "Previous");
  dress(next, Gtk::Stock::GO_DOWN, "Next");
  dress(close, Gtk::Stock::CLOSE, "Close the find bar");
  auto* const title = Gtk::manage(new Gtk::Label("Find:"));
  for (Gtk::Widget* widget : {static_cast<Gtk::Widget*>(title), static_cast<Gtk::Widget*>(&entry),
                              static_cast<Gtk::Widget*>(&previous),
                              static_cast<Gtk::Widget*>(&next), static_cast<Gtk::Widget*>(&found)})
    pack_start(*widget, Gtk::PACK_SHRINK);
  pack_end(close, Gtk::PACK_SHRINK);
  set_border_width(2);
  show_all_children();
}

void FindBar::say(const Glib::ustring& text, const Glib::ustring& label) {
  found.set_text(text);
  const Glib::ustring whole = label.empty() ? text : text + ": " + label;
  found.get_accessible()->set_name(whole);
  entry.get_accessible()->set_description(whole);
}

void FindBar::setMissing(bool isMissing) {
  if (!isMissing) {
    entry.unset_base(Gtk::STATE_NORMAL);
    entry.unset_text(Gtk::STATE_NORMAL);
    return;
  }
  entry.modify_base(Gtk::STATE_NORMAL, Gdk::Color("#ff7070"));
  entry.modify_text(Gtk::STATE_NORMAL, Gdk::Color("#000000"));
}

}  // namespace quorbel
