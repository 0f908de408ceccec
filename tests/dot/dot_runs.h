#pragma once

// Runs of Graphviz's `dot` and of our own in the working directory.

#include <string>

namespace quorbel {

/// What a run left: its file, what it said, on standard error as a rule, and its exit status.
struct DotRun {
  std::string bytes;
  std::string said;
  int status = 0;
};

/// Runs "PROGRAM -TFORMAT -o out quorbel_graph.dot" on the description in an environment with these
/// settings ("NAME=VALUE NAME=VALUE").
DotRun graphvizRun(const std::string& format, const std::string& description,
                   const std::string& settings = "");
DotRun ownRun(const std::string& format, const std::string& description,
              const std::string& settings = "");

/// Whether both left the same, pictures in PNG pixel for pixel. As a test's condition it says what
/// differs.
void expectSame(const DotRun& own, const DotRun& graphviz, const std::string& format);

}  // namespace quorbel
