#pragma once

// Which program `dot` there is.

#include <string>

namespace quorbel {

/// The first program `dot` on the search path (PATH) that is not the file `except`; "" when there
/// is none.
std::string findDot(const std::string& except);

/// Whether the program `path` is that of the Graphviz whose library this process uses: both lie
/// under one prefix, it is no script, and it gives the library's version as its own. Runs it for
/// that. Any other may be somebody's choice and is to be run as it is. The process should end by
/// _exit: the library keeps much.
bool isDotOfLibrary(const std::string& path);

}  // namespace quorbel
