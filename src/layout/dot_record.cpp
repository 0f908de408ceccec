#include "layout/dot_record.h"

#include <algorithm>

#include "lattice/blanks.h"
#include "layout/dot_names.h"
#include "layout/dot_positions.h"

namespace quorbel {
namespace {

/// Takes the value in quotes that begins at `pos`. Inside them a backslash takes the next character
/// with it; at the end of a line it only wraps the value.
std::string takeQuotedValue(std::string_view text, std::size_t& pos) {
  std::string value;
  for (++pos; pos < text.size() && text[pos] != '"'; ++pos) {
    if (text[pos] != '\\' || pos + 1 == text.size()) {
      value += text[pos];
      continue;
    }
    const char escaped = text[++pos];
    if (escaped == '\n') continue;
    value += '\\';
    value += escaped;
  }
  ++pos;
  return value;
}

/// Takes the attributes from `pos`, right behind the opening bracket.
DotAttributes takeAttributes(std::string_view text, std::size_t& pos) {
  DotAttributes attributes;
  while (pos < text.size() && text[pos] != ']') {
    if (!isDotNameCharacter(text[pos])) {
      ++pos;
      continue;
    }
    const std::size_t begin = pos;
    while (pos < text.size() && isDotNameCharacter(text[pos])) ++pos;
    const std::string name(text.substr(begin, pos - begin));
    pos = std::min(text.find_first_not_of(kBlanks, pos), text.size());
    if (pos == text.size()) break;
    if (text[pos] != '=') continue;
    pos = std::min(text.find_first_not_of(kBlanks, pos + 1), text.size());
    std::string value;
    if (pos < text.size() && text[pos] == '"') {
      value = takeQuotedValue(text, pos);
    } else {
      const std::size_t end = std::min(text.find_first_of(",] \t\n", pos), text.size());
      value = text.substr(pos, end - pos);
      pos = end;
    }
    attributes[name] = isDotPosition(name) ? dotPositionInFull(value) : value;
  }
  return attributes;
}

}  // namespace

const std::string* valueOf(const DotAttributes& attributes, std::string_view name) {
  const auto found = attributes.find(name);
  return found == attributes.end() ? nullptr : &found->second;
}

DotRecord takeDotRecord(std::string_view text, std::size_t& pos) {
  constexpr std::string_view kArrow = "->";
  const std::size_t bracket = std::min(text.find('[', pos), text.size());
  const std::string_view subject = withoutMargins(text.substr(pos, bracket - pos));
  const std::size_t arrow = subject.find(kArrow);
  DotRecord record;
  if (subject == "graph") {
    record.kind = DotRecord::Kind::Drawing;
  } else if (subject == "node" || subject == "edge") {
    record.kind = DotRecord::Kind::Defaults;
    record.name = subject;
  } else if (arrow != std::string_view::npos) {
    record.kind = DotRecord::Kind::Edge;
    record.name = withoutMargins(subject.substr(0, arrow));
    record.head = withoutMargins(subject.substr(arrow + kArrow.size()));
  } else {
    record.name = subject;
  }
  pos = std::min(bracket + 1, text.size());
  record.attributes = takeAttributes(text, pos);
  return record;
}

}  // namespace quorbel
