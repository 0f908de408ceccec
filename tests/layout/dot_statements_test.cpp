#include "layout/dot_statements.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <sstream>
#include <string>
#include <variant>

#include "layout_support.h"

namespace quorbel {
namespace {

/// A record as one line: what it is about and its attributes, by their names.
std::string asText(const DotRecord& record) {
  std::string text;
  switch (record.kind) {
    case DotRecord::Kind::Drawing:
      text = "drawing";
      break;
    case DotRecord::Kind::Defaults:
      text = "defaults";
      break;
    case DotRecord::Kind::Node:
      text = "node <" + record.name + ">";
      break;
    case DotRecord::Kind::Edge:
      text = "edge <" + record.name + "> <" + record.head + ">";
      break;
  }
  for (const auto& [name, value] : record.attributes) text += " " + name + "=<" + value + ">";
  return text;
}

/// All statements: records in braces, lines of the one-line form as they come.
std::string statementsOf(const std::string& text) {
  std::istringstream stream(text);
  DotStatements statements(stream);
  std::string all;
  while (const auto statement = statements.next()) {
    if (const auto* record = std::get_if<DotRecord>(&*statement))
      all += "{" + asText(*record) + "}\n";
    else
      all += std::get<std::string>(*statement) + "\n";
  }
  return all;
}

TEST(DotStatements, OfAnEmptyFileAreNone) {
  EXPECT_EQ(statementsOf(""), "");
  EXPECT_EQ(statementsOf("\n\n"), "\n\n");
}

TEST(DotStatements, OfTheOneLineFormComeAsTheyAre) {
  for (const char* name :
       {"one-line-diamond.dot", "one-line-decimal-comma.dot", "one-line-labels.dot",
        "one-line-missing-values.dot", "one-line-position-cut-short.dot"})
    EXPECT_EQ(statementsOf(fixture(name)), fixture(name)) << name;
}

TEST(DotStatements, OfTheOneLineFormAreJoinedAtBackslashesWhichStay) {
  EXPECT_EQ(statementsOf(fixture("one-line-wrapped-values.dot")), R"(digraph G {
	graph [bb="0,0,2\06,36"];
	0 [pos="2\7,18", width="0.75", height="0.50"];
	1 [pos="179,18", width="0.75", \height="0.50"];
	0 -> 1 [label="wrapped \label", comment="ID = 7", pos="e,152,18 54,18 \79,18 114,18 141,18", lp="1\03,26"];
	1 -> 0 [label="twice\ and \ again", comment="ID = 7", lp="103,\26"];
}
)");
}

TEST(DotStatements, OfTheOneLineFormAreJoinedOverEmptyLinesTooAndUpToTheEndOfTheFile) {
  EXPECT_EQ(statementsOf("a\\\n\n\nb\nc"), "a\\b\nc\n");
  EXPECT_EQ(statementsOf("a\\\\\nb\n"), "a\\\\b\n");
  EXPECT_EQ(statementsOf("a\\\n"), "a\\\n");
  EXPECT_EQ(statementsOf("a\\"), "a\\\n");
  EXPECT_EQ(statementsOf("a\\ \nb\n"), "a\\ \nb\n") << "a blank follows the backslash";
  EXPECT_EQ(statementsOf("a\\\r\nb\n"), "a\\\r\nb\n") << "a carriage return follows it";
}

TEST(DotStatements, OfTheOneLineFormEndWithTheirLineHoweverBroken) {
  for (const std::string broken :
       {"0 [pos=\"27", "0 [pos=\"27,18\", width=\"0.75\"", "0 [pos=", "0 [", "0 -> 1 [label=\"a",
        "0 -> 1 [label=\"a];", "0\t[pos=\"27];", "0\t[pos=\"27] ;\r", "0 -> 1 [label=\"a\\\"];",
        "graph [bb=\"0,0,27", "0 [\"]\" \" [];\r"}) {
    EXPECT_EQ(statementsOf(broken), broken + "\n") << "at the end of the file";
    const std::string lines = broken + "\n1 [pos=\"9,9\", width=\"1\", height=\"1\"];\n}\n";
    EXPECT_EQ(statementsOf(lines), lines);
  }
}

TEST(DotStatements, OfTodaysFormComeAsRecords) {
  EXPECT_EQ(statementsOf(fixture("recorded-diamond.dot")), R"(digraph G {
{drawing bb=<0,0,242,106> rankdir=<LR>}
	node [label="\N"];
{node <0> color=<darkorange> fillcolor=<lightgrey> height=<0.61111> pos=<22,53> shape=<doublecircle> style=<filled> width=<0.61111>}
{node <2> color=<red> fillcolor=<cyan> height=<0.61111> pos=<121,84> shape=<doubleoctagon> style=<filled> width=<0.86111>}
{edge <0> <2> color=<cyan> comment=<ID = 1> fontcolor=<cyan> label=<b> lp=<67,75.5> pos=<e,89.977,74.405 43.098,59.423 53.888,62.871 67.573,67.245 80.399,71.344>}
{node <1> color=<blue> fillcolor=<yellow> height=<0.61111> pos=<121,22> shape=<doubleoctagon> style=<filled> width=<0.86111>}
{edge <0> <1> color=<blue> comment=<ID = 0> fontcolor=<blue> label=<a> lp=<67,47.5> pos=<e,89.977,31.595 43.098,46.577 53.888,43.129 67.573,38.755 80.399,34.656>}
{node <3> color=<red> fillcolor=<lightgrey> height=<0.61111> pos=<220,53> shape=<doublecircle> style=<filled> width=<0.61111>}
{edge <2> <3> color=<red> comment=<ID = 3> fontcolor=<red> label=<d> lp=<175,75.5> pos=<e,198.68,59.494 152.16,74.361 163.86,70.622 177.23,66.349 188.92,62.613>}
{edge <1> <3> color=<blue> comment=<ID = 2> fontcolor=<blue> label=<c> lp=<175,47.5> pos=<e,198.68,46.506 152.16,31.639 163.86,35.378 177.23,39.651 188.92,43.387>}
}
)");
}

