// Letters of all scripts: what is small and what is capital the system's C library knows.

#include <array>
#include <climits>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <memory>

#include "words/word_text.h"

namespace quorbel {
namespace {

using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

/// That of the C library itself, which needs no other to be installed: UTF-8, no country.
locale_t plainLocale() {
  static const Locale plain(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr), &freelocale);
  return plain.get();
}

}  // namespace

std::string inLowerCase(const std::string& text) {
  const locale_t before = uselocale(plainLocale());
  std::string lower;
  std::mbstate_t state = {};
  for (std::size_t pos = 0; pos < text.size();) {
    wchar_t letter = 0;
    const std::size_t length = std::mbrtowc(&letter, &text[pos], text.size() - pos, &state);
    if (length == 0 || length > text.size() - pos) {  // no letter
      lower += text[pos++];
      state = {};
      continue;
    }
    std::array<char, MB_LEN_MAX> bytes;
    std::mbstate_t written = {};
    const std::size_t count = std::wcrtomb(
        bytes.data(), static_cast<wchar_t>(std::towlower(static_cast<wint_t>(letter))), &written);
    lower.append(bytes.data(), count);
    pos += length;
  }
  uselocale(before);
  return lower;
}

}  // namespace quorbel
