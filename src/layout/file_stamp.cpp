#include "layout/file_stamp.h"

#include <sys/stat.h>

#include <tuple>

namespace quorbel {
namespace {

auto allOf(const FileStamp& stamp) {
  return std::tie(stamp.exists, stamp.inode, stamp.size, stamp.modifiedSeconds,
                  stamp.modifiedNanoseconds);
}

}  // namespace

bool operator==(const FileStamp& a, const FileStamp& b) { return allOf(a) == allOf(b); }

FileStamp fileStamp(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return {};
  FileStamp stamp;
  stamp.exists = true;
  stamp.inode = status.st_ino;
  stamp.size = status.st_size;
  stamp.modifiedSeconds = status.st_mtim.tv_sec;
  stamp.modifiedNanoseconds = status.st_mtim.tv_nsec;
  return stamp;
}

}  // namespace quorbel
