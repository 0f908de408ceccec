#include "lattice/shortest_path.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "built_lattice.h"
#include "graph_text.h"
#include "processor_time.h"

namespace quorbel {
namespace {

std::string joined(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) text += (text.empty() ? "" : " ") + std::to_string(number);
  return text;
}

class ShortestPath : public ::testing::Test {
 protected:
  ShortestPath() { currentScoreName = "a"; }

  /// "all reached: 0 from 0, 2 from 0", one distance and predecessor for each node.
  std::string distancesFrom(Graph& graph, int source) {
    std::vector<double> distances;
    std::vector<int> predecessors;
    const bool all = computeDistances(*graph.adjacency, source, distances, predecessors);
    std::string text = all ? "all reached:" : "not all reached:";
    for (int i = 0; i < graph.adjacency->nodeCount; ++i) {
      const std::size_t node = static_cast<std::size_t>(i);
      text += (i == 0 ? " " : ", ") + exactText(distances.at(node)) + " from " +
              std::to_string(predecessors.at(node));
    }
    return text;
  }

  /// "total 2, nodes 3 1 0 0, links 5 7 -1 -1".
  std::string pathOf(Graph& graph, bool throughSelected = false) {
    std::vector<int> nodes(static_cast<std::size_t>(graph.adjacency->nodeCount), 0);
    std::vector<int> linkIds(nodes.size(), -1);
    const double total = shortestPath(graph, nodes, linkIds, throughSelected);
    return "total " + exactText(total) + ", nodes " + joined(nodes) + ", links " + joined(linkIds);
  }
};

TEST_F(ShortestPath, InfinityOfTheSearchIsThatOfItsUsers) {
  EXPECT_EQ(exactText(NO_EDGE_COST), "99999999");
}

TEST_F(ShortestPath, LeadsAlongTheLowestCosts) {
  Graph graph = buildLattice(4, 0, 3,
                             {{0, 1, 10, {{"a", 1}}},
                              {0, 2, 11, {{"a", 4}}},
                              {1, 2, 12, {{"a", 2}}},
                              {1, 3, 13, {{"a", 7}}},
                              {2, 3, 14, {{"a", 3}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "all reached: 0 from 0, 1 from 0, 3 from 1, 6 from 2");
  EXPECT_EQ(pathOf(graph), "total 6, nodes 3 2 1 0, links 10 12 14 -1");
}

TEST_F(ShortestPath, UsesTheCurrentScoreOnly) {
  Graph graph = buildLattice(3, 0, 2,
                             {{0, 2, 10, {{"a", 1}, {"b", 9}}},
                              {0, 1, 11, {{"a", 1}, {"b", 2}}},
                              {1, 2, 12, {{"a", 1}, {"b", 2}}}});
  EXPECT_EQ(pathOf(graph), "total 1, nodes 2 0 0, links 10 -1 -1");
  currentScoreName = "b";
  EXPECT_EQ(pathOf(graph), "total 4, nodes 2 1 0, links 11 12 -1");
}

TEST_F(ShortestPath, StartEqualToEndWritesNoNode) {
  Graph graph = buildLattice(3, 1, 1, {{0, 1, 10, {{"a", 1}}}, {1, 2, 11, {{"a", 1}}}});
  EXPECT_EQ(pathOf(graph), "total 0, nodes 0 0 0, links -1 -1 -1");
}

TEST_F(ShortestPath, WithoutLinksIsReportedAsMinusOne) {
  Graph graph = buildLattice(3, 0, 2, {{0, 1, 10, {{"a", 1}}}});
  std::vector<int> nodes(3, 0);
  std::vector<int> linkIds(3, 77);
  shortestPath(graph, nodes, linkIds, false);
  EXPECT_EQ(joined(linkIds), "-1 77 77");
}

TEST_F(ShortestPath, UnusedRestOfThePathStandsForLoopsAtNodeZero) {
  Graph graph = buildLattice(3, 1, 1, {{0, 0, 10, {{"a", 5}}}, {0, 0, 11, {{"a", 4}}}});
  EXPECT_EQ(pathOf(graph), "total 0, nodes 0 0 0, links 11 -1 -1");
}

TEST_F(ShortestPath, FirstLinkFromAStartOtherThanNodeZeroIsNotFound) {
  Graph graph = buildLattice(
      4, 1, 3, {{1, 2, 10, {{"a", 1}}}, {2, 3, 11, {{"a", 1}}}, {0, 2, 12, {{"a", 9}}}});
  EXPECT_EQ(pathOf(graph), "total 2, nodes 3 2 0 0, links 12 11 -1 -1");
}

TEST_F(ShortestPath, OneNodeIsAPathWithoutLinks) {
  Graph graph = buildLattice(1, 0, 0, {{0, 0, 10, {}}});
  EXPECT_EQ(distancesFrom(graph, 0), "all reached: 0 from 0");
  EXPECT_EQ(pathOf(graph), "total 0, nodes 0, links -1");
  EXPECT_EQ(describeLinks(*graph.adjacency), "link 10 from 0 to 0\n");
}

TEST_F(ShortestPath, OfParallelLinksTheFirstCostsAndTheCheapestIsReported) {
  Graph graph = buildLattice(2, 0, 1, {{0, 1, 10, {{"a", 5}}}, {0, 1, 11, {{"a", 3}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "all reached: 0 from 0, 5 from 0");
  EXPECT_EQ(pathOf(graph), "total 5, nodes 1 0, links 11 -1");
}

TEST_F(ShortestPath, OfParallelLinksBehindTheStartTheFirstCostsToo) {
  Graph graph = buildLattice(
      3, 0, 2, {{0, 1, 9, {{"a", 1}}}, {1, 2, 10, {{"a", 5}}}, {1, 2, 11, {{"a", 3}}}});
  EXPECT_EQ(pathOf(graph), "total 6, nodes 2 1 0, links 9 11 -1");
}

TEST_F(ShortestPath, OfEquallyCheapParallelLinksTheFirstIsReported) {
  Graph graph = buildLattice(
      2, 0, 1, {{0, 1, 10, {{"a", 5}}}, {0, 1, 11, {{"a", 3}}}, {0, 1, 12, {{"a", 3}}}});
  EXPECT_EQ(pathOf(graph), "total 5, nodes 1 0, links 11 -1");
}

TEST_F(ShortestPath, ParallelLinksWithOthersBetweenAreReportedTogetherUnlessTheOthersAreOnThePath) {
  Graph graph = buildLattice(3, 0, 2,
                             {{0, 2, 10, {{"a", 3}}},
                              {0, 1, 11, {{"a", 9}}},
                              {0, 2, 12, {{"a", 1}}},
                              {0, 0, 13, {{"a", 0}}},
                              {0, 2, 14, {{"a", 2}}}});
  EXPECT_EQ(pathOf(graph), "total 3, nodes 2 0 0, links 12 13 14");
}

TEST_F(ShortestPath, OfNodesAtEqualDistanceTheLowestIndexIsSettledFirst) {
  Graph graph = buildLattice(4, 0, 3,
                             {{0, 2, 10, {{"a", 1}}},
                              {0, 1, 11, {{"a", 1}}},
                              {2, 3, 12, {{"a", 1}}},
                              {1, 3, 13, {{"a", 1}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "all reached: 0 from 0, 1 from 0, 1 from 0, 2 from 1");
  EXPECT_EQ(pathOf(graph), "total 2, nodes 3 1 0 0, links 11 13 -1 -1");
}

TEST_F(ShortestPath, ZerosOfBothSignsAreEqualDistances) {
  Graph graph = buildLattice(4, 0, 3,
                             {{0, 1, 10, {{"a", 0.0}}},
                              {0, 2, 11, {{"a", -0.0}}},
                              {1, 3, 12, {{"a", 1}}},
                              {2, 3, 13, {{"a", 1}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "all reached: 0 from 0, 0 from 0, -0 from 0, 1 from 1");
}

TEST_F(ShortestPath, TotalKeepsTheSignOfAZero) {
  Graph graph = buildLattice(2, 0, 1, {{0, 1, 10, {{"a", -0.0}}}});
  EXPECT_EQ(pathOf(graph), "total -0, nodes 1 0, links 10 -1");
}

TEST_F(ShortestPath, AddsTheMissingScoreToTheLinksThatItLooksAt) {
  Graph graph = buildLattice(4, 0, 1,
                             {{0, 1, 10, {{"b", 7}}},  // the first link to its node
                              {0, 1, 11, {}},          // seen when the path's links are collected
                              {0, 0, 12, {}},          // a loop costs nothing by itself
                              {1, 0, 13, {}},          // leads to a settled node
                              {1, 2, 14, {{"a", 5}}},  // has one
                              {1, 2, 15, {}},          // not the first link to its node
                              {2, 1, 16, {}},          // leads to a settled node
                              {3, 2, 17, {{"b", 8}}},  // leaves a node that is not reached
                              {1, 4, 18, {}}});        // leads to no node
  std::vector<double> distances;
  std::vector<int> predecessors;
  EXPECT_FALSE(computeDistances(*graph.adjacency, 0, distances, predecessors));
  EXPECT_EQ(describeLinks(*graph.adjacency),
            "link 10 from 0 to 1 with a=0 b=7\n"
            "link 11 from 0 to 1\n"
            "link 12 from 0 to 0\n"
            "link 13 from 1 to 0\n"
            "link 14 from 1 to 2 with a=5\n"
            "link 15 from 1 to 2\n"
            "link 18 from 1 to 4\n"
            "link 16 from 2 to 1\n"
            "link 17 from 3 to 2 with b=8\n");
  EXPECT_EQ(pathOf(graph), "total 0, nodes 1 0 0 0, links 10 12 -1 -1");
  EXPECT_EQ(describeLinks(*graph.adjacency),
            "link 10 from 0 to 1 with a=0 b=7\n"
            "link 11 from 0 to 1 with a=0\n"
            "link 12 from 0 to 0 with a=0\n"
            "link 13 from 1 to 0\n"
            "link 14 from 1 to 2 with a=5\n"
            "link 15 from 1 to 2\n"
            "link 18 from 1 to 4\n"
            "link 16 from 2 to 1\n"
            "link 17 from 3 to 2 with b=8\n");
}

TEST_F(ShortestPath, AddsNoScoreWhereItStops) {
  Graph graph = buildLattice(3, 0, 2, {{0, 1, 10, {{"a", 99999999}}}, {1, 2, 11, {}}});
  EXPECT_EQ(distancesFrom(graph, 0), "not all reached: 0 from 0, 99999999 from 0, 99999999 from 0");
  EXPECT_EQ(describeLinks(*graph.adjacency),
            "link 10 from 0 to 1 with a=99999999\nlink 11 from 1 to 2\n");
}

TEST_F(ShortestPath, UnreachableEndHasTheDistanceOfAMissingLink) {
  Graph graph = buildLattice(3, 0, 2, {{0, 1, 10, {{"a", 1}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "not all reached: 0 from 0, 1 from 0, 99999999 from 0");
  EXPECT_EQ(pathOf(graph), "total 99999999, nodes 2 0 0, links -1 -1 -1");
}

TEST_F(ShortestPath, NodeAtTheLimitIsNeverSettled) {
  const auto chain = [](double cost) {
    return buildLattice(3, 0, 2, {{0, 1, 10, {{"a", cost}}}, {1, 2, 11, {{"a", -5}}}});
  };
  Graph below = chain(99999998);
  EXPECT_EQ(distancesFrom(below, 0), "all reached: 0 from 0, 99999998 from 0, 99999993 from 1");
  Graph at = chain(99999999);
  EXPECT_EQ(distancesFrom(at, 0), "not all reached: 0 from 0, 99999999 from 0, 99999999 from 0");
  Graph above = chain(2e8);
  EXPECT_EQ(distancesFrom(above, 0), "not all reached: 0 from 0, 2e+08 from 0, 99999999 from 0");
}

TEST_F(ShortestPath, DistanceAboveTheLimitMayStillShrink) {
  Graph graph = buildLattice(
      3, 0, 2, {{0, 2, 10, {{"a", 3e8}}}, {0, 1, 11, {{"a", 5}}}, {1, 2, 12, {{"a", 2e8}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "not all reached: 0 from 0, 5 from 0, 200000005 from 1");
}

TEST_F(ShortestPath, SettledNodeIsNotLookedAtAgain) {
  Graph graph = buildLattice(
      3, 0, 2, {{0, 1, 10, {{"a", 1}}}, {0, 2, 11, {{"a", 3}}}, {2, 1, 12, {{"a", -9}}}});
  EXPECT_EQ(distancesFrom(graph, 0), "all reached: 0 from 0, 1 from 0, 3 from 0");
}

TEST_F(ShortestPath, NodesAreReachedFromAnySource) {
  Graph graph = buildLattice(
      3, 0, 2, {{0, 1, 10, {{"a", 1}}}, {1, 2, 11, {{"a", 2}}}, {2, 0, 12, {{"a", 4}}}});
  EXPECT_EQ(distancesFrom(graph, 1), "all reached: 6 from 2, 0 from 1, 2 from 1");
}

TEST_F(ShortestPath, ThroughALinkJoinsTheWaysToAndFromIt) {
  Graph graph = buildLattice(6, 0, 5,
                             {{0, 1, 10, {{"a", 1}}},
                              {1, 2, 11, {{"a", 1}}},
                              {2, 5, 12, {{"a", 1}}},
                              {1, 3, 13, {{"a", 4}}},
                              {3, 4, 14, {{"a", 2}}},
                              {4, 5, 15, {{"a", 8}}}});
  chooseLink(graph, 3, 4, 2);
  EXPECT_EQ(pathOf(graph), "total 3, nodes 5 2 1 0 0 0, links 10 11 12 -1 -1 -1");
  EXPECT_EQ(pathOf(graph, true), "total 15, nodes 5 4 3 1 0 0, links 10 13 14 15 -1 -1");
}

TEST_F(ShortestPath, ThroughALinkCountsTheScoreThatWasKeptWithIt) {
  Graph graph = buildLattice(3, 0, 2, {{0, 1, 10, {{"a", 1}}}, {1, 2, 11, {{"a", 2}}}});
  chooseLink(graph, 0, 1, 0.25);
  EXPECT_EQ(pathOf(graph, true), "total 2.25, nodes 2 1 0, links 10 11 -1");
  chooseLink(graph, 1, 2, -7);
  EXPECT_EQ(pathOf(graph, true), "total -6, nodes 2 1 0, links 10 11 -1");
}

TEST_F(ShortestPath, ThroughALinkWithoutAWayIsAsFarAsItsParts) {
  Graph graph = buildLattice(4, 0, 3, {{0, 1, 10, {{"a", 1}}}, {2, 3, 11, {{"a", 2}}}});
  chooseLink(graph, 0, 1, 1);
  EXPECT_EQ(pathOf(graph, true), "total 1e+08, nodes 3 1 0 0, links 10 -1 -1 -1");
  chooseLink(graph, 2, 3, 2);
  EXPECT_EQ(pathOf(graph, true), "total 100000001, nodes 3 2 0 0, links 11 -1 -1 -1");
  chooseLink(graph, 1, 2, 0.5);
  EXPECT_EQ(pathOf(graph, true), "total 3.5, nodes 3 2 1 0, links 10 11 -1 -1");
}

TEST_F(ShortestPath, ThatVisitsMoreNodesThanThereAreIsCut) {
  Graph graph = buildLattice(
      3, 0, 2, {{0, 1, 10, {{"a", 1}}}, {1, 2, 11, {{"a", 1}}}, {2, 1, 12, {{"a", 1}}}});
  chooseLink(graph, 2, 1, 1);  // 0 1 2 1 2, without its first node, backwards
  EXPECT_EQ(pathOf(graph, true), "total 4, nodes 2 1 2, links 11 12 -1");
}

TEST_F(ShortestPath, ThatHasMoreLinksThanThereAreNodesIsCut) {
  Graph graph = buildLattice(3, 0, 1,
                             {{0, 1, 10, {{"a", 1}}},
                              {0, 0, 11, {{"a", 1}}},
                              {0, 1, 12, {{"a", 1}}},
                              {0, 0, 13, {{"a", 1}}}});
  EXPECT_EQ(pathOf(graph), "total 1, nodes 1 0 0, links 10 11 12");
}

TEST_F(ShortestPath, LinksOfTheIndexPastTheLastNodeLeadNowhere) {
  Graph graph = buildLattice(
      2, 0, 1, {{0, 2, 10, {{"a", 1}}}, {2, 1, 11, {{"a", 1}}}, {0, 1, 12, {{"a", 9}}}});
  std::vector<double> distances;
  std::vector<int> predecessors;
  EXPECT_TRUE(computeDistances(*graph.adjacency, 0, distances, predecessors));
  EXPECT_EQ(distances, (std::vector<double>{0, 9, NO_EDGE_COST}));
  EXPECT_EQ(predecessors, (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(pathOf(graph), "total 9, nodes 1 0, links 12 -1");
}

TEST_F(ShortestPath, ThroughALinkOfTheIndexPastTheLastNode) {
  Graph graph = buildLattice(
      2, 0, 1, {{0, 2, 10, {{"a", 1}}}, {2, 1, 11, {{"a", 2}}}, {0, 1, 12, {{"a", 9}}}});
  chooseLink(graph, 0, 2, 1);
  EXPECT_EQ(pathOf(graph, true), "total 3, nodes 1 2, links -1 -1");
  chooseLink(graph, 2, 1, 2);
  EXPECT_EQ(pathOf(graph, true), "total 100000001, nodes 1 2, links -1 -1");
}

TEST_F(ShortestPath, ThroughALinkOfAnotherLatticeDoesNotExist) {
  for (const int outside : {-1, 3, 1000}) {
    Graph graph = buildLattice(2, 0, 1, {{0, 1, 10, {{"a", 1}}}});
    chooseLink(graph, outside, 0, 4);
    EXPECT_EQ(pathOf(graph, true), "total 200000002, nodes 0 0, links -1 -1") << outside;
    chooseLink(graph, 0, outside, 4);
    EXPECT_EQ(pathOf(graph, true), "total 200000002, nodes 0 0, links -1 -1") << outside;
  }
}

TEST_F(ShortestPath, WithoutALatticeTouchesNothing) {
  Graph graph;
  std::vector<int> nodes = {7, 8};
  std::vector<int> linkIds = {5, 6};
  for (const bool throughSelected : {false, true}) {
    EXPECT_EQ(shortestPath(graph, nodes, linkIds, throughSelected), -1.0);
    EXPECT_EQ(joined(nodes), "7 8");
    EXPECT_EQ(joined(linkIds), "5 6");
  }
}

TEST_F(ShortestPath, ReturnsTotalsWithoutStoringThem) {
  Graph graph = buildLattice(2, 0, 1, {{0, 1, 10, {{"a", 5}}}});
  chooseLink(graph, 0, 1, 5);
  pathOf(graph, false);
  pathOf(graph, true);
  EXPECT_EQ(graph.bestPathScore, -1.0);
  EXPECT_EQ(graph.selectedPathScore, -1.0);
}

/// 50,000 nodes and 200,000 links, searched within a bound that a quadratic search misses.
class LargeSearch : public ShortestPath {
 protected:
  static constexpr int kNodes = 50000;
  static constexpr int kLinks = 200000;

  void expectBothSearchesInTime(Graph& graph, const std::string& best, const std::string& chosen) {
    constexpr double kSeconds = 5;
    const ProcessorTime time;
    EXPECT_EQ(pathOf(graph, false).substr(0, best.size()), best);
    EXPECT_EQ(pathOf(graph, true).substr(0, chosen.size()), chosen);
    EXPECT_LT(time.seconds(), kSeconds);
  }
};

TEST_F(LargeSearch, TakesLittleTimeWhenAllLinksLeaveOneNode) {
  Graph graph = buildLattice(kNodes, 0, kNodes - 1, {});
  for (int i = 0; i < kLinks; ++i) addEdge(*graph.adjacency, 0, i % kNodes, {{"a", i}}, "", i);
  chooseLink(graph, 0, kNodes - 1, 3);
  expectBothSearchesInTime(graph, "total 49999, nodes 49999 0 0", "total 3, nodes 49999 0 0");
}

TEST_F(LargeSearch, TakesLittleTimeWhenTheNodesAreAChain) {
  Graph graph = buildLattice(kNodes, 0, kNodes - 1, {});
  for (int i = 0; i < kLinks; ++i) {
    const int start = i / 4;
    const int step = i % 4 + 1;
    if (start + step < kNodes)
      addEdge(*graph.adjacency, start, start + step, {{"a", step * step}}, "", i);
  }
  chooseLink(graph, 0, 4, 16);
  expectBothSearchesInTime(graph, "total 49999, nodes 49999 49998 49997 ",
                           "total 50011, nodes 49999 49998 49997 ");
}

}  // namespace
}  // namespace quorbel
