#include "app/command_run.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>

#include "temporary_folder.h"

namespace quorbel {
namespace {

using Clock = std::chrono::steady_clock;

class CommandRunTest : public ::testing::Test {
 protected:
  /// Lets the main loop go on until the condition holds; false when it does not in 10 seconds.
  static bool waitFor(const std::function<bool()>& condition) {
    constexpr unsigned kLookEveryMs = 5;
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    sigc::connection wakeUp = Glib::signal_timeout().connect([] { return true; }, kLookEveryMs);
    while (!condition() && Clock::now() < deadline)
      Glib::MainContext::get_default()->iteration(true);
    wakeUp.disconnect();
    return condition();
  }

  /// Does something once while the run goes on, as soon as the condition holds.
  static void during(const std::function<bool()>& condition, const std::function<void()>& act) {
    constexpr unsigned kLookEveryMs = 5;
    Glib::signal_timeout().connect(
        [=] {
          const bool isTime = condition();
          if (isTime) act();
          return !isTime;
        },
        kLookEveryMs);
  }

  static bool exists(const std::string& name) { return std::filesystem::exists(name); }

  /// The process whose number a command has written into the file by rename.
  static pid_t processIn(const std::string& name) { return std::stoi(textOf(name)); }

  /// Whether there is a process, one that has not only to be noticed by its parent.
  static bool isAlive(pid_t process) {
    std::ifstream stream("/proc/" + std::to_string(process) + "/stat");
    std::string stat;
    if (!std::getline(stream, stat)) return false;
    return stat.at(stat.rfind(')') + 2) != 'Z';
  }

  static double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
  }

  /// A command line that writes its process's number and then does not end for long.
  static std::string lasting(const std::string& name) {
    return "echo $$ >" + name + ".new; mv " + name + ".new " + name + "; exec sleep 600";
  }

  TemporaryFolder folder;
};

TEST_F(CommandRunTest, StatusIsThatOfSystem) {
  CommandRun commands;
  for (const char* command : {"true", "exit 3", "exit 127", "kill -KILL $$", "kill -TERM $$",
                              "no-such-program 2>/dev/null", "sh -c 'kill -SEGV $$'", ""})
    EXPECT_EQ(commands.run(command), std::system(command)) << command;
}

TEST_F(CommandRunTest, CommandHasTheViewersFolderSurroundingsAndFiles) {
  CommandRun commands;
  setenv("QUORBEL_TEST_WORD", "a word", 1);
  EXPECT_EQ(commands.run("echo \"$QUORBEL_TEST_WORD\" >said; pwd >>said"), 0);
  unsetenv("QUORBEL_TEST_WORD");
  EXPECT_EQ(textOf("said"), "a word\n" + folder.path().string() + "\n");
  ::testing::internal::CaptureStdout();
  commands.run("echo out");
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "out\n");
  ::testing::internal::CaptureStderr();
  commands.run("echo err >&2");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "err\n");
}

TEST_F(CommandRunTest, IgnoredSignalsStayIgnored) {
  CommandRun commands;
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_EQ(commands.run("kill -PIPE $$"), 0);
  std::signal(SIGPIPE, before);
}

TEST_F(CommandRunTest, ChildrenThatNobodyMindsAreWaitedForAllTheSame) {
  const auto before = std::signal(SIGCHLD, SIG_IGN);
  CommandRun commands;
  EXPECT_EQ(WEXITSTATUS(commands.run("exit 3")), 3);
  std::signal(SIGCHLD, before == SIG_IGN ? SIG_DFL : before);
}

TEST_F(CommandRunTest, EventsGoOnMeanwhile) {
  CommandRun commands;
  during([] { return exists("begun"); }, [] { std::ofstream("go") << "\n"; });
  EXPECT_EQ(commands.run("touch begun; while [ ! -e go ]; do sleep 0.01; done; exit 4"), 4 << 8);
}

TEST_F(CommandRunTest, CommandIsInAProcessGroupOfItsOwn) {
  CommandRun commands;
  pid_t group = 0;
  during([] { return exists("command"); },
         [&] {
           group = getpgid(processIn("command"));
           commands.breakOff();
         });
  commands.run(lasting("command"));
  EXPECT_EQ(group, processIn("command"));
}

TEST_F(CommandRunTest, BrokenOffItReturnsAtOnceAndTheCommandIsEnded) {
  CommandRun commands;
  during([] { return exists("command"); }, [&] { commands.breakOff(); });
  EXPECT_EQ(commands.run(lasting("command")), CommandRun::kBrokenOff);
  EXPECT_TRUE(waitFor([] { return !isAlive(processIn("command")); }));
}

