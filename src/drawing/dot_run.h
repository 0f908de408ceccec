#pragma once

// A run of Graphviz's `dot`, with what came of it.

#include <csignal>
#include <string>
#include <vector>

namespace quorbel {

/// While it lives, the signals that end a program (see endingSignals) end a running `dot` instead
/// of this program, which so can tidy up; a call of the system that waits is broken off. A signal
/// that the program was started to ignore, as by nohup, stays ignored. There may be one object at a
/// time.
class SignalsEndDot {
 public:
  SignalsEndDot();
  ~SignalsEndDot();
  SignalsEndDot(const SignalsEndDot&) = delete;
  SignalsEndDot& operator=(const SignalsEndDot&) = delete;

  /// Whether one of the signals came since this object was made.
  bool haveCome() const;

 private:
  std::vector<struct sigaction> m_Before;  ///< for each of endingSignals()
};

/// Runs "dot -TFORMAT -o OUTPUT DESCRIPTION" and waits for its end; where that is Graphviz's own
/// program, a process of this one does its work by the library (see drawIntoFile). What `dot` says
/// on standard error goes to the file `logFile`. It is not started when a signal came since the
/// SignalsEndDot that the caller holds was made.
///
/// Returns "" when `dot` succeeded, else one line that says what happened: that it is not
/// installed, that a signal ended it, or the first line of what it said.
std::string runDot(const SignalsEndDot& signals, const std::string& format,
                   const std::string& output, const std::string& description,
                   const std::string& logFile);

}  // namespace quorbel
