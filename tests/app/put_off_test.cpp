#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

/// Commands that open a file or a dialog and arrive while a drawing is made: they wait.
class PutOff : public WindowTest {
 protected:
  PutOff() {
    folder.write("test.words.lat", kTwoWords);  // beside test.lat, which openLattice writes
    folder.write("test.ways.lat", kTwoWays);
  }

  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }

  std::string titleOf(const std::string& name) const { return "Quorbel - " + pathOf(name); }

  /// Activates the entry of the menu of siblings with this name.
  void chooseSibling(const std::string& name) {
    for (Gtk::MenuItem& item : window->m_SiblingMenu.items())
      if (item.get_label() == name) return item.activate();
    FAIL() << name;
  }

  /// Lets what was put off be carried out, up to the point where `condition` holds.
  void expectInTheEnd(const std::function<bool()>& condition) {
    EXPECT_TRUE(waitFor([&] { return condition() && window->m_RunsInProgress == 0; }));
    settle();
    EXPECT_TRUE(condition());
  }
};

TEST_F(PutOff, LatticeOpenedMeanwhileIsOpenedAfterwards) {
  for (const char* stage : kStages) {
    SCOPED_TRACE(stage);
    TestWindow& w = openLattice(kTwoWords);
    bool wasOpen = false;
    duringStage(stage, [&] {
      chooseSibling("test.ways.lat");
      wasOpen = w.m_FileOpened && w.m_Graph.adjacency->nodeCount == 3;
    });
    activate("DisplayValue");
    EXPECT_TRUE(wasOpen);
    EXPECT_EQ(w.get_title(), titleOf("test.lat"));
    EXPECT_EQ(edgeOf(w, 0).label, "10");
    expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
    EXPECT_EQ(statusOf(w), "graph : " + pathOf("test.ways.lat"));
    EXPECT_EQ(w.m_EdgeLayouts.size(), 8u);
    EXPECT_EQ(edgeOf(w, 3).label, "d / D");
  }
}

TEST_F(PutOff, LatticeIsLookedForInTheFolderItWasChosenIn) {
  std::filesystem::create_directory("other");
  const std::string other = folder.write("other/other.lat", kTwoWords);
  TestWindow& w = openLattice(kTwoWords);
  answer = [&](Gtk::Dialog& dialog) {
    choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), other, Gtk::RESPONSE_OK);
  };
  duringStage("Creating graph...", [&] {
    activate("FileOpen");
    chooseSibling("test.ways.lat");
  });
  activate("DisplayValue");
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
  EXPECT_EQ(dialogs, Texts{"Please choose a HTK file"});
}

TEST_F(PutOff, ClosingForgetsTheLatticesThatWait) {
  TestWindow& w = openLattice(kTwoWords);
  Texts titles;
  w.property_title().signal_changed().connect([&] { titles.push_back(w.get_title()); });
  duringStage("Creating graph...", [&] {
    chooseSibling("test.words.lat");
    activate("FileClose");
    chooseSibling("test.ways.lat");
  });
  activate("DisplayValue");
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
  EXPECT_EQ(titles, (Texts{"Quorbel", titleOf("test.ways.lat")}));
}

TEST_F(PutOff, ClosingLeavesADialogThatWaits) {
  TestWindow& w = openLattice(kTwoWords);
  duringStage("Creating graph...", [&] {
    activate("FileOpen");
    activate("FileClose");
  });
  answer = [&](Gtk::Dialog& dialog) {
    EXPECT_FALSE(w.m_FileOpened);
    choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), pathOf("test.ways.lat"),
           Gtk::RESPONSE_OK);
  };
  activate("DisplayValue");
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
  EXPECT_EQ(dialogs, Texts{"Please choose a HTK file"});
}

TEST_F(PutOff, LatticeOpenedBeforeTheFirstStageWaitsToo) {
  TestWindow& w = openLattice(kTwoWords);
  Glib::signal_idle().connect_once([&] { chooseSibling("test.ways.lat"); });
  w.renderGraph();
  EXPECT_EQ(w.get_title(), titleOf("test.lat"));
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
}

