#include "formats/label_formats.h"

#include <gtest/gtest.h>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

const std::string kTalk =
    "N=4 L=4\nI=0 t=0\nI=1 t=0.4\nI=2 t=0.45\nI=3 t=1.25\n"
    "J=0 S=0 E=1 W=\"good day\" a=-2\nJ=1 S=0 E=1 W=5th a=-3\nJ=2 S=1 E=2 W=!NULL a=-0.5\n"
    "J=3 S=2 E=3 W='\\\"quoted\\\"' a=-1.25\n";

class LabelFormats : public ::testing::Test {
 protected:
  LabelFormats() {
    readText(kTalk, m_Lattice);
    m_Scores = *scoresNamed(m_Lattice, "TOTAL");
    EXPECT_EQ(findBestPaths(m_Lattice, m_Scores, 2, m_Paths), "");
  }

  /// The paths as the whole file that the program prints.
  std::string asText(const std::string& scoreName) const {
    std::string text;
    PathsAsText paths(m_Lattice, m_Scores, scoreName);
    for (const LatticePath& path : m_Paths) text += paths.next(path);
    return text;
  }
  std::string asHtkLabels() const {
    std::string text;
    PathsAsHtkLabels paths(m_Lattice, m_Scores);
    for (const LatticePath& path : m_Paths) text += paths.next(path);
    return text;
  }

  WordLattice m_Lattice;
  std::vector<double> m_Scores;
  std::vector<LatticePath> m_Paths;
};

TEST_F(LabelFormats, TextHasTimesWordsScoresAndIds) {
  EXPECT_EQ(asText("TOTAL"),
            "path 1: TOTAL=-3.75: good day \"quoted\"\n"
            "  0\t0.4\tgood_day\t-2\tJ=0\n"
            "  0.4\t0.45\t!NULL\t-0.5\tJ=2\n"
            "  0.45\t1.25\t\"quoted\"\t-1.25\tJ=3\n"
            "path 2: TOTAL=-4.75: 5th \"quoted\"\n"
            "  0\t0.4\t5th\t-3\tJ=1\n"
            "  0.4\t0.45\t!NULL\t-0.5\tJ=2\n"
            "  0.45\t1.25\t\"quoted\"\t-1.25\tJ=3\n");
}

TEST_F(LabelFormats, CtmHasStartDurationWordAndPosterior) {
  EXPECT_EQ(pathAsCtm(m_Lattice, m_Paths[0], "talk one"),
            "talk_one 1 0.000 0.400 good_day 0.7311\n"
            "talk_one 1 0.450 0.800 \"quoted\" 1.0000\n");
}

TEST_F(LabelFormats, CtmHasMarksAndPausesOnlyWhenTheyAreAskedFor) {
  WordLattice lattice;
  readText(
      "N=5 L=4\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\nI=4 t=4\nJ=0 S=0 E=1 W=<s>\n"
      "J=1 S=1 E=2 W=a\nJ=2 S=2 E=3 W=<sil>\nJ=3 S=3 E=4 W=!NULL\n",
      lattice);
  LatticePath path;
  path.links = {0, 1, 2, 3};
  EXPECT_EQ(pathAsCtm(lattice, path, "u"), "u 1 1.000 1.000 a 1.0000\n");
  EXPECT_EQ(pathAsCtm(lattice, path, "u", true),
            "u 1 0.000 1.000 <s> 1.0000\nu 1 1.000 1.000 a 1.0000\n"
            "u 1 2.000 1.000 <sil> 1.0000\n");
}

TEST_F(LabelFormats, HtkLabelsHaveUnitsOf100NanosecondsAndAlternatives) {
  EXPECT_EQ(asHtkLabels(),
            "0 4000000 \"good day\" -2\n"
            "4500000 12500000 \"\\\"quoted\\\"\" -1.25\n"
            "///\n"
            "0 4000000 \"5th\" -3\n"
            "4500000 12500000 \"\\\"quoted\\\"\" -1.25\n");
}

TEST_F(LabelFormats, ControlCharactersNeverEndAColumnOrALine) {
  WordLattice lattice;
  readText("N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=a\\012b\\134 a=-1\n", lattice);
  const std::vector<double> scores = {-1.0};
  LatticePath path;
  path.links = {0};
  path.score = -1;
  EXPECT_EQ(PathsAsText(lattice, scores, "a").next(path),
            "path 1: a=-1: a_b\\\n  0\t1\ta_b\\\t-1\tJ=0\n");
  EXPECT_EQ(pathAsCtm(lattice, path, "u"), "u 1 0.000 1.000 a_b\\ 1.0000\n");
  EXPECT_EQ(PathsAsHtkLabels(lattice, scores).next(path), "0 10000000 \"a\\012b\\\\\" -1\n");
}

TEST_F(LabelFormats, ACyclicNetworkHasNoPosteriorToPrint) {
  WordLattice lattice;
  readText("start=0 end=1\nN=2 L=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=a\nJ=1 S=0 E=0 W=b\n", lattice);
  std::vector<LatticePath> paths;
  ASSERT_EQ(findBestPaths(lattice, *scoresNamed(lattice, "TOTAL"), 1, paths), "");
  EXPECT_EQ(pathAsCtm(lattice, paths[0], "u"), "u 1 0.000 1.000 a\n");
}

}  // namespace
}  // namespace quorbel
