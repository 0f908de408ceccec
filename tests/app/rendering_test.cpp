#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

/// The pipeline from the lattice to the picture.
class Rendering : public WindowTest {
 protected:
  std::string fileMessage() const { return "graph : " + (folder.path() / "test.lat").string(); }

  /// Whether the canvas, painted anew at once, is white all over.
  static bool canvasIsBlank(TestWindow& w) {
    const Glib::RefPtr<Gdk::Window> area = w.m_GraphArea.get_window();
    area->invalidate(true);
    area->process_updates(true);
    const Glib::RefPtr<Gdk::Drawable> drawable = area;
    const auto picture =
        Gdk::Pixbuf::create(drawable, 0, 0, w.m_GraphArea.get_width(), w.m_GraphArea.get_height());
    for (int y = 0; y < picture->get_height(); ++y)
      for (int x = 0; x < picture->get_width(); ++x)
        if (pixel(picture, x, y) != 0xFFFFFFu) return false;
    return true;
  }
};

TEST_F(Rendering, DoesNothingWithoutALattice) {
  replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
  TestWindow& w = showWindow();
  w.renderGraph();
  EXPECT_FALSE(std::filesystem::exists("dot-ran"));
  EXPECT_EQ(statusOf(w), "No file opened");
  EXPECT_EQ(pointerOf(w), GDK_X_CURSOR);
}

TEST_F(Rendering, DoesNothingWhileItRuns) {
  TestWindow& w = openLattice(kTwoWords);
  replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
  w.m_Rendering = true;
  w.renderGraph();
  EXPECT_FALSE(std::filesystem::exists("dot-ran"));
  EXPECT_TRUE(w.m_Rendering);
  w.m_Rendering = false;
}

TEST_F(Rendering, EventsWithoutEndDoNotHoldItUp) {
  TestWindow& w = openLattice(kTwoWords);
  sigc::connection endless = Glib::signal_idle().connect([] { return true; });
  w.m_Graph.labelByValue = true;
  w.renderGraph();
  endless.disconnect();
  EXPECT_EQ(edgeOf(w, 0).label, "10");
  EXPECT_FALSE(w.m_Rendering);
}

TEST_F(Rendering, PushesAndPopsItsStages) {
  TestWindow& w = openLattice(kTwoWords);
  Texts changes;
  w.m_Statusbar.signal_text_pushed().connect([&](guint context, const Glib::ustring& text) {
    changes.push_back("push " + std::to_string(context) + " " + text);
  });
  w.m_Statusbar.signal_text_popped().connect(
      [&](guint, const Glib::ustring& uncovered) { changes.push_back("pop to " + uncovered); });
  activate("DisplayValue");
  const std::string pop = "pop to " + fileMessage();
  EXPECT_EQ(changes, (Texts{"push 1 Creating graph...", pop, "push 1 Loading graph elements...",
                            pop, "push 1 Loading graph image...", pop, pop}));
}

TEST_F(Rendering, LetsEventsRunBeforeItBegins) {
  TestWindow& w = openLattice(kTwoWords);
  int seen = 0;
  Glib::signal_idle().connect_once([&] {
    ++seen;
    EXPECT_FALSE(w.m_Rendering);
    EXPECT_EQ(pointerOf(w), GDK_WATCH);
    EXPECT_EQ(statusOf(w), fileMessage());
  });
  replaceDot("echo ran >> runs; exec \"$REAL_DOT\" \"$@\"");
  w.renderGraph();
  EXPECT_EQ(seen, 1);
  EXPECT_EQ(linesOf("runs").size(), 2u);
}

TEST_F(Rendering, LetsEventsRunAtEachStage) {
  TestWindow& w = openLattice(kTwoWords);
  Texts seen;
  for (const char* stage : kStages) {
    duringStage(stage, [&] {
      seen.push_back(statusOf(w));
      EXPECT_TRUE(w.m_Rendering);
      EXPECT_EQ(pointerOf(w), GDK_WATCH);
    });
  }
  activate("DisplayValue");
  EXPECT_EQ(seen, Texts(std::begin(kStages), std::end(kStages)));
  EXPECT_FALSE(w.m_Rendering);
  EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
}

TEST_F(Rendering, EachStageDoesItsWorkAfterItsEvents) {
  TestWindow& w = openLattice(kTwoWords);
  const Glib::RefPtr<Gdk::Pixbuf> picture = w.m_refGraphImage;
  for (const char* file : {"quorbel_graph.dot", "graph.dot", "graph.png"})
    std::filesystem::remove(file);
  int stages = 0;
  duringStage(kStages[0], [&] {
    ++stages;
    EXPECT_FALSE(std::filesystem::exists("quorbel_graph.dot"));
  });
  duringStage(kStages[1], [&] {
    ++stages;
    EXPECT_TRUE(std::filesystem::exists("graph.dot"));
    EXPECT_TRUE(std::filesystem::exists("graph.png"));
    EXPECT_EQ(edgeOf(w, 1).label, "morning / Morgen");
  });
  duringStage(kStages[2], [&] {
    ++stages;
    EXPECT_EQ(edgeOf(w, 1).label, "20");
    EXPECT_EQ(w.m_refGraphImage, picture);
  });
  activate("DisplayValue");
  EXPECT_EQ(stages, 3);
  EXPECT_NE(w.m_refGraphImage, picture);
  EXPECT_EQ(w.m_refGraphImage->get_width(),
            Gdk::Pixbuf::create_from_file("graph.png")->get_width());
}

