// Large lattices: that they are read at all, in good time, and the same under every locale.

#include <gtest/gtest.h>

#include <string>

#include "lattice/number_text.h"
#include "lattice_file.h"
#include "process_locale.h"
#include "processor_time.h"

namespace quorbel {
namespace {

constexpr double kMostSeconds = 10;

class HtkReaderSize : public LatticeFile {
 protected:
  ProcessorTime m_Time;
};

std::string number(int i) { return std::to_string(i); }

/// A chain of nodes, a second apart, and the text of a file that holds it.
std::string chainOf(int nodes) {
  std::string text = "VERSION=1.0\nN=" + number(nodes) + "\n";
  for (int i = 0; i < nodes; ++i) text += "I=" + number(i) + " t=" + number(i) + ".0 n=0.5\n";
  for (int i = 0; i + 1 < nodes; ++i) {
    text += "J=" + number(i) + " S=" + number(i) + " E=" + number(i + 1) + " W=\"w" + number(i) +
            "\" a=-" + number(i) + ".5\n";
  }
  return text;
}

TEST_F(HtkReaderSize, ReadsTheMostNodesThatALatticeMayHave) {
  ASSERT_EQ(read(chainOf(50000)), "");
  EXPECT_EQ(graph.nodes[25000].time, 25000.0 / 49999.0);
  EXPECT_EQ(graph.adjacency->outgoing[49998].size(), 1u);
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

TEST_F(HtkReaderSize, RefusesOneNodeMore) {
  EXPECT_EQ(read(chainOf(50001)), "Bad number of node in HTK file : 50001");
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
}

TEST_F(HtkReaderSize, ReadsAndFreesManyLinksOfOneNode) {
  constexpr int kNodes = 50000;
  constexpr int kLinks = 200000;
  std::string text = "N=" + number(kNodes) + "\n";
  for (int i = 0; i < kLinks; ++i) {
    text += "J=" + number(i) + " S=0 E=" + number(i % kNodes) + " W=\"w\" a=-1.5 l=-2\n";
  }
  ASSERT_EQ(read(text), "");
  EXPECT_EQ(graph.adjacency->outgoing[0].size(), static_cast<std::size_t>(kLinks));
  EXPECT_EQ(graph.adjacency->outgoing[0].back().linkId, kLinks - 1);
  ASSERT_EQ(read("N=1\n"), "");
  EXPECT_EQ(describeLinks(*graph.adjacency), "");
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

TEST_F(HtkReaderSize, ReadsALineOfManyFields) {
  std::string line = "J=0";
  for (int i = 0; i < 100000; ++i) line += " f" + number(i % 1000) + "=" + number(i);
  ASSERT_EQ(read("N=2\n" + line + " W=\"" + std::string(10000000, 'x') + "\"\n"), "");
  const Edge& edge = graph.adjacency->outgoing[1].front();
  EXPECT_EQ(edge.scores.size(), 1000u);
  EXPECT_EQ(edge.scores.at("f999"), -99999.0);
  EXPECT_EQ(edge.word.size(), 10000000u);
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

/// A different name for each number, in scattered order; of eight letters.
std::string scatteredName(int i) {
  unsigned scattered = static_cast<unsigned>(i) * 2654435761u;
  std::string name;
  for (; name.size() < 8; scattered >>= 4u) name += static_cast<char>('a' + scattered % 16u);
  return name;
}

constexpr int kManyNames = 200000;

TEST_F(HtkReaderSize, ReadsALineOfManyDifferentScores) {
  std::string line = "J=0";
  for (int i = 0; i < kManyNames; ++i) line += " " + scatteredName(i) + "=" + number(i);
  ASSERT_EQ(read("N=2\n" + line + " " + scatteredName(0) + "=7\n"), "");
  const ScoreMap& scores = graph.adjacency->outgoing[1].front().scores;
  ASSERT_EQ(scores.size(), static_cast<std::size_t>(kManyNames));
  for (int i = 1; i < kManyNames; ++i) ASSERT_EQ(scores.at(scatteredName(i)), -i);
  EXPECT_EQ(scores.at(scatteredName(0)), -7.0);
  EXPECT_EQ(currentScoreName, scores.begin()->first);
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

TEST_F(HtkReaderSize, ReadsManyLinesWithADifferentScoreOfANode) {
  std::string text = "N=3\n";
  for (int i = 0; i < kManyNames; ++i)
    text += "I=" + number(i % 2) + " " + scatteredName(i) + "=" + number(i) + "\n";
  ASSERT_EQ(read(text + "I=1 " + scatteredName(1) + "=7\n"), "");
  for (const std::size_t node : {std::size_t{0}, std::size_t{1}})
    ASSERT_EQ(graph.nodes[node].scores.size(), static_cast<std::size_t>(kManyNames / 2));
  for (int i = 2; i < kManyNames; ++i)
    ASSERT_EQ(graph.nodes[static_cast<std::size_t>(i % 2)].scores.at(scatteredName(i)), -i);
  EXPECT_EQ(graph.nodes[1].scores.at(scatteredName(1)), -7.0);
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

TEST_F(HtkReaderSize, AddsManyScoresOfANodeToThoseOfALink) {
  std::string node = "I=1";
  std::string link = "J=0 S=0 E=1";
  for (int i = 0; i < kManyNames; ++i) {
    if (i % 3 != 0) node += " " + scatteredName(i) + "=" + number(i);
    if (i % 3 != 1) link += " " + scatteredName(i) + "=1";
  }
  ASSERT_EQ(read("N=2\n" + node + "\n" + link + "\n"), "");
  const ScoreMap& scores = graph.adjacency->outgoing[0].front().scores;
  ASSERT_EQ(scores.size(), static_cast<std::size_t>(kManyNames));
  for (int i = 0; i < kManyNames; ++i)
    ASSERT_EQ(scores.at(scatteredName(i)), -(i % 3 != 0 ? i : 0) - (i % 3 != 1 ? 1 : 0)) << i;
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

TEST_F(HtkReaderSize, KeepsTheScoresBeforeAFaultyLineHoweverManyThereAre) {
  std::string text = "N=1\nI=0";
  for (int i = 0; i < 50; ++i) text += " " + scatteredName(i) + "=1";
  EXPECT_EQ(read(text + "\nbad\n"), "talk.lat: syntax error line 3");
  EXPECT_EQ(graph.nodes[0].scores.size(), 50u);
}

TEST_F(HtkReaderSize, ReadsALineOfManyBrackets) {
  std::string word;
  for (int i = 0; i < 1000000; ++i) word += "<>";
  EXPECT_EQ(linksOf("J=0 W=" + word + " a=1"), "link 0 from 1 to 1 with a=-1 as " + word + "\n");
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

TEST_F(HtkReaderSize, RefusesAnEndlessLine) {
  constexpr std::size_t kBytes = 100000000;
  EXPECT_EQ(read("N=2\n" + std::string(kBytes, 'x') + "\n"), "talk.lat: syntax error line 2");
  EXPECT_LT(m_Time.seconds(), kMostSeconds);
}

class HtkReaderLocale : public LatticeFile, public ::testing::WithParamInterface<LocaleChoice> {
 private:
  ProcessLocale m_Locale{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Locales, HtkReaderLocale, kLocales);

TEST_P(HtkReaderLocale, ReadsMoreThanAThousandNodes) {
  ASSERT_EQ(read(chainOf(1501) + "start=1200\nend=1400\n"), "");
  std::string expected = "1501 nodes, 1200 to 1400\n";
  for (int i = 0; i < 1501; ++i)
    expected += "node " + number(i) + " at " + exactText(i / 1500.0) + " with n=-0.5\n";
  for (int i = 0; i < 1500; ++i) {
    expected += "link " + number(i) + " from " + number(i) + " to " + number(i + 1) +
                " with a=" + exactText(i + 0.5) + " n=-0.5 as w" + number(i) + "\n";
  }
  EXPECT_EQ(describeLattice(graph), expected);
}

TEST_P(HtkReaderLocale, ScoresAreWrittenAsTheyWereRead) {
  ASSERT_EQ(read(chainOf(1501)), "");
  for (int i = 0; i < 1500; ++i) {
    const Edge& edge = graph.adjacency->outgoing[static_cast<std::size_t>(i)].front();
    EXPECT_EQ(formatNumber(edge.scores.at("a")), number(i) + ".5");
  }
}

TEST_P(HtkReaderLocale, MessagesHaveNumbersWithoutSeparators) {
  EXPECT_EQ(read("N=50001\n"), "Bad number of node in HTK file : 50001");
  EXPECT_EQ(read("N=-1000000\n"), "Bad number of node in HTK file : -1000000");
  EXPECT_EQ(read(chainOf(1000) + "bad\n"), "talk.lat: syntax error line 2002");
  EXPECT_EQ(read(std::string(1999, '\n')), "talk.lat: syntax error line 1999");
}

TEST_P(HtkReaderLocale, CommasAreNoPartOfANumber) {
  EXPECT_EQ(linksOf("J=1,000 S=0 E=2 a=1,5 b=1,000 c=1.500"),
            "link 1 from 0 to 2 with a=-1 b=-1 c=-1.5\n");
}

}  // namespace
}  // namespace quorbel
