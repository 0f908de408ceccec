#pragma once

#include <string>

namespace quorbel {

/// What went wrong in a run of `dot`, by its status as std::system returns it: that the program is
/// missing, that a signal ended it (it or the shell that waited for it), or its exit status. ""
/// when it succeeded.
std::string dotFailure(int status);

}  // namespace quorbel
