#include "graphviz/file_drawing.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>

#include "graphviz/heard_errors.h"
#include "graphviz/library_drawing.h"

namespace quorbel {

bool writeOver(const std::string& path, const std::string& bytes) {
  constexpr mode_t kMode = 0666;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, kMode);
  if (file < 0) return false;
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = write(file, bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno != EINTR) break;
    if (count > 0) written += static_cast<std::size_t>(count);
  }
  return close(file) == 0 && written == bytes.size();
}

std::optional<int> drawIntoFile(const std::string& format, const std::string& output,
                                const std::string& description) {
  std::ifstream stream(description, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  const auto drawn = drawByLibrary(text, {format});
  if (!drawn || !writeOver(output, drawn->drawings[0].bytes)) return std::nullopt;
  sayToUser(drawn->said + drawn->drawings[0].said);
  return drawn->status;
}

}  // namespace quorbel
