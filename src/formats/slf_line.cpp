#include "formats/slf_line.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

#include "formats/dialect_word.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

}  // namespace

std::size_t SlfLine::skipBlanks(std::size_t pos) const {
  while (pos < m_Text.size() && isBlank(m_Text[pos])) ++pos;
  return pos;
}

bool SlfLine::endsAt(std::size_t pos) const { return pos >= m_Text.size() || isBlank(m_Text[pos]); }

bool SlfLine::next(SlfToken& token, std::string& error) {
  m_Pos = skipBlanks(m_Pos);
  if (m_Pos == m_Text.size() || m_Text[m_Pos] == '#') return false;
  token.form = SlfToken::Form::Plain;
  if (!takeKey(token, error)) return false;
  token.meaning = readerKey(token.key);
  return token.form == SlfToken::Form::Stray || takeValue(token, error);
}

bool SlfLine::takeKey(SlfToken& token, std::string& error) {
  const std::size_t begin = m_Pos;
  std::size_t end = begin;
  while (!endsAt(end) && m_Text[end] != '=' && m_Text[end] != '~') ++end;
  token.key = m_Text.substr(begin, end - begin);
  const bool isName = std::all_of(token.key.begin(), token.key.end(), isNameCharacter);
  if (end < m_Text.size() && m_Text[end] == '~' && !token.key.empty() && isName) {
    error =
        "the field " + excerpt(token.key) + "~ has a binary value; only text lattices can be read";
    return false;
  }
  while (!endsAt(end) && m_Text[end] != '=') ++end;
  const std::size_t equals = skipBlanks(end);
  if (equals < m_Text.size() && m_Text[equals] == '=' && end > begin) {
    token.key = m_Text.substr(begin, end - begin);
    m_Pos = equals + 1;
    return true;
  }
  while (!endsAt(end)) ++end;
  token.form = SlfToken::Form::Stray;
  token.value = m_Text.substr(begin, end - begin);
  m_Pos = end;
  return true;
}

bool SlfLine::takeValue(SlfToken& token, std::string& error) {
  if (m_Pos < m_Text.size() && isBlank(m_Text[m_Pos])) {
    // "key= value" is a value behind a blank, "key= next=value" an empty one.
    const std::size_t begin = skipBlanks(m_Pos);
    std::size_t end = begin;
    while (!endsAt(end) && m_Text[end] != '=') ++end;
    const bool isQuoted = begin < m_Text.size() &&
                          (m_Text[begin] == '"' || m_Text[begin] == '\'' || m_Text[begin] == '<');
    const std::size_t next = skipBlanks(end);
    const bool isKey = next < m_Text.size() && m_Text[next] == '=';
    if (isQuoted || (!isKey && begin < m_Text.size() && m_Text[begin] != '#')) m_Pos = begin;
  }
  const char first = m_Pos < m_Text.size() ? m_Text[m_Pos] : ' ';
  if (first == '<' && token.meaning == ReaderKey::Word) {
    if (takeFragment(token, error)) return true;
    if (!error.empty()) return false;
  }
  if (first == '"' || first == '\'') {
    if (takeQuoted(token, error)) return true;
    if (!error.empty()) return false;
  }
  takePlain(token);
  return true;
}

bool SlfLine::takeFragment(SlfToken& token, std::string& error) {
  if (m_HadFragment) return false;
  m_HadFragment = true;
  const std::optional<std::size_t> end = fragmentEnd(m_Text, m_Pos);
  if (!end) return false;
  const std::string_view fragment = m_Text.substr(m_Pos, *end - m_Pos);
  if (hasTooManyAttributes(fragment)) {
    error = "the word " + excerpt(fragment) + " has more than " +
            std::to_string(kMostWordAttributes) + " attributes in one element";
    return false;
  }
  std::optional<std::string> word = wordOfFragment(fragment);
  if (!word && (m_Pos + fragment.size() <= plainEnd(m_Pos) || isFieldBehindWord())) return false;
  // A fragment that more brackets close than open would swallow what is written behind it.
  token.fragmentWord.isXml = word && std::count(fragment.begin(), fragment.end(), '<') ==
                                         std::count(fragment.begin(), fragment.end(), '>');
  token.fragmentWord.text = word ? std::move(*word) : inUtf8(std::string(fragment));
  token.value = fragment;
  token.form = SlfToken::Form::Fragment;
  m_Pos = *end;
  return true;
}

/// Whether the line goes on with a field, or ends, behind the unquoted word at the present place.
bool SlfLine::isFieldBehindWord() const {
  SlfLine rest(m_Text);
  rest.m_Pos = skipBlanks(plainEnd(m_Pos));
  if (rest.m_Pos == m_Text.size() || m_Text[rest.m_Pos] == '#') return true;
  SlfToken token;
  std::string error;
  return !rest.takeKey(token, error) || token.form != SlfToken::Form::Stray;
}

/// Takes a quoted value, up to the quote that ends it and the field. A word such as 'cause begins
/// with an apostrophe that none follows: it is taken as it is.
bool SlfLine::takeQuoted(SlfToken& token, std::string& error) {
  const char quote = m_Text[m_Pos];
  if (quote == '\'' && m_HasNoMoreQuotes) return false;
  for (std::size_t end = m_Pos + 1; end < m_Text.size(); ++end) {
    if (m_Text[end] == '\\') {
      ++end;
    } else if (m_Text[end] == quote) {
      if (quote == '\'' && !endsAt(end + 1)) continue;
      token.value = m_Text.substr(m_Pos + 1, end - m_Pos - 1);
      token.form = quote == '"' ? SlfToken::Form::DoubleQuoted : SlfToken::Form::SingleQuoted;
      m_Pos = end + 1;
      return true;
    }
  }
  if (quote == '"')
    error = "the value of " + excerpt(token.key) + " begins with a double quote that none ends";
  else
    m_HasNoMoreQuotes = true;
  return false;
}

std::size_t SlfLine::plainEnd(std::size_t pos) const {
  while (!endsAt(pos)) pos += m_Text[pos] == '\\' && !endsAt(pos + 1) ? 2 : 1;
  return pos;
}

void SlfLine::takePlain(SlfToken& token) {
  const std::size_t end = plainEnd(m_Pos);
  token.value = m_Text.substr(m_Pos, end - m_Pos);
  m_Pos = end;
}

}  // namespace quorbel
