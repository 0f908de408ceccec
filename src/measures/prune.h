#pragma once

// A smaller lattice that keeps what is likely.

#include <string>

#include "words/word_lattice.h"

namespace quorbel {

/// Keeps at most `count` links of an acyclic lattice: those of the highest posteriors, of equal
/// ones (but for the last digits, which depend on the order of sums) those with the lowest ids, and
/// the best path. Of as many as possible, that is: links that then lie on no path from start to end
/// go again, and their places are given to the next; what stays is what the best path and the K
/// likeliest links leave, for the largest K for which that is no more than `count`. A best path
/// that is longer than `count` stays alone.
///
/// Every link that stays lies on a path from start to end and keeps its id; nodes without links go,
/// the others are numbered anew in the same order. Posteriors become those of the smaller lattice.
///
/// Returns "" on success, else the reason: the lattice is cyclic or has no path.
std::string pruneToLinks(WordLattice& lattice, std::size_t count);

/// Keeps the links that lie on a path whose total is within `beam` of the best path's. As above in
/// everything else.
std::string pruneToBeam(WordLattice& lattice, double beam);

}  // namespace quorbel
