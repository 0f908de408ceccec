#include "graphviz/graphviz_program.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "temporary_folder.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

/// The search path while it lives.
class SearchPath {
 public:
  explicit SearchPath(const std::string& path) : m_Before(std::getenv("PATH")) {
    setenv("PATH", path.c_str(), 1);
  }
  ~SearchPath() { setenv("PATH", m_Before.c_str(), 1); }
  SearchPath(const SearchPath&) = delete;
  SearchPath& operator=(const SearchPath&) = delete;

 private:
  std::string m_Before;
};

void makeProgram(const fs::path& path) {
  fs::create_directories(path.parent_path());
  std::ofstream(path) << "#!/bin/sh\n";
  fs::permissions(path, fs::perms::owner_all);
}

TEST(GraphvizProgram, IsTheFirstOnTheSearchPathThatCanBeRun) {
  const TemporaryFolder folder;
  makeProgram("c/dot");
  makeProgram("d/dot");
  fs::create_directories("a/dot");
  fs::create_directories("b");
  std::ofstream("b/dot") << "no program";
  const SearchPath path("a:none:b:c:d");
  EXPECT_EQ(findDot(""), "c/dot");
  EXPECT_EQ(findDot("none/dot"), "c/dot");
  EXPECT_EQ(findDot("c/dot"), "d/dot");
  fs::remove("d/dot");
  fs::create_symlink("../c/dot", "d/dot");
  EXPECT_EQ(findDot("c/dot"), "") << "a link to it";
}

TEST(GraphvizProgram, IsLookedForInTheWorkingDirectoryWhereThePathSaysSo) {
  const TemporaryFolder folder;
  makeProgram("./dot");
  const SearchPath path("none::c");
  EXPECT_EQ(findDot(""), "./dot");
}

/// In a process of its own, which the library may leave as it likes.
void expectOfLibrary(const std::string& path, bool isIt) {
  EXPECT_EXIT(_exit(isDotOfLibrary(path) ? 0 : 1), ::testing::ExitedWithCode(isIt ? 0 : 1), "")
      << path;
}

TEST(GraphvizProgram, IsThatOfTheLibrary) {
  const TemporaryFolder folder;
  const std::string dot = findDot("");
  ASSERT_NE(dot, "");
  expectOfLibrary(dot, true);
  fs::create_symlink(dot, "link");
  expectOfLibrary("link", true);
  fs::create_directories("bin");
  fs::copy_file(dot, "bin/dot");
  expectOfLibrary("bin/dot", false);       // its library lies elsewhere
  expectOfLibrary("/usr/bin/env", false);  // another program beside the library
  expectOfLibrary("/usr/bin/ldd", false);  // a script beside the library
  expectOfLibrary("/none/bin/dot", false);
  expectOfLibrary("", false);
}

}  // namespace
}  // namespace quorbel
