// How long the window takes to repaint a lattice of 1,000 links: one expose with every edge
// selected and one under the pointer, one tick of the play cursor with a minute of sound, a text
// typed into the find bar until what it finds is marked, and one step of the wheel over a picture
// of 17 million pixels. Each figure is the time until the display has drawn everything. Runs on a
// display: scripts/with-display.

#include <benchmark/benchmark.h>
#include <gtk/gtk.h>
#include <gtkmm.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/test_window.h"
#include "sample_lattice.h"
#include "temporary_folder.h"

// X11 has macros that clash with names in the headers above
#include <gdk/gdkx.h>

namespace quorbel {
namespace {

constexpr int kNodes = 251;  // 1,000 links
constexpr int kSampleRate = 16000;

void settle() {
  for (int round = 0; round < 10; ++round) {
    XSync(gdk_x11_get_default_xdisplay(), False);
    while (Gtk::Main::events_pending()) Gtk::Main::iteration();
    g_usleep(2000);
  }
}

void repaint(Gtk::DrawingArea& area) {
  area.queue_draw();
  area.get_window()->process_updates(false);
}

void writeMinuteOfSound(const std::string& path) {
  SF_INFO info{};
  info.samplerate = kSampleRate;
  info.channels = 1;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  std::vector<short> samples(60 * kSampleRate);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = static_cast<short>(20000 * std::sin(static_cast<double>(i) * 0.05));
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  sf_write_short(file, samples.data(), static_cast<sf_count_t>(samples.size()));
  sf_close(file);
}

/// Shows the lattice. Its layout comes from a stand-in for `dot`, which would take longer than all
/// else here: a picture of the size that the layout says.
void openSample(TestWindow& window) {
  const std::string folder = std::filesystem::current_path();
  const SampleLattice sample = writeSampleLattice(folder, kNodes);
  writeMinuteOfSound(folder + "/sample" + std::to_string(kNodes) + ".wav");
  const auto picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, kNodes * 20, 400);
  picture->fill(0xffffffff);
  picture->save("picture.png", "png");
  std::filesystem::create_directory("programs");
  std::ofstream("programs/dot") << "#!/bin/sh\ncp " << sample.layoutFile
                                << " graph.dot\ncp picture.png graph.png\n";
  std::filesystem::permissions("programs/dot", std::filesystem::perms::owner_all);
  setenv("PATH", (folder + "/programs:" + std::getenv("PATH")).c_str(), 1);
  window.show();
  settle();
  window.open_lattice(window.build_sibling_menu(sample.latticeFile));
  settle();
}

void selectAll(TestWindow& window) {
  for (const LayoutItem& item : window.m_EdgeLayouts)
    if (!item.isNode) window.m_SelectedEdges.push_back(item);
  const Box label = labelBox(window.canvasMapping(), window.m_SelectedEdges.front());
  window.m_PointerX = label.left + label.width / 2;
  window.m_PointerY = label.top + label.height / 2;
}

void benchExpose(benchmark::State& state, TestWindow& window) {
  selectAll(window);
  for (auto _ : state) {
    repaint(window.m_GraphArea);
    XSync(gdk_x11_get_default_xdisplay(), False);
  }
  state.counters["links"] = static_cast<double>(window.m_SelectedEdges.size());
  window.m_SelectedEdges.clear();
}

void benchTick(benchmark::State& state, TestWindow& window) {
  if (!window.m_SoundLoaded) state.SkipWithError("the sound was not loaded");
  window.on_play();
  for (auto _ : state) {
    window.on_play_tick();
    window.m_SoundArea.get_window()->process_updates(false);
    window.m_GraphArea.get_window()->process_updates(false);
    XSync(gdk_x11_get_default_xdisplay(), False);
  }
  window.on_stop();
}

void workOff() {
  while (Gtk::Main::events_pending()) Gtk::Main::iteration();
  XSync(gdk_x11_get_default_xdisplay(), False);
}

/// A text typed into the find bar, whose links are in sight now and at the other end then.
void benchFind(benchmark::State& state, TestWindow& window) {
  window.on_find();
  window.m_FindBar.entry.set_text("");
  settle();
  bool isFirst = false;
  for (auto _ : state) {
    isFirst = !isFirst;
    window.m_FindBar.entry.set_text(isFirst ? "1" : "9");
    workOff();
    if (window.m_SelectedEdges.size() != 1) state.SkipWithError("nothing was found");
  }
  window.on_close_find_bar();
  window.m_SelectedEdges.clear();
}

/// A picture of the size that a lattice of 100 nodes gets, opaque though it has room for more, as
/// `dot` writes it.
Glib::RefPtr<Gdk::Pixbuf> largePicture() {
  constexpr int kWidth = 8500;
  constexpr int kHeight = 2000;
  const auto picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, true, 8, kWidth, kHeight);
  for (int y = 0; y < kHeight; ++y) {
    guint8* pixel = picture->get_pixels() + y * picture->get_rowstride();
    for (int x = 0; x < kWidth; ++x, pixel += 4) {
      pixel[0] = pixel[1] = pixel[2] = static_cast<guint8>(x * y / 64);
      pixel[3] = 255;
    }
  }
  return picture;
}

