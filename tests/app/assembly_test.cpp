#include <gtk/gtk.h>

#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Widgets = std::vector<Gtk::Widget*>;

Widgets childrenOf(Gtk::Container& container) { return container.get_children(); }

/// A window that was built but never shown.
class Assembly : public WindowTest {
 protected:
  Assembly() { window = std::make_unique<TestWindow>("some/lattice.lat"); }
  TestWindow& w() { return *window; }
};

TEST_F(Assembly, WidgetsStandInTheirTree) {
  EXPECT_EQ(childrenOf(w()), Widgets{&w().m_MainBox});
  EXPECT_EQ(childrenOf(w().m_MainBox),
            (Widgets{w().m_refUIManager->get_widget("/MenuBar"),
                     w().m_refUIManager->get_widget("/ToolBar"), &w().m_HPaned, &w().m_Statusbar}));
  EXPECT_EQ(childrenOf(w().m_HPaned), (Widgets{&w().m_TreeScroll, &w().m_RightPaned}));
  EXPECT_EQ(childrenOf(w().m_RightPaned), (Widgets{&w().m_SoundScroll, &w().m_LowerPaned}));
  EXPECT_EQ(childrenOf(w().m_LowerPaned), (Widgets{&w().m_InfoScroll, &w().m_GraphScroll}));
  EXPECT_EQ(w().m_TreeScroll.get_child(), &w().m_AttributeTree);
  EXPECT_EQ(w().m_InfoScroll.get_child(), &w().m_InfoView);
  EXPECT_EQ(w().m_SoundArea.get_ancestor(GTK_TYPE_SCROLLED_WINDOW), &w().m_SoundScroll);
  EXPECT_EQ(w().m_GraphArea.get_ancestor(GTK_TYPE_SCROLLED_WINDOW), &w().m_GraphScroll);
  EXPECT_EQ(childrenOf(w().m_LogoItem), Widgets{&w().m_LogoImage});
  EXPECT_EQ(childrenOf(w().m_FundingItem), Widgets{&w().m_FundingImage});
  EXPECT_FALSE(w().m_SpareTreeView.get_parent());
}

TEST_F(Assembly, OnlyThePanesGrowWithTheWindow) {
  EXPECT_FALSE(w().m_MainBox.get_homogeneous());
  EXPECT_EQ(w().m_MainBox.get_spacing(), 0);
  for (Gtk::Widget* child : childrenOf(w().m_MainBox)) {
    gboolean expands = false;
    gboolean fills = false;
    guint padding = 1;
    GtkPackType side = GTK_PACK_END;
    gtk_box_query_child_packing(GTK_BOX(w().m_MainBox.gobj()), child->gobj(), &expands, &fills,
                                &padding, &side);
    EXPECT_EQ(expands, child == &w().m_HPaned);
    EXPECT_EQ(fills, child == &w().m_HPaned);
    EXPECT_EQ(padding, 0u);
    EXPECT_EQ(side, GTK_PACK_START);
  }
}

TEST_F(Assembly, PanesKeepTheirFirstChildSmall) {
  const auto flagsOf = [](Gtk::Paned& paned, Gtk::Widget& child) {
    gboolean resize = false;
    gboolean shrink = false;
    gtk_container_child_get(GTK_CONTAINER(paned.gobj()), child.gobj(), "resize", &resize, "shrink",
                            &shrink, nullptr);
    return std::pair<bool, bool>(resize, shrink);
  };
  const std::pair resizes(true, false);
  const std::pair shrinks(false, true);
  const std::pair neither(false, false);
  EXPECT_EQ(flagsOf(w().m_HPaned, w().m_TreeScroll), neither);
  EXPECT_EQ(flagsOf(w().m_HPaned, w().m_RightPaned), resizes);
  EXPECT_EQ(flagsOf(w().m_RightPaned, w().m_SoundScroll), neither);
  EXPECT_EQ(flagsOf(w().m_RightPaned, w().m_LowerPaned), resizes);
  EXPECT_EQ(flagsOf(w().m_LowerPaned, w().m_InfoScroll), shrinks);
  EXPECT_EQ(flagsOf(w().m_LowerPaned, w().m_GraphScroll), resizes);
  EXPECT_EQ(w().m_HPaned.get_position(), 130);
  EXPECT_EQ(w().m_RightPaned.get_position(), 50);
  EXPECT_EQ(w().m_LowerPaned.get_position(), 30);
}

