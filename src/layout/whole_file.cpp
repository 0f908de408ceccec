#include "layout/whole_file.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>

#include "layout/ending_signals.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

/// Where a new file goes, and what lies there so far.
struct Place {
  fs::path target;
  std::optional<struct stat> old;  ///< of a regular file that is there already
  bool isReplaced = true;          ///< else it is written to as it is
};

/// Whether the name lies where the system shows what a process has open: such a link leads to the
/// open file itself, not to what now has its name.
bool namesOpenFile(const fs::path& path) {
  const fs::path parent = path.parent_path();
  struct statfs system = {};
  return statfs(parent.empty() ? "." : parent.c_str(), &system) == 0 &&
         system.f_type == PROC_SUPER_MAGIC;
}

Place placeOf(const std::string& path) {
  Place place;
  place.target = path;
  struct stat found = {};
  if (stat(path.c_str(), &found) == 0) {
    place.isReplaced = S_ISREG(found.st_mode);
    if (place.isReplaced) place.old = found;
  } else {
    place.isReplaced = errno == ENOENT;  // else opening it says what is wrong
  }
  constexpr int kMostLinks = 40;  // as many as the system follows
  std::error_code noLink;
  for (int links = 0; place.isReplaced && links < kMostLinks; ++links) {
    const fs::path next = fs::read_symlink(place.target, noLink);
    if (noLink) break;
    if (namesOpenFile(place.target)) place.isReplaced = false;
    place.target = place.target.parent_path() / next;
  }
  return place;
}

/// Writes all of the text and closes the file. Returns 0 or the reason as errno has it.
template <typename GoesOn>
int writeAndClose(int file, std::string_view text, bool isKept, GoesOn goesOn) {
  constexpr std::size_t kStep = std::size_t{1} << 20u;
  int reason = 0;
  while (reason == 0 && !text.empty()) {
    const ssize_t count = write(file, text.data(), std::min(text.size(), kStep));
    if (count < 0)
      reason = errno;
    else
      text.remove_prefix(static_cast<std::size_t>(count));
    if (reason == 0 && !goesOn()) reason = EINTR;
  }
  if (reason == 0 && isKept && fsync(file) != 0) reason = errno;
  if (close(file) != 0 && reason == 0) reason = errno;
  return reason;
}

int writeAsItIs(const std::string& path, const std::string& text) {
  constexpr mode_t kMode = 0666;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, kMode);
  return file < 0 ? errno : writeAndClose(file, text, false, [] { return true; });
}

/// Makes a file of a name that is not taken in the target's folder, readable for nobody else while
/// it may become one that is not. Returns its descriptor, or -1 with errno set.
int makeBeside(const Place& place, std::string& name) {
  constexpr mode_t kNewMode = 0666;  // which the umask makes less
  constexpr mode_t kOldMode = 0600;  // until it gets that of the old file
  constexpr int kMostNames = 10000;
  for (int i = 0; i < kMostNames; ++i) {
    const std::string free = ".quorbel-" + std::to_string(getpid()) + '-' + std::to_string(i);
    name = (place.target.parent_path() / free).string();
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                          place.old ? kOldMode : kNewMode);
    if (file >= 0 || errno != EEXIST) return file;
  }
  return -1;
}

/// Whether the reason is that something is not allowed, which a folder may say.
bool isForbidden(int reason) { return reason == EACCES || reason == EPERM || reason == EROFS; }

/// Owner and mode as the old file has them; whose file it is may not be ours to say.
int takeModeOf(const struct stat& old, int file) {
  constexpr mode_t kAllOfMode = 07777;
  if (fchown(file, old.st_uid, old.st_gid) != 0 &&
      fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0)
    errno = 0;
  return fchmod(file, old.st_mode & kAllOfMode) == 0 ? 0 : errno;
}

std::string withReason(const std::string& path, int reason) {
  return path + ": " + std::strerror(reason);
}

}  // namespace

std::string writeWholeFile(const std::string& path, const std::string& text) {
  const Place place = placeOf(path);
  if (!place.isReplaced) {
    const int reason = writeAsItIs(path, text);
    return reason == 0 ? "" : withReason(path, reason);
  }
  if (place.old && faccessat(AT_FDCWD, place.target.c_str(), W_OK, AT_EACCESS) != 0)
    return withReason(path, errno);

  const EndingSignalsWait signalsWait;
  std::string beside;
  const int file = makeBeside(place, beside);
  if (file < 0) {
    const bool isFolders = place.old && isForbidden(errno);
    const std::string error = withReason(path, errno);
    return isFolders ? error + "; its folder takes no new file, and the old one is not put at risk"
                     : error;
  }
  const auto goesOn = [&] { return !signalsWait.hasCome(); };
  int reason = place.old ? takeModeOf(*place.old, file) : 0;
  const int writingReason = writeAndClose(file, reason == 0 ? text : "", true, goesOn);
  if (reason == 0) reason = writingReason;
  if (reason == EFBIG) signalsWait.forgetFileSize();
  if (reason == 0 && !goesOn()) reason = EINTR;
  std::string hint;
  if (reason == 0 && std::rename(beside.c_str(), place.target.c_str()) != 0) {
    reason = errno;
    if (place.old && isForbidden(reason)) hint = "; its folder lets only its owner replace it";
  }
  if (reason == 0) return "";
  unlink(beside.c_str());
  return withReason(path, reason) + hint;
}

}  // namespace quorbel
