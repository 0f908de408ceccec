#include "measures/scales.h"

#include <gtest/gtest.h>

#include <cmath>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

const std::string kScaled =
    "lmscale=2 wdpenalty=-1 acscale=0.5\nN=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
    "J=0 S=0 E=1 W=a a=-4 l=-1 r=-0.25\nJ=1 S=0 E=1 W=b a=-2 l=-2.5\nJ=2 S=1 E=2 a=-6\n";

/// Ids and totals of the links, in their order.
std::vector<std::pair<int, double>> totalsWith(const std::string& text, const ScaleChoice& choice,
                                               WordLattice& lattice) {
  lattice = WordLattice();
  readText(text, lattice);
  chooseScales(lattice, choice);
  std::vector<std::pair<int, double>> totals;
  for (const WordLink& link : lattice.links) totals.emplace_back(link.id, link.total);
  return totals;
}

using IdsAndTotals = std::vector<std::pair<int, double>>;

TEST(Scales, ReplaceThoseOfTheFile) {
  WordLattice lattice;
  EXPECT_EQ(totalsWith(kScaled, {}, lattice), (IdsAndTotals{{0, -5.25}, {1, -7}, {2, -3}}));
  ScaleChoice choice;
  choice.acoustic = 2.0;
  EXPECT_EQ(totalsWith(kScaled, choice, lattice), (IdsAndTotals{{1, -10}, {0, -11.25}, {2, -12}}));
  choice.language = 1.0;
  choice.wordPenalty = 3.0;
  EXPECT_EQ(totalsWith(kScaled, choice, lattice), (IdsAndTotals{{1, -3.5}, {0, -6.25}, {2, -12}}));
  EXPECT_EQ(lattice.scales.language, 1.0);
  EXPECT_NEAR(lattice.links[0].logPosterior, -std::log1p(std::exp(-2.75)), kExact);
  choice.posterior = 5.0;
  totalsWith(kScaled, choice, lattice);
  EXPECT_NEAR(lattice.links[0].logPosterior, -std::log1p(std::exp(-2.75 / 5.0)), kExact);
}

TEST(Scales, AreTakenInsteadOfTotalsOfTheFile) {
  const std::string text =
      "N=2 L=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='a'/> TOTAL=-9 a=-1\n"
      "J=1 S=0 E=1 W=<w in='b'/> TOTAL=-8 a=-2\n";
  WordLattice lattice;
  ScaleChoice choice;
  EXPECT_EQ(totalsWith(text, choice, lattice), (IdsAndTotals{{1, -8}, {0, -9}}));
  choice.acoustic = 3.0;
  EXPECT_EQ(totalsWith(text, choice, lattice), (IdsAndTotals{{0, -3}, {1, -6}}));
}

TEST(Scales, LeaveTotalsWithoutScoresButForTheWordPenalty) {
  const std::string text =
      "wdpenalty=-1\nN=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
      "J=0 S=0 E=1 W=<w in='a'/> TOTAL=-9\nJ=1 S=1 E=2 W=<w in='!NULL'/> TOTAL=-8\n";
  WordLattice lattice;
  ScaleChoice choice;
  choice.acoustic = 3.0;
  choice.language = 3.0;
  EXPECT_EQ(totalsWith(text, choice, lattice), (IdsAndTotals{{0, -9}, {1, -8}}));
  choice.wordPenalty = -3.0;
  EXPECT_EQ(totalsWith(text, choice, lattice), (IdsAndTotals{{0, -11}, {1, -8}}));
}

}  // namespace
}  // namespace quorbel
