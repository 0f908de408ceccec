#include "layout/layout_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "layout_support.h"

// Whole layouts in both forms. Single lines of the old form are in layout_reader_line_test.cpp,
// broken and huge files in layout_reader_file_test.cpp.

namespace quorbel {
namespace {

const std::string kWordA = R"(word [<w text="a"/>] score 1)";

TEST(LayoutReader, ReadsTheOldFormInTheOrderOfItsLines) {
  Graph graph = diamond();
  EXPECT_EQ(reading(graph, fixture("one-line-diamond.dot")),
            R"(node id -1 at 22,53 size 48x49 index 0 from 0 to 0 time 0 label [] word [] score 0
node id -1 at 220,53 size 48x49 index 3 from 0 to 0 time 1 label [] word [] score 0
node id -1 at 121,84 size 68x48 index 2 from 0 to 0 time 0.666667 label [] word [] score 0
node id -1 at 121,22 size 68x48 index 1 from 0 to 0 time 0.333333 label [] word [] score 0
edge id 0 at 67,48 size 0x0 index 0 from 0 to 1 time 0 label [a] word [<w text="a"/>] score 1
edge id 1 at 67,76 size 0x0 index 0 from 0 to 2 time 0 label [b] word [<w text="b"/>] score 2
edge id 2 at 175,48 size 0x0 index 0 from 1 to 3 time 0 label [c] word [<w text="c"/>] score 1
edge id 3 at 175,76 size 0x0 index 0 from 2 to 3 time 0 label [d] word [<w text="d"/>] score 3
box 242x106
)");
}

const std::string kRecordedDiamond =
    R"(node id -1 at 22,53 size 48x48 index 0 from 0 to 0 time 0 label [] word [] score 0
node id -1 at 121,84 size 68x48 index 2 from 0 to 0 time 0.666667 label [] word [] score 0
edge id 1 at 67,75 size 0x0 index 0 from 0 to 2 time 0 label [b] word [<w text="b"/>] score 2
node id -1 at 121,22 size 68x48 index 1 from 0 to 0 time 0.333333 label [] word [] score 0
edge id 0 at 67,47 size 0x0 index 0 from 0 to 1 time 0 label [a] word [<w text="a"/>] score 1
node id -1 at 220,53 size 48x48 index 3 from 0 to 0 time 1 label [] word [] score 0
edge id 3 at 175,75 size 0x0 index 0 from 2 to 3 time 0 label [d] word [<w text="d"/>] score 3
edge id 2 at 175,47 size 0x0 index 0 from 1 to 3 time 0 label [c] word [<w text="c"/>] score 1
box 242x106
)";

TEST(LayoutReader, ReadsTodaysFormInTheOrderOfItsStatements) {
  Graph graph = diamond();
  EXPECT_EQ(reading(graph, fixture("recorded-diamond.dot")), kRecordedDiamond);
}

TEST(LayoutReader, ReadsTheLayoutFileOfTheWorkingDirectory) {
  const TemporaryFolder folder;
  folder.write("graph.dot", fixture("recorded-diamond.dot"));
  Graph graph = diamond();
  std::vector<LayoutItem> items(3);
  readDotLayout(graph, items);
  std::string text;
  for (const LayoutItem& item : items) text += asText(item);
  EXPECT_EQ(text + "box 242x106\n", kRecordedDiamond);
  EXPECT_EQ(graph.layoutWidth, 242);
  EXPECT_EQ(graph.layoutHeight, 106);
}

/// A list and a graph that an earlier layout has filled.
struct EarlierLayout {
  EarlierLayout() : graph(diamond()), items(2) {
    graph.layoutWidth = 11;
    graph.layoutHeight = 22;
    items[0].x = 33;
    items[1].label = "kept";
  }
  bool isKept() const {
    return graph.layoutWidth == 11 && graph.layoutHeight == 22 && items.size() == 2 &&
           items[0].x == 33 && items[1].label == "kept";
  }
  Graph graph;
  std::vector<LayoutItem> items;
};

TEST(LayoutReader, LeavesEverythingWithoutTheFileAndPrintsNothing) {
  const TemporaryFolder folder;
  EarlierLayout earlier;
  PrintedText printed;
  readDotLayout(earlier.graph, earlier.items);
  EXPECT_EQ(printed.take(), "");
  EXPECT_TRUE(earlier.isKept());
}

TEST(LayoutReader, LeavesEverythingWithoutALattice) {
  const TemporaryFolder folder;
  folder.write("graph.dot", fixture("recorded-diamond.dot"));
  EarlierLayout earlier;
  earlier.graph.adjacency.reset();
  readDotLayout(earlier.graph, earlier.items);
  EXPECT_TRUE(earlier.isKept());
}

TEST(LayoutReader, ClearsTheItemsForAnEmptyFileAndKeepsTheBox) {
  const TemporaryFolder folder;
  folder.write("graph.dot", "");
  EarlierLayout earlier;
  readDotLayout(earlier.graph, earlier.items);
  EXPECT_TRUE(earlier.items.empty());
  EXPECT_EQ(earlier.graph.layoutWidth, 11);
  EXPECT_EQ(earlier.graph.layoutHeight, 22);
}

TEST(LayoutReader, FindsNothingInAFolderOfThatName) {
  const TemporaryFolder folder;
  std::filesystem::create_directory("graph.dot");
  EarlierLayout earlier;
  PrintedText printed;
  readDotLayout(earlier.graph, earlier.items);
  EXPECT_EQ(printed.take(), "");
  EXPECT_TRUE(earlier.items.empty());
  EXPECT_EQ(earlier.graph.layoutWidth, 11);
}

/// Labels that `dot` might take for something else. Both forms have them.
const std::vector<std::string> kLabels = {"two blanks  here",
                                          "a / b",
                                          "[x] (y) {z}",
                                          "a, b; c",
                                          "\xc3\xa9t\xc3\xa9 \xe4\xbd\xa0\xe5\xa5\xbd",
                                          "stra\xc3\x9f"
                                          "e",
                                          "node",
                                          "graph",
                                          "edge",
                                          "digraph",
                                          "subgraph",
                                          "strict",
                                          "NULL",
                                          "-0.5",
                                          "12",
                                          ".5",
                                          "1e5",
                                          "-",
                                          "lp=",
                                          "comment=",
                                          "pos=1,2",
                                          "a -> b [label=",
                                          "];",
                                          "0 [pos=",
                                          "="};

/// Labels with what today's `dot` escapes, or writes over several lines.
const std::vector<std::string> kOddLabels = {"say \\\"hi\\\"",
                                             "\\\"\\\"",
                                             "first line\nsecond line",
                                             "back\\\\slash",
                                             "C:\\new",
                                             "x\\n",
                                             "<b>",
                                             "a_b",
                                             "#7"};

constexpr int kFirstLabelId = 100;

/// The labels of a layout's edges, whose ids must count up from kFirstLabelId.
std::vector<std::string> labelsOf(const std::string& layout) {
  Graph graph = latticeOf(2);
  std::vector<LayoutItem> items;
  std::istringstream stream(layout);
  readDotLayout(graph, items, stream);
  std::vector<std::string> labels;
  for (const LayoutItem& item : items) {
    if (item.isNode) continue;
    EXPECT_EQ(item.linkId, kFirstLabelId + static_cast<int>(labels.size()));
    EXPECT_NE(item.x, LayoutItem::kNoPosition) << item.label;
    labels.push_back(item.label);
  }
  return labels;
}

TEST(LayoutReader, KeepsLabelsOfTheOldForm) {
  EXPECT_EQ(labelsOf(fixture("one-line-labels.dot")), kLabels);
}

TEST(LayoutReader, KeepsLabelsOfTodaysForm) {
  std::vector<std::string> expected = kLabels;
  expected.insert(expected.end(), kOddLabels.begin(), kOddLabels.end());
  EXPECT_EQ(labelsOf(fixture("recorded-labels.dot")), expected);
}

TEST(LayoutReader, PutsWrappedLabelsOfTodaysFormTogether) {
  Graph graph = latticeOf(2);
  std::vector<LayoutItem> items;
  std::istringstream stream(fixture("recorded-wrapped-labels.dot"));
  readDotLayout(graph, items, stream);

  const std::string a(126, 'a');  // `dot` wraps where it can behind the 128th character
  const std::vector<std::string> expected = {a + "aa bc",
                                             a + "aabc d",
                                             a + "aa  ,b",
                                             a + "a\\\"b \\\"c",
                                             a + " \\\"b\\\"",
                                             a + "aa\\\\b c",
                                             a + "a\\\\\\\"b c",
                                             a + "aa\nb c",
                                             a + "aa\\\\\nb c",
                                             a + "aa\\nb c",
                                             std::string(300, 'a'),
                                             a + "a b" + a + "a c" + a,
                                             std::string(130, '1') + ".5",
                                             a + "aa\\\"];b",
                                             a + "a\xc3\xa9 \xc3\xa9" + "b",
                                             a + "aa comment=b lp=c"};
  ASSERT_EQ(items.size(), expected.size() + 2);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(items[i + 2].label, expected[i]) << i;
    EXPECT_EQ(items[i + 2].linkId, static_cast<int>(i));
    EXPECT_NE(items[i + 2].x, LayoutItem::kNoPosition);
  }
}

