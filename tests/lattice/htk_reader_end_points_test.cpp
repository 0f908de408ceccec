// The lines "start=" and "end=" of a lattice file.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lattice_file.h"

namespace quorbel {
namespace {

using namespace std::string_literals;

class HtkReaderEndPoints : public LatticeFile {
 protected:
  /// "1 to 3" for a file of this text, or the message.
  std::string endPointsOf(const std::string& text) {
    graph = Graph();
    const std::string message = read(text);
    if (!message.empty()) return message;
    return std::to_string(graph.adjacency->startNode) + " to " +
           std::to_string(graph.adjacency->endNode);
  }
};

TEST_F(HtkReaderEndPoints, AreTheFirstAndLastNodeUnlessGiven) {
  EXPECT_EQ(endPointsOf("N=5\n"), "0 to 4");
  EXPECT_EQ(endPointsOf("N=1\n"), "0 to 0");
}

TEST_F(HtkReaderEndPoints, MayBeGivenAnywhereInTheFile) {
  EXPECT_EQ(endPointsOf("start=2\nend=3\nN=5\n"), "2 to 3");
  EXPECT_EQ(endPointsOf("N=5\nend=3\nJ=0 S=0 E=1\nstart=2\n"), "2 to 3");
  EXPECT_EQ(endPointsOf("N=5\nstart=4\n"), "4 to 4");
  EXPECT_EQ(endPointsOf("end=0\nN=5\n"), "0 to 0");
  EXPECT_EQ(endPointsOf("start=2\r\nend=3\r\nN=5\r\n"), "2 to 3");
}

TEST_F(HtkReaderEndPoints, CountOnALastLineWithoutLineEnd) {
  EXPECT_EQ(endPointsOf("N=5\nstart=2"), "2 to 4");
  EXPECT_EQ(endPointsOf("N=5\nend=2"), "0 to 2");
}

TEST_F(HtkReaderEndPoints, CountOnlyAtTheVeryBeginningOfALine) {
  for (const char* line :
       {" start=2", "\tend=2", "start =2", "end =2", "START=2", "END=2", "Start=2", "s=2", "e=2",
        "xstart=2", "xend=2", "J=0 start=2 end=2", "#start=2", "starts=2", "sstart=2"}) {
    EXPECT_EQ(endPointsOf("N=5\n"s + line + "\n"), "0 to 4") << line;
  }
  EXPECT_EQ(endPointsOf("N=5\nstart=2 end=3\n"), "2 to 4");
  EXPECT_EQ(endPointsOf("N=5\nend=3 start=2\n"), "0 to 3");
  EXPECT_EQ(endPointsOf("N=5\nstart=2end=3\n"), "2 to 4");
}

TEST_F(HtkReaderEndPoints, AreScannedAsADecimalIntegerBehindBlanks) {
  const std::vector<Case> cases = {
      {"start=+2", "2 to 4"},  {"start= \t 2", "2 to 4"}, {"start=\v2", "2 to 4"},
      {"start=2.9", "2 to 4"}, {"start=2abc", "2 to 4"},  {"start=002", "2 to 4"},
      {"start=0x2", "0 to 4"}, {"start=", "0 to 4"},      {"start=abc", "0 to 4"},
      {"start=-", "0 to 4"},   {"end= +3 ", "0 to 3"},    {"end=0x2", "0 to 0"},
      {"end=x", "0 to 4"},
  };
  for (const auto& [line, points] : cases)
    EXPECT_EQ(endPointsOf("N=5\n" + line + "\n"), points) << line;
}

TEST_F(HtkReaderEndPoints, LastLineOfEachCounts) {
  EXPECT_EQ(endPointsOf("start=1\nend=4\nN=5\nend=2\nstart=3\n"), "3 to 2");
  EXPECT_EQ(endPointsOf("start=1\nend=2\nN=5\nstart=x\nend=\n"), "1 to 2");
}

TEST_F(HtkReaderEndPoints, OutsideTheNodeCountAreAsIfNotGiven) {
  for (const char* node : {"5", "6", "-1", "-2", "99999999999", "-99999999999", "4294967298",
                           "-4294967294", "99999999999999999999", "-99999999999999999999"}) {
    EXPECT_EQ(endPointsOf("N=5\nstart="s + node + "\nend=3\n"), "0 to 3") << node;
    EXPECT_EQ(endPointsOf("N=5\nstart=1\nend="s + node + "\n"), "1 to 4") << node;
    EXPECT_EQ(endPointsOf("N=5\nstart=1\nend=1\nstart="s + node + "\nend=" + node + "\n"), "0 to 4")
        << node;
  }
}

TEST_F(HtkReaderEndPoints, AreWeighedAgainstEachNodeCount) {
  EXPECT_EQ(endPointsOf("start=3\nend=4\nN=2\nN=5\n"), "3 to 4");
  EXPECT_EQ(endPointsOf("start=1\nend=4\nN=5\nN=3\n"), "1 to 2");
}

TEST_F(HtkReaderEndPoints, OfTheEarlierFileAreForgotten) {
  ASSERT_EQ(read("start=2\nend=3\nN=5\n"), "");
  ASSERT_EQ(read("N=5\n"), "");
  EXPECT_EQ(describeLattice(graph),
            "5 nodes, 0 to 4\nnode 0 at nan\nnode 1 at nan\n"
            "node 2 at nan\nnode 3 at nan\nnode 4 at nan\n");
}

TEST_F(HtkReaderEndPoints, LongerLineBeginsAnewAfterEach2000Bytes) {
  const auto comment = [](std::size_t length) { return "#" + std::string(length - 1, 'x'); };
  const std::vector<Case> cases = {
      {comment(1999) + "start=2 \n", "0 to 4"},  {comment(2000) + "start=2 \n", "2 to 4"},
      {comment(2001) + "start=2 \n", "0 to 4"},  {comment(4000) + "end=2 \n", "0 to 2"},
      {comment(3999) + "end=2 \n", "0 to 4"},    {comment(4001) + "end=2 \n", "0 to 4"},
      {comment(2000) + "\nstart=2\n", "2 to 4"}, {comment(1999) + "\nstart=2\n", "2 to 4"},
      {comment(2001) + "\nstart=2\n", "2 to 4"},
  };
  for (const auto& [text, points] : cases) {
    EXPECT_EQ(endPointsOf("N=5\n" + text), points) << text.size();
    EXPECT_EQ(endPointsOf(text + "N=5\n"), points) << text.size();
  }
}

TEST_F(HtkReaderEndPoints, NumberIsCutAfter2000BytesOfItsLine) {
  const std::string head = "start=";
  const auto blanks = [&](std::size_t digitAt) { return std::string(digitAt - head.size(), ' '); };
  EXPECT_EQ(endPointsOf("N=50\n" + head + blanks(1998) + "12\n"), "12 to 49");
  EXPECT_EQ(endPointsOf("N=50\n" + head + blanks(1999) + "12\n"), "1 to 49");
  EXPECT_EQ(endPointsOf("N=50\n" + head + blanks(2000) + "12\n"), "0 to 49");
}

TEST_F(HtkReaderEndPoints, LineIsReadUpToANulOnly) {
  EXPECT_EQ(endPointsOf("N=5\nstart=\0002\n"s), "0 to 4");
  EXPECT_EQ(endPointsOf("N=5\n\0start=2\n"s), "0 to 4");
  EXPECT_EQ(endPointsOf("N=5\nstart=2\0003\n"s), "2 to 4");
  EXPECT_EQ(endPointsOf("N=5\nJ=0\0\nstart=2\n"s), "2 to 4");
}

}  // namespace
}  // namespace quorbel
