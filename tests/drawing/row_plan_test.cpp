#include "drawing/row_plan.h"

#include <gtest/gtest.h>

#include <random>

namespace quorbel {
namespace {

using Rows = std::vector<std::size_t>;

/// Pieces that share a node of width 2 with the next, each so much longer than it.
std::vector<Extent> chained(const std::vector<double>& lengths) {
  std::vector<Extent> pieces;
  double left = 5.0;
  for (const double length : lengths) {
    pieces.push_back({left, left + length + 2.0, 0.0, 1.0});
    left += length;
  }
  return pieces;
}

TEST(RowPlan, PutsAsManyPiecesIntoARowAsFit) {
  const std::vector<Extent> pieces = chained({10, 20, 30, 10, 15, 4});
  EXPECT_EQ(rowsOf(pieces, 91), Rows{0});
  EXPECT_EQ(rowsOf(pieces, 90.9), (Rows{0, 5}));
  EXPECT_EQ(rowsOf(pieces, 62), (Rows{0, 3}));
  EXPECT_EQ(rowsOf(pieces, 61.9), (Rows{0, 2}));
  EXPECT_EQ(rowsOf(pieces, 57), (Rows{0, 2, 5}));
  EXPECT_EQ(rowsOf(pieces, 32), (Rows{0, 2, 3}));
}

TEST(RowPlan, GivesAPieceThatDoesNotFitARowOfItsOwn) {
  EXPECT_EQ(rowsOf(chained({10, 50, 10, 10}), 30), (Rows{0, 1, 2}));
  EXPECT_EQ(rowsOf(chained({50, 50}), 1), (Rows{0, 1}));
  EXPECT_EQ(rowsOf({}, 1), Rows());
}

TEST(RowPlan, HasNoRowThatIsTooWideNorOneThatCouldTakeMore) {
  constexpr unsigned kSeed = 9203;
  SCOPED_TRACE("seed 9203");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 500; ++round) {
    std::vector<double> lengths(1 + random() % 12);
    for (double& length : lengths) length = 1.0 + random() % 40;
    const std::vector<Extent> pieces = chained(lengths);
    const double width = 3.0 + random() % 80;
    Rows rows = rowsOf(pieces, width);
    ASSERT_EQ(rows.front(), 0U);
    rows.push_back(pieces.size());
    for (std::size_t row = 0; row + 1 < rows.size(); ++row) {
      const double left = pieces[rows[row]].left;
      ASSERT_LT(rows[row], rows[row + 1]);
      if (rows[row + 1] > rows[row] + 1) {
        ASSERT_LE(pieces[rows[row + 1] - 1].right - left, width);
      }
      if (rows[row + 1] < pieces.size()) {
        ASSERT_GT(pieces[rows[row + 1]].right - left, width);
      }
    }
  }
}

}  // namespace
}  // namespace quorbel