TEST_F(Rendering, RepaintsTheSoundStripBeforeAndBothAreasAfter) {
  TestWindow& w = openLattice(kTwoWords);
  Texts painted;
  const auto note = [&](Gtk::Widget& area, const char* name) {
    const auto noteExpose = [&painted, &area, &w, name](GdkEventExpose* event) {
      const bool whole =
          event->area.width == area.get_width() && event->area.height == area.get_height();
      painted.push_back(std::string(name) + (whole ? "" : " in part") +
                        (w.m_Rendering ? ", rendering" : ""));
      return false;
    };
    area.signal_expose_event().connect(noteExpose, false);
  };
  note(w.m_SoundArea, "sound");
  note(w.m_GraphArea, "canvas");
  const auto count = [&](const char* text) {
    return std::count(painted.begin(), painted.end(), text);
  };
  settle();
  painted.clear();
  w.renderGraph();
  EXPECT_EQ(painted, Texts{"sound, rendering"});
  painted.clear();
  settle();
  EXPECT_EQ(count("sound"), 1);
  EXPECT_EQ(count("canvas"), 1);
}

TEST_F(Rendering, CanvasIsWhiteWhileItRuns) {
  TestWindow& w = openLattice(kTwoWords);
  ASSERT_FALSE(canvasIsBlank(w));
  int stages = 0;
  for (const char* stage : kStages) {
    duringStage(stage, [&] {
      ++stages;
      EXPECT_TRUE(canvasIsBlank(w));
    });
  }
  activate("DisplayValue");
  EXPECT_EQ(stages, 3);
  settle();
  EXPECT_FALSE(canvasIsBlank(w));
}

TEST_F(Rendering, KeepsTheZoomWithinItsBounds) {
  TestWindow& w = openLattice(kTwoWords);
  for (const auto& [zoom, kept] :
       {std::pair(0.5f, 0.5f), std::pair(7.0f, 1.0f), std::pair(0.01f, 0.2f)}) {
    w.m_Zoom = zoom;
    w.renderGraph();
    EXPECT_EQ(w.m_Zoom, kept);
    const auto scaled = [kept = kept](int length) {
      return static_cast<int>(static_cast<float>(length) * kept);
    };
    EXPECT_EQ(w.m_refShownImage->get_width(), scaled(w.m_refGraphImage->get_width()));
    EXPECT_EQ(w.m_refShownImage->get_height(), scaled(w.m_refGraphImage->get_height()));
    int width = 0;
    int height = 0;
    w.m_GraphArea.get_size_request(width, height);
    EXPECT_EQ(width, w.m_refShownImage->get_width());
    EXPECT_EQ(height, w.m_refShownImage->get_height());
  }
}

TEST_F(Rendering, DrawsEverythingAnewEachTime) {
  openLattice(kTwoWords);
  replaceDot("echo \"$@\" >> calls; exec \"$REAL_DOT\" \"$@\"");
  window->renderGraph();
  window->renderGraph();
  const std::string image = "-Tpng -o graph.png quorbel_graph.dot";
  const std::string layout = "-Tdot -o graph.dot quorbel_graph.dot";
  EXPECT_EQ(linesOf("calls"), (Texts{image, layout, image, layout}));
}

TEST_F(Rendering, FindsNodesOfTheNewLayout) {
  TestWindow& w = openLattice(kTwoWays);
  EXPECT_EQ(w.m_NodeItems.timeOf(1, w.m_EdgeLayouts), 0.25);
  openLattice(kTwoWords);
  EXPECT_EQ(w.m_NodeItems.timeOf(1, w.m_EdgeLayouts), 0.5);
}

TEST_F(Rendering, ShowsThePictureInTheWindow) {
  TestWindow& w = openLattice(kTwoWords);
  const Glib::RefPtr<Gdk::Pixbuf> canvas = pictureOf(w.m_GraphArea);
  const CanvasMapping mapping = w.canvasMapping();
  for (int y = 0; y < w.m_refShownImage->get_height(); y += 7)
    for (int x = 0; x < w.m_refShownImage->get_width(); x += 7)
      ASSERT_EQ(pixel(canvas, mapping.originX + x, mapping.originY + y),
                pixel(w.m_refShownImage, x, y))
          << x << ", " << y;
}

}  // namespace
}  // namespace quorbel
