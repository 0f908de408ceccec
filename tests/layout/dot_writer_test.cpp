#include "layout/dot_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "lattice/shortest_path.h"
#include "layout_support.h"

// The description with its highlighting; labels and the order of the words are in
// dot_writer_labels_test.cpp, the runs of `dot` in dot_writer_run_test.cpp.

namespace quorbel {
namespace {

TEST(DotWriter, DescribesALatticeWithoutHighlighting) {
  Graph graph = diamond();
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=black,label = "a", comment="ID = 0"];
0 -> 2 [ color=black,label = "b", comment="ID = 1"];
1 -> 3 [ color=black,label = "c", comment="ID = 2"];
2 -> 3 [ color=black,label = "d", comment="ID = 3"];
}
)");
  EXPECT_EQ(graph.bestPathScore, 2);
  EXPECT_EQ(graph.bestPathText, "a c ");
  EXPECT_EQ(graph.selectedPathScore, -1);
  EXPECT_EQ(graph.selectedPathText, "");
}

TEST(DotWriter, ShowsTheBestPathInBlue) {
  Graph graph = diamond();
  setShowBestPath(graph, true);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "a", comment="ID = 0"];
0 -> 2 [ color=black,label = "b", comment="ID = 1"];
1 -> 3 [ color=blue, fontcolor=blue,label = "c", comment="ID = 2"];
2 -> 3 [ color=black,label = "d", comment="ID = 3"];
}
)");
}

TEST(DotWriter, ShowsTheSelectedEdgeInRedAndItsPathInCyan) {
  Graph graph = diamond();
  select(graph, 3);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
2 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
0 -> 1 [ color=black,label = "a", comment="ID = 0"];
0 -> 2 [ color=cyan, fontcolor=cyan,label = "b", comment="ID = 1"];
1 -> 3 [ color=black,label = "c", comment="ID = 2"];
2 -> 3 [ color=red, fontcolor=red,label = "d", comment="ID = 3"];
}
)");
  EXPECT_EQ(graph.bestPathScore, 2);
  EXPECT_EQ(graph.bestPathText, "a c ");
  EXPECT_EQ(graph.selectedPathScore, 5);
  EXPECT_EQ(graph.selectedPathText, "b d ");
}

/// Two paths that part at node 1: through node 2, or by link 3 straight to the end.
Graph forkedChain() {
  Graph graph = latticeOf(4);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 1, 2, "b", 1, 1);
  link(graph, 1, 3, "d", 5, 3);
  link(graph, 2, 3, "c", 1, 2);
  return graph;
}

TEST(DotWriter, DrawsTheBestPathOverThePathThroughTheSelectedEdge) {
  Graph graph = forkedChain();
  setShowBestPath(graph, true);
  select(graph, 3);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
2 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "a", comment="ID = 0"];
1 -> 2 [ color=blue, fontcolor=blue,label = "b", comment="ID = 1"];
1 -> 3 [ color=red, fontcolor=red,label = "d", comment="ID = 3"];
2 -> 3 [ color=blue, fontcolor=blue,label = "c", comment="ID = 2"];
}
)");
  EXPECT_EQ(graph.bestPathText, "a b c ");
  EXPECT_EQ(graph.selectedPathText, "a d ");
  EXPECT_EQ(graph.selectedPathScore, 6);
}

TEST(DotWriter, ShowsASelectedEdgeOfTheBestPathInBlueOnlyWhileTheBestPathIsShown) {
  Graph graph = forkedChain();
  select(graph, 1);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
2 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
0 -> 1 [ color=cyan, fontcolor=cyan,label = "a", comment="ID = 0"];
1 -> 2 [ color=red, fontcolor=red,label = "b", comment="ID = 1"];
1 -> 3 [ color=black,label = "d", comment="ID = 3"];
2 -> 3 [ color=cyan, fontcolor=cyan,label = "c", comment="ID = 2"];
}
)");
  EXPECT_EQ(graph.selectedPathText, "a b c ");

  setShowBestPath(graph, true);
  const std::string description = descriptionOf(graph);
  EXPECT_NE(description.find("1 -> 2 [ color=blue, fontcolor=blue,label = \"b\""),
            std::string::npos)
      << description;
}

