#include "words/word_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>

namespace quorbel {
namespace {

bool isOctal(char c) { return c >= '0' && c <= '7'; }

/// A character of a UTF-8 text and how many bytes it takes; 0 bytes where the text is no UTF-8.
struct Character {
  std::uint32_t code = 0;
  std::size_t length = 0;
};

Character characterAt(std::string_view text, std::size_t pos) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[pos + i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  constexpr std::array<std::uint32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  if (first < 0xC2 || first > 0xF4 || pos + length > text.size()) return {};
  std::uint32_t code = first & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0u) != 0x80u) return {};
    code = code << 6u | (byte(i) & 0x3Fu);
  }
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kSmallest[length] || code > 0x10FFFF || isSurrogate) return {};
  return {code, length};
}

bool isUtf8(std::string_view text) {
  for (std::size_t pos = 0; pos < text.size();) {
    const std::size_t length = characterAt(text, pos).length;
    if (length == 0) return false;
    pos += length;
  }
  return true;
}

void appendTwoBytes(std::string& text, unsigned code) {
  text += static_cast<char>(0xC0u | code >> 6u);
  text += static_cast<char>(0x80u | (code & 0x3Fu));
}

/// Whether an entity reference such as "&lt;" or "&#60;" begins at the ampersand at `pos`: Graphviz
/// would draw what it stands for.
bool isEntity(std::string_view text, std::size_t pos) {
  std::size_t end = pos + 1;
  while (end < text.size() &&
         (text[end] == '#' || std::isalnum(static_cast<unsigned char>(text[end]))))
    ++end;
  return end > pos + 1 && end < text.size() && text[end] == ';';
}

/// What a character is shown as that no line of text and no XML has a place for; empty for others.
std::string controlPicture(std::uint32_t code) {
  constexpr std::uint32_t kFirstPrintable = 0x20;
  constexpr std::uint32_t kDelete = 0x7F;
  if (code < kFirstPrintable) {  // the pictures of control characters begin at U+2400
    std::string picture = "\u2400";
    picture.back() = static_cast<char>(0x80u + code);
    return picture;
  }
  if (code == kDelete) return "\u2421";
  if (code == 0xFFFE || code == 0xFFFF) return "\uFFFD";
  return "";
}

/// What a character is drawn as; empty for one that is drawn as it is.
std::string pictureOf(std::string_view text, std::size_t pos, std::uint32_t code) {
  if (code == '"') return "\u201D";
  if (code == '\\') return "\u2216";
  if (code == '&') return isEntity(text, pos) ? "\uFF06" : "";
  return controlPicture(code);
}

/// `text` with what `picture`, called with a place in it and the character there, gives for it.
template <typename Picture>
std::string withPictures(const std::string& text, Picture picture) {
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t pos = 0; pos < text.size();) {
    const Character character = characterAt(text, pos);
    const std::size_t length = std::max<std::size_t>(character.length, 1);
    const std::string instead = picture(pos, character.code);
    if (instead.empty())
      shown.append(text, pos, length);
    else
      shown += instead;
    pos += length;
  }
  return shown;
}

int hexadecimal(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::string withoutEscapes(std::string_view value) {
  std::string bytes;
  bytes.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      bytes += value[i];
      continue;
    }
    ++i;
    const bool isByte = i + 2 < value.size() && value[i] <= '3' && isOctal(value[i]) &&
                        isOctal(value[i + 1]) && isOctal(value[i + 2]);
    if (!isByte) {
      bytes += value[i];
      continue;
    }
    const int number = (value[i] - '0') * 64 + (value[i + 1] - '0') * 8 + (value[i + 2] - '0');
    bytes += static_cast<char>(number);
    i += 2;
  }
  return bytes;
}

std::string inUtf8(std::string bytes) {
  if (isUtf8(bytes)) return bytes;
  std::string text;
  for (const char c : bytes) {
    const unsigned code = static_cast<unsigned char>(c);
    if (code < 0x80)
      text += c;
    else
      appendTwoBytes(text, code);
  }
  return text;
}

std::string drawableText(const std::string& text) {
  return withPictures(
      text, [&](std::size_t pos, std::uint32_t code) { return pictureOf(text, pos, code); });
}

std::string withControlPictures(const std::string& text) {
  return withPictures(text, [](std::size_t, std::uint32_t code) { return controlPicture(code); });
}

std::string excerpt(std::string_view text) {
  constexpr std::size_t kShown = 40;
  constexpr std::size_t kLongestRest = 3;  // of a character, behind its first byte
  if (text.size() <= kShown) return drawableText(inUtf8(std::string(text)));
  std::size_t end = kShown;
  while (end > kShown - kLongestRest && (static_cast<unsigned char>(text[end]) & 0xC0u) == 0x80u)
    --end;
  return drawableText(inUtf8(std::string(text.substr(0, end)))) + "...";
}

std::string percentText(const std::string& text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (std::size_t pos = 0; pos < text.size();) {
    const Character character = characterAt(text, pos);
    const std::size_t length = std::max<std::size_t>(character.length, 1);
    const bool isKept = text[pos] != '%' && pictureOf(text, pos, character.code).empty();
    for (std::size_t i = pos; i < pos + length; ++i) {
      const unsigned byte = static_cast<unsigned char>(text[i]);
      if (isKept) {
        encoded += text[i];
      } else {
        encoded += '%';
        encoded += kDigits[byte >> 4u];
        encoded += kDigits[byte & 15u];
      }
    }
    pos += length;
  }
  return encoded;
}

std::string withoutPercents(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = i + 2 < text.size() ? hexadecimal(text[i + 1]) : -1;
    const int low = i + 2 < text.size() ? hexadecimal(text[i + 2]) : -1;
    if (text[i] != '%' || high < 0 || low < 0) {
      decoded += text[i];
      continue;
    }
    decoded += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return decoded;
}

}  // namespace quorbel
