#pragma once

#include <gtk/gtk.h>
#include <gtkmm/button.h>
#include <gtkmm/buttonbox.h>
#include <gtkmm/dialog.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quorbel {

struct DialogButton {
  std::string label;
  int response = 0;
};

inline bool operator==(const DialogButton& a, const DialogButton& b) {
  return a.label == b.label && a.response == b.response;
}

/// A dialog's buttons, from left to right.
inline std::vector<DialogButton> buttonsOf(Gtk::Dialog& dialog) {
  std::map<int, DialogButton> buttons;
  const std::vector<Gtk::Widget*> widgets = dialog.get_action_area()->get_children();
  for (Gtk::Widget* widget : widgets)
    buttons[widget->get_allocation().get_x()] = {dynamic_cast<Gtk::Button&>(*widget).get_label(),
                                                 dialog.get_response_for_widget(*widget)};
  std::vector<DialogButton> fromLeft;
  for (const auto& [x, button] : buttons) fromLeft.push_back(button);
  return fromLeft;
}

/// The file filters of a file chooser, in their order; they belong to it.
inline std::vector<GtkFileFilter*> filtersOf(Gtk::Dialog& dialog) {
  GSList* const list = gtk_file_chooser_list_filters(GTK_FILE_CHOOSER(dialog.gobj()));
  std::vector<GtkFileFilter*> filters;
  for (GSList* entry = list; entry; entry = entry->next)
    filters.push_back(GTK_FILE_FILTER(entry->data));
  g_slist_free(list);
  return filters;
}

/// Whether a filter shows a file of this name.
inline bool shows(GtkFileFilter* filter, const char* name) {
  GtkFileFilterInfo info = {};
  info.contains = GTK_FILE_FILTER_DISPLAY_NAME;
  info.display_name = name;
  return gtk_file_filter_filter(filter, &info);
}

}  // namespace quorbel
