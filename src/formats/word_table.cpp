#include "formats/word_table.h"

#include "formats/columns.h"
#include "formats/input_file.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {

std::string WordTable::load() {
  const std::lock_guard<std::mutex> lock(m_Mutex);
  if (!m_IsRead) {
    m_IsRead = true;
    if (m_Error = read(); !m_Error.empty()) m_Error = m_Path + ": " + m_Error;
  }
  return m_Error;
}

const std::string* WordTable::word(int number) const {
  const auto found = m_Words.find(number);
  return found == m_Words.end() ? nullptr : &found->second;
}

std::string WordTable::read() {
  InputFile file;
  std::string error = file.open(m_Path);
  if (!error.empty()) return error;
  std::size_t size = 0;
  for (std::string line; file.nextLine(line, error);) {
    size += line.size() + 1;
    if (size > kMostBytes) return "more than 256 MiB of text, which is beyond any table of words";
    error = takeLine(line);
    if (!error.empty()) return "line " + std::to_string(file.lineNumber()) + ": " + error;
  }
  return error;
}

std::string WordTable::takeLine(const std::string& line) {
  const Columns columns(line);
  if (columns.count() == 0) return "";
  const std::optional<int> number =
      columns.count() == 2 ? wholeInteger(columns[1]) : std::optional<int>();
  if (!number || *number < 0)
    return "\"" + excerpt(line) + "\" is no line WORD NUMBER of a table of words";
  const bool isNew = m_Words.emplace(*number, inUtf8(std::string(columns[0]))).second;
  return isNew ? "" : "the number " + std::to_string(*number) + " has a word already";
}

}  // namespace quorbel
