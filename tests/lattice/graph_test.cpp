#include "lattice/graph.h"

#include <gtest/gtest.h>

#include "extreme_numbers.h"
#include "graph_text.h"
#include "processor_time.h"

namespace quorbel {
namespace {

/// An item with a value of its own in every field.
LayoutItem someEdge() {
  LayoutItem item;
  item.linkId = 7;
  item.x = 10;
  item.y = 20;
  item.width = 30;
  item.height = 40;
  item.nodeIndex = 5;
  item.startNode = 1;
  item.endNode = 2;
  item.time = 0.25;
  item.isNode = true;
  item.label = "hello";
  item.word = "<w in='hello'/>";
  item.score = 12.5;
  return item;
}

std::string describeItem(const LayoutItem& item) {
  std::string text;
  for (const int number : {item.linkId, item.x, item.y, item.width, item.height, item.nodeIndex,
                           item.startNode, item.endNode, static_cast<int>(item.isNode)})
    text += std::to_string(number) + " ";
  return text + exactText(item.time) + " '" + item.label + "' '" + item.word + "' " +
         exactText(item.score);
}

TEST(Graph, IsCreatedEmptyWithNegatedScores) {
  const Graph graph;
  EXPECT_FALSE(graph.showBestPath);
  EXPECT_FALSE(graph.hasSelectedEdge);
  EXPECT_EQ(describeItem(graph.selectedEdge), "-1 -1 -1 0 0 0 0 0 0 0 '' '' 0");
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
  EXPECT_TRUE(graph.nodes.empty());
  EXPECT_EQ(graph.bestPathScore, -1.0);
  EXPECT_EQ(graph.selectedPathScore, -1.0);
  EXPECT_FALSE(graph.labelByValue);
  EXPECT_TRUE(graph.fieldsByName.empty());
  EXPECT_TRUE(graph.fieldsByIndex.empty());
  EXPECT_FALSE(graph.labelBySelectedXml);
  EXPECT_TRUE(graph.scoresNegated);
  EXPECT_EQ(graph.outputFormat, "");
  EXPECT_EQ(graph.bestPathText, "");
  EXPECT_EQ(graph.selectedPathText, "");
}

TEST(Graph, NodeHasTimeZeroAndNoScoresAtFirst) {
  const Node node;
  EXPECT_EQ(exactText(node.time), "0");
  EXPECT_TRUE(node.scores.empty());
}

TEST(Graph, ScoresAreInByteOrderOfTheirNames) {
  const ScoreMap scores = {{"b", 1}, {"a", 2}, {"B", 3}, {"\xc3\xa4", 4}, {"aa", 5}, {"", 6}};
  EXPECT_EQ(describeScores(scores), "=6 B=3 a=2 aa=5 b=1 \xc3\xa4=4");
}

TEST(Graph, AdjacencyHasAnEmptyListForEachNodeAndOneToSpare) {
  const LatticeAdjacency adjacency(3, 1, 2);
  EXPECT_EQ(adjacency.nodeCount, 3);
  EXPECT_EQ(adjacency.startNode, 1);
  EXPECT_EQ(adjacency.endNode, 2);
  EXPECT_EQ(adjacency.outgoing.size(), 4u);
  EXPECT_EQ(describeLinks(adjacency), "");
}

TEST(Graph, LinksOfANodeKeepTheOrderOfTheirAdding) {
  LatticeAdjacency adjacency(3, 0, 2);
  addEdge(adjacency, 1, 2, {{"a", 3}}, "third", 30);
  addEdge(adjacency, 0, 1, {{"a", 5}, {"b", 6}}, "first", 20);
  addEdge(adjacency, 0, 2, {}, "", -4);
  addEdge(adjacency, 0, 1, {{"a", 3}}, "parallel", 20);
  addEdge(adjacency, 0, 0, {}, "loop", 1);
  EXPECT_EQ(describeLinks(adjacency),
            "link 20 from 0 to 1 with a=5 b=6 as first\n"
            "link -4 from 0 to 2\n"
            "link 20 from 0 to 1 with a=3 as parallel\n"
            "link 1 from 0 to 0 as loop\n"
            "link 30 from 1 to 2 with a=3 as third\n");
}

TEST(Graph, LinkMayNameTheIndexOnePastTheLastNode) {
  LatticeAdjacency adjacency(2, 0, 1);
  addEdge(adjacency, 0, 2, {}, "into", 1);
  addEdge(adjacency, 2, 0, {}, "out of", 2);
  addEdge(adjacency, 2, 2, {}, "at", 3);
  EXPECT_EQ(describeLinks(adjacency),
            "link 1 from 0 to 2 as into\nlink 2 from 2 to 0 as out of\nlink 3 from 2 to 2 as at\n");
}

TEST(Graph, LinkBeyondThatIndexOrBelowZeroIsDropped) {
  for (const int outside : {3, 4, 1000, kLargestInt, -1, -2, kSmallestInt}) {
    LatticeAdjacency adjacency(2, 0, 1);
    addEdge(adjacency, outside, 0, {}, "", 1);
    addEdge(adjacency, 0, outside, {}, "", 2);
    addEdge(adjacency, outside, outside, {}, "", 3);
    EXPECT_EQ(describeLinks(adjacency), "") << outside;
  }
}

TEST(Graph, ChoosingALinkCopiesItWhole) {
  Graph graph;
  graph.selectedPathScore = 4.0;
  graph.bestPathScore = 3.0;
  setSelectedEdge(graph, true, someEdge());
  EXPECT_TRUE(graph.hasSelectedEdge);
  EXPECT_EQ(describeItem(graph.selectedEdge),
            "7 10 20 30 40 5 1 2 1 0.25 'hello' '<w in='hello'/>' 12.5");
  EXPECT_EQ(graph.selectedPathScore, 4.0);
  EXPECT_EQ(graph.bestPathScore, 3.0);
}

TEST(Graph, DroppingTheChosenLinkForgetsItsTotal) {
  Graph graph;
  setSelectedEdge(graph, true, someEdge());
  graph.selectedPathScore = 4.0;
  graph.bestPathScore = 3.0;
  LayoutItem other = someEdge();
  other.linkId = 8;
  setSelectedEdge(graph, false, other);
  EXPECT_FALSE(graph.hasSelectedEdge);
  EXPECT_EQ(graph.selectedEdge.linkId, 8);
  EXPECT_EQ(graph.selectedPathScore, -1.0);
  EXPECT_EQ(graph.bestPathScore, 3.0);
}

TEST(Graph, HidingTheBestPathForgetsItsTotal) {
  Graph graph;
  graph.bestPathScore = 3.0;
  graph.selectedPathScore = 4.0;
  setShowBestPath(graph, true);
  EXPECT_TRUE(graph.showBestPath);
  EXPECT_EQ(graph.bestPathScore, 3.0);
  setShowBestPath(graph, false);
  EXPECT_FALSE(graph.showBestPath);
  EXPECT_EQ(graph.bestPathScore, -1.0);
  EXPECT_EQ(graph.selectedPathScore, 4.0);
}

/// A graph with a chosen link of id 7 and score 12.5, and links of these ids and scores "a".
class RefreshSelectedEdgeScore : public ::testing::Test {
 protected:
  RefreshSelectedEdgeScore() {
    currentScoreName = "a";
    graph.adjacency = std::make_unique<LatticeAdjacency>(3, 0, 2);
    addEdge(*graph.adjacency, 0, 1, {{"a", 1}}, "", 6);
    setSelectedEdge(graph, true, someEdge());
  }

