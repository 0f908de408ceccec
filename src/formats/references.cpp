#include "formats/references.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <utility>

#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

constexpr std::size_t kAmbiguous = std::numeric_limits<std::size_t>::max();
constexpr const char* kBlanks = " \t\r\f\v";
constexpr std::string_view kByteOrderMark =
    "\xEF\xBB\xBF";  // of an editor that writes UTF-8 with it

std::string atLine(std::size_t index, const std::string& reason) {
  return "line " + std::to_string(index + 1) + ": " + reason;
}

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(inUtf8(std::string(text.substr(0, end))));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::vector<std::string> fieldsOf(std::string_view line) {
  std::vector<std::string> fields;
  for (;;) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.empty()) return fields;
    const std::size_t end = std::min(line.find_first_of(kBlanks), line.size());
    fields.emplace_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

bool isBlank(const std::string& line) {
  return line.find_first_not_of(kBlanks) == std::string::npos;
}

std::string withoutBlanksAround(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return "";
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

/// Whether a line of NIST's says nothing, or is a comment.
bool isNoTrn(const std::string& line) { return isBlank(line) || line.substr(0, 2) == ";;"; }

/// Where the name of the utterance stands in a line of NIST's: from its bracket to that behind it;
/// no place where it is no such line.
std::pair<std::size_t, std::size_t> nameInTrn(const std::string& line) {
  const std::size_t end = line.find_last_not_of(kBlanks);
  const std::size_t begin = line.rfind('(');
  const bool isNamed = begin != std::string::npos && line[end] == ')' && end > begin + 1;
  return isNamed ? std::pair(begin, end) : std::pair(std::string::npos, std::string::npos);
}

bool isTrn(const std::vector<std::string>& lines) {
  std::size_t named = 0;
  for (const std::string& line : lines) {
    if (isNoTrn(line)) continue;
    if (nameInTrn(line).first == std::string::npos) return false;
    ++named;
  }
  return named > 0;
}

/// A field of a label file. Quotes may have blanks in them; a backslash begins an escape.
struct LabelField {
  std::string text;
  bool isQuoted = false;
};

std::vector<LabelField> labelFieldsOf(std::string_view line) {
  std::vector<LabelField> fields;
  for (;;) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.empty()) return fields;
    LabelField field;
    field.isQuoted = line[0] == '"' || line[0] == '\'';
    const std::string ends = field.isQuoted ? std::string(1, line[0]) : kBlanks;
    std::size_t end = field.isQuoted ? 1 : 0;
    while (end < line.size() && ends.find(line[end]) == std::string::npos)
      end += line[end] == '\\' && end + 1 < line.size() ? 2 : 1;
    const std::size_t begin = field.isQuoted ? 1 : 0;
    field.text = inUtf8(withoutEscapes(line.substr(begin, end - begin)));
    fields.push_back(std::move(field));
    line.remove_prefix(std::min(end + begin, line.size()));
  }
}

/// The word on a line of a label file: behind start and end, if these are there.
std::string wordOfLabel(const std::vector<LabelField>& fields) {
  std::size_t word = 0;
  while (word < 2 && word + 1 < fields.size() && !fields[word].isQuoted &&
         wholeNumber(fields[word].text))
    ++word;
  return fields[word].text;
}

}  // namespace

std::string stemOf(const std::string& path) {
  std::filesystem::path name = std::filesystem::path(path).filename();
  if (name.extension() == ".gz") name = name.stem();
  return name.stem().string();
}

std::string References::parse(std::string_view text) {
  if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
    text.remove_prefix(kByteOrderMark.size());
  const std::vector<std::string> lines = linesOf(text);
  m_IsLabelFile = !lines.empty() && lines[0].substr(0, 7) == "#!MLF!#";
  if (m_IsLabelFile) return parseLabels(lines);
  return isTrn(lines) ? parseTrn(lines) : parseText(lines);
}

std::string References::parseLabels(const std::vector<std::string>& lines) {
  bool isInside = false;
  bool isAlternative = false;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const std::vector<LabelField> fields = labelFieldsOf(lines[i]);
    if (fields.empty()) continue;
    if (!isInside) {
      if (!fields[0].isQuoted) return atLine(i, excerpt(lines[i]) + " is no name in quotes");
      if (fields.size() > 1) return atLine(i, "labels in other files are not read");
      if (std::string error = add(i, fields[0].text, {}); !error.empty()) return error;
      addAlias(stemOf(fields[0].text));
      isInside = true;
      isAlternative = false;
    } else if (fields[0].text == "." && !fields[0].isQuoted) {
      isInside = false;
    } else if (fields[0].text == "///" && !fields[0].isQuoted) {
      isAlternative = true;
    } else if (!isAlternative) {
      m_References.back().words.push_back(wordOfLabel(fields));
    }
  }
  return "";
}

std::string References::parseTrn(const std::vector<std::string>& lines) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (isNoTrn(lines[i])) continue;
    const auto [begin, end] = nameInTrn(lines[i]);
    std::vector<std::string> words = fieldsOf(lines[i].substr(0, begin));
    if (std::find(words.begin(), words.end(), "{") != words.end())
      return atLine(i, "alternatives in braces are not read");
    const std::string name = withoutBlanksAround(lines[i].substr(begin + 1, end - begin - 1));
    if (std::string error = add(i, name, std::move(words)); !error.empty()) return error;
  }
  return "";
}

std::string References::parseText(const std::vector<std::string>& lines) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::vector<std::string> fields = fieldsOf(lines[i]);
    if (fields.empty()) continue;
    m_PlainWords = ++count == 1 ? fields : std::vector<std::string>();
    const std::string name = fields[0];
    fields.erase(fields.begin());
    if (std::string error = add(i, name, std::move(fields)); !error.empty()) return error;
  }
  return "";
}

std::string References::add(std::size_t line, const std::string& name,
                            std::vector<std::string> words) {
  if (!m_Names.emplace(name, m_References.size()).second)
    return atLine(line, "a second reference for " + excerpt(name));
  m_References.push_back({name, std::move(words)});
  return "";
}

void References::addAlias(const std::string& name) {
  const auto [known, isNew] = m_Aliases.emplace(name, m_References.size() - 1);
  if (!isNew) known->second = kAmbiguous;
}

const std::vector<std::string>* References::take(std::size_t index) {
  m_References[index].isUsed = true;
  return &m_References[index].words;
}

const std::vector<std::string>* References::find(const LatticeNames& names) {
  for (const std::string& name : {names.utterance, names.path, stemOf(names.path)})
    if (const auto found = m_Names.find(name); !name.empty() && found != m_Names.end())
      return take(found->second);
  for (const std::string& name : {names.utterance, stemOf(names.utterance), stemOf(names.path)})
    if (const auto found = m_Aliases.find(name);
        !name.empty() && found != m_Aliases.end() && found->second != kAmbiguous)
      return take(found->second);
  if (!names.isAlone || m_PlainWords.empty()) return nullptr;
  m_References[0].isUsed = true;
  return &m_PlainWords;
}

std::vector<std::string> References::unused() const {
  std::vector<std::string> names;
  for (const Reference& reference : m_References)
    if (!reference.isUsed) names.push_back(reference.name);
  return names;
}

}  // namespace quorbel
