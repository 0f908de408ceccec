#include "drawing/drawing_style.h"

#include <gtest/gtest.h>

#include "drawing/description.h"
#include "formats/lattice_text.h"

namespace quorbel {
namespace {

/// A lattice with a best path 0 1 2 3, another path by the link d, and one by e.
std::string styledDescription(const DrawingStyle& style, const DrawingMarks& marks) {
  WordLattice lattice;
  readText(
      "N=4 L=6\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=2 W=b a=-1\n"
      "J=2 S=2 E=3 W=c a=-1\nJ=3 S=1 E=3 W=d a=-9\nJ=4 S=0 E=2 W=e a=-9\nJ=5 S=0 E=3 W=f a=-9\n",
      lattice);
  return descriptionOf(lattice, {"a", "e", "f", "b", "d", "c"}, marks, style);
}

DrawingMarks allMarks() {
  DrawingMarks marks;
  marks.best = LatticePath{-3, {0, 3, 5}};
  marks.oracle = LatticePath{-10, {1, 5}};
  marks.throughLink = LatticePath{-10, {0, 4}};
  marks.chosenLink = 4;
  return marks;
}

TEST(DrawingStyle, MarksTheOraclePathByDashes) {
  EXPECT_EQ(styledDescription({}, allMarks()),
            "digraph G {\nrankdir=LR;\n"
            "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
            "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
            "1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];\n"
            "2 [color=darkgreen, style=filled, fillcolor=palegreen];\n"
            "2 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n"
            "1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n"
            "0 -> 1 [color=blue, fontcolor=blue, label=\"a\"];\n"
            "0 -> 2 [color=darkgreen, fontcolor=darkgreen, style=dashed, label=\"e\"];\n"
            "0 -> 3 [color=black, label=\"f\"];\n"
            "1 -> 2 [color=blue, fontcolor=blue, label=\"b\"];\n"
            "1 -> 3 [color=red, fontcolor=red, label=\"d\"];\n"
            "2 -> 3 [color=blue, fontcolor=blue, style=dashed, label=\"c\"];\n}\n");
}

TEST(DrawingStyle, TellsMarksWithoutColours) {
  DrawingStyle style;
  style.isMonochrome = true;
  style.boldFont = "Some Bold";
  EXPECT_EQ(styledDescription(style, allMarks()),
            "digraph G {\nrankdir=LR;\n"
            "0 [shape=doublecircle, color=black, style=filled, fillcolor=lightgrey];\n"
            "3 [shape=doublecircle, color=black, style=filled, fillcolor=lightgrey];\n"
            "1 [shape=doubleoctagon, color=black, style=filled, fillcolor=white];\n"
            "2 [style=dashed];\n"
            "2 [shape=doubleoctagon, color=black, style=filled, fillcolor=lightgrey];\n"
            "1 [shape=doubleoctagon, color=black, style=filled, fillcolor=lightgrey];\n"
            "0 -> 1 [color=black, penwidth=2.5, fontname=\"Some Bold\", label=\"a\"];\n"
            "0 -> 2 [color=black, style=dashed, label=\"e\"];\n"
            "0 -> 3 [color=black, label=\"f\"];\n"
            "1 -> 2 [color=black, penwidth=2.5, fontname=\"Some Bold\", label=\"b\"];\n"
            "1 -> 3 [color=black, penwidth=2.5, style=dotted, label=\"d\"];\n"
            "2 -> 3 [color=black, penwidth=2.5, fontname=\"Some Bold\", style=dashed, "
            "label=\"c\"];\n}\n");
  DrawingMarks marks;
  marks.throughLink = allMarks().throughLink;
  EXPECT_NE(
      styledDescription(style, marks).find("0 -> 1 [color=black, style=dotted, label=\"a\"];\n"),
      std::string::npos);
}

TEST(DrawingStyle, AsksForLittleRoomAndAFont) {
  DrawingStyle style;
  style.isCompact = true;
  style.isTight = true;
  style.font = "DejaVu Sans";
  DrawingMarks marks;
  marks.best = allMarks().best;
  const std::string text = styledDescription(style, marks);
  EXPECT_EQ(text.substr(0, text.find("0 -> 1")),
            "digraph G {\nrankdir=LR;\n"
            "graph [margin=0, pad=0.02];\n"
            "graph [ranksep=0.12, nodesep=0.1];\n"
            "node [width=0.3, height=0.3, margin=\"0.02,0.01\"];\n"
            "edge [arrowsize=0.7];\n"
            "node [fontname=\"DejaVu Sans\"];\n"
            "edge [fontname=\"DejaVu Sans\"];\n"
            "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
            "3 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
            "2 [color=blue, style=filled, fillcolor=yellow];\n"
            "1 [color=blue, style=filled, fillcolor=yellow];\n");
}

TEST(DrawingStyle, NamesFamilyAndWeightInAnSvg) {
  EXPECT_EQ(boldFontOf("DejaVu Sans"), "DejaVu Sans Bold");
  EXPECT_EQ(boldFontOf(""), "Times-Bold");
  const std::string svg =
      "<text font-family=\"A\">a</text><text font-family=\"A Bold\" x=\"1\">b"
      "</text><text font-family=\"A Bold\">font-family=&quot;A Bold</text>";
  EXPECT_EQ(svgWithFamilies(svg, "A"),
            "<text font-family=\"A\">a</text><text font-family=\"A\" font-weight=\"bold\" x=\"1\">b"
            "</text><text font-family=\"A\" font-weight=\"bold\">font-family=&quot;A Bold</text>");
  EXPECT_EQ(svgWithFamilies(svg, ""), svg);
}

}  // namespace
}  // namespace quorbel
