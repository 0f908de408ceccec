#include "app/lattices.h"
#include "app/window_fixture.h"
#include "sound/sound_files.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

// "café_1.lat" in Latin-1, and as the window shows it: with a replacement character.
const char* const kLatin1 = "caf\xe9_1.lat";
const char* const kShown = "caf\xef\xbf\xbd_1.lat";

/// File names in encodings that the toolkit cannot show. Its warnings make these tests fail.
class OddNames : public WindowTest {
 protected:
  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }
};

TEST_F(OddNames, AreShownWithReplacementCharacters) {
  TestWindow& w = openLattice(kTwoWords, kLatin1);
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf(kShown));
  EXPECT_EQ(statusOf(w), "graph : " + pathOf(kShown));
  ASSERT_EQ(w.m_SiblingMenu.items().size(), 1u);
  EXPECT_EQ(w.m_SiblingMenu.items().front().get_label(), kShown);
  EXPECT_TRUE(w.m_refShownImage);
}

TEST_F(OddNames, OfSiblingsOpenTheirFiles) {
  TestWindow& w = openLattice(kTwoWords, "caf\xe9_1.best");
  folder.write(kLatin1, kTwoWays);
  w.build_sibling_menu(pathOf("caf\xe9_1.best"));
  for (Gtk::MenuItem& item : w.m_SiblingMenu.items())
    if (item.get_label() == kShown) item.activate();
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf(kShown));
  EXPECT_EQ(w.m_Graph.adjacency->nodeCount, 4);
}

TEST_F(OddNames, AreShownInTheErrorBox) {
  openLattice("nonsense\n", kLatin1);
  EXPECT_EQ(dialogs, Texts{pathOf(kShown) + ": syntax error line 1"});
}

TEST_F(OddNames, OfSoundsAreFound) {
  writeWav(pathOf("caf\xe9_1.wav"), 8000, 1, testTone(100, 1));
  const TestWindow& w = openLattice(kTwoWords, kLatin1);
  EXPECT_TRUE(w.m_SoundLoaded);
  EXPECT_EQ(w.m_SoundPath, pathOf("caf\xe9_1.wav"));
}

TEST_F(OddNames, OfFoldersAreShownToo) {
  std::filesystem::create_directory("d\xe9p\xf4t");
  const TestWindow& w = openLattice(kTwoWords, "d\xe9p\xf4t/a.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("d\xef\xbf\xbdp\xef\xbf\xbdt/a.lat"));
}

TEST_F(OddNames, WithMarkupAndLineEndsAreShownAsTheyAre) {
  TestWindow& w = openLattice(kTwoWords, "a<b>&amp; \n c.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("a<b>&amp; \n c.lat"));
  EXPECT_EQ(statusOf(w), "graph : " + pathOf("a<b>&amp; \n c.lat"));
}

TEST_F(OddNames, InUtf8AreShownAsTheyAre) {
  TestWindow& w = openLattice(kTwoWords, "stra\u00dfe \u4e2d.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("stra\u00dfe \u4e2d.lat"));
  EXPECT_EQ(w.m_SiblingMenu.items().front().get_label(), "stra\u00dfe \u4e2d.lat");
}

TEST_F(OddNames, WordsInOtherEncodingsDrawnAsNull) {
  TestWindow& w = openLattice("N=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='caf\xe9'/> a=-1\n");
  activate("DisplayShortestPath");
  EXPECT_EQ(w.m_refInfoBuffer->get_text(), "Shortest path : NULL \n");
}

}  // namespace
}  // namespace quorbel
