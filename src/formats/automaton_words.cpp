#include "formats/automaton_words.h"

#include <algorithm>
#include <optional>

#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

const std::string kNoLabel = "0";
const std::string kEpsilon = "<eps>";

bool isNone(const std::string& label) {
  return label.empty() || label == kNoLabel || label == kEpsilon;
}

std::string atLineOf(const AutomatonArc& arc) {
  return arc.line > 0 ? "line " + std::to_string(arc.line) + ": " : "";
}

/// Finds the words of labels that are all numbers.
class NumberedWords {
 public:
  NumberedWords(const Automaton& automaton, const WordTable* table)
      : m_Automaton(automaton), m_Table(table) {}

  /// The word of a label; null when there is none.
  const std::string* find(const std::string& label) const {
    const std::optional<int> number = wholeInteger(label);
    if (!number) return nullptr;  // beyond the range of the type
    if (m_Table) return m_Table->word(*number);
    const auto found = m_Automaton.words.find(*number);
    return found == m_Automaton.words.end() ? nullptr : &found->second;
  }

  std::string noWord(const AutomatonArc& arc) const {
    return atLineOf(arc) + "the number " + arc.label + " has no word in " +
           (m_Table ? m_Table->path() : "the file's own table");
  }

 private:
  const Automaton& m_Automaton;
  const WordTable* m_Table;
};

bool isNumber(const AutomatonArc& arc) {
  return isNone(arc.label) || wholeInteger(arc.label).has_value();
}

}  // namespace

std::string nameLinks(const Automaton& automaton, WordTable* table, WordLattice& lattice) {
  // One long word of a table on thousands of arcs would fill any memory.
  constexpr std::size_t kMostTakenOver = std::size_t{16} << 20u;
  constexpr std::size_t kLongWord = 64;
  const std::size_t mostTakenOver = std::max(kMostTakenOver, kLongWord * automaton.arcs.size());

  const bool areNumbers = std::all_of(automaton.arcs.begin(), automaton.arcs.end(), isNumber) &&
                          std::any_of(automaton.arcs.begin(), automaton.arcs.end(),
                                      [](const AutomatonArc& arc) { return !isNone(arc.label); });
  if (areNumbers && table) {
    if (std::string error = table->load(); !error.empty()) return error;
  }
  const bool hasTable = areNumbers && (table || !automaton.words.empty());
  const NumberedWords words(automaton, table);
  std::size_t takenOver = 0;
  for (std::size_t i = 0; i < automaton.arcs.size(); ++i) {
    const AutomatonArc& arc = automaton.arcs[i];
    if (isNone(arc.label)) continue;  // a link's word is none to begin with
    Word& word = lattice.links[i].word;
    if (!hasTable) {
      word.text = inUtf8(arc.label);
      continue;
    }
    const std::string* found = words.find(arc.label);
    if (!found) return words.noWord(arc);
    if (found->empty() || *found == kEpsilon) continue;
    takenOver += found->size();
    if (takenOver > mostTakenOver)
      return atLineOf(arc) + "the words up to here are too long for any memory";
    word.text = *found;
  }
  if (areNumbers && !hasTable)
    lattice.notes.emplace_back(
        "words are shown as numbers, for want of a table of words; --words FILE names one");
  return "";
}

}  // namespace quorbel
