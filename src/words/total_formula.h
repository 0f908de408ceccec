#pragma once

// How the scores of a link make its total.

#include <string>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// The sum of the scores a, l and r, each times its scale, and of the word penalty where the link
/// says a word, as recognisers rank paths by it.
class TotalFormula {
 public:
  /// `scoreNames` as in a lattice.
  TotalFormula(const std::vector<std::string>& scoreNames, const ScoreScales& scales);

  /// The total of a link by the formula, rounded to 15 digits.
  double of(const WordLink& link) const;

  /// Whether a link has one of the three scores.
  bool hasScores(const WordLink& link) const;

 private:
  ScoreScales m_Scales;
  int m_Acoustic;  ///< index of "a" among the names; -1 where it is none
  int m_Language;
  int m_Pronunciation;
};

}  // namespace quorbel
