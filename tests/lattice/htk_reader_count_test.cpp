// The node count of a lattice file: what it replaces, and what comes before it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lattice_file.h"

namespace quorbel {
namespace {

class HtkReaderCount : public LatticeFile {
 protected:
  /// Puts a lattice into `graph`, as an earlier file would have.
  void openEarlierFile() {
    ASSERT_EQ(read("N=2\nI=0 t=1 a=1\nI=1 t=4 a=2\nJ=8 S=0 E=1 a=3 W=\"old\"\n"), "");
    ASSERT_EQ(describeLattice(graph), kEarlier);
  }

  const std::string kEarlier =
      "2 nodes, 0 to 1\n"
      "node 0 at 0.25 with a=-1\n"
      "node 1 at 1 with a=-2\n"
      "link 8 from 0 to 1 with a=-5 as old\n";
};

TEST_F(HtkReaderCount, ReplacesTheLatticeOfTheEarlierFile) {
  openEarlierFile();
  EXPECT_EQ(read("N=3\nI=2 t=1\n"), "");
  EXPECT_EQ(describeLattice(graph), "3 nodes, 0 to 2\nnode 2 at 1\n");
}

TEST_F(HtkReaderCount, ReplacesTheLatticeEachTimeItIsGiven) {
  EXPECT_EQ(latticeOf("N=2\nI=0 a=1\nI=1 t=7\nJ=0 S=0 E=1\n"
                      "N=3\nI=2 t=4\nI=0 t=1\nJ=1 S=2 E=0\n"),
            "3 nodes, 0 to 2\nnode 0 at 0.25\nnode 2 at 1\nlink 1 from 2 to 0\n");
  EXPECT_EQ(latticeOf("N=3 N=1 I=0 t=2\n"), "1 nodes, 0 to 0\nnode 0 at 1\n");
}

TEST_F(HtkReaderCount, MayStandOnTheLineOfANodeOrLink) {
  EXPECT_EQ(latticeOf("N=2 I=1 t=4\nI=0 t=1\n"), "2 nodes, 0 to 1\nnode 0 at 0.25\nnode 1 at 1\n");
  EXPECT_EQ(latticeOf("J=3 a=1 N=2 S=0\nI=1 t=1\n"),
            "2 nodes, 0 to 1\nnode 1 at 1\nlink 3 from 0 to 1 with a=-1\n");
  EXPECT_EQ(latticeOf("N=9\nI=1 a=1 N=2 t=4\n"), "2 nodes, 0 to 1\nnode 1 at 1\n");
}

TEST_F(HtkReaderCount, LinesBeforeItWriteIntoTheEarlierLattice) {
  openEarlierFile();
  EXPECT_EQ(read("I=0 t=9 b=1\nJ=9 S=1 E=0 b=2\nI=7 t=1\nN=3\n"), "talk.lat: syntax error line 3");
  EXPECT_EQ(describeLattice(graph),
            "2 nodes, 0 to 1\n"
            "node 0 at 9 with a=-1 b=-1\n"
            "node 1 at 1 with a=-2\n"
            "link 8 from 0 to 1 with a=-5 as old\n"
            "link 9 from 1 to 0 with b=-2\n");
  EXPECT_EQ(currentScoreName, "b");
}

TEST_F(HtkReaderCount, LeavesNothingOfTheLinesBeforeIt) {
  openEarlierFile();
  EXPECT_EQ(read("I=0 t=9 b=1\nJ=9 S=1 E=0 b=2\nN=2\nI=1 t=1\n"), "");
  EXPECT_EQ(describeLattice(graph), "2 nodes, 0 to 1\nnode 1 at 1\n");
}

TEST_F(HtkReaderCount, LinksBeforeAnyCountAreDropped) {
  EXPECT_EQ(latticeOf("J=9 S=1 E=0 b=2\nN=2\nI=1 t=1\n"), "2 nodes, 0 to 1\nnode 1 at 1\n");
  EXPECT_EQ(currentScoreName, "b");
}

TEST_F(HtkReaderCount, FileWithoutItHasASyntaxErrorInItsLastLine) {
  const std::vector<Case> cases = {
      {"", "talk.lat: syntax error line 1"},
      {"\n", "talk.lat: syntax error line 1"},
      {"VERSION=1.0\n", "talk.lat: syntax error line 1"},
      {"VERSION=1.0", "talk.lat: syntax error line 1"},
      {"N=3", "talk.lat: syntax error line 1"},
      {"VERSION=1.0\n\n", "talk.lat: syntax error line 2"},
      {"VERSION=1.0\nJ=0 S=0 E=1\n", "talk.lat: syntax error line 2"},
      {"VERSION=1.0\nJ=0 S=0 E=1\nN=3", "talk.lat: syntax error line 3"},
  };
  for (const auto& [text, message] : cases) {
    graph = Graph();
    EXPECT_EQ(read(text), message) << text;
    EXPECT_EQ(describeLattice(graph), "no lattice\n") << text;
  }
}

TEST_F(HtkReaderCount, FileWithoutItDoesNotFinishTheEarlierLattice) {
  openEarlierFile();
  EXPECT_EQ(read("J=9 S=1 E=0 a=2\nI=1 t=2\n"), "talk.lat: syntax error line 2");
  EXPECT_EQ(describeLattice(graph),
            "2 nodes, 0 to 1\n"
            "node 0 at 0.25 with a=-1\n"
            "node 1 at 2 with a=-2\n"
            "link 8 from 0 to 1 with a=-5 as old\n"
            "link 9 from 1 to 0 with a=-2\n");
}

TEST_F(HtkReaderCount, OutsideItsLimitsItIsRefusedAndTheGraphStays) {
  const std::vector<Case> cases = {
      {"0", "0"},
      {"-1", "-1"},
      {"50001", "50001"},
      {"-2147483648", "-2147483648"},
      {"2147483647", "2147483647"},
      {"99999999999", "2147483647"},
      {"-99999999999", "-2147483648"},
      {"", "0"},
      {"many", "0"},
      {"+0x3", "0"},
  };
  openEarlierFile();
  for (const auto& [count, shown] : cases) {
    EXPECT_EQ(read("N=" + count + "\nI=0 t=7\n"), "Bad number of node in HTK file : " + shown)
        << count;
    EXPECT_EQ(describeLattice(graph), kEarlier) << count;
  }
}

TEST_F(HtkReaderCount, WithinItsLimitsItIsTaken) {
  EXPECT_EQ(latticeOf("N=1\nI=0 t=1\n"), "1 nodes, 0 to 0\nnode 0 at 1\n");
  EXPECT_EQ(read("N=50000\nI=0 t=1\nI=49999 t=4\nJ=0 S=49999 E=50000\nJ=1 S=0 E=50001\n"), "");
  ASSERT_EQ(graph.nodes.size(), 50001u);
  EXPECT_EQ(graph.nodes[0].time, 0.25);
  EXPECT_EQ(graph.nodes[49999].time, 1.0);
  EXPECT_EQ(graph.adjacency->nodeCount, 50000);
  EXPECT_EQ(graph.adjacency->endNode, 49999);
  EXPECT_EQ(describeLinks(*graph.adjacency), "link 0 from 49999 to 50000\n");
}

TEST_F(HtkReaderCount, RefusedLaterLeavesWhatWasRead) {
  EXPECT_EQ(read("N=2\nI=0 t=3 a=1\nJ=0 S=0 E=1 b=2\nN=0\nJ=1 S=0 E=1\n"),
            "Bad number of node in HTK file : 0");
  EXPECT_EQ(describeLattice(graph),
            "2 nodes, 0 to 1\nnode 0 at 3 with a=-1\nlink 0 from 0 to 1 with b=-2\n");
}

}  // namespace
}  // namespace quorbel
