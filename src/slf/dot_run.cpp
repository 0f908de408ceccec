#include "slf/dot_run.h"

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

void endDot(int) {
  if (runningDot > 0) kill(static_cast<pid_t>(runningDot), SIGTERM);
}

/// What people and terminals end programs with.
constexpr std::array<int, 4> kEndingSignals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

/// Passes signals that end programs on to `dot` while it lives, so that its caller can clean up.
class SignalsEndDot {
 public:
  SignalsEndDot() {
    struct sigaction action = {};
    action.sa_handler = endDot;
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
      sigaction(kEndingSignals[i], &action, &m_Before[i]);
  }
  ~SignalsEndDot() {
    runningDot = 0;
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
      sigaction(kEndingSignals[i], &m_Before[i], nullptr);
  }
  SignalsEndDot(const SignalsEndDot&) = delete;
  SignalsEndDot& operator=(const SignalsEndDot&) = delete;

 private:
  std::array<struct sigaction, kEndingSignals.size()> m_Before = {};
};

/// What the process that was to become `dot` does.
[[noreturn]] void becomeDot(const std::string& format, const std::string& output,
                            const std::string& description, const std::string& logFile) {
  for (const int number : kEndingSignals) signal(number, SIG_DFL);
  const int log = open(logFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (log >= 0) dup2(log, STDERR_FILENO);
  const std::string formatOption = "-T" + format;
  execlp("dot", "dot", formatOption.c_str(), "-o", output.c_str(), description.c_str(), nullptr);
  _exit(kNotFound);
}

std::string firstLineOf(const std::string& file) {
  std::ifstream stream(file);
  std::string line;
  while (std::getline(stream, line) && line.empty()) {
  }
  return line;
}

}  // namespace

std::string runDot(const std::string& format, const std::string& output,
                   const std::string& description, const std::string& logFile) {
  const SignalsEndDot signals;
  const pid_t process = fork();
  if (process < 0) return std::string("dot could not be started: ") + std::strerror(errno);
  if (process == 0) becomeDot(format, output, description, logFile);
  runningDot = process;
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status))
    return std::string("dot was ended by a signal (") + strsignal(WTERMSIG(status)) + ")";
  if (WEXITSTATUS(status) == kNotFound)
    return "the program \"dot\" was not found; it belongs to Graphviz, install the package "
           "\"graphviz\"";
  if (WEXITSTATUS(status) == 0) return "";
  const std::string reason = firstLineOf(logFile);
  return "dot failed with status " + std::to_string(WEXITSTATUS(status)) +
         (reason.empty() ? "" : ": " + reason);
}

}  // namespace quorbel
