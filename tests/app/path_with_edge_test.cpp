#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

const char* const kThroughLink3 =
    "digraph G {\n"
    "rankdir=LR;\n"
    "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
    "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
    "2 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];\n"
    "0 -> 1 [ color=black,label = \"a / A\", comment=\"ID = 0\"];\n"
    "0 -> 2 [ color=cyan, fontcolor=cyan,label = \"b / B\", comment=\"ID = 1\"];\n"
    "1 -> 3 [ color=black,label = \"c / C\", comment=\"ID = 2\"];\n"
    "2 -> 3 [ color=red, fontcolor=red,label = \"d / D\", comment=\"ID = 3\"];\n"
    "}\n";

/// The best path through the first selected edge.
class PathWithEdge : public CanvasTest {
 protected:
  static std::string description() { return textOf("quorbel_graph.dot"); }

  /// Takes the one selected edge out again.
  void unselect(int linkId) {
    const auto [x, y] = labelCentre(*window, linkId);
    pressKey(GDK_KEY_Control_L);
    doubleClick(window->m_GraphArea, x, y);
    releaseKey(GDK_KEY_Control_L);
    ASSERT_EQ(selectedIds(), std::vector<int>{});
  }
};

TEST_F(PathWithEdge, LeadsThroughTheSelectedEdge) {
  TestWindow& w = open(kTwoWays);
  selectByPointer({3});
  activate("DisplayShortestPathSelected");
  EXPECT_TRUE(w.m_ShowPathWithEdge);
  EXPECT_FALSE(w.m_ShowPath);
  EXPECT_TRUE(w.m_Graph.hasSelectedEdge);
  EXPECT_EQ(w.m_Graph.selectedEdge.linkId, 3);
  EXPECT_EQ(w.m_Graph.selectedEdge.startNode, 2);
  EXPECT_EQ(w.m_Graph.selectedEdge.endNode, 3);
  EXPECT_EQ(w.m_Graph.selectedEdge.label, "d / D");
  EXPECT_EQ(w.m_Graph.selectedEdge.word, "<w in='d' out='D'/>");
  EXPECT_EQ(w.m_Graph.selectedEdge.score, 30.0);
  EXPECT_EQ(w.m_Graph.selectedPathScore, 35.5);
  EXPECT_EQ(description(), kThroughLink3);
  EXPECT_EQ(takeDotRuns(), 2);
}

TEST_F(PathWithEdge, LeadsThroughTheFirstOfSeveral) {
  TestWindow& w = open(kTwoWays);
  selectByPointer({3, 0});
  activate("DisplayShortestPathSelected");
  EXPECT_EQ(w.m_Graph.selectedEdge.linkId, 3);
  EXPECT_EQ(description(), kThroughLink3);
}

TEST_F(PathWithEdge, FollowsANewSelectionWhenItIsAskedForAgain) {
  TestWindow& w = open(kTwoWays);
  selectByPointer({0});
  activate("DisplayShortestPathSelected");
  EXPECT_EQ(w.m_Graph.selectedPathScore, 30.25);
  selectByPointer({3});
  EXPECT_EQ(w.m_Graph.selectedEdge.linkId, 0);
  takeDotRuns();
  activate("DisplayShortestPathSelected");
  EXPECT_TRUE(w.m_ShowPathWithEdge) << "it is no toggle";
  EXPECT_EQ(description(), kThroughLink3);
  EXPECT_EQ(takeDotRuns(), 2);
  activate("DisplayShortestPathSelected");
  EXPECT_TRUE(w.m_ShowPathWithEdge);
  EXPECT_EQ(description(), kThroughLink3);
}

TEST_F(PathWithEdge, StaysUntilItIsAskedForWithNothingSelected) {
  TestWindow& w = open(kTwoWays);
  const std::string plain = description();
  selectByPointer({3});
  activate("DisplayShortestPathSelected");
  unselect(3);
  w.renderGraph();
  EXPECT_TRUE(w.m_ShowPathWithEdge);
  EXPECT_EQ(description(), kThroughLink3);
  takeDotRuns();

  activate("DisplayShortestPathSelected");
  EXPECT_FALSE(w.m_ShowPathWithEdge);
  EXPECT_FALSE(w.m_Graph.hasSelectedEdge);
  EXPECT_EQ(w.m_Graph.selectedPathScore, -1.0);
  EXPECT_EQ(description(), plain);
  EXPECT_EQ(takeDotRuns(), 2);
}

TEST_F(PathWithEdge, DoesNothingAtAllWithoutSelectionAndDisplay) {
  TestWindow& w = open(kTwoWays);
  takeCanvasRepaints();
  takeStripRepaints();
  activate("DisplayShortestPathSelected");
  EXPECT_FALSE(w.m_ShowPathWithEdge);
  EXPECT_FALSE(w.m_Graph.hasSelectedEdge);
  EXPECT_EQ(takeDotRuns(), 0);
  EXPECT_EQ(takeCanvasRepaints(), 0);
  EXPECT_EQ(takeStripRepaints(), 0);
}

TEST_F(PathWithEdge, DoesNothingOnceItIsSwitchedOff) {
  open(kTwoWays);
  selectByPointer({3});
  activate("DisplayShortestPathSelected");
  unselect(3);
  activate("DisplayShortestPathSelected");
  takeDotRuns();
  activate("DisplayShortestPathSelected");
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(PathWithEdge, IsSwitchedOffWhenTheSelectionWasCleared) {
  TestWindow& w = open(kTwoWays);
  selectByPointer({3});
  activate("DisplayShortestPathSelected");
  w.clear_selection();
  activate("DisplayShortestPathSelected");
  EXPECT_FALSE(w.m_ShowPathWithEdge);
  EXPECT_FALSE(w.m_Graph.hasSelectedEdge);
}

TEST_F(PathWithEdge, IsDrawnBelowTheBestPath) {
  open(kTwoWays);
  selectByPointer({0});
  activate("DisplayShortestPathSelected");
  EXPECT_NE(description().find("0 -> 1 [ color=red, fontcolor=red"), std::string::npos);
  activate("DisplayShortestPath");
  EXPECT_NE(description().find("0 -> 1 [ color=blue, fontcolor=blue"), std::string::npos);
}

TEST_F(PathWithEdge, GoesWithTheFile) {
  TestWindow& w = open(kTwoWays);
  selectByPointer({3});
  activate("DisplayShortestPathSelected");
  open(kTwoWays);
  EXPECT_FALSE(w.m_ShowPathWithEdge);
  EXPECT_FALSE(w.m_Graph.hasSelectedEdge);
  EXPECT_EQ(selectedIds(), std::vector<int>{});
  takeDotRuns();
  activate("DisplayShortestPathSelected");
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(PathWithEdge, KeepsTheSelectionMarked) {
  TestWindow& w = open(kTwoWays);
  selectByPointer({3, 1});
  activate("DisplayShortestPathSelected");
  EXPECT_EQ(selectedIds(), (std::vector<int>{3, 1}));
  EXPECT_EQ(w.m_SelectedEdges[0].x, edgeOf(w, 3).x);
}

}  // namespace
}  // namespace quorbel
