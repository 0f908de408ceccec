#include "layout/dot_drawing.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

/// The drawing with these statements, in a box of 200 by 100 points.
DotDrawing drawingOf(const std::string& statements) {
  const auto drawing = readDotDrawing(
      "digraph G {\n\tgraph [bb=\"0,0,200,100\",\n\t\trankdir=LR\n\t];\n" + statements + "}\n");
  EXPECT_TRUE(drawing) << statements;
  return drawing.value_or(DotDrawing());
}

DrawnNode nodeOf(const std::string& attributes) {
  const DotDrawing drawing = drawingOf("\t7\t[" + attributes + "];\n");
  EXPECT_EQ(drawing.nodes.size(), 1u);
  return drawing.nodes.empty() ? DrawnNode() : drawing.nodes[0];
}

DrawnEdge edgeOf(const std::string& attributes) {
  const DotDrawing drawing = drawingOf("\t3 -> 17\t[" + attributes + "];\n");
  EXPECT_EQ(drawing.edges.size(), 1u);
  return drawing.edges.empty() ? DrawnEdge() : drawing.edges[0];
}

/// "1,2 3,4.5" for points.
std::string shown(const std::vector<LayoutPoint>& points) {
  std::ostringstream text;
  text.precision(10);
  for (const LayoutPoint& point : points)
    text << (text.str().empty() ? "" : " ") << point.x << ',' << point.y;
  return text.str();
}

TEST(DotDrawing, HasTheBoundingBox) {
  const auto drawing =
      readDotDrawing("digraph G {\n\tgraph [bb=\"-1.5,2,1.2346e+05,171.29\"];\n}\n");
  ASSERT_TRUE(drawing);
  EXPECT_EQ(shown({drawing->bottomLeft, drawing->topRight}), "-1.5,2 123460,171.29");
  EXPECT_TRUE(drawing->nodes.empty());
  EXPECT_TRUE(drawing->edges.empty());
}

TEST(DotDrawing, NodeWithoutStyleIsABlackEllipse) {
  const DrawnNode node = nodeOf("height=0.5,\n\t\tpos=\"210,55.286\",\n\t\twidth=0.75");
  EXPECT_EQ(shown({node.centre}), "210,55.286");
  EXPECT_DOUBLE_EQ(node.width, 54.0);
  EXPECT_DOUBLE_EQ(node.height, 36.0);
  EXPECT_EQ(node.shape, NodeShape::Ellipse);
  EXPECT_EQ(node.colour, "black");
  EXPECT_EQ(node.fillColour, "");
  EXPECT_EQ(node.fontColour, "black");
  ASSERT_EQ(node.label.size(), 1u);
  EXPECT_EQ(node.label[0].text, "7");
}

TEST(DotDrawing, NodeHasTheShapesAndColoursOfItsStyle) {
  const DrawnNode end = nodeOf(
      "color=darkorange,\n\t\tfillcolor=lightgrey,\n\t\theight=0.61111,\n\t\tpos=\"22,89.286\",\n"
      "\t\tshape=doublecircle,\n\t\tstyle=filled,\n\t\twidth=0.61111");
  EXPECT_EQ(end.shape, NodeShape::DoubleCircle);
  EXPECT_EQ(end.colour, "darkorange");
  EXPECT_EQ(end.fillColour, "lightgrey");
  EXPECT_NEAR(end.width, 44.0, 0.001);

  const DrawnNode onPath = nodeOf(
      "color=red,\n\t\tfillcolor=cyan,\n\t\tpos=\"1,2\",\n\t\tshape=doubleoctagon,\n\t\tstyle="
      "filled");
  EXPECT_EQ(onPath.shape, NodeShape::DoubleOctagon);
  EXPECT_EQ(onPath.fillColour, "cyan");
  EXPECT_EQ(nodeOf("fillcolor=cyan,\n\t\tpos=\"1,2\"").fillColour, "");
  EXPECT_EQ(nodeOf("color=red,\n\t\tpos=\"1,2\",\n\t\tstyle=filled").fillColour, "red");
  EXPECT_EQ(nodeOf("pos=\"1,2\",\n\t\tstyle=filled").fillColour, "lightgrey");
}

TEST(DotDrawing, NodeWithoutPlaceIsLeftOut) {
  EXPECT_TRUE(drawingOf("\t7\t[height=0.5,\n\t\twidth=0.75];\n").nodes.empty());
}

TEST(DotDrawing, DefaultsAreNoNodes) {
  const DotDrawing drawing = drawingOf("\tnode [label=\"\\N\"];\n\tedge [pos=\"1,2\"];\n");
  EXPECT_TRUE(drawing.nodes.empty());
  EXPECT_TRUE(drawing.edges.empty());
}

