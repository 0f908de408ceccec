#pragma once

#include <cstdlib>
#include <string>

namespace quorbel {

/// Runs the command line by std::system: how tests without a window have `dot` run.
inline int runBySystem(const std::string& commandLine) { return std::system(commandLine.c_str()); }

}  // namespace quorbel
