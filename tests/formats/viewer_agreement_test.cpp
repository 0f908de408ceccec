// The viewer's own search on an imported lattice finds what the companion program calls the best
// path: the recogniser's.

#include <gtest/gtest.h>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"
#include "measures/best_paths.h"
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

}  // namespace
}  // namespace quorbel
