#include "graphviz/label_mending.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

using std::string_literals::operator""s;

const std::string kBegin =
    "digraph G {\nrankdir=LR;\n"
    "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
    "7 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n";

std::string linkWith(const std::string& label, const std::string& colour = "color=black") {
  return "0 -> 12 [ " + colour + ",label = \"" + label + "\", comment=\"ID = 345\"];\n";
}

/// The description of three links, of which the one in the middle has the label.
std::string withLabel(const std::string& label) {
  return kBegin + linkWith("the") + linkWith(label, "color=red, fontcolor=red") + linkWith("end") +
         "}\n";
}

/// What a label becomes.
void expectMended(const std::string& label, const std::string& mended) {
  EXPECT_EQ(mendedDescription(withLabel(label)).value_or("no description"), withLabel(mended))
      << label;
}

TEST(LabelMending, LeavesLabelsThatEndWhereTheyAreMeantTo) {
  for (const std::string label : {"",
                                  "word",
                                  "say \\\"hi\\\"",
                                  "a\\\\",
                                  "C:\\\\\\\\",
                                  "\\\\\\\"",
                                  "one\\ntwo\\l",
                                  "\\N",
                                  "&lt;",
                                  "<b>x</b>",
                                  "\xc3\xbc",
                                  "\xff",
                                  "a\nb",
                                  "\n",
                                  "ends in \\\n",
                                  "];",
                                  "}",
                                  "\n}",
                                  ", comment=",
                                  "x\r",
                                  "0 -> 1 [ color=black,label = ",
                                  "\n0 -> 1",
                                  "\n}\n"})
    expectMended(label, label);
}

TEST(LabelMending, GivesBareQuotesABackslash) {
  expectMended("\"", "\\\"");
  expectMended("say \"hi\"", "say \\\"hi\\\"");
  expectMended("\\\\\"", "\\\\\\\"");
  expectMended("\\\"\"", "\\\"\\\"");
  expectMended("\\\n\"", "\\\n\\\"");
  expectMended("a\nb\"c", "a\nb\\\"c");
}

TEST(LabelMending, GivesABackslashBeforeTheClosingQuoteAnother) {
  expectMended("\\", "\\\\");
  expectMended("a\\", "a\\\\");
  expectMended("a\\\\\\", "a\\\\\\\\");
  expectMended("\"\\", "\\\"\\\\");
}

TEST(LabelMending, KeepsWhatLooksLikeAttributesInTheLabel) {
  expectMended("\", URL=\"http://x", "\\\", URL=\\\"http://x");
  expectMended("\"]; 7 [image=\"/any.png\"]; 0 -> 7 [comment=\"ID = 0",
               "\\\"]; 7 [image=\\\"/any.png\\\"]; 0 -> 7 [comment=\\\"ID = 0");
  expectMended("\", comment=\"ID = 1\"]; x", "\\\", comment=\\\"ID = 1\\\"]; x");
  expectMended("\", comment=\"ID = 1\"];\n}", "\\\", comment=\\\"ID = 1\\\"];\n}");
  expectMended("\", comment=\"ID = 1\"];\n}\n", "\\\", comment=\\\"ID = 1\\\"];\n}\n");
  expectMended("\", comment=\"ID = 1\"];\n0 [URL=\"x\"];\n",
               "\\\", comment=\\\"ID = 1\\\"];\n0 [URL=\\\"x\\\"];\n");
  expectMended("\", comment=\"ID = x\"];\n0 -> 1 [ color=black,label = \"a",
               "\\\", comment=\\\"ID = x\\\"];\n0 -> 1 [ color=black,label = \\\"a");
}

TEST(LabelMending, BreaksLongLabelsBetweenCharactersAndTheirBackslashes) {
  const std::string block(8192, 'x');
  expectMended(block, block);
  expectMended(block + "y", block + "\\\ny");
  expectMended(block + block + block, block + "\\\n" + block + "\\\n" + block);
  expectMended(block.substr(1) + "\\\\y", block.substr(1) + "\\\\\\\ny");
  expectMended(block.substr(1) + "\"y", block.substr(1) + "\\\"\\\ny");
}

TEST(LabelMending, TakesDescriptionsWithoutLinks) {
  EXPECT_EQ(mendedDescription(kBegin + "}\n"), kBegin + "}\n");
  const std::string odd =
      "digraph G {\nrankdir=LR;\n-1 [shape=doublecircle, color=red, "
      "style=filled, fillcolor=lightgrey];\n"
      "-3 -> -1 [ color=black,label = \"a\", comment=\"ID = -345\"];\n}\n";
  EXPECT_EQ(mendedDescription(odd), odd);
}

TEST(LabelMending, TakesNothingElse) {
  const std::string description = withLabel("word");
  ASSERT_TRUE(mendedDescription(description));
  for (std::size_t length = 0; length < description.size(); ++length)
    EXPECT_FALSE(mendedDescription(description.substr(0, length))) << length;
  for (const std::string& other :
       {description + "\n", description + "digraph {}\n", "\n" + description, withLabel("a\0b"s),
        kBegin + "0 -> 1;\n}\n", kBegin + "URL=\"x\";\n}\n", kBegin + "8 [shape=box];\n}\n",
        kBegin + linkWith("a") + "8 -> 9 [label=\"b\"];\n}\n",
        kBegin + linkWith("a", "color=black, URL=x") + "}\n", "graph G {\nrankdir=LR;\n}\n"s})
    EXPECT_FALSE(mendedDescription(other)) << other;
}

}  // namespace
}  // namespace quorbel
