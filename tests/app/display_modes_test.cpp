#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

const char* const kPlainDescription =
    "digraph G {\n"
    "rankdir=LR;\n"
    "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
    "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
    "0 -> 1 [ color=black,label = \"a / A\", comment=\"ID = 0\"];\n"
    "0 -> 2 [ color=black,label = \"b / B\", comment=\"ID = 1\"];\n"
    "1 -> 3 [ color=black,label = \"c / C\", comment=\"ID = 2\"];\n"
    "2 -> 3 [ color=black,label = \"d / D\", comment=\"ID = 3\"];\n"
    "}\n";

const char* const kBestPathDescription =
    "digraph G {\n"
    "rankdir=LR;\n"
    "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
    "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
    "1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n"
    "0 -> 1 [ color=blue, fontcolor=blue,label = \"a / A\", comment=\"ID = 0\"];\n"
    "0 -> 2 [ color=black,label = \"b / B\", comment=\"ID = 1\"];\n"
    "1 -> 3 [ color=blue, fontcolor=blue,label = \"c / C\", comment=\"ID = 2\"];\n"
    "2 -> 3 [ color=black,label = \"d / D\", comment=\"ID = 3\"];\n"
    "}\n";

const char* const kValueDescription =
    "digraph G {\n"
    "rankdir=LR;\n"
    "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
    "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
    "0 -> 1 [ color=black,label = \"10\", comment=\"ID = 0\"];\n"
    "0 -> 2 [ color=black,label = \"5.5\", comment=\"ID = 1\"];\n"
    "1 -> 3 [ color=black,label = \"20.25\", comment=\"ID = 2\"];\n"
    "2 -> 3 [ color=black,label = \"30\", comment=\"ID = 3\"];\n"
    "}\n";

/// What the drawing shows, as the description tells it to `dot`.
class DisplayModes : public CanvasTest {
 protected:
  static std::string description() { return textOf("quorbel_graph.dot"); }

  /// Checks that no switch of the drawing is on.
  static void expectOff(const TestWindow& w) {
    EXPECT_FALSE(w.m_ShowPath);
    EXPECT_FALSE(w.m_ShowPathWithEdge);
    EXPECT_FALSE(w.m_Graph.showBestPath);
    EXPECT_FALSE(w.m_Graph.hasSelectedEdge);
    EXPECT_FALSE(w.m_Graph.labelByValue);
    EXPECT_FALSE(w.m_Graph.labelBySelectedXml);
  }
};

const char* const kModes[] = {"DisplayShortestPath", "DisplayShortestPathSelected",
                              "DisplayDefault", "DisplaySelectedXML", "DisplayValue"};

