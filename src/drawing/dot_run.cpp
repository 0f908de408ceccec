#include "drawing/dot_run.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>

namespace quorbel {
namespace {

constexpr int kNotFound = 127;  ///< a shell's exit status for a program that is not there

volatile sig_atomic_t runningDot = 0;
volatile sig_atomic_t caughtSignal = 0;

void endDot(int number) {
  const int errnoBefore = errno;  // what is interrupted may be about to look at it
  caughtSignal = number;
  if (runningDot > 0) kill(static_cast<pid_t>(runningDot), SIGTERM);
  errno = errnoBefore;
}

/// Keeps the signals waiting while it lives.
class SignalsWait {
 public:
  SignalsWait() {
    sigset_t waiting;
    sigemptyset(&waiting);
    for (const int number : SignalsEndDot::kSignals) sigaddset(&waiting, number);
    sigprocmask(SIG_BLOCK, &waiting, &m_Before);
  }
  ~SignalsWait() { letThrough(); }
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;

  void letThrough() const { sigprocmask(SIG_SETMASK, &m_Before, nullptr); }

 private:
  sigset_t m_Before;
};

/// In the process that is to become `dot`, signals act as they do on any program.
void resetSignals() {
  for (const int number : SignalsEndDot::kSignals) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler == endDot) signal(number, SIG_DFL);
  }
}

/// Starts `arguments[0]` with standard error going to `logFile`. Returns its process, 0 when a
/// signal came before, or -1 with errno set.
pid_t start(const char* const* arguments, const char* logFile) {
  if (caughtSignal != 0) return 0;
  const SignalsWait signalsWait;  // the new process would take them with this one's handler
  const pid_t process = fork();
  if (process == 0) {
    resetSignals();
    signalsWait.letThrough();
    const int log = open(logFile, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (log >= 0) dup2(log, STDERR_FILENO);
    execvp(arguments[0], const_cast<char* const*>(arguments));  // which changes none of them
    _exit(kNotFound);
  }
  runningDot = process;
  if (caughtSignal != 0) endDot(caughtSignal);  // it came before the process was known
  return process;
}

std::string endedBy(int signalNumber) {
  return std::string("dot was ended by a signal (") + strsignal(signalNumber) + ")";
}

std::string firstLineOf(const std::string& file) {
  std::ifstream stream(file);
  std::string line;
  while (std::getline(stream, line) && line.empty()) {
  }
  return line;
}

}  // namespace

SignalsEndDot::SignalsEndDot() {
  caughtSignal = 0;
  struct sigaction action = {};
  action.sa_handler = endDot;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &m_Before[i]);
    if (m_Before[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
  }
}

SignalsEndDot::~SignalsEndDot() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &m_Before[i], nullptr);
}

std::string runDot(const SignalsEndDot&, const std::string& format, const std::string& output,
                   const std::string& description, const std::string& logFile) {
  const std::string formatOption = "-T" + format;
  const std::array<const char*, 6> arguments = {"dot",          formatOption.c_str(), "-o",
                                                output.c_str(), description.c_str(),  nullptr};
  const pid_t process = start(arguments.data(), logFile.c_str());
  if (process == 0) return endedBy(caughtSignal);
  if (process < 0) return std::string("dot could not be started: ") + std::strerror(errno);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  runningDot = 0;
  if (WIFSIGNALED(status)) return endedBy(WTERMSIG(status));
  if (WEXITSTATUS(status) == kNotFound)
    return "the program \"dot\" was not found; it belongs to Graphviz, install the package "
           "\"graphviz\"";
  if (WEXITSTATUS(status) == 0) return "";
  const std::string reason = firstLineOf(logFile);
  return "dot failed with status " + std::to_string(WEXITSTATUS(status)) +
         (reason.empty() ? "" : ": " + reason);
}

}  // namespace quorbel
