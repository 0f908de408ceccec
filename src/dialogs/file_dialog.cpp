#include "dialogs/file_dialog.h"

#include <gtk/gtk.h>
#include <gtkmm/entry.h>
#include <gtkmm/stock.h>

#include <string_view>

namespace quorbel {
namespace {

/// Empties the field for a file's name, which only the toolkit's container knows. The dialog's
/// own way, a name set, is there for saving alone.
void clearTypedName(Gtk::Widget& part) {
  constexpr std::string_view kNameField = "GtkFileChooserEntry";
  if (auto* const field = dynamic_cast<Gtk::Entry*>(&part)) {
    if (G_OBJECT_TYPE_NAME(field->gobj()) == kNameField) field->set_text("");
  } else if (auto* const container = dynamic_cast<Gtk::Container*>(&part)) {
    gtk_container_forall(
        container->gobj(), [](GtkWidget* child, gpointer) { clearTypedName(*Glib::wrap(child)); },
        nullptr);
  }
}

void chooseFilter(Gtk::FileChooserDialog& dialog, std::size_t index) {
  GtkFileChooser* const chooser = GTK_FILE_CHOOSER(dialog.gobj());
  GSList* const filters = gtk_file_chooser_list_filters(chooser);
  void* const filter = g_slist_nth_data(filters, static_cast<guint>(index));
  if (filter) gtk_file_chooser_set_filter(chooser, GTK_FILE_FILTER(filter));
  g_slist_free(filters);
}

}  // namespace

FileDialog makeFileDialog(Gtk::Window& parent, const Glib::ustring& title,
                          Gtk::FileChooserAction action) {
  FileDialog dialog(new Gtk::FileChooserDialog(parent, title, action));
  dialog->add_button(Gtk::Stock::CANCEL, Gtk::RESPONSE_CANCEL);
  return dialog;
}

FileDialogUse::FileDialogUse(Gtk::FileChooserDialog& dialog, const std::string& folder,
                             std::size_t filter)
    : m_Dialog(dialog) {
  chooseFilter(dialog, filter);
  dialog.unselect_all();
  clearTypedName(dialog);
  dialog.set_current_folder(folder);
}

}  // namespace quorbel
