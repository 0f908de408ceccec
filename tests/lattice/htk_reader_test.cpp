#include "lattice/htk_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lattice_file.h"

namespace quorbel {
namespace {

using namespace std::string_literals;

class HtkReader : public LatticeFile {};

TEST_F(HtkReader, ReadsNodesLinksAndScores) {
  EXPECT_EQ(read("# a lattice of two words\n"
                 "VERSION=1.0\n"
                 "UTTERANCE=talk one\n"
                 "lmscale=12.0 wdpenalty=-10.0\n"
                 "\n"
                 "N=3 L=3\n"
                 "I=0 t=0.00\n"
                 "I=1 t=0.50 p=-1.5\n"
                 "I=2 t=2.00\n"
                 "J=0 S=0 E=1 W=\"good\" a=-100.5 l=-2\n"
                 "J=1 S=1 E=2 W=<w in='day' conf='0.9'/> a=-50 l=-3\n"
                 "J=2 S=1 E=2 W=\"days\" a=-50 l=-4\n"),
            "");
  EXPECT_EQ(describeLattice(graph),
            "3 nodes, 0 to 2\n"
            "node 1 at 0.25 with p=1.5\n"
            "node 2 at 1\n"
            "link 0 from 0 to 1 with a=100.5 l=2 p=1.5 as good\n"
            "link 1 from 1 to 2 with a=50 l=3 as <w in='day' conf='0.9'/>\n"
            "link 2 from 1 to 2 with a=50 l=4 as days\n");
  EXPECT_EQ(currentScoreName, "a");
}

TEST_F(HtkReader, TakesTheNodeCountUnderEachOfItsNames) {
  for (const char* key : {"N", "NODES", "nodes"})
    EXPECT_EQ(latticeOf(key + "=2\nI=1 t=4\n"s), "2 nodes, 0 to 1\nnode 1 at 1\n") << key;
}

TEST_F(HtkReader, TakesTheTimeUnderEachOfItsNames) {
  for (const char* key : {"t", "TIME", "time"}) {
    EXPECT_EQ(latticeOf("N=2\nI=0 "s + key + "=1\nI=1 " + key + "=4\n"),
              "2 nodes, 0 to 1\nnode 0 at 0.25\nnode 1 at 1\n")
        << key;
  }
}

TEST_F(HtkReader, TakesTheEndsOfALinkUnderEachOfTheirNames) {
  for (const char* start : {"S", "START", "start"}) {
    for (const char* end : {"E", "END", "end"}) {
      EXPECT_EQ(linksOf("J=5 "s + start + "=2 " + end + "=0"), "link 5 from 2 to 0\n")
          << start << " and " << end;
    }
  }
}

TEST_F(HtkReader, GivesNodeOneToALinkWithoutStartOrEnd) {
  const std::vector<Case> cases = {{"J=5", "link 5 from 1 to 1\n"},
                                   {"J=5 S=0", "link 5 from 0 to 1\n"},
                                   {"J=5 E=2", "link 5 from 1 to 2\n"}};
  for (const auto& [line, links] : cases) EXPECT_EQ(linksOf(line), links) << line;
}

TEST_F(HtkReader, IgnoresTheNumberOfLinks) {
  for (const char* key : {"L", "LINKS", "links"}) {
    EXPECT_EQ(latticeOf("N=2 "s + key + "=7\nI=1 t=1 " + key + "=8\nJ=0 S=0 " + key + "=9 a=1\n"),
              "2 nodes, 0 to 1\nnode 1 at 1\nlink 0 from 0 to 1 with a=-1\n")
        << key;
  }
}

TEST_F(HtkReader, IgnoresTheRestOfALineFromAHeaderKeyOn) {
  for (const char* key : {"VERSION", "version", "UTTERANCE", "utterance", "LMSCALE", "lmscale",
                          "WDPENALTY", "wdpenalty", "CONTEXT", "context"}) {
    EXPECT_EQ(linksOf(key + "=12 J=1 a=1"s), "") << key;
    EXPECT_EQ(linksOf("J=1 a=1 "s + key + "=12 b=2"), "link 1 from 1 to 1 with a=-1\n") << key;
    EXPECT_EQ(linksOf("J=1 a=1 "s + key + " no 'equals' W=x"), "link 1 from 1 to 1 with a=-1\n")
        << key;
    EXPECT_EQ(linksOf("J=1 "s + key), "link 1 from 1 to 1\n") << key;
    EXPECT_EQ(linksOf("J=1 "s + key + "s=4"), "link 1 from 1 to 1 with "s + key + "s=-4\n") << key;
  }
}

TEST_F(HtkReader, StoresAScoreUnderAKeyInAnotherCase) {
  for (const char* key : {"n", "Nodes", "i", "T", "Time", "j", "s", "Start", "e", "End", "l",
                          "Links", "w", "Word", "Version", "Utterance", "LMscale", "Context"}) {
    EXPECT_EQ(linksOf("J=1 "s + key + "=4"), "link 1 from 1 to 1 with "s + key + "=-4\n") << key;
  }
}

TEST_F(HtkReader, StoresScoresOnlyBehindTheIndexOfANodeOrLink) {
  EXPECT_EQ(latticeOf("N=2\n"
                      "a=1 I=0 b=2\n"
                      "t=9 I=1 t=1\n"
                      "c=3 J=7 d=4\n"
                      "e=5\n"),
            "2 nodes, 0 to 1\n"
            "node 0 at 0 with b=-2\n"
            "node 1 at 1\n"
            "link 7 from 1 to 1 with d=-4\n");
}

TEST_F(HtkReader, IgnoresTheTimeOfALink) {
  EXPECT_EQ(latticeOf("N=2\nI=1 t=4\nJ=1 S=0 E=0 t=3 a=1 TIME=8 time=5\nJ=0 t=3\n"),
            "2 nodes, 0 to 1\nnode 1 at 1\nlink 1 from 0 to 0 with a=-1\nlink 0 from 1 to 1\n");
}

TEST_F(HtkReader, LetsTheLastIndexOfALineDecideWhatItIs) {
  EXPECT_EQ(latticeOf("N=2\n"
                      "I=1 t=1\n"
                      "J=3 S=0 a=1 I=0 b=2\n"
                      "I=0 c=3 J=4 S=0 d=4\n"
                      "I=0 e=5 I=1 f=6\n"
                      "J=5 g=7 I=0 h=8 J=6 k=9\n"),
            "2 nodes, 0 to 1\n"
            "node 0 at 0 with b=-2 c=-3 e=-5 h=-8\n"
            "node 1 at 1 with f=-6\n"
            "link 4 from 0 to 1 with d=-4 f=-6\n"
            "link 6 from 1 to 1 with f=-6 g=-7 k=-9\n");
}

TEST_F(HtkReader, TakesTheFieldsOfALinkInAnyOrder) {
  EXPECT_EQ(linksOf("W=\"word\" E=2 S=0 J=-12 b=1 a=2"),
            "link -12 from 0 to 2 with a=-2 b=-1 as word\n");
}

TEST_F(HtkReader, LetsTheLastOfEqualKeysCount) {
  EXPECT_EQ(linksOf("J=1 J=2 S=0 S=2 E=1 E=0 a=1 a=3"), "link 2 from 2 to 0 with a=-3\n");
  EXPECT_EQ(latticeOf("N=2\nI=1 t=3 t=4 a=1 a=2\nI=1 a=5\nI=0 t=1\n"),
            "2 nodes, 0 to 1\nnode 0 at 0.25\nnode 1 at 1 with a=-5\n");
}

TEST_F(HtkReader, ForgetsALineWithItsEnd) {
  EXPECT_EQ(latticeOf("N=3\nI=2 t=1\nS=0 E=0 W=\"x\"\nJ=1 S=2 E=2 a=1 W=\"y\"\nJ=2 b=2\nJ=3\n"),
            "3 nodes, 0 to 2\n"
            "node 2 at 1\n"
            "link 2 from 1 to 1 with b=-2\n"
            "link 3 from 1 to 1\n"
            "link 1 from 2 to 2 with a=-1 as y\n");
}

TEST_F(HtkReader, AllowsBlanksAndTabsAroundKeysAndValues) {
  EXPECT_EQ(linksOf(" \t J =\t5\tS\t= 0  E= \t 2 \t a \t = -4 \t W = \"w\" \t b=\t<"),
            "link 5 from 0 to 2 with a=4 b=-0 as w\n");
}

TEST_F(HtkReader, CountsAMissingOrUnreadableNumberAsZero) {
  const std::vector<Case> cases = {
      {"J=5 a=", "link 5 from 1 to 1 with a=-0\n"},
      {"J=5 a= \t", "link 5 from 1 to 1 with a=-0\n"},
      {"J=5 a= b=2", "link 5 from 1 to 1 with a=-0\n"},
      {"J=5 a=\tb=2 c=3", "link 5 from 1 to 1 with a=-0 c=-3\n"},
      {"J=5 a==2", "link 5 from 1 to 1 with a=-0\n"},
      {"J=5 a=#1", "link 5 from 1 to 1 with a=-0\n"},
      {"J= S=0 E=2", "link 0 from 1 to 2\n"},
      {"J=5 S= E=2", "link 5 from 0 to 1\n"},
      {"J=5 E=", "link 5 from 1 to 0\n"},
      {"J=x S=y E=z a=none", "link 0 from 0 to 0 with a=-0\n"},
  };
  for (const auto& [line, links] : cases) EXPECT_EQ(linksOf(line), links) << line;
}

TEST_F(HtkReader, ReadsNumbersAsAStreamDoes) {
  EXPECT_EQ(linksOf("J=2.9 S=0x2 E=+2 a=nan b=0x1F c=1e d=1e+ e=1e999 f=-1e999 g=1e-999 h=+5 "
                    "i=.5 j=5. k=1,5 l=inf m=-2abc n=\v7"),
            "link 2 from 0 to 2 with a=-0 b=-0 c=-0 d=-0 e=-1.7976931348623157e+308 "
            "f=1.7976931348623157e+308 g=-0 h=-5 i=-0.5 j=-5 k=-1 l=-0 m=2 n=-7\n");
  EXPECT_EQ(linksOf("J=99999999999 S=0"), "link 2147483647 from 0 to 1\n");
  EXPECT_EQ(linksOf("J=-99999999999 S=0"), "link -2147483648 from 0 to 1\n");
}

TEST_F(HtkReader, TakesAKeyAndAnEmptyNameAsTheyStand) {
  EXPECT_EQ(linksOf("J=5 =4 a#b=1 \"=2 '=3"), "link 5 from 1 to 1 with =-4 \"=-2 '=-3 a#b=-1\n");
  EXPECT_EQ(currentScoreName, "");
}

TEST_F(HtkReader, EndsALineAtAComment) {
  const std::vector<Case> cases = {
      {"J=5 a=-2#note b=3", "link 5 from 1 to 1 with a=2\n"},
      {"J=5 a=-2 #note b=3", "link 5 from 1 to 1 with a=2\n"},
      {"J=5 a=-2 \t#note b=3 W=x", "link 5 from 1 to 1 with a=2\n"},
      {"# J=5", ""},
      {" \t# J=5", ""},
      {"J=5 W=\"x\"#note", "link 5 from 1 to 1 as x\n"},
      {"J=5#", "link 5 from 1 to 1\n"},
  };
  for (const auto& [line, links] : cases) EXPECT_EQ(linksOf(line), links) << line;
}

TEST_F(HtkReader, ReadsLinesThatEndInCarriageReturnAndNewline) {
  EXPECT_EQ(latticeOf("VERSION=1.0\r\n\r\n \r\nN=2\r\nI=1 t=2 \r\nI=0 t=1\r\n"
                      "J=0 S=0 E=1 W=\"a\"\r\nJ=1 S=0 E=1 W=<b/>\r\nJ=2 S=0 a=5\t\r\nJ=3 a=\r\n"),
            "2 nodes, 0 to 1\n"
            "node 0 at 0.5\n"
            "node 1 at 1\n"
            "link 0 from 0 to 1 as a\n"
            "link 1 from 0 to 1 as <b/>\n"
            "link 2 from 0 to 1 with a=-5\n"
            "link 3 from 1 to 1 with a=-0\n");
}

TEST_F(HtkReader, EndsALineAtACarriageReturnInsideIt) {
  EXPECT_EQ(linksOf("J=5 a=1\rb=2 W=x"), "link 5 from 1 to 1 with a=-1\n");
  EXPECT_EQ(linksOf("J=5 W=\"w\"\rb=2"), "link 5 from 1 to 1 as w\n");
  EXPECT_EQ(linksOf("J=5 \rb=2"), "link 5 from 1 to 1\n");
}

TEST_F(HtkReader, EndsALineAtANulBetweenFieldsOnly) {
  EXPECT_EQ(linksOf("J=5 a=1 \0b=2"s), "link 5 from 1 to 1 with a=-1\n");
  EXPECT_EQ(linksOf("J=5 W=\"w\"\0b=2"s), "link 5 from 1 to 1 as w\n");
  EXPECT_EQ(linksOf("\0J=5"s), "");
  EXPECT_EQ(linksOf("J=5 a=1\0b=2 c=3"s), "link 5 from 1 to 1 with a=-1 c=-3\n");
  EXPECT_EQ(linksOf("J=5 a\0b=2"s), "link 5 from 1 to 1 with a\0b=-2\n"s);
}

TEST_F(HtkReader, LastLineWithoutLineEndIsNotParsed) {
  EXPECT_EQ(latticeOf("N=2\nI=1 t=1\nJ=0 S=0\nJ=1 S=0"),
            "2 nodes, 0 to 1\nnode 1 at 1\nlink 0 from 0 to 1\n");
  EXPECT_EQ(latticeOf("N=2\nI=1 t=1\nthis would be no field"), "2 nodes, 0 to 1\nnode 1 at 1\n");
}

TEST_F(HtkReader, FlipsTheSignOfScoresWhileTheyAreNegated) {
  const std::string text = "N=2\nI=1 t=4 a=2 b=-0\nJ=-3 S=0 E=1 c=5 d=-6 e=0 f=-0\n";
  graph.scoresNegated = true;
  ASSERT_EQ(read(text), "");
  EXPECT_EQ(describeLattice(graph),
            "2 nodes, 0 to 1\nnode 1 at 1 with a=-2 b=0\n"
            "link -3 from 0 to 1 with a=-2 b=0 c=-5 d=6 e=-0 f=0\n");
  EXPECT_TRUE(graph.scoresNegated);
  graph.scoresNegated = false;
  ASSERT_EQ(read(text), "");
  EXPECT_EQ(describeLattice(graph),
            "2 nodes, 0 to 1\nnode 1 at 1 with a=2 b=-0\n"
            "link -3 from 0 to 1 with a=2 b=0 c=5 d=-6 e=0 f=-0\n");
  EXPECT_FALSE(graph.scoresNegated);
}

TEST_F(HtkReader, AddsTheScoresOfTheNodeThatALinkEnters) {
  graph.scoresNegated = false;
  ASSERT_EQ(read("N=3\n"
                 "J=0 S=0 E=1 a=1\n"
                 "J=1 S=0 E=2 a=1 c=-0\n"
                 "J=2 S=1 E=1\n"
                 "J=3 S=2 E=0 a=1\n"
                 "J=4 S=0 E=3 a=1\n"
                 "J=5 S=3 E=1 a=1\n"
                 "I=0 z=7\n"
                 "I=1 a=10 b=20\n"
                 "I=2 c=-0 d=-0 t=1\n"),
            "");
  EXPECT_EQ(describeLattice(graph),
            "3 nodes, 0 to 2\n"
            "node 0 at 0 with z=7\n"
            "node 1 at 0 with a=10 b=20\n"
            "node 2 at 1 with c=-0 d=-0\n"
            "link 0 from 0 to 1 with a=11 b=20\n"
            "link 1 from 0 to 2 with a=1 c=-0 d=0\n"
            "link 4 from 0 to 3 with a=1\n"
            "link 2 from 1 to 1 with a=10 b=20\n"
            "link 3 from 2 to 0 with a=1 z=7\n"
            "link 5 from 3 to 1 with a=1\n")
      << "links from nodes that the lattice does not have get none";
}

TEST_F(HtkReader, DividesTimesByThatOfTheLastNode) {
  const std::vector<Case> cases = {
      {"N=3\nI=0 t=1\nI=1 t=3\nI=2 t=4\n", "node 0 at 0.25\nnode 1 at 0.75\nnode 2 at 1\n"},
      {"N=3\nI=2 t=0.5\nI=0 t=2\n", "node 0 at 4\nnode 2 at 1\n"},
      {"N=3\nI=0 t=3\nI=2 t=-2\n", "node 0 at -1.5\nnode 1 at -0\nnode 2 at 1\n"},
      {"N=3\nI=0 t=3\nI=1 t=-3\n", "node 0 at inf\nnode 1 at -inf\nnode 2 at nan\n"},
      {"N=3\n", "node 0 at nan\nnode 1 at nan\nnode 2 at nan\n"},
      {"N=3\nI=0 t=1\nI=2 t=4\nI=2 t=8\n", "node 0 at 0.125\nnode 2 at 1\n"},
  };
  for (const auto& [text, nodes] : cases)
    EXPECT_EQ(latticeOf(text), "3 nodes, 0 to 2\n" + nodes) << text;
  EXPECT_EQ(latticeOf("N=1\nI=0 t=7\n"), "1 nodes, 0 to 0\nnode 0 at 1\n");
}

TEST_F(HtkReader, KeepsLinksToTheIndexPastTheLastNodeAndDropsOthersOutside) {
  EXPECT_EQ(linksOf("J=5 S=0 E=3 a=1"), "link 5 from 0 to 3 with a=-1\n");
  EXPECT_EQ(linksOf("J=5 S=3 E=0 a=1"), "link 5 from 3 to 0 with a=-1\n");
  for (const char* line : {"J=5 S=0 E=4", "J=5 S=4 E=0", "J=5 S=-1 E=0", "J=5 S=0 E=-1",
                           "J=5 S=99999999999 E=0", "J=5 S=0 E=-99999999999"}) {
    EXPECT_EQ(linksOf(line), "") << line;
  }
}

TEST_F(HtkReader, MakesTheSmallestNameOfTheLastLinkWithScoresTheCurrentOne) {
  const std::vector<Case> cases = {
      {"J=0 b=1 a=2", "a"},
      {"J=0 a=1\nJ=1 c=2 b=3", "b"},
      {"J=0 a=1 B=2", "B"},
      {"J=0 a=1 =2", ""},
      {"J=0 b=1\nJ=1 S=0 E=2 W=\"x\"", "b"},
      {"J=0 S=9 E=9 q=1", "q"},
      {"J=0 S=0 E=0 b=1\nI=0 a=2", "b"},
      {"I=0 a=2", "before"},
      {"J=0 S=0 E=2", "before"},
      {"a=1", "before"},
      {"J=0 b=1\nJ=1 a=2 bad", "b"},
  };
  for (const auto& [lines, name] : cases) {
    currentScoreName = "before";
    linksOf(lines);
    EXPECT_EQ(currentScoreName, name) << lines;
  }
}

TEST_F(HtkReader, LeavesTheRestOfTheGraphAlone) {
  graph.layoutWidth = 3;
  graph.layoutHeight = 4;
  graph.showBestPath = graph.hasSelectedEdge = graph.labelByValue = true;
  graph.labelBySelectedXml = true;
  graph.selectedEdge.linkId = 5;
  graph.bestPathScore = 6.0;
  graph.selectedPathScore = 7.0;
  graph.fieldsByName = {{{1}, "in"}};
  graph.fieldsByIndex = {{0, 1}};
  graph.outputFormat = "svg";
  graph.bestPathText = "best";
  graph.selectedPathText = "selected";
  ASSERT_EQ(read("N=2\nJ=0 S=0 E=1 a=1\n"), "");
  EXPECT_EQ(graph.layoutWidth, 3);
  EXPECT_EQ(graph.layoutHeight, 4);
  EXPECT_TRUE(graph.showBestPath && graph.hasSelectedEdge && graph.labelByValue);
  EXPECT_TRUE(graph.labelBySelectedXml);
  EXPECT_EQ(graph.selectedEdge.linkId, 5);
  EXPECT_EQ(graph.bestPathScore, 6.0);
  EXPECT_EQ(graph.selectedPathScore, 7.0);
  EXPECT_EQ(graph.fieldsByName.size(), 1u);
  EXPECT_EQ(graph.fieldsByIndex.size(), 1u);
  EXPECT_EQ(graph.outputFormat, "svg");
  EXPECT_EQ(graph.bestPathText, "best");
  EXPECT_EQ(graph.selectedPathText, "selected");
}

}  // namespace
}  // namespace quorbel
