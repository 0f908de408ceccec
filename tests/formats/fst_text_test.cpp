// What fstprint writes: which lattices it becomes, and what is wrong with what is none.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/dialect_writer.h"
#include "formats/lattice_input.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

using Words = std::vector<std::string>;

class FstTextTest : public ::testing::Test {
 protected:
  std::string errorOf(const std::string& text) {
    m_Folder.write("in.fst.txt", text);
    return readWordLattice("in.fst.txt", m_Lattice, m_Options);
  }

  std::string importOf(const std::string& text) {
    EXPECT_EQ(errorOf(text), "");
    std::string dialect;
    EXPECT_EQ(dialectText(m_Lattice, dialect), "");
    return dialect;
  }

  /// Words and totals of the links, such as "good=-0.5".
  Words linksOf(const std::string& text) {
    EXPECT_EQ(errorOf(text), "");
    Words links;
    for (const WordLink& link : m_Lattice.links) {
      std::string total = std::to_string(link.total);
      links.push_back(link.word.text + "=" + total.substr(0, total.find('.') + 2));
    }
    return links;
  }

  TemporaryFolder m_Folder;
  ReadingOptions m_Options;
  WordLattice m_Lattice;
};

TEST_F(FstTextTest, BecomesALatticeOfOutputLabelsAndCosts) {
  EXPECT_EQ(importOf("2\t0\tgut\tgood\t0.5\n"
                     "2\t5\tkann\tcould\t1.5\n"
                     "0\t7\ttag\tday\n"
                     "5\t7\t<eps>\t<eps>\t0.25\n"
                     "7\t0.75\n"),
            "VERSION=1.1\nN=5 L=5\n"
            "I=0 t=0\nI=1 t=1\nI=2 t=1\nI=3 t=2\nI=4 t=3\n"
            "J=0 S=0 E=1 W=<w in='good'/> TOTAL=-0.5 post=-0.251929\n"
            "J=1 S=0 E=2 W=<w in='could'/> TOTAL=-1.5 post=-1.501929\n"
            "J=2 S=1 E=3 W=<w in='day'/> TOTAL=0 post=-0.251929\n"
            "J=3 S=2 E=3 W=<w in='!NULL'/> TOTAL=-0.25 post=-1.501929\n"
            "J=4 S=3 E=4 W=<w in='!NULL'/> TOTAL=-0.75 post=0\n");
  EXPECT_EQ(m_Lattice.nodes[1].fileIndex, 0);
}

TEST_F(FstTextTest, HasOneLabelOrTwoByTheNumberOfColumns) {
  EXPECT_EQ(linksOf("0 1 a\n1 2 b 0.5\n2\n"), Words({"a=0.0", "b=-0.5"}));
  EXPECT_EQ(linksOf("0 1 a b\n1 2 b c 0.5\n2\n"), Words({"b=0.0", "c=-0.5"}));
  // With four columns throughout:
  EXPECT_EQ(linksOf("0 1 a b\n1 2 3 4\n2\n"), Words({"b=0.0", "4=0.0"}));
  EXPECT_EQ(linksOf("0 1 a 5\n1 2 b 4\n2\n"), Words({"a=-5.0", "b=-4.0"}));
  EXPECT_EQ(linksOf("0 1 3 5\n1 2 3 4\n2\n"), Words({"5=0.0", "4=0.0"}));
  EXPECT_EQ(linksOf("0 1 3 5\n1 2 3 0.5\n2\n"), Words({"3=-5.0", "3=-0.5"}));
}

TEST_F(FstTextTest, HasNumbersForWordsOfATable) {
  const std::string text = "0\t1\t7\t2\t1\n1\t2\t7\t0\t1\n2\n";
  EXPECT_EQ(linksOf(text), Words({"2=-1.0", "!NULL=-1.0"}));
  EXPECT_EQ(m_Lattice.notes.size(), 1U);
  m_Folder.write("words.txt", "<eps> 0\nday 2\n");
  m_Options.words = std::make_shared<WordTable>("words.txt");
  EXPECT_EQ(linksOf(text), Words({"day=-1.0", "!NULL=-1.0"}));
  EXPECT_EQ(m_Lattice.notes.size(), 0U);
}

TEST_F(FstTextTest, EndsInStatesWhoseCostIsFinite) {
  EXPECT_EQ(linksOf("0 1 a\n0 2 b\n1 Infinity\n2\n"), Words({"a=0.0", "b=0.0"}));
  EXPECT_EQ(m_Lattice.nodes.size(), 3U);
  EXPECT_EQ(linksOf("0 1 a\n1 -2.5\n"), Words({"a=0.0", "!NULL=2.5"}));
  EXPECT_EQ(linksOf("4\n"), Words());
  EXPECT_EQ(m_Lattice.nodes.size(), 1U);
  EXPECT_EQ(errorOf("0 1 a\n1 Infinity\n"), "in.fst.txt: no state is final, so no path ends");
}

TEST_F(FstTextTest, MayGoAround) {
  EXPECT_EQ(linksOf("0 1 a 1\n1 1 b 1\n1 2\n"), Words({"a=-1.0", "b=-1.0", "!NULL=-2.0"}));
  EXPECT_TRUE(m_Lattice.isCyclic);
}

TEST_F(FstTextTest, NamesTheLineThatIsWrong) {
  const std::string two = "\" is no arc FROM TO IN OUT COST and no final state STATE COST";
  for (const char* wrong : {"1 x a b", "1 2 a b c", "1 2 a b 1 1", "1 -2 a b 1", "x", "1 cost",
                            "1 2 a b nan", "1 2 a b 1e200", "-1", "9999999999"})
    EXPECT_EQ(errorOf("0 1 a b 1\n\n" + std::string(wrong) + "\n1\n"),
              "in.fst.txt: line 3: \"" + std::string(wrong) + two);
  const std::string one = "\" is no arc FROM TO LABEL COST and no final state STATE COST";
  for (const char* wrong : {"1 2 a b", "1 2 a x"})
    EXPECT_EQ(errorOf("0 1 a\n" + std::string(wrong) + "\n1\n"),
              "in.fst.txt: line 2: \"" + std::string(wrong) + one);
  EXPECT_EQ(errorOf("0 1 a b 1\n0 1 a\n1\n"), "in.fst.txt: line 2: \"0 1 a" + two);
  EXPECT_EQ(errorOf("0 1 a\n1\n1 2\n"), "in.fst.txt: line 3: state 1 was final before, on line 2");
}

}  // namespace
}  // namespace quorbel
