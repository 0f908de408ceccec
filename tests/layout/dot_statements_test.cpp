#include "layout/dot_statements.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <sstream>
#include <string>

#include "layout_support.h"

namespace quorbel {
namespace {

/// All statements, a line each, with the stand-ins for inner quotes as '~'.
std::string statementsOf(const std::string& text) {
  std::istringstream stream(text);
  DotStatements statements(stream);
  std::string all;
  for (std::string line; statements.next(line);) all += line + "\n";
  for (char& c : all)
    if (c == DotStatements::kInnerQuote) c = '~';
  return all;
}

TEST(DotStatements, OfAnEmptyFileAreNone) {
  EXPECT_EQ(statementsOf(""), "");
  EXPECT_EQ(statementsOf("\n\n"), "\n\n");
}

TEST(DotStatements, OfTheOldFormComeAsTheyAre) {
  for (const char* name :
       {"one-line-diamond.dot", "one-line-decimal-comma.dot", "one-line-labels.dot",
        "one-line-missing-values.dot", "one-line-position-cut-short.dot"})
    EXPECT_EQ(statementsOf(fixture(name)), fixture(name)) << name;
}

TEST(DotStatements, OfTheOldFormAreJoinedAtBackslashesWhichStay) {
  EXPECT_EQ(statementsOf(fixture("one-line-wrapped-values.dot")), R"(digraph G {
	graph [bb="0,0,2\06,36"];
	0 [pos="2\7,18", width="0.75", height="0.50"];
	1 [pos="179,18", width="0.75", \height="0.50"];
	0 -> 1 [label="wrapped \label", comment="ID = 7", pos="e,152,18 54,18 \79,18 114,18 141,18", lp="1\03,26"];
	1 -> 0 [label="twice\ and \ again", comment="ID = 7", lp="103,\26"];
}
)");
}

TEST(DotStatements, OfTheOldFormAreJoinedOverEmptyLinesTooAndUpToTheEndOfTheFile) {
  EXPECT_EQ(statementsOf("a\\\n\n\nb\nc"), "a\\b\nc\n");
  EXPECT_EQ(statementsOf("a\\\\\nb\n"), "a\\\\b\n");
  EXPECT_EQ(statementsOf("a\\\n"), "a\\\n");
  EXPECT_EQ(statementsOf("a\\"), "a\\\n");
  EXPECT_EQ(statementsOf("a\\ \nb\n"), "a\\ \nb\n") << "a blank follows the backslash";
  EXPECT_EQ(statementsOf("a\\\r\nb\n"), "a\\\r\nb\n") << "a carriage return follows it";
}

TEST(DotStatements, OfTheOldFormEndWithTheirLineHoweverBroken) {
  for (const std::string broken :
       {"0 [pos=\"27", "0 [pos=\"27,18\", width=\"0.75\"", "0 [pos=", "0 [", "0 -> 1 [label=\"a",
        "0 -> 1 [label=\"a];", "0\t[pos=\"27];", "0\t[pos=\"27] ;\r", "0 -> 1 [label=\"a\\\"];",
        "graph [bb=\"0,0,27", "0 [\"]\" \" [];\r"}) {
    EXPECT_EQ(statementsOf(broken), broken + "\n") << "at the end of the file";
    const std::string lines = broken + "\n1 [pos=\"9,9\", width=\"1\", height=\"1\"];\n}\n";
    EXPECT_EQ(statementsOf(lines), lines);
  }
}

TEST(DotStatements, OfTodaysFormComeInTheOldOneWithWhatTheReaderLooksFor) {
  EXPECT_EQ(statementsOf(fixture("recorded-diamond.dot")), R"(digraph G {
graph [bb="0,0,242,106"];
	node [label="\N"];
0 [pos="22,53", width="0.61111", height="0.61111"];
2 [pos="121,84", width="0.86111", height="0.61111"];
0 -> 2 [label="b", comment="ID = 1", lp="67,75.5"];
1 [pos="121,22", width="0.86111", height="0.61111"];
0 -> 1 [label="a", comment="ID = 0", lp="67,47.5"];
3 [pos="220,53", width="0.61111", height="0.61111"];
2 -> 3 [label="d", comment="ID = 3", lp="175,75.5"];
1 -> 3 [label="c", comment="ID = 2", lp="175,47.5"];
}
)");
}

TEST(DotStatements, OfTodaysFormAreReadWhicheverEndTheirLastLineHas) {
  const std::string expected = "7 [pos=\"1,2\", width=\"3\", height=\"4\"];\n}\n";
  EXPECT_EQ(statementsOf("\t7\t[height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3];\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7\t[height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3\n\t];\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7 [height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3];\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7 [a=\"\",\n\t\theight=4,\n\t\tlabel=\"a\nb\",\n\t\tpos=\"1,2\","
                         "\n\t\twidth=3];\n}\n"),
            expected);
  EXPECT_EQ(statementsOf("7 [\nheight = 4\npos = \"1,2\"\nwidth = 3\n]\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7\t[height=4,\r\n\t\tpos=\"1,2\",\r\n\t\twidth=\"3\"];\r\n}\n"),
            expected);
  EXPECT_EQ(statementsOf("\t7\t[height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3]"),
            "7 [pos=\"1,2\", width=\"3\", height=\"4\"];\n")
      << "the last line of the file without its end";
}

