#include <gtk/gtk.h>
#include <gtkmm/accelmap.h>

#include <algorithm>

#include "app/lattices.h"
#include "app/library_faults.h"
#include "app/recording_window.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

struct ActionRow {
  const char* name;
  const char* stock;
  const char* label;
  const char* tooltip;
  const char* operation;  ///< "" for menus
};

const ActionRow kActions[] = {
    {"FileMenu", "", "File", "", ""},
    {"FileOpen", "gtk-open", "Open", "Open a HTK file", "on_open_dialog"},
    {"FileExport", "gtk-save-as", "Export to", "", ""},
    {"FileExportPNG", "", "PNG", "Export the current graph to PNG format", "on_export png"},
    {"FileExportSVG", "", "SVG", "Export the current graph to SVG format", "on_export svg"},
    {"FileExportDIA", "", "DIA", "Export the current graph to DIA format", "on_export dia"},
    {"FileExportPostscript", "", "Postscript", "Export the current graph to Postscript format",
     "on_export ps"},
    {"FileExportPostscript2", "", "Postscript for PDF",
     "Export the current graph to Postscript for PDF format", "on_export ps2"},
    {"FileClose", "gtk-close", "Close", "Close the file", "on_close"},
    {"FileQuit", "gtk-quit", "Quit", "Quit the application", "on_quit"},
    {"DisplayMenu", "", "Display", "", ""},
    {"DisplayZoomIn", "gtk-zoom-in", "Zoom in", "Increase zoom", "on_zoom_in"},
    {"DisplayZoomOut", "gtk-zoom-out", "Zoom out", "Decrease zoom", "on_zoom_out"},
    {"DisplayZoomFit", "gtk-zoom-fit", "Zoom fit", "The graph will fit in the window",
     "on_zoom_fit"},
    {"DisplayShortestPath", "gtk-go-forward", "Shortest path",
     "Display the shortest path on the graph", "on_shortest_path"},
    {"DisplayShortestPathSelected", "gtk-goto-last", "S.P. with edge",
     "Display the shortest path using the selected edge", "on_path_with_edge"},
    {"Edges", "", "Edges", "", ""},
    {"DisplayDefault", "", "Default display (in/out fields)", "Default display (in/out fields)",
     "on_display_default"},
    {"DisplaySelectedXML", "", "Display the selected XML field(s)",
     "Display the selected XML field(s)", "on_display_selected_xml"},
    {"DisplayValue", "", "Display edge value", "Display edge value", "on_display_value"},
    {"Scores", "", "Scores...", "Change the displayed scores", "on_scores"},
    {"SoundMenu", "", "Sound", "", ""},
    {"FileOpenSound", "gtk-open", "Open", "Open the sound file matching the current grah",
     "on_open_sound"},
    {"SoundMenuPlay", "gtk-media-play", "Play", "Play the sound", "on_play"},
    {"SoundMenuStop", "gtk-media-stop", "Stop", "Stop the sound", "on_stop"},
    {"HelpMenu", "", "Help", "", ""},
    {"HelpAbout", "gtk-about", "About", "About Quorbel", "on_about"},
};

/// The visible entries of a menu or tool bar by their actions, "-" for a separator, sub-menus in
/// brackets, "?" for what has no action.
std::string entriesOf(GtkWidget* shell) {
  std::string entries;
  GList* const children = gtk_container_get_children(GTK_CONTAINER(shell));
  for (GList* child = children; child; child = child->next) {
    GtkWidget* const item = GTK_WIDGET(child->data);
    if (!gtk_widget_get_visible(item)) continue;
    if (!entries.empty()) entries += ' ';
    GtkAction* const action = gtk_activatable_get_related_action(GTK_ACTIVATABLE(item));
    if (GTK_IS_SEPARATOR_MENU_ITEM(item) || GTK_IS_SEPARATOR_TOOL_ITEM(item))
      entries += '-';
    else
      entries += action ? gtk_action_get_name(action) : "?";
    if (!GTK_IS_MENU_ITEM(item)) continue;
    if (GtkWidget* const menu = gtk_menu_item_get_submenu(GTK_MENU_ITEM(item)))
      entries += '(' + entriesOf(menu) + ')';
  }
  g_list_free(children);
  return entries;
}

class Actions : public WindowTest {
 protected:
  RecordingWindow& record() {
    auto recording = std::make_unique<RecordingWindow>();
    RecordingWindow& w = *recording;
    window = std::move(recording);
    return w;
  }
};

TEST_F(Actions, HaveStockItemsLabelsAndTooltips) {
  const RecordingWindow& w = record();
  for (const ActionRow& row : kActions) {
    SCOPED_TRACE(row.name);
    const Glib::RefPtr<Gtk::Action> action = w.m_refActionGroup->get_action(row.name);
    ASSERT_TRUE(action);
    EXPECT_EQ(action->property_stock_id().get_value().get_string(), row.stock);
    EXPECT_EQ(action->get_label(), row.label);
    EXPECT_EQ(action->get_tooltip(), row.tooltip);
  }
  EXPECT_EQ(w.m_refActionGroup->get_actions().size(), std::size(kActions));
}