TEST(DotDrawing, EdgeHasLineLabelAndColours) {
  const DrawnEdge edge = edgeOf(
      "color=cyan,\n\t\tcomment=\"ID = 5\",\n\t\tfontcolor=red,\n\t\tlabel=NULL,\n"
      "\t\tlp=\"313,112.79\",\n\t\tpos=\"e,388.38,75.261 241.23,108.69 272.89,103.54 323.92,94.324 "
      "367,82.286\"");
  ASSERT_EQ(edge.splines.size(), 1u);
  EXPECT_EQ(shown(edge.splines[0].points), "241.23,108.69 272.89,103.54 323.92,94.324 367,82.286");
  ASSERT_TRUE(edge.splines[0].endTip);
  EXPECT_EQ(shown({*edge.splines[0].endTip}), "388.38,75.261");
  EXPECT_FALSE(edge.splines[0].startTip);
  EXPECT_EQ(edge.colour, "cyan");
  EXPECT_EQ(edge.fontColour, "red");
  EXPECT_EQ(shown({edge.labelCentre}), "313,112.79");
  ASSERT_EQ(edge.label.size(), 1u);
  EXPECT_EQ(edge.label[0].text, "NULL");
  EXPECT_EQ(edgeOf("pos=\"0,0 1,1 2,2 3,3\"").colour, "black");
  EXPECT_EQ(edgeOf("pos=\"0,0 1,1 2,2 3,3\"").fontColour, "black");
}

TEST(DotDrawing, LinesMayBeBrokenOrThickAndLettersBold) {
  const DrawnEdge plain = edgeOf("pos=\"0,0 1,1 2,2 3,3\"");
  EXPECT_EQ(plain.lineWidth, 1.0);
  EXPECT_EQ(plain.pattern, LinePattern::Solid);
  EXPECT_FALSE(plain.isBold);
  const DrawnEdge thick = edgeOf("fontname=\"Times-Bold\", penwidth=2.5, style=dashed");
  EXPECT_EQ(thick.lineWidth, 2.5);
  EXPECT_EQ(thick.pattern, LinePattern::Dashed);
  EXPECT_TRUE(thick.isBold);
  EXPECT_EQ(edgeOf("style=dotted").pattern, LinePattern::Dotted);
  EXPECT_FALSE(edgeOf("fontname=\"Boldly\"").isBold);
  EXPECT_FALSE(edgeOf("fontname=Bold").isBold);
  EXPECT_EQ(nodeOf("pos=\"1,2\", style=dashed").pattern, LinePattern::Dashed);
  EXPECT_EQ(nodeOf("pos=\"1,2\", style=filled").pattern, LinePattern::Solid);
}

TEST(DotDrawing, NodeThatIsInvisibleIsLeftOut) {
  EXPECT_TRUE(drawingOf("\t7\t[pos=\"1,2\", style=invis];\n").nodes.empty());
}

TEST(DotDrawing, SplineMayHaveArrowHeadsAtBothEndsOrNone) {
  const DrawnEdge both = edgeOf("pos=\"s,1,2 e,9,8 0,0 1,1 2,2 3,3\"");
  ASSERT_EQ(both.splines.size(), 1u);
  EXPECT_EQ(shown({both.splines[0].startTip.value(), both.splines[0].endTip.value()}), "1,2 9,8");
  const DrawnEdge none = edgeOf("pos=\"0,0 1,1 2,2 3,3\"");
  ASSERT_EQ(none.splines.size(), 1u);
  EXPECT_FALSE(none.splines[0].startTip);
  EXPECT_FALSE(none.splines[0].endTip);
}

TEST(DotDrawing, EdgeMayHaveSeveralSplines) {
  const DrawnEdge edge = edgeOf("pos=\"0,0 1,1 2,2 3,3;e,9,9 4,4 5,5 6,6 7,7\"");
  ASSERT_EQ(edge.splines.size(), 2u);
  EXPECT_EQ(shown(edge.splines[1].points), "4,4 5,5 6,6 7,7");
  EXPECT_FALSE(edge.splines[0].endTip);
  EXPECT_TRUE(edge.splines[1].endTip);
}

TEST(DotDrawing, SplineOfAnotherNumberOfPointsIsLeftOut) {
  for (const char* spline : {"", "e,1,2", "1,1", "1,1 2,2 3,3", "1,1 2,2 3,3 4,4 5,5", "rubbish"})
    EXPECT_TRUE(edgeOf(std::string("pos=\"") + spline + "\"").splines.empty()) << spline;
  EXPECT_TRUE(edgeOf("label=x").splines.empty());
}

