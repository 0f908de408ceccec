#pragma once

#include <cctype>

namespace quorbel {

/// Whether an attribute's name in a file of `dot` may have this character.
inline bool isDotNameCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

}  // namespace quorbel
