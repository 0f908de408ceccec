// Small files, one for each form in which toolkits write lattices: forms/NAME.slf is to become
// forms/NAME.lat to the letter, and the viewer is to open that and label each link with its word.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "formats/dialect_writer.h"
#include "formats/lattice_text.h"
#include "formats/normalise.h"
#include "lattice/htk_reader.h"
#include "temporary_folder.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

std::vector<std::string> formNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(SLF_FORMS))
    if (entry.path().extension() == ".slf") names.push_back(entry.path().stem());
  std::sort(names.begin(), names.end());
  return names;
}

std::string formText(const std::string& name) {
  return textOf(std::filesystem::path(SLF_FORMS) / name);
}

class Forms : public ::testing::TestWithParam<std::string> {
 protected:
  TemporaryFolder m_Folder;
};

TEST_P(Forms, ImportsToTheExpectedFile) {
  EXPECT_EQ(importOf(formText(GetParam() + ".slf")), formText(GetParam() + ".lat"));
}

TEST_P(Forms, OpensInTheViewerWithItsWordsAsLabels) {
  WordLattice lattice;
  readText(formText(GetParam() + ".slf"), lattice);
  const ViewerView view = openInViewer(formText(GetParam() + ".lat"));
  EXPECT_EQ(view.error, "");
  EXPECT_EQ(view.graph.nodes[static_cast<std::size_t>(view.graph.adjacency->nodeCount) - 1].time,
            1.0);
  if (!lattice.links.empty()) {
    EXPECT_EQ(view.scoreName, "TOTAL");
  }
  std::vector<std::string> words;
  for (const WordLink& link : lattice.links) words.push_back(drawableText(link.word.text));
  if (GetParam() == "dialect") words[0] = "good / gut";  // has the attribute "out" of its own
  EXPECT_EQ(view.labels, words);
}

TEST_P(Forms, ImportedOnceMoreStaysTheSame) {
  const std::string once = formText(GetParam() + ".lat");
  EXPECT_EQ(importOf(once), once);
}

TEST_P(Forms, ReadsTheExactWordsFromTheImport) {
  WordLattice before;
  readText(formText(GetParam() + ".slf"), before);
  WordLattice after;
  readText(formText(GetParam() + ".lat"), after);
  ASSERT_EQ(before.links.size(), after.links.size());
  for (std::size_t i = 0; i < before.links.size(); ++i)
    EXPECT_EQ(before.links[i].word.text, after.links[i].word.text);
}

INSTANTIATE_TEST_SUITE_P(All, Forms, ::testing::ValuesIn(formNames()), [](const auto& form) {
  std::string name = form.param;
  std::replace_if(
      name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); },
      '_');
  return name;
});

TEST(Fields, MayStandInFrontOfTheIndexThatTheyBelongTo) {
  const std::string usual = importOf(
      "N=2 L=2\nI=0 t=0\nI=1 t=2\n"
      "J=0 S=0 E=1 W=yes a=-1\nJ=1 S=0 E=1 W=no a=-2\n");
  EXPECT_EQ(importOf("N=2 L=2 I=0 t=0\nt=2 I=1\n"
                     "S=0 E=1 W=yes J=0 a=-1\nW=no a=-2 E=1 S=0 J=1\n"),
            usual);
  EXPECT_NE(usual.find("J=1 S=0 E=1 W=<w in='no'/>"), std::string::npos) << usual;
}

TEST(Scores, OfMinusInfinityAreLogsOfZeroHoweverTheyAreWritten) {
  for (const char* score : {"-inf", "-Inf", "-INF", "-Infinity", "-infinity"})
    EXPECT_EQ(importOf(std::string("N=2 L=1\nI=0\nI=1\nJ=0 S=0 E=1 W=a a=") + score + "\n"),
              importOf("N=2 L=1\nI=0\nI=1\nJ=0 S=0 E=1 W=a a=-1000000\n"))
        << score;
}

TEST(Words, AreReadFromTheFormsAsTheyAreMeant) {
  WordLattice lattice;
  readText(formText("quoted-values.slf"), lattice);
  std::vector<std::string> words;
  for (const WordLink& link : lattice.links) words.push_back(link.word.text);
  EXPECT_EQ(words, (std::vector<std::string>{"double quoted", "single quoted", "a \"quoted\" word",
                                             "it's", "didn't", "'cause", "!NULL", "it's so"}));
  lattice = WordLattice();
  readText(formText("backslash-escapes.slf"), lattice);
  words.clear();
  for (const WordLink& link : lattice.links) words.push_back(link.word.text);
  EXPECT_EQ(words, (std::vector<std::string>{"\"cause", "'em", "back\\slash", "a b\tc", "A98"}));
}

TEST(Size, OfWhatTheViewerOpensIsTheLimit) {
  const auto chain = [](int count) {
    std::string text = "N=" + std::to_string(count) + " L=" + std::to_string(count - 1) + "\n";
    for (int i = 0; i < count; ++i)
      text += "I=" + std::to_string(i) + " t=" + std::to_string(i) + "\n";
    for (int i = 1; i < count; ++i)
      text += "J=" + std::to_string(i) + " S=" + std::to_string(i - 1) + " E=" + std::to_string(i) +
              " W=w\n";
    return text;
  };
  EXPECT_EQ(importOf(chain(kMostNodes)).substr(0, 29), "VERSION=1.1\nN=50000 L=49999\nI");
  EXPECT_EQ(importOf(chain(kMostNodes + 1)),
            "the lattice has 50001 nodes, and the viewer opens at most 50000; make it smaller with "
            "\"quorbel-lattice prune\"");
}

}  // namespace
}  // namespace quorbel
