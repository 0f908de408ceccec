// The sign that scores have.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "built_lattice.h"
#include "graph_text.h"
#include "lattice/shortest_path.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

class TakeTheOppositeScore : public ::testing::Test {
 protected:
  TakeTheOppositeScore() {
    graph = buildLattice(2, 0, 1, {{0, 1, 10, {{"a", 1}, {"b", 0}}}, {1, 2, 11, {{"a", -2}}}});
    addEdge(*graph.adjacency, 2, 0, {{"a", 3}}, "", 12);
    graph.nodes[0].scores = {{"a", 4}, {"b", -0.0}};
    graph.nodes[1].scores = {{"a", -5}};
    chooseLink(graph, 0, 1, 9);
    items.resize(2);
    items[0].score = 6;
    items[1].score = 0;
  }

  std::string describe() const {
    return describeLattice(graph) + "drawn " + exactText(items[0].score) + " " +
           exactText(items[1].score) + "\n" + (graph.scoresNegated ? "negated" : "as read");
  }

  Graph graph;
  std::vector<LayoutItem> items;
  const std::string kBefore =
      "2 nodes, 0 to 1\n"
      "node 0 at 0 with a=4 b=-0\n"
      "node 1 at 0 with a=-5\n"
      "link 10 from 0 to 1 with a=1 b=0\n"
      "link 11 from 1 to 2 with a=-2\n"
      "link 12 from 2 to 0 with a=3\n"
      "drawn 6 0\n"
      "negated";
  const std::string kFlipped =
      "2 nodes, 0 to 1\n"
      "node 0 at 0 with a=-4 b=0\n"
      "node 1 at 0 with a=5\n"
      "link 10 from 0 to 1 with a=-1 b=-0\n"
      "link 11 from 1 to 2 with a=2\n"
      "link 12 from 2 to 0 with a=-3\n"
      "drawn -6 -0\n"
      "as read";
};

TEST_F(TakeTheOppositeScore, FlipsEveryScoreOfTheLatticeAndOfItsDrawing) {
  ASSERT_EQ(describe(), kBefore);
  takeTheOppositeScore(graph, false, items);
  EXPECT_EQ(describe(), kFlipped);
  takeTheOppositeScore(graph, true, items);
  EXPECT_EQ(describe(), kBefore);
}

TEST_F(TakeTheOppositeScore, DoesNothingTheSecondTime) {
  takeTheOppositeScore(graph, true, items);
  EXPECT_EQ(describe(), kBefore);
  takeTheOppositeScore(graph, false, items);
  takeTheOppositeScore(graph, false, items);
  EXPECT_EQ(describe(), kFlipped);
}

TEST_F(TakeTheOppositeScore, LeavesTheCopyOfTheChosenLinkAlone) {
  takeTheOppositeScore(graph, false, items);
  EXPECT_EQ(graph.selectedEdge.score, 9.0);
}

TEST_F(TakeTheOppositeScore, PrintsNothingForALattice) {
  PrintedText printed;
  takeTheOppositeScore(graph, false, items);
  EXPECT_EQ(printed.take(), "");
}

TEST_F(TakeTheOppositeScore, WarnsAndChangesNothingWithoutALattice) {
  const std::string warning =
      "WARNING : takeTheOppositeScore called but either graph or nodes is NULL\n";
  for (const bool withNodes : {false, true}) {
    Graph empty;
    if (withNodes)
      empty.nodes.resize(1);
    else
      empty.adjacency = std::make_unique<LatticeAdjacency>(1, 0, 0);
    for (const bool negate : {false, true}) {
      PrintedText printed;
      takeTheOppositeScore(empty, negate, items);
      EXPECT_EQ(printed.take(), warning);
      EXPECT_TRUE(empty.scoresNegated);
      EXPECT_EQ(items[0].score, 6.0);
    }
  }
}

}  // namespace
}  // namespace quorbel