TEST_F(Assembly, ScrollBarsComeWhenNeeded) {
  for (const Gtk::ScrolledWindow* scroll :
       {&w().m_TreeScroll, &w().m_SoundScroll, &w().m_GraphScroll, &w().m_InfoScroll}) {
    Gtk::PolicyType horizontal = Gtk::POLICY_NEVER;
    Gtk::PolicyType vertical = Gtk::POLICY_NEVER;
    scroll->get_policy(horizontal, vertical);
    EXPECT_EQ(horizontal, Gtk::POLICY_AUTOMATIC);
    EXPECT_EQ(vertical, Gtk::POLICY_AUTOMATIC);
  }
}

TEST_F(Assembly, InformationTextIsCentredAndReadOnly) {
  EXPECT_EQ(w().m_InfoView.get_buffer(), w().m_refInfoBuffer);
  EXPECT_EQ(w().m_refInfoBuffer->get_text(), "");
  EXPECT_FALSE(w().m_InfoView.get_editable());
  EXPECT_EQ(w().m_InfoView.get_justification(), Gtk::JUSTIFY_CENTER);
}

TEST_F(Assembly, AttributeTreeAllowsSeveralRowsToBeSelected) {
  EXPECT_EQ(w().m_refTreeSelection, w().m_AttributeTree.get_selection());
  EXPECT_EQ(w().m_refTreeSelection->get_mode(), Gtk::SELECTION_MULTIPLE);
  EXPECT_EQ(w().m_AttributeTree.get_columns().size(), 0u);
  EXPECT_FALSE(w().m_AttributeTree.get_model());
  EXPECT_FALSE(w().m_refTreeStore);
}

TEST_F(Assembly, AttributeRowsHaveTwoTexts) {
  ASSERT_EQ(w().m_Columns.size(), 2u);
  EXPECT_EQ(w().m_Columns.types()[0], G_TYPE_STRING);
  EXPECT_EQ(w().m_Columns.types()[1], G_TYPE_STRING);
  EXPECT_EQ(w().m_Columns.name.index(), 0);
  EXPECT_EQ(w().m_Columns.value.index(), 1);
}

TEST_F(Assembly, AreasAskForTheirEvents) {
  constexpr int kGraphEvents = 0x200d04;
  constexpr int kSoundEvents = 0x304;
  EXPECT_EQ(w().m_GraphArea.get_events(), Gdk::EventMask(kGraphEvents));
  EXPECT_EQ(w().m_SoundArea.get_events(), Gdk::EventMask(kSoundEvents));
  gtk_widget_realize(GTK_WIDGET(w().m_GraphArea.gobj()));
  gtk_widget_realize(GTK_WIDGET(w().m_SoundArea.gobj()));
  EXPECT_EQ(w().m_GraphArea.get_window()->get_events() & Gdk::EventMask(kGraphEvents),
            Gdk::EventMask(kGraphEvents));
  EXPECT_EQ(w().m_SoundArea.get_window()->get_events() & Gdk::EventMask(kSoundEvents),
            Gdk::EventMask(kSoundEvents));
}

TEST_F(Assembly, WindowHasItsTitleSizeAndIcon) {
  EXPECT_EQ(w().get_title(), "Quorbel");
  int width = 0;
  int height = 0;
  w().get_default_size(width, height);
  EXPECT_EQ(width, 795);
  EXPECT_EQ(height, 550);
  const auto picture = Gdk::Pixbuf::create_from_file("images/logo_quor.png");
  ASSERT_TRUE(w().get_icon());
  ASSERT_EQ(w().get_icon()->get_width(), picture->get_width());
  ASSERT_EQ(w().get_icon()->get_height(), picture->get_height());
  for (int y = 0; y < picture->get_height(); ++y)
    for (int x = 0; x < picture->get_width(); ++x)
      ASSERT_EQ(pixel(w().get_icon(), x, y), pixel(picture, x, y)) << x << ", " << y;
}

