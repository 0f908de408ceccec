#pragma once

// What is said of a run of `dot` that failed, by whichever program.

#include <string>

namespace quorbel {

/// What went wrong in a run of `dot`, by its status as std::system or waitpid returns it: that the
/// program is missing, that a signal ended it (it or the shell that waited for it), or its exit
/// status. "" when it succeeded.
std::string dotFailure(int status);

/// That a signal of this number ended it.
std::string dotEndedBy(int signal);

}  // namespace quorbel
