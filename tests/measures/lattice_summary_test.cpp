#include "measures/lattice_summary.h"

#include <gtest/gtest.h>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

std::string summaryOfText(const std::string& text) {
  WordLattice lattice;
  readText(text, lattice);
  return summaryOf(lattice);
}

std::vector<std::string> warningsOfText(const std::string& text) {
  WordLattice lattice;
  readText(text, lattice);
  return warningsAbout(lattice);
}

TEST(LatticeSummary, TellsWhatThereIs) {
  EXPECT_EQ(summaryOfText("UTTERANCE=talk\nwdpenalty=-1\nN=3 L=3\nI=2 t=0\nI=1 t=0.5\nI=0 t=2.0\n"
                          "J=0 S=2 E=1 W=good a=-2\nJ=1 S=2 E=1 W=could a=-3 l=-0.5\n"
                          "J=2 S=1 E=0 W=day a=-4\n"),
            "utterance:        talk\n"
            "words:            plain, to be imported for the viewer\n"
            "nodes:            3\n"
            "links:            3\n"
            "duration:         2 s\n"
            "links per second: 1.5\n"
            "start node:       0 (2 in the file)\n"
            "end node:         2 (0 in the file)\n"
            "cyclic:           no\n"
            "score TOTAL:      -5 to -3 on 3 links\n"
            "score post:       -1.70141 to 0 on 3 links\n"
            "score a:          -4 to -2 on 3 links\n"
            "score l:          -0.5 to -0.5 on 1 links\n"
            "best path:        TOTAL=-8: good day\n");
}

TEST(LatticeSummary, TellsOfCyclesJoinedNodesAndMissingTimes) {
  EXPECT_EQ(summaryOfText("N=2 L=2\nI=0 W=a\nI=1 W=b\nJ=0 S=0 E=1\nJ=1 S=1 E=1\nstart=0\nend=1\n"),
            "words:            plain, to be imported for the viewer\n"
            "nodes:            4\n"
            "links:            4\n"
            "duration:         not known: no node has a time\n"
            "start node:       0 (joined to those of the file)\n"
            "end node:         3 (joined to those of the file)\n"
            "cyclic:           yes\n"
            "score TOTAL:      0 to 0 on 4 links\n"
            "best path:        TOTAL=0: a b\n"
            "note:             no node has a time; its depth in the lattice stands for it\n");
}

TEST(LatticeSummary, WarnsOfWhatTheViewerDoesNotExpect) {
  const std::string nodes = "N=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n";
  EXPECT_EQ(warningsOfText(nodes + "J=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=2 W=b a=0\n"),
            std::vector<std::string>{});
  EXPECT_EQ(warningsOfText(nodes + "J=4 S=0 E=1 W=a a=1\nJ=3 S=1 E=2 W=b a=2\n"),
            std::vector<std::string>{
                "the TOTAL of 2 links is positive (the first: J=3), so for the viewer's search a "
                "link costs 2 more for each level that it spans, and every path 4 more; its "
                "\"unshifted\" is the true sum"});
  EXPECT_EQ(warningsOfText(nodes + "J=0 S=0 E=1 W=a a=-5e7\nJ=1 S=1 E=2 W=b a=5e7\n").back(),
            "the best path costs 1e+08, more than the viewer's search can reach");
  EXPECT_EQ(warningsOfText("start=0 end=2\n" + nodes +
                           "J=0 S=0 E=1 W=a a=1\nJ=1 S=1 E=1 W=b a=0\nJ=2 S=1 E=2 W=c\n"),
            (std::vector<std::string>{
                "the TOTAL of 1 links is positive (the first: J=0) in a network with a cycle, so "
                "the viewer's search may miss the best path",
                "there is no best path: the network has a cycle, and the score of link 0 is "
                "positive: going around might improve a path for ever"}));
  EXPECT_EQ(warningsOfText(nodes + "J=0 S=0 E=1 W=a a=-99999999\nJ=1 S=1 E=2 W=b a=0\n"),
            std::vector<std::string>{
                "the best path costs 1e+08, more than the viewer's search can reach"});
  EXPECT_EQ(
      warningsOfText("start=0 end=2\n" + nodes + "J=0 S=0 E=1 W=a a=-1\n"),
      std::vector<std::string>{"there is no best path: no path leads from the start to the end"});
}

TEST(LatticeSummary, WarnsOfSlowDrawing) {
  std::string text = "N=2\nI=0 t=0\nI=1 t=1\n";
  for (int i = 0; i < 600; ++i) text += "J=" + std::to_string(i) + " S=0 E=1 W=a\n";
  EXPECT_EQ(warningsOfText(text), std::vector<std::string>{});
  EXPECT_EQ(
      warningsOfText(text + "J=600 S=0 E=1 W=a\n"),
      std::vector<std::string>{
          "drawing 601 links takes long; \"quorbel-lattice prune IN OUT --links 300\" makes a "
          "lattice that is drawn in a moment"});
}

}  // namespace
}  // namespace quorbel
