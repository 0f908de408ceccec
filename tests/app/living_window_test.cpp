#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "app/export_fixture.h"
#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "sound/sound_files.h"

namespace quorbel {
namespace {

using Clock = std::chrono::steady_clock;
using Texts = std::vector<std::string>;

constexpr auto kAtOnce = std::chrono::milliseconds(100);

/// The window while `dot` runs. It runs for as long as a file `hold` is there.
class LivingWindow : public ExportTest {
 protected:
  static void hold() { std::ofstream("hold") << "\n"; }

  static void release() { std::filesystem::remove("hold"); }

  void SetUp() override {
    replaceDot(
        "echo $$ >dot.new; mv dot.new dot-process\n"
        "while [ -e hold ]; do sleep 0.01; done\n"
        "exec \"$REAL_DOT\" \"$@\"");
  }

  /// Does something once, while a `dot` that is held runs.
  void whileDotRuns(const std::function<void()>& act) {
    hold();
    std::filesystem::remove("dot-process");
    constexpr unsigned kLookEveryMs = 2;
    Glib::signal_timeout().connect(
        [=] {
          const bool isTime = std::filesystem::exists("dot-process");
          if (isTime) act();
          return !isTime;
        },
        kLookEveryMs);
  }

  /// Makes a drawing anew, does something while it is made, and lets it come to its end.
  void whileDrawing(const std::function<void()>& act) {
    bool isDone = false;
    whileDotRuns([&] {
      act();
      release();
      isDone = true;
    });
    window->renderGraph();
    EXPECT_TRUE(isDone);
    settle();
  }

  static bool isDotAlive() {
    std::ifstream stream(
        "/proc/" + textOf("dot-process").substr(0, 20).erase(textOf("dot-process").find('\n')) +
        "/stat");
    std::string stat;
    return std::getline(stream, stat) && stat.at(stat.rfind(')') + 2) != 'Z';
  }

  /// Whether the condition comes to hold within a tenth of a second.
  bool holdsAtOnce(const std::function<bool()>& condition) {
    const auto start = Clock::now();
    return waitFor([&] { return condition() || Clock::now() > start + kAtOnce; }) && condition();
  }

  /// The entry of the menu bar, or of a menu in it, with this label.
  Gtk::MenuItem& menuItem(Gtk::MenuShell& menu, const std::string& label) {
    for (Gtk::MenuItem& item : menu.items())
      if (item.get_label() == label) return item;
    throw std::runtime_error("no menu item " + label);
  }

  Gtk::MenuItem& menuOf(const std::string& label) {
    return menuItem(dynamic_cast<Gtk::MenuShell&>(*window->m_refUIManager->get_widget("/MenuBar")),
                    label);
  }

  void clickOn(Gtk::Widget& widget) {
    click(widget, widget.get_width() / 2, widget.get_height() / 2);
  }

  /// The toolkit takes a click that follows on the opening one too soon for a part of that.
  void chooseInMenu(const std::string& menu, const std::string& label) {
    Gtk::Menu& entries = *menuOf(menu).get_submenu();
    clickOn(menuOf(menu));
    EXPECT_TRUE(waitFor([&] { return entries.is_mapped(); }));
    EXPECT_TRUE(waitFor([&] {
      if (entries.is_mapped()) clickOn(menuItem(entries, label));
      return !entries.is_mapped();
    }));
  }

  void expectClosed() {
    EXPECT_FALSE(window->m_FileOpened);
    EXPECT_EQ(window->get_title(), "Quorbel");
    EXPECT_EQ(statusOf(*window), "No file opened");
    EXPECT_EQ(pointerOf(*window), GDK_LEFT_PTR);
  }

