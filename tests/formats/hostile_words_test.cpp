// Words and names that aim at the viewer's reader or at Graphviz.

#include <gtest/gtest.h>

#include <random>

#include "formats/lattice_text.h"
#include "lattice/reading_rules.h"
#include "layout/dot_writer.h"
#include "temporary_folder.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// A lattice of three nodes with one link between the last two that has this field.
std::string latticeWith(const std::string& field) {
  return "N=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\nJ=0 S=0 E=1 W=one a=-1\nJ=1 S=1 E=2 " + field +
         " a=-2\n";
}

class HostileWords : public ::testing::Test {
 protected:
  /// Imports a lattice and expects the viewer to see its words between node 0 and the last.
  void expectSound(const std::string& text) {
    WordLattice lattice;
    readText(text, lattice);
    const ViewerView view = openInViewer(importOf(text));
    ASSERT_EQ(view.error, "");
    EXPECT_EQ(view.graph.adjacency->startNode, 0);
    EXPECT_EQ(view.graph.adjacency->endNode, view.graph.adjacency->nodeCount - 1);
    std::vector<std::string> words;
    for (const WordLink& link : lattice.links) words.push_back(drawableText(link.word.text));
    EXPECT_EQ(view.labels, words);
  }
  TemporaryFolder m_Folder;
};

TEST_F(HostileWords, NeverNameTheStartOrEndNodeInALongLine) {
  for (const std::string word : {"start=1", "end=0", "end= 1", "xend=1"}) {
    for (std::size_t shift = 0; shift < 12; ++shift) {
      std::string value(kEndPointStretch - 20 + shift, 'x');
      for (int i = 0; i < 300; ++i) value += word;
      expectSound(latticeWith("W=\"" + value + "\""));
    }
  }
}

TEST_F(HostileWords, NeverNameThemInAScoreEither) {
  for (std::size_t shift = 0; shift < 40; ++shift)
    expectSound(
        latticeWith("W=" + std::string(kEndPointStretch - 60 + shift, 'w') + " x=1 end=1 start=2"));
}

TEST_F(HostileWords, AreMovedWithinALineOfXml) {
  // The viewer's own dialect: what stands in the fragment stays, so the line moves.
  for (std::size_t shift = 0; shift < 40; ++shift) {
    const std::string text = latticeWith(
        "W=<w in='two'>" + std::string(kEndPointStretch - 60 + shift, 'x') + "end=1</w>");
    const std::string dialect = importOf(text);
    const ViewerView view = openInViewer(dialect);
    ASSERT_EQ(view.error, "");
    EXPECT_EQ(view.graph.adjacency->endNode, 2) << dialect;
  }
}

TEST_F(HostileWords, CannotBeWrittenWhereNoPlaceOfTheLineHelps) {
  std::string fragment = "<w in='two'>";
  for (std::size_t stretch = 0; stretch < 8; ++stretch) {
    while (fragment.size() < (stretch + 1) * kEndPointStretch + stretch) fragment += "end=1";
    fragment += std::string("xxxxxxxx").substr(0, 1);
  }
  EXPECT_EQ(importOf(latticeWith("W=" + fragment + "</w>")),
            "link 1 has so long a word, with \"start=\" or \"end=\" in it, that the viewer would "
            "misread it");
}

TEST_F(HostileWords, OfAllBytesReadBackAndDraw) {
  std::mt19937 random(20268);
  SCOPED_TRACE("seed 20268");
  std::uniform_int_distribution<int> byte(1, 255);
  std::uniform_int_distribution<int> length(1, 12);
  const std::string favourites = "\"\\'<>&;=#%~\n\t amp";
  for (int round = 0; round < 2000; ++round) {
    std::string bytes;
    for (int i = length(random); i > 0; --i)
      bytes += round % 2 == 0
                   ? static_cast<char>(byte(random))
                   : favourites[static_cast<std::size_t>(byte(random)) % favourites.size()];
    std::string value;
    for (const char c : bytes) {
      const unsigned code = static_cast<unsigned char>(c);
      value += '\\';
      for (const unsigned shift : {6u, 3u, 0u})
        value += static_cast<char>('0' + (code >> shift & 7u));
    }
    const std::string text = latticeWith("W=" + value);
    WordLattice before;
    readText(text, before);
    ASSERT_EQ(before.links[1].word.text, inUtf8(bytes));
    expectSound(text);
    WordLattice after;
    readText(importOf(text), after);
    ASSERT_EQ(after.links[1].word.text, inUtf8(bytes)) << importOf(text);
    const ViewerView view = openInViewer(importOf(text));
    for (const std::string& label : view.labels)
      ASSERT_EQ(label.find_first_of("\"\\\n\r"), std::string::npos) << label;
  }
}

TEST_F(HostileWords, InEveryOtherPlaceOfALinkAreHarmless) {
  const std::string nasty[] = {"<x", "</w>", "a'b", "\\\"", "&lt;", "]]>", "start=1", "W=<x/>"};
  for (const std::string& value : nasty) {
    expectSound(latticeWith("W=two note=" + value));
    expectSound(latticeWith("W=two v=" + value));
    expectSound(latticeWith("W=two i\"<>=" + value));
    expectSound(latticeWith("W=two n<m=-1"));
    expectSound("UTTERANCE=" + value + "\n" + latticeWith("W=two"));
  }
}

}  // namespace
}  // namespace quorbel
