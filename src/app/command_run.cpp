#include "app/command_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <utility>

namespace quorbel {
namespace {

constexpr const char* kShell = "/bin/sh";

/// Reads the group that it looks after, and then nothing: the line is closed when the time has
/// come.
constexpr const char* kGuard =
    "cd /\n"  // a work folder may have to go
    "await_end() {\n"
    "  looks=$1\n"
    "  while [ \"$looks\" -gt 0 ]; do\n"
    "    sleep 0.05\n"
    "    kill -s 0 -- \"-$group\" || exit\n"
    "    looks=$((looks - 1))\n"
    "  done\n"
    "}\n"
    "read -r group || exit\n"
    "read -r nothing\n"
    "kill -s TERM -- \"-$group\" || exit\n"
    "await_end 20\n"
    "kill -s KILL -- \"-$group\" || exit\n"
    "await_end 6\n";  // what is killed ends when the system comes to it

/// What a new process gets that differs from this one: a process group of its own, and files.
class SpawnOptions {
 public:
  SpawnOptions() {
    posix_spawn_file_actions_init(&m_Files);
    posix_spawnattr_init(&m_Attributes);
    posix_spawnattr_setflags(&m_Attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&m_Attributes, 0);
  }
  ~SpawnOptions() {
    posix_spawn_file_actions_destroy(&m_Files);
    posix_spawnattr_destroy(&m_Attributes);
  }
  SpawnOptions(const SpawnOptions&) = delete;
  SpawnOptions& operator=(const SpawnOptions&) = delete;

  void readFrom(int file) { posix_spawn_file_actions_adddup2(&m_Files, file, STDIN_FILENO); }

  void keepSilent() {
    for (const int file : {STDOUT_FILENO, STDERR_FILENO})
      posix_spawn_file_actions_addopen(&m_Files, file, "/dev/null", O_WRONLY, 0);
  }

  /// Returns the process that runs the script, 0 when none could be started.
  pid_t spawnShell(const std::string& script) const {
    const std::array<const char*, 4> arguments = {kShell, "-c", script.c_str(), nullptr};
    pid_t process = 0;
    const int error =
        posix_spawn(&process, kShell, &m_Files, &m_Attributes,
                    const_cast<char* const*>(arguments.data()), environ);  // changes none of them
    return error == 0 ? process : 0;
  }

 private:
  posix_spawn_file_actions_t m_Files = {};
  posix_spawnattr_t m_Attributes = {};
};

/// Waits for something to happen, and lets it happen.
void iterate() { Glib::MainContext::get_default()->iteration(true); }

/// Whether a process of the group has not ended: one that nobody has taken note of yet has.
bool isAnyLeft(pid_t group) {
  std::error_code none;
  for (std::filesystem::directory_iterator entry("/proc", none), end; !none && entry != end;
       entry.increment(none)) {
    std::string stat;
    if (!std::getline(std::ifstream(entry->path() / "stat"), stat)) continue;
    const std::size_t nameEnd = stat.rfind(')');
    if (nameEnd == std::string::npos) continue;
    std::istringstream behindName(stat.substr(nameEnd + 1));
    char state = 0;
    pid_t parent = 0;
    pid_t itsGroup = 0;
    behindName >> state >> parent >> itsGroup;
    if (itsGroup == group && state != 'Z' && state != 'X') return true;
  }
  return false;
}

/// Waits for the end of a child, unless that was noticed already.
void awaitEnd(pid_t process) {
  while (process > 0 && waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

/// Where SIGCHLD is ignored, nobody learns how a child ended.
CommandRun::CommandRun() {
  struct sigaction action = {};
  sigaction(SIGCHLD, nullptr, &action);
  if (action.sa_handler == SIG_IGN) signal(SIGCHLD, SIG_DFL);
}

CommandRun::~CommandRun() {
  m_CommandWatch.disconnect();
  m_GuardWatch.disconnect();
  hangUp();
  awaitEnd(m_Command);
  // Not for the guard itself, which goes on while there is no one to take note of ends.
  constexpr auto kLookEvery = std::chrono::milliseconds(10);
  while (m_Guard > 0 && waitpid(m_Guard, nullptr, WNOHANG) == 0 && isAnyLeft(m_Group))
    std::this_thread::sleep_for(kLookEvery);
}

int CommandRun::run(const std::string& commandLine) {
  m_IsBrokenOff = false;
  while (!m_IsBrokenOff && (m_Command > 0 || m_Guard > 0)) iterate();
  if (m_IsBrokenOff) return kBrokenOff;
  if (!start(commandLine)) return -1;
  while (!m_IsBrokenOff && m_Command > 0) iterate();
  if (m_IsBrokenOff) return kBrokenOff;
  kill(m_Guard, SIGKILL);
  awaitEnd(std::exchange(m_Guard, 0));
  hangUp();
  return m_Status;
}

void CommandRun::breakOff() {
  m_IsBrokenOff = true;
  if (m_Line < 0) return;
  m_GuardWatch =
      Glib::signal_child_watch().connect(sigc::mem_fun(*this, &CommandRun::onGuardEnd), m_Guard);
  hangUp();
}

/// The guard comes first, so that no command is without one.
bool CommandRun::start(const std::string& commandLine) {
  std::array<int, 2> line = {-1, -1};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, line.data()) != 0) return false;
  m_Line = line[0];
  SpawnOptions guard;
  guard.readFrom(line[1]);
  guard.keepSilent();
  m_Guard = guard.spawnShell(kGuard);
  close(line[1]);
  m_Command = m_Guard > 0 ? SpawnOptions().spawnShell(commandLine) : 0;
  if (m_Command == 0) {
    hangUp();
    awaitEnd(std::exchange(m_Guard, 0));
    return false;
  }
  m_Group = m_Command;
  const std::string group = std::to_string(m_Group) + "\n";
  send(m_Line, group.data(), group.size(), MSG_NOSIGNAL);
  m_CommandWatch = Glib::signal_child_watch().connect(
      sigc::mem_fun(*this, &CommandRun::onCommandEnd), m_Command);
  return true;
}

void CommandRun::onCommandEnd(GPid, int status) {
  m_Command = 0;
  m_Status = status;
}

void CommandRun::onGuardEnd(GPid, int) { m_Guard = 0; }

void CommandRun::hangUp() {
  if (m_Line >= 0) close(std::exchange(m_Line, -1));
}

}  // namespace quorbel
