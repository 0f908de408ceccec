#include "formats/references.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

/// The words that are found, or that there are none.
Texts found(References& references, const LatticeNames& names) {
  const std::vector<std::string>* words = references.find(names);
  return words ? *words : Texts{"(none)"};
}

std::string errorIn(const std::string& text) {
  References references;
  return references.parse(text);
}

TEST(References, ReadKaldisText) {
  References references;
  ASSERT_EQ(references.parse("one good  day\n\ntwo\tbad\r\nthree\nfour f\xFCnf\n"), "");
  EXPECT_EQ(found(references, {"one", "", false}), (Texts{"good", "day"}));
  EXPECT_EQ(found(references, {"", "talks/two.slf.gz", false}), (Texts{"bad"}));
  EXPECT_EQ(found(references, {"four", "", false}), (Texts{"fünf"}));
  EXPECT_EQ(found(references, {"five", "x/five.lat", true}), (Texts{"(none)"}));
  EXPECT_EQ(references.unused(), (Texts{"three"}));
  EXPECT_EQ(found(references, {"three", "", false}), (Texts{}));
  EXPECT_EQ(references.unused(), (Texts{}));
}

TEST(References, ReadTrn) {
  References references;
  ASSERT_EQ(references.parse(";; a comment\ngood day (talk-1)\n(talk-2)\nbad (day)(talk-3) \n"),
            "");
  EXPECT_EQ(found(references, {"talk-1", "", false}), (Texts{"good", "day"}));
  EXPECT_EQ(found(references, {"talk-2", "", false}), (Texts{}));
  EXPECT_EQ(found(references, {"talk-3", "", false}), (Texts{"bad", "(day)"}));
}

TEST(References, ReadFilesOfOtherSystems) {
  References text;
  ASSERT_EQ(text.parse("\xEF\xBB\xBFone good day\r\n"), "");
  EXPECT_EQ(found(text, {"one", "", true}), (Texts{"good", "day"}));
  References trn;
  ASSERT_EQ(trn.parse("good day ( one )\r\nbad day (\ttwo)\r\n"), "");
  EXPECT_EQ(found(trn, {"one", "", false}), (Texts{"good", "day"}));
  EXPECT_EQ(found(trn, {"two", "", false}), (Texts{"bad", "day"}));
  References labels;
  ASSERT_EQ(labels.parse("\xEF\xBB\xBF#!MLF!#\r\n\"*/one.lab\"\r\nday\r\n.\r\n"), "");
  EXPECT_EQ(found(labels, {"one", "", false}), (Texts{"day"}));
}

TEST(References, ReadMasterLabelFiles) {
  References references;
  ASSERT_EQ(
      references.parse("#!MLF!#\n\"*/one.lab\"\n0 1000 good -5.5\n1000 2000 \"3 o'clock\"\n///\n"
                       "never\n.\n\"/data/two.rec\"\n7\n0 day\n'it\\'s'\n\\303\\274ber\n.\n"),
      "");
  EXPECT_EQ(found(references, {"", "lattices/one.lat", false}), (Texts{"good", "3 o'clock"}));
  EXPECT_EQ(found(references, {"/data/two.plp", "", false}), (Texts{"7", "day", "it's", "über"}));
  EXPECT_EQ(references.unused(), (Texts{}));
}

TEST(References, FindLabelFilesByUtterancesWithPointsInTheirNames) {
  References references;
  ASSERT_EQ(references.parse("#!MLF!#\n\"*/talk.plp.lab\"\nplp\n.\n\"*/talk.lab\"\nday\n.\n"), "");
  EXPECT_EQ(found(references, {"talk.plp", "", false}), (Texts{"plp"}));
  EXPECT_EQ(found(references, {"talk.mfc", "", false}), (Texts{"day"}));
}

TEST(References, LeaveOutLabelFilesOfTheSameNameInTwoFolders) {
  References references;
  ASSERT_EQ(references.parse("#!MLF!#\n\"/a/one.lab\"\na\n.\n\"/b/one.lab\"\nb\n.\n"), "");
  EXPECT_EQ(found(references, {"one", "", false}), (Texts{"(none)"}));
  EXPECT_EQ(found(references, {"/b/one.lab", "", false}), (Texts{"b"}));
}

TEST(References, AreTheWordsOfTheOnlyLineForTheOnlyLattice) {
  References references;
  ASSERT_EQ(references.parse("\nit's a good day\n"), "");
  EXPECT_EQ(found(references, {"talk", "", false}), (Texts{"(none)"}));
  EXPECT_EQ(found(references, {"talk", "", true}), (Texts{"it's", "a", "good", "day"}));
  EXPECT_EQ(references.unused(), (Texts{}));
  EXPECT_EQ(found(references, {"it's", "", true}), (Texts{"a", "good", "day"}));
}

TEST(References, PreferTheUtteranceToThePathAndThatToItsStem) {
  References references;
  ASSERT_EQ(references.parse("one by-utterance\nx/one.lat by-path\nstem by-stem\n"), "");
  EXPECT_EQ(found(references, {"one", "x/one.lat", false}), (Texts{"by-utterance"}));
  EXPECT_EQ(found(references, {"zero", "x/one.lat", false}), (Texts{"by-path"}));
  EXPECT_EQ(found(references, {"zero", "x/stem.lat", false}), (Texts{"by-stem"}));
}

TEST(References, SayWhatIsWrongWithWhichLine) {
  EXPECT_EQ(errorIn("one a\ntwo b\none c\n"), "line 3: a second reference for one");
  EXPECT_EQ(errorIn("a (one)\nb (one)\n"), "line 2: a second reference for one");
  EXPECT_EQ(errorIn("{ a / b } (one)\n"), "line 1: alternatives in braces are not read");
  EXPECT_EQ(errorIn("#!MLF!#\none\n"), "line 2: one is no name in quotes");
  EXPECT_EQ(errorIn("#!MLF!#\n\"one\" -> \"folder\"\n"),
            "line 2: labels in other files are not read");
  EXPECT_EQ(errorIn("#!MLF!#\n\"one\"\na\n.\n\"one\"\n.\n"), "line 5: a second reference for one");
  EXPECT_EQ(errorIn(""), "");
}

}  // namespace
}  // namespace quorbel
