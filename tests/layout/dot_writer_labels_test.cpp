#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "layout/dot_writer.h"
#include "layout_support.h"
#include "run_by_system.h"

// What links are labelled with, the words along the paths, and numbers under every locale.

namespace quorbel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

/// The labels in the order of the description, a line each.
std::string labelsOf(Graph& graph) {
  const std::string description = descriptionOf(graph);
  const std::string before = ",label = \"";
  const std::string behind = "\", comment=";
  std::string labels;
  for (std::size_t at = description.find(before); at != std::string::npos;
       at = description.find(before, at + 1)) {
    const std::size_t begin = at + before.size();
    labels += description.substr(begin, description.find(behind, begin) - begin) + "\n";
  }
  return labels;
}

TEST(DotWriterLabels, ValuesHaveSixSignificantDigits) {
  Graph graph = latticeOf(2);
  graph.labelByValue = true;
  for (const double value : {0.5, 1234567.0, 123456.0, 123456.7, 0.0001, 0.00001, 1.0 / 3, -2.25,
                             0.0, -0.0, 1e300, kInfinity, -kInfinity, kNotANumber})
    link(graph, 0, 1, "unused", value, 0);
  EXPECT_EQ(labelsOf(graph), R"(0.5
1.23457e+06
123456
123457
0.0001
1e-05
0.333333
-2.25
0
-0
1e+300
inf
-inf
nan
)");
}

TEST(DotWriterLabels, AValueThatIsMissingShowsAsZeroAndIsInserted) {
  Graph graph = latticeOf(3);
  link(graph, 0, 2, "way", 1, 0);
  addEdge(*graph.adjacency, 1, 2, {{"other", 4.0}}, wordOf("cut off"), 1);
  const Edge& cutOff = graph.adjacency->outgoing[1][0];
  descriptionOf(graph);
  EXPECT_EQ(cutOff.scores, (ScoreMap{{"other", 4.0}})) << "no path looks at it";

  graph.labelByValue = true;
  EXPECT_EQ(labelsOf(graph), "1\n0\n");
  EXPECT_EQ(cutOff.scores, (ScoreMap{{"cost", 0.0}, {"other", 4.0}}));
}

TEST(DotWriterLabels, ValuesAreThoseOfTheCurrentScore) {
  Graph graph = latticeOf(2);
  addEdge(*graph.adjacency, 0, 1, {{"a", 1.5}, {"l", 2.5}}, wordOf("w"), 0);
  graph.labelByValue = true;
  currentScoreName = "l";
  EXPECT_EQ(labelsOf(graph), "2.5\n");
  EXPECT_EQ(graph.bestPathScore, 2.5);
}

/// A lattice of one link with two attributes.
Graph richLattice() {
  Graph graph = latticeOf(2);
  addEdge(*graph.adjacency, 0, 1, {{"cost", 1.0}}, "<w text='yes' conf='0.8'/>", 0);
  return graph;
}

TEST(DotWriterLabels, ShowTheFieldsByNameUnlessSelectedOnesAreWanted) {
  Graph graph = richLattice();
  graph.fieldsByName = {{{1}, "conf"}, {{1}, "text"}};
  graph.fieldsByIndex = {{0, 1}};
  EXPECT_EQ(labelsOf(graph), "0.8 / yes\n");
  EXPECT_EQ(graph.bestPathText, "0.8 / yes ");
}

TEST(DotWriterLabels, ShowTheSelectedFieldsWhilePathTextsKeepThoseByName) {
  Graph graph = richLattice();
  graph.fieldsByName = {{{1}, "text"}};
  graph.fieldsByIndex = {{0, 1}};
  graph.labelBySelectedXml = true;
  select(graph, 0);
  EXPECT_EQ(labelsOf(graph), "0.8\n");
  EXPECT_EQ(graph.bestPathText, "yes ");
  EXPECT_EQ(graph.selectedPathText, "yes ");
}

TEST(DotWriterLabels, ShowTheValueRatherThanSelectedFields) {
  Graph graph = richLattice();
  graph.fieldsByIndex = {{0, 1}};
  graph.labelBySelectedXml = true;
  graph.labelByValue = true;
  EXPECT_EQ(labelsOf(graph), "1\n");
  EXPECT_EQ(graph.bestPathText, "yes ");
}

TEST(DotWriterLabels, StandAsTheyAreWithoutEscaping) {
  Graph graph = latticeOf(2);
  const std::string text = "say \"hi\" \\n C:\\new [a], b; a -> b {c} = \xc3\xbc\n<&>";
  link(graph, 0, 1, text, 1, 0);
  EXPECT_EQ(descriptionOf(graph), R"(digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
1 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=black,label = ")" + text +
                                      R"(", comment="ID = 0"];
}
)");
}

/// A lattice of one link whose word is no XML.
Graph plainWordLattice() {
  Graph graph = latticeOf(2);
  addEdge(*graph.adjacency, 0, 1, {{"cost", 1.0}}, "plain", 0);
  return graph;
}

