#include <gtest/gtest.h>

#include <string>

#include "layout_support.h"

// What the reader makes of one line of the old form, whole or odd.

namespace quorbel {
namespace {

std::string node(int index, const std::string& place, const std::string& size) {
  return "node id -1 at " + place + " size " + size + " index " + std::to_string(index) +
         " from 0 to 0 time " + std::to_string(index) + " label [] word [] score 0\n";
}

/// An edge from node 0 to node 1 whose id no link has.
std::string edge(int id, const std::string& place, const std::string& label) {
  return "edge id " + std::to_string(id) + " at " + place +
         " size 0x0 index 0 from 0 to 1 time 0 label [" + label + "] word [] score 0\n";
}

const std::string kNoComment = "comment not found in dot file\n";
const std::string kNoPosition = "lp not found in dot file\n";
const std::string kOutOfRange = "out of range\n";

/// Reads lines in a lattice of two nodes, at the times 0 and 1.
std::string read(const std::string& lines) { return readItems(2, lines); }

std::string readBox(const std::string& lines) {
  Graph graph = latticeOf(2);
  graph.layoutWidth = -7;
  graph.layoutHeight = -8;
  return reading(graph, lines);
}

TEST(LayoutReaderLine, OfABoxGivesItsThirdAndFourthNumberUpToTheirPoint) {
  EXPECT_EQ(readBox("\tgraph [bb=\"0,0,206,36\"];\n"), "box 206x36\n");
  EXPECT_EQ(readBox("graph [bb=\"5,6,206.9,36.9\"];\n"), "box 206x36\n");
  EXPECT_EQ(readBox("graph [bb=\"-1.5,-2.5, -206 ,-36.9\"];\n"), "box -206x-36\n");
  EXPECT_EQ(readBox("graph [rankdir=LR, bb=\"0,0,206,36\", size=\"1,2\"];\n"), "box 206x36\n");
  EXPECT_EQ(readBox("graph [bb=\"0,0,x,y\"];\n"), "box 0x0\n");
}

TEST(LayoutReaderLine, OfABoxIsScannedFromTheFirstB) {
  EXPECT_EQ(readBox("graph [a=\"1,2\", bb=\"0,0,206,36\"];\n"), "box 206x36\n");
  EXPECT_EQ(readBox("graph [bgcolor=\"1,2,3,4\", bb=\"0,0,206,36\"];\n"), "box 3x4\n");
  EXPECT_EQ(readBox("graph=[bb=\"0,0,206,36\"];\n"), "box 206x36\n");
  EXPECT_EQ(readBox("graph[bb=\"0,0,206,36\"];\n"), "box -7x-8\n") << "a blank is missing";
  EXPECT_EQ(readBox("graph bb=0,0,206,36\";\n"), "box 206x36\n");
}

TEST(LayoutReaderLine, OfTheDrawingWithoutABoxChangesNothing) {
  EXPECT_EQ(readBox("graph [rankdir=LR];\n"), "box -7x-8\n");
  EXPECT_EQ(readBox("graph\n"), "box -7x-8\n");
  EXPECT_EQ(readBox("graph [rankdir=LR];\ngraph [bb=\"0,0,206,36\"];\n"), "box 206x36\n");
}

TEST(LayoutReaderLine, OfABoxThatEndsTooEarlyIsOutOfRange) {
  EXPECT_EQ(readBox("graph [bb=\"0\"];\n"), "box -7x-8\n" + kOutOfRange);
  EXPECT_EQ(readBox("graph [bb=\"0,0\"];\n"), "box -7x-8\n" + kOutOfRange);
  EXPECT_EQ(readBox("graph [bb=\"0,0,206\"];\n"), "box 206x-8\n" + kOutOfRange);
  EXPECT_EQ(readBox("graph [bb=\"0,0,206,36"), "box 206x36\n");
  EXPECT_EQ(readBox("graph [bb=\"0,0,206,"), "box 206x0\n");
}

TEST(LayoutReaderLine, OfTheSecondBoxCounts) {
  EXPECT_EQ(readBox("graph [bb=\"0,0,1,2\"];\ngraph [bb=\"0,0,3,4\"];\n"), "box 3x4\n");
}

TEST(LayoutReaderLine, OfNodeDefaultsIsSkipped) {
  EXPECT_EQ(read("\tnode [label=\"\\N\"];\nnode [pos=\"1,2\", width=\"1\", height=\"1\"];\n"), "");
}

TEST(LayoutReaderLine, ThatIsBlankOrBeginsWithItsEndIsSkipped) {
  const std::string statement = "0 [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n";
  EXPECT_EQ(read("\n  \n\t\t\n \t \n"), "");
  EXPECT_EQ(read("\r" + statement), "");
  EXPECT_EQ(read(" \t\r" + statement), "");
  EXPECT_EQ(read(std::string("\0", 1) + statement), "");
  EXPECT_EQ(read(std::string(" \0", 2) + statement), "");
  EXPECT_EQ(read(" \t " + statement), node(0, "27,18", "60x40"));
}

TEST(LayoutReaderLine, OfAnythingElseIsSkipped) {
  EXPECT_EQ(read("digraph G {\n}\nrankdir=LR;\n0\n1;\n0 = [\n0 {\n0 x [pos=\"1,2\"];\n"), "");
}

TEST(LayoutReaderLine, OfANodeGivesCentreSizeAndTime) {
  EXPECT_EQ(read("\t0 [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n"),
            node(0, "27,18", "60x40"));
  EXPECT_EQ(read("1[pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n"), "")
      << "the bracket belongs to the token, behind which stands the equals sign";
  EXPECT_EQ(read("1\t[pos=\"27.9,-18.9\", width=\"1.24\", height=\"-0.99\"];\n"),
            node(1, "27,-18", "99x-79"));
}

TEST(LayoutReaderLine, OfANodeBeginsWithTheFirstQuotedValue) {
  EXPECT_EQ(
      read("0 [shape=box, style=filled, pos=\"27,18\", width=\"0.75\", height=\"0.5\", a=\"\"];\n"),
      node(0, "27,18", "60x40"));
  EXPECT_EQ(read("0 [label=\"x\", pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n"),
            node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 [height=\"0.5\", pos=\"27,18\", width=\"0.75\"];\n"), node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 [width=\"\"width=\"0.75\", height=\"0.5\"];\n"), node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 [x=\"width=\"0.75\", height=\"0.5\"];\n"), node(0, "0,0", "60x40"))
      << "sizes follow the first quote, whatever it opens";
  EXPECT_EQ(read("0 [os=\"27,18\", width=\"0.75\", height=\"0.5\"];\n"), node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 [pos=\"27,18\", idth=\"0.75\", eight=\"0.5\"];\n"), node(0, "27,18", "0x0"));
  EXPECT_EQ(read("0 [pos=\"27,18\", width=\"0.75\", eight=\"0.5\"];\n"), node(0, "27,18", "60x0"));
  EXPECT_EQ(read("0 [pos =\"27,18\", width=\"0.75\", height=\"0.5\"];\n"), node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 [spos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n"),
            node(0, "27,18", "60x40"));
}

TEST(LayoutReaderLine, OfANodeHasZeroForWhatIsNotWhereItBelongs) {
  EXPECT_EQ(read("0 [pos=\"27,18\"];\n"), node(0, "27,18", "0x0"));
  EXPECT_EQ(read("0 [];\n"), node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 ["), node(0, "0,0", "0x0"));
  EXPECT_EQ(read("0 [pos=\"27,18\", width=\"0.75\"];\n"), node(0, "27,18", "60x0"));
  EXPECT_EQ(read("0 [pos=\"27,18\", height=\"0.5\", width=\"0.75\"];\n"), node(0, "27,18", "0x0"));
  EXPECT_EQ(read("0 [pos=\"27,18\", x=\"height=\"0.5\"];\n"), node(0, "27,18", "0x40"));
  EXPECT_EQ(read("0 [pos=\"27,18\", width=\"0.75"), node(0, "27,18", "60x0"));
  EXPECT_EQ(read("0 [pos=\"27,18\", width=\"x\", height=\"\"];\n"), node(0, "27,18", "0x0"));
}

TEST(LayoutReaderLine, OfANodeReadsDecimalCommas) {
  EXPECT_EQ(readItems(2, fixture("one-line-decimal-comma.dot")),
            node(0, "27,18", "60x40") + node(1, "179,18", "120x79") + edge(7, "103,26", "0,5") +
                "box 206x36\n")
      << "only the first comma is a decimal one";
}

TEST(LayoutReaderLine, OfANodeHasNoSizeBeyondAnInteger) {
  EXPECT_EQ(read("0 [pos=\"1,2\", width=\"26843545\", height=\"26843546\"];\n"),
            node(0, "1,2", "2147483600x0"));
  EXPECT_EQ(read("0 [pos=\"1,2\", width=\"-26843545\", height=\"1e300\"];\n"),
            node(0, "1,2", "-2147483600x0"));
  EXPECT_EQ(read("0 [pos=\"1,2\", width=\"-26843546\", height=\"-1e300\"];\n"),
            node(0, "1,2", "0x0"));
  EXPECT_EQ(read("0 [pos=\"99999999999,-99999999999\"];\n"),
            node(0, "2147483647,-2147483648", "0x0"));
}

TEST(LayoutReaderLine, OfANodeThatEndsAmidItsPositionIsOutOfRange) {
  EXPECT_EQ(read("0 [pos=\"27\"];\n"), kOutOfRange);
  EXPECT_EQ(read("0 [pos=\""), kOutOfRange);
  EXPECT_EQ(read("0 [pos=\"27,18"), node(0, "27,18", "0x0"));
  EXPECT_EQ(read("0 [pos=\"27,"), node(0, "27,0", "0x0"));
}

TEST(LayoutReaderLine, OfANodeThatTheLatticeDoesNotHaveIsSkipped) {
  const std::string rest = " [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n";
  EXPECT_EQ(read("3" + rest + "-1" + rest + "99999999999" + rest + "1" + rest),
            node(1, "27,18", "60x40"));
  EXPECT_EQ(read("3 [pos=\"27"), "") << "broken or not";
}

TEST(LayoutReaderLine, OfTheNodeOnePastTheLastIsAppendedToo) {
  const std::string rest = " [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n";
  Graph graph = latticeOf(2);
  graph.nodes[2].time = 0.5;
  EXPECT_EQ(reading(graph, "2" + rest),
            "node id -1 at 27,18 size 60x40 index 2 from 0 to 0 time 0.5 label [] word [] score 0\n"
            "box 0x0\n");
  EXPECT_EQ(readItems(2, "2 [pos=\"27"), kOutOfRange);
}

TEST(LayoutReaderLine, OfAnyNodeIsSkippedWhileTheLatticeHasNone) {
  Graph graph = latticeOf(2);
  graph.nodes.clear();
  EXPECT_EQ(reading(graph, "0 [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n"), "box 0x0\n");
}

TEST(LayoutReaderLine, OfANodeWithAnOddNameCountsAsNodeZero) {
  const std::string rest = " [pos=\"27,18\", width=\"0.75\", height=\"0.5\"];\n";
  EXPECT_EQ(read("name" + rest), node(0, "27,18", "60x40"));
  EXPECT_EQ(read("1x" + rest), node(1, "27,18", "60x40"));
  EXPECT_EQ(read("0->1" + rest), node(0, "27,18", "60x40"));
}

TEST(LayoutReaderLine, OfAnEdgeGivesLabelIdAndPlace) {
  EXPECT_EQ(read("\t0 -> 1 [label=\"word\", comment=\"ID = 12\", lp=\"63,27\"];\n"),
            edge(12, "63,27", "word"));
  EXPECT_EQ(read("0 \t->\t 1\t[label=\"word\", comment=\"ID = 12\", lp=\"63.9,-27.9\"];\n"),
            edge(12, "63,-27", "word"));
  EXPECT_EQ(read("0 -> 1 [a=\"b\", label=\"word\", c=\"d\", comment=\"ID = 12\", "
                 "pos=\"e,1,2 3,4\", lp=\"63,27\", f=\"g\"];\n"),
            edge(12, "63,27", "word"));
}

TEST(LayoutReaderLine, OfAnEdgeMayNameNodesThatTheLatticeDoesNotHave) {
  EXPECT_EQ(read("17 -> 18 [label=\"x\", comment=\"ID = 1\", lp=\"2,3\"];\n"),
            "edge id 1 at 2,3 size 0x0 index 0 from 17 to 18 time 0 label [x] word [] score 0\n");
}

TEST(LayoutReaderLine, OfAnEdgeNeedsItsArrowBetweenBlanks) {
  const std::string rest = " [label=\"x\", comment=\"ID = 1\", lp=\"2,3\"];\n";
  EXPECT_EQ(read("0 ->1" + rest), "");
  EXPECT_EQ(read("0 -- 1" + rest), "");
  EXPECT_EQ(read("0 - > 1" + rest), "");
  EXPECT_EQ(read("0 -"), "");
  EXPECT_EQ(read("0 ->"), kNoComment);
  EXPECT_EQ(read("0 -> "), kNoComment);
  EXPECT_EQ(read("0 -> 1"), kNoComment);
  EXPECT_EQ(read("0 -> 1[label=\"x\", label=\"y\", comment=\"ID = 1\", lp=\"2,3\"];\n"),
            edge(1, "2,3", "y"))
      << "without a blank the first label belongs to the name of the node";
}

TEST(LayoutReaderLine, OfAnEdgeTakesALabelWithoutQuotesUpToTheNextBlank) {
  EXPECT_EQ(read("0 -> 1 [label=word comment=\"ID = 1\", lp=\"2,3\"];\n"), edge(1, "2,3", "word"));
  EXPECT_EQ(read("0 -> 1 [label=word, comment=\"ID = 1\", lp=\"2,3\"];\n"),
            edge(1, "2,3", "word,"));
  EXPECT_EQ(read("0 -> 1 [label= comment=\"ID = 1\", lp=\"2,3\"];\n"), edge(1, "2,3", ""));
  EXPECT_EQ(read("0 -> 1 [label=a\tb comment=\"ID = 1\", lp=\"2,3\"];\n"), edge(1, "2,3", "a\tb"));
  EXPECT_EQ(read("0 -> 1 [label=word,comment=\"ID = 1\",lp=\"2,3\"];\n"), kNoComment)
      << "the label runs into the comment";
  EXPECT_EQ(read("0 -> 1 [label=word"), kNoComment);
  EXPECT_EQ(read("0 -> 1 [label="), kNoComment);
}

TEST(LayoutReaderLine, OfAnEdgeTakesAQuotedLabelUpToTheNextQuote) {
  EXPECT_EQ(read("0 -> 1 [label=\"\", comment=\"ID = 1\", lp=\"2,3\"];\n"), edge(1, "2,3", ""));
  EXPECT_EQ(read("0 -> 1 [label=\"say \\\"hi\\\"\", comment=\"ID = 1\", lp=\"2,3\"];\n"),
            edge(1, "2,3", "say \\"))
      << "the old form knows no escaped quotes";
  EXPECT_EQ(read("0 -> 1 [label=\"no end"), kNoComment);
}

TEST(LayoutReaderLine, OfAnEdgeTakesTheFirstLabelBehindTheTarget) {
  EXPECT_EQ(read("0 -> 1 [xlabel=\"x\", label=\"y\", comment=\"ID = 1\", lp=\"2,3\"];\n"),
            edge(1, "2,3", "x"));
  EXPECT_EQ(read("0 -> 1 [label =\"x\", label=\"y\", comment=\"ID = 1\", lp=\"2,3\"];\n"),
            edge(1, "2,3", "y"));
}

TEST(LayoutReaderLine, OfAnEdgeTakesTheIdFromTheFirstDigitOfItsComment) {
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"12\", lp=\"2,3\"];\n"), edge(12, "2,3", "x"));
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID = -1\", lp=\"2,3\"];\n"), edge(1, "2,3", "x"))
      << "a sign is no digit";
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID = 0019\", lp=\"2,3\"];\n"),
            edge(19, "2,3", "x"));
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID = 9x8\", lp=\"2,3\"];\n"), edge(9, "2,3", "x"));
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID\", lp=\"2,3\", lp=\"4,5\"];\n"),
            edge(2, "4,5", "x"))
      << "the first digit may lie behind the comment";
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID\"];\n"), kOutOfRange);
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID = 99999999999\", lp=\"2,3\"];\n"),
            edge(2147483647, "2,3", "x"));
}

