#include "drawing/paper_layout.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

/// 0 -> 1, two links from 1 to 2, and a loop at 2, the end; nodes of 20 points.
WordLattice smallLattice() {
  WordLattice lattice;
  lattice.nodes.resize(3);
  for (const auto& [start, end] : {std::pair(0, 1), {1, 2}, {1, 2}, {2, 2}}) {
    WordLink& link = lattice.links.emplace_back();
    link.start = start;
    link.end = end;
  }
  return lattice;
}

/// As `dot` lays it out, but for lines that are rounder there.
std::string smallLayout() {
  const std::string size = "height=0.27777777777777779, width=0.27777777777777779";
  return "digraph G {\n\tgraph [bb=\"0,0,200,60\", rankdir=LR];\n\tnode [label=\"\\N\"];\n"
         "\t0 [" +
         size +
         ", pos=\"10,30\"];\n"
         "\t1 [" +
         size +
         ", pos=\"60,30\"];\n"
         "\t0 -> 1 [label=a, lp=\"35,40\", pos=\"e,50,30 20,30 25,30 30,30 40,30\"];\n"
         "\t2 [" +
         size +
         ", pos=\"160,30\"];\n"
         "\t1 -> 2 [color=blue, label=b, lp=\"110,50\", pos=\"e,150,32 70,32 90,44 130,44 "
         "140,36\"];\n"
         "\t1 -> 2 [label=c, lp=\"110,20\", pos=\"e,150,28 70,28 90,16 130,16 140,24\"];\n"
         "\t2 -> 2 [label=d, lp=\"160,55\", pos=\"e,163,40 157,40 150,50 170,50 165,45\"];\n"
         "}\n";
}

std::string node(const std::string& name, const std::string& place, const std::string& label = "") {
  return "\"" + name + "\" [height=\"0.27777777777777779\", " +
         (label.empty() ? "" : "label=\"" + label + "\", ") + "pos=\"" + place +
         "\", width=\"0.27777777777777779\"];\n";
}

PaperLayout placed(const PaperOptions& options, const std::vector<LegendEntry>& legend = {}) {
  const auto layout = putOnPaper(smallLayout(), sectionsOf(smallLattice()), legend, options);
  EXPECT_TRUE(layout);
  return layout.value_or(PaperLayout());
}

TEST(PaperLayout, IsTheDrawingItselfWhereItFits) {
  PaperOptions options;
  options.width = 172.88;  // 170 and what lines are wide
  const PaperLayout layout = placed(options);
  EXPECT_EQ(layout.scale, 1.0);
  EXPECT_EQ(layout.description,
            "digraph G {\n"
            "graph [layout=nop2, margin=0, pad=0.02, size=\"2.401,1.512!\"];\n"
            "node [label=\"\\N\"];\n" +
                node("0", "10,-34") + node("1", "60,-34") +
                "\"0\" -> \"1\" [label=\"a\", lp=\"35,-24\", "
                "pos=\"e,50,-34 20,-34 25,-34 30,-34 40,-34\"];\n" +
                node("2", "160,-34") +
                "\"1\" -> \"2\" [color=\"blue\", label=\"b\", lp=\"110,-14\", "
                "pos=\"e,150,-32 70,-32 90,-20 130,-20 140,-28\"];\n"
                "\"1\" -> \"2\" [label=\"c\", lp=\"110,-44\", "
                "pos=\"e,150,-36 70,-36 90,-48 130,-48 140,-40\"];\n"
                "\"2\" -> \"2\" [label=\"d\", lp=\"160,-9\", "
                "pos=\"e,163,-24 157,-24 150,-14 170,-14 165,-19\"];\n"
                "}\n");
}

TEST(PaperLayout, GoesOverRowsWhereItDoesNot) {
  PaperOptions options;
  options.fontSize = 7.0;
  options.width = 86.43;
  const PaperLayout layout = placed(options);
  EXPECT_EQ(layout.scale, 0.5);
  EXPECT_EQ(layout.description,
            "digraph G {\n"
            "graph [layout=nop2, margin=0, pad=0.02, size=\"0.853,1.298!\"];\n"
            "node [label=\"\\N\"];\n" +
                node("0", "10,-19") + node("1", "60,-19") + node("1 again", "10,-73", "1") +
                "\"0\" -> \"1\" [label=\"a\", lp=\"35,-9\", "
                "pos=\"e,50,-19 20,-19 25,-19 30,-19 40,-19\"];\n" +
                node("2", "110,-73") +
                "\"1 again\" -> \"2\" [color=\"blue\", label=\"b\", lp=\"60,-53\", "
                "pos=\"e,100,-71 20,-71 40,-59 80,-59 90,-67\"];\n"
                "\"1 again\" -> \"2\" [label=\"c\", lp=\"60,-83\", "
                "pos=\"e,100,-75 20,-75 40,-87 80,-87 90,-79\"];\n"
                "\"2\" -> \"2\" [label=\"d\", lp=\"110,-48\", "
                "pos=\"e,113,-63 107,-63 100,-53 120,-53 115,-58\"];\n"
                "}\n");
}

TEST(PaperLayout, IsSmallerWhereASectionAloneIsTooWide) {
  PaperOptions options;
  options.width = 61.44;  // half of 120 and what lines are wide
  const PaperLayout layout = placed(options);
  EXPECT_NEAR(layout.scale, 0.5, 1e-9);
  EXPECT_NE(layout.description.find("size=\"0.853,"), std::string::npos) << layout.description;
  EXPECT_NE(layout.description.find("\"1 again\""), std::string::npos);
}

TEST(PaperLayout, HasLettersOfTheSizeThatIsAskedFor) {
  PaperOptions options;
  options.fontSize = 28.0;
  options.pixelsPerInch = 300;
  const PaperLayout layout = placed(options);
  EXPECT_EQ(layout.scale, 2.0);
  EXPECT_NE(layout.description.find("size=\"4.802,3.024!\", dpi=300];"), std::string::npos)
      << layout.description;
}

TEST(PaperLayout, HasTheLegendBelowTheLastRow) {
  const std::vector<LegendEntry> entries = {{"best", "color=blue"}, {"oracle", "style=dashed"}};
  PaperOptions options;
  const std::string one = placed(options, entries).description;
  EXPECT_NE(one.find(legendOf(entries, -63, 170).statements + "}\n"), std::string::npos) << one;
  options.width = 122.88;
  const std::string two = placed(options, entries).description;
  EXPECT_NE(two.find(legendOf(entries, -102, 120).statements + "}\n"), std::string::npos) << two;
}

TEST(PaperLayout, IsNoneOfAnotherLattice) {
  const LatticeSections sections = sectionsOf(smallLattice());
  for (const char* text :
       {"", "digraph G {\n", "digraph G {\n3 [pos=\"1,2\"];\n}\n",
        "digraph G {\n0 -> 3 [pos=\"1,2\"];\n}\n", "digraph G {\nx [pos=\"1,2\"];\n}\n"})
    EXPECT_FALSE(putOnPaper(text, sections, {}, PaperOptions())) << text;
}

}  // namespace
}  // namespace quorbel
