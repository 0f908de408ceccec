#include "words/total_formula.h"

#include <algorithm>

#include "words/decimal.h"

namespace quorbel {
namespace {

int placeOf(const std::string& name, const std::vector<std::string>& names) {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

}  // namespace

TotalFormula::TotalFormula(const std::vector<std::string>& scoreNames, const ScoreScales& scales)
    : m_Scales(scales),
      m_Acoustic(placeOf("a", scoreNames)),
      m_Language(placeOf("l", scoreNames)),
      m_Pronunciation(placeOf("r", scoreNames)) {}

double TotalFormula::of(const WordLink& link) const {
  double total = link.word.isNull() ? 0.0 : m_Scales.wordPenalty;
  for (const NamedScore& score : link.scores) {
    if (score.name == m_Acoustic) total += m_Scales.acoustic * score.value;
    if (score.name == m_Language) total += m_Scales.language * score.value;
    if (score.name == m_Pronunciation) total += m_Scales.pronunciation * score.value;
  }
  return rounded(total);
}

bool TotalFormula::hasScores(const WordLink& link) const {
  return std::any_of(link.scores.begin(), link.scores.end(), [&](const NamedScore& score) {
    return score.name == m_Acoustic || score.name == m_Language || score.name == m_Pronunciation;
  });
}

}  // namespace quorbel
