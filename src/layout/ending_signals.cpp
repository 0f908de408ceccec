#include "layout/ending_signals.h"

#include <ctime>

namespace quorbel {

const std::vector<int>& endingSignals() {
  static const std::vector<int> signals = [] {
    std::vector<int> all = {SIGHUP,  SIGINT,  SIGQUIT,   SIGTRAP, SIGABRT, SIGUSR1,
                            SIGUSR2, SIGPIPE, SIGALRM,   SIGTERM, SIGXCPU, SIGXFSZ,
                            SIGPROF, SIGPOLL, SIGVTALRM, SIGSYS};
#ifdef SIGPWR
    all.push_back(SIGPWR);
#endif
#ifdef SIGSTKFLT
    all.push_back(SIGSTKFLT);
#endif
    for (int number = SIGRTMIN; number <= SIGRTMAX; ++number) all.push_back(number);
    return all;
  }();
  return signals;
}

EndingSignalsWait::EndingSignalsWait() {
  sigemptyset(&m_Waiting);
  for (const int number : endingSignals()) sigaddset(&m_Waiting, number);
  pthread_sigmask(SIG_BLOCK, &m_Waiting, &m_Before);
}

bool EndingSignalsWait::hasCome() const {
  sigset_t come;
  sigpending(&come);
  for (const int number : endingSignals()) {
    if (sigismember(&come, number) == 0 || sigismember(&m_Before, number) == 1) continue;
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler != SIG_IGN) return true;
  }
  return false;
}

void EndingSignalsWait::forgetFileSize() const {
  sigset_t fileSize;
  sigemptyset(&fileSize);
  sigaddset(&fileSize, SIGXFSZ);
  const timespec atOnce = {};
  sigtimedwait(&fileSize, nullptr, &atOnce);
}

}  // namespace quorbel