TEST(LayoutReaderLine, OfAnEdgeWithoutItsValuesSaysSoOnce) {
  EXPECT_EQ(readItems(2, fixture("one-line-missing-values.dot")),
            edge(3, "-1,-1", "without position") + edge(4, "40,4", "whole") + "box 206x36\n" +
                kNoComment + kNoComment + kNoPosition + kNoComment + kNoComment);
}

TEST(LayoutReaderLine, OfAnEdgeTellsItsValuesByTheLastCharactersOfTheirNames) {
  EXPECT_EQ(
      read("0 -> 1 [abel=\"w\", xlabel=\"x\", omment=\"ID = 8\", xcomment=\"ID = 9\", p=\"6,7\", "
           "xlp=\"4,5\"];\n"),
      edge(9, "4,5", "x"));
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment =\"8\", comment=\"9\", lp =\"6,7\", lp=\"4,5\"];\n"),
            edge(9, "4,5", "x"));
}

TEST(LayoutReaderLine, OfAnEdgeNeedsItsValuesInTheirOrder) {
  EXPECT_EQ(read("0 -> 1 [comment=\"ID = 1\", label=\"x\", lp=\"2,3\"];\n"), kNoComment);
  EXPECT_EQ(read("0 -> 1 [lp=\"2,3\", label=\"x\", comment=\"ID = 1\"];\n"),
            edge(1, "-1,-1", "x") + kNoPosition);
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID = 1"), edge(1, "-1,-1", "x") + kNoPosition);
}

