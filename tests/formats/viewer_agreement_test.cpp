// The viewer's own search on an imported lattice finds what the companion program calls the best
// path: the recogniser's.

#include <fst/shortest-distance.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "formats/dialect_writer.h"
#include "formats/lattice_text.h"
#include "formats/random_lattice.h"
#include "measures/best_paths.h"
#include "measures/fst_graph.h"
#include "measures/level_shift.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

void compareOnRandomLattices(unsigned seed, const RandomOptions& options) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  const TemporaryFolder folder;
  std::mt19937 random(seed);
  for (int round = 0; round < 1500; ++round) {
    const RandomLattice plain = randomLattice(random, options);
    WordLattice lattice;
    readText(plain.text(), lattice);
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, *scoresNamed(lattice, "TOTAL"), 1, paths), "");
    const ViewerView view = openInViewer(importOf(plain.text()));
    ASSERT_EQ(view.error, "");
    ASSERT_EQ(view.scoreName, "TOTAL");
    ASSERT_NEAR(view.cost, -paths.at(0).score, 1e-9) << plain.text();
    ASSERT_EQ(view.words, wordsOf(lattice, paths.at(0))) << plain.text();
  }
}

TEST(ViewerAgreement, HoldsOnAcyclicLattices) { compareOnRandomLattices(8301, RandomOptions()); }

TEST(ViewerAgreement, HoldsInCyclicNetworks) {
  RandomOptions options;
  options.isCyclic = true;
  compareOnRandomLattices(8303, options);
  options.hasTies = true;
  compareOnRandomLattices(8304, options);
}

TEST(ViewerAgreement, HoldsWhereManyPathsAreEquallyGood) {
  RandomOptions options;
  options.hasTies = true;
  compareOnRandomLattices(8302, options);
}

/// What the best path costs, by OpenFst.
double leastCost(const WordLattice& lattice) {
  const std::vector<char> all(lattice.links.size(), true);
  std::vector<CostArc::Weight> distances;
  fst::ShortestDistance(fstOf<CostArc>(lattice, *scoresNamed(lattice, "TOTAL"), all), &distances);
  return distances.at(lattice.nodes.size() - 1).Value();
}

/// The sum of the totals of links that are to be a path.
double totalOf(const WordLattice& lattice, const std::vector<int>& ids) {
  double total = 0.0;
  int node = 0;
  for (const int id : ids) {
    const auto link = std::find_if(lattice.links.begin(), lattice.links.end(),
                                   [&](const WordLink& candidate) { return candidate.id == id; });
    EXPECT_EQ(link->start, node);
    node = link->end;
    total += link->total;
  }
  EXPECT_EQ(node, static_cast<int>(lattice.nodes.size()) - 1);
  return total;
}

TEST(ViewerAgreement, HoldsOnAcyclicLatticesWithCostsOfBothSigns) {
  constexpr unsigned kSeed = 8305;
  SCOPED_TRACE("seed 8305");
  const TemporaryFolder folder;
  std::mt19937 random(kSeed);
  RandomOptions options;
  options.hasPositive = true;
  int shifted = 0;
  for (int round = 0; round < 3000; ++round) {
    options.hasTies = round % 4 == 0;
    const RandomLattice plain = randomLattice(random, options);
    WordLattice lattice;
    readText(plain.text(), lattice);
    const std::string imported = importOf(plain.text());
    const ViewerView view = openInViewer(imported);
    ASSERT_EQ(view.error, "");
    const double least = leastCost(lattice);
    ASSERT_NEAR(-totalOf(lattice, view.linkIds), least, 1e-9) << plain.text();
    const LevelShift shift = levelShiftOf(lattice);
    ASSERT_NEAR(view.cost, least + shift.ofPath, 1e-9) << plain.text();
    if (shift.perLevel > 0.0) ++shifted;
    double highest = -1.0;
    for (const WordLink& link : lattice.links) {
      ASSERT_LE(shiftedTotal(link, shift), 0.0);
      highest = std::max(highest, shiftedTotal(link, shift));
    }
    if (shift.perLevel > 0.0) {
      ASSERT_EQ(highest, 0.0) << "the shift is not the smallest\n" << plain.text();
    }
    WordLattice again;
    readText(imported, again);  // has the true sums
    ASSERT_NEAR(leastCost(again), least, 1e-9) << plain.text();
    std::string onceMore;
    ASSERT_EQ(dialectText(again, onceMore), "");
    ASSERT_EQ(onceMore, imported);
  }
  EXPECT_GT(shifted, 1000);
}

}  // namespace
}  // namespace quorbel
