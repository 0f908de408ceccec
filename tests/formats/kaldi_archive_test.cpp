// Kaldi's text archives: which lattices they become, and what is wrong with those that are none.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/dialect_writer.h"
#include "formats/input_format.h"
#include "formats/lattice_input.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

class KaldiArchiveTest : public ::testing::Test {
 protected:
  /// Reads the first lattice of an archive; fails the test where that is wrong.
  const WordLattice& read(const std::string& archive) {
    EXPECT_EQ(errorOf(archive), "");
    return m_Lattice;
  }

  /// What is wrong with an archive.
  std::string errorOf(const std::string& archive) {
    m_Folder.write("in.lat", archive);
    return readWordLattice("in.lat", m_Lattice, m_Options);
  }

  /// The dialect file that its first lattice becomes.
  std::string importOf(const std::string& archive) {
    std::string text;
    EXPECT_EQ(dialectText(read(archive), text), "");
    return text;
  }

  Texts wordsOf(const std::string& archive) {
    Texts words;
    for (const WordLink& link : read(archive).links) words.push_back(link.word.text);
    return words;
  }

  std::vector<double> timesOf(const std::string& archive) {
    std::vector<double> times;
    for (const WordNode& node : read(archive).nodes) times.push_back(node.time);
    return times;
  }

  void useWords(const std::string& table) {
    m_Folder.write("words.txt", table);
    m_Options.words = std::make_shared<WordTable>("words.txt");
  }

  TemporaryFolder m_Folder;
  ReadingOptions m_Options;
  WordLattice m_Lattice;
};

const std::string kWords = "<eps> 0\ngood\t1\n  day 2 \n\n";

/// Two ways to the second of two final states, of which the first costs nothing.
const std::string kCompact =
    "utt-1 \n"
    "0\t1\t1\t2.5,100,3_3_4\n"
    "0\t2\t0\t1,200,5_5\n"
    "2\t1\t2\t0.5,10,7\n"
    "1\t0.25,30,8_9\n"
    "2\n"
    "\n";

TEST_F(KaldiArchiveTest, ReadsACompactLattice) {
  useWords(kWords);
  EXPECT_EQ(importOf(kCompact),
            "VERSION=1.1\nUTTERANCE=utt-1\nacscale=0.1\nN=4 L=5\n"
            "I=0 t=0\nI=1 t=0.02\nI=2 t=0.03\nI=3 t=0.05\n"
            "J=1 S=0 E=1 W=<w in='!NULL'/> TOTAL=-21 a=-200 l=-1 post=-5.246664\n"
            "J=0 S=0 E=2 W=<w in='good'/> TOTAL=-12.5 a=-100 l=-2.5 post=-0.005279\n"
            "J=2 S=1 E=2 W=<w in='day'/> TOTAL=-1.5 a=-10 l=-0.5 post=-10.005279\n"
            "J=4 S=1 E=3 W=<w in='!NULL'/> TOTAL=0 a=0 l=0 post=-5.255279\n"
            "J=3 S=2 E=3 W=<w in='!NULL'/> TOTAL=-3.25 a=-30 l=-0.25 post=-0.005234\n");
  EXPECT_EQ(m_Lattice.notes, Texts());
}

TEST_F(KaldiArchiveTest, ReadsAPlainLatticeWithAnIdOnEachArc) {
  useWords(kWords);
  EXPECT_EQ(importOf("utt-1 \n"
                     "0\t1\t17\t1\t2.5,100\n"
                     "1\t2\t17\t0\n"  // without a weight
                     "2\t3\t0\t2\t0.5,10\n"
                     "3\t1,0\n\n"),
            "VERSION=1.1\nUTTERANCE=utt-1\nacscale=0.1\nN=5 L=4\n"
            "I=0 t=0\nI=1 t=0.01\nI=2 t=0.02\nI=3 t=0.02\nI=4 t=0.02\n"
            "J=0 S=0 E=1 W=<w in='good'/> TOTAL=-12.5 a=-100 l=-2.5 post=0\n"
            "J=1 S=1 E=2 W=<w in='!NULL'/> TOTAL=0 a=0 l=0 post=0\n"
            "J=2 S=2 E=3 W=<w in='day'/> TOTAL=-1.5 a=-10 l=-0.5 post=0\n"
            "J=3 S=3 E=4 W=<w in='!NULL'/> TOTAL=-1 a=0 l=-1 post=0\n");
}

