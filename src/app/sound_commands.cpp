// Finding, opening, playing and stopping the sound of the open lattice. The strip that shows it is
// in sound_strip.cpp, the player in audio_io.h.

#include <unistd.h>

#include "app/main_window.h"
#include "dialogs/open_file_dialog.h"
#include "sound/matching_sound.h"
#include "sound/play_clock.h"

namespace quorbel {
namespace {

std::int32_t wallClock() {
  Glib::TimeVal now;
  now.assign_current_time();
  return wallClockMs(now.tv_sec, now.tv_usec);
}

}  // namespace

/// A lattice whose path has no dot keeps the sound path of the one before, unless lattices are
/// imported.
void MainWindow::loadMatchingSound(const std::string& latticePath) {
  if (m_Import)
    m_SoundPath = soundBeside(latticePath);
  else if (const auto path = matchingSoundPath(latticePath))
    m_SoundPath = *path;
  m_SoundLoaded = false;
  m_SoundArea.queue_draw();
  if (access(m_SoundPath.c_str(), R_OK) == 0) loadSound();
}

/// Loads the file m_SoundPath; says so when it cannot be decoded. A pipe would keep the window
/// waiting.
void MainWindow::loadSound() {
  const bool isFile = Glib::file_test(m_SoundPath, Glib::FILE_TEST_IS_REGULAR);
  m_SoundLoaded = isFile && m_Audio.load(m_SoundPath);
  m_Waveform = Waveform();
  m_refWaveformPicture.reset();
  m_SoundArea.queue_draw();
  if (!m_SoundLoaded) show_error(*this, "Unable to load " + m_SoundPath);
}

void MainWindow::closeSound() {
  m_Playing = false;
  m_TickConnection.disconnect();
  m_Audio.stop();
  m_Audio.freeSamples();
  m_SoundLoaded = false;
  m_Waveform = Waveform();
  m_refWaveformPicture.reset();
}

void MainWindow::on_open_sound() {
  if (putOffWhileRendering([this] { on_open_sound(); })) return;
  const auto path = askForFile(m_SoundDialog, *this,
                               {"Please choose a sound file",
                                Gtk::RESPONSE_ACCEPT,
                                {{"Sound files", {"*.wav", "*.raw"}}},
                                0,
                                folderForDialogs()});
  if (!path) return;
  m_SoundPath = *path;
  loadSound();
}

void MainWindow::on_play() {
  constexpr unsigned kTickMs = 5;
  if (m_Playing) return;
  m_Playing = true;
  m_PlayElapsedMs = 0;
  m_PlayStartMs = wallClock();
  m_TickConnection =
      Glib::signal_timeout().connect(sigc::mem_fun(*this, &MainWindow::on_play_tick), kTickMs);
  if (m_SelectedEdges.empty())
    m_Audio.setSegment(0.0, 1.0);
  else
    m_Audio.setSegment(m_RangeStart, m_RangeEnd);
  m_Audio.play();
}

/// The tick notices on its next run.
void MainWindow::on_stop() { m_Audio.stop(); }

/// Where the sound is, as a fraction of the utterance, while it plays.
double MainWindow::playPosition() const {
  return m_Audio.positionFraction(m_PlayElapsedMs) + m_RangeStart;
}

bool MainWindow::on_play_tick() {
  m_Playing = m_Audio.isPlaying();
  if (m_Playing) m_PlayElapsedMs = elapsedMs(wallClock(), m_PlayStartMs);
  followSound();
  invalidateViews();
  return m_Playing;
}

}  // namespace quorbel
