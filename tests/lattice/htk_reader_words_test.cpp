// The words of links.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lattice_file.h"

namespace quorbel {
namespace {

using namespace std::string_literals;

const std::string kError = "talk.lat: syntax error line 2";

class HtkReaderWords : public LatticeFile {
 protected:
  void expectLinks(const std::vector<Case>& cases) {
    for (const auto& [line, links] : cases) EXPECT_EQ(linksOf(line), links) << line;
  }
};

TEST_F(HtkReaderWords, StandUnderEachOfTheirNames) {
  for (const char* key : {"W", "WORD", "word"}) {
    EXPECT_EQ(linksOf("J=5 "s + key + "=\"hi\""), "link 5 from 1 to 1 as hi\n") << key;
    EXPECT_EQ(linksOf("J=5 "s + key + "=<hi/>"), "link 5 from 1 to 1 as <hi/>\n") << key;
    EXPECT_EQ(linksOf("J=5 "s + key + "=hi"), kError) << key;
  }
}

TEST_F(HtkReaderWords, AreKeptForLinksOnly) {
  EXPECT_EQ(latticeOf("N=2\nI=0 W=\"zero\" t=1\nI=1 W=<w/> t=4\nW=\"none\" a=1\nJ=0\n"),
            "2 nodes, 0 to 1\nnode 0 at 0.25\nnode 1 at 1\nlink 0 from 1 to 1\n");
}

TEST_F(HtkReaderWords, AreCheckedOnEveryLine) {
  for (const char* line : {"I=0 W=zero", "W=none", "a=1 W=\"open", "I=1 W=<open"})
    EXPECT_EQ(linksOf(line), kError) << line;
}

TEST_F(HtkReaderWords, MayStandBeforeTheLinksId) {
  EXPECT_EQ(linksOf("W=\"early\" J=5"), "link 5 from 1 to 1 as early\n");
  EXPECT_EQ(linksOf("I=0 W=<early/> J=5"), "link 5 from 1 to 1 as <early/>\n");
}

TEST_F(HtkReaderWords, LastOneOfALineCounts) {
  expectLinks({
      {"J=5 W=\"one\" W=\"two\"", "link 5 from 1 to 1 as two\n"},
      {"J=5 W=\"one\" word=<two/>", "link 5 from 1 to 1 as <two/>\n"},
      {"J=5 W=<one/> word=\"two\"", "link 5 from 1 to 1 as two\n"},
      {"J=5 W=\"one\" W=\"\"", "link 5 from 1 to 1\n"},
  });
}

TEST_F(HtkReaderWords, InQuotesRunToTheNextQuote) {
  expectLinks({
      {"J=5 W=\"good day\" a=1", "link 5 from 1 to 1 with a=-1 as good day\n"},
      {"J=5 W=\"\" a=1", "link 5 from 1 to 1 with a=-1\n"},
      {"J=5 W = \t \"x\"", "link 5 from 1 to 1 as x\n"},
      {"J=5 W=\" x\ty \" a=1", "link 5 from 1 to 1 with a=-1 as  x\ty \n"},
      {"J=5 W=\"#1 a=2\" b=3", "link 5 from 1 to 1 with b=-3 as #1 a=2\n"},
      {"J=5 W=\"<w>\"", "link 5 from 1 to 1 as <w>\n"},
      {"J=5 W=\"f\xc3\xbcr\"", "link 5 from 1 to 1 as f\xc3\xbcr\n"},
      {"J=5 W=\"x\ry\"", "link 5 from 1 to 1 as x\ry\n"},
      {"J=5 W=\"x\0y\" a=1"s, "link 5 from 1 to 1 with a=-1 as x\0y\n"s},
  });
}

TEST_F(HtkReaderWords, InQuotesTakeTheCharacterBehindABackslashAsItIs) {
  expectLinks({
      {R"(J=5 W="say \"hi\"" a=1)", "link 5 from 1 to 1 with a=-1 as say \"hi\"\n"},
      {R"(J=5 W="a\\b\nc")", "link 5 from 1 to 1 as a\\bnc\n"},
      {R"(J=5 W="\\" a=1)", "link 5 from 1 to 1 with a=-1 as \\\n"},
      {R"(J=5 W="\"")", "link 5 from 1 to 1 as \"\n"},
  });
}

TEST_F(HtkReaderWords, NextFieldMayFollowTheClosingQuoteAtOnce) {
  expectLinks({
      {"J=5 W=\"x\"a=1", "link 5 from 1 to 1 with a=-1 as x\n"},
      {"J=5 W=\"x\"=1", "link 5 from 1 to 1 with =-1 as x\n"},
      {"J=5 W=\"x\"W=\"y\"", "link 5 from 1 to 1 as y\n"},
      {"J=5 W=\"x\"\"y\"", kError},
  });
}