void turnWheel(TestWindow& window, GdkScrollDirection direction) {
  GdkEvent* const event = gdk_event_new(GDK_SCROLL);
  event->any.window = GDK_WINDOW(g_object_ref(window.m_GraphArea.get_window()->gobj()));
  const Box seen = window.visiblePart();
  event->scroll.x = seen.left + 200;
  event->scroll.y = seen.top + 150;
  event->scroll.direction = direction;
  gtk_widget_event(GTK_WIDGET(window.m_GraphArea.gobj()), event);
  gdk_event_free(event);
}

/// From a fifth of the size, where most pixels make one, up to the full one and back.
void benchWheel(benchmark::State& state, TestWindow& window) {
  const auto before = window.m_refGraphImage;
  window.m_refGraphImage = largePicture();
  window.on_zoom_fit();
  settle();
  GdkScrollDirection direction = GDK_SCROLL_UP;
  double longestMs = 0.0;
  for (auto _ : state) {
    const gint64 start = g_get_monotonic_time();
    turnWheel(window, direction);
    workOff();
    longestMs = std::max(longestMs, static_cast<double>(g_get_monotonic_time() - start) / 1000);
    if (window.m_Zoom == 1.0f) direction = GDK_SCROLL_DOWN;
    if (window.m_Zoom == 0.2f) direction = GDK_SCROLL_UP;
  }
  state.counters["longest_ms"] = longestMs;
  window.m_refGraphImage = before;
  window.on_zoom_fit();
  settle();
}

}  // namespace
}  // namespace quorbel

/// Takes the folder with the viewer's pictures as its argument.
int main(int argc, char** argv) {
  setenv("ALSOFT_DRIVERS", "null", 0);
  Gtk::Main toolkit(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (argc != 2) {
    std::cerr << "window_bench: the folder with the pictures is missing" << std::endl;
    return 1;
  }
  const std::filesystem::path pictures = std::filesystem::absolute(argv[1]);
  const quorbel::TemporaryFolder folder;
  std::filesystem::copy(pictures, "images");
  quorbel::TestWindow window("");
  quorbel::openSample(window);
  const auto add = [&](const char* name, auto run) {
    benchmark::RegisterBenchmark(name,
                                 [&window, run](benchmark::State& state) { run(state, window); })
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
  };
  add("expose, 1000 links selected (should stay under 16 ms)", quorbel::benchExpose);
  add("play tick, a minute of sound (should stay under 5 ms)", quorbel::benchTick);
  add("find, 1000 links, key to mark (should stay under 50 ms)", quorbel::benchFind);
  add("wheel step, 17 million pixels (should stay under 40 ms)", quorbel::benchWheel);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
