#include "tool/progress.h"

#include "layout/ending_signals.h"
#include "tool/commands.h"

namespace quorbel {

Progress::Progress() {
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
  constexpr std::chrono::seconds kReminder(5);
  std::unique_lock<std::mutex> lock(m_Mutex);
  if (m_Changed.wait_until(lock, m_Start + kSilent, [this] { return m_IsEnded; })) return;
  while (!m_IsEnded) {
    const auto taken = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - m_Start);
    m_IsNew = false;
    say(m_Stage + " (" + std::to_string(taken.count()) + " s)");
    m_Changed.wait_for(lock, kReminder, [this] { return m_IsEnded || m_IsNew; });
  }
}

}  // namespace quorbel
