#include <stdexcept>

#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

/// Exceptions that leave a handler: said, and nothing else happens.
class UncaughtExceptions : public WindowTest {
 protected:
  /// Throws from a handler that the toolkit calls.
  template <typename Exception>
  void throwFromAHandler(const Exception& exception) {
    bool thrown = false;
    Glib::signal_idle().connect_once([&] {
      thrown = true;
      throw exception;
    });
    waitFor([&] { return thrown; });
    settle();
  }
};

TEST_F(UncaughtExceptions, OfTheStandardLibraryAreSaid) {
  showWindow();
  PrintedText printed;
  throwFromAHandler(std::runtime_error("a standard failure"));
  EXPECT_EQ(dialogs, Texts{"a standard failure"});
  EXPECT_EQ(printed.take(), "a standard failure\n");
}

TEST_F(UncaughtExceptions, OfTheToolkitAreSaid) {
  showWindow();
  PrintedText printed;
  throwFromAHandler(Glib::FileError(Glib::FileError::NO_SUCH_ENTITY, "a file failure"));
  EXPECT_EQ(dialogs, Texts{"a file failure"});
  EXPECT_EQ(printed.take(), "a file failure\n");
}

TEST_F(UncaughtExceptions, ShowTextInOtherEncodings) {
  showWindow();
  PrintedText printed;
  throwFromAHandler(std::runtime_error("caf\xe9"));
  EXPECT_EQ(dialogs, Texts{"caf\xef\xbf\xbd"});
  EXPECT_EQ(printed.take(), "caf\xe9\n");
}

TEST_F(UncaughtExceptions, LeaveTheWindowWorking) {
  showWindow();
  PrintedText printed;
  throwFromAHandler(std::runtime_error("a failure"));
  TestWindow& w = openLattice(kTwoWords);
  EXPECT_TRUE(w.m_refShownImage);
}

TEST_F(UncaughtExceptions, LeaveStatusAndPointerAloneWhenNothingIsDrawn) {
  TestWindow& w = openLattice(kTwoWays);
  activate("DisplayShortestPath");
  PrintedText printed;
  throwFromAHandler(std::runtime_error("a failure"));
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
}

TEST_F(UncaughtExceptions, InsideARunDoNotEndItAndAreSaidAfterIt) {
  TestWindow& w = openLattice(kTwoWords);
  for (const char* stage : kStages) {
    SCOPED_TRACE(stage);
    PrintedText printed;
    dialogs.clear();
    bool stillRendering = false;
    bool stillWatch = false;
    std::string statusAfterwards;
    bool isRunOverAtBox = false;
    duringStage(stage, [&] {
      Glib::signal_idle().connect_once(
          [&] {
            stillRendering = w.m_Rendering;
            stillWatch = pointerOf(w) == GDK_WATCH;
            statusAfterwards = statusOf(w);
          },
          Glib::PRIORITY_DEFAULT);
      throw std::runtime_error("a failure in between");
    });
    answer = [&](Gtk::Dialog& dialog) {
      isRunOverAtBox = w.m_RunsInProgress == 0;
      dialog.response(Gtk::RESPONSE_OK);
    };
    const Glib::RefPtr<Gdk::Pixbuf> before = w.m_refGraphImage;
    activate("DisplayValue");
    EXPECT_EQ(printed.take(), "a failure in between\n");
    EXPECT_EQ(dialogs, Texts());
    EXPECT_TRUE(stillRendering);
    EXPECT_TRUE(stillWatch);
    EXPECT_EQ(statusAfterwards, stage);
    EXPECT_NE(w.m_refGraphImage, before);
    EXPECT_FALSE(w.m_Rendering);
    EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
    EXPECT_EQ(statusOf(w), "graph : " + (folder.path() / "test.lat").string());
    EXPECT_TRUE(waitFor([&] { return !dialogs.empty(); }));
    EXPECT_EQ(dialogs, Texts{"a failure in between"});
    EXPECT_TRUE(isRunOverAtBox);
    settle();
  }
}

TEST_F(UncaughtExceptions, OutOfARunEndItBeforeTheBoxIsAnswered) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("rm -f graph.png");
  bool ended = false;
  answer = [&](Gtk::Dialog& dialog) {
    ended = !w.m_Rendering && pointerOf(w) == GDK_LEFT_PTR &&
            statusOf(w) == "graph : " + (folder.path() / "test.lat").string();
    dialog.response(Gtk::RESPONSE_OK);
  };
  activate("DisplayValue");
  EXPECT_EQ(dialogs.size(), 1u);
  EXPECT_TRUE(ended);
}

TEST_F(UncaughtExceptions, LeaveTheRunUnendedForTheHandlerAbove) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("rm -f graph.png");
  EXPECT_THROW(w.renderGraph(), Glib::Error);
  EXPECT_TRUE(w.m_Rendering);
  EXPECT_EQ(pointerOf(w), GDK_WATCH);
  EXPECT_EQ(statusOf(w), "Loading graph image...");
}

TEST_F(UncaughtExceptions, OfTheNextHandlerDoNotEndALaterRun) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("rm -f graph.png");
  activate("DisplayValue");
  replaceDot("exec \"$REAL_DOT\" \"$@\"");
  bool stillRendering = false;
  duringStage("Creating graph...", [] { throw std::runtime_error("later"); });
  duringStage("Loading graph elements...", [&] { stillRendering = w.m_Rendering; });
  activate("DisplayValue");
  EXPECT_TRUE(stillRendering);
  EXPECT_TRUE(waitFor([&] { return dialogs.size() == 2; }));
}

}  // namespace
}  // namespace quorbel
