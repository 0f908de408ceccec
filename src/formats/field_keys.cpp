#include "formats/field_keys.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <unordered_set>
#include <utility>

#include "formats/dialect_word.h"
#include "lattice/reading_rules.h"
#include "words/decimal.h"
#include "words/word_lattice.h"

namespace quorbel {
namespace {

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

/// Whether the viewer cannot show a score of this name: its reader takes it for something else, it
/// would come before the total, or it is one that links have anyhow.
bool isTakenScore(const std::string& name) {
  return readerKey(name) != ReaderKey::Score || name == kPosteriorName || name == kUnshiftedName ||
         name <= kTotalName;
}

/// The dialect's own totals are scores of the file; see LinkFields.
bool isTakenInDialect(const std::string& name) {
  return name != kTotalName && name != kUnshiftedName && isTakenScore(name);
}

/// Whether a word's element cannot have an attribute of this name.
bool isTakenAttribute(const std::string& name) {
  const unsigned char first = name.empty() ? '\0' : static_cast<unsigned char>(name[0]);
  return (!std::isalpha(first) && first != '_') || !isFreeAttribute(name);
}

/// Gives each key a name of its own. A key that can be a name is that name; then the others, in
/// byte order, get the first that is free of: the key with "_" for what cannot stand in a name, and
/// the same behind "x_", "x2_", "x3_" and so on.
class Naming {
 public:
  using IsTaken = bool (*)(const std::string& name);

  explicit Naming(IsTaken isTaken) : m_IsTaken(isTaken) {}

  /// For the keys in byte order, their names in the same order.
  std::vector<std::string> namesOf(const std::vector<std::string_view>& keys) {
    std::vector<std::string> names(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const std::string name = plainName(keys[i]);
      if (name == keys[i] && take(name)) names[i] = name;
    }
    for (std::size_t i = 0; i < keys.size(); ++i)
      if (names[i].empty()) names[i] = freeName(plainName(keys[i]));
    return names;
  }

 private:
  bool take(const std::string& name) { return !m_IsTaken(name) && m_Used.insert(name).second; }

  std::string freeName(const std::string& plain) {
    if (take(plain)) return plain;
    for (int& number = m_LastNumber[plain];;) {
      ++number;
      std::string name = "x" + (number == 1 ? "" : std::to_string(number)) + "_" + plain;
      if (take(name)) return name;
    }
  }

  const IsTaken m_IsTaken;
  std::unordered_set<std::string> m_Used;
  std::unordered_map<std::string, int> m_LastNumber;  ///< of the prefix, for each plain name
};

/// Puts the names in byte order; `places` says where each has gone.
std::vector<int> sortNames(std::vector<std::string>& names) {
  std::vector<int> order(names.size());
  std::iota(order.begin(), order.end(), 0);
  const auto at = [](auto& list, int i) -> auto& { return list[static_cast<std::size_t>(i)]; };
  std::sort(order.begin(), order.end(), [&](int a, int b) { return at(names, a) < at(names, b); });
  std::vector<std::string> sorted;
  std::vector<int> places(names.size());
  for (const int i : order) {
    at(places, i) = static_cast<int>(sorted.size());
    sorted.push_back(std::move(at(names, i)));
  }
  names = std::move(sorted);
  return places;
}

}  // namespace

FieldKeys::FieldKeys(const SlfFile& file, bool isDialect) {
  using Kind = FieldMeaning::Kind;
  constexpr int kUsed = 0;
  for (const SlfField& field : file.fields) {
    const auto [found, isNew] = m_Known.try_emplace(field.key);
    FieldMeaning& meaning = found->second;
    if (isNew) meaning.kind = kindOf(shortKey(field.key), isDialect);
    if (meaning.kind == Kind::LogScore) {
      meaning.score = kUsed;
    } else if (meaning.kind == Kind::Variant) {
      meaning.attribute = kUsed;
    } else if (meaning.kind == Kind::Other) {
      (numberOfField(field.value) ? meaning.score : meaning.attribute) = kUsed;
    }
  }
  nameKeys(isDialect ? isTakenInDialect : isTakenScore, &FieldMeaning::score, m_ScoreNames);
  nameKeys(isTakenAttribute, &FieldMeaning::attribute, m_AttributeNames);
}

/// Names the keys that are used so, and puts the index of its name into the meaning of each.
void FieldKeys::nameKeys(bool (*isTaken)(const std::string&), int FieldMeaning::*index,
                         std::vector<std::string>& names) {
  std::vector<std::string_view> keys;
  for (const auto& [key, meaning] : m_Known)
    if (meaning.*index != FieldMeaning::kNone) keys.push_back(shortKey(key));
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  names = Naming(isTaken).namesOf(keys);
  const std::vector<int> places = sortNames(names);
  for (auto& [key, meaning] : m_Known) {
    if (meaning.*index == FieldMeaning::kNone) continue;
    const auto place = std::lower_bound(keys.begin(), keys.end(), shortKey(key));
    meaning.*index = places[static_cast<std::size_t>(place - keys.begin())];
  }
}

}  // namespace quorbel
