#include "app/library_faults.h"

#include <AL/alc.h>
#include <dlfcn.h>
#include <gtk/gtk.h>

#include <cstring>
#include <memory>
#include <string>

namespace quorbel {
namespace {

/// The library's own function of this name.
template <typename Function>
Function* nextOf(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// A question about a file that is asked later.
struct FileQuestion {
  GFile* file;
  std::string attributes;
  GFileQueryInfoFlags flags;
  int priority;
  GCancellable* cancellable;
  GAsyncReadyCallback answered;
  gpointer data;
};

gboolean askNow(gpointer data) {
  const std::unique_ptr<FileQuestion> question(static_cast<FileQuestion*>(data));
  nextOf<decltype(g_file_query_info_async)>("g_file_query_info_async")(
      question->file, question->attributes.c_str(), question->flags, question->priority,
      question->cancellable, question->answered, question->data);
  g_object_unref(question->file);
  g_clear_object(&question->cancellable);
  return G_SOURCE_REMOVE;
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

void g_file_query_info_async(GFile* file, const char* attributes, GFileQueryInfoFlags flags,
                             int priority, GCancellable* cancellable, GAsyncReadyCallback answered,
                             gpointer data) {
  const int delay = std::strstr(attributes, "icon") ? quorbel::libraryFaults().iconDelayMs : 0;
  auto* const question =
      new quorbel::FileQuestion{G_FILE(g_object_ref(file)),
                                attributes,
                                flags,
                                priority,
                                cancellable ? G_CANCELLABLE(g_object_ref(cancellable)) : nullptr,
                                answered,
                                data};
  if (delay > 0)
    g_timeout_add(static_cast<guint>(delay), quorbel::askNow, question);
  else
    quorbel::askNow(question);
}

}  // extern "C"
