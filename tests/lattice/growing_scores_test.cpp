// Maps that grow name by name hold what plain maps would.

#include "lattice/growing_scores.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

#include "graph_text.h"

namespace quorbel {
namespace {

using PlainMap = std::map<std::string, double>;

std::string textOf(const PlainMap& plain) {
  ScoreMap scores;
  for (const auto& [name, score] : plain) scores[name] = score;
  return describeScores(scores);
}

/// Runs `round` with sizes around the number of names that a map takes one by one, and beyond.
template <typename Round>
void runRounds(unsigned seed, Round round) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (int i = 0; i < 2000 && !::testing::Test::HasFatalFailure(); ++i) round(random);
}

std::string someName(std::mt19937& random, int limit) {
  return "n" + std::to_string(std::uniform_int_distribution<int>(0, limit)(random));
}

TEST(GrowingScores, HoldTheLastScoreOfEachName) {
  runRounds(12021, [](std::mt19937& random) {
    ScoreMap scores;
    PlainMap plain;
    GrowingScores growing;
    const int count = std::uniform_int_distribution<int>(0, 120)(random);
    const int names = std::uniform_int_distribution<int>(1, 80)(random);
    for (int i = 0; i < count; ++i) {
      const std::string name = someName(random, names);
      growing.set(scores, name, i);
      plain[name] = i;
      if (i % 50 == 49) growing.finish(scores);
    }
    growing.finish(scores);
    ASSERT_EQ(describeScores(scores), textOf(plain));
  });
}

TEST(GrowingScores, AreAddedNameByNameToZeroWhereANameIsNew) {
  runRounds(12022, [](std::mt19937& random) {
    ScoreMap scores;
    ScoreMap further;
    PlainMap plain;
    for (int i = std::uniform_int_distribution<int>(0, 40)(random); i > 0; --i) {
      const std::string name = someName(random, 60);
      scores[name] = plain[name] = i;
    }
    for (int i = std::uniform_int_distribution<int>(0, 40)(random); i > 0; --i)
      further[someName(random, 60)] = i % 3 == 0 ? -0.0 : -i;
    for (const auto& [name, score] : further) plain[name] += score;
    addScores(scores, further);
    ASSERT_EQ(describeScores(scores), textOf(plain));
  });
}

}  // namespace
}  // namespace quorbel
