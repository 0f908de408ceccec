#include "app/picture_loading.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <glibmm/error.h>
#include <glibmm/main.h>
#include <glibmm/wrap.h>

#include <atomic>
#include <future>

namespace quorbel {

/// The thread works with GdkPixbuf alone, which knows no widget; objects of the toolkit's C++ side
/// are made here.
Glib::RefPtr<Gdk::Pixbuf> loadPicture(const std::string& path) {
  GError* error = nullptr;
  std::atomic<bool> isLoaded = false;
  std::future<GdkPixbuf*> loading = std::async(std::launch::async, [&] {
    GdkPixbuf* picture = gdk_pixbuf_new_from_file(path.c_str(), &error);
    isLoaded = true;
    g_main_context_wakeup(nullptr);
    return picture;
  });
  while (!isLoaded) Glib::MainContext::get_default()->iteration(true);
  GdkPixbuf* picture = loading.get();
  if (error != nullptr) Glib::Error::throw_exception(error);
  return Glib::wrap(picture);
}

}  // namespace quorbel
