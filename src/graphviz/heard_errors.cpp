#include "graphviz/heard_errors.h"

#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace quorbel {

struct HeardErrors::Heard {
  std::string text;
  bool isHeldBack = false;
  FILE* before = nullptr;
  FILE* own = nullptr;

  static ssize_t write(void* cookie, const char* bytes, std::size_t count) {
    Heard& heard = *static_cast<Heard*>(cookie);
    const std::string part(bytes, count);
    heard.text += part;
    if (!heard.isHeldBack) sayToUser(part);
    return static_cast<ssize_t>(count);
  }
};

HeardErrors::Heard& HeardErrors::heard() {
  static Heard heard;
  return heard;
}

HeardErrors::HeardErrors() {
  Heard& all = heard();
  cookie_io_functions_t functions = {};
  functions.write = Heard::write;
  all.own = fopencookie(&all, "w", functions);
  if (!all.own) return;
  std::setvbuf(all.own, nullptr, _IONBF, 0);
  all.before = std::exchange(stderr, all.own);
}

HeardErrors::~HeardErrors() {
  Heard& all = heard();
  if (all.isHeldBack) sayToUser(all.text);
  if (!all.own) return;
  stderr = all.before;
  std::fclose(all.own);
}

void HeardErrors::holdBack() { heard().isHeldBack = true; }

std::string HeardErrors::take() {
  heard().isHeldBack = false;
  return std::exchange(heard().text, "");
}

void sayToUser(const std::string& text) {
  for (std::size_t said = 0; said < text.size();) {
    const ssize_t count = ::write(STDERR_FILENO, text.data() + said, text.size() - said);
    if (count > 0) said += static_cast<std::size_t>(count);
    if (count < 0 && errno != EINTR) return;
  }
}

}  // namespace quorbel
