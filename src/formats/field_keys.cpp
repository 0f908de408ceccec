#include "formats/field_keys.h"

#include <algorithm>
#include <cctype>

#include "formats/dialect_word.h"
#include "lattice/reading_rules.h"
#include "words/word_lattice.h"

namespace quorbel {
namespace {

constexpr std::string_view kPrefix = "x_";

bool isPlain(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.' || c == '-';
}

std::string plainName(std::string_view key) {
  std::string name(key);
  std::replace_if(
      name.begin(), name.end(), [](char c) { return !isPlain(c); }, '_');
  return name;
}

std::string_view shortKey(std::string_view key) {
  if (key == "acoustic") return "a";
  if (key == "language") return "l";
  if (key == "ngram") return "n";
  if (key == "var") return "v";
  if (key == "div") return "d";
  return key;
}

FieldMeaning::Kind kindOf(std::string_view key, bool isDialect) {
  const ReaderKey meaning = readerKey(key);
  if (meaning == ReaderKey::Word) return FieldMeaning::Kind::Word;
  if (meaning == ReaderKey::Time) return FieldMeaning::Kind::Time;
  if (key == "a" || key == "l" || key == "n" || key == "r") return FieldMeaning::Kind::LogScore;
  if (key == "v" && !isDialect) return FieldMeaning::Kind::Variant;
  if (key == kPosteriorName && isDialect) return FieldMeaning::Kind::Dropped;
  return FieldMeaning::Kind::Other;
}

}  // namespace

std::string viewerScoreName(std::string_view key) {
  std::string name = plainName(key);
  const bool isTaken = readerKey(name) != ReaderKey::Score || name == kPosteriorName;
  return isTaken || !(kTotalName < name) ? std::string(kPrefix) + name : name;
}

std::string attributeNameOf(std::string_view key) {
  std::string name = plainName(key);
  const unsigned char first = name.empty() ? '\0' : static_cast<unsigned char>(name[0]);
  const bool isXmlName = std::isalpha(first) || first == '_';
  return isXmlName && isFreeAttribute(name) ? name : std::string(kPrefix) + name;
}

FieldMeaning& FieldKeys::of(std::string_view key) {
  const auto [found, isNew] = m_Known.try_emplace(key);
  FieldMeaning& meaning = found->second;
  if (!isNew) return meaning;
  const std::string_view name = shortKey(key);
  meaning.kind = kindOf(name, m_IsDialect);
  const bool isTotal = m_IsDialect && name == kTotalName;
  meaning.scoreName = isTotal ? kTotalName : viewerScoreName(name);
  meaning.attributeName = attributeNameOf(name);
  return meaning;
}

int FieldKeys::scoreOf(FieldMeaning& meaning, std::vector<std::string>& scoreNames) const {
  if (meaning.score >= 0) return meaning.score;
  const auto found = std::find(scoreNames.begin(), scoreNames.end(), meaning.scoreName);
  meaning.score = static_cast<int>(found - scoreNames.begin());
  if (found == scoreNames.end()) scoreNames.push_back(meaning.scoreName);
  return meaning.score;
}

}  // namespace quorbel