TEST_F(KaldiArchiveTest, ShowsNumbersWithoutATableAndSaysWhy) {
  EXPECT_EQ(wordsOf(kCompact), Texts({"!NULL", "1", "2", "!NULL", "!NULL"}));
  EXPECT_EQ(m_Lattice.notes, Texts({"words are shown as numbers, for want of a table of words; "
                                    "--words FILE names one"}));
  EXPECT_EQ(wordsOf("u\n0 1 0 1,1,\n1\n\n"), Texts({"!NULL"}));
  EXPECT_EQ(m_Lattice.notes, Texts());  // there are none
}

TEST_F(KaldiArchiveTest, TakesLabelsThatAreNotAllNumbersForTheWords) {
  m_Options.words = std::make_shared<WordTable>("missing.txt");  // and needs no table
  EXPECT_EQ(wordsOf("u\n0 1 don't 1,1,\n1 2 7 1,1,\n2 3 <eps> 1,1,\n3 4 1,5\n4 5 gr\xFC\xDF 2,2,\n"
                    "5 6 0 1,1,\n6 1,1,\n\n"),
            Texts({"don't", "7", "!NULL", "1,5", "gr\u00FC\u00DF", "!NULL", "!NULL"}));
  EXPECT_EQ(m_Lattice.notes, Texts());
}

TEST_F(KaldiArchiveTest, EndsInTheOnlyFinalStateWhereThatCostsNothingAndNoArcLeavesIt) {
  EXPECT_EQ(read("u\n0 1 a 1,1,\n1\n\n").nodes.size(), 2U);
  EXPECT_EQ(read("u\n0 1 a 1,1,\n1 0,0,\n\n").nodes.size(), 3U);
  EXPECT_EQ(read("u\n0 1 a 1,1,\n1 2 b\n1\n\n").nodes.size(), 4U);
  EXPECT_EQ(read("u\n0 1 a 1,1,\n0 2 b\n1\n2\n\n").nodes.size(), 4U);
  EXPECT_EQ(read("u\n7\n\n").nodes.size(), 1U);
  EXPECT_EQ(m_Lattice.nodes[0].fileIndex, 7);
  EXPECT_EQ(read("u\n3 1 a\n3\n\n").links.size(), 2U);  // the empty path and the dead end
}

TEST_F(KaldiArchiveTest, StartsInTheStateOfTheFirstLine) {
  const WordLattice& lattice = read("u\n5 3 a 1,1,\n3 8 b 1,1,\n8 1,1,\n\n");
  EXPECT_EQ(lattice.nodes[0].fileIndex, 5);
  EXPECT_EQ(lattice.nodes[1].fileIndex, 3);
  EXPECT_EQ(lattice.nodes[2].fileIndex, 8);
  EXPECT_EQ(lattice.nodes[3].fileIndex, -1);
  // A loop on it: then a node of its own comes first.
  EXPECT_EQ(read("u\n0 0 a 1,1,\n0 1 b 1,1,\n1\n\n").nodes[0].fileIndex, -1);
  EXPECT_TRUE(m_Lattice.isCyclic);
  EXPECT_EQ(m_Lattice.links[0].word.text, "!NULL");
  EXPECT_EQ(m_Lattice.links[0].total, 0.0);
}

