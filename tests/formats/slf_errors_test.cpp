// Files that are refused, each with the line and the reason.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

struct Case {
  std::string text;
  std::string error;
};

/// Two nodes and no links, for cases to add to.
const std::string kTwoNodes = "N=2\nI=0 t=0\nI=1 t=1\n";

/// A value too long to be shown as a whole.
const std::string kLong(41, 'x');
const std::string kLongAsShown = std::string(40, 'x') + "...";

TEST(SlfErrors, NameTheLineAndTheReason) {
  const std::vector<Case> cases = {
      {"", "line 1: the file ends without the number of nodes (N= or NODES=)"},
      {"VERSION=1.0\nI=0\n", "line 2: the file ends without the number of nodes (N= or NODES=)"},
      {"N=0 L=0\n", "line 1: a lattice without nodes (N=0)"},
      {"VERSION=2.0\n", "line 1: version 2.0 of the format is not known, only 1.0 and 1.1"},
      {"N=2\nN=3\n", "line 2: N= is given for the second time"},
      {"N=two\n", "line 1: N=two is no number from 0 on"},
      {"N=-2\n", "line 1: N=-2 is no number from 0 on"},
      {"N=99999999999\n", "line 1: N=99999999999 is no number from 0 on"},
      {"N=2000000000\nI=0\n", "line 2: the file ends without node 1 (nodes are 0 to 1999999999)"},
      {"N=2\nI=0\n", "line 2: the file ends without node 1 (nodes are 0 to 1)"},
      {"N=2\nI=0\nI=2\n", "line 3: node 2, but nodes are 0 to 1"},
      {"N=2\nI=0\nI=1\n\nI=0\n", "line 5: node 0 was given before, on line 2"},
      {"N=1\nI=0 t=now\n", "line 2: t=now is no time"},
      {"N=1\nI=0 t=nan\n", "line 2: t=nan is no time"},
      {"N=1\nI=0 t=" + kLong + "\n", "line 2: t=" + kLongAsShown + " is no time"},
      {kTwoNodes + "J=0 S=0 E=1\nJ=1 S=0 E=1\nJ=0 S=0 E=1\n",
       "line 6: link 0 was given before, on line 4"},
      {kTwoNodes + "J=0 E=1\n", "line 4: link 0 has no start node (S=)"},
      {kTwoNodes + "J=0 S=0\n", "line 4: link 0 has no end node (E=)"},
      {kTwoNodes + "J=0 S=2 E=1\n", "line 4: link 0 leaves node 2, but nodes are 0 to 1"},
      {kTwoNodes + "J=0 S=0 E=2\n", "line 4: link 0 enters node 2, but nodes are 0 to 1"},
      {kTwoNodes + "J=0 S=-1 E=1\n", "line 4: S=-1 is no number from 0 on"},
      {kTwoNodes + "J=0 S=0 E=1.5\n", "line 4: E=1.5 is no number from 0 on"},
      {kTwoNodes + "J=2147483647 S=0 E=1\n", "line 4: the link id 2147483647 is too high"},
      {kTwoNodes + "S=0 E=2 J=0\n", "line 4: link 0 enters node 2, but nodes are 0 to 1"},
      {"L=2\n" + kTwoNodes + "J=0 S=0 E=1\n",
       "line 1: the number of links is given as 2, but the file has 1"},
      {"L=0\n" + kTwoNodes + "J=0 S=0 E=1\n",
       "line 1: the number of links is given as 0, but the file has 1"},
      {kTwoNodes + "start=2\n", "line 4: start= node 2, but nodes are 0 to 1"},
      {kTwoNodes + "end=7\n", "line 4: end= node 7, but nodes are 0 to 1"},
      {kTwoNodes + "J=0 S=0 E=1 a=loud\n", "line 4: a=loud is no number"},
      {kTwoNodes + "J=0 S=0 E=1 a=1e999\n", "line 4: a=1e999 is no number"},
      {kTwoNodes + "J=0 S=0 E=1 a=" + kLong + "\n", "line 4: a=" + kLongAsShown + " is no number"},
      {"N=2\nI=0\nI=1 acoustic=x\nJ=0 S=0 E=1\n", "line 3: acoustic=x is no number"},
      {kTwoNodes + "J=0 S=0 E=1 W=a word\n", "line 4: \"word\" is no field KEY=VALUE"},
      {kTwoNodes + "J=0 S=0 E=1 W=\"a word\n",
       "line 4: the value of W begins with a double quote that none ends"},
      {kTwoNodes + "J=0 S=0 E=1 =5\n", "line 4: \"=5\" is no field KEY=VALUE"},
      {"lmscale=high\n", "line 1: lmscale=high is no number"},
      {"base=-2\n", "line 1: base=-2 is negative and no base of logarithms"},
      {"tscale=0\n", "line 1: tscale=0 is no scale of times"},
      {"dir=up\n", "line 1: dir=up is neither f nor b"},
      {"base=0\n" + kTwoNodes + "J=0 S=0 E=1 a=-1\n", "line 5: a=-1 is no probability (base=0)"},
      {"VERSION=1.0\nSUBLAT=digits\n",
       "line 2: SUBLAT=digits begins a sub-lattice (SUBLAT), and these are not supported"},
      {"S=digits\n", "line 1: S=digits begins a sub-lattice (SUBLAT), and these are not supported"},
      {"N=1\nI=0 L=digits\n",
       "line 2: L=digits makes node 0 stand for a sub-lattice (SUBLAT), and these are not "
       "supported"},
      {kTwoNodes + "J=0 S=0 E=1 a~\x01\x02\n",
       "line 4: the field a~ has a binary value; only text lattices can be read"},
      {kTwoNodes + std::string("J=0 S=0 E=1 W=a\0b\n", 18),
       "line 4: a zero byte; only text can be read"},
      {kTwoNodes + ".\nN=3\n",
       "line 5: the lattice ended before; only files with one lattice can be read"},
      {"\x7f"
       "ELF binary\n",
       "line 1: \"\u2421ELF\" is no field KEY=VALUE"},
  };
  for (const Case& wrong : cases) EXPECT_EQ(errorOf(wrong.text), wrong.error) << wrong.text;
}

