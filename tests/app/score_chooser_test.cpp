#include <gtk/gtk.h>

#include "app/canvas_fixture.h"
#include "dialogs/choose_value_dialog.h"

namespace quorbel {
namespace {

using Names = std::vector<std::string>;

/// The action that chooses the score, with the real dialog answered by the test.
class ScoreChooser : public CanvasTest {
 protected:
  /// What the dialog offered when it came up.
  struct Offer {
    Names names;
    std::string chosen;
    bool isNegated = false;
    std::string title;
    bool isModal = false;
    bool hasSeparator = false;
    bool isForTheWindow = false;
    bool isResizable = true;
  };

  /// Runs the action; `change` sets up the dialog before it gets the response.
  Offer choose(int response, const std::function<void(ChooseValueDialog&)>& change = {}) {
    Offer offer;
    answer = [&](Gtk::Dialog& dialog) {
      auto& chooser = dynamic_cast<ChooseValueDialog&>(dialog);
      for (Gtk::Widget* child : chooser.get_vbox()->get_children())
        if (auto* const button = dynamic_cast<Gtk::RadioButton*>(child))
          offer.names.push_back(button->get_label());
      offer.chosen = chooser.chosen_value();
      offer.isNegated = chooser.zero_score_check().get_active();
      offer.title = chooser.get_title();
      offer.isModal = chooser.get_modal();
      offer.hasSeparator = chooser.get_has_separator();
      offer.isForTheWindow = chooser.get_transient_for() == window.get();
      offer.isResizable = chooser.get_resizable();
      if (change) change(chooser);
      chooser.response(response);
    };
    activate("Scores");
    return offer;
  }

  Offer chooseName(const char* name) {
    return choose(Gtk::RESPONSE_OK, [=](ChooseValueDialog& dialog) { dialog.select_value(name); });
  }

  Offer chooseSign(bool isNegated) {
    return choose(Gtk::RESPONSE_OK, [=](ChooseValueDialog& dialog) {
      dialog.zero_score_check().set_active(isNegated);
    });
  }

  static ChooseValueDialog* chooserOnScreen() {
    for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
      if (auto* const chooser = dynamic_cast<ChooseValueDialog*>(toplevel))
        if (chooser->is_mapped()) return chooser;
    return nullptr;
  }

