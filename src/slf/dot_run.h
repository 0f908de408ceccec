#pragma once

// A run of Graphviz's `dot`, with what came of it.

#include <string>

namespace quorbel {

/// Runs "dot -TFORMAT -o OUTPUT DESCRIPTION" and waits for its end. What `dot` says on standard
/// error goes to the file `logFile`. An interrupt or a request to end (SIGINT, SIGTERM) that comes
/// meanwhile ends `dot`.
///
/// Returns "" when `dot` succeeded, else one line that says what happened: that it is not
/// installed, or the first line of what it said.
std::string runDot(const std::string& format, const std::string& output,
                   const std::string& description, const std::string& logFile);

}  // namespace quorbel