TEST(LayoutReader, ReadsPositionsWithExponentsInFull) {
  Graph graph = latticeOf(1500);
  graph.nodes[1498].time = 0.5;
  link(graph, 1498, 1499, "a", 1, 1498);
  EXPECT_EQ(reading(graph, fixture("recorded-end-of-long-chain.dot")),
            "edge id 1496 at 208320,45 size 0x0 index 0 from 1496 to 1497 time 0 label [w1496] "
            "word [] score 0\n"
            "node id -1 at 208550,38 size 76x40 index 1498 from 0 to 0 time 0.5 label [] word [] "
            "score 0\n"
            "edge id 1497 at 208470,45 size 0x0 index 0 from 1497 to 1498 time 0 label [w1497] "
            "word [] score 0\n"
            "edge id 1498 at 208630,45 size 0x0 index 0 from 1498 to 1499 time 0 label [w1498] " +
                kWordA + "\nbox 208750x76\n");
}

/// Graphviz 14 wrote this for examples/yesno.lat, with a fraction in nearly every number.
TEST(LayoutReader, ReadsFractionalCoordinatesUpToTheirPoint) {
  Graph graph = latticeOf(6);
  EXPECT_EQ(reading(graph, fixture("recorded-fractional-coordinates.dot")),
            R"(node id -1 at 22,84 size 48x48 index 0 from 0 to 0 time 0 label [] word [] score 0
node id -1 at 155,124 size 60x40 index 1 from 0 to 0 time 0.2 label [] word [] score 0
edge id 0 at 86,124 size 0x0 index 0 from 0 to 1 time 0 label [!NULL] word [] score 0
node id -1 at 155,44 size 60x40 index 2 from 0 to 0 time 0.4 label [] word [] score 0
edge id 1 at 86,54 size 0x0 index 0 from 0 to 2 time 0 label [!NULL] word [] score 0
edge id 2 at 86,84 size 0x0 index 0 from 0 to 2 time 0 label [uh] word [] score 0
node id -1 at 419,97 size 48x48 index 5 from 0 to 0 time 1 label [] word [] score 0
node id -1 at 286,124 size 60x40 index 3 from 0 to 0 time 0.6 label [] word [] score 0
edge id 3 at 220,154 size 0x0 index 0 from 1 to 3 time 0 label [yes] word [] score 0
edge id 4 at 220,130 size 0x0 index 0 from 1 to 3 time 0 label [yeah] word [] score 0
node id -1 at 286,57 size 60x40 index 4 from 0 to 0 time 0.8 label [] word [] score 0
edge id 5 at 220,108 size 0x0 index 0 from 1 to 4 time 0 label [yet] word [] score 0
edge id 6 at 220,67 size 0x0 index 0 from 2 to 3 time 0 label [yes] word [] score 0
edge id 7 at 220,14 size 0x0 index 0 from 2 to 4 time 0 label [guess] word [] score 0
edge id 8 at 355,107 size 0x0 index 0 from 3 to 5 time 0 label [!NULL] word [] score 0
edge id 9 at 355,132 size 0x0 index 0 from 3 to 5 time 0 label [sir] word [] score 0
edge id 10 at 355,81 size 0x0 index 0 from 4 to 5 time 0 label [!NULL] word [] score 0
box 441x162
)");
}

