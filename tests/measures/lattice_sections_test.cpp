#include "measures/lattice_sections.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"

namespace quorbel {
namespace {

/// A lattice of that many nodes with links between these.
WordLattice linked(int nodes, const std::vector<std::pair<int, int>>& ends) {
  WordLattice lattice;
  lattice.nodes.resize(slot(nodes));
  for (const auto& [start, end] : ends) {
    WordLink& link = lattice.links.emplace_back();
    link.start = start;
    link.end = end;
  }
  return lattice;
}

std::vector<std::size_t> sectionsOfLinks(const WordLattice& lattice) {
  const LatticeSections sections = sectionsOf(lattice);
  std::vector<std::size_t> ofLinks;
  for (const WordLink& link : lattice.links)
    ofLinks.push_back(sections.ofLink(link.start, link.end));
  return ofLinks;
}

TEST(LatticeSections, LieBetweenTheNodesThatAllPathsPass) {
  // 0 => 1, then 1 -> 4 by way of 2 or 3, then 4 -> 5
  const WordLattice lattice =
      linked(6, {{0, 1}, {0, 1}, {1, 2}, {1, 3}, {1, 4}, {2, 4}, {3, 4}, {4, 5}});
  EXPECT_EQ(sectionsOf(lattice).cuts, (std::vector<int>{0, 1, 4, 5}));
  EXPECT_EQ(sectionsOf(lattice).ofNode, (std::vector<std::size_t>{0, 1, 1, 1, 2, 3}));
  EXPECT_EQ(sectionsOfLinks(lattice), (std::vector<std::size_t>{0, 0, 1, 1, 1, 1, 1, 2}));
}

TEST(LatticeSections, AreOneWhereALinkPassesEveryNodeBy) {
  const WordLattice lattice = linked(4, {{0, 1}, {0, 3}, {1, 2}, {2, 3}});
  EXPECT_EQ(sectionsOf(lattice).cuts, (std::vector<int>{0, 3}));
  EXPECT_EQ(sectionsOf(lattice).count(), 1U);
}

TEST(LatticeSections, AreNotCutWhereALinkLeadsBack) {
  const WordLattice lattice = linked(4, {{0, 1}, {1, 1}, {1, 2}, {2, 3}, {3, 1}, {3, 3}});
  EXPECT_EQ(sectionsOf(lattice).cuts, (std::vector<int>{0, 1, 3}));
  EXPECT_EQ(sectionsOfLinks(lattice), (std::vector<std::size_t>{0, 1, 1, 1, 1, 1}));
}

TEST(LatticeSections, TakeWhatHangsOnACut) {
  const WordLattice lattice = linked(6, {{0, 1}, {1, 2}, {1, 5}, {2, 1}, {3, 5}, {4, 4}});
  EXPECT_EQ(sectionsOf(lattice).cuts, (std::vector<int>{0, 1, 5}));
  EXPECT_EQ(sectionsOfLinks(lattice), (std::vector<std::size_t>{0, 1, 1, 1, 1, 0}));
}

TEST(LatticeSections, AreOneWhereTheEndCannotBeReached) {
  const WordLattice lattice = linked(4, {{0, 1}, {1, 0}, {2, 3}});
  EXPECT_EQ(sectionsOf(lattice).count(), 1U);
  EXPECT_EQ(sectionsOfLinks(lattice), (std::vector<std::size_t>{0, 0, 0}));
  EXPECT_EQ(sectionsOf(linked(1, {})).count(), 1U);
  EXPECT_EQ(sectionsOf(linked(1, {})).cuts, (std::vector<int>{0}));
}

/// All nodes that can be reached from `from` along and against links, without passing `without`.
std::set<int> reachedFrom(int from, int without, const WordLattice& lattice) {
  std::set<int> reached = {from};
  for (std::size_t before = 0; before != reached.size();) {
    before = reached.size();
    for (const WordLink& link : lattice.links) {
      if (link.start == without || link.end == without) continue;
      if (reached.count(link.start) != 0 || reached.count(link.end) != 0)
        reached.insert({link.start, link.end});
    }
  }
  return reached;
}

/// Compares with a search that takes every node out in turn.
void compareWithTakingOut(const WordLattice& lattice) {
  const int last = static_cast<int>(lattice.nodes.size()) - 1;
  const LatticeSections sections = sectionsOf(lattice);
  if (reachedFrom(0, -1, lattice).count(last) == 0) {
    ASSERT_EQ(sections.count(), 1U);
    return;
  }
  std::set<int> cuts = {0, last};
  for (int node = 1; node < last; ++node)
    if (reachedFrom(0, node, lattice).count(last) == 0) cuts.insert(node);
  ASSERT_EQ(std::set<int>(sections.cuts.begin(), sections.cuts.end()), cuts);
  ASSERT_EQ(sections.cuts.size(), cuts.size());
  ASSERT_EQ(sections.cuts.front(), 0);
  ASSERT_EQ(sections.cuts.back(), last);
  for (std::size_t i = 1; i + 1 < sections.cuts.size(); ++i)  // each hides those behind it
    ASSERT_EQ(reachedFrom(0, sections.cuts[i], lattice).count(sections.cuts[i + 1]), 0U);
  // Sections share no more than a cut.
  std::vector<std::set<int>> nodes(sections.count());
  for (const WordLink& link : lattice.links)
    nodes.at(sections.ofLink(link.start, link.end)).insert({link.start, link.end});
  for (std::size_t i = 0; i < nodes.size(); ++i)
    for (std::size_t j = i + 1; j < nodes.size(); ++j) {
      std::vector<int> shared;
      std::set_intersection(nodes[i].begin(), nodes[i].end(), nodes[j].begin(), nodes[j].end(),
                            std::back_inserter(shared));
      ASSERT_EQ(shared, j == i + 1 ? std::vector<int>{sections.cuts[j]} : std::vector<int>());
    }
}

TEST(LatticeSections, AreThoseThatTakingNodesOutShows) {
  constexpr unsigned kSeed = 9201;
  SCOPED_TRACE("seed 9201");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 4000; ++round) {
    const int nodes = 1 + static_cast<int>(random() % 9);
    std::vector<std::pair<int, int>> ends;
    const std::size_t count = random() % 13;
    for (std::size_t i = 0; i < count; ++i) {
      const int start = static_cast<int>(random() % static_cast<unsigned>(nodes));
      const bool isNear = random() % 4 != 0;  // else there would hardly be a cut
      const int end = isNear ? std::min(start + 1 + static_cast<int>(random() % 2), nodes - 1)
                             : static_cast<int>(random() % static_cast<unsigned>(nodes));
      ends.emplace_back(start, end);
    }
    std::string text = std::to_string(nodes) + " nodes:";
    for (const auto& [start, end] : ends)
      text += " " + std::to_string(start) + "->" + std::to_string(end);
    SCOPED_TRACE(text);
    compareWithTakingOut(linked(nodes, ends));
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(LatticeSections, AreCutWhereEveryPathPasses) {
  constexpr unsigned kSeed = 9202;
  SCOPED_TRACE("seed 9202");
  std::mt19937 random(kSeed);
  std::size_t inner = 0;
  for (int round = 0; round < 1500; ++round) {
    RandomLattice plain = randomLattice(random, RandomOptions());
    // Only links on paths, as pruning leaves them.
    const std::vector<PlainPath> paths = allPaths(plain);
    std::set<std::size_t> used;
    std::vector<std::set<int>> nodesOf;
    for (const PlainPath& path : paths) {
      used.insert(path.links.begin(), path.links.end());
      nodesOf.emplace_back().insert(0);
      for (const std::size_t link : path.links) nodesOf.back().insert(plain.links[link].end);
    }
    std::vector<std::pair<int, int>> ends;
    for (const std::size_t link : used)
      ends.emplace_back(plain.links[link].start, plain.links[link].end);
    std::vector<int> onAll;
    for (int node = 0; node < plain.nodeCount; ++node)
      if (std::all_of(nodesOf.begin(), nodesOf.end(),
                      [&](const std::set<int>& nodes) { return nodes.count(node) != 0; }))
        onAll.push_back(node);
    ASSERT_EQ(sectionsOf(linked(plain.nodeCount, ends)).cuts, onAll) << plain.text();
    inner += onAll.size() - 2;
  }
  EXPECT_GT(inner, 300U);  // there was something to find
}

}  // namespace
}  // namespace quorbel
