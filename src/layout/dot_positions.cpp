#include "layout/dot_positions.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "lattice/number_text.h"
#include "layout/dot_names.h"

namespace quorbel {
namespace {

/// The number in full where `dot` wrote it with an exponent.
std::string inFull(std::string_view number) {
  const bool hasExponent = !number.empty() && number[0] != 'e' &&
                           number.find('e') != std::string_view::npos &&
                           number.find_first_not_of("0123456789+-.e") == std::string_view::npos;
  if (!hasExponent) return std::string(number);
  std::array<char, 400> text;  // the largest double has 309 digits
  const auto result = std::to_chars(text.data(), text.data() + text.size(), parseDouble(number),
                                    std::chars_format::fixed);
  return std::string(text.data(), result.ptr);
}

}  // namespace

bool isDotPosition(std::string_view attribute) {
  return attribute == "bb" || attribute == "pos" || attribute == "lp";
}

std::string dotPositionInFull(std::string_view value) {
  std::string full;
  while (!value.empty()) {
    const std::size_t end = std::min(value.find_first_of(", ;"), value.size());
    full += inFull(value.substr(0, end));
    full += value.substr(end, 1);
    value.remove_prefix(std::min(end + 1, value.size()));
  }
  return full;
}

std::string lineWithPositionsInFull(const std::string& line) {
  const bool mayHaveExponent =
      line.find("e+") != std::string::npos || line.find("e-") != std::string::npos;
  if (!mayHaveExponent) return line;
  std::string full;
  std::size_t copied = 0;
  for (std::size_t open = line.find('"'); open != std::string::npos;) {
    const std::size_t close = line.find('"', open + 1);
    if (close == std::string::npos) break;
    std::size_t name = open;
    if (name > 0 && line[name - 1] == '=') --name;
    const std::size_t nameEnd = name;
    while (name > 0 && isDotNameCharacter(line[name - 1])) --name;
    if (isDotPosition(std::string_view(line).substr(name, nameEnd - name))) {
      full.append(line, copied, open + 1 - copied);
      full += dotPositionInFull(std::string_view(line).substr(open + 1, close - open - 1));
      copied = close;
    }
    open = line.find('"', close + 1);
  }
  return full.append(line, copied);
}

}  // namespace quorbel
