#include "words/decimal.h"

#include <array>
#include <charconv>
#include <cmath>

namespace quorbel {
namespace {

constexpr std::size_t kLongestNumber = 40;

/// from_chars knows no plus sign.
bool takePlus(std::string_view& text) {
  if (text.empty() || text[0] != '+') return true;
  text.remove_prefix(1);
  return !text.empty() && text[0] != '-';
}

}  // namespace

std::optional<double> wholeNumber(std::string_view text) {
  if (!takePlus(text)) return std::nullopt;
  double number = 0.0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(number)) return std::nullopt;
  if (std::fabs(number) > kLargestNumber) return std::nullopt;
  return number;
}

std::optional<int> wholeInteger(std::string_view text) {
  if (!takePlus(text)) return std::nullopt;
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

std::optional<double> numberOfField(std::string_view value) {
  return wholeNumber(value.substr(0, value.find('#')));
}

std::optional<int> integerOfField(std::string_view value) {
  return wholeInteger(value.substr(0, value.find('#')));
}

void appendNumber(std::string& text, double number) {
  if (number == 0.0) number = 0.0;  // no "-0"
  std::array<char, kLongestNumber> digits;
  auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), end);
}

std::string exactNumber(double number) {
  std::string text;
  appendNumber(text, number);
  return text;
}

double rounded(double number) {
  constexpr int kSignificantDigits = 15;
  std::array<char, kLongestNumber> digits;
  auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                  std::chars_format::general, kSignificantDigits)
                        .ptr;
  std::from_chars(digits.data(), end, number);
  return number;
}

}  // namespace quorbel
