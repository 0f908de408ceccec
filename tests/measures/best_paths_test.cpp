#include "measures/best_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"

namespace quorbel {
namespace {

constexpr int kRounds = 3000;

std::vector<double> totals(const WordLattice& lattice) { return *scoresNamed(lattice, "TOTAL"); }

/// The ids of a path's links.
std::vector<int> idsOf(const WordLattice& lattice, const LatticePath& path) {
  std::vector<int> ids;
  for (const std::size_t link : path.links) ids.push_back(lattice.links[link].id);
  return ids;
}

std::vector<int> idsOf(const RandomLattice& lattice, const PlainPath& path) {
  std::vector<int> ids;
  for (const std::size_t link : path.links) ids.push_back(lattice.links[link].id);
  return ids;
}

/// Compares the N best paths of random lattices with all paths sorted.
void compareWithEnumeration(unsigned seed, const RandomOptions& options) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (int round = 0; round < kRounds; ++round) {
    const RandomLattice plain = randomLattice(random, options);
    std::vector<PlainPath> expected = allPaths(plain);
    std::stable_sort(expected.begin(), expected.end(),
                     [](const PlainPath& a, const PlainPath& b) { return a.total > b.total; });
    WordLattice lattice;
    readText(plain.text(), lattice);
    const int count = 1 + round % 7;
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), count, paths), "") << plain.text();
    ASSERT_EQ(paths.size(), std::min(expected.size(), static_cast<std::size_t>(count)))
        << plain.text();
    std::set<std::vector<int>> different;
    for (std::size_t rank = 0; rank < paths.size(); ++rank) {
      const std::vector<int> ids = idsOf(lattice, paths[rank]);
      different.insert(ids);
      ASSERT_NEAR(paths[rank].score, expected[rank].total, kExact) << plain.text();
      // Of equally good paths any may come, but it must be one of all, with this total.
      const bool isPath = std::any_of(expected.begin(), expected.end(), [&](const PlainPath& path) {
        return idsOf(plain, path) == ids && std::abs(path.total - paths[rank].score) < kExact;
      });
      ASSERT_TRUE(isPath) << plain.text();
    }
    ASSERT_EQ(different.size(), paths.size()) << plain.text();
  }
}

TEST(BestPaths, AreThoseOfAnEnumeration) { compareWithEnumeration(8001, RandomOptions()); }

TEST(BestPaths, AreThoseOfAnEnumerationWithPositiveTotals) {
  RandomOptions options;
  options.hasPositive = true;
  compareWithEnumeration(8002, options);
}

TEST(BestPaths, AreThoseOfAnEnumerationWithTies) {
  RandomOptions options;
  options.hasTies = true;
  compareWithEnumeration(8003, options);
}

TEST(BestPaths, OfCyclicNetworksBeginWithTheBestThatPassesNoNodeTwice) {
  constexpr unsigned kSeed = 8004;
  SCOPED_TRACE("seed 8004");
  std::mt19937 random(kSeed);
  RandomOptions options;
  options.isCyclic = true;
  for (int round = 0; round < kRounds; ++round) {
    const RandomLattice plain = randomLattice(random, options);
    const std::vector<PlainPath> expected = allPaths(plain);
    double best = expected[0].total;
    for (const PlainPath& path : expected) best = std::max(best, path.total);
    WordLattice lattice;
    readText(plain.text(), lattice);
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), 1, paths), "");
    ASSERT_NEAR(paths.at(0).score, best, kExact) << plain.text();
    const std::vector<LatticePath> first = paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), 5, paths), "");
    ASSERT_EQ(paths.at(0).links, first.at(0).links) << plain.text();
    for (std::size_t rank = 1; rank < paths.size(); ++rank)
      ASSERT_LE(paths[rank].score, paths[rank - 1].score + kExact) << plain.text();
  }
}

TEST(BestPaths, FollowTheScoreThatIsAskedFor) {
  WordLattice lattice;
  readText(
      "N=2 L=3\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=x a=-1 l=-9\nJ=1 S=0 E=1 W=y a=-5 l=-2\n"
      "J=2 S=0 E=1 W=z a=-3\n",
      lattice);
  std::vector<LatticePath> paths;
  ASSERT_EQ(findBestPaths(lattice, *scoresNamed(lattice, "l"), 3, paths), "");
  ASSERT_EQ(paths.size(), 3U);
  EXPECT_EQ(wordsOf(lattice, paths[0]), "z");  // a link without the score counts as 0
  EXPECT_EQ(wordsOf(lattice, paths[1]), "y");
  EXPECT_EQ(wordsOf(lattice, paths[2]), "x");
  EXPECT_EQ(paths[2].score, -9.0);
  EXPECT_EQ(scoresNamed(lattice, "r"), std::nullopt);
}

TEST(BestPaths, OfACyclicNetworkWithPositiveScoresAreRefused) {
  WordLattice lattice;
  readText(
      "start=0 end=2\nN=3 L=3\nI=0\nI=1\nI=2\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=1 W=b a=2\n"
      "J=2 S=1 E=2 W=c a=-1\n",
      lattice);
  std::vector<LatticePath> paths;
  EXPECT_EQ(findBestPaths(lattice, totals(lattice), 1, paths),
            "the network has a cycle, and the score of link 1 is positive: going around might "
            "improve a path for ever");
}

TEST(BestPaths, WithoutAnyPathAreRefused) {
  WordLattice lattice;
  readText("start=0 end=2\nN=3 L=1\nI=0\nI=1\nI=2\nJ=0 S=0 E=1 W=a\n", lattice);
  std::vector<LatticePath> paths;
  for (const int count : {1, 3})
    EXPECT_EQ(findBestPaths(lattice, totals(lattice), count, paths),
              "no path leads from the start to the end");
}

TEST(BestPaths, OfASingleNodeIsTheEmptyOne) {
  WordLattice lattice;
  readText("N=1 L=0\nI=0\n", lattice);
  for (const int count : {1, 3}) {
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), count, paths), "");
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_TRUE(paths[0].links.empty());
    EXPECT_EQ(wordsOf(lattice, paths[0]), "");
  }
}

}  // namespace
}  // namespace quorbel
