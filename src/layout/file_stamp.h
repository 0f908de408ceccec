#pragma once

#include <cstdint>
#include <string>

namespace quorbel {

/// What tells a file from the one that had its name before: a program that writes a file anew
/// changes at least one of these.
struct FileStamp {
  bool exists = false;  ///< without a file everything else is 0
  std::uint64_t inode = 0;
  std::int64_t size = 0;             ///< bytes
  std::int64_t modifiedSeconds = 0;  ///< time of the last change, since 1970
  std::int64_t modifiedNanoseconds = 0;
};

bool operator==(const FileStamp& a, const FileStamp& b);
inline bool operator!=(const FileStamp& a, const FileStamp& b) { return !(a == b); }

/// The stamp of the file that `path` leads to, through symbolic links. A file that cannot be looked
/// at counts as absent.
FileStamp fileStamp(const std::string& path);

}  // namespace quorbel
