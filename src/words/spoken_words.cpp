#include "words/spoken_words.h"

#include <algorithm>
#include <array>
#include <string>

namespace quorbel {

bool isSpoken(std::string_view word) {
  static constexpr std::array<std::string_view, 24> kUnspoken = {
      "!null",      "<eps>",      "<null>",   "<s>",        "</s>",     "!sent_start",
      "!sent_end",  "sent-start", "sent-end", "sent_start", "sent_end", "<sent_start>",
      "<sent_end>", "!enter",     "!exit",    "<sil>",      "!sil",     "[sil]",
      "<silence>",  "[silence]",  "<pau>",    "-pau-",      "<sp>",     "sil"};
  constexpr std::size_t kLongest = 12;
  if (word == "sp") return false;
  if (word.size() > kLongest) return true;
  std::string lower(word);
  const auto toLower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  std::transform(lower.begin(), lower.end(), lower.begin(), toLower);
  return std::find(kUnspoken.begin(), kUnspoken.end(), lower) == kUnspoken.end();
}

}  // namespace quorbel
