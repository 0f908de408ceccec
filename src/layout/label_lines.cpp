#include "layout/label_lines.h"

#include <libxml/HTMLparser.h>
#include <libxml/chvalid.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlstring.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace quorbel {
namespace {

constexpr int kReplacement = 0xFFFD;
constexpr int kFirstLatin1Letter = 0xA0;  // below, Latin-1 has but control characters

void appendCharacter(std::string& text, int character) {
  if (!xmlIsCharQ(static_cast<unsigned>(character))) character = kReplacement;
  std::array<xmlChar, 8> bytes;
  const int length = xmlCopyCharMultiByte(bytes.data(), character);
  text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

std::string withNames(std::string_view label, const LabelNames& names) {
  std::string text;
  for (std::size_t i = 0; i < label.size(); ++i) {
    text += label[i];
    if (label[i] != '\\' || i + 1 == label.size()) continue;
    ++i;
    if (const auto name = names.find(label[i]); name != names.end()) {
      text.pop_back();
      text += name->second;
    } else {
      text += label[i];
    }
  }
  return text;
}

/// The character of an entity by what stands between "&" and ";", 0 for none.
int entityCharacter(const std::string& name) {
  if (name.size() < 2 || name[0] != '#') {
    const htmlEntityDesc* entity = htmlEntityLookup(reinterpret_cast<const xmlChar*>(name.c_str()));
    return entity ? static_cast<int>(entity->value) : 0;
  }
  const bool isHexadecimal = name[1] == 'x' || name[1] == 'X';
  const char* begin = name.data() + (isHexadecimal ? 2 : 1);
  const char* end = name.data() + name.size();
  int character = 0;
  const auto result = std::from_chars(begin, end, character, isHexadecimal ? 16 : 10);
  const bool isWhole = result.ec == std::errc() && result.ptr == end && *begin != '-';
  return isWhole ? character : 0;
}

/// Appends the entity at the start of `text` and returns its length, or 0 when there is none.
std::size_t takeEntity(std::string_view text, std::string& characters) {
  constexpr std::size_t kLongestName = 10;
  const std::size_t end = text.substr(0, kLongestName + 2).find(';');
  if (text.empty() || text[0] != '&' || end == std::string_view::npos) return 0;
  const int character = entityCharacter(std::string(text.substr(1, end - 1)));
  if (character == 0) return 0;
  appendCharacter(characters, character);
  return end + 1;
}

/// The text in UTF-8, with entities as their characters.
std::string withCharacters(std::string_view text) {
  std::string characters;
  while (!text.empty()) {
    std::size_t taken = takeEntity(text, characters);
    if (taken == 0) {
      const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
      int length = static_cast<int>(std::min<std::size_t>(text.size(), 4));
      int character = xmlGetUTF8Char(bytes, &length);
      if (character < 0) {
        character = bytes[0] < kFirstLatin1Letter ? kReplacement : bytes[0];
        length = 1;
      }
      appendCharacter(characters, character);
      taken = static_cast<std::size_t>(length);
    }
    text.remove_prefix(taken);
  }
  return characters;
}

}  // namespace

std::vector<LabelLine> labelLines(std::string_view label, const LabelNames& names) {
  std::vector<LabelLine> lines;
  std::string line;
  const auto endLine = [&](Justification justification) {
    lines.push_back({line, justification});
    line.clear();
  };
  const std::string text = withCharacters(withNames(label, names));
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') {
      endLine(Justification::Centre);
    } else if (text[i] != '\\' || i + 1 == text.size()) {
      line += text[i];
    } else {
      switch (text[++i]) {
        case 'n':
          endLine(Justification::Centre);
          break;
        case 'l':
          endLine(Justification::Left);
          break;
        case 'r':
          endLine(Justification::Right);
          break;
        default:
          line += text[i];
      }
    }
  }
  if (!line.empty()) endLine(Justification::Centre);
  return lines;
}

}  // namespace quorbel