TEST_F(DisplayModes, DoNothingBeforeALatticeIsOpen) {
  replaceDot("echo run >>dot-runs");
  TestWindow& w = showWindow();
  for (const char* mode : kModes) {
    activate(mode);
    expectOff(w);
    EXPECT_EQ(w.m_Graph.fieldsByName.size(), 0u);
  }
  EXPECT_EQ(takeDotRuns(), 0);
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

TEST_F(DisplayModes, DoNothingAfterTheLatticeIsClosed) {
  TestWindow& w = open(kTwoWays);
  activate("FileClose");
  w.m_Graph.fieldsByName.clear();
  for (const char* mode : kModes) {
    activate(mode);
    expectOff(w);
    EXPECT_EQ(w.m_Graph.fieldsByName.size(), 0u);
  }
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(DisplayModes, PathsNeedAPicture) {
  TestWindow& w = open(kTwoWays);
  w.m_SelectedEdges = {edgeOf(w, 0)};
  w.m_refGraphImage.reset();
  activate("DisplayShortestPath");
  activate("DisplayShortestPathSelected");
  expectOff(w);
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(DisplayModes, LabelsNeedAnOpenLatticeAndNoPicture) {
  TestWindow& w = open(kTwoWays);
  w.m_refGraphImage.reset();
  activate("DisplayValue");
  EXPECT_TRUE(w.m_Graph.labelByValue);
  EXPECT_EQ(takeDotRuns(), 2);
  EXPECT_TRUE(w.m_refGraphImage);
}

TEST_F(DisplayModes, ShortestPathIsSwitchedOnAndOff) {
  TestWindow& w = open(kTwoWays);
  EXPECT_EQ(description(), kPlainDescription);
  activate("DisplayShortestPath");
  EXPECT_TRUE(w.m_ShowPath);
  EXPECT_TRUE(w.m_Graph.showBestPath);
  EXPECT_EQ(description(), kBestPathDescription);
  EXPECT_EQ(takeDotRuns(), 2);
  activate("DisplayShortestPath");
  EXPECT_FALSE(w.m_ShowPath);
  EXPECT_FALSE(w.m_Graph.showBestPath);
  EXPECT_EQ(description(), kPlainDescription);
  EXPECT_EQ(takeDotRuns(), 2);
}

TEST_F(DisplayModes, ValueLabelsEdgesByTheirScore) {
  TestWindow& w = open(kTwoWays);
  activate("DisplayValue");
  EXPECT_TRUE(w.m_Graph.labelByValue);
  EXPECT_EQ(description(), kValueDescription);
  EXPECT_EQ(edgeOf(w, 2).label, "20.25");
  EXPECT_EQ(takeDotRuns(), 2);
  activate("DisplayValue");
  EXPECT_TRUE(w.m_Graph.labelByValue) << "it is no toggle";
  EXPECT_EQ(description(), kValueDescription);
  EXPECT_EQ(takeDotRuns(), 2);
}

TEST_F(DisplayModes, DefaultLabelsEdgesByInAndOut) {
  TestWindow& w = open(kTwoWays);
  activate("DisplayValue");
  w.m_Graph.labelBySelectedXml = true;
  w.m_Graph.fieldsByName = {{{1, 2}, "other"}};
  takeDotRuns();
  activate("DisplayDefault");
  EXPECT_FALSE(w.m_Graph.labelByValue);
  EXPECT_FALSE(w.m_Graph.labelBySelectedXml);
  ASSERT_EQ(w.m_Graph.fieldsByName.size(), 2u);
  EXPECT_EQ(w.m_Graph.fieldsByName[0].path, IndexPath{1});
  EXPECT_EQ(w.m_Graph.fieldsByName[0].attribute, "in");
  EXPECT_EQ(w.m_Graph.fieldsByName[1].path, IndexPath{1});
  EXPECT_EQ(w.m_Graph.fieldsByName[1].attribute, "out");
  EXPECT_EQ(description(), kPlainDescription);
  EXPECT_EQ(takeDotRuns(), 2);
}

TEST_F(DisplayModes, ValueKeepsWhichFieldsAreSelected) {
  TestWindow& w = open(kTwoWays);
  w.m_Graph.labelBySelectedXml = true;
  activate("DisplayValue");
  EXPECT_TRUE(w.m_Graph.labelBySelectedXml);
  EXPECT_TRUE(w.m_Graph.labelByValue);
}

TEST_F(DisplayModes, PathAndLabelsAreIndependent) {
  TestWindow& w = open(kTwoWays);
  activate("DisplayShortestPath");
  activate("DisplayValue");
  EXPECT_TRUE(w.m_ShowPath);
  EXPECT_NE(description().find("0 -> 1 [ color=blue, fontcolor=blue,label = \"10\""),
            std::string::npos);
  activate("DisplayDefault");
  EXPECT_EQ(description(), kBestPathDescription);
}

TEST_F(DisplayModes, OfLinksWithoutAttributesAreNull) {
  TestWindow& w = open(
      "N=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\nJ=0 S=0 E=1 W=\"plain\" a=-1\n"
      "J=1 S=1 E=2 W=<a in='x'/> <b in='y'/> a=-1\nJ=2 S=1 E=2 W=<w/> a=-1\n");
  for (const int linkId : {0, 1, 2}) EXPECT_EQ(edgeOf(w, linkId).label, "NULL");
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

TEST_F(DisplayModes, ChosenWhileTheLatticeIsDrawnComeWithTheNextDrawing) {
  TestWindow& w = open(kTwoWays);
  duringStage("Loading graph elements...", [&] { activate("DisplayValue"); });
  w.renderGraph();
  EXPECT_TRUE(w.m_Graph.labelByValue);
  EXPECT_EQ(takeDotRuns(), 2) << "one drawing alone";
  EXPECT_EQ(description(), kPlainDescription);
  EXPECT_EQ(edgeOf(w, 2).label, "c / C");
  w.renderGraph();
  EXPECT_EQ(description(), kValueDescription);
  EXPECT_EQ(edgeOf(w, 2).label, "20.25");
}

TEST_F(DisplayModes, AreReachedThroughTheMenus) {
  TestWindow& w = open(kTwoWays);
  const auto choose = [&](const std::string& entry) {
    auto* const item =
        dynamic_cast<Gtk::MenuItem*>(w.m_refUIManager->get_widget("/MenuBar/DisplayMenu/" + entry));
    ASSERT_TRUE(item) << entry;
    item->activate();
  };
  choose("Edges/DisplayValue");
  EXPECT_EQ(description(), kValueDescription);
  choose("Edges/DisplayDefault");
  EXPECT_EQ(description(), kPlainDescription);
  choose("DisplayShortestPath");
  EXPECT_EQ(description(), kBestPathDescription);
}

}  // namespace
}  // namespace quorbel
