#pragma once

// How the totals of a lattice become such that the viewer's search, which expects none above 0,
// finds the best path all the same.

#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// What is taken from totals. A node's level is the number of links on the longest way to it; what
/// is taken from a link is the same for each level that it spans, so that all paths from start to
/// end lose the same, and their order stays.
struct LevelShift {
  double perLevel = 0.0;    ///< what a link loses for each level that it spans; 0 where nothing is
  double ofPath = 0.0;      ///< what every path from start to end loses
  std::vector<int> levels;  ///< of each node
};

/// The smallest shift that leaves no total positive. None (`perLevel` is 0) where none is positive
/// to begin with, and in a cyclic lattice, which has no levels.
LevelShift levelShiftOf(const WordLattice& lattice);

/// What the shift leaves of a link's total: never above 0 where something is taken.
double shiftedTotal(const WordLink& link, const LevelShift& shift);

}  // namespace quorbel
