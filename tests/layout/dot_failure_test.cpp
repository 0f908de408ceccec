#include "layout/dot_failure.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorbel {
namespace {

TEST(DotFailure, IsNoneAfterSuccess) { EXPECT_EQ(dotFailure(std::system("exit 0")), ""); }

TEST(DotFailure, NamesTheStatus) {
  EXPECT_EQ(dotFailure(std::system("exit 1")), "dot failed with status 1");
  EXPECT_EQ(dotFailure(std::system("exit 126")), "dot failed with status 126");
  EXPECT_EQ(dotFailure(std::system("exit 128")), "dot failed with status 128");
}

TEST(DotFailure, SaysThatTheProgramIsMissingAndWhatToInstall) {
  EXPECT_EQ(dotFailure(std::system("no-such-program 2>/dev/null")),
            "the program \"dot\" was not found; it belongs to Graphviz, install the package "
            "\"graphviz\"");
}

TEST(DotFailure, NamesTheSignalThatEndedTheShellOrTheProgram) {
  EXPECT_EQ(dotFailure(std::system("kill -KILL $$")), "dot was ended by a signal (Killed)");
  EXPECT_EQ(dotFailure(std::system("sh -c 'kill -TERM $$'; exit $?")),
            "dot was ended by a signal (Terminated)");
  EXPECT_EQ(dotFailure(std::system("exit 129")), "dot was ended by a signal (Hangup)");
}

TEST(DotFailure, SaysThatThereWasNoProcess) {
  EXPECT_EQ(dotFailure(-1), "no process could be started for dot");
}

}  // namespace
}  // namespace quorbel
