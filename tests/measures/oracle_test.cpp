#include "measures/oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>

#include "formats/lattice_text.h"
#include "measures/best_paths.h"
#include "measures/few_words.h"
#include "words/spoken_words.h"

namespace quorbel {
namespace {

using Counts = std::array<int, 4>;  // edits, substitutions, deletions, insertions
using Words = std::vector<std::string>;

constexpr int kNever = std::numeric_limits<int>::max() / 2;

Counts plus(Counts counts, int which) {
  ++counts[0];
  ++counts.at(static_cast<std::size_t>(which));
  return counts;
}

/// The fewest edits between two texts, with the whole matrix.
Counts editsBetween(const Words& reference, const Words& words) {
  std::vector<std::vector<Counts>> matrix(reference.size() + 1,
                                          std::vector<Counts>(words.size() + 1));
  for (std::size_t r = 0; r <= reference.size(); ++r)
    for (std::size_t w = 0; w <= words.size(); ++w) {
      if (r == 0 && w == 0) continue;
      Counts best = {kNever, 0, 0, 0};
      if (r > 0) best = std::min(best, plus(matrix[r - 1][w], 2));
      if (w > 0) best = std::min(best, plus(matrix[r][w - 1], 3));
      if (r > 0 && w > 0) {
        const Counts& before = matrix[r - 1][w - 1];
        best = std::min(best, reference[r - 1] == words[w - 1] ? before : plus(before, 1));
      }
      matrix[r][w] = best;
    }
  return matrix[reference.size()][words.size()];
}

Counts countsOf(const EditCounts& counts) {
  return {counts.total(), counts.substitutions, counts.deletions, counts.insertions};
}

Words wordsSaid(const WordLattice& lattice, const std::vector<std::size_t>& links) {
  Words words;
  for (const std::size_t link : links)
    if (isSpoken(lattice.links[link].word.text)) words.push_back(lattice.links[link].word.text);
  return words;
}

double scoreOf(const WordLattice& lattice, const std::vector<std::size_t>& links) {
  double score = 0.0;
  for (const std::size_t link : links) score += lattice.links[link].total;
  return score;
}

Words randomReference(std::mt19937& random, std::size_t mostWords) {
  static const Words kTexts = {"a", "b", "c", "d"};
  Words reference(random() % (mostWords + 1));
  for (std::string& word : reference) word = kTexts[random() % kTexts.size()];
  return reference;
}

/// That the path leads from start to end, that its places are all words of it and of the reference,
/// in their order, and that they have the edits that are counted.
void expectSoundAlignment(const WordLattice& lattice, const Words& reference,
                          const Alignment& alignment) {
  int node = 0;
  for (const std::size_t link : alignment.links) {
    ASSERT_EQ(lattice.links[link].start, node);
    node = lattice.links[link].end;
  }
  ASSERT_EQ(slot(node) + 1, lattice.nodes.size());
  Words words;
  int next = 0;
  Counts counts = {};
  for (const AlignedPlace& place : alignment.places) {
    const bool isInReference = place.reference >= 0;
    if (isInReference) {
      ASSERT_EQ(place.reference, next++);
    }
    if (place.link >= 0) words.push_back(lattice.links[slot(place.link)].word.text);
    if (place.link < 0)
      counts = plus(counts, 2);
    else if (!isInReference)
      counts = plus(counts, 3);
    else if (words.back() != reference[slot(place.reference)])
      counts = plus(counts, 1);
  }
  ASSERT_EQ(slot(next), reference.size());
  ASSERT_EQ(words, wordsSaid(lattice, alignment.links));
  ASSERT_EQ(counts, countsOf(alignment.counts));
}

TEST(Oracle, IsTheBestOfAllPaths) {
  constexpr unsigned kSeed = 8401;
  SCOPED_TRACE("seed 8401");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 3000; ++round) {
    WordLattice lattice;
    const RandomLattice plain = latticeOfFewWords(random, round, lattice);
    const Words reference = randomReference(random, 9);
    Counts fewest = {kNever, 0, 0, 0};
    double bestScore = 0.0;
    for (const std::vector<std::size_t>& links : allPathsIn(lattice, plain)) {
      const Counts counts = editsBetween(reference, wordsSaid(lattice, links));
      const double score = scoreOf(lattice, links);
      if (counts > fewest || (counts == fewest && score <= bestScore)) continue;
      fewest = counts;
      bestScore = score;
    }
    OracleResult result;
    ASSERT_EQ(compareWithReference(lattice, reference, {}, result), "");
    ASSERT_EQ(result.reference, reference);
    ASSERT_EQ(countsOf(result.oracle.counts), fewest) << plain.text();
    ASSERT_NEAR(scoreOf(lattice, result.oracle.links), bestScore, kExact) << plain.text();
    expectSoundAlignment(lattice, reference, result.oracle);
    std::vector<LatticePath> best;
    ASSERT_EQ(findBestPaths(lattice, *scoresNamed(lattice, kTotalName), 1, best), "");
    ASSERT_EQ(result.best.links, best[0].links);
    ASSERT_EQ(countsOf(result.best.counts),
              editsBetween(reference, wordsSaid(lattice, best[0].links)));
    expectSoundAlignment(lattice, reference, result.best);
    if (HasFatalFailure()) FAIL() << plain.text();
  }
}

/// The fewest edits of all walks, however long: what each node takes with so many words of the
/// reference behind it is made smaller until nothing changes.
Counts fewestOfWalks(const WordLattice& lattice, const Words& reference) {
  std::vector<std::vector<Counts>> known(
      lattice.nodes.size(), std::vector<Counts>(reference.size() + 1, Counts{kNever, 0, 0, 0}));
  known[0][0] = {};
  bool isChanged = true;
  const auto improve = [&](Counts& place, const Counts& counts) {
    if (!(counts < place)) return;
    place = counts;
    isChanged = true;
  };
  while (isChanged) {
    isChanged = false;
    for (std::size_t r = 0; r <= reference.size(); ++r) {
      const bool isLeft = r < reference.size();
      for (std::vector<Counts>& node : known)
        if (isLeft && node[r][0] < kNever) improve(node[r + 1], plus(node[r], 2));
      for (const WordLink& link : lattice.links) {
        const Counts& from = known[slot(link.start)][r];
        std::vector<Counts>& to = known[slot(link.end)];
        if (from[0] >= kNever) continue;
        const bool isSaid = isSpoken(link.word.text);
        improve(to[r], isSaid ? plus(from, 3) : from);
        if (isSaid && isLeft)
          improve(to[r + 1], link.word.text == reference[r] ? from : plus(from, 1));
      }
    }
  }
  return known.back().back();
}

TEST(Oracle, OfACyclicNetworkIsTheBestOfAllWalks) {
  constexpr unsigned kSeed = 8402;
  SCOPED_TRACE("seed 8402");
  std::mt19937 random(kSeed);
  RandomOptions options;
  options.isCyclic = true;
  std::size_t longer = 0;
  for (int round = 0; round < 2000; ++round) {
    options.hasTies = round % 2 == 0;
    const std::string text = randomLattice(random, options).text();
    WordLattice lattice;
    readText(text, lattice);
    sayLittle(lattice, random);
    const Words reference = randomReference(random, 16);
    OracleResult result;
    ASSERT_EQ(compareWithReference(lattice, reference, {}, result), "") << text;
    ASSERT_EQ(countsOf(result.oracle.counts), fewestOfWalks(lattice, reference)) << text;
    expectSoundAlignment(lattice, reference, result.oracle);
    expectSoundAlignment(lattice, reference, result.best);
    if (result.oracle.links.size() > lattice.nodes.size()) ++longer;
    if (HasFatalFailure()) FAIL() << text;
  }
  EXPECT_GT(longer, 200U);
}

TEST(Oracle, SplitsEqualErrorsIntoFewSubstitutionsThenFewDeletions) {
  WordLattice lattice;
  readText(
      "N=2 L=3\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=0 E=1 W=b a=-3\n"
      "J=2 S=0 E=1 W=!NULL a=-5\n",
      lattice);
  OracleResult result;
  ASSERT_EQ(compareWithReference(lattice, {"c"}, {}, result), "");
  EXPECT_EQ(countsOf(result.best.counts), (Counts{1, 1, 0, 0}));
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{1, 0, 1, 0}));  // the empty path
  ASSERT_EQ(compareWithReference(lattice, {"b", "c"}, {}, result), "");
  EXPECT_EQ(countsOf(result.best.counts), (Counts{2, 1, 1, 0}));
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{1, 0, 1, 0}));
  ASSERT_EQ(compareWithReference(lattice, {}, {}, result), "");
  EXPECT_EQ(countsOf(result.best.counts), (Counts{1, 0, 0, 1}));
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{0, 0, 0, 0}));
}