/// What reading a statement of today's form does in a lattice of two nodes.
std::string readTodays(const std::string& subject, const std::string& attributes) {
  return readItems(2, "\t" + subject + "\t[" + attributes + ",\n\t\tz=1];\n");
}

TEST(LayoutReader, TakesZeroForWhatANodeOfTodaysFormLacks) {
  const std::string rest = " index 1 from 0 to 0 time 1 label [] word [] score 0\n";
  EXPECT_EQ(readTodays("1", "a=1"), "node id -1 at 0,0 size 0x0" + rest);
  EXPECT_EQ(readTodays("1", "height=0.5,\n\t\tpos=\"3,4\""), "node id -1 at 3,4 size 0x40" + rest);
  EXPECT_EQ(readTodays("1", "pos=\"3\",\n\t\twidth=\"0,75\""),
            "node id -1 at 3,0 size 60x0" + rest);
  EXPECT_EQ(readTodays("3", "pos=\"3,4\""), "") << "no such node";
  EXPECT_EQ(readTodays("1 2", "pos=\"3,4\""), "") << "no name";
  EXPECT_EQ(readTodays("", "pos=\"3,4\""), "") << "no name";
}

TEST(LayoutReader, SaysWhatAnEdgeOfTodaysFormLacks) {
  const std::string noComment = "comment not found in dot file\n";
  const std::string comment = "comment=\"ID = 7\",\n\t\t";
  const std::string label = "label=x,\n\t\t";
  const std::string start = "edge id 7 at ";
  const std::string rest = " size 0x0 index 0 from 0 to 1 time 0 label [x] word [] score 0\n";
  EXPECT_EQ(readTodays("0 -> 1", comment + label + "lp=\"3,4\""), start + "3,4" + rest);
  EXPECT_EQ(readTodays("0 -> 1", comment + label + "my_lp=\"3,4\""),
            start + "-1,-1" + rest + "lp not found in dot file\n");
  EXPECT_EQ(readTodays("0 -> 1", comment + "lp=\"3,4\""), noComment);
  EXPECT_EQ(readTodays("0 -> 1", label + "lp=\"3,4\""), noComment);
  EXPECT_EQ(readTodays("0 -> 1", "comment=ID,\n\t\t" + label + "lp=\"3,4\""), noComment)
      << "no number";
  EXPECT_EQ(readTodays("0 -> 1", comment + label + "lp=\"3\""), "out of range\n");
  EXPECT_EQ(readTodays("0 -> 1", comment + "lp=\"3\""), noComment) << "it has no item anyway";
}

