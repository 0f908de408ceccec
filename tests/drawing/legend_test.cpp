#include "drawing/legend.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

const std::vector<LegendEntry> kEntries = {{"best path", "color=blue"},
                                           {"\"x\"", "color=black, style=dashed"}};

std::string endNode(const std::string& name, const std::string& place) {
  return "\"legend " + name +
         "\" [label=\"\", style=invis, width=0.06, height=0.12, margin=0, pos=\"" + place +
         "\"];\n";
}

TEST(Legend, HasALineWithItsTextForEachEntry) {
  const Legend legend = legendOf(kEntries, -30, 200);
  EXPECT_EQ(
      legend.statements,
      endNode("0", "0,-50") + endNode("0 end", "63,-50") +
          "\"legend 0\" -> \"legend 0 end\" [color=blue, label=\"best path\", lp=\"31.5,-40\", "
          "pos=\"e,63,-50 0,-50 18.333,-50 36.667,-50 55,-50\"];\n" +
          endNode("1", "77,-50") + endNode("1 end", "117,-50") +
          "\"legend 1\" -> \"legend 1 end\" [color=black, style=dashed, label=\"\\\"x\\\"\", "
          "lp=\"97,-40\", pos=\"e,117,-50 77,-50 87.667,-50 98.333,-50 109,-50\"];\n");
  EXPECT_EQ(legend.width, 117);
  EXPECT_EQ(legend.height, 24);
}

TEST(Legend, GoesOverSeveralRowsWhereItIsTooWide) {
  EXPECT_EQ(legendOf(kEntries, 0, 117).height, 24);
  const Legend legend = legendOf(kEntries, 0, 116.9);
  EXPECT_EQ(legend.width, 63);
  EXPECT_EQ(legend.height, 48);
  EXPECT_NE(legend.statements.find("pos=\"63,-20\""), std::string::npos) << legend.statements;
  EXPECT_NE(legend.statements.find("pos=\"e,40,-44 0,-44 "), std::string::npos);
}

TEST(Legend, TakesNoRoomWithoutEntries) {
  const Legend legend = legendOf({}, 0, 100);
  EXPECT_EQ(legend.statements, "");
  EXPECT_EQ(legend.width, 0);
  EXPECT_EQ(legend.height, 0);
}

}  // namespace
}  // namespace quorbel
