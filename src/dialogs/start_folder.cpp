#include "dialogs/start_folder.h"

#include <filesystem>

namespace quorbel {
namespace {

/// Without "." and ".." and without a slash at the end.
std::filesystem::path plain(const std::filesystem::path& path) {
  const std::filesystem::path normal = path.lexically_normal();
  return normal.has_filename() ? normal : normal.parent_path();
}

}  // namespace

std::string startFolder(const std::string& latticeFolder, const std::string& workingFolder,
                        const std::string& otherwise) {
  const std::filesystem::path given(latticeFolder);
  const std::filesystem::path working = plain(workingFolder);
  const bool isWorkFolder = given.is_absolute() && plain(given) == working;
  if (given.empty() || isWorkFolder) return otherwise;
  return plain(working / given);
}

}  // namespace quorbel