TEST(DotWriterLabels, OfAWordThatIsNoXmlSayNull) {
  Graph graph = plainWordLattice();
  PrintedText printed;
  EXPECT_EQ(labelsOf(graph), "NULL\n");
  EXPECT_EQ(printed.take(), "Failed to parse document\nFailed to parse document\n")
      << "once for the path's text, once for the label";
  EXPECT_EQ(graph.bestPathText, "NULL ");
}

TEST(DotWriterLabels, OfAnEmptyAttributeSayNull) {
  Graph graph = latticeOf(2);
  link(graph, 0, 1, "", 1, 0);
  EXPECT_EQ(labelsOf(graph), "NULL\n");
  EXPECT_EQ(graph.bestPathText, "NULL ");
}

TEST(DotWriterLabels, ReadTheWordOnceForEachPathItLiesOnAndOnceForTheLabel) {
  const std::string failure = "Failed to parse document\n";
  Graph graph = plainWordLattice();
  select(graph, 0);
  {
    PrintedText printed;
    descriptionOf(graph);
    EXPECT_EQ(printed.take(), failure + failure + failure);
  }
  setSelectedEdge(graph, false, LayoutItem());
  graph.labelByValue = true;
  {
    PrintedText printed;
    descriptionOf(graph);
    EXPECT_EQ(printed.take(), failure) << "a value label needs no word";
  }
}

/// The words along the best path of a chain whose nodes have these times: link i is labelled i.
std::string wordsAlong(const std::vector<double>& times) {
  Graph graph = latticeOf(static_cast<int>(times.size()));
  for (std::size_t i = 0; i < times.size(); ++i) {
    graph.nodes[i].time = times[i];
    const int node = static_cast<int>(i);
    if (i + 1 < times.size()) link(graph, node, node + 1, std::to_string(i), 1, node);
  }
  descriptionOf(graph);
  return graph.bestPathText;
}

TEST(DotWriterPathTexts, AreInTheOrderOfTheStartNodesTimes) {
  EXPECT_EQ(wordsAlong({0.0, 0.5, 0.25, 1.0}), "0 2 1 ");
  EXPECT_EQ(wordsAlong({0.5, -0.25, 0.0, 1.0}), "1 2 0 ");
}

TEST(DotWriterPathTexts, KeepTheLastOfSeveralWordsAtOneTime) {
  EXPECT_EQ(wordsAlong({0.0, 0.5, 0.5, 1.0}), "0 2 ");
  EXPECT_EQ(wordsAlong({0.0, -0.0, 0.0, 1.0}), "2 ");
}

TEST(DotWriterPathTexts, PutInfiniteTimesAtTheEndsAndNotANumberLast) {
  EXPECT_EQ(wordsAlong({kNotANumber, kInfinity, -kInfinity, 0.5, 1.0}), "2 3 1 0 ");
  EXPECT_EQ(wordsAlong({kNotANumber, -kNotANumber, kInfinity, kInfinity, 0.5, 1.0}), "4 3 1 ");
  EXPECT_EQ(wordsAlong({0.5, kNotANumber, 0.25, -kNotANumber, 0.75, 1.0}), "2 0 4 3 ");
}

TEST(DotWriterPathTexts, ReplaceThoseOfTheLastDescription) {
  Graph graph = diamond();
  select(graph, 3);
  descriptionOf(graph);
  descriptionOf(graph);
  EXPECT_EQ(graph.bestPathText, "a c ");
  EXPECT_EQ(graph.selectedPathText, "b d ");

  graph.hasSelectedEdge = false;
  descriptionOf(graph);
  EXPECT_EQ(graph.selectedPathText, "");
  EXPECT_EQ(graph.selectedPathScore, 5) << "only a search through an edge sets it";
}

/// More than 1,000 nodes, with ids and values that a locale would group or give a comma.
Graph longLattice() {
  constexpr int kNodes = 1500;
  Graph graph = latticeOf(kNodes);
  for (int i = 0; i + 1 < kNodes; ++i) link(graph, i, i + 1, "w", i + 0.5, 12345000 + i);
  setShowBestPath(graph, true);
  graph.labelByValue = true;
  select(graph, 12345000);
  return graph;
}

class DotWriterUnderLocale : public testing::TestWithParam<const char*> {};

TEST_P(DotWriterUnderLocale, WritesNumbersAsInTheCLocale) {
  Graph graph = longLattice();
  const std::string expected = descriptionOf(graph);
  for (const char* line :
       {"\n1499 [shape=doublecircle, color=red,", "\n1498 [shape=doubleoctagon, color=blue,",
        "\n1234 -> 1235 [ color=blue, fontcolor=blue,label = \"1234.5\", "
        "comment=\"ID = 12346234\"];\n"})
    EXPECT_NE(expected.find(line), std::string::npos) << line;

  const ProcessLocale locale(GetParam());
  EXPECT_EQ(descriptionOf(graph), expected);

  const TemporaryFolder folder;
  const StandInDot dot;
  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_EQ(textOf("quorbel_graph.dot"), expected);
}

INSTANTIATE_TEST_SUITE_P(Of, DotWriterUnderLocale, testing::Values("de_DE.UTF-8", "en_US.UTF-8"),
                         [](const auto& locale) { return std::string(locale.param, 2); });

}  // namespace
}  // namespace quorbel
