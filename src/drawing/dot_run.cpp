#include "drawing/dot_run.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>

#include "graphviz/file_drawing.h"
#include "graphviz/graphviz_program.h"
#include "layout/dot_failure.h"
#include "layout/ending_signals.h"

namespace quorbel {
namespace {

constexpr int kNotFound = 127;  ///< as a shell's exit status, which dotFailure knows

using DotArguments = std::array<const char*, 6>;
constexpr std::size_t kFormatAt = 1;
constexpr std::size_t kOutputAt = 3;
constexpr std::size_t kDescriptionAt = 4;

volatile sig_atomic_t runningDot = 0;
volatile sig_atomic_t caughtSignal = 0;

void endDot(int number) {
  const int errnoBefore = errno;  // what is interrupted may be about to look at it
  caughtSignal = number;
  if (runningDot > 0) kill(static_cast<pid_t>(runningDot), SIGTERM);
  errno = errnoBefore;
}

/// In the process that is to become `dot`, signals act as they do on any program.
void resetSignals() {
  for (const int number : endingSignals()) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler == endDot) signal(number, SIG_DFL);
  }
}

/// Becomes `dot`, or does its work.
[[noreturn]] void beDot(const DotArguments& arguments) {
  // Another `dot` somebody has put first on the search path, who wants that.
  if (isDotOfLibrary(findDot(""))) {
    const auto status = drawIntoFile(arguments[kFormatAt] + std::strlen("-T"), arguments[kOutputAt],
                                     arguments[kDescriptionAt]);
    if (status) _exit(*status);
  }
  execvp(arguments[0], const_cast<char* const*>(arguments.data()));  // which changes none of them
  _exit(kNotFound);
}

/// Starts a process that is `dot`, with standard error going to `logFile`. Returns the process, 0
/// when a signal came before, or -1 with errno set.
pid_t start(const DotArguments& arguments, const char* logFile) {
  if (caughtSignal != 0) return 0;
  signal(SIGCHLD, SIG_DFL);             // ignored, it would hide how the process ended
  const EndingSignalsWait signalsWait;  // the new process would take them with this one's handler
  const pid_t process = fork();
  if (process == 0) {
    resetSignals();
    signalsWait.letThrough();
    const int log = open(logFile, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (log >= 0) dup2(log, STDERR_FILENO);
    beDot(arguments);
  }
  runningDot = process;
  if (caughtSignal != 0) endDot(caughtSignal);  // it came before the process was known
  return process;
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
  for (const int number : endingSignals()) {
    struct sigaction& before = m_Before.emplace_back();
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
  }
}

SignalsEndDot::~SignalsEndDot() {
  auto before = m_Before.begin();
  for (const int number : endingSignals()) sigaction(number, &*before++, nullptr);
}

bool SignalsEndDot::haveCome() const { return caughtSignal != 0; }

std::string runDot(const SignalsEndDot&, const std::string& format, const std::string& output,
                   const std::string& description, const std::string& logFile) {
  const std::string formatOption = "-T" + format;
  const DotArguments arguments = {"dot",          formatOption.c_str(), "-o",
                                  output.c_str(), description.c_str(),  nullptr};
  const pid_t process = start(arguments, logFile.c_str());
  if (process == 0) return dotEndedBy(caughtSignal);
  if (process < 0) return std::string("dot could not be started: ") + std::strerror(errno);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  runningDot = 0;
  const std::string failure = dotFailure(status);
  const bool mayHaveSaidWhy = WIFEXITED(status) && WEXITSTATUS(status) != 0;
  const std::string reason = mayHaveSaidWhy ? firstLineOf(logFile) : "";
  return failure + (reason.empty() ? "" : ": " + reason);
}

}  // namespace quorbel
