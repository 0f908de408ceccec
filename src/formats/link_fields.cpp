#include "formats/link_fields.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

double logOfBase(double base) { return base == 0.0 || base == 1.0 ? 1.0 : std::log(base); }

bool isMinusInfinity(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower == "-inf" || lower == "-infinity";
}

std::string decoded(const SlfField& field) { return inUtf8(withoutEscapes(field.value)); }

/// The scales of a file whose logarithms times `logOfBase` are natural ones.
ScoreScales naturalScales(const SlfHeader& header, double logOfBase) {
  ScoreScales scales = header.scales;
  scales.wordPenalty = rounded(scales.wordPenalty * logOfBase);
  return scales;
}

/// The index of a name among sorted ones; FieldMeaning::kNone where it is none of them.
int indexIn(const std::vector<std::string>& names, const std::string& name) {
  const auto found = std::lower_bound(names.begin(), names.end(), name);
  return found != names.end() && *found == name ? static_cast<int>(found - names.begin())
                                                : FieldMeaning::kNone;
}

}  // namespace

bool isDialectFile(const SlfFile& file) {
  for (const SlfRecord& node : file.nodes)
    for (std::size_t i = 0; i < node.fieldCount; ++i)
      if (file.fields[node.firstField + i].meaning == ReaderKey::Word) return false;
  const auto isForeign = [](const SlfField& field) {
    return field.meaning == ReaderKey::Word && field.fragmentWord == SlfField::kNone &&
           !field.isDoubleQuoted;
  };
  return !file.fragmentWords.empty() &&
         std::none_of(file.fields.begin(), file.fields.end(), isForeign);
}

LinkFields::LinkFields(const SlfFile& file, WordLattice& lattice)
    : m_File(file),
      m_Lattice(lattice),
      m_Keys(file, lattice.isDialect),
      m_LogOfBase(logOfBase(file.header.base)),
      m_Formula(m_Keys.scoreNames(), naturalScales(file.header, m_LogOfBase)),
      m_Total(indexIn(m_Keys.scoreNames(), kTotalName)),
      m_Unshifted(indexIn(m_Keys.scoreNames(), kUnshiftedName)),
      m_ScorePlace(m_Keys.scoreNames().size(), 0),
      m_AttributePlace(m_Keys.attributeNames().size(), 0) {
  lattice.scoreNames = m_Keys.scoreNames();
  lattice.scales = naturalScales(file.header, m_LogOfBase);
}

std::string LinkFields::fill(WordLink& link, const SlfRecord* record, const SlfRecord& node) {
  link.word.text.clear();
  std::string error;
  if (record) error = addFields(link, *record, false);
  if (error.empty()) error = addFields(link, node, true);
  if (link.word.text.empty()) link.word.text = kNullWord;
  if (!error.empty()) return error;
  takeTotal(link);
  std::sort(link.scores.begin(), link.scores.end(),
            [](const NamedScore& a, const NamedScore& b) { return a.name < b.name; });
  return "";
}

void LinkFields::setScore(std::vector<NamedScore>& scores, int name, double value, bool isAdded) {
  std::size_t& place = m_ScorePlace[slot(name)];
  if (place >= scores.size() || scores[place].name != name) {
    place = scores.size();
    scores.push_back({name, value});
  } else {
    scores[place].value = isAdded ? rounded(scores[place].value + value) : value;
  }
}

/// An attribute that a link has of its own stays.
void LinkFields::addAttribute(std::vector<WordAttribute>& attributes, int index,
                              const std::string& value) {
  const std::string& name = m_Keys.attributeNames()[slot(index)];
  std::size_t& place = m_AttributePlace[slot(index)];
  if (place < attributes.size() && attributes[place].name == name) return;
  place = attributes.size();
  attributes.push_back({name, value});
}

std::string LinkFields::addFields(WordLink& link, const SlfRecord& record, bool isNode) {
  const bool hasWord = !link.word.text.empty();
  for (std::size_t i = 0; i < record.fieldCount; ++i) {
    const SlfField& field = m_File.fields[record.firstField + i];
    const FieldMeaning& meaning = m_Keys.of(field.key);
    std::string error;
    switch (meaning.kind) {
      case FieldMeaning::Kind::Word:
        if (!isNode || !hasWord) setWord(link.word, field);
        break;
      case FieldMeaning::Kind::Variant: {
        const std::optional<double> variant = numberOfField(field.value);
        addAttribute(link.word.attributes, meaning.attribute,
                     variant ? exactNumber(*variant) : decoded(field));
        break;
      }
      case FieldMeaning::Kind::LogScore:
      case FieldMeaning::Kind::Other:
        error = addScore(link, field, meaning, isNode);
        break;
      case FieldMeaning::Kind::Time:
      case FieldMeaning::Kind::Dropped:
        break;
    }
    if (!error.empty()) return "line " + std::to_string(record.line) + ": " + error;
  }
  return "";
}

void LinkFields::setWord(Word& word, const SlfField& field) const {
  if (field.fragmentWord == SlfField::kNone) {
    word.text = decoded(field);
    word.xml.clear();
    return;
  }
  const FragmentWord& fragment = m_File.fragmentWords[static_cast<std::size_t>(field.fragmentWord)];
  word.text = fragment.text;
  word.xml = fragment.isXml ? field.value : std::string_view();
}

std::string LinkFields::addScore(WordLink& link, const SlfField& field, const FieldMeaning& meaning,
                                 bool isNode) {
  double value = 0.0;
  if (meaning.kind == FieldMeaning::Kind::LogScore) {
    if (std::string error = logScore(field, value); !error.empty()) return error;
  } else if (const std::optional<double> number = numberOfField(field.value)) {
    value = *number;
  } else {
    addAttribute(link.word.attributes, meaning.attribute, decoded(field));
    return "";
  }
  setScore(link.scores, meaning.score, value, isNode);
  return "";
}

/// A log likelihood in natural logarithms.
std::string LinkFields::logScore(const SlfField& field, double& value) const {
  const auto isNo = [&](const char* what) {
    return std::string(field.key) + "=" + excerpt(decoded(field)) + " is no " + what;
  };
  const bool isProbability = m_File.header.base == 0.0;
  if (!isProbability && isMinusInfinity(field.value)) {
    value = kLogOfZero;
    return "";
  }
  const std::optional<double> number = numberOfField(field.value);
  if (!number) return isNo("number");
  if (isProbability && *number < 0.0) return isNo("probability (base=0)");
  if (isProbability)
    value = *number == 0.0 ? kLogOfZero : rounded(std::log(*number));
  else
    value = m_LogOfBase == 1.0 ? *number : rounded(*number * m_LogOfBase);
  return "";
}

/// The total is the sum of the scaled scores, unless the file brings one itself, which then is no
/// further score of the link. A file for the viewer may bring it twice, of which the one that was
/// not changed for the viewer's search counts.
void LinkFields::takeTotal(WordLink& link) const {
  link.total = m_Formula.of(link);
  for (const int name : {m_Total, m_Unshifted}) {
    if (name == FieldMeaning::kNone) continue;
    const auto own = std::find_if(link.scores.begin(), link.scores.end(),
                                  [&](const NamedScore& score) { return score.name == name; });
    if (own == link.scores.end()) continue;
    link.total = own->value;
    link.scores.erase(own);
  }
}

}  // namespace quorbel
