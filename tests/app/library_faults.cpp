#include "app/library_faults.h"

#include <AL/alc.h>
#include <dlfcn.h>
#include <gtk/gtk.h>

namespace quorbel {
namespace {

/// The library's own function of this name.
template <typename Function>
Function* nextOf(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

LibraryFaults& libraryFaults() {
  static LibraryFaults faults;
  return faults;
}

}  // namespace quorbel

extern "C" {

ALCdevice* alcOpenDevice(const ALCchar* name) {
  if (quorbel::libraryFaults().soundDevice) return nullptr;
  return quorbel::nextOf<decltype(alcOpenDevice)>("alcOpenDevice")(name);
}

guint gtk_ui_manager_add_ui_from_string(GtkUIManager* manager, const gchar* text, gssize length,
                                        GError** error) {
  if (quorbel::libraryFaults().userInterface) {
    g_set_error(error, G_MARKUP_ERROR, G_MARKUP_ERROR_PARSE, "no such menu");
    return 0;
  }
  return quorbel::nextOf<decltype(gtk_ui_manager_add_ui_from_string)>(
      "gtk_ui_manager_add_ui_from_string")(manager, text, length, error);
}

}  // extern "C"