TEST(DotDrawing, WrappedSplineIsPutTogether) {
  const DrawnEdge edge = edgeOf("pos=\"e,38.5,7 1,1 2,2 3,3 4,\\\n4 5,5 6,6 70\\\n.25,7\"");
  ASSERT_EQ(edge.splines.size(), 1u);
  EXPECT_EQ(shown(edge.splines[0].points), "1,1 2,2 3,3 4,4 5,5 6,6 70.25,7");
}

TEST(DotDrawing, NumbersMayHaveExponents) {
  const DrawnEdge edge = edgeOf(
      "lp=\"1.2e+05,1e-05\",\n\t\tpos=\"e,1.4e+05,-2e-3 1e5,1 1.1e+05,2 1.2E+05,3 1.3e+05,4\"");
  ASSERT_EQ(edge.splines.size(), 1u);
  EXPECT_EQ(shown(edge.splines[0].points), "100000,1 110000,2 120000,3 130000,4");
  EXPECT_EQ(shown({*edge.splines[0].endTip, edge.labelCentre}), "140000,-0.002 120000,1e-05");
}

TEST(DotDrawing, NumbersBeyondAnyDrawingAreCut) {
  EXPECT_EQ(shown({nodeOf("pos=\"1e999,-1e300\"").centre}), "1000000000,-1000000000");
  EXPECT_EQ(shown({nodeOf("pos=\"nan,inf\"").centre}), "0,0");
}

TEST(DotDrawing, LabelNeedsAPlace) {
  EXPECT_TRUE(edgeOf("label=x").label.empty());
  EXPECT_TRUE(edgeOf("label=\"\",\n\t\tlp=\"1,2\"").label.empty());
  EXPECT_TRUE(edgeOf("lp=\"1,2\"").label.empty());
}

TEST(DotDrawing, LabelIsTheTextThatDotDraws) {
  const auto label = [](const std::string& value) {
    const DrawnEdge edge = edgeOf("label=" + value + ",\n\t\tlp=\"1,2\"");
    std::string text;
    for (const LabelLine& line : edge.label) text += line.text + "|";
    return text;
  };
  EXPECT_EQ(label("s\u00e9lection"), "s\u00e9lection|");
  EXPECT_EQ(label("0.5"), "0.5|");
  EXPECT_EQ(label("\"a \\\"q\\\" \\\\ ] ; } { , = [x] // #\""), "a \"q\" \\ ] ; } { , = [x] // #|");
  EXPECT_EQ(label("\"\\\\\\\"n\\n\\\"\""), "\\\"n|\"|");
  EXPECT_EQ(label("\"a<b>&amp;\""), "a<b>&|");
  EXPECT_EQ(label("\"one\\ntwo\""), "one|two|");
  EXPECT_EQ(label("\"\\E \\T \\H \\G \\N\""), "3->17 3 17 G N|");
  EXPECT_EQ(label("\"wra\\\npped\""), "wrapped|");
}

TEST(DotDrawing, StatementsMayBeOnOneLineEach) {
  const auto drawing = readDotDrawing(
      "digraph G {\n  graph [bb=\"0,0,5,6\"];\n  node [label=\"\\N\"];\n"
      "  0 [pos=\"1,2\", width=\"0.75\", height=\"0.5\"];\n"
      "  0 -> 0 [color=red, label=\"x y\", lp=\"3,4\", pos=\"e,9,9 1,1 2,2 3,3 4,4\"];\n}\n");
  ASSERT_TRUE(drawing);
  ASSERT_EQ(drawing->nodes.size(), 1u);
  EXPECT_DOUBLE_EQ(drawing->nodes[0].width, 54.0);
  ASSERT_EQ(drawing->edges.size(), 1u);
  EXPECT_EQ(drawing->edges[0].label.at(0).text, "x y");
}

TEST(DotDrawing, OtherTextIsNoDrawing) {
  for (const char* text :
       {"", "{}", "graph G {\n\tgraph [bb=\"0,0,1,1\"];\n}\n", "digraph G {\n}\n",
        "digraph G {\n\t0\t[pos=\"1,2\"];\n}\n", "digraph G", "rubbish"})
    EXPECT_FALSE(readDotDrawing(text)) << text;
}

TEST(DotDrawing, TextThatIsCutShortIsNoDrawing) {
  const std::string whole =
      "digraph G {\n\tgraph [bb=\"0,0,5,6\"];\n\tnode [label=\"\\N\"];\n"
      "\t0\t[height=0.5,\n\t\tpos=\"1,2\",\n\t\twidth=0.75];\n"
      "\t0 -> 0\t[label=\"a}b\\\"]\",\n\t\tpos=\"e,9,9 1,1 \\\n2,2 3,3 4,4\"];\n}";
  EXPECT_TRUE(readDotDrawing(whole));
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_FALSE(readDotDrawing(whole.substr(0, size))) << whole.substr(0, size);
}

}  // namespace
}  // namespace quorbel
