#pragma once

// The folder in which `dot` draws.

#include <filesystem>
#include <string>
#include <vector>

namespace quorbel {

/// A folder for work files that goes with this object, with the files that were named to it: that
/// takes no file descriptor, which may be what is wanting. While it lives, new files of this
/// program and of those that it starts are readable for their owner and nobody else (umask).
class WorkFolder {
 public:
  WorkFolder();
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  /// Why there is no folder; "" when there is.
  const std::string& error() const { return m_Error; }

  /// The path of a file in the folder, whether it is there or not.
  std::string file(const std::string& name);

 private:
  std::filesystem::path m_Path;
  std::vector<std::string> m_Files;
  std::string m_Error;
  mode_t m_UmaskBefore;
};

/// Why nothing more can be written behind the end of the file `path`, "" when more can. A program
/// that writes with the standard library may lose what its buffer holds at last, a block of the
/// file system, without noticing: so much is tried here.
std::string whyFull(const std::string& path);

}  // namespace quorbel