TEST_F(PutOff, ClosingIsNot) {
  for (const char* stage : kStages) {
    SCOPED_TRACE(stage);
    TestWindow& w = openLattice(kTwoWords);
    duringStage(stage, [] {});
    duringStage(stage, [this] { activate("FileClose"); });
    activate("DisplayValue");
    EXPECT_FALSE(w.m_FileOpened);
    EXPECT_FALSE(w.m_Rendering);
    EXPECT_EQ(w.m_RunsInProgress, 0);
    EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
    EXPECT_EQ(w.get_title(), "Quorbel");
    EXPECT_EQ(statusOf(w), "No file opened");
    EXPECT_TRUE(w.m_EdgeLayouts.empty());
    EXPECT_FALSE(w.m_refGraphImage);
    w.m_Statusbar.pop(TestWindow::kFileContext);
    EXPECT_EQ(statusOf(w), "");
  }
}

TEST_F(PutOff, ClosingDuringTheFirstDrawingIsNot) {
  for (const char* stage : kStages) {
    SCOPED_TRACE(stage);
    folder.write("test.wav", "no sound");
    TestWindow& w = showWindow();
    duringStage(stage, [this] { activate("FileClose"); });
    openLattice(kTwoWords);
    EXPECT_FALSE(w.m_FileOpened);
    EXPECT_EQ(w.get_title(), "Quorbel");
    EXPECT_EQ(statusOf(w), "No file opened");
    EXPECT_FALSE(w.m_refGraphImage);
    EXPECT_EQ(dialogs, Texts());
  }
}

TEST_F(PutOff, OpenDialogComesUpAfterwards) {
  TestWindow& w = openLattice(kTwoWords);
  duringStage("Creating graph...", [this] { activate("FileOpen"); });
  bool drawn = false;
  answer = [&](Gtk::Dialog& dialog) {
    drawn = w.m_RunsInProgress == 0 && edgeOf(w, 0).label == "10";
    choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), pathOf("test.ways.lat"),
           Gtk::RESPONSE_OK);
  };
  activate("DisplayValue");
  EXPECT_EQ(dialogs, Texts());
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
  EXPECT_EQ(dialogs, Texts{"Please choose a HTK file"});
  EXPECT_TRUE(drawn);
}

TEST_F(PutOff, CommandsAreCarriedOutInTheirOrder) {
  TestWindow& w = openLattice(kTwoWords);
  duringStage("Creating graph...", [this] {
    chooseSibling("test.ways.lat");
    chooseSibling("test.words.lat");
  });
  Texts titles;
  w.property_title().signal_changed().connect([&] { titles.push_back(w.get_title()); });
  activate("DisplayValue");
  expectInTheEnd([&] { return w.get_title() == titleOf("test.words.lat"); });
  EXPECT_EQ(titles,
            (Texts{"Quorbel", titleOf("test.ways.lat"), "Quorbel", titleOf("test.words.lat")}));
}

TEST_F(PutOff, NextCommandWaitsForTheDialogOfTheOneBefore) {
  TestWindow& w = openLattice(kTwoWords);
  duringStage("Creating graph...", [this] {
    activate("FileOpen");
    chooseSibling("test.words.lat");
  });
  bool openDuringDialog = false;
  answer = [&](Gtk::Dialog& dialog) {
    // time enough for a command that does not wait
    constexpr unsigned kLongAfterMs = 200;
    Glib::signal_timeout().connect_once(
        [&] {
          openDuringDialog = w.get_title() == titleOf("test.lat");
          choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), pathOf("test.ways.lat"),
                 Gtk::RESPONSE_OK);
        },
        kLongAfterMs);
  };
  Texts titles;
  w.property_title().signal_changed().connect([&] { titles.push_back(w.get_title()); });
  activate("DisplayValue");
  expectInTheEnd([&] { return w.get_title() == titleOf("test.words.lat"); });
  EXPECT_TRUE(openDuringDialog);
  EXPECT_EQ(titles,
            (Texts{"Quorbel", titleOf("test.ways.lat"), "Quorbel", titleOf("test.words.lat")}));
}

TEST_F(PutOff, CommandThatComesBeforeTheyAreCarriedOutComesAfterThem) {
  TestWindow& w = openLattice(kTwoWords);
  duringStage("Creating graph...", [this] { chooseSibling("test.ways.lat"); });
  activate("DisplayValue");
  activate("FileClose");
  EXPECT_TRUE(w.m_FileOpened);
  expectInTheEnd([&] { return !w.m_FileOpened && w.m_Graph.adjacency->nodeCount == 4; });
}

