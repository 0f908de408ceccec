// What comes of an export, and what the user is told of one that failed.

#include "layout/export.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "layout_support.h"

namespace {

bool diskIsFull = false;  ///< what the system says of every disk

}  // namespace

// The names in the system's own declaration are reserved.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int statvfs(const char* path, struct statvfs* place) noexcept {
  auto* const systems = reinterpret_cast<decltype(&statvfs)>(dlsym(RTLD_NEXT, "statvfs"));
  const int result = systems(path, place);
  if (diskIsFull) place->f_bavail = 0;
  return result;
}

namespace quorbel {
namespace {

constexpr int kOk = 0;
constexpr int kStatusOne = 1 << 8;  // as std::system has it

class ExportDrawing : public testing::Test {
 protected:
  ~ExportDrawing() override { diskIsFull = false; }

  /// Exports under this name with a `dot` that ends with these statuses, writing `text` as image
  /// where it is not empty, and always a layout.
  std::string exportAs(const std::string& format, const std::string& name, DotRuns statuses,
                       const std::string& text) {
    m_Graph.outputFormat = format;
    m_CommandLines.clear();
    return exportDrawing(m_Graph, name, [&](const std::string& commandLine) {
      m_CommandLines.push_back(commandLine);
      if (m_CommandLines.size() == 1) {
        if (!text.empty()) std::ofstream(name) << text;
        return statuses.image;
      }
      m_Folder.write("graph.dot", fixture("recorded-diamond.dot"));
      return statuses.layout;
    });
  }

  const TemporaryFolder m_Folder;
  Graph m_Graph = diamond();
  std::vector<std::string> m_CommandLines;
};

TEST_F(ExportDrawing, RunsBothCommandLinesAndSaysNothingOfAFileThatIsThere) {
  EXPECT_EQ(exportAs("svg", "my drawing.svg", {kOk, kOk}, "by dot"), "");
  EXPECT_EQ(m_CommandLines,
            (std::vector<std::string>{"dot -Tsvg -o 'my drawing.svg' quorbel_graph.dot",
                                      "dot -Tdot -o graph.dot quorbel_graph.dot"}));
  EXPECT_EQ(m_Graph.outputFormat, "png");
  EXPECT_EQ(textOf("my drawing.svg"), "by dot");
}

TEST_F(ExportDrawing, NeedsNoLayoutButForADiagram) {
  EXPECT_EQ(exportAs("svg", "out.svg", {kOk, kStatusOne}, "by dot"), "");
  EXPECT_EQ(exportAs("dia", "out.dia", {kOk, kStatusOne}, "by dot"), "");
  EXPECT_EQ(exportAs("dia", "new.dia", {kStatusOne, 3 << 8}, ""),
            "new.dia could not be written: dot failed with status 3");
  EXPECT_FALSE(std::filesystem::exists("new.dia"));
}

TEST_F(ExportDrawing, SaysThatARunFailedThoughAFileIsThere) {
  m_Folder.write("out.svg", "an older drawing");
  EXPECT_EQ(exportAs("svg", "out.svg", {kStatusOne, kOk}, ""),
            "out.svg could not be written: dot failed with status 1");
  EXPECT_EQ(exportAs("svg", "out.svg", {kStatusOne, kOk}, "half a dr"),
            "out.svg could not be written: dot failed with status 1");
  EXPECT_EQ(m_CommandLines.size(), 2u);
  EXPECT_EQ(m_Graph.outputFormat, "png");
}

TEST_F(ExportDrawing, SaysThatNoFileOrAnEmptyOneWasLeft) {
  EXPECT_EQ(exportAs("svg", "out.svg", {kOk, kOk}, ""),
            "out.svg could not be written: dot made no drawing");
  m_Folder.write("out.svg", "");
  EXPECT_EQ(exportAs("svg", "out.svg", {kOk, kOk}, ""),
            "out.svg could not be written: dot made no drawing");
}

TEST_F(ExportDrawing, DiagramThatDotRefusesIsMadeFromTheLayout) {
  for (const char* older : {"", "an older diagram"}) {
    m_Folder.write("out.dia", older);
    EXPECT_EQ(exportAs("dia", "out.dia", {kStatusOne, kOk}, ""), "");
    EXPECT_NE(textOf("out.dia").find("<dia:diagram"), std::string::npos);
  }
  EXPECT_EQ(exportAs("dia", "out.dia", {kOk, kOk}, "by dot"), "");
  EXPECT_EQ(textOf("out.dia"), "by dot");
}

TEST_F(ExportDrawing, OnlyDiagramsAreMadeFromTheLayout) {
  EXPECT_EQ(exportAs("svg", "out.dia", {kStatusOne, kOk}, ""),
            "out.dia could not be written: dot failed with status 1");
  EXPECT_FALSE(std::filesystem::exists("out.dia"));
}

TEST_F(ExportDrawing, NamesWhatIsWrongWithThePlace) {
  std::filesystem::create_directory("out.svg");
  EXPECT_EQ(exportAs("svg", "out.svg", {kStatusOne, kOk}, ""),
            "out.svg could not be written: Is a directory");
  EXPECT_EQ(exportAs("dia", "gone/out.dia", {kStatusOne, kOk}, ""),
            "gone/out.dia could not be written: No such file or directory");
}

TEST_F(ExportDrawing, SaysThatTheDiskIsFullWhereDotDoesNotNotice) {
  diskIsFull = true;
  for (const int status : {kOk, kStatusOne})
    EXPECT_EQ(exportAs("svg", "out.svg", {status, kOk}, "half a dr"),
              "out.svg could not be written: No space left on device");
}

TEST(WriteObstacle, IsThatOfTheFileOrElseOfItsFolder) {
  const TemporaryFolder folder;
  folder.write("file", "");
  EXPECT_EQ(writeObstacle("file"), "");
  EXPECT_EQ(writeObstacle("new"), "");
  EXPECT_EQ(writeObstacle(folder.path() / "new"), "");
  EXPECT_EQ(writeObstacle("."), "Is a directory");
  EXPECT_EQ(writeObstacle("file/new"), "Not a directory");
  EXPECT_EQ(writeObstacle(std::string(300, 'x')), "File name too long");
  EXPECT_EQ(writeObstacle("gone/new"), "No such file or directory");
}

/// The superuser may write anywhere: nothing is in the way then.
TEST(WriteObstacle, IsAMissingPermission) {
  const TemporaryFolder folder;
  folder.write("file", "");
  const bool mayDoAll = geteuid() == 0;
  const std::string expected = mayDoAll ? "" : "Permission denied";
  std::filesystem::permissions("file", std::filesystem::perms::owner_read);
  EXPECT_EQ(writeObstacle("file"), expected);
  std::filesystem::permissions(
      folder.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  EXPECT_EQ(writeObstacle("new"), expected);
  std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
}

}  // namespace
}  // namespace quorbel
