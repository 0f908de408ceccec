// Lattice files that are not as they should be, in the window: what the user is told, what is drawn
// all the same, and that the next lattice opens as ever.

#include <string>
#include <vector>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

class BadInput : public WindowTest {
 protected:
  ~BadInput() override {
    dialogs.clear();
    openLattice(kTwoWords, "next.lat");
    EXPECT_EQ(dialogs, Texts());
    EXPECT_EQ(edgeOf(*window, 1).label, "morning / Morgen");
  }

  void expectRefused(const std::string& text, const std::string& reason) {
    TestWindow& w = openLattice(text);
    EXPECT_EQ(dialogs, Texts{(folder.path() / "test.lat").string() + reason});
    EXPECT_FALSE(w.m_FileOpened);
    EXPECT_EQ(statusOf(w), "No file opened");
  }

  /// Opens a lattice with one link, whose word this is.
  TestWindow& openWord(const std::string& word) {
    return openLattice("N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=" + word + " a=-1\n");
  }

  /// Opens a lattice with one link and expects that it is drawn with this label.
  void expectLabel(const std::string& word, const std::string& label) {
    TestWindow& w = openWord(word);
    EXPECT_EQ(dialogs, Texts());
    ASSERT_EQ(w.m_EdgeLayouts.size(), 3u);
    EXPECT_EQ(edgeOf(w, 0).label, label);
    EXPECT_TRUE(w.m_refShownImage);
  }
};

TEST_F(BadInput, EmptyFileIsASyntaxError) { expectRefused("", ": syntax error line 1"); }

TEST_F(BadInput, BinaryFileIsASyntaxError) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += static_cast<char>((i * 7919 + i / 256) % 256);
  expectRefused(
      "\x7f"
      "ELF\x02\x01\x01" +
          bytes,
      ": syntax error line 1");
}

TEST_F(BadInput, LineWithoutEndIsASyntaxError) {
  expectRefused("N=2\n" + std::string(100000000, 'x') + "\n", ": syntax error line 2");
}

TEST_F(BadInput, LongWordIsDrawnAsNULL) {  // longer than the XML reader takes an attribute
  expectLabel("<w in='" + std::string(11000000, 'x') + "'/>", "NULL");
}

TEST_F(BadInput, CountBelowTheNodesIsASyntaxError) {
  expectRefused("N=2 L=1\nI=0 t=0\nI=1 t=1\nI=2 t=2\nJ=0 S=0 E=1 W=<w in='a'/> a=-1\n",
                ": syntax error line 4");
}

TEST_F(BadInput, CountAboveTheNodesDrawsWhatIsThere) {
  TestWindow& w = openLattice("N=9 L=7\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='a'/> a=-1\n");
  EXPECT_EQ(dialogs, Texts());
  ASSERT_EQ(w.m_EdgeLayouts.size(), 4u) << "nodes 0, 1 and the last, and the link";
  EXPECT_EQ(edgeOf(w, 0).label, "a");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 1e+08") << "no link enters the last node";
}

TEST_F(BadInput, CountsThatNoLatticeMayHaveAreNamed) {
  for (const char* count : {"0", "-1", "50001", "2147483647"}) {
    dialogs.clear();
    openLattice(std::string("N=") + count + "\n");
    EXPECT_EQ(dialogs, Texts{std::string("Bad number of node in HTK file : ") + count});
  }
}

TEST_F(BadInput, LinksOutsideTheNodesAreLeftOut) {
  TestWindow& w = openLattice(
      "N=2 L=5\nI=0 t=0\nI=1 t=1\n"
      "J=0 S=0 E=3 W=<w in='a'/> a=-1\nJ=1 S=-1 E=1 W=<w in='b'/> a=-1\n"
      "J=2 S=2147483647 E=1 W=<w in='c'/> a=-1\nJ=3 S=0 E=-2147483648 W=<w in='d'/> a=-1\n"
      "J=4 S=0 E=1 W=<w in='e'/> a=-1\n");
  EXPECT_EQ(dialogs, Texts());
  ASSERT_EQ(w.m_EdgeLayouts.size(), 3u);
  EXPECT_EQ(edgeOf(w, 4).label, "e");
}

