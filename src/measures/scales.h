#pragma once

// Other scales for a lattice than its file has.

#include <optional>

#include "words/word_lattice.h"

namespace quorbel {

/// The scales that are asked for; those that are not stay as they are.
struct ScaleChoice {
  std::optional<double> acoustic;
  std::optional<double> language;
  std::optional<double> wordPenalty;  ///< a natural logarithm
  std::optional<double> posterior;    ///< above 0, see posteriorScale

  bool isMade() const { return acoustic || language || wordPenalty || posterior; }
};

/// Gives the lattice these scales: its totals become what TotalFormula makes of its scores, also
/// where the file had brought totals itself, and posteriors follow. Where no link has any of the
/// scores in the formula only another word penalty changes totals.
void chooseScales(WordLattice& lattice, const ScaleChoice& choice);

}  // namespace quorbel
