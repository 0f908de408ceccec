#include "layout/dot_failure.h"

#include <sys/wait.h>

#include <cstring>

namespace quorbel {

std::string dotEndedBy(int signal) {
  return std::string("dot was ended by a signal (") + strsignal(signal) + ")";
}

std::string dotFailure(int status) {
  constexpr int kNotFound = 127;       // what a shell says of a program that is not there
  constexpr int kEndedBySignal = 128;  // and, plus the signal, of one that did not end by itself
  if (status == -1) return "no process could be started for dot";
  if (!WIFSIGNALED(status) && WEXITSTATUS(status) == 0) return "";
  if (!WIFSIGNALED(status) && WEXITSTATUS(status) == kNotFound)
    return "the program \"dot\" was not found; it belongs to Graphviz, install the package "
           "\"graphviz\"";
  const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status) - kEndedBySignal;
  if (signal > 0) return dotEndedBy(signal);
  return "dot failed with status " + std::to_string(WEXITSTATUS(status));
}

}  // namespace quorbel
