#include "app/lattices.h"
#include "app/window_fixture.h"
#include "dialogs/choose_value_dialog.h"

namespace quorbel {
namespace {

/// What the status bar and the information text say about the paths.
class PathTexts : public WindowTest {
 protected:
  TestWindow& openTwoWays() { return openLattice(kTwoWays); }

  void select(int linkId) {
    const auto [x, y] = labelCentre(*window, linkId);
    doubleClick(window->m_GraphArea, x, y);
    ASSERT_EQ(window->m_SelectedEdges.size(), 1u);
    ASSERT_EQ(window->m_SelectedEdges[0].linkId, linkId);
  }

  /// Chooses a score in the dialog that the action brings up, and how signs are kept.
  void chooseScore(const char* name, bool negated) {
    answer = [=](Gtk::Dialog& dialog) {
      auto& scores = dynamic_cast<ChooseValueDialog&>(dialog);
      scores.select_value(name);
      scores.zero_score_check().set_active(negated);
      scores.response(Gtk::RESPONSE_OK);
    };
    activate("Scores");
  }

  std::string infoText() const { return window->m_refInfoBuffer->get_text(); }

  /// The status text once the pipeline's own message is taken away.
  std::string statusBelow() {
    window->m_Statusbar.pop(TestWindow::kRunContext);
    return statusOf(*window);
  }

  std::string fileMessage() const { return "graph : " + (folder.path() / "test.lat").string(); }
};

TEST_F(PathTexts, TotalOfAChosenLinkIsShownWithTheBestPathAlone) {
  TestWindow& w = openTwoWays();
  setSelectedEdge(w.m_Graph, true, edgeOf(w, 3));
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25  ---  Shortest Path with the selected edge : 35.5");
  EXPECT_EQ(infoText(), "Shortest path : a / A c / C \n");
}

TEST_F(PathTexts, AreEmptyWithBothPathsOff) {
  TestWindow& w = openTwoWays();
  w.m_refInfoBuffer->set_text("of a run before");
  w.m_Statusbar.push("of a run before", TestWindow::kRunContext);
  w.renderGraph();
  EXPECT_EQ(statusOf(w), fileMessage());
  EXPECT_EQ(infoText(), "");
  EXPECT_EQ(statusBelow(), fileMessage());
}

TEST_F(PathTexts, OfTheBestPath) {
  TestWindow& w = openTwoWays();
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
  EXPECT_EQ(infoText(), "Shortest path : a / A c / C \n");
  EXPECT_EQ(statusBelow(), fileMessage());
}

TEST_F(PathTexts, OfThePathThroughAnEdge) {
  TestWindow& w = openTwoWays();
  select(3);
  activate("DisplayShortestPathSelected");
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25  ---  Shortest Path with the selected edge : 35.5");
  EXPECT_EQ(infoText(), "Shortest path with the selected edge : b / B d / D ");
}

TEST_F(PathTexts, OfBothPaths) {
  TestWindow& w = openTwoWays();
  select(3);
  activate("DisplayShortestPathSelected");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25  ---  Shortest Path with the selected edge : 35.5");
  EXPECT_EQ(infoText(),
            "Shortest path : a / A c / C \nShortest path with the selected edge : b / B d / D ");
  EXPECT_EQ(statusBelow(), fileMessage());
}

TEST_F(PathTexts, GoWhenThePathsAreSwitchedOff) {
  TestWindow& w = openTwoWays();
  activate("DisplayShortestPath");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), fileMessage());
  EXPECT_EQ(infoText(), "");
}

TEST_F(PathTexts, WithoutASelectedEdgeOnlyTheBestPathIsTotalled) {
  TestWindow& w = openTwoWays();
  w.m_ShowPathWithEdge = true;
  w.renderGraph();
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
  EXPECT_EQ(infoText(), "Shortest path with the selected edge : ");
}

TEST_F(PathTexts, OfASelectedEdgeStayHiddenWithBothPathsOff) {
  TestWindow& w = openTwoWays();
  select(3);
  setSelectedEdge(w.m_Graph, true, w.m_SelectedEdges.front());
  w.renderGraph();
  EXPECT_EQ(statusOf(w), fileMessage());
  EXPECT_EQ(infoText(), "");
}

TEST_F(PathTexts, HaveSixDigits) {
  TestWindow& w = openLattice("N=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='a'/> a=-1234567.5\n");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 1.23457e+06");
  openLattice("N=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='a'/> a=-0.33333333\n");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 0.333333");
}

TEST_F(PathTexts, FollowAChangeOfTheScore) {
  TestWindow& w = openTwoWays();
  select(0);
  activate("DisplayShortestPathSelected");
  ASSERT_EQ(statusOf(w),
            "Shortest Path : 30.25  ---  Shortest Path with the selected edge : 30.25");
  chooseScore("lm", true);
  EXPECT_EQ(statusOf(w), "Shortest Path : 2  ---  Shortest Path with the selected edge : 7");
}

TEST_F(PathTexts, FollowAChangeOfTheSigns) {
  TestWindow& w = openTwoWays();
  select(0);
  activate("DisplayShortestPathSelected");
  chooseScore("lm", false);
  EXPECT_EQ(statusOf(w), "Shortest Path : -7  ---  Shortest Path with the selected edge : -7");
  chooseScore("lm", true);
  EXPECT_EQ(statusOf(w), "Shortest Path : 2  ---  Shortest Path with the selected edge : 7");
}

TEST_F(PathTexts, AreThoseOfTheLatestSwitches) {
  TestWindow& w = openTwoWays();
  duringStage("Loading graph image...", [&] { activate("DisplayShortestPath"); });
  w.renderGraph();
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
}

}  // namespace
}  // namespace quorbel