TEST(LayoutReaderLine, OfAnEdgeTakesEachValueBehindTheEndOfTheOneBefore) {
  EXPECT_EQ(read("0 -> 1 [label=\"x comment=\", f=\"9\", comment=\"ID = 1\", lp=\"2,3\"];\n"),
            edge(1, "2,3", "x comment="));
  EXPECT_EQ(read("0 -> 1 [label=\"x\", comment=\"ID = 12 lp=\", lp=\"2,3\"];\n"),
            edge(12, "2,3", "x"));
}

TEST(LayoutReaderLine, OfAnEdgeThatEndsAmidItsPositionIsOutOfRange) {
  const std::string start = "0 -> 1 [label=\"x\", comment=\"ID = 1\", ";
  EXPECT_EQ(read(start + "lp=\"2\"];\n"), kOutOfRange);
  EXPECT_EQ(read(start + "lp=\""), kOutOfRange);
  EXPECT_EQ(read(start + "lp=\"2,"), edge(1, "2,0", "x"));
  EXPECT_EQ(read(start + "lp=\"2,3"), edge(1, "2,3", "x"));
}

TEST(LayoutReaderLine, ThatIsOutOfRangeEndsTheReadingAndLeavesTheItemsBeforeIt) {
  EXPECT_EQ(readItems(3, fixture("one-line-position-cut-short.dot")),
            "node id -1 at 27,18 size 60x40 index 0 from 0 to 0 time 0 label [] word [] score 0\n"
            "box 206x36\n" +
                kOutOfRange);
}

TEST(LayoutReaderLine, KeepsTheBackslashesOfJoinedLinesInItsValues) {
  EXPECT_EQ(readItems(2, fixture("one-line-wrapped-values.dot")),
            node(0, "2,18", "60x40") + node(1, "179,18", "60x40") +
                edge(7, "1,26", "wrapped \\label") +
                "edge id 7 at 103,0 size 0x0 index 0 from 1 to 0 time 0 label "
                "[twice\\ and \\ again] word [] score 0\nbox 2x36\n");
}

}  // namespace
}  // namespace quorbel
