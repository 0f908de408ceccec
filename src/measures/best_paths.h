#pragma once

// The best paths through a lattice.

#include <string>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// A path from start to end.
struct LatticePath {
  double score = 0.0;              ///< sum over its links
  std::vector<std::size_t> links;  ///< indices into the lattice's links, from the start on
};

/// Finds the `count` best paths by the sum of `scores`, one for each link, the higher the better,
/// into `paths`, the best first; fewer when there are fewer. Different paths count as different
/// even where they say the same words. Of equally good paths the first is the one that the viewer's
/// search takes.
///
/// Returns "" on success, else the reason: a cyclic lattice with a positive score, on which going
/// around might improve a path for ever, or a lattice without any path.
std::string findBestPaths(const WordLattice& lattice, const std::vector<double>& scores, int count,
                          std::vector<LatticePath>& paths);

/// The words of a path, with blanks between them and without those that say none.
std::string wordsOf(const WordLattice& lattice, const LatticePath& path);

}  // namespace quorbel
