#include "drawing/drawing_content.h"

#include <gtest/gtest.h>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

/// 0 says "a" on the best path, then "x" or, by way of 2, "b c"; score s ranks otherwise.
constexpr const char* kText =
    "N=5 L=6\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\nI=4 t=4\n"
    "J=0 S=0 E=1 W=<s> a=-1\nJ=1 S=0 E=1 W=a a=-2\nJ=2 S=1 E=2 W=b a=-5\nJ=3 S=1 E=3 W=x a=-1\n"
    "J=4 S=2 E=3 W=c a=-5 l=-9\nJ=5 S=3 E=4 W=d a=-1\n";

struct Shown {
  std::string error;
  std::vector<int> best;  ///< ids of links
  std::vector<int> oracle;
  std::vector<std::pair<std::string, std::string>> legend;
};

Shown shownWith(const std::string& reference, const std::string& scoreName = "") {
  WordLattice lattice;
  readText(kText, lattice);
  DrawingOptions options;
  options.reference = reference;
  options.scoreName = scoreName;
  DrawingContent content;
  Shown shown;
  shown.error = findContent(lattice, options, DrawingStyle(), content);
  if (!content.marks.best || !content.marks.oracle) return shown;
  for (const std::size_t link : content.marks.best->links)
    shown.best.push_back(lattice.links[link].id);
  for (const std::size_t link : content.marks.oracle->links)
    shown.oracle.push_back(lattice.links[link].id);
  for (const LegendEntry& entry : content.legend) shown.legend.emplace_back(entry.text, entry.look);
  return shown;
}

using Ids = std::vector<int>;
using Entries = std::vector<std::pair<std::string, std::string>>;

const std::string kBlue = "color=blue, fontcolor=blue";
const std::string kDashedGreen = "color=darkgreen, fontcolor=darkgreen, style=dashed";
const std::string kDashedBlue = "color=blue, fontcolor=blue, style=dashed";

TEST(DrawingContent, MarksThePathNearestToTheReferenceBesideTheBest) {
  const Shown shown = shownWith(" b  c\td ");
  EXPECT_EQ(shown.error, "");
  EXPECT_EQ(shown.best, (Ids{0, 3, 5}));
  EXPECT_EQ(shown.oracle, (Ids{0, 2, 4, 5}));
  EXPECT_EQ(shown.legend, (Entries{{"best path: 2 errors", kBlue},
                                   {"oracle path: no errors", kDashedGreen},
                                   {"both", kDashedBlue}}));
}

TEST(DrawingContent, HasOneEntryWhereBothPathsAreOne) {
  const Shown shown = shownWith("x");
  EXPECT_EQ(shown.best, (Ids{0, 3, 5}));
  EXPECT_EQ(shown.oracle, (Ids{0, 3, 5}));
  EXPECT_EQ(shown.legend, (Entries{{"best and oracle path: 1 error", kDashedBlue}}));
}

TEST(DrawingContent, TakesTheBestPathByTheScoreThatIsAskedFor) {
  EXPECT_EQ(shownWith("a", "l").best, (Ids{0, 3, 5}));
  EXPECT_EQ(shownWith("a b c d", "post").legend.front().first, "best path: 3 errors");
}

TEST(DrawingContent, SaysWhyThereIsNothingToMark) {
  EXPECT_EQ(shownWith("a", "q").error, "no link has the score \"q\"; there are: TOTAL, post, a, l");
}

TEST(DrawingContent, MarksNothingUnlessAsked) {
  WordLattice lattice;
  readText(kText, lattice);
  DrawingContent content;
  EXPECT_EQ(findContent(lattice, DrawingOptions(), DrawingStyle(), content), "");
  EXPECT_FALSE(content.marks.best || content.marks.oracle || content.marks.throughLink);
  EXPECT_TRUE(content.legend.empty());
  EXPECT_EQ(content.labels.size(), 6U);
}

}  // namespace
}  // namespace quorbel
