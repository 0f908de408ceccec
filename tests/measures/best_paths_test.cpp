#include "measures/best_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

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

TEST(BestPaths, ThroughALinkAreThoseOfAnEnumeration) {
  for (const auto& [seed, isPositive, isTied] :
       {std::tuple{8005U, false, false}, {8006U, true, false}, {8007U, false, true}}) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    RandomOptions options;
    options.hasPositive = isPositive;
    options.hasTies = isTied;
    for (int round = 0; round < kRounds; ++round) {
      const RandomLattice plain = randomLattice(random, options);
      const std::vector<PlainPath> all = allPaths(plain);
      WordLattice lattice;
      readText(plain.text(), lattice);
      const std::size_t link = random() % lattice.links.size();
      const int id = lattice.links[link].id;
      std::map<std::vector<int>, double> through;
      for (const PlainPath& path : all) {
        const std::vector<int> ids = idsOf(plain, path);
        if (std::count(ids.begin(), ids.end(), id) == 1) through[ids] = path.total;
      }
      LatticePath path;
      const std::string error = findBestPathThrough(lattice, totals(lattice), link, path);
      if (through.empty()) {
        ASSERT_EQ(error, "no path from the start to the end takes link " + std::to_string(id));
        ASSERT_TRUE(path.links.empty());
        continue;
      }
      ASSERT_EQ(error, "") << plain.text();
      const auto best =
          std::max_element(through.begin(), through.end(),
                           [](const auto& a, const auto& b) { return a.second < b.second; });
      ASSERT_NEAR(path.score, best->second, kExact) << plain.text();
      ASSERT_EQ(through.count(idsOf(lattice, path)), 1U) << plain.text();
      ASSERT_NEAR(through[idsOf(lattice, path)], path.score, kExact) << plain.text();
    }
  }
}

TEST(BestPaths, ThroughALinkOfTheBestPathAreTheBestPath) {
  constexpr unsigned kSeed = 8008;
  SCOPED_TRACE("seed 8008");
  std::mt19937 random(kSeed);
  RandomOptions options;
  for (int round = 0; round < kRounds; ++round) {
    options.isCyclic = round % 2 == 0;
    WordLattice lattice;
    readText(randomLattice(random, options).text(), lattice);
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), 1, paths), "");
    for (const std::size_t link : paths[0].links) {
      LatticePath path;
      ASSERT_EQ(findBestPathThrough(lattice, totals(lattice), link, path), "");
      ASSERT_NEAR(path.score, paths[0].score, kExact);
      ASSERT_EQ(std::count(path.links.begin(), path.links.end(), link), 1);
    }
  }
}

/// A path of a walk that is not finished: the best one that it can become counts.
struct Walk {
  double score;
  std::vector<std::size_t> links;
  int node;
};

/// The scores of the best `count` walks from start to end of at most `mostLinks` links, the best
/// first, as a search without any art finds them.
std::vector<double> scoresOfWalks(const WordLattice& lattice, std::size_t mostLinks,
                                  std::size_t count, std::set<std::vector<std::size_t>>& walks) {
  std::vector<Walk> current = {{0.0, {}, 0}};
  std::vector<double> scores;
  const int end = static_cast<int>(lattice.nodes.size()) - 1;
  for (std::size_t length = 0; length <= mostLinks; ++length) {
    std::vector<Walk> next;
    for (const Walk& walk : current) {
      if (walk.node == end) {
        scores.push_back(walk.score);
        walks.insert(walk.links);
      }
      for (std::size_t i = 0; i < lattice.links.size(); ++i) {
        if (lattice.links[i].start != walk.node) continue;
        next.push_back({walk.score + lattice.links[i].total, walk.links, lattice.links[i].end});
        next.back().links.push_back(i);
      }
    }
    current = std::move(next);
  }
  std::sort(scores.rbegin(), scores.rend());
  if (scores.size() > count) scores.resize(count);
  return scores;
}

