#include <gtk/gtk.h>

#include <chrono>

#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

/// What shows when the pointer rests on a label.
class Tooltip : public CanvasTest {
 protected:
  /// The text of the tooltip on the screen, "" without one.
  std::string shown() const {
    std::string text;
    GList* const windows = gtk_window_list_toplevels();
    for (GList* item = windows; item; item = item->next) {
      GtkWidget* const toplevel = GTK_WIDGET(item->data);
      if (std::string(gtk_widget_get_name(toplevel)) == "gtk-tooltip" &&
          gtk_widget_get_mapped(toplevel))
        gtk_container_forall(GTK_CONTAINER(toplevel), addLabels, &text);
    }
    g_list_free(windows);
    return text;
  }

  bool waitForTooltip(const std::string& text) {
    return waitFor([&] { return shown() == text; });
  }

  /// Rests on a label until its tooltip shows this text. A window manager may tell of leaving and
  /// entering in between, which hides a tooltip until the pointer moves: a hand always does.
  bool restOn(int linkId, const std::string& text) {
    using Clock = std::chrono::steady_clock;
    for (int attempt = 0; attempt < 10 && shown() != text; ++attempt) {
      pointAt(linkId, 1 - attempt % 2);
      pointAt(linkId, attempt % 2);
      const auto deadline = Clock::now() + std::chrono::seconds(2);
      waitFor([&] { return shown() == text || Clock::now() > deadline; });
    }
    return shown() == text;
  }

  void pointAt(int linkId, int aside = 0) {
    const auto [x, y] = labelCentre(*window, linkId);
    movePointer(window->m_GraphArea, x + aside, y);
  }

 private:
  static void addLabels(GtkWidget* widget, gpointer text) {
    if (GTK_IS_LABEL(widget) && gtk_widget_get_visible(widget))
      *static_cast<std::string*>(text) += gtk_label_get_text(GTK_LABEL(widget));
    if (GTK_IS_CONTAINER(widget)) gtk_container_forall(GTK_CONTAINER(widget), addLabels, text);
  }
};

TEST_F(Tooltip, ShowsWordTimeAndScores) {
  open(
      "N=3\nI=0 t=0\nI=1 t=0.42\nI=2 t=0.97 p=-0.5\n"
      "J=0 S=0 E=1 W=<w in='good' out='gut'/> a=-310.5 l=-2.1\n"
      "J=1 S=1 E=2 W=<w in='morning'/> a=-405.2 l=-1.3\n");
  EXPECT_TRUE(restOn(0, "good / gut\n0.00 to 0.42 s\na: 310.5\nl: 2.1")) << shown();
  EXPECT_TRUE(restOn(1, "morning\n0.42 to 0.97 s\na: 405.2\nl: 1.3\np: 0.5")) << shown();
  movePointer(window->m_GraphArea, 3, 3);
  EXPECT_TRUE(waitForTooltip("")) << shown();
}

TEST_F(Tooltip, StaysWhileThePointerMovesOnTheLabelAndIsMadeOnce) {
  TestWindow& w = open(kTwoWords);
  const std::string text = "good / gut\n0.00 to 1.00 s\na: 10";
  ASSERT_TRUE(restOn(0, text)) << shown();
  // Was it made anew, it would tell of this.
  w.m_Graph.adjacency->outgoing[0][0].scores["a"] = 99;
  for (const int aside : {2, 4, -3}) {
    pointAt(0, aside);
    EXPECT_EQ(shown(), text);
  }
  movePointer(w.m_GraphArea, 3, 3);
  ASSERT_TRUE(waitForTooltip(""));
  EXPECT_TRUE(restOn(0, "good / gut\n0.00 to 1.00 s\na: 99")) << shown();
}

TEST_F(Tooltip, ShowsWhatTheLabelShowsNowAndTheScoreThatCounts) {
  open(kTwoWays);
  activate("DisplayValue");
  settle();
  EXPECT_TRUE(restOn(1, "5.5\n0.00 to 2.00 s\nac: 5.5\nlm: 1")) << shown();
  movePointer(window->m_GraphArea, 3, 3);
  ASSERT_TRUE(waitForTooltip(""));
  currentScoreName = "lm";
  activate("DisplayDefault");
  settle();
  EXPECT_TRUE(restOn(3, "d / D\n2.00 to 4.00 s\nlm: 1\nac: 30")) << shown();
}

TEST_F(Tooltip, ShowsOnAScrolledCanvasAtAnyZoom) {
  TestWindow& w = open(chainOf(12));
  for (const float zoom : {0.5f, 1.0f}) {
    w.m_Zoom = zoom / 1.25f;
    activate("DisplayZoomIn");
    settle();
    w.m_GraphScroll.get_hadjustment()->set_value(400 * zoom);
    settle();
    EXPECT_TRUE(restOn(5, "word5\n5.00 to 6.00 s\na: 1")) << shown();
    movePointer(window->m_GraphArea, static_cast<int>(500 * zoom), 3);
    ASSERT_TRUE(waitForTooltip(""));
  }
}

TEST_F(Tooltip, MovesAreToldAsEver) {
  TestWindow& w = open(kTwoWords);
  EXPECT_EQ(w.m_GraphArea.get_window()->get_events() & Gdk::POINTER_MOTION_HINT_MASK, 0);
}

}  // namespace
}  // namespace quorbel