TEST_F(KaldiArchiveTest, CountsFramesOnTheWayWithTheMost) {
  m_Options.frameShift = 0.03;
  EXPECT_EQ(timesOf(kCompact), std::vector<double>({0.0, 0.06, 0.09, 0.15}));
  EXPECT_EQ(timesOf("u\n0 1 a 1,1,5\n0 1 b 1,1,5_5_5\n1 2 c 1,1,\n2 1,1,6\n\n"),
            std::vector<double>({0.0, 0.09, 0.09, 0.12}));
  EXPECT_TRUE(m_Lattice.hasTimes);
  EXPECT_EQ(timesOf("u\n0 1 a 1,1,\n1 2 c 1,1,\n2\n\n"), std::vector<double>({0.0, 1.0, 2.0}));
  EXPECT_FALSE(m_Lattice.hasTimes);
}

TEST_F(KaldiArchiveTest, ScalesAcousticCosts) {
  m_Options.scales.acoustic = 0.5;
  EXPECT_EQ(read("u\n0 1 a 2.5,100,\n1\n\n").links[0].total, -52.5);
  EXPECT_EQ(m_Lattice.scales.acoustic, 0.5);
  EXPECT_EQ(read("u\n0 1 a Infinity,1,\n1\n\n").links[0].total, -1000000.5);
}

TEST_F(KaldiArchiveTest, EndsInNoStateOfInfiniteCost) {
  EXPECT_EQ(read("u\n0 1 a 1,1,\n0 2 b 1,1,\n1\n2 Infinity,Infinity,\n\n").nodes.size(), 3U);
  EXPECT_EQ(m_Lattice.nodes.back().fileIndex, 1);
  EXPECT_EQ(read("u\n7 0,Infinity,\n7 1 a\n1\n\n").nodes[0].fileIndex, 7);
  EXPECT_EQ(m_Lattice.links.size(), 1U);
  EXPECT_EQ(errorOf("u\n0 1 a\n1 Infinity,Infinity\n\n"),
            "in.lat: line 1: an utterance without a final state, so no path ends");
}

TEST_F(KaldiArchiveTest, GivesOneLatticeAfterTheOther) {
  m_Folder.write("in.lat", "one \n0 1 a\n1\n\n\ntwo words\n0 1 b\n1\n\nthree\n0 1 c\n1\n");
  LatticeInput input("in.lat", m_Options);
  Texts found;
  while (input.next(m_Lattice))
    found.push_back(m_Lattice.utterance + ": " + m_Lattice.links.at(0).word.text);
  EXPECT_EQ(input.error(), "");
  EXPECT_EQ(found, Texts({"one: a", "two words: b", "three: c"}));
  EXPECT_EQ(input.names(), Texts({"one", "two words", "three"}));
  EXPECT_FALSE(input.next(m_Lattice));
}

TEST_F(KaldiArchiveTest, GivesTheLatticeThatIsAskedFor) {
  const std::string archive = "one\n0 1 a\n1\n\ntwo\nwrong but not wanted\n\nthree\n0 1 c\n1\n\n";
  m_Options.utterance = "three";
  EXPECT_EQ(wordsOf(archive), Texts({"c"}));
  m_Options.utterance = "four";
  EXPECT_EQ(errorOf(archive), "in.lat: no utterance \"four\" in it");
  LatticeInput input("in.lat", ReadingOptions());
  ASSERT_TRUE(input.next(m_Lattice));
  EXPECT_TRUE(input.skipRest());
  EXPECT_EQ(input.names(), Texts({"one", "two", "three"}));
}

