#pragma once

// Running commands, such as `dot`, while the window lives.

#include <glibmm/main.h>
#include <sys/types.h>

#include <csignal>
#include <string>

namespace quorbel {

/// Runs command lines, one at a time, and lets the main loop's events through until they end.
///
/// What a command line starts belongs to one process group. Beside it a guard runs, a process that
/// ends the group (SIGTERM, and SIGKILL to what is left of it a second later) when it is broken
/// off, and when the viewer is gone, whatever ended it. Unlike std::system, a run keeps SIGINT and
/// SIGQUIT from nobody: they end the viewer as at any other time, and the command with it.
class CommandRun {
 public:
  /// What is told of a command that was broken off: the status of one that SIGTERM ended.
  static constexpr int kBrokenOff = SIGTERM;

  CommandRun();

  /// Ends the command in progress and all that it has started, and waits for that: a second where
  /// SIGTERM is ignored.
  ~CommandRun();
  CommandRun(const CommandRun&) = delete;
  CommandRun& operator=(const CommandRun&) = delete;

  /// Runs the command line by `/bin/sh -c` and returns its status as std::system does: as waitpid
  /// tells it, -1 when no process could be started. When breakOff is called meanwhile this returns
  /// kBrokenOff at once.
  ///
  /// What was broken off before is waited for first, since both may write the same files. No other
  /// run may be in progress.
  int run(const std::string& commandLine);

  /// Ends the command in progress, if there is one, and all that it has started.
  void breakOff();

  /// Whether the run before ended by breakOff.
  bool isBrokenOff() const { return m_IsBrokenOff; }

 private:
  bool start(const std::string& commandLine);
  void onCommandEnd(GPid process, int status);
  void onGuardEnd(GPid process, int status);
  void hangUp();

  pid_t m_Command = 0;  ///< leads its group; 0 when it has ended
  pid_t m_Group = 0;    ///< of the command that was started last
  pid_t m_Guard = 0;    ///< 0 when it has ended: nothing is left of what was broken off
  int m_Line = -1;      ///< to the guard, which acts when it is closed; -1 when it is
  int m_Status = 0;     ///< of the command that ended last
  bool m_IsBrokenOff = false;
  sigc::connection m_CommandWatch;
  sigc::connection m_GuardWatch;
};

}  // namespace quorbel
