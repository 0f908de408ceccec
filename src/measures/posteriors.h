#pragma once

// How likely each link is, given all paths through the lattice.

#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// The log posterior of links that lie on no path from start to end, and the lowest there is.
inline constexpr double kLowestLogPosterior = -1e6;

/// Gives each link of an acyclic lattice the natural logarithm of its posterior: the sum of
/// exp(total / posteriorScale) over all paths from start to end that take the link, divided by that
/// sum over all paths; between kLowestLogPosterior and 0. The links of a cyclic lattice stay as
/// they are.
void computePosteriors(WordLattice& lattice);

/// The score of the best path through each link, the sum of its links' totals; -infinity for a link
/// on no path. The lattice must be acyclic.
std::vector<double> bestScoresThrough(const WordLattice& lattice);

}  // namespace quorbel
