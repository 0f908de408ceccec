#pragma once

// Lines on standard error that tell what a command that takes long is at.

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace quorbel {

/// While it lives, what the command is at stands on no line of a terminal, and comes on none: for
/// whoever writes where that may be.
class ProgressLineAway {
 public:
  ProgressLineAway();
  ProgressLineAway(const ProgressLineAway&) = delete;
  ProgressLineAway& operator=(const ProgressLineAway&) = delete;

 private:
  std::unique_lock<std::mutex> m_Lock;
};

/// Follows one command. For its first second it is silent; then it says which stage the command is
/// at, again for each new stage, and every few seconds how long it has taken. Where standard error
/// is a terminal, it has one line for that, which goes at last.
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// The command begins with `stage`, such as "reading talk.lat".
  void begin(const std::string& stage);

  /// What the command is at has changed a little: the next line says so, when it is time for one.
  void update(const std::string& stage);

 private:
  using Clock = std::chrono::steady_clock;

  void watch();
  void show(const std::string& text) const;

  const Clock::time_point m_Start = Clock::now();
  const bool m_IsOnTerminal;
  std::mutex m_Mutex;
  std::condition_variable m_Changed;
  std::string m_Stage = "reading";  ///< as every command begins
  bool m_IsNew = false;             ///< the stage was not shown yet
  bool m_IsEnded = false;           ///< the command is done
  std::thread m_Thread;
};

}  // namespace quorbel