TEST(BestPaths, OfCyclicNetworksAreThoseOfAllWalks) {
  constexpr unsigned kSeed = 8009;
  constexpr std::size_t kMostLinks = 8;
  SCOPED_TRACE("seed 8009");
  std::mt19937 random(kSeed);
  int compared = 0;
  for (int round = 0; round < kRounds; ++round) {
    RandomOptions options;
    options.isCyclic = true;
    options.hasTies = round % 2 == 0;
    WordLattice lattice;
    const std::string text = randomLattice(random, options).text();
    readText(text, lattice);
    if (lattice.links.size() > 9) continue;  // there would be too many walks
    const int count = 1 + round % 30;
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), count, paths), "");
    std::set<std::vector<std::size_t>> walks;
    const std::vector<double> scores =
        scoresOfWalks(lattice, kMostLinks, static_cast<std::size_t>(count), walks);
    std::set<std::vector<std::size_t>> different;
    for (std::size_t rank = 0; rank < paths.size(); ++rank) {
      ASSERT_TRUE(different.insert(paths[rank].links).second) << text;
      if (rank < scores.size()) {
        ASSERT_GE(paths[rank].score, scores[rank] - kExact) << text;
      }
      if (paths[rank].links.size() > kMostLinks) continue;
      ASSERT_EQ(walks.count(paths[rank].links), 1U) << text;
      if (rank > 1 && paths[rank].score == paths[rank - 1].score) {
        ASSERT_GE(paths[rank].links.size(), paths[rank - 1].links.size()) << text;
      }
      ++compared;
    }
    ASSERT_GE(paths.size(), scores.size()) << text;
  }
  EXPECT_GT(compared, 5000);
}

TEST(BestPaths, AreAllPathsWhereSoManyAreAskedFor) {
  constexpr unsigned kSeed = 8010;
  SCOPED_TRACE("seed 8010");
  std::mt19937 random(kSeed);
  for (int round = 0; round < kRounds; ++round) {
    RandomOptions options;
    options.hasTies = round % 3 == 0;
    options.hasPositive = round % 3 == 1;
    const RandomLattice plain = randomLattice(random, options);
    std::set<std::vector<int>> expected;
    for (const PlainPath& path : allPaths(plain)) expected.insert(idsOf(plain, path));
    WordLattice lattice;
    readText(plain.text(), lattice);
    std::vector<LatticePath> paths;
    ASSERT_EQ(findBestPaths(lattice, totals(lattice), 100000, paths), "");
    std::set<std::vector<int>> found;
    for (const LatticePath& path : paths) found.insert(idsOf(lattice, path));
    ASSERT_EQ(found, expected) << plain.text();
    ASSERT_EQ(paths.size(), expected.size()) << plain.text();
  }
}

TEST(BestPaths, GoAroundACycleWithinALimit) {
  for (const std::string score : {"-1", "0"}) {
    WordLattice lattice;
    readText("start=0 end=2\nN=3 L=4\nI=0\nI=1\nI=2\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=1 W=b a=" +
                 score + "\nJ=2 S=1 E=2 W=c a=-1\nJ=3 S=0 E=2 W=d a=-50000\n",
             lattice);
    // Without kept paths, of which so many would take half a gigabyte.
    std::size_t count = 0;
    std::string lastWords;
    const auto take = [&](const LatticePath& path) {
      ++count;
      lastWords = path.links.size() == 1 ? wordsOf(lattice, path) : "";
      return lastWords.empty() && path.links.size() == count + 1;
    };
    ASSERT_EQ(forBestPaths(lattice, totals(lattice), 100000, take), "");
    // One link leads to the loop, whose last round is among the first 3 + 10000 links.
    EXPECT_EQ(count, 1U + 10002U + 1U);
    EXPECT_EQ(lastWords, "d");
  }
}

TEST(BestPaths, AreSearchedNoFurtherThanTheyAreTaken) {
  WordLattice lattice;
  readText("N=2 L=3\nI=0\nI=1\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=0 E=1 W=b a=-2\nJ=2 S=0 E=1 W=c a=-3\n",
           lattice);
  std::string words;
  const auto take = [&](const LatticePath& path) {
    words += wordsOf(lattice, path);
    return words.size() < 2;
  };
  EXPECT_EQ(forBestPaths(lattice, totals(lattice), 3, take), "");
  EXPECT_EQ(words, "ab");
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
