#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

/// Fields picked in the attribute tree, and the labels that they make.
class XmlFields : public CanvasTest {
 protected:
  /// Opens a lattice of two links with these words and selects the first.
  TestWindow& selectWord(const std::string& word, const std::string& otherWord = "<w/>") {
    TestWindow& w = open(
        "N=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
        "J=0 S=0 E=1 W=" +
        word + " a=-1\nJ=1 S=1 E=2 W=" + otherWord + " a=-2\n");
    selectByPointer({0});
    return w;
  }

  /// Picks the rows that show these texts ("name=value"), and has them displayed.
  void displayRows(const std::vector<std::string>& texts) {
    window->m_refTreeSelection->unselect_all();
    for (const std::string& text : texts) {
      bool isFound = false;
      window->m_refTreeStore->foreach_iter([&](const Gtk::TreeIter& row) {
        const Glib::ustring name = (*row)[window->m_Columns.name];
        const Glib::ustring value = (*row)[window->m_Columns.value];
        if (name.raw() + "=" + value.raw() != text) return false;
        window->m_refTreeSelection->select(row);
        isFound = true;
        return true;
      });
      ASSERT_TRUE(isFound) << text;
    }
    activate("DisplaySelectedXML");
  }

  std::string labelOf(int linkId) { return edgeOf(*window, linkId).label; }
};

TEST_F(XmlFields, NeedASelectedRow) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>");
  w.m_Graph.labelByValue = true;
  activate("DisplaySelectedXML");
  EXPECT_EQ(dialogs,
            std::vector<std::string>{"You need to select at least one attribute in the tree view"});
  EXPECT_TRUE(w.m_Graph.labelByValue);
  EXPECT_FALSE(w.m_Graph.labelBySelectedXml);
  EXPECT_EQ(w.m_Graph.fieldsByIndex, std::vector<IndexPath>{});
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(XmlFields, CannotBePickedInATreeThatIsNoLongerShown) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>");
  w.m_refTreeSelection->select(Gtk::TreePath("0:2"));
  w.clear_selection();
  activate("DisplaySelectedXML");
  EXPECT_EQ(dialogs.size(), 1u);
  EXPECT_FALSE(w.m_Graph.labelBySelectedXml);
  EXPECT_EQ(takeDotRuns(), 0);
}

TEST_F(XmlFields, DoNothingWithoutALattice) {
  TestWindow& w = showWindow();
  activate("DisplaySelectedXML");
  EXPECT_EQ(dialogs, std::vector<std::string>());
  EXPECT_FALSE(w.m_Graph.labelBySelectedXml);
}

TEST_F(XmlFields, OneAttributeLabelsAllEdges) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>",
                             "<w in='morning' out='Morgen' conf='0.4'/>");
  w.m_Graph.labelByValue = true;
  displayRows({"conf=0.8"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 2}}));
  EXPECT_TRUE(w.m_Graph.labelBySelectedXml);
  EXPECT_FALSE(w.m_Graph.labelByValue);
  EXPECT_EQ(labelOf(0), "0.8");
  EXPECT_EQ(labelOf(1), "0.4");
  EXPECT_EQ(takeDotRuns(), 2);
  EXPECT_NE(textOf("quorbel_graph.dot").find("label = \"0.4\""), std::string::npos);
}

TEST_F(XmlFields, SeveralAreJoinedInTheOrderOfTheTree) {
  TestWindow& w =
      selectWord("<w in='good' out='gut' conf='0.8'/>", "<w in='morning' out='' conf='0.4'/>");
  displayRows({"conf=0.8", "in=good", "out=gut"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 0}, {0, 1}, {0, 2}}));
  EXPECT_EQ(labelOf(0), "good / gut / 0.8");
  EXPECT_EQ(labelOf(1), "morning / 0.4");
}

TEST_F(XmlFields, ArePickedAnewEachTime) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>");
  displayRows({"in=good", "out=gut"});
  displayRows({"conf=0.8"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 2}}));
  EXPECT_EQ(labelOf(0), "0.8");
}

