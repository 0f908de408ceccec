#pragma once

// Files that are written whole or not at all.

#include <string>

namespace quorbel {

/// Writes `text` to the file `path`, or to the one that a symbolic link leads to. The text is
/// written to a file of another name in the same folder, which then takes the place of an old file
/// and gets its mode, and its owner where that is allowed: whatever happens on the way, the old
/// file stays as it was, and of the new one nothing is left. Other names (hard links) of an old
/// file keep its old content. Where the folder takes no new file, or the old one may not be written
/// to, nothing is written. What is no regular file, such as a pipe or a device, also by its name in
/// /dev/fd or as /dev/stdout, is written to as it is.
///
/// The signals that end a program (see endingSignals) wait while the file is made; one that waits
/// before the old file is replaced makes the writing fail, and acts then. That no signal leaves a
/// file behind is only so when no other thread of the program takes them.
///
/// Returns "" on success, else the path and the reason.
std::string writeWholeFile(const std::string& path, const std::string& text);

}  // namespace quorbel