TEST(DotStatements, OfTodaysFormWithDefaultsForAllNodesOrEdgesComeAsNothing) {
  EXPECT_EQ(statementsOf("\tnode [label=\"\\N\",\n\t\tshape=box\n\t];\n"), "\n");
  EXPECT_EQ(statementsOf("\tedge [color=red,\n\t\tlp=\"1,2\"\n\t];\n"), "\n");
}

TEST(DotStatements, OfTodaysFormHaveNoSizeOrPlaceForNodesThatLackThem) {
  EXPECT_EQ(statementsOf("\t7\t[color=red,\n\t\tshape=box];\n"),
            "7 [pos=\"0,0\", width=\"0,0\", height=\"0,0\"];\n");
  EXPECT_EQ(statementsOf("\t7\t[height=0.5,\n\t\tpos=\"1,2\"];\n"),
            "7 [pos=\"1,2\", width=\"0,0\", height=\"0.5\"];\n");
}

TEST(DotStatements, OfTodaysFormLeaveOutWhatEdgesAndTheDrawingLack) {
  EXPECT_EQ(statementsOf("\t0 -> 1\t[color=red,\n\t\tlabel=a];\n"), "0 -> 1 [label=\"a\"];\n");
  EXPECT_EQ(statementsOf("\t0 -> 1\t[color=red,\n\t\tcomment=a];\n"), "0 -> 1 [comment=\"a\"];\n");
  EXPECT_EQ(statementsOf("\t0 -> 1\t[color=red,\n\t\tlp=\"1,2\"];\n"), "0 -> 1 [lp=\"1,2\"];\n");
  EXPECT_EQ(statementsOf("\t0 -> 1\t[color=red,\n\t\tpos=\"1,2\"];\n"), "0 -> 1 [];\n");
  EXPECT_EQ(statementsOf("\tgraph [rankdir=LR,\n\t\tsize=3\n\t];\n"), "graph [];\n");
  EXPECT_EQ(statementsOf("\t0 -> 1\t[lp=\"1,2\",\n\t\tmy_lp=\"3,4\"];\n"),
            "0 -> 1 [lp=\"1,2\"];\n");
}

/// Today's form of an edge with this label, as `dot` would write the value.
std::string withLabel(const std::string& value) {
  return statementsOf("\t0 -> 1\t[color=black,\n\t\tlabel=" + value + ",\n\t\tlp=\"1,2\"];\n}\n");
}

/// What that edge should come as.
std::string expectedLabel(const std::string& label) {
  return "0 -> 1 [label=\"" + label + "\", lp=\"1,2\"];\n}\n";
}

TEST(DotStatements, OfTodaysFormAreFollowedThroughTheirQuotes) {
  EXPECT_EQ(withLabel("\"\""), expectedLabel(""));
  EXPECT_EQ(withLabel("plain"), expectedLabel("plain"));
  EXPECT_EQ(withLabel("-0.5"), expectedLabel("-0.5"));
  EXPECT_EQ(withLabel("\xc3\xa9t\xc3\xa9"), expectedLabel("\xc3\xa9t\xc3\xa9"));
  EXPECT_EQ(withLabel("\"a, b] [c; lp=\""), expectedLabel("a, b] [c; lp="));
  EXPECT_EQ(withLabel("\"];\n}\n\t2\t[pos=\""), expectedLabel("];\n}\n\t2\t[pos="));
  EXPECT_EQ(withLabel("\"say \\\"hi\\\"\""), expectedLabel("say \\~hi\\~"));
  EXPECT_EQ(withLabel("\"\\\"];\""), expectedLabel("\\~];"));
  EXPECT_EQ(withLabel("\"a\\\\\""), expectedLabel("a\\\\"));
  EXPECT_EQ(withLabel("\"a\\\\\\\"b\""), expectedLabel("a\\\\\\~b"));
  EXPECT_EQ(withLabel("\"a\\nb\""), expectedLabel("a\\nb"));
}

TEST(DotStatements, OfTodaysFormHaveTheirWrappedValuesPutTogether) {
  EXPECT_EQ(withLabel("\"a \\\nb \\\nc\""), expectedLabel("a b c"));
  EXPECT_EQ(withLabel("\"a \\\n\\\"b\""), expectedLabel("a \\~b"));
  EXPECT_EQ(withLabel("\"a\\\"\\\nb\""), expectedLabel("a\\~b"));
  EXPECT_EQ(withLabel("\"a\\\\\n\\\nb\""), expectedLabel("a\\\\\nb")) << "one line end is real";
  EXPECT_EQ(withLabel("\"a \\\ncomment=b, lp=c\""), expectedLabel("a comment=b, lp=c"));
}

