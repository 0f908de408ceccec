#include "probe_process.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace quorbel {
namespace {

constexpr auto kPatience = std::chrono::seconds(60);

[[noreturn]] void becomeProbe(const std::vector<std::string>& words,
                              const std::map<std::string, std::string>& environment, int output) {
  dup2(output, STDOUT_FILENO);
  for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
  std::string program = SOUND_PROBE;
  std::vector<std::string> arguments = words;
  std::vector<char*> pointers = {program.data()};
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  execv(program.c_str(), pointers.data());
  _exit(127);
}

/// Reads to the end of the file; false when that does not come in time.
bool readAll(int descriptor, std::string& text) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    pollfd waiting{descriptor, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(left.count())) <= 0) continue;
    char block[4096];
    const ssize_t count = read(descriptor, block, sizeof(block));
    if (count <= 0) return true;
    text.append(block, static_cast<std::size_t>(count));
  }
}

}  // namespace

ProbeResult runProbe(const std::vector<std::string>& words,
                     const std::map<std::string, std::string>& environment) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    close(ends[0]);
    becomeProbe(words, environment, ends[1]);
  }
  close(ends[1]);
  ProbeResult result;
  if (!readAll(ends[0], result.output)) kill(child, SIGKILL);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
  return result;
}

}  // namespace quorbel
