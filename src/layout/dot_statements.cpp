#include "layout/dot_statements.h"

#include <algorithm>
#include <istream>
#include <string_view>

#include "lattice/blanks.h"
#include "layout/dot_names.h"
#include "layout/dot_positions.h"

namespace quorbel {
namespace {

/// Follows brackets and quotes through a statement, by the rules of the DOT language: inside quotes
/// a backslash takes the next character with it.
class Nesting {
 public:
  void read(std::string_view text) {
    for (const char c : text) {
      if (m_Escaped)
        m_Escaped = false;
      else if (m_InQuotes && c == '\\')
        m_Escaped = true;
      else if (c == '"')
        m_InQuotes = !m_InQuotes;
      else if (!m_InQuotes && (c == '[' || c == ']'))
        m_InBrackets = c == '[';
    }
  }
  bool inQuotes() const { return m_InQuotes; }
  bool isOpen() const { return m_InQuotes || m_InBrackets; }

 private:
  bool m_Escaped = false;
  bool m_InQuotes = false;
  bool m_InBrackets = false;
};

bool endsWithBackslash(std::string_view line) { return !line.empty() && line.back() == '\\'; }

bool endsLikeStatement(std::string_view line) {
  const std::size_t last = line.find_last_not_of(" \t;\r");
  return last != std::string_view::npos && line[last] == ']';
}

/// Whether a node or edge begins as today's `dot` writes it; old versions wrote a blank there.
bool hasTabBeforeBracket(std::string_view line) {
  const std::size_t bracket = line.find('[');
  return bracket != std::string_view::npos && bracket > 0 && line[bracket - 1] == '\t';
}

/// A one-line statement that `dot` may have wrapped: the line ends go, the backslashes stay.
std::string withoutWrapping(const std::string& line) {
  std::string joined;
  for (const char c : line)
    if (c != '\n' || !endsWithBackslash(joined)) joined += c;
  return joined;
}

}  // namespace

bool DotStatements::takeLine(std::string& line) {
  if (m_Ahead) {
    line = std::move(*m_Ahead);
    m_Ahead.reset();
    return true;
  }
  return static_cast<bool>(std::getline(m_Stream, line));
}

/// Whether the next line goes on with a statement whose bracket is still open.
bool DotStatements::nextLineIsAttribute() {
  if (!m_Ahead) {
    std::string line;
    if (!std::getline(m_Stream, line)) return true;  // cut off: nothing else can follow either
    m_Ahead = std::move(line);
  }
  const std::string_view line = *m_Ahead;
  const std::size_t begin = std::min(line.find_first_not_of(kBlanks), line.size());
  if (begin < line.size() && line[begin] == ']') return true;
  std::size_t end = begin;
  while (end < line.size() && isDotNameCharacter(line[end])) ++end;
  if (end == line.size() && m_Stream.eof()) return true;  // cut off amid its name
  const std::size_t equals = line.find_first_not_of(kBlanks, end);
  return end > begin && equals != std::string_view::npos && line[equals] == '=';
}

std::optional<DotStatement> DotStatements::next() {
  std::string statement;
  while (takeLine(statement)) {
    Nesting nesting;
    nesting.read(statement);
    std::string more;
    const auto append = [&] {
      statement += '\n';
      statement += more;
      nesting.read("\n");
      nesting.read(more);
    };
    bool isWrapped = endsWithBackslash(statement);
    while (isWrapped && takeLine(more)) {
      append();
      isWrapped = more.empty() || endsWithBackslash(more);
    }

    // In the one-line form only a backslash carries a value on: an open quote is a fault of its
    // line.
    const bool isTodays = hasTabBeforeBracket(statement);
    bool hasMoreLines = false;
    bool isCutOff = false;
    const auto goesOn = [&] {
      if (nesting.inQuotes()) return isTodays || hasMoreLines;
      return nesting.isOpen() && nextLineIsAttribute();
    };
    if (!endsLikeStatement(statement)) {
      while (goesOn()) {
        isCutOff = !takeLine(more);
        if (isCutOff) break;
        append();
        hasMoreLines = true;
      }
    }
    if (isCutOff && (isTodays || hasMoreLines)) continue;
    if (!hasMoreLines) return lineWithPositionsInFull(withoutWrapping(statement));
    std::size_t pos = 0;
    return takeDotRecord(statement, pos);
  }
  return std::nullopt;
}

}  // namespace quorbel
