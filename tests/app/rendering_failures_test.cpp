#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

const char* const kDotMissing =
    "The program \"dot\" was not found, so the lattice cannot be drawn. It belongs to Graphviz: "
    "install the package \"graphviz\" and draw again.";

/// What the pipeline does when `dot` does not do its part.
class RenderingFailures : public WindowTest {
 protected:
  std::string fileMessage() const { return "graph : " + (folder.path() / "test.lat").string(); }

  /// Expects that no run is in progress and that the next action draws.
  void expectNextActionDraws(TestWindow& w) {
    EXPECT_FALSE(w.m_Rendering);
    EXPECT_EQ(w.m_RunsInProgress, 0);
    EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
    EXPECT_TRUE(w.m_FileOpened);
    replaceDot("exec \"$REAL_DOT\" \"$@\"");
    dialogs.clear();
    const Glib::RefPtr<Gdk::Pixbuf> before = w.m_refGraphImage;
    activate("DisplayValue");
    EXPECT_TRUE(w.m_refGraphImage);
    EXPECT_NE(w.m_refGraphImage, before);
    EXPECT_EQ(edgeOf(w, 0).label, "10");
    EXPECT_EQ(dialogs, Texts());
  }

  /// What the toolkit says about the picture as it is in the working directory.
  static std::string pictureError() {
    try {
      Gdk::Pixbuf::create_from_file("graph.png");
    } catch (const Glib::Error& error) {
      return error.what();
    }
    return "none";
  }
};

TEST_F(RenderingFailures, MissingDotIsSaidAndTheLatticeStays) {
  TestWindow& w = showWindow();
  {
    const SearchPath nothing(folder.path() / "images");
    openLattice(kTwoWords);
  }
  EXPECT_EQ(dialogs, Texts{kDotMissing});
  EXPECT_EQ(w.get_title(), "Quorbel - " + (folder.path() / "test.lat").string());
  EXPECT_EQ(statusOf(w), fileMessage());
  EXPECT_FALSE(w.m_refGraphImage);
  EXPECT_FALSE(std::filesystem::exists("quorbel_graph.dot"));
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, MissingDotLeavesTheDrawingAsItWas) {
  TestWindow& w = openLattice(kTwoWays);
  activate("DisplayShortestPath");
  const Glib::RefPtr<Gdk::Pixbuf> before = w.m_refGraphImage;
  {
    const SearchPath nothing(folder.path() / "images");
    activate("DisplayValue");
  }
  EXPECT_EQ(dialogs, Texts{kDotMissing});
  EXPECT_EQ(w.m_refGraphImage, before);
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
  EXPECT_EQ(edgeOf(w, 0).label, "a / A");
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, ProgramThatCannotBeRunIsNoDot) {
  replaceDot("exec \"$REAL_DOT\" \"$@\"");
  std::filesystem::permissions("programs/dot", std::filesystem::perms::owner_read);
  const SearchPath onlyThat(folder.path() / "programs");
  openLattice(kTwoWords);
  EXPECT_EQ(dialogs, Texts{kDotMissing});
}

TEST_F(RenderingFailures, PictureMissingOnTheFirstRunIsSaid) {
  replaceDot("exit 1");
  PrintedText printed;
  TestWindow& w = showWindow(folder.write("test.lat", kTwoWords));
  EXPECT_EQ(dialogs, Texts{pictureError()});
  EXPECT_EQ(printed.take(), pictureError() + "\n");
  EXPECT_FALSE(w.m_refShownImage);
  EXPECT_EQ(statusOf(w), "No file opened");
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, PictureThatIsNoneOnTheFirstRunIsSaid) {
  replaceDot("echo rubbish > $3");
  PrintedText printed;
  TestWindow& w = showWindow(folder.write("test.lat", kTwoWords));
  EXPECT_EQ(dialogs, Texts{pictureError()});
  EXPECT_TRUE(w.m_EdgeLayouts.empty());
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, OldPictureStaysWhenDotFails) {
  for (const char* failure : {"exit 1", "kill -9 $$", "exec false"}) {
    TestWindow& w = openLattice(kTwoWords);
    replaceDot(failure);
    const int width = w.m_refGraphImage->get_width();
    activate("DisplayValue");
    EXPECT_EQ(dialogs, Texts());
    EXPECT_EQ(w.m_refGraphImage->get_width(), width);
    EXPECT_EQ(edgeOf(w, 0).label, "good / gut");
    EXPECT_EQ(statusOf(w), fileMessage());
    expectNextActionDraws(w);
  }
}

TEST_F(RenderingFailures, PictureOfTheLatticeBeforeStaysWhenDotFails) {
  TestWindow& w = openLattice(kTwoWays, "first.lat");
  const int width = w.m_refGraphImage->get_width();
  replaceDot("exit 1");
  openLattice(kTwoWords);
  EXPECT_EQ(w.m_refGraphImage->get_width(), width);
  EXPECT_EQ(statusOf(w), fileMessage());
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, LabelThatDotRefusesLeavesTheOldPicture) {
  TestWindow& w = openLattice(kTwoWords, "first.lat");
  const int width = w.m_refGraphImage->get_width();
  openLattice("N=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='a &quot;quoted&quot; word'/> a=-10\n");
  EXPECT_EQ(w.m_refGraphImage->get_width(), width);
  EXPECT_EQ(dialogs, Texts());
  openLattice(kTwoWays);
  EXPECT_NE(w.m_refGraphImage->get_width(), width);
  EXPECT_EQ(w.m_EdgeLayouts.size(), 8u);
}

