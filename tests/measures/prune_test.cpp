#include "measures/prune.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"
#include "measures/best_paths.h"

namespace quorbel {
namespace {

std::set<int> idsOf(const WordLattice& lattice) {
  std::set<int> ids;
  for (const WordLink& link : lattice.links) ids.insert(link.id);
  return ids;
}

std::set<int> bestIds(const WordLattice& lattice) {
  std::vector<LatticePath> paths;
  EXPECT_EQ(findBestPaths(lattice, *scoresNamed(lattice, "TOTAL"), 1, paths), "");
  std::set<int> ids;
  for (const std::size_t link : paths.at(0).links) ids.insert(lattice.links[link].id);
  return ids;
}

/// The links of `chosen` that lie on a path of chosen ones.
std::set<int> onPaths(const RandomLattice& plain, const std::vector<PlainPath>& paths,
                      const std::set<int>& chosen) {
  std::set<int> kept;
  for (const PlainPath& path : paths) {
    std::set<int> ids;
    for (const std::size_t link : path.links) ids.insert(plain.links[link].id);
    if (std::includes(chosen.begin(), chosen.end(), ids.begin(), ids.end()))
      kept.insert(ids.begin(), ids.end());
  }
  return kept;
}

/// What pruneToLinks is to keep, by trying every number of likeliest links.
std::set<int> expectedLinks(const RandomLattice& plain, const WordLattice& lattice,
                            std::size_t count) {
  const std::vector<PlainPath> paths = allPaths(plain);
  std::vector<WordLink> order = lattice.links;
  std::sort(order.begin(), order.end(), [](const WordLink& a, const WordLink& b) {
    const auto digits = [](double value) { return std::round(value * 1e9); };  // without noise
    return std::make_pair(-digits(a.logPosterior), a.id) <
           std::make_pair(-digits(b.logPosterior), b.id);
  });
  const std::set<int> best = bestIds(lattice);
  std::set<int> result = best;
  for (std::size_t number = 0; number <= order.size(); ++number) {
    std::set<int> chosen = best;
    for (std::size_t i = 0; i < number; ++i) chosen.insert(order[i].id);
    const std::set<int> kept = onPaths(plain, paths, chosen);
    if (kept.size() <= count) result = kept;
  }
  return result;
}

/// What holds of every pruned lattice.
void expectSound(const WordLattice& before, const WordLattice& after) {
  std::map<int, const WordLink*> known;
  for (const WordLink& link : before.links) known[link.id] = &link;
  for (const WordLink& link : after.links) {
    const WordLink& old = *known.at(link.id);
    ASSERT_EQ(link.word.text, old.word.text);
    ASSERT_EQ(link.total, old.total);
    ASSERT_LT(link.start, link.end);
    for (const auto& [node, oldNode] : {std::pair(link.start, old.start), {link.end, old.end}})
      ASSERT_EQ(after.nodes.at(static_cast<std::size_t>(node)).fileIndex,
                before.nodes.at(static_cast<std::size_t>(oldNode)).fileIndex);
  }
  const std::set<int> best = bestIds(before);
  ASSERT_EQ(bestIds(after), best);
  // Every node but the first is entered, every one but the last is left: all lies on paths.
  std::set<int> entered = {0};
  std::set<int> left = {static_cast<int>(after.nodes.size()) - 1};
  for (const WordLink& link : after.links) {
    entered.insert(link.end);
    left.insert(link.start);
  }
  ASSERT_EQ(entered.size(), after.nodes.size());
  ASSERT_EQ(left.size(), after.nodes.size());
  double sum = 0.0;  // the posteriors are those of the pruned lattice
  for (const WordLink& link : after.links)
    if (link.start == 0) sum += std::exp(link.logPosterior);
  ASSERT_NEAR(sum, 1.0, kExact);
}

TEST(Prune, KeepsTheLikeliestLinksThatFit) {
  constexpr unsigned kSeed = 8201;
  SCOPED_TRACE("seed 8201");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 3000; ++round) {
    const RandomLattice plain = randomLattice(random, RandomOptions());
    WordLattice before;
    readText(plain.text(), before);
    const std::size_t count = static_cast<std::size_t>(1 + round % 12);
    WordLattice after = before;
    ASSERT_EQ(pruneToLinks(after, count), "");
    ASSERT_EQ(idsOf(after), expectedLinks(plain, before, count)) << count << "\n" << plain.text();
    ASSERT_LE(after.links.size(), std::max(count, bestIds(before).size()));
    expectSound(before, after);
    if (HasFatalFailure()) FAIL() << plain.text();
  }
}

TEST(Prune, TakesTheLowerIdWhereOnlyRoundingTellsLinksApart) {
  // To a computer 1000.004 + 2000.207 is not quite 3000.211.
  for (const auto& [direct, first, kept] :
       {std::tuple<int, int, std::set<int>>{9, 1, {0, 1, 2}}, {1, 5, {0, 1}}}) {
    WordLattice lattice;
    readText("N=3 L=4\nI=0 t=0\nI=1 t=1\nI=2 t=2\nJ=0 S=0 E=2 W=best a=-3000\nJ=" +
                 std::to_string(direct) + " S=0 E=2 W=c a=-3000.211\nJ=" + std::to_string(first) +
                 " S=0 E=1 W=a a=-1000.004\nJ=" + std::to_string(first + 1) +
                 " S=1 E=2 W=b a=-2000.207\n",
             lattice);
    ASSERT_EQ(pruneToLinks(lattice, 3), "");
    EXPECT_EQ(idsOf(lattice), kept);
  }
}

TEST(Prune, KeepsWhatLiesWithinTheBeam) {
  constexpr unsigned kSeed = 8202;
  SCOPED_TRACE("seed 8202");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 3000; ++round) {
    RandomOptions options;
    options.hasPositive = round % 4 == 0;
    const RandomLattice plain = randomLattice(random, options);
    const std::vector<PlainPath> paths = allPaths(plain);
    double best = paths[0].total;
    for (const PlainPath& path : paths) best = std::max(best, path.total);
    // Off the hundredths that sums fall on, so that no path lies right on the edge.
    const double beam = (round % 600) / 100.0 + 0.00037;
    std::set<int> expected;
    for (const PlainPath& path : paths)
      if (path.total >= best - beam)
        for (const std::size_t link : path.links) expected.insert(plain.links[link].id);
    WordLattice before;
    readText(plain.text(), before);
    WordLattice after = before;
    ASSERT_EQ(pruneToBeam(after, beam), "");
    ASSERT_EQ(idsOf(after), expected) << beam << "\n" << plain.text();
    expectSound(before, after);
    if (HasFatalFailure()) FAIL() << plain.text();
  }
}