TEST_F(Actions, CallTheirOperations) {
  RecordingWindow& w = record();
  for (const ActionRow& row : kActions) {
    SCOPED_TRACE(row.name);
    const std::string operation = row.operation;
    activate(row.name);
    EXPECT_EQ(w.takeCalls(),
              operation.empty() ? std::vector<std::string>() : std::vector<std::string>{operation});
  }
}

TEST_F(Actions, HaveTheKeysOfTheirStockItemsAndNoOthers) {
  const RecordingWindow& w = record();
  for (const ActionRow& row : kActions) {
    SCOPED_TRACE(row.name);
    Gtk::StockItem stock;
    const bool hasStock = *row.stock && Gtk::StockItem::lookup(Gtk::StockID(row.stock), stock);
    Gtk::AccelKey key;
    Gtk::AccelMap::lookup_entry(w.m_refActionGroup->get_action(row.name)->get_accel_path(), key);
    EXPECT_EQ(key.get_key(), hasStock ? stock.get_keyval() : 0);
    EXPECT_EQ(key.get_mod(), hasStock ? stock.get_modifier() : Gdk::ModifierType());
  }
}

TEST_F(Actions, FillTheMenuBar) {
  const RecordingWindow& w = record();
  Gtk::Widget* const bar = w.m_refUIManager->get_widget("/MenuBar");
  ASSERT_TRUE(dynamic_cast<Gtk::MenuBar*>(bar));
  EXPECT_EQ(entriesOf(bar->gobj()),
            "FileMenu(FileOpen FileExport(FileExportPNG FileExportSVG FileExportDIA "
            "FileExportPostscript FileExportPostscript2) FileClose - FileQuit) "
            "DisplayMenu(DisplayZoomIn DisplayZoomOut DisplayZoomFit - DisplayShortestPath "
            "DisplayShortestPathSelected Edges(DisplayDefault DisplaySelectedXML DisplayValue) "
            "Scores) "
            "SoundMenu(FileOpenSound SoundMenuPlay SoundMenuStop) "
            "HelpMenu(HelpAbout)");
}

TEST_F(Actions, FillTheToolBarBetweenTheOpenButtonAndThePictures) {
  RecordingWindow& w = record();
  auto* const bar = dynamic_cast<Gtk::Toolbar*>(w.m_refUIManager->get_widget("/ToolBar"));
  ASSERT_TRUE(bar);
  EXPECT_EQ(entriesOf(GTK_WIDGET(bar->gobj())),
            "? FileClose - DisplayZoomFit - DisplayShortestPath DisplayShortestPathSelected - "
            "SoundMenuPlay SoundMenuStop ? ?");
  const int items = bar->get_n_items();
  EXPECT_EQ(bar->get_item_index(w.m_OpenButton), 0);
  EXPECT_EQ(bar->get_item_index(w.m_FundingItem), items - 2);
  EXPECT_EQ(bar->get_item_index(w.m_LogoItem), items - 1);
}

TEST_F(Actions, AreInTheFirstGroupOfTheManager) {
  const RecordingWindow& w = record();
  const std::vector<Glib::RefPtr<Gtk::ActionGroup>> groups = w.m_refUIManager->get_action_groups();
  ASSERT_EQ(groups.size(), 1u);
  EXPECT_EQ(groups.front(), w.m_refActionGroup);
}

TEST_F(Actions, OpenButtonOpens) {
  RecordingWindow& w = record();
  EXPECT_EQ(w.m_OpenButton.get_label(), "Open");
  EXPECT_EQ(w.m_OpenButton.get_stock_id(), "gtk-open");
  w.show();
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  w.takeCalls();
  click(w.m_OpenButton, 10, w.m_OpenButton.get_height() / 2);
  const std::vector<std::string> calls = w.takeCalls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "on_open_dialog"), 1);
}

TEST_F(Actions, AreReachedByTheirKeys) {
  RecordingWindow& w = record();
  w.show();
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  for (const auto& [key, operation] :
       {std::pair(GDK_KEY_o, "on_open_dialog"), std::pair(GDK_KEY_w, "on_close"),
        std::pair(GDK_KEY_q, "on_quit")}) {
    w.takeCalls();
    pressKey(GDK_KEY_Control_L);
    pressKey(key);
    releaseKey(key);
    releaseKey(GDK_KEY_Control_L);
    const std::vector<std::string> calls = w.takeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), operation), 1) << operation;
  }
}

TEST_F(Actions, WithoutMenusTheWindowStillWorks) {
  libraryFaults().userInterface = true;
  PrintedText printed;
  showWindow();
  libraryFaults().userInterface = false;
  EXPECT_EQ(printed.take(), "building menus failed: no such menu\n");
  TestWindow& w = openLattice(kTwoWords);
  EXPECT_TRUE(w.m_refShownImage);
  EXPECT_EQ(w.m_OpenButton.get_label(), "Open");
  EXPECT_EQ(w.m_LogoImage.get_storage_type(), Gtk::IMAGE_PIXBUF);
}

}  // namespace
}  // namespace quorbel