  void expectNextLatticeIsDrawn() {
    release();
    openLattice(kTwoWords, "next.lat");
    EXPECT_EQ(window->m_EdgeLayouts.size(), 5u);
    EXPECT_EQ(edgeOf(*window, 0).label, "good / gut");
    EXPECT_TRUE(window->m_refShownImage);
    EXPECT_EQ(dialogs, Texts());
  }
};

TEST_F(LivingWindow, IsPaintedBeforeTheFirstDrawing) {
  window = std::make_unique<TestWindow>(folder.write("test.lat", kTwoWords));
  bool isDone = false;
  whileDotRuns([&] {
    EXPECT_EQ(statusOf(*window), "Creating graph...");
    EXPECT_EQ(pointerOf(*window), GDK_WATCH);
    Gtk::Widget& bar = *window->m_refUIManager->get_widget("/MenuBar");
    const Glib::RefPtr<Gdk::Pixbuf> seen = pictureOf(*window);
    std::vector<unsigned> colours;
    for (int x = 0; x < bar.get_width(); ++x)
      colours.push_back(pixel(seen, bar.get_allocation().get_x() + x,
                              bar.get_allocation().get_y() + bar.get_height() / 2));
    std::sort(colours.begin(), colours.end());
    EXPECT_NE(colours.front(), colours.back()) << "no letters in the menu bar";
    isDone = true;
    release();
  });
  window->show();
  EXPECT_TRUE(isDone);
  EXPECT_EQ(edgeOf(*window, 0).label, "good / gut");
}

/// A picture that cannot be opened before the test has done something: a lease on a file keeps all
/// others from it until it is given back. `dot` has written the picture when it is held before the
/// layout.
class LoadingPicture : public LivingWindow {
 protected:
  void SetUp() override {
    LivingWindow::SetUp();
    signal(SIGIO, SIG_IGN);  // tells of who waits for the lease
  }

