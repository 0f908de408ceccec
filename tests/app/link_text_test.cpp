#include "app/link_text.h"

#include <gtest/gtest.h>

#include "lattice/htk_reader.h"

namespace quorbel {
namespace {

const char* const kLattice =
    "VERSION=1.0\nN=3 L=3\nI=0 t=0.00\nI=1 t=0.42\nI=2 t=0.97 p=-0.5\n"
    "J=0 S=0 E=1 W=<w in='good'/> l=-2.1 a=-310.5\n"
    "J=1 S=0 E=1 W=<w in='could'/> a=-312\n"
    "J=1 S=1 E=2 W=<w in='morning'/> l=-1.25 a=-400 z=-7\n";

class LinkText : public ::testing::Test {
 protected:
  LinkText() { read(kLattice); }
  ~LinkText() override { currentScoreName = ""; }

  void read(const std::string& text) { ASSERT_EQ(readHtkLattice(m_Graph, "test.lat", text), ""); }

  static LayoutItem drawn(int linkId, int start, int end, const std::string& label) {
    LayoutItem edge;
    edge.linkId = linkId;
    edge.startNode = start;
    edge.endNode = end;
    edge.label = label;
    return edge;
  }

  Graph m_Graph;
};

TEST_F(LinkText, HasWordTimeAndScoresTheOneThatCountsFirst) {
  currentScoreName = "l";
  EXPECT_EQ(linkText(m_Graph, drawn(1, 1, 2, "morning / Morgen")),
            "morning / Morgen\n0.42 to 0.97 s\nl: 1.25\na: 400\np: 0.5\nz: 7");
  currentScoreName = "a";
  EXPECT_EQ(linkText(m_Graph, drawn(0, 0, 1, "good")), "good\n0.00 to 0.42 s\na: 310.5\nl: 2.1");
  currentScoreName = "none of these";
  EXPECT_EQ(linkText(m_Graph, drawn(1, 0, 1, "could")), "could\n0.00 to 0.42 s\na: 312");
}

TEST_F(LinkText, ShowsTheLabelAsItIsDrawn) {
  EXPECT_EQ(linkText(m_Graph, drawn(9, 0, 1, "AT&amp;T")), "AT&T\n0.00 to 0.42 s");
}

TEST_F(LinkText, ShowsScoresAsTheLabelsDoWithTheirSign) {
  m_Graph = Graph();
  m_Graph.scoresNegated = false;
  read(kLattice);
  currentScoreName = "a";
  EXPECT_EQ(linkText(m_Graph, drawn(1, 0, 1, "could")), "could\n0.00 to 0.42 s\na: -312");
}

TEST_F(LinkText, LeavesOutTimesThatAreNoNumbers) {
  read("N=2\nI=0 t=0\nI=1 t=0\nJ=0 S=0 E=1 W=\"x\" a=-1\n");
  EXPECT_EQ(linkText(m_Graph, drawn(0, 0, 1, "NULL")), "NULL\na: 1");
}

TEST_F(LinkText, KeepsTheLastNodesTimeInSeconds) {
  EXPECT_EQ(m_Graph.duration, 0.97);
  read("N=2\nI=0 t=0\nI=1 t=123.5\n");
  EXPECT_EQ(m_Graph.duration, 123.5);
}

TEST_F(LinkText, OfLinksWithOneIdIsTheOneBetweenTheNodes) {
  EXPECT_EQ(linkOf(m_Graph, drawn(1, 1, 2, ""))->word, "<w in='morning'/>");
  EXPECT_EQ(linkOf(m_Graph, drawn(1, 0, 1, ""))->word, "<w in='could'/>");
  EXPECT_EQ(linkOf(m_Graph, drawn(1, 0, 2, "")), nullptr);
  EXPECT_EQ(linkOf(m_Graph, drawn(5, 0, 1, "")), nullptr);
}

TEST_F(LinkText, TakesEdgesOfNodesThatTheLatticeDoesNotHave) {
  for (const int node : {-1, 3, 4, 1000000}) {
    EXPECT_EQ(linkOf(m_Graph, drawn(0, node, 1, "")), nullptr);
    EXPECT_EQ(linkText(m_Graph, drawn(0, node, node, "odd")), "odd");
  }
  EXPECT_EQ(linkOf(Graph(), drawn(0, 0, 1, "")), nullptr);
  EXPECT_EQ(linkText(Graph(), drawn(0, 0, 1, "odd")), "odd");
}

}  // namespace
}  // namespace quorbel
