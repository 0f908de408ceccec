#include <gtk/gtk.h>

#include <algorithm>

#include "app/lattices.h"
#include "app/recording_window.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Calls = std::vector<std::string>;

/// A shown window that notes which operations real events call.
class Connections : public WindowTest {
 protected:
  Connections() {
    auto recording = std::make_unique<RecordingWindow>();
    m_Window = recording.get();
    window = std::move(recording);
    window->show();
    waitFor([this] { return window->property_is_active().get_value(); });
    settle();
    movePointer(*window, 0, 0);
    m_Window->takeCalls();
  }

  /// Moves the pointer into the area and then a little further within it: a move into an area
  /// counts as entering it.
  void moveWithin(Gtk::Widget& area) {
    movePointer(area, 9, 10);
    movePointer(area, 10, 10);
  }

  /// The calls since the last look, without exposes, several of one kind in a row as one.
  Calls inputCalls() {
    Calls calls = m_Window->takeCalls();
    calls.erase(std::remove_if(calls.begin(), calls.end(),
                               [](const std::string& call) {
                                 return call == "on_graph_expose" || call == "on_sound_expose";
                               }),
                calls.end());
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    return calls;
  }

  RecordingWindow* m_Window = nullptr;
};

TEST_F(Connections, PointerOverTheSoundStrip) {
  Gtk::DrawingArea& strip = m_Window->m_SoundArea;
  moveWithin(strip);
  EXPECT_EQ(inputCalls(), Calls{"on_sound_motion"});
  pressButton();
  EXPECT_EQ(inputCalls(), Calls{"on_sound_press"});
  releaseButton();
  EXPECT_EQ(inputCalls(), Calls{"on_sound_release"});
}

TEST_F(Connections, PointerOverTheCanvas) {
  Gtk::DrawingArea& canvas = m_Window->m_GraphArea;
  moveWithin(canvas);
  EXPECT_EQ(inputCalls(), Calls{"on_graph_motion"});
  pressButton();
  EXPECT_EQ(inputCalls(), Calls{"on_graph_press"});
  releaseButton();
  EXPECT_EQ(inputCalls(), Calls());
  pressButton(4);
  releaseButton(4);
  EXPECT_EQ(inputCalls(), Calls{"on_graph_scroll"});
}

TEST_F(Connections, KeysGoToOneHandlerPressedOrReleased) {
  pressKey(GDK_KEY_a);
  EXPECT_EQ(m_Window->takeCalls(), Calls{"on_key_event"});
  releaseKey(GDK_KEY_a);
  EXPECT_EQ(m_Window->takeCalls(), Calls{"on_key_event"});
}

TEST_F(Connections, EachAreaPaintsItself) {
  m_Window->m_SoundArea.queue_draw();
  settle();
  EXPECT_EQ(m_Window->takeCalls(), Calls{"on_sound_expose"});
  m_Window->m_GraphArea.queue_draw();
  settle();
  EXPECT_EQ(m_Window->takeCalls(), Calls{"on_graph_expose"});
}

TEST_F(Connections, EveryShowIsNoticed) {
  m_Window->hide();
  settle();
  m_Window->takeCalls();
  m_Window->show();
  EXPECT_EQ(m_Window->takeCalls(), Calls{"on_window_show"});
}

/// The toolkit handles a key that an action has before the window's own handler is asked.
TEST_F(WindowTest, KeyOfAnActionDoesNotReachTheWindowsHandler) {
  TestWindow& w = openLattice(kTwoWords);
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  pressKey(GDK_KEY_Control_L);
  EXPECT_TRUE(w.m_ControlHeld);
  pressKey(GDK_KEY_w);
  EXPECT_FALSE(w.m_FileOpened);
  EXPECT_TRUE(w.m_ControlHeld);
  releaseKey(GDK_KEY_w);
  releaseKey(GDK_KEY_Control_L);
}

}  // namespace
}  // namespace quorbel
