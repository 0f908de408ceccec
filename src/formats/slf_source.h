#pragma once

// The bytes of a file, whether it is compressed or not.

#include <string>

namespace quorbel {

/// Reads the whole file `path`, plain or compressed by gzip, into `bytes`, once and from its
/// beginning to its end: it may be a pipe. `isCompressed` tells which of both it was.
///
/// Returns "" on success, else why it cannot be read, without the path ("No such file or
/// directory", "the compressed data end too early").
std::string readWholeFile(const std::string& path, std::string& bytes, bool& isCompressed);

}  // namespace quorbel
