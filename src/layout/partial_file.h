#pragma once

// What is left of a file that could not be written.

#include <string>

namespace quorbel {

/// Removes the file, or the one that a symbolic link leads to, but no device or pipe. What cannot
/// be removed stays.
void removePartialFile(const std::string& name);

}  // namespace quorbel
