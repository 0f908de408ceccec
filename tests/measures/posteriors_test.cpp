#include "measures/posteriors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"

namespace quorbel {
namespace {

TEST(Posteriors, AreSumsOverAllPaths) {
  constexpr unsigned kSeed = 8101;
  SCOPED_TRACE("seed 8101");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 3000; ++round) {
    RandomOptions options;
    options.hasPositive = round % 3 == 0;
    const RandomLattice plain = randomLattice(random, options);
    WordLattice lattice;
    readText(plain.text(), lattice);
    double scale = std::max(1.0, plain.languageScale);
    if (round % 2 == 0) {
      scale = 0.25 * (1 + round % 9);
      lattice.scales.posterior = scale;
      computePosteriors(lattice);
    }
    double all = 0.0;
    std::map<int, double> through;  // by link id
    std::map<int, double> best;
    for (const PlainPath& path : allPaths(plain)) {
      all += std::exp(path.total / scale);
      for (const std::size_t index : path.links) {
        const int id = plain.links[index].id;
        through[id] += std::exp(path.total / scale);
        const auto [known, isNew] = best.emplace(id, path.total);
        if (!isNew) known->second = std::max(known->second, path.total);
      }
    }
    ASSERT_EQ(lattice.links.size(), plain.links.size());
    const std::vector<double> bestScores = bestScoresThrough(lattice);
    for (std::size_t i = 0; i < lattice.links.size(); ++i) {
      const WordLink& link = lattice.links[i];
      if (through.count(link.id) == 0) {
        EXPECT_EQ(link.logPosterior, kLowestLogPosterior) << plain.text();
        EXPECT_EQ(bestScores[i], -std::numeric_limits<double>::infinity()) << plain.text();
        continue;
      }
      ASSERT_NEAR(link.logPosterior, std::log(through[link.id] / all), kExact) << plain.text();
      ASSERT_LE(link.logPosterior, 0.0);
      ASSERT_NEAR(bestScores[i], best[link.id], kExact) << plain.text();
    }
  }
}

TEST(Posteriors, AreScaledAsTheLanguageModelIsWhenThatIsAboveOne) {
  for (const auto& [lmscale, expected] : {std::pair<std::string, double>{"4", 2.0}, {"0.5", 1.0}}) {
    WordLattice lattice;
    readText("lmscale=" + lmscale +
                 "\nN=2 L=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=x l=-1\nJ=1 S=0 E=1 W=y l=-3\n",
             lattice);
    // The difference of the links' totals is 2 * lmscale, and divided by lmscale it is 2 again.
    EXPECT_NEAR(lattice.links[0].logPosterior, -std::log1p(std::exp(-expected)), kExact);
  }
}

TEST(Posteriors, CountWhatIsOneInAMillionMillions) {
  WordLattice lattice;
  readText(
      "N=2 L=3\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=x a=-1000\nJ=1 S=0 E=1 W=y a=-1028\n"
      "J=2 S=0 E=1 W=z a=-6000\n",
      lattice);
  EXPECT_NEAR(lattice.links[0].logPosterior, -std::log1p(std::exp(-28.0)), 1e-13);
  EXPECT_NEAR(lattice.links[1].logPosterior, -28.0, 1e-9);
  EXPECT_NEAR(lattice.links[2].logPosterior, -5000.0, 1e-9);
}

TEST(Posteriors, AreNotThereInACyclicNetwork) {
  WordLattice lattice;
  readText("start=0 end=1\nN=2 L=2\nI=0\nI=1\nJ=0 S=0 E=1 W=a\nJ=1 S=0 E=0 W=b\n", lattice);
  EXPECT_TRUE(lattice.isCyclic);
  EXPECT_EQ(scoreNamesOf(lattice), std::vector<std::string>{"TOTAL"});
  EXPECT_EQ(scoresNamed(lattice, "post"), std::nullopt);
}

}  // namespace
}  // namespace quorbel
