#include "formats/slf_file.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <utility>

#include "formats/slf_checks.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

std::string inLowerCase(std::string_view key) {
  std::string lower(key);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

/// Puts the lines of one text into a file's records.
class SlfReading {
 public:
  explicit SlfReading(SlfFile& file) : m_File(file) {}

  std::string read();

 private:
  enum class Record { Header, Node, Link };

  std::string readLine(std::string_view text);
  std::string takeIndex(std::string_view text);
  std::string take(SlfToken& token);
  std::string takeHeader(const SlfToken& token);
  std::string takeInteger(const SlfToken& token, int& number) const;
  std::string takeNumber(const SlfToken& token, double& number) const;
  std::string takeCount(const SlfToken& token, std::optional<int>& count) const;
  std::string addField(SlfToken& token);
  std::string endRecord();
  std::string takeId(std::unordered_map<int, int>& lineOf, const std::string& name) const;

  SlfFile& m_File;
  int m_Line = 0;
  bool m_Ended = false;  ///< a line "." ended the lattice
  Record m_Type = Record::Header;
  SlfRecord m_Record;
  bool m_HasStart = false;
  bool m_HasEnd = false;
  std::string m_IgnoredText;
  std::string* m_Text = nullptr;  ///< a text of the header that further words of the line belong to
  std::vector<SlfRecord> m_Nodes;  ///< in the order of the file
  std::unordered_map<int, int> m_LineOfNode;
  std::unordered_map<int, int> m_LineOfLink;
};

std::string SlfReading::read() {
  std::string_view rest = m_File.bytes;
  if (rest.substr(0, 3) == "\xEF\xBB\xBF") rest.remove_prefix(3);  // a byte order mark
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    ++m_Line;
    if (std::string error = readLine(line); !error.empty())
      return "line " + std::to_string(m_Line) + ": " + error;
  }
  return bringTogether(m_File, m_Nodes, m_Line);
}

std::string SlfReading::readLine(std::string_view text) {
  m_Type = Record::Header;
  m_Record = SlfRecord();
  m_Record.line = m_Line;
  m_Record.firstField = m_File.fields.size();
  m_HasStart = m_HasEnd = false;
  m_Text = nullptr;
  SlfLine line(text);
  SlfToken token;
  std::string error = takeIndex(text);
  while (error.empty() && line.next(token, error)) {
    if (m_Ended) return "the lattice ended before; only files with one lattice can be read";
    error = take(token);
    if (!error.empty() || m_Ended) break;
  }
  if (!error.empty()) return error;
  if (text.find('\0') != std::string_view::npos) return "a zero byte; only text can be read";
  return endRecord();
}

/// What makes a line a node or a link may stand behind other fields of theirs.
std::string SlfReading::takeIndex(std::string_view text) {
  SlfLine line(text);
  SlfToken token;
  std::string laterError;
  bool isFirst = true;
  for (; line.next(token, laterError); isFirst = false) {
    if (token.meaning == ReaderKey::NodeCount || token.meaning == ReaderKey::LinkCount)
      return "";  // the header's
    if (token.meaning == ReaderKey::NodeIndex || token.meaning == ReaderKey::LinkId)
      return isFirst ? "" : take(token);
  }
  return "";
}

std::string SlfReading::take(SlfToken& token) {
  if (token.form == SlfToken::Form::Stray) {
    if (m_Type == Record::Header && token.value == "." && !m_Text) {
      m_Ended = true;
      return "";
    }
    if (!m_Text) return "\"" + excerpt(token.value) + "\" is no field KEY=VALUE";
    *m_Text += " " + inUtf8(withoutEscapes(token.value));
    return "";
  }
  if (token.meaning == ReaderKey::NodeIndex) {
    m_Type = Record::Node;
    return takeInteger(token, m_Record.id);
  }
  if (token.meaning == ReaderKey::LinkId) {
    m_Type = Record::Link;
    return takeInteger(token, m_Record.id);
  }
  if (m_Type == Record::Header) return takeHeader(token);
  if (m_Type == Record::Link && token.meaning == ReaderKey::LinkStart) {
    m_HasStart = true;
    return takeInteger(token, m_Record.start);
  }
  if (m_Type == Record::Link && token.meaning == ReaderKey::LinkEnd) {
    m_HasEnd = true;
    return takeInteger(token, m_Record.end);
  }
  const bool isSublattice =
      m_Type == Record::Node && (token.key == "L" || token.key == "SUBLAT" || token.key == "SUBS");
  if (isSublattice)
    return std::string(token.key) + "=" + excerpt(token.value) + " makes node " +
           std::to_string(m_Record.id) +
           " stand for a sub-lattice (SUBLAT), and these are not supported";
  return addField(token);
}

