// Our own `dot` with a memory. Whether it draws or remembers is seen where it cannot draw: without
// Graphviz's plug-ins.

#include <gtest/gtest.h>

#include <cstdlib>

#include "dot_runs.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

const std::string kMemory = "QUORBEL_DRAWINGS=memory";
const std::string kCannotDraw = kMemory + " GVBINDIR=/none PATH=/bin.none";

/// A lattice whose drawing gives a warning.
std::string descriptionOf(const std::string& word) {
  return "digraph G {\nrankdir=LR;\n0 -> 1 [ color=black,label = \"" + word +
         " gr\xf6\xdf\", comment=\"ID = 0\"];\n}\n";
}

class MemoryInUse : public ::testing::Test {
 protected:
  MemoryInUse() { fs::create_directory("memory"); }

  static bool isRemembered(const std::string& format, const std::string& description) {
    return ownRun(format, description, kCannotDraw).status == 0;
  }

  static std::size_t files() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("memory"), fs::directory_iterator()));
  }

  const TemporaryFolder m_Folder;
};

TEST_F(MemoryInUse, OneLayoutDoesForPictureAndLayoutInEitherOrder) {
  const std::string first = descriptionOf("first");
  const std::string second = descriptionOf("second");
  for (const auto& [description, order] : {std::make_pair(first, std::make_pair("png", "dot")),
                                           std::make_pair(second, std::make_pair("dot", "png"))}) {
    const std::string drawn = order.first;
    const std::string other = order.second;
    EXPECT_FALSE(isRemembered(drawn, description));
    expectSame(ownRun(drawn, description, kMemory), graphvizRun(drawn, description), drawn);
    expectSame(ownRun(other, description, kCannotDraw), graphvizRun(other, description), other);
    expectSame(ownRun(drawn, description, kCannotDraw), graphvizRun(drawn, description), drawn);
  }
}

TEST_F(MemoryInUse, OneLayoutDoesForExportAndLayout) {
  for (const std::string format : {"svg", "ps", "ps2", "pdf"}) {
    const std::string description = descriptionOf(format);
    const DotRun run = ownRun(format, description, kMemory);
    EXPECT_EQ(run.said, graphvizRun("dot", description).said);
    expectSame(ownRun("dot", description, kCannotDraw), graphvizRun("dot", description), "dot");
    expectSame(ownRun(format, description, kCannotDraw), run, format);
  }
}

TEST_F(MemoryInUse, WithoutAFolderNothingIsRemembered) {
  const std::string description = descriptionOf("word");
  EXPECT_EQ(ownRun("png", description).status, 0);
  EXPECT_EQ(ownRun("png", description, "QUORBEL_DRAWINGS=none").status, 0);
  EXPECT_FALSE(isRemembered("png", description));
  EXPECT_FALSE(fs::exists("none"));
  EXPECT_EQ(files(), 0U);
}

TEST_F(MemoryInUse, WhatFailsIsNotRemembered) {
  const std::string description = descriptionOf("word");
  EXPECT_NE(ownRun("png", description, "GVBINDIR=/none " + kMemory).status, 0);
  EXPECT_EQ(files(), 0U);
  EXPECT_EQ(ownRun("png", description, kMemory).status, 0);
}

TEST_F(MemoryInUse, ADamagedDrawingIsDrawnAnew) {
  const std::string description = descriptionOf("word");
  const DotRun whole = ownRun("png", description, kMemory);
  for (const auto& entry : fs::directory_iterator("memory"))
    fs::resize_file(entry, entry.file_size() / 2);
  EXPECT_FALSE(isRemembered("png", description));
  expectSame(ownRun("png", description, kMemory), whole, "png");
  EXPECT_TRUE(isRemembered("png", description));
}

TEST_F(MemoryInUse, MakesRoomForTheDrawing) {
  const std::string description = descriptionOf("word");
  ownRun("png", description, kMemory);
  EXPECT_EQ(files(), 2U);
  std::system((kMemory + " " + OWN_DOT + " -Tpng -o /dev/full quorbel_graph.dot 2>said").c_str());
  EXPECT_EQ(files(), 0U) << "a device without room may be the memory's";
}

TEST_F(MemoryInUse, TwoMayDrawAtOnce) {
  m_Folder.write("a.dot", descriptionOf("a"));
  m_Folder.write("b.dot", descriptionOf("b"));
  const std::string own = kMemory + " " + OWN_DOT;
  for (int round = 0; round < 10; ++round) {
    const std::string n = std::to_string(round % 3);
    ASSERT_EQ(std::system(("(" + own + " -Tpng -o a.png a.dot & " + own +
                           " -Tdot -o b.txt b.dot & " + own + " -Tpng -o b.png b.dot & " + own +
                           " -Tdot -o a.txt a.dot & wait) 2>said; rm -f memory/*" + n + "*")
                              .c_str()),
              0);
    for (const std::string word : {"a", "b"}) {
      const DotRun picture = {textOf(word + ".png"), "", 0};
      DotRun expected = ownRun("png", descriptionOf(word));
      expected.said.clear();
      expectSame(picture, expected, "png");
      EXPECT_EQ(textOf(word + ".txt"), ownRun("dot", descriptionOf(word)).bytes);
    }
  }
}

}  // namespace
}  // namespace quorbel
