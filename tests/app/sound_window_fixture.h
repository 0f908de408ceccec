#pragma once

#include <string>
#include <utility>

#include "app/lattices.h"
#include "app/window_fixture.h"
#include "sound/sound_files.h"

namespace quorbel {

/// A test of the window with sounds in its folder.
class SoundWindowTest : public WindowTest {
 protected:
  static constexpr int kSampleRate = 8000;  ///< of sounds for which a test sets nothing else

  /// Writes a WAV file into the folder and returns its path.
  std::string writeSoundFile(const std::string& name, const Samples& samples, int channels = 1,
                             int sampleRate = kSampleRate) const;

  /// Opens a lattice with a sound beside it that has these samples.
  TestWindow& openWithSound(const Samples& samples, int channels = 1,
                            const std::string& lattice = kTwoWays);

  /// Gives the strip about this height, so that more than its middle can be seen.
  void setStripHeight(int height);

  Glib::RefPtr<Gdk::Pixbuf> strip() { return pictureOf(window->m_SoundArea); }
  Glib::RefPtr<Gdk::Pixbuf> canvas() { return pictureOf(window->m_GraphArea); }
  int stripWidth() const { return window->m_SoundArea.get_width(); }
  int stripHeight() const { return window->m_SoundArea.get_height(); }

  /// Has the canvas take a double press on an edge's label, and checks that it selected this edge.
  void selectEdge(int linkId);

  /// Presses button 1 on the strip, moves and releases it: all through the X server.
  void dragOnStrip(int fromX, int toX);

  /// Plays, and keeps the cursor where it is after so long. No tick moves it or notices the end.
  void playHeldAt(int elapsedMs);

  /// Lets the running sound end by itself.
  bool waitForEndOfSound();

  /// Answers the dialog that opens sounds by choosing this file, and boxes with OK.
  void answerWithSound(const std::string& path);

  /// Whether a pixel has this colour, 0xRRGGBB, but for a step of rounding.
  static ::testing::AssertionResult hasColour(const Glib::RefPtr<Gdk::Pixbuf>& picture, int x,
                                              int y, unsigned rgb);
};

/// A sound of `frames` values that is quiet but for one sample, the loudest: that is `peak`.
Samples quietSound(int frames, std::int16_t value, std::int16_t peak);

/// Counts how often a widget is painted while this object lives.
class PaintCount {
 public:
  explicit PaintCount(Gtk::Widget& widget);
  ~PaintCount() { m_Connection.disconnect(); }
  PaintCount(const PaintCount&) = delete;
  PaintCount& operator=(const PaintCount&) = delete;

  int take() { return std::exchange(m_Count, 0); }

 private:
  int m_Count = 0;
  sigc::connection m_Connection;
};

}  // namespace quorbel
