#pragma once

// How good a lattice is: what its best path and its oracle path have wrong. The oracle path is the
// one of all that differs least from what was said.

#include <set>
#include <string>
#include <vector>

#include "measures/edits.h"
#include "words/word_lattice.h"

namespace quorbel {

/// Which words count, and which are the same.
struct WordMatching {
  std::set<std::string> ignored;  ///< words that do not count, beside those that nobody says
  bool ignoresCase = false;       ///< also for the ignored ones
};

/// The best path and the oracle path of a lattice beside a reference.
struct OracleResult {
  std::vector<std::string> reference;  ///< the words that count
  Alignment best;                      ///< of the best path by the total
  Alignment oracle;
};

/// Compares both paths with a reference, of which sentence marks, pauses (see isSpoken) and ignored
/// words do not count, neither do they in the lattice. Of equally good paths the oracle path is as
/// findFewestEdits says.
///
/// Returns "" on success, else why there is no best path.
std::string compareWithReference(const WordLattice& lattice,
                                 const std::vector<std::string>& reference,
                                 const WordMatching& matching, OracleResult& result);

}  // namespace quorbel