TEST(LayoutReader, ThrowsForABoxOfTodaysFormThatIsTooShort) {
  EXPECT_EQ(readTodays("graph", "a=\"0,0,5,6\""), "");
  EXPECT_EQ(readTodays("graph", "bb=\"0,0,5\""), "box 5x0\nout of range\n");
  EXPECT_EQ(readTodays("graph", "bb=\"0,0,5.9,6.9\""), "box 5x6\n");
  EXPECT_EQ(readTodays("graph", "bb=\"0,0\""), "out of range\n");
}

class LayoutReaderUnderLocale : public testing::TestWithParam<const char*> {};

TEST_P(LayoutReaderUnderLocale, ReadsNumbersAsInTheCLocale) {
  Graph expectedGraph = latticeOf(1500), graph = latticeOf(1500);
  const std::string expected =
      reading(expectedGraph, fixture("recorded-end-of-long-chain.dot") + "\n" +
                                 fixture("one-line-decimal-comma.dot"));
  const ProcessLocale locale(GetParam());
  EXPECT_EQ(reading(graph, fixture("recorded-end-of-long-chain.dot") + "\n" +
                               fixture("one-line-decimal-comma.dot")),
            expected);
  Graph small = diamond();
  EXPECT_EQ(reading(small, fixture("recorded-diamond.dot")), kRecordedDiamond);
}

