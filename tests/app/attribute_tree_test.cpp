#include <gtk/gtk.h>

#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

using Rows = std::vector<std::string>;

/// A lattice of one link with this word.
std::string latticeOf(const std::string& word) {
  return "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=" + word + " a=-1\n";
}

/// The tree that shows the XML of the first selected edge.
class AttributeTree : public CanvasTest {
 protected:
  /// Opens a lattice of one link with this word and selects it.
  TestWindow& selectWord(const std::string& word) {
    TestWindow& w = open(latticeOf(word));
    selectByPointer({0});
    return w;
  }

  bool isExpandedWholly() {
    bool isExpanded = true;
    window->m_refTreeStore->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& row) {
      if (!row->children().empty() && !window->m_AttributeTree.row_expanded(path))
        isExpanded = false;
      return false;
    });
    return isExpanded;
  }

  void expectEmpty() {
    EXPECT_EQ(window->m_AttributeTree.get_columns().size(), 0u);
    EXPECT_FALSE(window->m_AttributeTree.get_model());
    EXPECT_FALSE(window->m_refTreeStore);
  }
};

TEST_F(AttributeTree, IsEmptyAtFirst) {
  open(kTwoWords);
  expectEmpty();
}

TEST_F(AttributeTree, HasTheElementWithItsAttributesBelow) {
  TestWindow& w = selectWord("<w in='good' out='gut' conf='0.8'/>");
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=good", "  out=gut", "  conf=0.8"}));
  EXPECT_TRUE(isExpandedWholly());
  EXPECT_EQ(w.m_AttributeTree.get_model(), w.m_refTreeStore);
}

TEST_F(AttributeTree, HasTwoColumnsOfText) {
  TestWindow& w = selectWord("<w in='good'/>");
  const std::vector<Gtk::TreeViewColumn*> columns = w.m_AttributeTree.get_columns();
  ASSERT_EQ(columns.size(), 2u);
  EXPECT_EQ(columns[0]->get_title(), "Attribute");
  EXPECT_EQ(columns[1]->get_title(), "Value");
  const Gtk::TreeIter element = w.m_refTreeStore->children().begin();
  const Gtk::TreeIter attribute = element->children().begin();
  const auto shownIn = [&](int column, const Gtk::TreeIter& row) {
    auto* const renderer =
        dynamic_cast<Gtk::CellRendererText*>(columns[column]->get_first_cell_renderer());
    if (!renderer) return std::string("no text");
    gtk_tree_view_column_cell_set_cell_data(columns[column]->gobj(),
                                            w.m_refTreeStore->Gtk::TreeModel::gobj(),
                                            const_cast<GtkTreeIter*>(row.gobj()), false, false);
    return renderer->property_text().get_value().raw();
  };
  EXPECT_EQ(shownIn(0, element), "w");
  EXPECT_EQ(shownIn(1, element), "");
  EXPECT_EQ(shownIn(0, attribute), "in");
  EXPECT_EQ(shownIn(1, attribute), "good");
}

TEST_F(AttributeTree, HasChildElementsBelowTheirParentAfterItsAttributes) {
  TestWindow& w = selectWord(
      "<w id='7'><src lang='en'><pos tag='NN'/></src><!-- note -->text<dst in='x' out='y'/></w>");
  EXPECT_EQ(treeRows(), (Rows{"w=", "  id=7", "  src=", "    lang=en", "    pos=", "      tag=NN",
                              "  dst=", "    in=x", "    out=y"}));
  EXPECT_TRUE(isExpandedWholly());
  EXPECT_EQ(w.m_refTreeStore->children().size(), 1u);
}

TEST_F(AttributeTree, ElementWithoutAttributesIsARowOfItsOwn) {
  selectWord("<w><a/><b in='x'/></w>");
  EXPECT_EQ(treeRows(), (Rows{"w=", "  a=", "  b=", "    in=x"}));
}

TEST_F(AttributeTree, ShowsTextInAnyScript) {
  selectWord("<w in='f\u00fcr' \u00fcber='\u65e5\u672c &lt;&amp;&gt;'/>");
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=f\u00fcr", "  \u00fcber=\u65e5\u672c <&>"}));
}

TEST_F(AttributeTree, AttributeWithoutTextHasAnEmptyValue) {
  selectWord("<w in='' out='gut'/>");
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=", "  out=gut"}));
}

TEST_F(AttributeTree, FollowsTheFirstSelectedEdge) {
  open(chainOf(3));
  selectByPointer({1});
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=word1"}));
  selectByPointer({2, 0});
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=word2"}));
  pressKey(GDK_KEY_Control_L);
  const auto [x, y] = labelCentre(*window, 2);
  doubleClick(window->m_GraphArea, x, y);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=word0"}));
}

