#include "layout/dot_statements.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <istream>

#include "lattice/blanks.h"
#include "lattice/number_text.h"

namespace quorbel {
namespace {

bool isNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

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

/// The numbers of a list such as "1.2e+05,18" in full.
std::string listInFull(std::string_view list) {
  std::string full;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find_first_of(", ;"), list.size());
    full += inFull(list.substr(0, end));
    full += list.substr(end, 1);
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return full;
}

bool isPosition(std::string_view attribute) {
  return attribute == "bb" || attribute == "pos" || attribute == "lp";
}

/// The statement with the numbers of its positions in full.
std::string positionsInFull(const std::string& line) {
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
    while (name > 0 && isNameCharacter(line[name - 1])) --name;
    if (isPosition(std::string_view(line).substr(name, nameEnd - name))) {
      full.append(line, copied, open + 1 - copied);
      full += listInFull(std::string_view(line).substr(open + 1, close - open - 1));
      copied = close;
    }
    open = line.find('"', close + 1);
  }
  return full.append(line, copied);
}

/// A one-line statement that `dot` may have wrapped: the line ends go, the backslashes stay.
std::string withoutWrapping(const std::string& line) {
  std::string joined;
  for (const char c : line)
    if (c != '\n' || !endsWithBackslash(joined)) joined += c;
  return joined;
}

/// Takes the value in quotes that begins at `pos`, put together where `dot` wrapped it.
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
    value += escaped == '"' ? DotStatements::kInnerQuote : escaped;
  }
  ++pos;
  return value;
}

/// A statement of today's form in that of old, with what the layout reader looks for and no more.
std::string inOldForm(std::string_view statement) {
  const std::size_t bracket = statement.find('[');
  const std::size_t begin = std::min(statement.find_first_not_of(kBlanks), bracket);
  std::string_view head = statement.substr(begin, bracket - begin);
  head = head.substr(0, head.find_last_not_of(" \t\n") + 1);
  if (head == "node" || head == "edge") return "";

  std::size_t pos = bracket + 1;
  const DotAttributes attributes = takeDotAttributes(statement, pos);
  std::string line;
  const auto add = [&](const std::string& name, const std::string& value) {
    line += (line.empty() ? "" : ", ") + name + "=\"" + value + '"';
  };
  const auto addIfThere = [&](const std::string& name) {
    if (const auto found = attributes.find(name); found != attributes.end())
      add(name, found->second);
  };
  if (head == "graph") {
    addIfThere("bb");
  } else if (head.find("->") != std::string_view::npos) {
    for (const char* name : {"label", "comment", "lp"}) addIfThere(name);
  } else {
    for (const char* name : {"pos", "width", "height"}) {
      const auto found = attributes.find(name);
      add(name, found == attributes.end() ? "0,0" : found->second);
    }
  }
  return std::string(head) + " [" + line + "];";
}

}  // namespace

DotAttributes takeDotAttributes(std::string_view text, std::size_t& pos) {
  DotAttributes attributes;
  while (pos < text.size() && text[pos] != ']') {
    if (!isNameCharacter(text[pos])) {
      ++pos;
      continue;
    }
    const std::size_t begin = pos;
    while (pos < text.size() && isNameCharacter(text[pos])) ++pos;
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
    attributes[name] = isPosition(name) ? listInFull(value) : value;
  }
  return attributes;
}

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
  while (end < line.size() && isNameCharacter(line[end])) ++end;
  if (end == line.size() && m_Stream.eof()) return true;  // cut off amid its name
  const std::size_t equals = line.find_first_not_of(kBlanks, end);
  return end > begin && equals != std::string_view::npos && line[equals] == '=';
}

bool DotStatements::next(std::string& line) {
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

    // In the old form only a backslash carries a value on: an open quote is a fault of its line.
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
    line = hasMoreLines ? inOldForm(statement) : positionsInFull(withoutWrapping(statement));
    return true;
  }
  return false;
}

std::string withInnerQuotes(std::string text) {
  std::replace(text.begin(), text.end(), DotStatements::kInnerQuote, '"');
  return text;
}

}  // namespace quorbel