INSTANTIATE_TEST_SUITE_P(Of, LayoutReaderUnderLocale, testing::Values("de_DE.UTF-8", "en_US.UTF-8"),
                         [](const auto& locale) { return std::string(locale.param, 2); });

TEST(LayoutReader, TakesWordAndScoreOfTheFirstLinkWithTheId) {
  Graph graph = latticeOf(3);
  link(graph, 1, 2, "second", 2, 7);
  link(graph, 0, 1, "first", 1, 7);
  link(graph, 0, 2, "third", 3, 7);
  EXPECT_EQ(reading(graph, "0 -> 2 [label=\"x\", comment=\"ID = 7\", lp=\"1,2\"];\n"),
            "edge id 7 at 1,2 size 0x0 index 0 from 0 to 2 time 0 label [x] "
            "word [<w text=\"first\"/>] score 1\nbox 0x0\n");
}

TEST(LayoutReader, LeavesLinksFromNodesBeyondTheLatticeOut) {
  Graph graph = latticeOf(2);
  link(graph, 2, 1, "beyond", 1, 7);
  EXPECT_EQ(reading(graph, "0 -> 1 [label=\"x\", comment=\"ID = 7\", lp=\"1,2\"];\n"),
            "edge id 7 at 1,2 size 0x0 index 0 from 0 to 1 time 0 label [x] word [] score 0\n"
            "box 0x0\n");
}

TEST(LayoutReader, InsertsAMissingScoreOfThatLinkAlone) {
  Graph graph = latticeOf(2);
  for (const int id : {6, 7, 8}) addEdge(*graph.adjacency, 0, 1, {{"other", 5.0}}, "w", id);
  EXPECT_EQ(reading(graph, "0 -> 1 [label=\"x\", comment=\"ID = 7\", lp=\"1,2\"];\n"),
            "edge id 7 at 1,2 size 0x0 index 0 from 0 to 1 time 0 label [x] word [w] score 0\n"
            "box 0x0\n");
  const std::vector<Edge>& edges = graph.adjacency->outgoing[0];
  EXPECT_EQ(edges[0].scores, (ScoreMap{{"other", 5.0}}));
  EXPECT_EQ(edges[1].scores, (ScoreMap{{"cost", 0.0}, {"other", 5.0}}));
  EXPECT_EQ(edges[2].scores, (ScoreMap{{"other", 5.0}}));
}

TEST(LayoutReader, TakesTheScoreUnderTheCurrentName) {
  Graph graph = latticeOf(2);
  addEdge(*graph.adjacency, 0, 1, {{"a", 1.5}, {"l", 2.5}}, "w", 7);
  currentScoreName = "l";
  EXPECT_EQ(reading(graph, "0 -> 1 [label=\"x\", comment=\"ID = 7\", lp=\"1,2\"];\n"),
            "edge id 7 at 1,2 size 0x0 index 0 from 0 to 1 time 0 label [x] word [w] score 2.5\n"
            "box 0x0\n");
}

}  // namespace
}  // namespace quorbel
