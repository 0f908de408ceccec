#pragma once

#include <gtk/gtk.h>

#include <cstdlib>
#include <string>

#include "app/test_window.h"

namespace quorbel {

inline constexpr const char* kStages[] = {"Creating graph...", "Loading graph elements...",
                                          "Loading graph image..."};

/// The pointer that the window shows: GDK_WATCH while it works, then GDK_LEFT_PTR; GDK_X_CURSOR
/// when it was never set.
inline GdkCursorType pointerOf(TestWindow& window) {
  GdkCursor* const cursor = gdk_window_get_cursor(window.get_window()->gobj());
  return cursor ? gdk_cursor_get_cursor_type(cursor) : GDK_X_CURSOR;
}

/// Another search path for programs for as long as this object lives.
class SearchPath {
 public:
  explicit SearchPath(const std::string& path) { setenv("PATH", path.c_str(), 1); }
  ~SearchPath() { setenv("PATH", m_Before.c_str(), 1); }
  SearchPath(const SearchPath&) = delete;
  SearchPath& operator=(const SearchPath&) = delete;

 private:
  const std::string m_Before = std::getenv("PATH");
};

}  // namespace quorbel
