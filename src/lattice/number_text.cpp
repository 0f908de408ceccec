#include "lattice/number_text.h"

#include <array>
#include <charconv>
#include <istream>
#include <locale>
#include <streambuf>

namespace quorbel {
namespace {

/// Lets a stream read characters where they stand.
class ViewBuffer : public std::streambuf {
 public:
  void show(std::string_view text) {
    char* begin = const_cast<char*>(text.data());  // setg wants char*; nothing is ever put back
    setg(begin, begin, begin + text.size());
  }
};

/// One stream for all extractions: making one costs more than reading a number.
class NumberStream {
 public:
  NumberStream() : m_Stream(&m_Buffer) { m_Stream.imbue(std::locale::classic()); }

  template <typename Number>
  Number extract(std::string_view text) {
    m_Buffer.show(text);
    m_Stream.clear();
    Number number{};
    m_Stream >> number;
    return number;
  }

 private:
  ViewBuffer m_Buffer;
  std::istream m_Stream;
};

NumberStream& numberStream() {
  static NumberStream stream;
  return stream;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool beginsLikeNumber(std::string_view text) {
  if (!text.empty() && text[0] == '-') text.remove_prefix(1);
  return !text.empty() && isDigit(text[0]);
}

}  // namespace

// A stream is asked only where the quick conversion does not take the text as a stream would.

int parseInt(std::string_view text) {
  int number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() ? number : numberStream().extract<int>(text);
}

double parseDouble(std::string_view text) {
  const char* const end = text.data() + text.size();
  double number = 0.0;
  if (beginsLikeNumber(text)) {
    const auto result = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    const bool mayGoOn = result.ptr != end && (*result.ptr == 'e' || *result.ptr == 'E');
    if (result.ec == std::errc() && !mayGoOn) return number;
  }
  return numberStream().extract<double>(text);
}

std::string formatNumber(double number) {
  constexpr int kSignificantDigits = 6;
  std::array<char, 32> text;
  char* const end = std::to_chars(text.data(), text.data() + text.size(), number,
                                  std::chars_format::general, kSignificantDigits)
                        .ptr;
  return std::string(text.data(), end);
}

}  // namespace quorbel
