#pragma once

#include <string>
#include <vector>

#include "app/test_window.h"

namespace quorbel {

/// A window whose operations do nothing but note that they were called.
class RecordingWindow : public TestWindow {
 public:
  RecordingWindow() : TestWindow("") {}

  /// The operations called since the last look, in order.
  std::vector<std::string> takeCalls() { return std::exchange(m_Calls, {}); }

 protected:
  void on_open_dialog() override { note("on_open_dialog"); }
  void open_lattice(const std::string& name) override { note("open_lattice " + name); }
  void on_export(const std::string& format) override { note("on_export " + format); }
  void on_open_sound() override { note("on_open_sound"); }
  void on_close() override { note("on_close"); }
  void on_quit() override { note("on_quit"); }
  void on_about() override { note("on_about"); }
  void on_zoom_in() override { note("on_zoom_in"); }
  void on_zoom_out() override { note("on_zoom_out"); }
  void on_zoom_fit() override { note("on_zoom_fit"); }
  void on_shortest_path() override { note("on_shortest_path"); }
  void on_path_with_edge() override { note("on_path_with_edge"); }
  void on_display_value() override { note("on_display_value"); }
  void on_display_selected_xml() override { note("on_display_selected_xml"); }
  void on_display_default() override { note("on_display_default"); }
  void on_scores() override { note("on_scores"); }
  void on_play() override { note("on_play"); }
  void on_stop() override { note("on_stop"); }
  void on_window_show() override { note("on_window_show"); }
  bool on_sound_motion(GdkEventMotion*) override { return note("on_sound_motion"); }
  bool on_sound_press(GdkEventButton*) override { return note("on_sound_press"); }
  bool on_sound_release(GdkEventButton*) override { return note("on_sound_release"); }
  bool on_sound_expose(GdkEventExpose*) override { return note("on_sound_expose"); }
  bool on_graph_expose(GdkEventExpose*) override { return note("on_graph_expose"); }
  bool on_graph_scroll(GdkEventScroll*) override { return note("on_graph_scroll"); }
  bool on_graph_motion(GdkEventMotion*) override { return note("on_graph_motion"); }
  bool on_graph_press(GdkEventButton*) override { return note("on_graph_press"); }
  bool on_key_event(GdkEventKey*) override { return note("on_key_event"); }
  bool on_play_tick() override { return note("on_play_tick"); }

 private:
  bool note(const std::string& call) {
    m_Calls.push_back(call);
    return true;
  }

  std::vector<std::string> m_Calls;
};

}  // namespace quorbel