std::string SlfReading::takeHeader(const SlfToken& token) {
  SlfHeader& header = m_File.header;
  m_Text = nullptr;
  if (token.meaning == ReaderKey::NodeCount) {
    header.nodeCountLine = m_Line;
    return takeCount(token, header.nodeCount);
  }
  if (token.meaning == ReaderKey::LinkCount) {
    header.linkCountLine = m_Line;
    return takeCount(token, header.linkCount);
  }
  if (token.key == "S" || token.key == "SUBLAT")
    return std::string(token.key) + "=" + excerpt(token.value) +
           " begins a sub-lattice (SUBLAT), and these are not supported";
  const std::string key = inLowerCase(token.key);
  const auto takeEndPoint = [&](std::optional<int>& node, int& line) {
    line = m_Line;
    return takeInteger(token, node.emplace());
  };
  if (key == "start") return takeEndPoint(header.start, header.startLine);
  if (key == "end") return takeEndPoint(header.end, header.endLine);
  if (key == "base") {
    std::string error = takeNumber(token, header.base);
    if (error.empty() && header.base < 0.0)
      error = "base=" + excerpt(token.value) + " is negative and no base of logarithms";
    return error;
  }
  if (key == "tscale") {
    std::string error = takeNumber(token, header.timeScale);
    if (error.empty() && header.timeScale <= 0.0)
      error = "tscale=" + excerpt(token.value) + " is no scale of times";
    return error;
  }
  if (key == "acscale") return takeNumber(token, header.scales.acoustic);
  if (key == "lmscale") return takeNumber(token, header.scales.language);
  if (key == "prscale") return takeNumber(token, header.scales.pronunciation);
  if (key == "wdpenalty") return takeNumber(token, header.scales.wordPenalty);
  if (key == "dir") {
    const std::string direction = inLowerCase(token.value);
    header.isBackward = direction == "b";
    return direction == "f" || direction == "b"
               ? ""
               : "dir=" + excerpt(token.value) + " is neither f nor b";
  }
  if (key == "v" || key == "version") {
    const std::optional<double> version = numberOfField(token.value);
    return version == 1.0 || version == 1.1 ? ""
                                            : "version " + excerpt(token.value) +
                                                  " of the format is not known, only 1.0 and 1.1";
  }
  // Other fields play no part; a text may go on behind a blank.
  m_IgnoredText.clear();
  m_Text = &m_IgnoredText;
  if (key == "u" || key == "utterance") {
    header.utterance = inUtf8(withoutEscapes(token.value));
    m_Text = &header.utterance;
  }
  return "";
}

std::string SlfReading::takeInteger(const SlfToken& token, int& number) const {
  const std::optional<int> value = integerOfField(token.value);
  if (!value || *value < 0)
    return std::string(token.key) + "=" + excerpt(token.value) + " is no number from 0 on";
  number = *value;
  return "";
}

std::string SlfReading::takeNumber(const SlfToken& token, double& number) const {
  const std::optional<double> value = numberOfField(token.value);
  if (!value) return std::string(token.key) + "=" + excerpt(token.value) + " is no number";
  number = *value;
  return "";
}

std::string SlfReading::takeCount(const SlfToken& token, std::optional<int>& count) const {
  if (count) return std::string(token.key) + "= is given for the second time";
  return takeInteger(token, count.emplace());
}

std::string SlfReading::addField(SlfToken& token) {
  constexpr std::size_t kMostFields = 1000000;
  if (m_File.fields.size() - m_Record.firstField == kMostFields)
    return "more than " + std::to_string(kMostFields) + " fields, which is beyond any lattice";
  SlfField field;
  field.key = token.key;
  field.value = token.value;
  field.meaning = token.meaning;
  field.isDoubleQuoted = token.form == SlfToken::Form::DoubleQuoted;
  if (token.form == SlfToken::Form::Fragment) {
    field.fragmentWord = static_cast<int>(m_File.fragmentWords.size());
    m_File.fragmentWords.push_back(std::move(token.fragmentWord));
  }
  m_File.fields.push_back(field);
  return "";
}

/// Refuses a node or link that was there before: a second one is no more to be stored.
std::string SlfReading::takeId(std::unordered_map<int, int>& lineOf,
                               const std::string& name) const {
  const auto [known, isNew] = lineOf.emplace(m_Record.id, m_Line);
  return isNew ? "" : name + " was given before, on line " + std::to_string(known->second);
}

std::string SlfReading::endRecord() {
  if (m_Type == Record::Header) return "";
  m_Record.fieldCount = m_File.fields.size() - m_Record.firstField;
  if (m_Type == Record::Node) {
    m_Nodes.push_back(m_Record);
    return takeId(m_LineOfNode, "node " + std::to_string(m_Record.id));
  }
  const std::string link = "link " + std::to_string(m_Record.id);
  if (!m_HasStart) return link + " has no start node (S=)";
  if (!m_HasEnd) return link + " has no end node (E=)";
  m_File.links.push_back(m_Record);
  return takeId(m_LineOfLink, link);
}

}  // namespace

std::string parseSlf(SlfFile& file) { return SlfReading(file).read(); }

}  // namespace quorbel
