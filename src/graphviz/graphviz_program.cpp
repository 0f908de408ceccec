#include "graphviz/graphviz_program.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <gvc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace quorbel {
namespace {

namespace fs = std::filesystem;

bool isSameFile(const std::string& a, const std::string& b) {
  std::error_code none;
  return !b.empty() && fs::equivalent(a, b, none);
}

/// The library's file, without links; "" when that is not known.
fs::path libraryFile() {
  void* const function = dlsym(RTLD_DEFAULT, "gvContextPlugins");
  Dl_info found = {};
  std::error_code none;
  if (!function || dladdr(function, &found) == 0) return {};
  return fs::canonical(found.dli_fname, none);
}

bool isBinary(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::array<char, 4> begin = {};
  stream.read(begin.data(), begin.size());
  return stream && std::string(begin.data(), begin.size()) ==
                       "\x7F"
                       "ELF";
}

std::string libraryVersion() {
  GVC_t* const context = gvContextPlugins(nullptr, 1);
  const char* const version = context ? gvcVersion(context) : nullptr;
  return version ? version : "";
}

/// What `path -V` says.
std::string versionSaidBy(const std::string& path) {
  std::array<int, 2> ends = {-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return "";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  std::string program = path;
  std::string option = "-V";
  std::array<char*, 3> arguments = {program.data(), option.data(), nullptr};
  pid_t process = 0;
  const int error =
      posix_spawn(&process, path.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::string said;
  std::array<char, 256> part = {};
  for (ssize_t count = 1; count > 0;) {
    count = read(ends[0], part.data(), part.size());
    if (count > 0) said.append(part.data(), static_cast<std::size_t>(count));
  }
  close(ends[0]);
  if (error == 0) waitpid(process, nullptr, 0);
  return said;
}

}  // namespace

std::string findDot(const std::string& except) {
  const char* const given = std::getenv("PATH");
  std::string_view rest = given ? given : "";
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    const fs::path folder = end == 0 ? "." : rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    std::string path = (folder / "dot").string();
    std::error_code none;
    if (fs::is_regular_file(path, none) && access(path.c_str(), X_OK) == 0 &&
        !isSameFile(path, except))
      return path;
  }
  return "";
}

bool isDotOfLibrary(const std::string& path) {
  std::error_code none;
  const fs::path program = fs::canonical(path, none);
  const fs::path folder = program.parent_path();
  if (folder.filename() != "bin" && folder.filename() != "sbin") return false;
  const fs::path libraries = folder.parent_path() / "lib";  // or lib64, or a folder in it
  if (libraryFile().string().compare(0, libraries.string().size(), libraries.string()) != 0)
    return false;
  const std::string version = libraryVersion();
  return isBinary(program) && !version.empty() &&
         versionSaidBy(program.string()).find(" version " + version + " ") != std::string::npos;
}

}  // namespace quorbel
