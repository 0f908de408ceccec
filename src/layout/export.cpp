#include "layout/export.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "layout/dia_writer.h"
#include "layout/dot_failure.h"
#include "layout/file_names.h"

namespace quorbel {
namespace {

/// The folder that a file of this name lies in.
std::string folderOf(const std::string& name) {
  const std::filesystem::path folder = std::filesystem::path(name).parent_path();
  return folder.empty() ? "." : folder.string();
}

bool isFull(const std::string& folder) {
  struct statvfs place = {};
  return statvfs(folder.c_str(), &place) == 0 && place.f_blocks > 0 && place.f_bavail == 0;
}

/// Whether `dot` drew what it was asked for: it does not notice when the disk gets full, and says
/// nothing when it has nothing to draw.
bool isDrawn(int status, const std::string& name) {
  struct stat file = {};
  const bool isThere = status == 0 && stat(name.c_str(), &file) == 0;
  if (!isThere || !S_ISREG(file.st_mode)) return isThere;
  return file.st_size > 0 && !isFull(folderOf(name));
}

}  // namespace

std::string writeObstacle(const std::string& name) {
  const std::string folder = folderOf(name);
  int error = 0;
  struct stat file = {};
  const bool exists = stat(name.c_str(), &file) == 0;
  if (exists && S_ISDIR(file.st_mode))
    error = EISDIR;
  else if ((!exists && errno != ENOENT) ||
           access(exists ? name.c_str() : folder.c_str(), exists ? W_OK : W_OK | X_OK) != 0)
    error = errno;
  else if (isFull(folder))
    error = ENOSPC;
  return error == 0 ? "" : std::strerror(error);
}

std::string exportDrawing(Graph& graph, const std::string& name, const CommandRunner& run) {
  const bool isDiagram = graph.outputFormat == "dia";
  const DotRuns runs = writeDotAndRun(graph, name, run);
  if (isDrawn(runs.image, name)) return "";
  if (isDiagram && runs.layout == 0 && writeDiaDiagram(kLayoutFile, name)) return "";
  std::string reason = writeObstacle(name);
  if (reason.empty()) reason = dotFailure(isDiagram ? runs.layout : runs.image);
  if (reason.empty()) reason = "dot made no drawing";
  return name + " could not be written: " + reason;
}

}  // namespace quorbel