TEST_F(XmlFields, ThatALinkLacksFallBackToItsFirstAttribute) {
  selectWord("<w in='good' out='gut' conf='0.8'/>", "<w only='this'/>");
  displayRows({"conf=0.8"});
  EXPECT_EQ(labelOf(1), "this");
}

/// The first row of the tree stands for the element itself, whose path ends at its own place.
TEST_F(XmlFields, RowOfTheElementShowsTheFirstAttribute) {
  TestWindow& w = selectWord("<w in='good' out='gut'/>");
  displayRows({"w="});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0}}));
  EXPECT_EQ(labelOf(0), "good");
}

TEST_F(XmlFields, AttributeOfAChildIsFound) {
  TestWindow& w =
      selectWord("<w><src lang='en' in='good'/></w>", "<w><src lang='en' in='morning'/></w>");
  displayRows({"in=good"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 0, 1}}));
  EXPECT_EQ(labelOf(0), "good");
  EXPECT_EQ(labelOf(1), "morning");
}

/// Only the path's length and its last entry count: attributes of the children are told apart by
/// the places of the children, which attributes before them do not move.
TEST_F(XmlFields, AttributeBelowAnElementWithAttributesIsFound) {
  TestWindow& w = selectWord("<w id='7'><src lang='en' in='good'/></w>",
                             "<w id='8'><src lang='de' in='Morgen'/></w>");
  displayRows({"in=good"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 1, 1}}));
  EXPECT_EQ(labelOf(0), "good");
  EXPECT_EQ(labelOf(1), "Morgen");
}

TEST_F(XmlFields, OfNestedElementsAreFoundAtEachLevel) {
  TestWindow& w = selectWord("<w id='7'><src lang='en'><pos tag='NN'/></src></w>",
                             "<w id='8'><src lang='de'><pos tag='VV'/></src></w>");
  displayRows({"tag=NN"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 1, 1, 0}}));
  EXPECT_EQ(labelOf(0), "NN");
  EXPECT_EQ(labelOf(1), "VV");
  displayRows({"id=7", "lang=en", "tag=NN"});
  EXPECT_EQ(labelOf(0), "7 / en / NN");
  EXPECT_EQ(labelOf(1), "8 / de / VV");
}

/// Of several children with attributes the first answers, and its own attributes are counted.
TEST_F(XmlFields, OfASecondChildAreLookedForInTheFirst) {
  TestWindow& w = selectWord("<w><src in='good' out='gut'/><dst in='bon' out='buono'/></w>");
  displayRows({"out=buono"});
  EXPECT_EQ(w.m_Graph.fieldsByIndex, (std::vector<IndexPath>{{0, 1, 1}}));
  EXPECT_EQ(labelOf(0), "gut");
}

TEST_F(XmlFields, InAnyScript) {
  selectWord("<w in='good' \u00fcber='\u65e5\u672c'/>", "<w in='morning' \u00fcber='f\u00fcr'/>");
  displayRows({"\u00fcber=\u65e5\u672c"});
  EXPECT_EQ(labelOf(0), "\u65e5\u672c");
  EXPECT_EQ(labelOf(1), "f\u00fcr");
}

TEST_F(XmlFields, StaySelectedForTheNextLattice) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>");
  displayRows({"conf=0.8"});
  open(kTwoWords);
  EXPECT_FALSE(w.m_Graph.labelBySelectedXml) << "opening shows the default fields";
  EXPECT_EQ(labelOf(0), "good / gut");
}

TEST_F(XmlFields, PickedByTheUserInTheTree) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>");
  Gdk::Rectangle row;
  w.m_AttributeTree.get_cell_area(Gtk::TreePath("0:2"), *w.m_AttributeTree.get_column(0), row);
  int x = 0, y = 0;
  w.m_AttributeTree.convert_bin_window_to_widget_coords(row.get_x() + 2, row.get_y() + 5, x, y);
  click(w.m_AttributeTree, x, y);
  EXPECT_EQ(w.m_refTreeSelection->count_selected_rows(), 1);
  activate("DisplaySelectedXML");
  EXPECT_EQ(labelOf(0), "0.8");
}

}  // namespace
}  // namespace quorbel
