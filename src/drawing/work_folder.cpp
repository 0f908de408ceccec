#include "drawing/work_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace quorbel {
namespace {

constexpr mode_t kNobodyElse = 077;

}  // namespace

WorkFolder::WorkFolder() : m_UmaskBefore(umask(kNobodyElse)) {
  const char* given = std::getenv("TMPDIR");
  // Absolute, since `dot` would take a name that begins with "-" for an option.
  std::error_code ignored;  // where there is no working directory, nothing can be made in it
  const std::filesystem::path parent =
      std::filesystem::absolute(given && *given ? given : "/tmp", ignored);
  std::string pattern = (parent / "quorbel-lattice-XXXXXX").string();
  if (mkdtemp(pattern.data()))
    m_Path = pattern;
  else
    m_Error = "no folder for work files in " + parent.string() + ": " + std::strerror(errno);
}

WorkFolder::~WorkFolder() {
  umask(m_UmaskBefore);
  if (m_Path.empty()) return;
  for (const std::string& file : m_Files) unlink(file.c_str());
  if (rmdir(m_Path.c_str()) == 0) return;
  std::error_code ignored;  // `dot` left something of its own there
  std::filesystem::remove_all(m_Path, ignored);
}

std::string WorkFolder::file(const std::string& name) {
  return m_Files.emplace_back((m_Path / name).string());
}

std::string whyFull(const std::string& path) {
  constexpr mode_t kMode = 0600;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kMode);
  if (file < 0) return std::strerror(errno);
  const off_t end = lseek(file, 0, SEEK_END);
  struct stat found = {};
  if (fstat(file, &found) != 0) found.st_blksize = BUFSIZ;
  const std::string more(static_cast<std::size_t>(found.st_blksize), ' ');
  int reason = 0;
  for (std::size_t written = 0; reason == 0 && written < more.size();) {
    const ssize_t count = write(file, more.data(), more.size() - written);
    if (count < 0 && errno != EINTR) reason = errno;
    if (count > 0) written += static_cast<std::size_t>(count);
  }
  if (ftruncate(file, end) != 0 && reason == 0) reason = errno;
  if (close(file) != 0 && reason == 0) reason = errno;
  return reason == 0 ? "" : std::strerror(reason);
}

}  // namespace quorbel