TEST_F(PutOff, CommandsWaitForAnErrorBoxToBeAnswered) {
  folder.write("test.wav", "no sound");
  TestWindow& w = showWindow();
  duringStage("Creating graph...", [this] { chooseSibling("test.ways.lat"); });
  Texts titlesBehindBoxes;
  answer = [&](Gtk::Dialog& dialog) {
    constexpr unsigned kLongAfterMs = 200;
    Glib::signal_timeout().connect_once(
        [&] {
          titlesBehindBoxes.push_back(w.get_title());
          dialog.response(Gtk::RESPONSE_OK);
        },
        kLongAfterMs);
  };
  openLattice(kTwoWords);
  expectInTheEnd([&] { return titlesBehindBoxes.size() == 2; });
  EXPECT_EQ(dialogs, Texts(2, "Unable to load " + pathOf("test.wav")));
  EXPECT_EQ(titlesBehindBoxes, (Texts{titleOf("test.lat"), titleOf("test.ways.lat")}));
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
}

TEST_F(PutOff, CommandsDuringTheFirstDrawingWaitForItsEnd) {
  window = std::make_unique<TestWindow>(folder.write("test.lat", kTwoWords));
  TestWindow& w = *window;
  duringStage("Loading graph elements...", [this] { chooseSibling("test.ways.lat"); });
  w.show();
  EXPECT_EQ(w.get_title(), titleOf("test.lat"));
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
}

TEST_F(PutOff, FailureOfOneDoesNotKeepTheNextFromBeingCarriedOut) {
  TestWindow& w = openLattice(kTwoWords);
  PrintedText printed;
  duringStage("Creating graph...", [this] {
    chooseSibling("test.words.lat");
    chooseSibling("test.ways.lat");
  });
  activate("DisplayValue");
  replaceDot(
      "if grep -q '3 \\[' quorbel_graph.dot; then exec \"$REAL_DOT\" \"$@\"; else rm -f $3; fi");
  expectInTheEnd([&] { return w.get_title() == titleOf("test.ways.lat"); });
  EXPECT_EQ(dialogs.size(), 1u);
  EXPECT_EQ(w.m_EdgeLayouts.size(), 8u);
}

TEST_F(PutOff, AreForgottenWithTheWindow) {
  openLattice(kTwoWords);
  duringStage("Creating graph...", [this] { chooseSibling("test.ways.lat"); });
  activate("DisplayValue");
  replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
  window.reset();
  bool timePassed = false;
  Glib::signal_timeout().connect_once([&] { timePassed = true; }, 100);
  waitFor([&] { return timePassed; });
  EXPECT_FALSE(std::filesystem::exists("dot-ran"));
}

TEST_F(PutOff, DisplayActionsAreNot) {
  TestWindow& w = openLattice(kTwoWays);
  replaceDot("echo ran >> runs; exec \"$REAL_DOT\" \"$@\"");
  duringStage("Loading graph elements...", [&] {
    activate("DisplayShortestPath");
    EXPECT_TRUE(w.m_ShowPath);
    EXPECT_TRUE(w.m_Graph.showBestPath);
    activate("DisplayValue");
    EXPECT_TRUE(w.m_Graph.labelByValue);
  });
  w.renderGraph();
  settle();
  EXPECT_EQ(linesOf("runs").size(), 2u);
  EXPECT_EQ(edgeOf(w, 0).label, "a / A");
  EXPECT_EQ(textOf("quorbel_graph.dot").find("color=blue"), std::string::npos);
  w.renderGraph();
  EXPECT_EQ(edgeOf(w, 0).label, "10");
  EXPECT_NE(textOf("quorbel_graph.dot").find("color=blue"), std::string::npos);
}

TEST_F(PutOff, DisplayActionBeforeTheFirstStageDrawsAtOnce) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("echo ran >> runs; exec \"$REAL_DOT\" \"$@\"");
  Glib::signal_idle().connect_once([&] {
    activate("DisplayValue");
    EXPECT_EQ(edgeOf(w, 0).label, "10");
  });
  w.renderGraph();
  EXPECT_EQ(linesOf("runs").size(), 4u);
  EXPECT_FALSE(w.m_Rendering);
}

}  // namespace
}  // namespace quorbel