TEST_F(BadInput, NumbersOutsideTheirRangeAreHeldInIt) {
  TestWindow& w = openLattice(
      "N=3 L=2\nI=0 t=-1e999\nI=1 t=nan\nI=2 t=1e999\n"
      "J=0 S=0 E=1 W=<w in='a'/> a=1e999\nJ=99999999999 S=1 E=2 W=<w in='b'/> a=nan\n");
  EXPECT_EQ(dialogs, Texts());
  activate("DisplayValue");
  EXPECT_EQ(edgeOf(w, 0).label, "-1.79769e+308");
  EXPECT_EQ(edgeOf(w, 2147483647).label, "-0");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : -1.79769e+308");
  doubleClick(w.m_GraphArea, labelCentre(w, 0).first, labelCentre(w, 0).second);
  EXPECT_EQ(w.m_SelectedEdges.size(), 1u);
}

TEST_F(BadInput, NulBytesEndTheirLines) {
  using namespace std::string_literals;
  TestWindow& w =
      openLattice("N=2 L=1\0 N=7\nI=0 t=0\0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='a'/> a=-1 \0 a=-9\n"s);
  EXPECT_EQ(dialogs, Texts());
  activate("DisplayValue");
  EXPECT_EQ(edgeOf(w, 0).label, "1");
}

TEST_F(BadInput, LinesMayEndAsOnOtherSystems) {
  TestWindow& w =
      openLattice("N=2 L=1\r\nI=0 t=0\r\nI=1 t=1\r\nJ=0 S=0 E=1 W=<w in='a' out='b'/> a=-1\r\n");
  EXPECT_EQ(dialogs, Texts());
  EXPECT_EQ(edgeOf(w, 0).label, "a / b");
}

TEST_F(BadInput, XmlNestedBeyondMeasureIsDrawnAsNULL) {
  std::string opened, closed;
  for (int i = 0; i < 100000; ++i) {
    opened += "<w>";
    closed += "</w>";
  }
  expectLabel(opened + closed, "NULL");
  const auto [x, y] = labelCentre(*window, 0);
  doubleClick(window->m_GraphArea, x, y);
  EXPECT_EQ(window->m_SelectedEdges.size(), 1u);
}

TEST_F(BadInput, EntityBombIsNotExpanded) {
  std::string word = "<!DOCTYPE w [<!ENTITY a0 'boom'>";
  for (int i = 1; i < 30; ++i) {
    const std::string below = "&a" + std::to_string(i - 1) + ";";
    word += "<!ENTITY a" + std::to_string(i) + " '" + below + below + below + below + "'>";
  }
  openWord(word + "]><w in='&a29;' out='gone'>&a29;</w>");
  EXPECT_EQ(dialogs, Texts());
  ASSERT_EQ(window->m_EdgeLayouts.size(), 3u);
  EXPECT_LT(edgeOf(*window, 0).label.size(), 100u);
  const auto [x, y] = labelCentre(*window, 0);
  doubleClick(window->m_GraphArea, x, y);
  EXPECT_EQ(window->m_SelectedEdges.size(), 1u);
}

TEST_F(BadInput, EntityReadsNoFile) {
  const std::string secret = folder.write("secret.txt", "the secret");
  openWord("<!DOCTYPE w [<!ENTITY x SYSTEM 'file://" + secret + "'>]><w in='a'>&x;</w>");
  EXPECT_EQ(textOf("quorbel_graph.dot").find("secret"), std::string::npos);
  ASSERT_EQ(window->m_EdgeLayouts.size(), 3u);
  const auto [x, y] = labelCentre(*window, 0);
  doubleClick(window->m_GraphArea, x, y);
  ASSERT_TRUE(window->m_refTreeStore);
  const Gtk::TreeRow root = *window->m_refTreeStore->children().begin();
  EXPECT_EQ(root.children().size(), 1u) << "the attribute only";
}

TEST_F(BadInput, BackslashesAndLineEndsInLabelsAreDrawn) {
  // as `dot` wrote them, who joins lines and keeps its own escapes
  openWord("<w in='a\\b' out='c&#10;d'/>");
  EXPECT_EQ(dialogs, Texts());
  EXPECT_TRUE(window->m_refShownImage);
  EXPECT_EQ(textOf("quorbel_graph.dot").find("label = \"a\\b / c\nd\"") == std::string::npos,
            false);
  ASSERT_EQ(window->m_EdgeLayouts.size(), 3u);
  EXPECT_EQ(edgeOf(*window, 0).linkId, 0);
  EXPECT_EQ(edgeOf(*window, 0).label, "a\\b / c\nd");
}

TEST_F(BadInput, LabelThatEndsInABackslashLeavesTheOldPicture) {
  TestWindow& w = openLattice(kTwoWays, "first.lat");
  const int width = w.m_refGraphImage->get_width();
  openWord("<w in='a\\'/>");
  EXPECT_EQ(dialogs, Texts());
  EXPECT_EQ(w.m_refGraphImage->get_width(), width);
}

}  // namespace
}  // namespace quorbel
