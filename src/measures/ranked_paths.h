#pragma once

// The N best paths through a lattice, in memory that does not grow with their lengths.

#include <cstddef>
#include <vector>

#include "measures/best_paths.h"
#include "measures/best_ways.h"

namespace quorbel {

/// How many links more than the lattice has nodes a path of a cyclic lattice may have before its
/// last detour; behind them it takes the best way to the end. Without a limit the paths of a
/// lattice with one loop would fill any disk: each goes around once more than the one before.
inline constexpr int kMostLinksAround = 10000;

/// The best paths of a lattice. Each is the best one but for some detours, and is kept as its last
/// detour and the path without it.
class RankedPaths {
 public:
  /// Finds the `count` best paths by the sum of `scores`, or all when there are fewer. In a cyclic
  /// lattice no score may be positive. Both arguments must outlive this object.
  RankedPaths(const WordLattice& lattice, const std::vector<double>& scores, std::size_t count);

  std::size_t size() const { return m_Ranked.size(); }

  /// The path of that rank, counted from 0. Of equally good ones the one with fewer links comes
  /// first.
  LatticePath path(std::size_t rank) const;

 private:
  struct Found {
    Distance length;
    int without;     ///< index of the path without the last detour; -1 for the best path
    int detour;      ///< the link; -1 for the best path
    int linksSoFar;  ///< up to the detour, with it
  };

  int nodeBehindDetour(const Found& found) const;
  void search(std::size_t count);
  LatticePath unfolded(const Found& found) const;

  const WordLattice& m_Lattice;
  const std::vector<double>& m_Scores;
  const BestWays m_Ways;
  std::vector<Found> m_Found;         ///< in the order of the search
  std::vector<std::size_t> m_Ranked;  ///< indices of the found paths in the order of their scores
};

}  // namespace quorbel