TEST_F(HtkReaderWords, InQuotesMayNotRunPastTheLine) {
  for (const char* word : {"\"", "\"open", "\"open\\\"", "\"open\\", "\"open\r", "\"\\", "\"a b=1"})
    EXPECT_EQ(linksOf("J=5 W="s + word), kError) << word;
  EXPECT_EQ(linksOf("J=5 W=\"open\nJ=6 W=\"x\""), kError);
}

TEST_F(HtkReaderWords, ThatBeginOtherwiseAreNoWords) {
  for (const char* word :
       {"plain", "", " ", "'single'", "\r", "#", "\\\"x\"", ">x<", "=\"x\"", "x\"y\""})
    EXPECT_EQ(linksOf("J=5 W="s + word), kError) << word;
  EXPECT_EQ(linksOf("J=5 W=\0\"x\""s), kError);
}

TEST_F(HtkReaderWords, InXmlRunToTheLastTopLevelElementOfTheLine) {
  expectLinks({
      {"J=3 S=0 E=1 W=<w>hi</w> <x>1</x> a=-10.5",
       "link 3 from 0 to 1 with a=10.5 as <w>hi</w> <x>1</x>\n"},
      {"J=5 W=<w in='a'/> a=1", "link 5 from 1 to 1 with a=-1 as <w in='a'/>\n"},
      {"J=5 W= \t <w/> a=1", "link 5 from 1 to 1 with a=-1 as <w/>\n"},
      {"J=5 W=<w/> a=1 <x/> b=2", "link 5 from 1 to 1 with b=-2 as <w/> a=1 <x/>\n"},
      {"J=5 W=<w/> # <x/>", "link 5 from 1 to 1 as <w/> # <x/>\n"},
      {"J=5 W=<w t='#\"'/>#note", "link 5 from 1 to 1 as <w t='#\"'/>\n"},
      {"J=5 W=<a> <b/> </a>  b=2", "link 5 from 1 to 1 with b=-2 as <a> <b/> </a>\n"},
      {"J=5 W=<a/><b/>c=3", "link 5 from 1 to 1 with c=-3 as <a/><b/>\n"},
      {"J=5 W=<>", "link 5 from 1 to 1 as <>\n"},
      {"J=5 W=<a\t/>\r", "link 5 from 1 to 1 as <a\t/>\n"},
      {"J=5 W=<a\0b/> c=1"s, "link 5 from 1 to 1 with c=-1 as <a\0b/>\n"s},
      {"J=5 W=<\xc3\xa4/>", "link 5 from 1 to 1 as <\xc3\xa4/>\n"},
  });
}

TEST_F(HtkReaderWords, InXmlCountBracketsInsideBrackets) {
  expectLinks({
      {"J=5 W=<a<b>> c=1", "link 5 from 1 to 1 with c=-1 as <a<b>>\n"},
      {"J=5 W=<<<>>> c=1", "link 5 from 1 to 1 with c=-1 as <<<>>>\n"},
      {"J=5 W=<a> x=1 <b<c>> d=2", "link 5 from 1 to 1 with d=-2 as <a> x=1 <b<c>>\n"},
  });
}

TEST_F(HtkReaderWords, InXmlMayNotRunPastTheLineWithABracketOpen) {
  for (const char* word : {"<", "<a", "<a b=1", "<a<b>", "<a/> <b", "<a><", "<<a>", "<a\r"})
    EXPECT_EQ(linksOf("J=5 W="s + word), kError) << word;
}

TEST_F(HtkReaderWords, InXmlEndWhereTheBracketsBalanceEvenAtAnOpeningOne) {
  expectLinks({
      // A closing bracket too many counts below zero, so that the next opening one balances.
      {"J=5 W=<a>> x <b=2", "link 5 from 1 to 1 with b=-2 as <a>> x <\n"},
      {"J=5 W=<a>> x <b> c=2", kError},  // the word ends at the last '<', then "b> c" is no field
      {"J=5 W=<a>> x <b>=1", "link 5 from 1 to 1 with b>=-1 as <a>> x <\n"},
      {"J=5 W=<a>> <b <c> d=4", "link 5 from 1 to 1 with d=-4 as <a>> <b <c>\n"},
      // Behind the last opening bracket a closing one too many is no longer part of the word.
      {"J=5 W=<a>>=1", "link 5 from 1 to 1 with >=-1 as <a>\n"},
      {"J=5 W=<a>> b=1", kError},
  });
}

TEST_F(HtkReaderWords, InXmlMayRunToTheEndOfTheLineWithBracketsBelowZero) {
  expectLinks({
      {"J=5 W=<a>>> x <b> c=1", "link 5 from 1 to 1 as <a>>> x <b> c=1\n"},
      {"J=5 W=<a>>> x <b> c=1 #note\r", "link 5 from 1 to 1 as <a>>> x <b> c=1 #note\r\n"},
      {"J=5 W=<a>>> <", "link 5 from 1 to 1 as <a>>> <\n"},
  });
}

}  // namespace
}  // namespace quorbel