TEST(Prune, WithABeamOfZeroKeepsAllBestPaths) {
  WordLattice lattice;
  readText(
      "N=3 L=4\nI=0 t=0\nI=1 t=1\nI=2 t=2\nJ=0 S=0 E=1 W=a a=-0.1\nJ=1 S=1 E=2 W=b a=-0.2\n"
      "J=2 S=0 E=2 W=c a=-0.3\nJ=3 S=0 E=2 W=d a=-0.31\n",
      lattice);
  ASSERT_EQ(pruneToBeam(lattice, 0.0), "");
  EXPECT_EQ(idsOf(lattice), (std::set<int>{0, 1, 2}));  // -0.1 - 0.2 is not quite -0.3
}

TEST(Prune, GivesTheDialectBackWithItsWordsUntouched) {
  const std::string text =
      "UTTERANCE=greeting\nN=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
      "J=7 S=0 E=1 W=<w in='good' out=\"gut\"  conf='0.9'><alt/></w> a=-1\n"
      "J=9 S=0 E=1 W=<w in='could'/> a=-9\nJ=8 S=1 E=2 W=<w in='day'/> a=-2\n";
  WordLattice lattice;
  readText(text, lattice);
  ASSERT_EQ(pruneToLinks(lattice, 2), "");
  std::string written;
  {
    WordLattice again;
    readText(importOf(text), again);
    EXPECT_EQ(again.links[0].word.xml, "<w in='good' out=\"gut\"  conf='0.9'><alt/></w>");
  }
  EXPECT_EQ(lattice.links[0].word.xml, "<w in='good' out=\"gut\"  conf='0.9'><alt/></w>");
  EXPECT_EQ(idsOf(lattice), (std::set<int>{7, 8}));
}

TEST(Prune, LeavesASingleNodeAsItIs) {
  WordLattice lattice;
  readText("N=1 L=0\nI=0 t=1\n", lattice);
  EXPECT_EQ(pruneToBeam(lattice, 1.0), "");
  EXPECT_EQ(pruneToLinks(lattice, 1), "");
  EXPECT_EQ(lattice.nodes.size(), 1U);
}

TEST(Prune, RefusesCyclesAndLatticesWithoutPath) {
  WordLattice cyclic;
  readText("start=0 end=1\nN=2 L=2\nI=0\nI=1\nJ=0 S=0 E=1 W=a\nJ=1 S=0 E=0 W=b\n", cyclic);
  const std::string reason =
      "the network has a cycle, so its links have no posterior and it cannot be pruned";
  EXPECT_EQ(pruneToLinks(cyclic, 5), reason);
  EXPECT_EQ(pruneToBeam(cyclic, 5.0), reason);
  WordLattice broken;
  readText("start=0 end=2\nN=3 L=1\nI=0\nI=1\nI=2\nJ=0 S=0 E=1 W=a\n", broken);
  EXPECT_EQ(pruneToLinks(broken, 5), "no path leads from the start to the end");
}

}  // namespace
}  // namespace quorbel
