#include "measures/level_shift.h"

#include <algorithm>
#include <cmath>

#include "words/decimal.h"

namespace quorbel {
namespace {

double spanOf(const WordLink& link, const std::vector<int>& levels) {
  return levels[slot(link.end)] - levels[slot(link.start)];
}

}  // namespace

LevelShift levelShiftOf(const WordLattice& lattice) {
  LevelShift shift;
  if (lattice.isCyclic || !firstPositiveTotal(lattice)) return shift;
  shift.levels.assign(lattice.nodes.size(), 0);
  for (const WordLink& link : lattice.links) {  // sorted by where they start
    int& level = shift.levels[slot(link.end)];
    level = std::max(level, shift.levels[slot(link.start)] + 1);
  }
  for (const WordLink& link : lattice.links)
    shift.perLevel = std::max(shift.perLevel, link.total / spanOf(link, shift.levels));
  shift.ofPath = shift.perLevel * shift.levels.back();
  return shift;
}

double shiftedTotal(const WordLink& link, const LevelShift& shift) {
  if (shift.perLevel == 0.0) return link.total;
  constexpr double kNoise = 1e-14;  // of the difference of two numbers that are meant to be equal
  const double taken = shift.perLevel * spanOf(link, shift.levels);
  const double total = link.total - taken;
  return total > -kNoise * taken ? 0.0 : rounded(total);
}

}  // namespace quorbel
