#pragma once

// What names in a file of `dot` are made of, and what stands around them.

#include <algorithm>
#include <cctype>
#include <string_view>

namespace quorbel {

/// Whether an attribute's name in a file of `dot` may have this character.
inline bool isDotNameCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

inline constexpr const char* kDotWhiteSpace = " \t\r\n";

/// The part of a text of such a file that no white space stands around.
inline std::string_view withoutMargins(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(kDotWhiteSpace), text.size());
  const std::size_t end = text.find_last_not_of(kDotWhiteSpace) + 1;
  return text.substr(begin, std::max(begin, end) - begin);
}

}  // namespace quorbel