TEST(DotStatements, OfTodaysFormMayBeginWithAWrappedOrBrokenValue) {
  EXPECT_EQ(statementsOf("\t0 -> 1\t[label=\"a \\\nb\",\n\t\tlp=\"1,2\"];\n}\n"),
            expectedLabel("a b"));
  EXPECT_EQ(statementsOf("\t0 -> 1\t[label=\"a\nb\",\n\t\tlp=\"1,2\"];\n}\n"),
            expectedLabel("a\nb"));
  EXPECT_EQ(statementsOf("\t0 -> 1\t[label=\"a\n\\\"b\"];\n"), "0 -> 1 [label=\"a\n\\~b\"];\n");
}

TEST(DotStatements, OfTodaysFormDoNotComeWhenTheFileCutsThemOff) {
  const std::string whole = "\t0 -> 1\t[color=black,\n\t\tlabel=\"a\nb\",\n\t\tlp=\"1,2\"];";
  for (std::size_t length = whole.find('['); length + 2 < whole.size(); ++length) {
    EXPECT_EQ(statementsOf("}\n" + whole.substr(0, length + 1)), "}\n") << length;
  }
  EXPECT_EQ(statementsOf("}\n" + whole), "}\n0 -> 1 [label=\"a\nb\", lp=\"1,2\"];\n");
}

TEST(DotStatements, HaveTheNumbersOfPositionsInFull) {
  EXPECT_EQ(statementsOf(fixture("recorded-end-of-long-chain.dot")), R"(digraph G {
graph [bb="0,0,208750,76.894"];
	node [label="\N"];
1496 -> 1497 [label="w1496", comment="ID = 1496", lp="208320,45.947"];
1498 [pos="208550,38.447", width="0.95686", height="0.5"];
1497 -> 1498 [label="w1497", comment="ID = 1497", lp="208470,45.947"];
1498 -> 1499 [label="w1498", comment="ID = 1498", lp="208630,45.947"];
}
)");
}

TEST(DotStatements, HaveTheNumbersOfPositionsInFullOnOneLineToo) {
  EXPECT_EQ(statementsOf("\tgraph [bb=\"0,0,2.0875e+05,1e+5\"];\n"),
            "\tgraph [bb=\"0,0,208750,100000\"];\n");
  EXPECT_EQ(statementsOf("\t0 [pos=\"1e+05,-1.5e+06\", width=\"1e+05\", height=\"e+\"];\n"),
            "\t0 [pos=\"100000,-1500000\", width=\"1e+05\", height=\"e+\"];\n");
  EXPECT_EQ(statementsOf("0 -> 1 [label=\"1e+05\", comment=\"1e+05\", pos=\"e,1e+05,2 3,4e+05\", "
                         "lp=\"1.5e+05,.5e+06\"];\n"),
            "0 -> 1 [label=\"1e+05\", comment=\"1e+05\", pos=\"e,100000,2 3,400000\", "
            "lp=\"150000,500000\"];\n");
  EXPECT_EQ(statementsOf("\t0 [pos=\"2nodes,1e+05\", width=\"1\"];\n"),
            "\t0 [pos=\"2nodes,100000\", width=\"1\"];\n");
  EXPECT_EQ(statementsOf("0 -> 1 [my_lp=\"1e+05\"];\n"), "0 -> 1 [my_lp=\"1e+05\"];\n");
  EXPECT_EQ(statementsOf("0 -> 1 [help=\"1e+05\", lp = \"1e+05\", lp=1e+05, \"1e+05\"];\n"),
            "0 -> 1 [help=\"1e+05\", lp = \"1e+05\", lp=1e+05, \"1e+05\"];\n");
}

TEST(DotStatements, HaveTinyNumbersOfPositionsInFull) {
  EXPECT_EQ(statementsOf("0 [pos=\"5e-14,-2.5e-03\", width=\"1\", height=\"1\"];\n"),
            "0 [pos=\"0.00000000000005,-0.0025\", width=\"1\", height=\"1\"];\n");
  EXPECT_EQ(statementsOf("\t0\t[height=1,\n\t\tpos=\"5e-14,18\",\n\t\twidth=1];\n"),
            "0 [pos=\"0.00000000000005,18\", width=\"1\", height=\"1\"];\n");
}

TEST(DotStatements, HaveTheLargestAndSmallestNumbersInFull) {
  std::array<char, 400> largest;
  std::snprintf(largest.data(), largest.size(), "%.0f", std::numeric_limits<double>::max());
  EXPECT_EQ(statementsOf("0 [pos=\"1e+999,-1e-400\"];\n"),
            "0 [pos=\"" + std::string(largest.data()) + ",-0\"];\n");
}

TEST(DotStatements, GiveBackInnerQuotes) {
  EXPECT_EQ(withInnerQuotes("plain"), "plain");
  EXPECT_EQ(withInnerQuotes({'a', DotStatements::kInnerQuote, 'b', DotStatements::kInnerQuote}),
            "a\"b\"");
}

}  // namespace
}  // namespace quorbel