TEST(DotWriter, NeverShowsAParallelTwinOfTheSelectedEdgeInCyan) {
  Graph graph = latticeOf(3);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 1, 2, "b", 3, 1);
  link(graph, 1, 2, "c", 1, 2);
  select(graph, 1);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
2 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
0 -> 1 [ color=cyan, fontcolor=cyan,label = "a", comment="ID = 0"];
1 -> 2 [ color=red, fontcolor=red,label = "b", comment="ID = 1"];
1 -> 2 [ color=black,label = "c", comment="ID = 2"];
}
)");
  EXPECT_EQ(graph.selectedPathScore, 4);
  EXPECT_EQ(graph.selectedPathText, "a c ") << "the twin lies on the path, being the better word";
}

TEST(DotWriter, CountsALinkWithIdMinusOneAsOnEveryPathThatLeavesRoomInItsArray) {
  Graph graph = latticeOf(3);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 0, 2, "z", 9, -1);
  link(graph, 1, 2, "b", 1, 1);
  setShowBestPath(graph, true);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
2 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "a", comment="ID = 0"];
0 -> 2 [ color=blue, fontcolor=blue,label = "z", comment="ID = -1"];
1 -> 2 [ color=blue, fontcolor=blue,label = "b", comment="ID = 1"];
}
)");
  EXPECT_EQ(graph.bestPathText, "z b ");

  setShowBestPath(graph, false);
  select(graph, 0);
  const std::string description = descriptionOf(graph);
  EXPECT_NE(description.find("0 -> 2 [ color=cyan, fontcolor=cyan,label = \"z\""),
            std::string::npos)
      << description;
  EXPECT_EQ(graph.selectedPathText, "z b ");
}

TEST(DotWriter, CountsALinkWithIdMinusOneAsOnNoPathThatFillsItsArray) {
  Graph graph = latticeOf(3);
  graph.adjacency->endNode = 1;
  link(graph, 0, 1, "a", 1, 5);
  link(graph, 0, 0, "b", 1, 6);  // the steps 0 to 1 and 0 to 0 both match, the first one twice
  link(graph, 0, 1, "c", 1, 7);
  link(graph, 2, 2, "z", 1, -1);
  setShowBestPath(graph, true);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
2 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=blue, fontcolor=blue,label = "a", comment="ID = 5"];
0 -> 0 [ color=blue, fontcolor=blue,label = "b", comment="ID = 6"];
0 -> 1 [ color=blue, fontcolor=blue,label = "c", comment="ID = 7"];
2 -> 2 [ color=black,label = "z", comment="ID = -1"];
}
)");
}

TEST(DotWriter, HighlightsEveryLinkOfAnIdThatIsOnThePath) {
  Graph graph = diamond();
  link(graph, 2, 1, "twice", 9, 2);
  setShowBestPath(graph, true);
  select(graph, 3);
  link(graph, 2, 0, "red", 9, 3);
  link(graph, 1, 3, "ends like the selected edge", 9, 1);
  link(graph, 2, 2, "starts like it", 9, 1);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
2 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "a", comment="ID = 0"];
0 -> 2 [ color=cyan, fontcolor=cyan,label = "b", comment="ID = 1"];
1 -> 3 [ color=blue, fontcolor=blue,label = "c", comment="ID = 2"];
1 -> 3 [ color=cyan, fontcolor=cyan,label = "ends like the selected edge", comment="ID = 1"];
2 -> 3 [ color=red, fontcolor=red,label = "d", comment="ID = 3"];
2 -> 1 [ color=blue, fontcolor=blue,label = "twice", comment="ID = 2"];
2 -> 0 [ color=red, fontcolor=red,label = "red", comment="ID = 3"];
2 -> 2 [ color=cyan, fontcolor=cyan,label = "starts like it", comment="ID = 1"];
}
)");
}

