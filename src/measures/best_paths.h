#pragma once

// The best paths through a lattice.

#include <functional>
#include <string>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// A path from start to end.
struct LatticePath {
  double score = 0.0;              ///< sum over its links
  std::vector<std::size_t> links;  ///< indices into the lattice's links, from the start on
};

/// Takes a path; returns whether more are wanted.
using TakePath = std::function<bool(const LatticePath&)>;

/// Gives the `count` (at least 1) best paths by the sum of `scores`, one for each link, the higher
/// the better, to `take`, the best first; fewer when there are fewer. Different paths count as
/// different even where they say the same words. Of equally good paths the first is the one that
/// the viewer's search takes, then the one with fewer links comes earlier. In a cyclic lattice
/// there is a limit to going around (see kMostLinksAround). Each path exists only while it is
/// taken: memory does not grow with their lengths.
///
/// Returns "" on success, else the reason, with nothing taken: a cyclic lattice with a positive
/// score, on which going around might improve a path for ever, or a lattice without any path.
std::string forBestPaths(const WordLattice& lattice, const std::vector<double>& scores, int count,
                         const TakePath& take);

/// The same for sentences: of all paths that say the same words only the best is given. What nobody
/// says, such as pauses, tells no sentences apart (see isSpoken). Equally good ones and failures as
/// above; in a cyclic lattice a sentence goes around for kMostLinksAround words at most.
std::string forBestSentences(const WordLattice& lattice, const std::vector<double>& scores,
                             int count, const TakePath& take);

/// What forBestPaths gives into `paths`, which stays as it is when there is none.
std::string findBestPaths(const WordLattice& lattice, const std::vector<double>& scores, int count,
                          std::vector<LatticePath>& paths);

/// Finds the best path that takes the link of index `link`, into `path`: the best one to the link,
/// the link, and the best one from it to the end. Where there is a cycle these two may pass the
/// same node. Scores, equally good paths and what is returned as above, or that no path takes the
/// link; `path` is then as it was.
std::string findBestPathThrough(const WordLattice& lattice, const std::vector<double>& scores,
                                std::size_t link, LatticePath& path);

/// The words of a path, with blanks between them and without those that say none.
std::string wordsOf(const WordLattice& lattice, const LatticePath& path);

}  // namespace quorbel
