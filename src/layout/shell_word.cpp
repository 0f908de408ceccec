#include "layout/shell_word.h"

namespace quorbel {

std::string shellWord(const std::string& text) {
  const bool isPlain = text.find_first_not_of(
                           "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                           "_./+,:@%-") == std::string::npos;
  if (isPlain && !text.empty()) return text;
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'')
      quoted += "'\\''";
    else
      quoted += c;
  }
  return quoted + "'";
}

}  // namespace quorbel