TEST(SlfErrors, ComeWithTheLineThatIsTheFirstTooMuch) {
  // Of a node or link that comes again, before anything else is looked at.
  EXPECT_EQ(errorOf("N=9\nI=0\nI=0\nI=1 nonsense\n"), "line 3: node 0 was given before, on line 2");
  EXPECT_EQ(errorOf("J=7 S=8 E=9\nJ=7 S=8 E=9\nnonsense\n"),
            "line 2: link 7 was given before, on line 1");

  std::string fields = "N=1\nI=0";
  for (int i = 0; i < 1000000; ++i) fields += " a=1";
  EXPECT_EQ(errorOf(fields + "\n"), "");
  EXPECT_EQ(errorOf(fields + " a=1\n"),
            "line 2: more than 1000000 fields, which is beyond any lattice");
}

TEST(SlfErrors, NameAWordWithMoreAttributesThanAnyHas) {
  std::string attributes;
  for (int i = 0; i < 1000; ++i) attributes += " k" + std::to_string(i) + "= '1'";
  const std::string begin = kTwoNodes + "J=0 S=0 E=1 W=<w";
  EXPECT_EQ(errorOf(begin + attributes + "><a b=''/></w>\n"), "");
  EXPECT_EQ(errorOf(begin + attributes + " b=''/>\n"),
            "line 4: the word <w k0= '1' k1= '1' k2= '1' k3= '1' k4= '... has more than 1000 "
            "attributes in one element");
}

TEST(SlfErrors, SayWhereNodesSayTooMuchForTheLinksThatEnterThem) {
  constexpr std::size_t kMostBytes = std::size_t{16} << 20u;
  constexpr std::size_t kLinks = 4096;
  const auto latticeOf = [&](std::size_t size) {
    std::string text = "N=2\nI=0\nI=1 W=" + std::string(size - 1, 'w') + "\n";
    for (std::size_t i = 0; i < kLinks; ++i) text += "J=" + std::to_string(i) + " S=0 E=1\n";
    return text;
  };
  EXPECT_EQ(errorOf(latticeOf(kMostBytes / kLinks)), "");
  EXPECT_EQ(errorOf(latticeOf(kMostBytes / kLinks + 1)),
            "line 4099: with this link, what nodes say is too much for all links that enter them");
}

TEST(SlfErrors, AreNoneWhereAFormIsOnlyUnusual) {
  const std::vector<std::string> texts = {
      kTwoNodes,                                          // no number of links
      kTwoNodes + "J=0 S=0 E=1 W= a = -1",                // blanks around "=", no line end
      kTwoNodes + "J=2146000000 S=0 E=1\n",               // a high id
      "UTTERANCE=talk one\n" + kTwoNodes,                 // a text of two words
      "VERSION=1.0 UTTERANCE=x lmscale=2\n" + kTwoNodes,  // several fields
      kTwoNodes + ".\n\n# the end\n",
      kTwoNodes + "J=0 S=0 E=1 W=~tilde x~y=2\n",
  };
  for (const std::string& text : texts) {
    if (text.find("x~y") != std::string::npos)
      EXPECT_EQ(errorOf(text),
                "line 4: the field x~ has a binary value; only text lattices can be read");
    else
      EXPECT_EQ(errorOf(text), "") << text;
  }
}

}  // namespace
}  // namespace quorbel