TEST(DotStatements, OfTodaysFormAreReadWhicheverEndTheirLastLineHas) {
  const std::string expected = "{node <7> height=<4> pos=<1,2> width=<3>}\n}\n";
  EXPECT_EQ(statementsOf("\t7\t[height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3];\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7\t[height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3\n\t];\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7 [height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3];\n}\n"), expected);
  EXPECT_EQ(statementsOf("7 [\nheight = 4\npos = \"1,2\"\nwidth = 3\n]\n}\n"), expected);
  EXPECT_EQ(statementsOf("\t7\t[height=4,\r\n\t\tpos=\"1,2\",\r\n\t\twidth=\"3\"];\r\n}\n"),
            expected);
  EXPECT_EQ(statementsOf("\t7\t[a=\"\",\n\t\theight=4,\n\t\tlabel=\"a\nb\",\n\t\tpos=\"1,2\","
                         "\n\t\twidth=3];\n}\n"),
            "{node <7> a=<> height=<4> label=<a\nb> pos=<1,2> width=<3>}\n}\n");
  EXPECT_EQ(statementsOf("\t7\t[height=4,\n\t\tpos=\"1,2\",\n\t\twidth=3]"),
            "{node <7> height=<4> pos=<1,2> width=<3>}\n")
      << "the last line of the file without its end";
}

TEST(DotStatements, OfTodaysFormTellWhatTheyAreAbout) {
  const auto subject = [](const std::string& text) {
    return statementsOf("\t" + text + "\t[a=1,\n\t\tb=2];\n");
  };
  EXPECT_EQ(subject("graph"), "{drawing a=<1> b=<2>}\n");
  EXPECT_EQ(subject("node"), "{defaults a=<1> b=<2>}\n");
  EXPECT_EQ(subject("edge"), "{defaults a=<1> b=<2>}\n");
  EXPECT_EQ(subject("nodes"), "{node <nodes> a=<1> b=<2>}\n");
  EXPECT_EQ(subject("12"), "{node <12> a=<1> b=<2>}\n");
  EXPECT_EQ(subject("12 -> 3"), "{edge <12> <3> a=<1> b=<2>}\n");
  EXPECT_EQ(subject("12->3"), "{edge <12> <3> a=<1> b=<2>}\n");
  EXPECT_EQ(subject(""), "{node <> a=<1> b=<2>}\n");
}

/// Today's form of an edge with this label, as `dot` would write the value.
std::string withLabel(const std::string& value) {
  return statementsOf("\t0 -> 1\t[color=black,\n\t\tlabel=" + value + ",\n\t\tlp=\"1,2\"];\n}\n");
}

/// What that edge should come as.
std::string expectedLabel(const std::string& label) {
  return "{edge <0> <1> color=<black> label=<" + label + "> lp=<1,2>}\n}\n";
}

