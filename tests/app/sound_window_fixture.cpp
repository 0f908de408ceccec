#include "app/sound_window_fixture.h"

#include <cstdlib>

namespace quorbel {
std::string SoundWindowTest::writeSoundFile(const std::string& name, const Samples& samples,
                                            int channels, int sampleRate) const {
  const std::string path = pathIn(folder, name);
  writeWav(path, sampleRate, channels, samples);
  return path;
}

TestWindow& SoundWindowTest::openWithSound(const Samples& samples, int channels,
                                           const std::string& lattice) {
  writeSoundFile("test.wav", samples, channels);
  return openLattice(lattice);
}

void SoundWindowTest::setStripHeight(int height) {
  const int frame = window->m_RightPaned.get_position() - stripHeight();
  window->m_RightPaned.set_position(height + frame);
  settle();
}

void SoundWindowTest::selectEdge(int linkId) {
  const auto [x, y] = labelCentre(*window, linkId);
  GdkEvent* const event = gdk_event_new(GDK_2BUTTON_PRESS);
  event->button.window = GDK_WINDOW(g_object_ref(window->m_GraphArea.get_window()->gobj()));
  event->button.x = x;
  event->button.y = y;
  event->button.button = 1;
  window->m_GraphArea.event(event);
  gdk_event_free(event);
  settle();
  ASSERT_EQ(window->m_SelectedEdges.size(), 1u);
  ASSERT_EQ(window->m_SelectedEdges[0].linkId, linkId);
}

void SoundWindowTest::dragOnStrip(int fromX, int toX) {
  movePointer(window->m_SoundArea, fromX, stripHeight() / 2);
  pressButton();
  movePointer(window->m_SoundArea, toX, stripHeight() / 2);
  releaseButton();
}

void SoundWindowTest::playHeldAt(int elapsedMs) {
  activate("SoundMenuPlay");
  window->m_TickConnection.disconnect();
  window->m_PlayElapsedMs = elapsedMs;
  window->m_SoundArea.queue_draw();
  window->m_GraphArea.queue_draw();
  settle();
}

bool SoundWindowTest::waitForEndOfSound() {
  return waitFor([this] { return !window->m_Playing; });
}

void SoundWindowTest::answerWithSound(const std::string& path) {
  answer = [path](Gtk::Dialog& dialog) {
    if (auto* const chooser = dynamic_cast<Gtk::FileChooserDialog*>(&dialog))
      choose(*chooser, path, Gtk::RESPONSE_ACCEPT);
    else
      dialog.response(Gtk::RESPONSE_OK);
  };
}

::testing::AssertionResult SoundWindowTest::hasColour(const Glib::RefPtr<Gdk::Pixbuf>& picture,
                                                      int x, int y, unsigned rgb) {
  constexpr int kRounding = 2;
  const unsigned found = pixel(picture, x, y);
  bool isLike = true;
  for (const int shift : {0, 8, 16}) {
    const auto part = [shift](unsigned colour) { return static_cast<int>(colour >> shift & 0xFF); };
    isLike = isLike && std::abs(part(found) - part(rgb)) <= kRounding;
  }
  if (isLike) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << "pixel " << x << ", " << y << " is " << std::hex << found << ", not " << rgb;
}

Samples quietSound(int frames, std::int16_t value, std::int16_t peak) {
  Samples samples(static_cast<std::size_t>(frames), value);
  samples.at(samples.size() / 2) = peak;
  return samples;
}

PaintCount::PaintCount(Gtk::Widget& widget) {
  const auto count = [this](GdkEventExpose*) {
    ++m_Count;
    return false;
  };
  m_Connection = widget.signal_expose_event().connect(count, false);
}

}  // namespace quorbel