TEST_F(KaldiArchiveTest, IsKnownByWhatItHolds) {
  EXPECT_EQ(wordsOf("12\n0 1 a\n1\n\n"), Texts({"a"}));       // a number for a name
  EXPECT_EQ(wordsOf("a=b\r\n0 1 a\r\n1\r\n"), Texts({"a"}));  // other line ends
  EXPECT_EQ(wordsOf("\n\nu\n0 1 a\n1"), Texts({"a"}));        // no line end at the end
  EXPECT_EQ(errorOf("1\n\n2\n0 1 a\n1\n\n"), "in.lat: line 1: an utterance without arcs");
  // Tables of words and reference texts are none, whatever numbers are in them.
  for (const char* other : {"<eps> 0\n1 1\n2 2\n", "0001 good day\n0002 yes\n", "0001 yes\n0002\n"})
    EXPECT_EQ(formatOf(other), InputFormat::Slf) << other;
  EXPECT_EQ(errorOf("utt \xFF words\n"), "in.lat: line 1: \"utt\" is no field KEY=VALUE");
  EXPECT_EQ(errorOf(std::string("utt \0B\x4", 7)),
            "in.lat: a binary archive of Kaldi's; write it as text: lattice-copy ark:FILE ark,t:-");
}

TEST_F(KaldiArchiveTest, NamesTheLineThatIsWrong) {
  const std::string kNoLine =
      "\" is no arc FROM TO WORD GRAPH,ACOUSTIC,IDS or FROM TO ID WORD GRAPH,ACOUSTIC, and no "
      "final "
      "state STATE GRAPH,ACOUSTIC,IDS";
  for (const char* wrong :
       {"0 x a", "-1 2 a", "0 1 a 1;2", "0 1 a 1,2,3-4", "0 1 2 a 1", "0 1 a b 1,2",
        "0 1 2 a 1,2 3", "1 x", "1 1,x", "one", "1 2 a nan,1,", "4294967296 1 a", "1 1,2,3,4"})
    EXPECT_EQ(errorOf("u\n0 1 a\n" + std::string(wrong) + "\n1\n\n"),
              "in.lat: line 3: \"" + std::string(wrong) + kNoLine);
  EXPECT_EQ(errorOf("u\n\nv\n0 1 a\n1\n\n"), "in.lat: line 1: an utterance without arcs");
  EXPECT_EQ(errorOf("u\n0 1 a\n\n"),
            "in.lat: line 1: an utterance without a final state, so no path ends");
  EXPECT_EQ(errorOf("u\n0 1 a\n1\n0\n1\n\n"),
            "in.lat: line 5: state 1 was final before, on line 3");
}

TEST_F(KaldiArchiveTest, NamesWhatIsWrongWithTheTable) {
  useWords("<eps> 0\ngood 1\n");
  EXPECT_EQ(errorOf(kCompact), "in.lat: line 4: the number 2 has no word in words.txt");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"good\n", "line 1: \"good\" is no line WORD NUMBER of a table of words"},
      {"good day 1\n", "line 1: \"good day 1\" is no line WORD NUMBER of a table of words"},
      {"a 1\ngood -1\n", "line 2: \"good -1\" is no line WORD NUMBER of a table of words"},
      {"a 1\nb 1\n", "line 2: the number 1 has a word already"}};
  for (const auto& [table, error] : cases) {
    useWords(table);
    EXPECT_EQ(errorOf(kCompact), "in.lat: words.txt: " + error);
  }
  m_Options.words = std::make_shared<WordTable>("missing.txt");
  EXPECT_EQ(errorOf(kCompact), "in.lat: missing.txt: No such file or directory");
}

TEST_F(KaldiArchiveTest, TakesNoMoreOfLongWordsThanMemoryHolds) {
  constexpr std::size_t kMost = std::size_t{16} << 20u;
  std::string archive = "u\n";
  for (int i = 0; i < 16; ++i) archive += "0 1 1\n";
  archive += "1\n\n";
  useWords(std::string(kMost / 16, 'w') + " 1\n");
  EXPECT_EQ(read(archive).links.size(), 16U);
  useWords(std::string(kMost / 16 + 1, 'w') + " 1\n");
  EXPECT_EQ(errorOf(archive), "in.lat: line 17: the words up to here are too long for any memory");
}

}  // namespace
}  // namespace quorbel