  /// Makes the drawing anew and does something while its picture is being loaded.
  void whileLoading(const std::function<void()>& act) {
    replaceDot(
        "case $1 in -Tdot) : >dot-process; while [ -e hold ]; do sleep 0.01; done;; esac\n"
        "exec \"$REAL_DOT\" \"$@\"");
    int picture = -1;
    bool isDone = false;
    whileDotRuns([&] {
      picture = open("graph.png", O_RDONLY | O_CLOEXEC);
      EXPECT_EQ(fcntl(picture, F_SETLEASE, F_WRLCK), 0);
      release();
      Glib::signal_timeout().connect(
          [&] {
            if (fcntl(picture, F_GETLEASE) == F_WRLCK) return true;
            act();
            isDone = true;
            fcntl(picture, F_SETLEASE, F_UNLCK);
            return false;
          },
          2);
    });
    window->renderGraph();
    EXPECT_TRUE(isDone);
    close(picture);
  }
};

TEST_F(LoadingPicture, LeavesTheWindowAlive) {
  TestWindow& w = openLattice(kTwoWays);
  const Glib::RefPtr<Gdk::Pixbuf> before = w.m_refGraphImage;
  whileLoading([&] {
    EXPECT_EQ(statusOf(w), "Loading graph image...");
    EXPECT_EQ(pointerOf(w), GDK_WATCH);
  });
  EXPECT_NE(w.m_refGraphImage, before);
  EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
}

TEST_F(LoadingPicture, IsNotShownWhenTheFileWasClosedMeanwhile) {
  TestWindow& w = openLattice(kTwoWays);
  whileLoading([&] { w.on_close(); });
  expectClosed();
  EXPECT_FALSE(w.m_refGraphImage);
  EXPECT_FALSE(w.m_refShownImage);
}

TEST_F(LivingWindow, PaintsItselfAtOnce) {
  TestWindow& w = openLattice(kTwoWays);
  const auto paintsAtOnce = [&](Gtk::Widget& widget) {
    bool isPainted = false;
    sigc::connection watch = widget.signal_expose_event().connect(
        [&](GdkEventExpose*) {
          isPainted = true;
          return false;
        },
        false);
    widget.queue_draw();
    const bool held = holdsAtOnce([&] { return isPainted; });
    watch.disconnect();
    return held;
  };
  whileDrawing([&] {
    EXPECT_TRUE(paintsAtOnce(w.m_GraphArea));
    EXPECT_TRUE(paintsAtOnce(w.m_SoundArea));
    EXPECT_TRUE(paintsAtOnce(w.m_Statusbar));
  });
}

TEST_F(LivingWindow, IsResizedAndScrolled) {
  TestWindow& w = openLattice(kTwoWays);
  whileDrawing([&] {
    const int width = w.get_width();
    w.resize(width + 50, w.get_height());
    EXPECT_TRUE(waitFor([&] { return w.get_width() == width + 50; }));
    w.m_GraphArea.set_size_request(5000, 5000);
    Gtk::Adjustment& down = *w.m_GraphScroll.get_vadjustment();
    EXPECT_TRUE(waitFor([&] { return down.get_upper() >= 5000; }));
    const auto top = [&] {
      int x = 0;
      int y = 0;
      w.m_GraphArea.get_window()->get_origin(x, y);
      return y;
    };
    const int before = top();
    down.set_value(100);
    EXPECT_TRUE(holdsAtOnce([&] { return top() == before - 100; }));
  });
}

TEST_F(LivingWindow, MenusOpenAndTheirCommandsAct) {
  TestWindow& w = openLattice(kTwoWays);
  whileDrawing([&] {
    chooseInMenu("Display", "Shortest path");
    EXPECT_TRUE(waitFor([&] { return w.m_ShowPath; }));
  });
  EXPECT_EQ(textOf("quorbel_graph.dot").find("color=blue"), std::string::npos);
  w.renderGraph();
  EXPECT_NE(textOf("quorbel_graph.dot").find("color=blue"), std::string::npos);
}

TEST_F(LivingWindow, SoundGoesOnAndItsCursorWithIt) {
  writeWav(pathOf("test.wav"), 8000, 1, testTone(80000, 1));
  TestWindow& w = openLattice(kTwoWords);
  activate("SoundMenuPlay");
  whileDrawing([&] {
    const std::int32_t before = w.m_PlayElapsedMs;
    EXPECT_TRUE(waitFor([&] { return w.m_PlayElapsedMs > before + 200; }));
    EXPECT_TRUE(w.m_Playing);
    activate("SoundMenuStop");
    EXPECT_TRUE(waitFor([&] { return !w.m_Playing; }));
  });
}

TEST_F(LivingWindow, PointerOverTheCanvasIsIgnored) {
  TestWindow& w = openLattice(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  whileDrawing([&, x = x, y = y] {
    doubleClick(w.m_GraphArea, x, y);
    EXPECT_TRUE(w.m_SelectedEdges.empty());
    EXPECT_EQ(w.m_PointerX, 0);
  });
  doubleClick(w.m_GraphArea, x, y);
  EXPECT_EQ(w.m_SelectedEdges.size(), 1u);
}

TEST_F(LivingWindow, DialogsComeUpAfterwards) {
  TestWindow& w = openLattice(kTwoWords);
  for (const auto& [action, title] :
       {std::pair("HelpAbout", "Quorbel v1.2 (10/2008)"), std::pair("Scores", "Quorbel"),
        std::pair("FileOpen", "Please choose a HTK file"),
        std::pair("FileOpenSound", "Please choose a sound file"),
        std::pair("FileExportPNG", "Please choose a filename"),
        std::pair("DisplaySelectedXML",
                  "You need to select at least one attribute in the tree view")}) {
    SCOPED_TRACE(action);
    dialogs.clear();
    bool isDrawn = false;
    answer = [&](Gtk::Dialog& dialog) {
      isDrawn = w.m_RunsInProgress == 0 && !w.m_Rendering;
      dialog.response(Gtk::RESPONSE_CANCEL);
    };
    whileDrawing([&, action = action] {
      activate(action);
      bool isLater = false;  // time for a dialog to come up and be noted
      Glib::signal_timeout().connect_once([&] { isLater = true; }, 100);
      waitFor([&] { return isLater; });
      EXPECT_EQ(dialogs, Texts());
    });
    EXPECT_TRUE(waitFor([&] { return !dialogs.empty(); }));
    EXPECT_EQ(dialogs, Texts{title});
    EXPECT_TRUE(isDrawn);
    settle();
  }
}

TEST_F(LivingWindow, FailureOfAHandlerIsSaidAfterwards) {
  openLattice(kTwoWords);
  PrintedText printed;
  folder.write("ab", "");
  whileDrawing([&] {
    Glib::signal_idle().connect_once([] { throw std::runtime_error("no such thing"); });
    settle();
    EXPECT_EQ(dialogs, Texts());
  });
  EXPECT_TRUE(waitFor([&] { return !dialogs.empty(); }));
  EXPECT_EQ(dialogs, Texts{"no such thing"});
  EXPECT_EQ(printed.take(), "no such thing\n");
}

TEST_F(LivingWindow, CommandThatWaitsBehindAnOpenMenuComesWhenItCloses) {
  TestWindow& w = openLattice(kTwoWords);
  Gtk::MenuItem& display = menuOf("Display");
  whileDrawing([&] {
    activate("HelpAbout");
    clickOn(display);
    EXPECT_TRUE(waitFor([&] { return display.get_submenu()->is_mapped(); }));
  });
  EXPECT_FALSE(w.m_Rendering);
  EXPECT_EQ(dialogs, Texts());
  pressKey(GDK_KEY_Escape);
  releaseKey(GDK_KEY_Escape);
  EXPECT_TRUE(waitFor([&] { return !dialogs.empty(); }));
  EXPECT_EQ(dialogs, Texts{"Quorbel v1.2 (10/2008)"});
}

TEST_F(LivingWindow, CloseEndsDotAndActsAtOnce) {
  const std::vector<std::pair<const char*, std::function<void()>>> waysToClose = {
      {"menu", [this] { chooseInMenu("File", "Close"); }},
      {"tool bar", [this] { clickOn(*window->m_refUIManager->get_widget("/ToolBar/FileClose")); }}};
  for (const auto& [name, close] : waysToClose) {
    SCOPED_TRACE(name);
    openLattice(kTwoWays);
    whileDotRuns([&, close = close] {
      close();
      EXPECT_TRUE(waitFor([&] { return !window->m_FileOpened; }));
    });
    window->renderGraph();
    expectClosed();
    EXPECT_TRUE(waitFor([] { return !isDotAlive(); }));
    expectNextLatticeIsDrawn();
  }
}

TEST_F(LivingWindow, CloseDuringTheVeryFirstDrawingActsAtOnce) {
  window = std::make_unique<TestWindow>(folder.write("test.lat", kTwoWays));
  whileDotRuns([&] { activate("FileClose"); });
  window->show();
  expectClosed();
  EXPECT_TRUE(waitFor([] { return !isDotAlive(); }));
  expectNextLatticeIsDrawn();
}

TEST_F(LivingWindow, DotThatDoesNotMindIsKilledAndSpoilsNoLaterDrawing) {
  TestWindow& w = openLattice(kTwoWays);
  replaceDot(
      "test -e hold || exec \"$REAL_DOT\" \"$@\"\n"
      "rm hold\n"
      "trap '' TERM\n"
      "echo $$ >dot.new; mv dot.new dot-process\n"
      "sleep 1.5\n"
      "exec \"$REAL_DOT\" \"$@\"");
  const auto start = Clock::now();
  whileDotRuns([&] { activate("FileClose"); });
  w.renderGraph();
  expectClosed();
  EXPECT_LT(Clock::now(), start + std::chrono::milliseconds(600));
  EXPECT_TRUE(isDotAlive());
  openLattice(kTwoWords, "next.lat");
  EXPECT_FALSE(isDotAlive());
  expectNextLatticeIsDrawn();
}

TEST_F(LivingWindow, QuittingEndsDot) {
  for (const char* way : {"quit", "close"}) {
    SCOPED_TRACE(way);
    window.reset();
    openLattice(kTwoWays);
    const auto start = Clock::now();
    whileDotRuns([&] {
      if (way == std::string("quit"))
        activate("FileQuit");
      else
        closeByWindowManager();
    });
    window->renderGraph();
    EXPECT_TRUE(window->isQuitting());
    window.reset();
    EXPECT_LT(Clock::now(), start + std::chrono::seconds(1));
    EXPECT_FALSE(isDotAlive());
    EXPECT_EQ(dialogs, Texts());
    release();
  }
}

TEST_F(LivingWindow, LivesDuringAnExport) {
  TestWindow& w = openLattice(kTwoWays);
  whileDotRuns([&] {
    EXPECT_TRUE(saveDialog().is_mapped());
    EXPECT_TRUE(w.m_refShownImage);
    activate("DisplayValue");
    EXPECT_EQ(edgeOf(w, 0).label, "a / A");
    activate("HelpAbout");
    release();
  });
  exportAs("FileExportSVG", "out.svg");
  EXPECT_NE(textOf(pathOf("out.svg")).find("a / A"), std::string::npos);
  EXPECT_TRUE(waitFor([&] { return edgeOf(w, 0).label == "10"; }));
  answer = [](Gtk::Dialog& dialog) { dialog.response(Gtk::RESPONSE_CANCEL); };
  EXPECT_TRUE(waitFor([&] { return dialogs.size() == 2; }));
  EXPECT_EQ(dialogs, (Texts{kSaveTitle, "Quorbel v1.2 (10/2008)"}));
}

TEST_F(LivingWindow, CloseAndQuitEndAnExport) {
  for (const char* action : {"FileClose", "FileQuit"}) {
    SCOPED_TRACE(action);
    TestWindow& w = openLattice(kTwoWays);
    whileDotRuns([&, action = action] { activate(action); });
    exportAs("FileExportSVG", "out.svg");
    EXPECT_EQ(dialogs, Texts{kSaveTitle});
    EXPECT_EQ(w.m_FileOpened, std::string(action) == "FileQuit");
    EXPECT_TRUE(waitFor([] { return !isDotAlive(); }));
    EXPECT_EQ(w.m_Graph.outputFormat, "png");
    release();
    dialogs.clear();
  }
}

}  // namespace
}  // namespace quorbel