TEST_F(CommandRunTest, WhatTheCommandHasStartedIsEndedWithIt) {
  CommandRun commands;
  during([] { return exists("child"); }, [&] { commands.breakOff(); });
  commands.run("sh -c '" + lasting("child") + "' & echo $$ >command; wait");
  EXPECT_TRUE(waitFor([] { return !isAlive(processIn("child")); }));
  EXPECT_TRUE(waitFor([] { return !isAlive(processIn("command")); }));
}

TEST_F(CommandRunTest, WhatDoesNotMindIsKilledAfterASecond) {
  CommandRun commands;
  Clock::time_point start;
  during([] { return exists("command"); },
         [&] {
           start = Clock::now();
           commands.breakOff();
         });
  commands.run("trap '' TERM; " + lasting("command"));
  EXPECT_LT(secondsSince(start), 0.5);
  EXPECT_TRUE(isAlive(processIn("command")));
  EXPECT_TRUE(waitFor([] { return !isAlive(processIn("command")); }));
  EXPECT_GT(secondsSince(start), 0.9);
}

TEST_F(CommandRunTest, NextRunWaitsUntilNothingOfTheOneBeforeIsLeft) {
  CommandRun commands;
  during([] { return exists("command"); }, [&] { commands.breakOff(); });
  commands.run("(trap '' TERM; " + lasting("command") + ") & wait");
  EXPECT_EQ(commands.run("kill -0 $(cat command) 2>/dev/null"), 1 << 8);
}

TEST_F(CommandRunTest, RunThatStillWaitsCanBeBrokenOffItself) {
  CommandRun commands;
  during([] { return exists("command"); }, [&] { commands.breakOff(); });
  commands.run("trap '' TERM; " + lasting("command"));
  Glib::signal_idle().connect_once([&] { commands.breakOff(); });
  EXPECT_EQ(commands.run("touch other"), CommandRun::kBrokenOff);
  EXPECT_EQ(commands.run("true"), 0);
  EXPECT_FALSE(exists("other"));
}

TEST_F(CommandRunTest, BreakingOffWithoutACommandDoesNothing) {
  CommandRun commands;
  commands.breakOff();
  EXPECT_EQ(commands.run("exit 2"), 2 << 8);
  commands.breakOff();
  EXPECT_EQ(commands.run("exit 3"), 3 << 8);
}

TEST_F(CommandRunTest, CommandIsNotLeftWhenItGoes) {
  {
    CommandRun commands;
    during([] { return exists("command"); }, [&] { commands.breakOff(); });
    commands.run("trap '' TERM; " + lasting("command"));
  }
  EXPECT_FALSE(isAlive(processIn("command")));
  EXPECT_EQ(waitpid(processIn("command"), nullptr, WNOHANG), -1);
}

TEST_F(CommandRunTest, NothingThatTheCommandHasStartedIsLeftWhenItGoes) {
  {
    CommandRun commands;
    during([] { return exists("child"); }, [&] { commands.breakOff(); });
    commands.run("sh -c 'trap \"\" TERM; " + lasting("child") + "' & wait");
  }
  EXPECT_FALSE(isAlive(processIn("child")));
}

TEST_F(CommandRunTest, FinishedRunsLeaveNoProcessAndNoOpenFile) {
  const auto openFiles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  CommandRun commands;
  const auto children = [] {
    const std::string me = std::to_string(getpid());
    return textOf("/proc/" + me + "/task/" + me + "/children");
  };
  commands.run("true");  // the main loop may open files of its own
  const auto filesBefore = openFiles();
  const std::string childrenBefore = children();
  for (int k = 0; k < 10; ++k) commands.run("true");
  EXPECT_EQ(openFiles(), filesBefore);
  EXPECT_EQ(children(), childrenBefore);
}

TEST_F(CommandRunTest, NothingOutlivesAProgramThatIsKilled) {
  const pid_t program = fork();
  if (program == 0) {
    CommandRun commands;
    commands.run("sh -c '" + lasting("child") + "' & " + lasting("command"));
    _exit(0);
  }
  EXPECT_TRUE(waitFor([] { return exists("command") && exists("child"); }));
  kill(program, SIGKILL);
  waitpid(program, nullptr, 0);
  for (const char* name : {"command", "child"})
    EXPECT_TRUE(waitFor([&] { return !isAlive(processIn(name)); })) << name;
}

}  // namespace
}  // namespace quorbel