TEST_F(AttributeTree, IsMadeAnewByEachSelection) {
  TestWindow& w = open(chainOf(3));
  selectByPointer({1});
  const Glib::RefPtr<Gtk::TreeStore> before = w.m_refTreeStore;
  w.m_AttributeTree.collapse_all();
  w.m_refTreeSelection->select(Gtk::TreePath("0"));
  selectByPointer({1});
  EXPECT_NE(w.m_refTreeStore, before);
  EXPECT_EQ(w.m_AttributeTree.get_columns().size(), 2u);
  EXPECT_TRUE(isExpandedWholly());
  EXPECT_EQ(w.m_refTreeSelection->count_selected_rows(), 0);
}

struct BadWord {
  const char* what;
  const char* word;
};

const BadWord kBadWords[] = {
    {"plain text", "\"hello\""},
    {"several elements at the top", "<a in='x'/><b in='y'/>"},
    {"an element that is not closed", "<w in='x'>"},
    {"a byte that is no UTF-8", "<w in='\xe9'/>"},
};

TEST_F(AttributeTree, StaysWhenAWordIsNoXml) {
  for (const BadWord& bad : kBadWords) {
    SCOPED_TRACE(bad.what);
    open(
        "N=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
        "J=0 S=0 E=1 W=<w in='fine'/> a=-1\nJ=1 S=1 E=2 W=" +
        std::string(bad.word) + " a=-1\n");
    EXPECT_EQ(edgeOf(*window, 1).label, "NULL");
    selectByPointer({0});
    const Glib::RefPtr<Gtk::TreeStore> before = window->m_refTreeStore;
    PrintedText printed;
    selectByPointer({1});
    EXPECT_EQ(printed.take(), "Failed to parse document\n");
    EXPECT_EQ(selectedIds(), std::vector<int>{1});
    EXPECT_EQ(window->m_refTreeStore, before);
    EXPECT_EQ(treeRows(), (Rows{"w=", "  in=fine"}));
    EXPECT_EQ(window->m_AttributeTree.get_columns().size(), 2u);
  }
}

TEST_F(AttributeTree, StaysEmptyWhenAWordIsNoXml) {
  open(latticeOf("\"hello\""));
  PrintedText printed;
  selectByPointer({0});
  EXPECT_EQ(printed.take(), "Failed to parse document\n");
  expectEmpty();
}

TEST_F(AttributeTree, NamesItsDocumentInTheParsersComplaints) {
  open(latticeOf("\"hello\""));
  ::testing::internal::CaptureStderr();
  selectByPointer({0});
  const std::string complaints = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(complaints.rfind("noname.xml:1: ", 0), 0u) << complaints;
}

TEST_F(AttributeTree, IsNotAskedForWhenTheLastEdgeIsTakenOut) {
  open(latticeOf("\"hello\""));
  const auto [x, y] = labelCentre(*window, 0);
  pressKey(GDK_KEY_Control_L);
  doubleClick(window->m_GraphArea, x, y);
  PrintedText printed;
  doubleClick(window->m_GraphArea, x, y);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_EQ(selectedIds(), std::vector<int>{});
  EXPECT_EQ(printed.take(), "");
}

TEST_F(AttributeTree, LosesItsModelWithTheSelection) {
  TestWindow& w = selectWord("<w in='good'/>");
  w.m_refTreeSelection->select(Gtk::TreePath("0:0"));
  w.clear_selection();
  EXPECT_EQ(selectedIds(), std::vector<int>{});
  expectEmpty();
  EXPECT_EQ(w.m_refTreeSelection->count_selected_rows(), 0);
  EXPECT_EQ(w.m_refTreeSelection->get_mode(), Gtk::SELECTION_MULTIPLE);
}

TEST_F(AttributeTree, IsFilledAgainAfterItWasEmptied) {
  TestWindow& w = selectWord("<w in='good'/>");
  w.clear_selection();
  selectByPointer({0});
  EXPECT_EQ(treeRows(), (Rows{"w=", "  in=good"}));
  EXPECT_EQ(w.m_AttributeTree.get_columns().size(), 2u);
}

TEST_F(AttributeTree, IsEmptyAfterTheFileIsClosed) {
  selectWord("<w in='good'/>");
  activate("FileClose");
  expectEmpty();
}

TEST_F(AttributeTree, LetsSeveralRowsBeSelected) {
  TestWindow& w = selectWord("<w in='good' out='gut'/>");
  w.m_refTreeSelection->select(Gtk::TreePath("0:0"));
  w.m_refTreeSelection->select(Gtk::TreePath("0:1"));
  EXPECT_EQ(w.m_refTreeSelection->count_selected_rows(), 2);
}

TEST_F(AttributeTree, HasAsManyLevelsAsTheXml) {
  std::string word;
  const int depth = 100;
  for (int i = 0; i < depth; ++i) word += "<e>";
  word += "<w in='deep'/>";
  for (int i = 0; i < depth; ++i) word += "</e>";
  selectWord(word);
  const Rows rows = treeRows();
  ASSERT_EQ(rows.size(), static_cast<std::size_t>(depth + 2));
  EXPECT_EQ(rows.back(), std::string(2 * (depth + 1), ' ') + "in=deep");
  EXPECT_TRUE(isExpandedWholly());
}

}  // namespace
}  // namespace quorbel