TEST(Oracle, DoesNotCountMarksPausesAndWhatIsIgnored) {
  WordLattice lattice;
  readText(
      "N=6 L=5\nI=0\nI=1\nI=2\nI=3\nI=4\nI=5\nJ=0 S=0 E=1 W=<s>\nJ=1 S=1 E=2 W=Uh\n"
      "J=2 S=2 E=3 W=<sil>\nJ=3 S=3 E=4 W=\\303\\234ber\nJ=4 S=4 E=5 W=</s>\n",
      lattice);
  OracleResult result;
  ASSERT_EQ(compareWithReference(lattice, {"<s>", "über", "uh"}, {}, result), "");
  EXPECT_EQ(result.reference, (Words{"über", "uh"}));
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{2, 2, 0, 0}));
  WordMatching matching;
  matching.ignored = {"uh"};
  ASSERT_EQ(compareWithReference(lattice, {"<s>", "über", "uh"}, matching, result), "");
  EXPECT_EQ(result.reference, (Words{"über"}));
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{2, 1, 0, 1}));  // "Uh" is another word
  matching.ignoresCase = true;
  ASSERT_EQ(compareWithReference(lattice, {"<s>", "über", "uh"}, matching, result), "");
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{0, 0, 0, 0}));
}

TEST(Oracle, NeedsABestPath) {
  WordLattice broken;
  readText("start=0 end=2\nN=3 L=1\nI=0\nI=1\nI=2\nJ=0 S=0 E=1 W=a\n", broken);
  OracleResult result;
  EXPECT_EQ(compareWithReference(broken, {"a"}, {}, result),
            "no path leads from the start to the end");
}

TEST(Oracle, OfASingleNodeLacksAllWords) {
  WordLattice lattice;
  readText("N=1 L=0\nI=0\n", lattice);
  OracleResult result;
  ASSERT_EQ(compareWithReference(lattice, {"a", "b", "c"}, {}, result), "");
  EXPECT_EQ(countsOf(result.oracle.counts), (Counts{3, 0, 3, 0}));
  EXPECT_EQ(countsOf(result.best.counts), (Counts{3, 0, 3, 0}));
}

}  // namespace
}  // namespace quorbel
