#include "graphviz/label_mending.h"

#include <algorithm>
#include <cctype>

namespace quorbel {
namespace {

constexpr std::string_view kBegin = "digraph G {\nrankdir=LR;\n";
constexpr std::string_view kEnd = "}\n";

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

/// Walks through the fixed parts of a description. A step that fails leaves the place as it is.
class DescriptionCursor {
 public:
  DescriptionCursor(std::string_view text, std::size_t place) : m_Text(text), m_Place(place) {}

  std::size_t place() const { return m_Place; }

  bool take(std::string_view part) {
    const bool isThere = m_Text.substr(m_Place, part.size()) == part;
    if (isThere) m_Place += part.size();
    return isThere;
  }

  bool takeNumber() {
    const std::size_t sign = m_Text.substr(m_Place, 1) == "-" ? 1 : 0;
    const std::size_t digits = lengthOf(m_Place + sign, isDigit);
    if (digits > 0) m_Place += sign + digits;
    return digits > 0;
  }

  bool takeName() {
    const std::size_t length =
        lengthOf(m_Place, [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; });
    m_Place += length;
    return length > 0;
  }

 private:
  template <typename Kind>
  std::size_t lengthOf(std::size_t begin, Kind isOfKind) const {
    const std::string_view rest = m_Text.substr(std::min(begin, m_Text.size()));
    return static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), isOfKind) -
                                    rest.begin());
  }

  std::string_view m_Text;
  std::size_t m_Place;
};

bool takeStyleOfNode(DescriptionCursor& cursor) {
  DescriptionCursor ahead = cursor;
  const bool isStyle = ahead.takeNumber() && ahead.take(" [shape=") && ahead.takeName() &&
                       ahead.take(", color=") && ahead.takeName() &&
                       ahead.take(", style=filled, fillcolor=") && ahead.takeName() &&
                       ahead.take("];\n");
  if (isStyle) cursor = ahead;
  return isStyle;
}

/// Takes all of a link that stands before its label.
bool takeLinkBeforeLabel(DescriptionCursor& cursor) {
  DescriptionCursor ahead = cursor;
  if (!(ahead.takeNumber() && ahead.take(" -> ") && ahead.takeNumber() && ahead.take(" [ color=") &&
        ahead.takeName()))
    return false;
  if (ahead.take(", fontcolor=") && !ahead.takeName()) return false;
  if (!ahead.take(",label = \"")) return false;
  cursor = ahead;
  return true;
}

bool isEnd(std::string_view text, std::size_t place) { return text.substr(place) == kEnd; }

/// The end of the label that begins at `begin`, if a line behind it ends as a link does.
std::optional<std::size_t> labelEnd(std::string_view text, std::size_t begin, std::size_t lineEnd) {
  constexpr std::string_view kBehindNumber = "\"];";
  constexpr std::string_view kBeforeNumber = "\", comment=\"ID = ";
  std::string_view line = text.substr(begin, lineEnd - begin);
  const auto endsWith = [&](std::string_view part) {
    return line.size() >= part.size() && line.substr(line.size() - part.size()) == part;
  };
  if (!endsWith(kBehindNumber)) return std::nullopt;
  line.remove_suffix(kBehindNumber.size());
  const std::size_t withNumber = line.size();
  while (!line.empty() && isDigit(line.back())) line.remove_suffix(1);
  if (line.size() == withNumber) return std::nullopt;
  if (endsWith("-")) line.remove_suffix(1);
  if (!endsWith(kBeforeNumber)) return std::nullopt;
  return begin + line.size() - kBeforeNumber.size();
}

void appendMended(std::string& mended, std::string_view label) {
  constexpr std::size_t kLineBytes = 8192;
  std::size_t lineBegin = mended.size();
  for (std::size_t at = 0; at < label.size(); ++at) {
    if (mended.size() - lineBegin >= kLineBytes) {
      mended += "\\\n";
      lineBegin = mended.size();
    }
    const char c = label[at];
    if (c == '"') mended += '\\';
    mended += c;
    if (c == '\\') mended += ++at < label.size() ? label[at] : '\\';
  }
}

/// Takes a link together with the end of its line, mended.
bool takeLink(std::string_view text, DescriptionCursor& cursor, std::string& mended) {
  const std::size_t begin = cursor.place();
  if (!takeLinkBeforeLabel(cursor)) return false;
  const std::size_t label = cursor.place();
  for (std::size_t lineEnd = text.find('\n', label); lineEnd != std::string_view::npos;
       lineEnd = text.find('\n', lineEnd + 1)) {
    const std::optional<std::size_t> end = labelEnd(text, label, lineEnd);
    if (!end) continue;
    DescriptionCursor next(text, lineEnd + 1);
    if (!isEnd(text, lineEnd + 1) && !takeLinkBeforeLabel(next)) continue;
    mended += text.substr(begin, label - begin);
    appendMended(mended, text.substr(label, *end - label));
    mended += text.substr(*end, lineEnd + 1 - *end);
    cursor = DescriptionCursor(text, lineEnd + 1);
    return true;
  }
  return false;
}

}  // namespace

std::optional<std::string> mendedDescription(std::string_view text) {
  DescriptionCursor cursor(text, 0);
  if (!cursor.take(kBegin) || text.find('\0') != std::string_view::npos) return std::nullopt;
  while (takeStyleOfNode(cursor)) {
  }
  std::string mended(text.substr(0, cursor.place()));
  while (!isEnd(text, cursor.place()))
    if (!takeLink(text, cursor, mended)) return std::nullopt;
  return mended += kEnd;
}

}  // namespace quorbel
