#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

/// What a new drawing does to the selection.
class CarriedSelection : public WindowTest {
 protected:
  /// Selects drawn edges, in this order.
  void select(const std::vector<int>& linkIds) {
    window->m_SelectedEdges.clear();
    for (const int linkId : linkIds) window->m_SelectedEdges.push_back(edgeOf(*window, linkId));
  }

  static void expectSame(const LayoutItem& item, const LayoutItem& expected) {
    EXPECT_EQ(item.linkId, expected.linkId);
    EXPECT_EQ(item.x, expected.x);
    EXPECT_EQ(item.y, expected.y);
    EXPECT_EQ(item.width, expected.width);
    EXPECT_EQ(item.height, expected.height);
    EXPECT_EQ(item.nodeIndex, expected.nodeIndex);
    EXPECT_EQ(item.startNode, expected.startNode);
    EXPECT_EQ(item.endNode, expected.endNode);
    EXPECT_EQ(item.time, expected.time);
    EXPECT_EQ(item.isNode, expected.isNode);
    EXPECT_EQ(item.label, expected.label);
    EXPECT_EQ(item.word, expected.word);
    EXPECT_EQ(item.score, expected.score);
  }

  /// The name and value columns of the attribute tree, parents before children.
  std::vector<std::string> treeRows() {
    std::vector<std::string> rows;
    window->m_refTreeStore->foreach_iter([&](const Gtk::TreeIter& row) {
      const Glib::ustring name = (*row)[window->m_Columns.name];
      const Glib::ustring value = (*row)[window->m_Columns.value];
      rows.push_back(name + "=" + value);
      return false;
    });
    return rows;
  }
};

TEST_F(CarriedSelection, GetsItsNewLabelAndPlace) {
  TestWindow& w = openLattice(kTwoWays);
  select({3});
  const int before = w.m_SelectedEdges[0].x;
  activate("DisplayValue");
  ASSERT_EQ(w.m_SelectedEdges.size(), 1u);
  EXPECT_EQ(w.m_SelectedEdges[0].label, "30");
  EXPECT_NE(w.m_SelectedEdges[0].x, before);
  expectSame(w.m_SelectedEdges[0], edgeOf(w, 3));
}

TEST_F(CarriedSelection, HasEveryFieldRefreshed) {
  TestWindow& w = openLattice(kTwoWays);
  LayoutItem stale;
  stale.linkId = 2;
  stale.x = stale.y = stale.width = stale.height = stale.nodeIndex = 77;
  stale.startNode = stale.endNode = 78;
  stale.time = stale.score = 79;
  stale.isNode = true;
  stale.label = stale.word = "stale";
  w.m_SelectedEdges = {stale};
  w.renderGraph();
  expectSame(w.m_SelectedEdges.at(0), edgeOf(w, 2));
}

TEST_F(CarriedSelection, KeepsItsOrder) {
  TestWindow& w = openLattice(kTwoWays);
  select({3, 0, 2});
  activate("DisplayValue");
  ASSERT_EQ(w.m_SelectedEdges.size(), 3u);
  expectSame(w.m_SelectedEdges[0], edgeOf(w, 3));
  expectSame(w.m_SelectedEdges[1], edgeOf(w, 0));
  expectSame(w.m_SelectedEdges[2], edgeOf(w, 2));
}

TEST_F(CarriedSelection, KeepsEdgesThatAreNoLongerDrawn) {
  TestWindow& w = openLattice(kTwoWays);
  LayoutItem gone = edgeOf(w, 1);
  gone.linkId = 99;
  gone.label = "of old";
  w.m_SelectedEdges = {gone, edgeOf(w, 1)};
  activate("DisplayValue");
  expectSame(w.m_SelectedEdges.at(0), gone);
  expectSame(w.m_SelectedEdges.at(1), edgeOf(w, 1));
}

TEST_F(CarriedSelection, IsNotMatchedWithNodes) {
  TestWindow& w = openLattice(kTwoWays);
  LayoutItem odd;
  odd.linkId = -1;
  odd.label = "odd";
  w.m_SelectedEdges = {odd};
  w.renderGraph();
  expectSame(w.m_SelectedEdges.at(0), odd);
}

TEST_F(CarriedSelection, OfLinksWithOneIdIsTheLastOneDrawn) {
  TestWindow& w = openLattice(
      "N=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
      "J=5 S=0 E=1 W=<w in='first'/> a=-1\nJ=5 S=1 E=2 W=<w in='last'/> a=-2\n");
  select({5});
  ASSERT_EQ(w.m_SelectedEdges[0].startNode, 0);
  w.renderGraph();
  EXPECT_EQ(w.m_SelectedEdges[0].startNode, 1);
  EXPECT_EQ(w.m_SelectedEdges[0].label, "last");
}

TEST_F(CarriedSelection, RefreshesTheAttributeTree) {
  TestWindow& w = openLattice(kTwoWays);
  select({3, 0});
  ASSERT_FALSE(w.m_refTreeStore);
  w.renderGraph();
  EXPECT_EQ(treeRows(), (std::vector<std::string>{"w=", "in=d", "out=D"}));

  w.m_Graph.adjacency->outgoing[2][0].word = "<w in='new'/>";
  w.renderGraph();
  EXPECT_EQ(treeRows(), (std::vector<std::string>{"w=", "in=new"}));
}

TEST_F(CarriedSelection, ThatIsNotDrawnLeavesTheAttributeTree) {
  TestWindow& w = openLattice(kTwoWays);
  LayoutItem gone = edgeOf(w, 1);
  gone.linkId = 99;
  w.m_SelectedEdges = {gone};
  w.renderGraph();
  EXPECT_FALSE(w.m_refTreeStore);
}

}  // namespace
}  // namespace quorbel
