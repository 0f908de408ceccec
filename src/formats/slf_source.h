#pragma once

// The bytes of a file, whether it is compressed or not.

#include <string>

namespace quorbel {

/// Reads the whole file `path`, plain or compressed by gzip, into `bytes`.
///
/// Returns "" on success, else why it cannot be read, without the path ("No such file or
/// directory", "the compressed data end too early").
std::string readWholeFile(const std::string& path, std::string& bytes);

}  // namespace quorbel