  std::string refreshedScore() {
    refreshSelectedEdgeScore(graph);
    return exactText(graph.selectedEdge.score);
  }

  Graph graph;
};

TEST_F(RefreshSelectedEdgeScore, TakesThatOfTheFirstLinkWithItsId) {
  addEdge(*graph.adjacency, 2, 0, {{"a", 5}}, "", 7);
  addEdge(*graph.adjacency, 1, 2, {{"a", 3}, {"b", 9}}, "", 7);
  addEdge(*graph.adjacency, 1, 2, {{"a", 4}}, "", 7);
  EXPECT_EQ(refreshedScore(), "3");
  currentScoreName = "b";
  EXPECT_EQ(refreshedScore(), "9");
}

TEST_F(RefreshSelectedEdgeScore, CountsAMissingScoreAsZeroAndAddsNone) {
  addEdge(*graph.adjacency, 1, 2, {{"b", 9}}, "", 7);
  EXPECT_EQ(refreshedScore(), "0");
  EXPECT_EQ(describeLinks(*graph.adjacency),
            "link 6 from 0 to 1 with a=1\nlink 7 from 1 to 2 with b=9\n");
}

TEST_F(RefreshSelectedEdgeScore, KeepsTheScoreOfALinkThatIsGone) {
  EXPECT_EQ(refreshedScore(), "12.5");
}

TEST_F(RefreshSelectedEdgeScore, KeepsTheScoreWithoutAChosenLinkOrALattice) {
  addEdge(*graph.adjacency, 1, 2, {{"a", 3}}, "", 7);
  graph.hasSelectedEdge = false;
  EXPECT_EQ(refreshedScore(), "12.5");
  graph.hasSelectedEdge = true;
  graph.adjacency.reset();
  EXPECT_EQ(refreshedScore(), "12.5");
}

TEST(Graph, ManyLinksOfOneNodeAreAddedAndFreedInNoTime) {
  constexpr int kNodes = 50000;
  constexpr int kLinks = 200000;
  constexpr double kSeconds = 5;
  const ProcessorTime time;
  {
    LatticeAdjacency adjacency(kNodes, 0, kNodes - 1);
    for (int i = 0; i < kLinks; ++i) addEdge(adjacency, 0, i % kNodes, {{"a", 1}}, "word", i);
    EXPECT_EQ(adjacency.outgoing[0].size(), static_cast<std::size_t>(kLinks));
  }
  EXPECT_LT(time.seconds(), kSeconds);
}

}  // namespace
}  // namespace quorbel
