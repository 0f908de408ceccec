#include "measures/scales.h"

#include <algorithm>

#include "measures/posteriors.h"
#include "words/decimal.h"
#include "words/total_formula.h"

namespace quorbel {

void chooseScales(WordLattice& lattice, const ScaleChoice& choice) {
  if (!choice.isMade()) return;
  ScoreScales& scales = lattice.scales;
  const double penaltyBefore = scales.wordPenalty;
  scales.acoustic = choice.acoustic.value_or(scales.acoustic);
  scales.language = choice.language.value_or(scales.language);
  scales.wordPenalty = choice.wordPenalty.value_or(scales.wordPenalty);
  if (choice.posterior) scales.posterior = choice.posterior;
  if (choice.acoustic || choice.language || choice.wordPenalty) {
    const TotalFormula formula(lattice.scoreNames, scales);
    const bool hasScores =
        std::any_of(lattice.links.begin(), lattice.links.end(),
                    [&](const WordLink& link) { return formula.hasScores(link); });
    for (WordLink& link : lattice.links) {
      if (hasScores)
        link.total = formula.of(link);
      else if (!link.word.isNull())
        link.total = rounded(link.total + scales.wordPenalty - penaltyBefore);
    }
    sortLinks(lattice);
  }
  computePosteriors(lattice);
}

}  // namespace quorbel
