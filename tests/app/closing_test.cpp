#include <gtk/gtk.h>

#include "app/colours.h"
#include "app/lattices.h"
#include "app/window_fixture.h"
#include "sound/sound_files.h"

namespace quorbel {
namespace {

class Closing : public WindowTest {
 protected:
  /// Opens a lattice with sound, and shows both paths of it.
  TestWindow& openEverything() {
    writeWav(pathIn(folder, "test.wav"), 8000, 1, testTone(80000, 1));
    TestWindow& w = openLattice(kTwoWays);
    const auto [x, y] = labelCentre(w, 3);
    doubleClick(w.m_GraphArea, x, y);
    activate("DisplayShortestPath");
    activate("DisplayShortestPathSelected");
    activate("DisplayZoomOut");
    settle();
    return w;
  }

  /// Whether the whole widget is white.
  bool isBlank(Gtk::Widget& widget) {
    const Glib::RefPtr<Gdk::Pixbuf> picture = pictureOf(widget);
    for (int y = 0; y < picture->get_height(); ++y)
      for (int x = 0; x < picture->get_width(); ++x)
        if (pixel(picture, x, y) != screen::kWhite) return false;
    return true;
  }
};

TEST_F(Closing, UncoversNoFileOpened) {
  TestWindow& w = openLattice(kTwoWords);
  activate("FileClose");
  EXPECT_EQ(statusOf(w), "No file opened");
  EXPECT_EQ(w.get_title(), "Quorbel");
  w.m_Statusbar.pop(TestWindow::kFileContext);
  EXPECT_EQ(statusOf(w), "");
}

TEST_F(Closing, TakesPathTotalsOffTheStatusBar) {
  TestWindow& w = openEverything();
  ASSERT_NE(statusOf(w).find("Shortest Path : "), std::string::npos);
  w.on_close();
  EXPECT_EQ(statusOf(w), "No file opened");
  w.m_Statusbar.pop(TestWindow::kRunContext);
  EXPECT_EQ(statusOf(w), "No file opened");
}

TEST_F(Closing, ForgetsTheViewOfTheLattice) {
  TestWindow& w = openEverything();
  movePointer(w.m_GraphArea, 20, 20);
  movePointer(w.m_GraphArea, 21, 22);
  ASSERT_NE(w.m_PointerX, 0);
  ASSERT_NE(w.m_Zoom, 1.0f);
  w.on_close();
  EXPECT_EQ(w.m_Zoom, 1.0f);
  EXPECT_EQ(w.m_PointerX, 0);
  EXPECT_EQ(w.m_PointerY, 0);
  EXPECT_TRUE(w.m_SelectedEdges.empty());
  EXPECT_FALSE(w.m_ShowPath);
  EXPECT_FALSE(w.m_ShowPathWithEdge);
  EXPECT_FALSE(w.m_FileOpened);
  EXPECT_TRUE(w.m_EdgeLayouts.empty());
  EXPECT_FALSE(w.m_refShownImage);
  EXPECT_FALSE(w.m_refGraphImage);
  EXPECT_EQ(w.m_refInfoBuffer->get_text(), "");
}

TEST_F(Closing, EmptiesTheAttributeTree) {
  TestWindow& w = openEverything();
  ASSERT_TRUE(w.m_refTreeStore);
  ASSERT_EQ(w.m_AttributeTree.get_columns().size(), 2u);
  w.on_close();
  EXPECT_EQ(w.m_AttributeTree.get_columns().size(), 0u);
  EXPECT_FALSE(w.m_refTreeStore);
  EXPECT_FALSE(w.m_AttributeTree.get_model());
}

TEST_F(Closing, SwitchesThePathsOfTheGraphOff) {
  TestWindow& w = openEverything();
  ASSERT_TRUE(w.m_Graph.hasSelectedEdge);
  ASSERT_TRUE(w.m_Graph.showBestPath);
  w.on_close();
  EXPECT_FALSE(w.m_Graph.hasSelectedEdge);
  EXPECT_FALSE(w.m_Graph.showBestPath);
  EXPECT_EQ(w.m_Graph.bestPathScore, -1.0);
  EXPECT_EQ(w.m_Graph.selectedPathScore, -1.0);
}

TEST_F(Closing, GivesTheCanvasItsNaturalSize) {
  TestWindow& w = openEverything();
  w.on_close();
  int width = 0;
  int height = 0;
  w.m_GraphArea.get_size_request(width, height);
  EXPECT_EQ(width, -1);
  EXPECT_EQ(height, -1);
}

TEST_F(Closing, StopsAndForgetsTheSound) {
  TestWindow& w = openEverything();
  activate("SoundMenuPlay");
  ASSERT_TRUE(w.m_Playing);
  ASSERT_TRUE(w.m_Audio.isPlaying());
  w.on_close();
  EXPECT_FALSE(w.m_Playing);
  EXPECT_FALSE(w.m_Audio.isPlaying());
  EXPECT_FALSE(w.m_TickConnection.connected());
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_FALSE(w.m_Audio.samples());
}

TEST_F(Closing, RepaintsBothAreasEmpty) {
  TestWindow& w = openEverything();
  ASSERT_FALSE(isBlank(w.m_GraphArea));
  ASSERT_FALSE(isBlank(w.m_SoundArea));
  w.on_close();
  EXPECT_TRUE(isBlank(w.m_GraphArea));
  EXPECT_TRUE(isBlank(w.m_SoundArea));
}

TEST_F(Closing, InvalidatesTheWholeOfBothAreas) {
  TestWindow& w = openLattice(kTwoWords);
  std::vector<std::string> exposed;
  const auto note = [&](Gtk::Widget& area, const char* name) {
    const auto noteExpose = [&exposed, &area, name](GdkEventExpose* event) {
      const bool whole =
          event->area.width == area.get_width() && event->area.height == area.get_height();
      exposed.push_back(std::string(name) + (whole ? " whole" : " in part"));
      return false;
    };
    area.signal_expose_event().connect(noteExpose, false);
  };
  note(w.m_GraphArea, "canvas");
  note(w.m_SoundArea, "sound");
  w.on_close();
  settle();
  EXPECT_NE(std::find(exposed.begin(), exposed.end(), "canvas whole"), exposed.end());
  EXPECT_NE(std::find(exposed.begin(), exposed.end(), "sound whole"), exposed.end());
}

TEST_F(Closing, LeavesEverythingElse) {
  TestWindow& w = openEverything();
  w.m_ControlHeld = true;
  w.m_DragStartX = 11;
  w.m_DragCurrentX = 12;
  w.m_Dragging = true;
  const double rangeStart = w.m_RangeStart;
  const double rangeEnd = w.m_RangeEnd;
  ASSERT_NE(rangeStart, -1.0);
  w.on_close();
  EXPECT_EQ(w.m_CurrentDir, folder.path());
  EXPECT_EQ(w.m_SoundPath, (folder.path() / "test.wav").string());
  EXPECT_EQ(w.m_SiblingMenu.items().size(), 1u);
  EXPECT_FALSE(w.m_Rendering);
  EXPECT_TRUE(w.m_ControlHeld);
  EXPECT_EQ(w.m_DragStartX, 11);
  EXPECT_EQ(w.m_DragCurrentX, 12);
  EXPECT_TRUE(w.m_Dragging);
  EXPECT_EQ(w.m_RangeStart, rangeStart);
  EXPECT_EQ(w.m_RangeEnd, rangeEnd);
}

TEST_F(Closing, DoesNothingWithoutALattice) {
  TestWindow& w = showWindow();
  w.m_refInfoBuffer->set_text("kept");
  w.m_Zoom = 0.5f;
  activate("FileClose");
  EXPECT_EQ(statusOf(w), "No file opened");
  EXPECT_EQ(w.m_refInfoBuffer->get_text(), "kept");
  EXPECT_EQ(w.m_Zoom, 0.5f);
  w.m_Statusbar.pop(TestWindow::kFileContext);
  activate("FileClose");
  EXPECT_EQ(statusOf(w), "");
}

TEST_F(Closing, LetsTheSameLatticeBeOpenedAgain) {
  TestWindow& w = openEverything();
  w.on_close();
  w.open_lattice("test.lat");
  EXPECT_TRUE(w.m_FileOpened);
  EXPECT_EQ(statusOf(w), "graph : " + (folder.path() / "test.lat").string());
  EXPECT_EQ(w.m_EdgeLayouts.size(), 8u);
}

}  // namespace
}  // namespace quorbel