  double scoreOf(int startNode, const char* name) {
    return window->m_Graph.adjacency->outgoing[static_cast<std::size_t>(startNode)][0].scores.at(
        name);
  }
};

/// The first link has its names in an order that is not theirs, its end node one more; the last
/// link line of the file makes "lm" the current score.
const char* const kManyScores =
    "N=3 L=3\nI=0 t=0\nI=1 t=1 ngram=-4\nI=2 t=2\n"
    "J=0 S=0 E=1 W=<w in='a'/> lm=-1 Zeta=-2 ac=-3\n"
    "J=1 S=0 E=1 W=<w in='b'/> only=-5 lm=-6\n"
    "J=2 S=1 E=2 W=<w in='c'/> lm=-7\n";

TEST_F(ScoreChooser, DoesNothingWithoutALattice) {
  showWindow();
  activate("Scores");
  EXPECT_EQ(dialogs, Names{});
  open(kManyScores);
  activate("FileClose");
  activate("Scores");
  EXPECT_EQ(dialogs, Names{});
}

TEST_F(ScoreChooser, ComesUpOverTheWindow) {
  open(kManyScores);
  const Offer offer = choose(Gtk::RESPONSE_CANCEL);
  EXPECT_EQ(dialogs, Names{"Quorbel"});
  EXPECT_EQ(offer.title, "Quorbel");
  EXPECT_TRUE(offer.isModal);
  EXPECT_TRUE(offer.hasSeparator);
  EXPECT_TRUE(offer.isForTheWindow);
  EXPECT_FALSE(offer.isResizable);
}

TEST_F(ScoreChooser, OffersTheScoresOfTheFirstLinkInTheOrderOfBytes) {
  open(kManyScores);
  const Offer offer = choose(Gtk::RESPONSE_CANCEL);
  EXPECT_EQ(offer.names, (Names{"Zeta", "ac", "lm", "ngram"}));
  EXPECT_EQ(offer.chosen, "lm");
}

TEST_F(ScoreChooser, ShowsHowTheSignsAre) {
  TestWindow& w = open(kManyScores);
  EXPECT_TRUE(choose(Gtk::RESPONSE_CANCEL).isNegated);
  w.m_Graph.scoresNegated = false;
  EXPECT_FALSE(choose(Gtk::RESPONSE_CANCEL).isNegated);
  w.m_Graph.scoresNegated = true;
}

TEST_F(ScoreChooser, ChosenNameIsTheScoreFromThenOn) {
  TestWindow& w = open(kManyScores);
  activate("DisplayValue");
  EXPECT_EQ(edgeOf(w, 0).label, "1");
  takeDotRuns();
  chooseName("ac");
  EXPECT_EQ(currentScoreName, "ac");
  EXPECT_EQ(takeDotRuns(), 2);
  EXPECT_EQ(edgeOf(w, 0).label, "3");
  EXPECT_EQ(edgeOf(w, 0).score, 3.0);
  EXPECT_EQ(w.m_Graph.bestPathScore, 3.0) << "links without the score cost nothing";
  EXPECT_EQ(chooseName("ngram").chosen, "ac");
  EXPECT_EQ(edgeOf(w, 0).label, "4");
}

TEST_F(ScoreChooser, RadioButtonsAreClicked) {
  open(kManyScores);
  choose(Gtk::RESPONSE_OK, [](ChooseValueDialog& dialog) {
    for (Gtk::Widget* child : dialog.get_vbox()->get_children()) {
      auto* const button = dynamic_cast<Gtk::RadioButton*>(child);
      if (button && button->get_label() == "Zeta") button->clicked();
    }
  });
  EXPECT_EQ(currentScoreName, "Zeta");
}

TEST_F(ScoreChooser, FirstNameIsChosenWhenTheCurrentIsNotOffered) {
  open(
      "N=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
      "J=0 S=0 E=1 W=<w in='a'/> bb=-1 cc=-2\nJ=1 S=1 E=2 W=<w in='b'/> bb=-3\n");
  currentScoreName = "aa";  // opening would have added it to every link
  const Offer offer = choose(Gtk::RESPONSE_CANCEL);
  EXPECT_EQ(offer.names, (Names{"bb", "cc"}));
  EXPECT_EQ(offer.chosen, "bb");
  EXPECT_EQ(currentScoreName, "aa");
  choose(Gtk::RESPONSE_OK);
  EXPECT_EQ(currentScoreName, "bb");
}

TEST_F(ScoreChooser, NamesAddedByLookingThemUpAreOfferedToo) {
  open(
      "N=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
      "J=0 S=0 E=1 W=<w in='a'/> bb=-1\nJ=1 S=1 E=2 W=<w in='b'/> aa=-3\n");
  EXPECT_EQ(choose(Gtk::RESPONSE_CANCEL).names, (Names{"aa", "bb"}));
}

TEST_F(ScoreChooser, ChangedSignTurnsEveryScoreRound) {
  TestWindow& w = open(kManyScores);
  activate("DisplayValue");
  takeDotRuns();
  chooseSign(false);
  EXPECT_FALSE(w.m_Graph.scoresNegated);
  EXPECT_EQ(scoreOf(0, "lm"), -1.0);
  EXPECT_EQ(scoreOf(0, "ac"), -3.0);
  EXPECT_EQ(scoreOf(1, "lm"), -7.0);
  EXPECT_EQ(w.m_Graph.nodes[1].scores.at("ngram"), -4.0);
  EXPECT_EQ(edgeOf(w, 2).score, -7.0);
  EXPECT_EQ(edgeOf(w, 2).label, "-7");
  EXPECT_EQ(currentScoreName, "lm");
  EXPECT_EQ(takeDotRuns(), 2);
  chooseSign(true);
  EXPECT_TRUE(w.m_Graph.scoresNegated);
  EXPECT_EQ(scoreOf(0, "lm"), 1.0);
  EXPECT_EQ(edgeOf(w, 2).label, "7");
}

TEST_F(ScoreChooser, SameSignAgainTurnsNothingRound) {
  TestWindow& w = open(kManyScores);
  chooseSign(false);
  const Offer second = chooseSign(false);
  EXPECT_FALSE(second.isNegated);
  EXPECT_FALSE(w.m_Graph.scoresNegated);
  EXPECT_EQ(scoreOf(0, "lm"), -1.0);
  EXPECT_EQ(edgeOf(w, 0).score, -1.0);
  chooseSign(true);
  chooseSign(true);
  EXPECT_EQ(scoreOf(0, "lm"), 1.0);
}

TEST_F(ScoreChooser, OkWithoutAChangeDrawsTheLatticeAgain) {
  open(kManyScores);
  choose(Gtk::RESPONSE_OK);
  EXPECT_EQ(takeDotRuns(), 2);
  EXPECT_EQ(currentScoreName, "lm");
}

TEST_F(ScoreChooser, CancelAndClosingChangeNothing) {
  TestWindow& w = open(kManyScores);
  for (const int response :
       {static_cast<int>(Gtk::RESPONSE_CANCEL), static_cast<int>(Gtk::RESPONSE_DELETE_EVENT),
        static_cast<int>(Gtk::RESPONSE_NONE)}) {
    choose(response, [](ChooseValueDialog& dialog) {
      dialog.select_value("ac");
      dialog.zero_score_check().set_active(false);
    });
    EXPECT_EQ(currentScoreName, "lm");
    EXPECT_TRUE(w.m_Graph.scoresNegated);
    EXPECT_EQ(scoreOf(0, "lm"), 1.0);
    EXPECT_EQ(takeDotRuns(), 0);
  }
}

TEST_F(ScoreChooser, WithoutScoresOffersNoneAndLeavesNone) {
  TestWindow& w = open("N=3 L=1\nI=0 t=0\nI=1 t=1\nI=2 t=2\nJ=0 S=1 E=2 W=<w in='a'/> a=-1\n");
  ASSERT_EQ(currentScoreName, "a");
  const Offer offer = choose(Gtk::RESPONSE_OK);
  EXPECT_EQ(offer.names, Names{});
  EXPECT_EQ(offer.chosen, "");
  EXPECT_EQ(currentScoreName, "");
  EXPECT_EQ(takeDotRuns(), 2);
  EXPECT_EQ(edgeOf(w, 0).score, 0.0);
  EXPECT_EQ(dialogs, Names{"Quorbel"});
}

TEST_F(ScoreChooser, NamesInAnyEncodingAreChosenAsTheyAre) {
  open(
      "N=2 L=1\nI=0 t=0\nI=1 t=1\n"
      "J=0 S=0 E=1 W=<w in='a'/> a=-1 k\xe9y=-2 \u00fcber=-3\n");
  const Offer offer =
      choose(Gtk::RESPONSE_OK, [](ChooseValueDialog& dialog) { dialog.select_value("k\ufffdy"); });
  EXPECT_EQ(offer.names, (Names{"a", "k\ufffdy", "\u00fcber"}));
  EXPECT_EQ(currentScoreName, "k\xe9y");
  chooseName("\u00fcber");
  EXPECT_EQ(currentScoreName, "\u00fcber");
}

TEST_F(ScoreChooser, StaysOnScreenUntilTheLatticeIsDrawn) {
  open(kManyScores);
  bool wasShown = false;
  duringStage("Loading graph image...", [&] { wasShown = chooserOnScreen() != nullptr; });
  choose(Gtk::RESPONSE_OK);
  EXPECT_TRUE(wasShown);
  EXPECT_FALSE(chooserOnScreen());
  choose(Gtk::RESPONSE_CANCEL);
  EXPECT_FALSE(chooserOnScreen());
}

TEST_F(ScoreChooser, MayBeClosedWhileTheLatticeIsDrawn) {
  open(kManyScores);
  duringStage("Creating graph...", [&] {
    GdkEvent* const close = gdk_event_new(GDK_DELETE);
    close->any.window =
        GDK_WINDOW(g_object_ref(gtk_widget_get_window(GTK_WIDGET(chooserOnScreen()->gobj()))));
    gtk_main_do_event(close);
    gdk_event_free(close);
  });
  chooseName("ac");
  EXPECT_EQ(currentScoreName, "ac");
  EXPECT_FALSE(chooserOnScreen());
  EXPECT_EQ(window->m_RunsInProgress, 0);
}

TEST_F(ScoreChooser, AskedForWhileTheLatticeIsDrawnComesUpAfterwards) {
  TestWindow& w = open(kManyScores);
  activate("DisplayValue");
  takeDotRuns();
  duringStage("Creating graph...", [this] { activate("Scores"); });
  answer = [](Gtk::Dialog& dialog) {
    dynamic_cast<ChooseValueDialog&>(dialog).select_value("ac");
    dialog.response(Gtk::RESPONSE_OK);
  };
  w.renderGraph();
  EXPECT_EQ(dialogs, Names());
  EXPECT_EQ(takeDotRuns(), 2);
  EXPECT_EQ(edgeOf(w, 0).label, "1");
  EXPECT_TRUE(waitFor([&] { return edgeOf(w, 0).label == "3"; }));
  EXPECT_EQ(currentScoreName, "ac");
  EXPECT_EQ(takeDotRuns(), 2);
}

TEST_F(ScoreChooser, SelectedEdgesFollow) {
  TestWindow& w = open(kManyScores);
  selectByPointer({2});
  EXPECT_EQ(w.m_SelectedEdges.at(0).score, 7.0);
  chooseSign(false);
  EXPECT_EQ(w.m_SelectedEdges.at(0).score, -7.0);
  chooseName("ac");
  EXPECT_EQ(w.m_SelectedEdges.at(0).score, 0.0);
}

}  // namespace
}  // namespace quorbel
