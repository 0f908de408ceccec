#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "layout/dot_failure.h"
#include "layout/dot_writer.h"
#include "layout_support.h"
#include "run_by_system.h"

// The file that the description goes to, and the two runs of `dot`.

namespace quorbel {
namespace {

const std::string kLayoutRun = "[-Tdot][-o][graph.dot][quorbel_graph.dot]\n";

/// The names of what lies in the working directory, a line each.
std::string filesHere() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator("."))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  std::string text;
  for (const std::string& name : names) text += name + "\n";
  return text;
}

class DotWriterRun : public testing::Test {
 protected:
  const TemporaryFolder m_Folder;
};

TEST_F(DotWriterRun, WritesTheDescriptionOverAnOlderOne) {
  const StandInDot dot;
  Graph graph = diamond();
  m_Folder.write("quorbel_graph.dot", std::string(100'000, 'x'));
  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(textOf("quorbel_graph.dot"), descriptionOf(graph));
  EXPECT_EQ(filesHere(), "quorbel_graph.dot\n");
}

TEST_F(DotWriterRun, AsksForThePictureOnScreenAndThenForTheLayout) {
  const StandInDot dot;
  Graph graph = diamond();
  const DotRuns runs = writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(runs.image, 0);
  EXPECT_EQ(runs.layout, 0);
  EXPECT_EQ(dot.runs(), "[-Tpng][-o][graph.png][quorbel_graph.dot]\n" + kLayoutRun);
  EXPECT_EQ(graph.outputFormat, "png");
}

TEST_F(DotWriterRun, AsksForTheWantedFormatAndNameOnce) {
  const StandInDot dot;
  Graph graph = diamond();
  graph.outputFormat = "ps2";
  writeDotAndRun(graph, "out.ps", runBySystem);
  EXPECT_EQ(dot.runs(), "[-Tps2][-o][out.ps][quorbel_graph.dot]\n" + kLayoutRun);
  EXPECT_EQ(graph.outputFormat, "png");

  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(dot.runs(), "[-Tps2][-o][out.ps][quorbel_graph.dot]\n" + kLayoutRun +
                            "[-Tpng][-o][graph.png][quorbel_graph.dot]\n" + kLayoutRun);
}

TEST_F(DotWriterRun, TellsHowEachRunEnded) {
  Graph graph = diamond();
  graph.outputFormat = "svg";
  std::vector<std::string> commandLines;
  const DotRuns runs = writeDotAndRun(graph, "my out.svg", [&](const std::string& commandLine) {
    commandLines.push_back(commandLine);
    EXPECT_EQ(textOf("quorbel_graph.dot"), descriptionOf(graph)) << "not complete before the run";
    return commandLines.size() == 1 ? 256 : 9;
  });
  EXPECT_EQ(runs.image, 256);
  EXPECT_EQ(runs.layout, 9);
  EXPECT_EQ(commandLines, (std::vector<std::string>{"dot -Tsvg -o 'my out.svg' quorbel_graph.dot",
                                                    "dot -Tdot -o graph.dot quorbel_graph.dot"}));
  EXPECT_EQ(graph.outputFormat, "png");
}

TEST_F(DotWriterRun, TakesAFormatWithoutAName) {
  const StandInDot dot;
  Graph graph = diamond();
  graph.outputFormat = "svg";
  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(dot.runs(), "[-Tsvg][-o][graph.png][quorbel_graph.dot]\n" + kLayoutRun);
  EXPECT_EQ(graph.outputFormat, "png");
}

TEST_F(DotWriterRun, PassesAnyNameAsOneWordAndLetsTheShellRunNothing) {
  for (const std::string name :
       {"plain-1.png", "two  blanks.png", " .png", "it's.png", "\"quoted\".png", "$HOME.png",
        "x;touch hacked", "`touch hacked`", "$(touch hacked)", "x & touch hacked",
        "x\ntouch hacked", "x > hacked", "-dash.png", "\xc3\xbc.png", "*", "'", ""}) {
    const StandInDot dot;
    Graph graph = diamond();
    writeDotAndRun(graph, name, runBySystem);
    EXPECT_EQ(dot.runs(), "[-Tpng][-o][" + name + "][quorbel_graph.dot]\n" + kLayoutRun);
    EXPECT_EQ(filesHere(), "quorbel_graph.dot\n") << name;
  }
}

TEST_F(DotWriterRun, IsMadeEvenWhenTheDescriptionCannotBeWritten) {
  const StandInDot dot;
  Graph graph = diamond();
  select(graph, 3);
  std::filesystem::create_directory("quorbel_graph.dot");
  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(dot.runs(), "[-Tpng][-o][graph.png][quorbel_graph.dot]\n" + kLayoutRun);
  EXPECT_TRUE(std::filesystem::is_empty("quorbel_graph.dot"));
  EXPECT_EQ(graph.bestPathScore, 2);
  EXPECT_EQ(graph.bestPathText, "a c ");
  EXPECT_EQ(graph.selectedPathText, "b d ");
}

TEST_F(DotWriterRun, IsMadeEvenWhenTheDescriptionFindsNoRoom) {
  const StandInDot dot;
  Graph graph = diamond();
  std::filesystem::create_symlink("/dev/full", "quorbel_graph.dot");
  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(dot.runs(), "[-Tpng][-o][graph.png][quorbel_graph.dot]\n" + kLayoutRun);
}

TEST_F(DotWriterRun, LeavesEverythingElseAloneWhenDotFails) {
  const StandInDot dot(1);
  Graph graph = diamond();
  graph.outputFormat = "svg";
  m_Folder.write("graph.png", "old picture");
  m_Folder.write("graph.dot", "old layout");
  const DotRuns runs = writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(dotFailure(runs.image), "dot failed with status 1");
  EXPECT_EQ(dotFailure(runs.layout), "dot failed with status 1");
  EXPECT_EQ(dot.runs(), "[-Tsvg][-o][graph.png][quorbel_graph.dot]\n" + kLayoutRun);
  EXPECT_EQ(graph.outputFormat, "png");
  EXPECT_EQ(textOf("graph.png"), "old picture");
  EXPECT_EQ(textOf("graph.dot"), "old layout");
  EXPECT_EQ(graph.layoutWidth, 0);
}

TEST_F(DotWriterRun, LeavesEverythingElseAloneWhenThereIsNoDot) {
  const EnvironmentVariable noPath("PATH", m_Folder.path().string());
  Graph graph = diamond();
  graph.outputFormat = "svg";
  m_Folder.write("graph.png", "old picture");
  m_Folder.write("graph.dot", "old layout");
  testing::internal::CaptureStderr();  // the shell says that it found none
  const DotRuns runs = writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_NE(dotFailure(runs.image).find("was not found"), std::string::npos);
  EXPECT_EQ(runs.layout, runs.image);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("dot"), std::string::npos);
  EXPECT_EQ(graph.outputFormat, "png");
  EXPECT_EQ(textOf("quorbel_graph.dot"), descriptionOf(graph));
  EXPECT_EQ(textOf("graph.png"), "old picture");
  EXPECT_EQ(textOf("graph.dot"), "old layout");
}

TEST_F(DotWriterRun, LeavesTheOldPictureWhenDotRefusesALabel) {
  Graph graph = latticeOf(2);
  link(graph, 0, 1, "a \"quoted\" word", 1, 0);
  m_Folder.write("graph.png", "old picture");
  m_Folder.write("graph.dot", "old layout");
  testing::internal::CaptureStderr();  // the real `dot` complains
  const DotRuns runs = writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(dotFailure(runs.image), "dot failed with status 1");
  EXPECT_EQ(dotFailure(runs.layout), "dot failed with status 1");
  EXPECT_NE(testing::internal::GetCapturedStderr().find("syntax error"), std::string::npos);
  EXPECT_EQ(textOf("graph.png"), "old picture");
  EXPECT_EQ(textOf("graph.dot"), "old layout");
}

}  // namespace
}  // namespace quorbel
