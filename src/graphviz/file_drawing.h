#pragma once

// Drawings by Graphviz's library into files.

#include <optional>
#include <string>

namespace quorbel {

/// Writes the bytes over what the file `path` holds, as `dot` does: it is made if it is missing,
/// and may be a pipe or a device. Returns whether all are written.
bool writeOver(const std::string& path, const std::string& bytes);

/// Does what "dot -TFORMAT -o OUTPUT DESCRIPTION" does, by drawByLibrary: its limits are those of
/// this too. Returns the exit status; nothing when that command itself is to be run, which will say
/// what is wrong.
std::optional<int> drawIntoFile(const std::string& format, const std::string& output,
                                const std::string& description);

}  // namespace quorbel