TEST_F(RenderingFailures, MissingLayoutLeavesTheLayoutBefore) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("test \"$1\" = -Tdot && rm -f graph.dot || exec \"$REAL_DOT\" \"$@\"");
  activate("DisplayValue");
  EXPECT_EQ(edgeOf(w, 0).label, "good / gut");
  EXPECT_EQ(w.m_EdgeLayouts.size(), 5u);
  EXPECT_EQ(dialogs, Texts());
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, LayoutCutShortGivesWhatIsThere) {
  replaceDot(
      "\"$REAL_DOT\" \"$@\"\n"
      "if [ \"$1\" = -Tdot ]; then head -c 500 graph.dot > part && mv part graph.dot; fi");
  TestWindow& w = openLattice(kTwoWords);
  EXPECT_GT(w.m_EdgeLayouts.size(), 0u);
  EXPECT_LT(w.m_EdgeLayouts.size(), 5u);
  EXPECT_EQ(dialogs, Texts());
  EXPECT_EQ(statusOf(w), fileMessage());
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, LayoutCutAmidAPositionIsSaid) {
  replaceDot(
      "\"$REAL_DOT\" \"$@\"\n"
      "if [ \"$1\" = -Tdot ]; then printf '0 [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\\n"
      "1 [pos=\"27];\\n' > graph.dot; fi");
  PrintedText printed;
  TestWindow& w = showWindow(folder.write("test.lat", kTwoWords));
  ASSERT_EQ(dialogs.size(), 1u);
  EXPECT_EQ(dialogs[0].rfind("basic_string::substr", 0), 0u) << dialogs[0];
  EXPECT_EQ(printed.take(), dialogs[0] + "\n");
  EXPECT_EQ(w.m_EdgeLayouts.size(), 1u);
  EXPECT_FALSE(w.m_refGraphImage);
  expectNextActionDraws(w);
}

TEST_F(RenderingFailures, RunBrokenOffPaintsTheOldPictureAgain) {
  TestWindow& w = openLattice(kTwoWords);
  const Glib::RefPtr<Gdk::Pixbuf> before = pictureOf(w.m_GraphArea);
  replaceDot("rm -f graph.png");
  duringStage("Creating graph...", [&] {
    w.m_GraphArea.queue_draw();  // paints it white
    w.m_GraphArea.get_window()->process_updates(true);
  });
  // the box is smaller than the canvas and would not uncover all of it
  answer = [](Gtk::Dialog& dialog) {
    dialog.move(0, 0);
    dialog.response(Gtk::RESPONSE_OK);
  };
  activate("DisplayValue");
  const Glib::RefPtr<Gdk::Pixbuf> after = pictureOf(w.m_GraphArea);
  ASSERT_EQ(after->get_height(), before->get_height());
  for (int y = 0; y < before->get_height(); y += 3)
    for (int x = 0; x < before->get_width(); x += 3)
      ASSERT_EQ(pixel(after, x, y), pixel(before, x, y)) << x << ", " << y;
}

TEST_F(RenderingFailures, RunBrokenOffLeavesTheTotalsShown) {
  TestWindow& w = openLattice(kTwoWays);
  activate("DisplayShortestPath");
  replaceDot("rm -f graph.png");
  activate("DisplayValue");
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
  expectNextActionDraws(w);
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
}

TEST_F(RenderingFailures, ClosingAfterAFirstRunBrokenOffShowsNoFileOpened) {
  replaceDot("exit 1");
  TestWindow& w = showWindow(folder.write("test.lat", kTwoWords));
  ASSERT_TRUE(w.m_FileOpened);
  w.on_close();
  EXPECT_EQ(statusOf(w), "No file opened");
}

TEST_F(RenderingFailures, LatticeAfterAFirstRunBrokenOffIsClosedToNoFileOpened) {
  replaceDot("exit 1");
  TestWindow& w = showWindow(folder.write("first.lat", kTwoWords));
  replaceDot("exec \"$REAL_DOT\" \"$@\"");
  openLattice(kTwoWords);
  EXPECT_EQ(statusOf(w), fileMessage());
  w.on_close();
  EXPECT_EQ(statusOf(w), "No file opened");
}

TEST_F(RenderingFailures, FolderThatCannotBeWrittenLeavesTheOldPicture) {
  TestWindow& w = openLattice(kTwoWords);
  std::filesystem::remove("quorbel_graph.dot");
  std::filesystem::create_directory("quorbel_graph.dot");  // even root cannot write over it
  activate("DisplayValue");
  EXPECT_EQ(edgeOf(w, 0).label, "good / gut");
  EXPECT_EQ(statusOf(w), fileMessage());
  std::filesystem::remove("quorbel_graph.dot");
  expectNextActionDraws(w);
}

}  // namespace
}  // namespace quorbel
