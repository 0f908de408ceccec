#include "tool/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <utility>

#include "layout/ending_signals.h"
#include "tool/commands.h"

namespace quorbel {
namespace {

std::mutex lineMutex;
bool isLineShown = false;

/// Whether standard error goes where a line can be written over.
bool isTerminal() {
  const char* kind = std::getenv("TERM");
  return kind && *kind && std::strcmp(kind, "dumb") != 0 && isatty(STDERR_FILENO) == 1;
}

/// Leaves out what goes beyond one line of the terminal, where it could not be written over.
void cutToWidth(std::string& line) {
  constexpr std::size_t kUsual = 80;
  winsize size = {};
  const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
  std::size_t end = (isKnown ? size.ws_col : kUsual) - 1;
  if (line.size() <= end) return;
  constexpr unsigned kNextOfLetter = 0x80;
  constexpr unsigned kMask = 0xC0;
  while (end > 0 && (static_cast<unsigned char>(line[end]) & kMask) == kNextOfLetter) --end;
  line.resize(end);
}

}  // namespace

ProgressLineAway::ProgressLineAway() : m_Lock(lineMutex) {
  if (std::exchange(isLineShown, false)) std::cerr << "\x1B[K" << std::flush;
}

Progress::Progress() : m_IsOnTerminal(isTerminal()) {
  const EndingSignalsWait signalsWait;  // which a new thread inherits: signals are the others'
  m_Thread = std::thread([this] { watch(); });
}

Progress::~Progress() {
  {
    const std::lock_guard<std::mutex> lock(m_Mutex);
    m_IsEnded = true;
  }
  m_Changed.notify_one();
  m_Thread.join();
  const ProgressLineAway atLast;
}

void Progress::begin(const std::string& stage) {
  {
    const std::lock_guard<std::mutex> lock(m_Mutex);
    m_Stage = stage;
    m_IsNew = true;
  }
  m_Changed.notify_one();
}

void Progress::update(const std::string& stage) {
  const std::lock_guard<std::mutex> lock(m_Mutex);
  m_Stage = stage;
}

void Progress::watch() {
  constexpr std::chrono::seconds kSilent(1);
  const std::chrono::seconds kReminder(m_IsOnTerminal ? 1 : 5);
  std::unique_lock<std::mutex> lock(m_Mutex);
  if (m_Changed.wait_until(lock, m_Start + kSilent, [this] { return m_IsEnded; })) return;
  while (!m_IsEnded) {
    const auto taken = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - m_Start);
    m_IsNew = false;
    show(m_Stage + " (" + std::to_string(taken.count()) + " s)");
    m_Changed.wait_for(lock, kReminder, [this] { return m_IsEnded || m_IsNew; });
  }
}

void Progress::show(const std::string& text) const {
  if (!m_IsOnTerminal) return say(text);
  std::string line = saidLine(text);
  cutToWidth(line);
  const std::lock_guard<std::mutex> lock(lineMutex);
  std::cerr << "\r" + line + "\x1B[K\r" << std::flush;  // what is said next begins where it does
  isLineShown = true;
}

}  // namespace quorbel