TEST(DotWriter, StylesTheOnlyNodeAsStartAndAsEnd) {
  Graph graph = latticeOf(1);
  link(graph, 0, 0, "a", 7, 0);
  setShowBestPath(graph, true);
  select(graph, 0);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
0 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 0 [ color=red, fontcolor=red,label = "a", comment="ID = 0"];
}
)");
  EXPECT_EQ(graph.bestPathScore, 0);
  EXPECT_EQ(graph.bestPathText, "");
  EXPECT_EQ(graph.selectedPathScore, 7);
  EXPECT_EQ(graph.selectedPathText, "");
}

TEST(DotWriter, StylesNoPathNodesAmongTwoNodes) {
  Graph graph = latticeOf(2);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 1, 1, "b", 1, 1);
  setShowBestPath(graph, true);
  select(graph, 1);  // the path backwards is 1, 1
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
1 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=blue, fontcolor=blue,label = "a", comment="ID = 0"];
1 -> 1 [ color=red, fontcolor=red,label = "b", comment="ID = 1"];
}
)");
}

TEST(DotWriter, StylesPathNodesUpToTheLastButOneEntryOfThePath) {
  Graph graph = latticeOf(3);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 1, 1, "b", 1, 1);
  link(graph, 1, 2, "c", 1, 2);
  select(graph, 1);  // the path backwards is 2, 1, 1
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
2 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
0 -> 1 [ color=black,label = "a", comment="ID = 0"];
1 -> 1 [ color=red, fontcolor=red,label = "b", comment="ID = 1"];
1 -> 2 [ color=cyan, fontcolor=cyan,label = "c", comment="ID = 2"];
}
)");
}

TEST(DotWriter, StopsStylingPathNodesAtNodeZero) {
  Graph graph = latticeOf(4);
  graph.adjacency->startNode = 1;
  link(graph, 1, 2, "a", 1, 0);
  link(graph, 2, 0, "b", 1, 1);
  link(graph, 0, 3, "c", 1, 2);
  setShowBestPath(graph, true);  // the path backwards is 3, 0, 2, and 1 is not written
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 3 [ color=blue, fontcolor=blue,label = "c", comment="ID = 2"];
1 -> 2 [ color=black,label = "a", comment="ID = 0"];
2 -> 0 [ color=blue, fontcolor=blue,label = "b", comment="ID = 1"];
}
)");
  EXPECT_EQ(graph.bestPathText, "c b ");
}

TEST(DotWriter, StylesTheFirstAndTheLastNodeWhateverTheLatticeDeclares) {
  Graph graph = latticeOf(4);
  graph.adjacency->startNode = 1;
  graph.adjacency->endNode = 2;
  link(graph, 0, 2, "off the path", 1, 0);  // but it fits the zeros behind the path's end
  link(graph, 1, 2, "a", 1, 1);
  setShowBestPath(graph, true);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 2 [ color=blue, fontcolor=blue,label = "off the path", comment="ID = 0"];
1 -> 2 [ color=black,label = "a", comment="ID = 1"];
}
)");
  EXPECT_EQ(graph.bestPathScore, 1);
}

TEST(DotWriter, WritesLinksToTheIndexBehindTheLastNodeButNoneFromIt) {
  Graph graph = latticeOf(2);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 0, 2, "beyond", 1, 1);
  link(graph, 2, 1, "from beyond", 1, 2);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
1 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=black,label = "a", comment="ID = 0"];
0 -> 2 [ color=black,label = "beyond", comment="ID = 1"];
}
)");
}

TEST(DotWriter, DescribesALatticeWithoutAWayToItsEnd) {
  Graph graph = latticeOf(3);
  link(graph, 0, 1, "a", 1, 0);
  setShowBestPath(graph, true);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
2 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=black,label = "a", comment="ID = 0"];
}
)");
  EXPECT_EQ(graph.bestPathScore, NO_EDGE_COST);
  EXPECT_EQ(graph.bestPathText, "");
}

}  // namespace
}  // namespace quorbel
