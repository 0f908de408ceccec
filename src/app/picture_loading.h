#pragma once

#include <gdkmm/pixbuf.h>

#include <string>

namespace quorbel {

/// Loads the picture in the file `path` as Gdk::Pixbuf::create_from_file does, and throws what that
/// throws. A wide drawing takes a quarter of a second, so it is loaded beside the main loop, whose
/// events go through meanwhile.
Glib::RefPtr<Gdk::Pixbuf> loadPicture(const std::string& path);

}  // namespace quorbel
