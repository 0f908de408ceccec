#include "app/window_fixture.h"

namespace quorbel {
namespace {

const char* const kTwoWords =
    "N=3 L=2\n"
    "I=0 t=0\nI=1 t=1\nI=2 t=2\n"
    "J=0 S=0 E=1 W=<w in='good' out='gut'/> a=-10\n"
    "J=1 S=1 E=2 W=<w in='morning' out='Morgen'/> a=-20\n";

TEST_F(WindowTest, OpenLatticeShowsItsPathAndDrawing) {
  TestWindow& w = openLattice(kTwoWords);
  const std::string path = folder.path().string() + "/test.lat";
  EXPECT_TRUE(w.m_FileOpened);
  EXPECT_EQ(statusOf(w), "graph : " + path);
  EXPECT_EQ(w.get_title(), "Quorbel - " + path);
  EXPECT_EQ(w.m_EdgeLayouts.size(), 5u);
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

TEST_F(WindowTest, DoublePressOnLabelSelectsItsEdge) {
  TestWindow& w = openLattice(kTwoWords);
  const auto [x, y] = labelCentre(w, 1);
  doubleClick(w.m_GraphArea, x, y);
  ASSERT_EQ(w.m_SelectedEdges.size(), 1u);
  EXPECT_EQ(w.m_SelectedEdges[0].linkId, 1);
  EXPECT_EQ(w.m_RangeStart, 0.5);
  EXPECT_EQ(w.m_RangeEnd, 1.0);
}

TEST_F(WindowTest, MissingLatticeIsSaidInTheErrorBox) {
  showWindow("/nowhere/at/all.lat");
  EXPECT_EQ(dialogs.size(), 1u);
}

}  // namespace
}  // namespace quorbel