TEST_F(Assembly, ToolBarShowsThePictures) {
  const auto sizeOf = [](const Gtk::Image& image) {
    const Glib::RefPtr<const Gdk::Pixbuf> picture = image.get_pixbuf();
    return std::pair(picture->get_width(), picture->get_height());
  };
  const auto sizeOfFile = [](const char* path) {
    const auto picture = Gdk::Pixbuf::create_from_file(path);
    return std::pair(picture->get_width(), picture->get_height());
  };
  EXPECT_EQ(sizeOf(w().m_LogoImage), sizeOfFile("images/logo_quor.png"));
  EXPECT_EQ(sizeOf(w().m_FundingImage), sizeOfFile("images/Brellum.png"));
}

TEST_F(Assembly, WindowWaitsHiddenWithAllElseShown) {
  EXPECT_FALSE(w().get_visible());
  for (Gtk::Widget* widget : Widgets{&w().m_MainBox,
                                     &w().m_HPaned,
                                     &w().m_RightPaned,
                                     &w().m_LowerPaned,
                                     &w().m_TreeScroll,
                                     &w().m_SoundScroll,
                                     &w().m_InfoScroll,
                                     &w().m_GraphScroll,
                                     &w().m_AttributeTree,
                                     &w().m_SoundArea,
                                     &w().m_InfoView,
                                     &w().m_GraphArea,
                                     &w().m_Statusbar,
                                     &w().m_OpenButton,
                                     &w().m_LogoItem,
                                     &w().m_LogoImage,
                                     &w().m_FundingItem,
                                     &w().m_FundingImage,
                                     w().m_refUIManager->get_widget("/MenuBar"),
                                     w().m_refUIManager->get_widget("/ToolBar")})
    EXPECT_TRUE(widget->get_visible()) << widget->get_name();
}

TEST_F(Assembly, MembersHaveTheirFirstValues) {
  EXPECT_EQ(statusOf(w()), "No file opened");
  EXPECT_EQ(w().m_SiblingMenu.items().size(), 0u);
  EXPECT_FALSE(w().m_OpenButton.get_menu());
  EXPECT_FALSE(w().m_refGraphImage);
  EXPECT_FALSE(w().m_refShownImage);
  EXPECT_FALSE(w().m_Graph.adjacency);
  EXPECT_TRUE(w().m_Graph.scoresNegated);
  EXPECT_TRUE(w().m_EdgeLayouts.empty());
  EXPECT_TRUE(w().m_SelectedEdges.empty());
  EXPECT_EQ(w().m_Zoom, 1.0f);
  EXPECT_EQ(w().m_PointerX, 0);
  EXPECT_EQ(w().m_PointerY, 0);
  EXPECT_FALSE(w().m_ShowPath);
  EXPECT_FALSE(w().m_ShowPathWithEdge);
  EXPECT_FALSE(w().m_FileOpened);
  EXPECT_FALSE(w().m_Rendering);
  EXPECT_FALSE(w().m_ControlHeld);
  EXPECT_EQ(w().m_RangeStart, -1.0);
  EXPECT_EQ(w().m_RangeEnd, -1.0);
  EXPECT_EQ(w().m_CurrentDir, "");
  EXPECT_EQ(w().m_DragStartX, -1);
  EXPECT_EQ(w().m_DragCurrentX, -1);
  EXPECT_FALSE(w().m_Dragging);
  EXPECT_FALSE(w().m_Playing);
  EXPECT_EQ(w().m_StartupPath, "some/lattice.lat");
  EXPECT_EQ(w().m_SoundPath, "");
  EXPECT_FALSE(w().m_SoundLoaded);
}

TEST_F(Assembly, StatusBarHasOneMessage) {
  w().m_Statusbar.pop(TestWindow::kRunContext);
  EXPECT_EQ(statusOf(w()), "No file opened");
  w().m_Statusbar.pop(TestWindow::kFileContext);
  EXPECT_EQ(statusOf(w()), "");
}

TEST_F(Assembly, ContextsOfTheStatusBarAreZeroAndOne) {
  EXPECT_EQ(TestWindow::kFileContext, 0u);
  EXPECT_EQ(TestWindow::kRunContext, 1u);
}

}  // namespace
}  // namespace quorbel
