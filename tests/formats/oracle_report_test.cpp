#include "formats/oracle_report.h"

#include <gtest/gtest.h>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

/// "it's hard to <sil> wreck a nice beach", and other ways to say it.
const std::string kSpeech =
    "N=9 L=9\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\nI=4 t=4\nI=5 t=5\nI=6 t=6\nI=7 t=7\nI=8 t=8\n"
    "J=0 S=0 E=1 W=it's a=-1\nJ=1 S=1 E=2 W=hard a=-1\nJ=2 S=2 E=3 W=to a=-1\n"
    "J=3 S=3 E=4 W=<sil> a=-1\nJ=4 S=4 E=5 W=wreck a=-1\nJ=5 S=5 E=6 W=a a=-1\n"
    "J=6 S=6 E=7 W=nice a=-1\nJ=7 S=7 E=8 W=beach a=-1\nJ=8 S=4 E=8 W=reckon\\303\\274 a=-9\n";

OracleResult compared(const std::string& text, const std::vector<std::string>& reference,
                      WordLattice& lattice) {
  readText(text, lattice);
  OracleResult result;
  EXPECT_EQ(compareWithReference(lattice, reference, {}, result), "");
  return result;
}

TEST(OracleReport, PutsWordsThatBelongTogetherOneAboveTheOther) {
  WordLattice lattice;
  const OracleResult result =
      compared(kSpeech, {"it's", "so", "hard", "to", "reckonü", "speech"}, lattice);
  EXPECT_EQ(alignmentText(lattice, result),
            "  reference: it's so  hard to ***   *** reckonü speech\n"
            "  best:      it's *** hard to wreck a   nice    beach\n"
            "  oracle:    it's *** hard to ***   *** reckonü ***\n");
}

TEST(OracleReport, HasARowForEachLatticeAndTheirSum) {
  WordLattice lattice;
  const OracleResult result =
      compared(kSpeech, {"it's", "so", "hard", "to", "reckonü", "speech"}, lattice);
  ErrorCounts all;
  addCounts(all, errorCountsOf(lattice, result));
  EXPECT_EQ(
      tableHeading() + tableRow("monday", all),
      "words  best WER    sub    del    ins  oracle WER    sub    del    ins  links/s  utterance\n"
      "    6     83.33      2      1      2       33.33      0      2      0    1.125  monday\n");
  WordLattice net;
  addCounts(all, errorCountsOf(net, compared("N=2 L=1\nI=0\nI=1\nJ=0 S=0 E=1 W=a\n", {}, net)));
  EXPECT_EQ(tsvHeading() + tsvRow("a\tb", all),
            "utterance\twords\tbest_sub\tbest_del\tbest_ins\toracle_sub\toracle_del\toracle_ins\t"
            "links_per_second\n"
            "a␉b\t6\t2\t1\t3\t0\t2\t1\t1.125\n");
}

TEST(OracleReport, HasNoRateOfNoWordsAndNoLinksPerSecondWithoutTimes) {
  WordLattice net;
  const ErrorCounts counts =
      errorCountsOf(net, compared("N=2 L=1\nI=0\nI=1\nJ=0 S=0 E=1 W=a\n", {}, net));
  EXPECT_EQ(tableRow("x", counts),
            "    0         -      0      0      1           -      0      0      1        -  x\n");
  EXPECT_EQ(tsvRow("x", counts), "x\t0\t0\t0\t1\t0\t0\t1\tnan\n");
}

}  // namespace
}  // namespace quorbel
