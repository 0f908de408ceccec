#include "drawing/description.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"
#include "layout/dot_writer.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

TEST(EscapedLabel, IsTheTextItselfForDot) {
  for (const auto& [text, escaped] : {std::pair<std::string, std::string>{
                                          "plain <s> 'x' [b]; -> {0}", "plain <s> 'x' [b]; -> {0}"},
                                      {"say \"hi\"", "say \\\"hi\\\""},
                                      {"a\\nb\\N\\", "a\\\\nb\\\\N\\\\"},
                                      {"\\\"", "\\\\\\\""},
                                      {"R&D &lt;&#60;", "R&amp;D &amp;lt;&amp;#60;"},
                                      {"a\nb\tc\x7F", "a\u240Ab\u2409c\u2421"},
                                      {std::string("a\0b", 3), "a\u2400b"},
                                      {"\uFFFE", "\uFFFD"},
                                      {"\xFC"
                                       "ber",
                                       "\u00FCber"},
                                      {"", ""}})
    EXPECT_EQ(escapedLabel(text), escaped) << text;
}

TEST(EscapedLabel, GoesOnInFurtherLinesWhereItIsLong) {
  const std::string line(8192, 'a');
  EXPECT_EQ(escapedLabel(line), line);
  EXPECT_EQ(escapedLabel(line + "b"), line + "\\\nb");
  const std::string odd = line.substr(1) + "\"";  // an escape is not broken
  EXPECT_EQ(escapedLabel(odd + "\"" + line),
            line.substr(1) + "\\\"\\\n\\\"" + line.substr(2) + "\\\naa");
}

TEST(Description, AsksForLabelsShapesAndColours) {
  WordLattice lattice;
  readText(
      "N=4 L=5\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=2 W=b a=-1\n"
      "J=2 S=2 E=3 W=c a=-1\nJ=3 S=1 E=3 W=d a=-9\nJ=4 S=0 E=1 W=e a=-9\n",
      lattice);
  DrawingMarks marks;
  marks.best = LatticePath{-3, {0, 2, 4}};
  marks.chosenLink = 3;
  marks.throughLink = LatticePath{-10, {0, 3}};
  const std::vector<std::string> labels = {"a", "\"", "b", "d", "c"};
  const std::string ends =
      "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
      "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n";
  const std::string through = "1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];\n";
  EXPECT_EQ(descriptionOf(lattice, labels, marks),
            "digraph G {\nrankdir=LR;\n" + ends + through +
                "2 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n"
                "1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n"
                "0 -> 1 [color=blue, fontcolor=blue, label=\"a\"];\n"
                "0 -> 1 [color=black, label=\"\\\"\"];\n"
                "1 -> 2 [color=blue, fontcolor=blue, label=\"b\"];\n"
                "1 -> 3 [color=red, fontcolor=red, label=\"d\"];\n"
                "2 -> 3 [color=blue, fontcolor=blue, label=\"c\"];\n}\n");
  marks.best.reset();
  EXPECT_EQ(descriptionOf(lattice, labels, marks),
            "digraph G {\nrankdir=LR;\n" + ends + through +
                "0 -> 1 [color=cyan, fontcolor=cyan, label=\"a\"];\n"
                "0 -> 1 [color=black, label=\"\\\"\"];\n"
                "1 -> 2 [color=black, label=\"b\"];\n"
                "1 -> 3 [color=red, fontcolor=red, label=\"d\"];\n"
                "2 -> 3 [color=black, label=\"c\"];\n}\n");
}

/// What the viewer asks `dot` for, without the ids that only it reads back.
std::string viewersDescription(Graph& graph) {
  std::ostringstream stream;
  writeDescription(graph, stream);
  const std::string text =
      std::regex_replace(stream.str(), std::regex(", comment=\"ID = \\d+\""), "");
  return std::regex_replace(text, std::regex(" \\[ (color=[^\\n]*),label = \""), " [$1, label=\"");
}

void compareWithViewer(unsigned seed, const RandomOptions& options) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  const TemporaryFolder folder;
  std::mt19937 random(seed);
  for (int round = 0; round < 800; ++round) {
    const RandomLattice plain = randomLattice(random, options);
    WordLattice lattice;
    readText(plain.text(), lattice);
    ViewerView view = openInViewer(importOf(plain.text()));
    ASSERT_EQ(view.error, "");
    std::vector<LatticePath> paths;
    DrawingMarks marks;
    const std::vector<double> scores = *scoresNamed(lattice, kTotalName);
    view.graph.showBestPath = round % 2 == 0;
    if (view.graph.showBestPath) {
      ASSERT_EQ(findBestPaths(lattice, scores, 1, paths), "");
      marks.best = paths[0];
    }
    const std::size_t chosen = random() % lattice.links.size();
    if (LatticePath path;
        round % 3 == 0 && findBestPathThrough(lattice, scores, chosen, path).empty()) {
      marks.chosenLink = chosen;
      marks.throughLink = path;
      LayoutItem item;
      item.linkId = lattice.links[chosen].id;
      item.startNode = lattice.links[chosen].start;
      item.endNode = lattice.links[chosen].end;
      setSelectedEdge(view.graph, true, item);
    }
    ASSERT_EQ(descriptionOf(lattice, view.labels, marks), viewersDescription(view.graph))
        << plain.text();
  }
}

TEST(Description, IsTheViewersWhereWordsAreOrdinary) { compareWithViewer(9101, RandomOptions()); }

TEST(Description, IsTheViewersWherePathsAreEquallyGood) {
  RandomOptions options;
  options.hasTies = true;
  compareWithViewer(9102, options);
}

}  // namespace
}  // namespace quorbel
