#pragma once

// Signals that end a program.

#include <csignal>
#include <vector>

namespace quorbel {

/// The signals that end a program which does not mind them: those of people, terminals, closed
/// pipes, timers and limits, and those that are free for any use. Not among them are SIGKILL,
/// which nobody can mind, the faults of a program behind which it cannot go on (SIGSEGV and the
/// like), and those that stop a program, which goes on later.
const std::vector<int>& endingSignals();

/// Keeps the ending signals waiting while it lives, for the thread that made it.
class EndingSignalsWait {
 public:
  EndingSignalsWait();
  ~EndingSignalsWait() { letThrough(); }
  EndingSignalsWait(const EndingSignalsWait&) = delete;
  EndingSignalsWait& operator=(const EndingSignalsWait&) = delete;

  /// Whether one of them waits that was neither kept waiting before nor is ignored.
  bool hasCome() const;

  /// Forgets a waiting SIGXFSZ: whoever writes sees by the error that a file would get too large.
  void forgetFileSize() const;

  void letThrough() const { pthread_sigmask(SIG_SETMASK, &m_Before, nullptr); }

 private:
  sigset_t m_Waiting = {};
  sigset_t m_Before = {};
};

}  // namespace quorbel