TEST(DotStatements, OfTodaysFormAreFollowedThroughTheirQuotes) {
  EXPECT_EQ(withLabel("\"\""), expectedLabel(""));
  EXPECT_EQ(withLabel("plain"), expectedLabel("plain"));
  EXPECT_EQ(withLabel("-0.5"), expectedLabel("-0.5"));
  EXPECT_EQ(withLabel("\xc3\xa9t\xc3\xa9"), expectedLabel("\xc3\xa9t\xc3\xa9"));
  EXPECT_EQ(withLabel("\"a, b] [c; lp=\""), expectedLabel("a, b] [c; lp="));
  EXPECT_EQ(withLabel("\"];\n}\n\t2\t[pos=\""), expectedLabel("];\n}\n\t2\t[pos="));
  EXPECT_EQ(withLabel("\"say \\\"hi\\\"\""), expectedLabel("say \\\"hi\\\""));
  EXPECT_EQ(withLabel("\"\\\"];\""), expectedLabel("\\\"];"));
  EXPECT_EQ(withLabel("\"a\\\\\""), expectedLabel("a\\\\"));
  EXPECT_EQ(withLabel("\"a\\\\\\\"b\""), expectedLabel("a\\\\\\\"b"));
  EXPECT_EQ(withLabel("\"a\\nb\""), expectedLabel("a\\nb"));
}

TEST(DotStatements, OfTodaysFormKeepEveryControlCharacterOfALabel) {
  std::string all;
  for (char c = 1; c < ' '; ++c) all += c;
  EXPECT_EQ(withLabel('"' + all + '"'), expectedLabel(all));
}

TEST(DotStatements, OfTodaysFormHaveTheirWrappedValuesPutTogether) {
  EXPECT_EQ(withLabel("\"a \\\nb \\\nc\""), expectedLabel("a b c"));
  EXPECT_EQ(withLabel("\"a \\\n\\\"b\""), expectedLabel("a \\\"b"));
  EXPECT_EQ(withLabel("\"a\\\"\\\nb\""), expectedLabel("a\\\"b"));
  EXPECT_EQ(withLabel("\"a\\\\\n\\\nb\""), expectedLabel("a\\\\\nb")) << "one line end is real";
  EXPECT_EQ(withLabel("\"a \\\ncomment=b, lp=c\""), expectedLabel("a comment=b, lp=c"));
}

TEST(DotStatements, OfTodaysFormMayBeginWithAWrappedOrBrokenValue) {
  EXPECT_EQ(statementsOf("\t0 -> 1\t[label=\"a \\\nb\",\n\t\tlp=\"1,2\"];\n}\n"),
            "{edge <0> <1> label=<a b> lp=<1,2>}\n}\n");
  EXPECT_EQ(statementsOf("\t0 -> 1\t[label=\"a\nb\",\n\t\tlp=\"1,2\"];\n}\n"),
            "{edge <0> <1> label=<a\nb> lp=<1,2>}\n}\n");
  EXPECT_EQ(statementsOf("\t0 -> 1\t[label=\"a\n\\\"b\"];\n"), "{edge <0> <1> label=<a\n\\\"b>}\n");
}

TEST(DotStatements, OfTodaysFormDoNotComeWhenTheFileCutsThemOff) {
  const std::string whole = "\t0 -> 1\t[color=black,\n\t\tlabel=\"a\nb\",\n\t\tlp=\"1,2\"];";
  for (std::size_t length = whole.find('['); length + 2 < whole.size(); ++length) {
    EXPECT_EQ(statementsOf("}\n" + whole.substr(0, length + 1)), "}\n") << length;
  }
  EXPECT_EQ(statementsOf("}\n" + whole), "}\n{edge <0> <1> color=<black> label=<a\nb> lp=<1,2>}\n");
}

TEST(DotStatements, HaveTheNumbersOfPositionsInFull) {
  EXPECT_EQ(statementsOf(fixture("recorded-end-of-long-chain.dot")), R"(digraph G {
{drawing bb=<0,0,208750,76.894> rankdir=<LR>}
	node [label="\N"];
{edge <1496> <1497> color=<black> comment=<ID = 1496> label=<w1496> lp=<208320,45.947> pos=<e,208360,38.447 208280,38.447 208300,38.447 208330,38.447 208350,38.447>}
{node <1498> height=<0.5> pos=<208550,38.447> width=<0.95686>}
{edge <1497> <1498> color=<black> comment=<ID = 1497> label=<w1497> lp=<208470,45.947> pos=<e,208510,38.447 208430,38.447 208450,38.447 208480,38.447 208500,38.447>}
{edge <1498> <1499> color=<black> comment=<ID = 1498> label=<w1498> lp=<208630,45.947> pos=<e,208670,38.447 208580,38.447 208610,38.447 208630,38.447 208660,38.447>}
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
            "{node <0> height=<1> pos=<0.00000000000005,18> width=<1>}\n");
}

TEST(DotStatements, HaveTheLargestAndSmallestNumbersInFull) {
  std::array<char, 400> largest;
  std::snprintf(largest.data(), largest.size(), "%.0f", std::numeric_limits<double>::max());
  EXPECT_EQ(statementsOf("0 [pos=\"1e+999,-1e-400\"];\n"),
            "0 [pos=\"" + std::string(largest.data()) + ",-0\"];\n");
}

}  // namespace
}  // namespace quorbel
