#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "app/window_fixture.h"
#include "sound/sound_files.h"

namespace quorbel {
namespace {

/// Leaving the program, by the action or by closing the window.
class Quitting : public WindowTest {
 protected:
  /// Runs the main loop until the window ends it; has `leave` called within it.
  void runMainLoop(const std::function<void()>& leave) {
    Glib::signal_idle().connect_once(leave);
    bool timedOut = false;
    constexpr unsigned kLongestMs = 20000;
    sigc::connection guard = Glib::signal_timeout().connect(
        [&] {
          timedOut = true;
          Gtk::Main::quit();
          return false;
        },
        kLongestMs);
    Gtk::Main::run();
    guard.disconnect();
    EXPECT_FALSE(timedOut);
  }

  /// The ways to leave: the first acts at once, the second when the server has told the window.
  const std::vector<std::pair<const char*, std::function<void()>>> waysToLeave = {
      {"FileQuit", [this] { activate("FileQuit"); }},
      {"closing", [this] {
         closeByWindowManager();
         waitFor([this] { return !window->get_visible(); });
       }}};

  void writeTone() const { writeWav(pathIn(folder, "test.wav"), 8000, 1, testTone(80000, 1)); }
};

TEST_F(Quitting, EndsTheMainLoop) {
  for (const auto& [name, leave] : waysToLeave) {
    SCOPED_TRACE(name);
    window.reset();
    openLattice(kTwoWords);
    EXPECT_FALSE(window->isQuitting());
    runMainLoop(leave);
    EXPECT_TRUE(window->isQuitting());
  }
  EXPECT_FALSE(window->get_visible());
}

TEST_F(Quitting, WhileSoundPlays) {
  for (const auto& [name, leave] : waysToLeave) {
    SCOPED_TRACE(name);
    writeTone();
    window.reset();
    openLattice(kTwoWords);
    runMainLoop([&] {
      activate("SoundMenuPlay");
      EXPECT_TRUE(window->m_Playing);
      leave();
    });
    window.reset();
  }
}

TEST_F(Quitting, DuringARunEndsItAtOnce) {
  for (const auto& [name, leave] : waysToLeave) {
    for (int stage = 0; stage < 3; ++stage) {
      SCOPED_TRACE(name + std::string(", ") + kStages[stage]);
      window.reset();
      TestWindow& w = openLattice(kTwoWords);
      std::filesystem::remove("runs");
      replaceDot("echo ran >> runs; exec \"$REAL_DOT\" \"$@\"");
      const Glib::RefPtr<Gdk::Pixbuf> before = w.m_refGraphImage;
      runMainLoop([&, leave = leave] {
        duringStage(kStages[stage], leave);
        activate("DisplayValue");
      });
      EXPECT_TRUE(w.isQuitting());
      EXPECT_FALSE(w.m_Rendering);
      EXPECT_EQ(w.m_RunsInProgress, 0);
      EXPECT_EQ(w.m_refGraphImage, before);
      EXPECT_EQ(linesOf("runs").size(), stage == 0 ? 0u : 2u);
      EXPECT_EQ(edgeOf(w, 0).label, stage == 2 ? "10" : "good / gut");
    }
  }
}

TEST_F(Quitting, BeforeTheFirstStageOfARunDrawsNothing) {
  openLattice(kTwoWords);
  replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
  Glib::signal_idle().connect_once([this] { activate("FileQuit"); });
  window->renderGraph();
  EXPECT_TRUE(window->isQuitting());
  EXPECT_FALSE(std::filesystem::exists("dot-ran"));
  EXPECT_FALSE(window->m_Rendering);
}

TEST_F(Quitting, DuringTheVeryFirstDrawingIsKnownAfterTheShow) {
  for (const auto& [name, leave] : waysToLeave) {
    for (const char* stage : kStages) {
      SCOPED_TRACE(name + std::string(", ") + stage);
      window = std::make_unique<TestWindow>(folder.write("test.lat", kTwoWords));
      duringStage(stage, leave);
      window->show();
      EXPECT_TRUE(window->isQuitting());
      EXPECT_FALSE(window->m_refShownImage);
      window.reset();
    }
  }
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

TEST_F(Quitting, DuringTheVeryFirstDrawingSaysNothingMore) {
  folder.write("test.wav", "no sound");
  window = std::make_unique<TestWindow>(folder.write("test.lat", kTwoWords));
  duringStage("Creating graph...", [this] { activate("FileQuit"); });
  window->show();
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

TEST_F(Quitting, PutOffCommandsAreNotCarriedOut) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("echo ran >> runs; exec \"$REAL_DOT\" \"$@\"");
  runMainLoop([&] {
    duringStage("Creating graph...", [&] {
      w.open_lattice("test.lat");
      activate("FileQuit");
    });
    activate("DisplayValue");
  });
  EXPECT_EQ(linesOf("runs").size(), 0u);
}

TEST_F(Quitting, DestroyingTheWindowWithExposesPending) {
  writeTone();
  TestWindow& w = openLattice(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  doubleClick(w.m_GraphArea, x, y);
  w.m_GraphArea.queue_draw();
  w.m_SoundArea.queue_draw();
  window.reset();
  settle();
}

TEST_F(Quitting, DestroyingTheWindowWhileSoundPlays) {
  writeTone();
  openLattice(kTwoWords);
  activate("SoundMenuPlay");
  window.reset();
  settle();
}

TEST_F(Quitting, DestroyingAWindowThatWasNeverShown) {
  window = std::make_unique<TestWindow>("");
  window.reset();
  settle();
}

TEST_F(Quitting, DestroyingTheWindowDeliversNothingToItsHandlers) {
  openLattice(kTwoWords);
  window->m_GraphArea.queue_draw();
  window->hide();
  window->show();
  window->m_GraphArea.queue_draw();
  window.reset();
  settle();
}

}  // namespace
}  // namespace quorbel
