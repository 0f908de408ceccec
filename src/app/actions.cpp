// The table of actions with their labels and handlers, and the menu bar and tool bar made of them.

#include <iostream>

#include "app/main_window.h"
#include "texts/product.h"

namespace quorbel {
namespace {

const char* const kInterface =
    "<ui>"
    "  <menubar name='MenuBar'>"
    "    <menu action='FileMenu'>"
    "      <menuitem action='FileOpen'/>"
    "        <menu action='FileExport'>"
    "          <menuitem action='FileExportPNG'/>"
    "          <menuitem action='FileExportSVG'/>"
    "          <menuitem action='FileExportDIA'/>"
    "          <menuitem action='FileExportPostscript'/>"
    "          <menuitem action='FileExportPostscript2'/>"
    "        </menu>"
    "      <menuitem action='FileClose'/>"
    "      <separator/>"
    "      <menuitem action='FileQuit'/>"
    "    </menu>"
    "    <menu action='DisplayMenu'>"
    "      <menuitem action='DisplayZoomIn'/>"
    "      <menuitem action='DisplayZoomOut'/>"
    "      <menuitem action='DisplayZoomFit'/>"
    "      <separator/>"
    "      <menuitem action='DisplayShortestPath'/>"
    "      <menuitem action='DisplayShortestPathSelected'/>"
    "        <menu action='Edges'>"
    "          <menuitem action='DisplayDefault'/>"
    "          <menuitem action='DisplaySelectedXML'/>"
    "          <menuitem action='DisplayValue'/>"
    "        </menu>"
    "      <menuitem action='Scores'/>"
    "    </menu>"
    "    <menu action='SoundMenu'>"
    "      <menuitem action='FileOpenSound'/>"
    "      <menuitem action='SoundMenuPlay'/>"
    "      <menuitem action='SoundMenuStop'/>"
    "    </menu>"
    "    <menu action='HelpMenu'>"
    "      <menuitem action='HelpAbout'/>"
    "    </menu>"
    "  </menubar>"
    "  <toolbar  name='ToolBar'>"
    "    <toolitem action='FileClose'/>"
    "    <separator/>"
    "    <toolitem action='DisplayZoomFit'/>"
    "    <separator/>"
    "    <toolitem action='DisplayShortestPath'/>"
    "    <toolitem action='DisplayShortestPathSelected'/>"
    "    <separator/>"
    "    <toolitem action='SoundMenuPlay'/>"
    "    <toolitem action='SoundMenuStop'/>"
    "  </toolbar>"
    "</ui>";

}  // namespace

void MainWindow::addActions() {
  namespace Stock = Gtk::Stock;
  m_refActionGroup = Gtk::ActionGroup::create();
  const auto addMenu = [this](const char* name, const char* label) {
    m_refActionGroup->add(Gtk::Action::create(name, label));
  };
  const auto handler = [this](void (MainWindow::*operation)()) {
    return sigc::mem_fun(*this, operation);
  };
  const auto add = [this](const char* name, const char* label, const Glib::ustring& tooltip,
                          const sigc::slot<void>& slot) {
    m_refActionGroup->add(Gtk::Action::create(name, label, tooltip), slot);
  };
  const auto addStock = [this](const char* name, const Gtk::StockID& stock, const char* label,
                               const Glib::ustring& tooltip, const sigc::slot<void>& slot) {
    m_refActionGroup->add(Gtk::Action::create(name, stock, label, tooltip), slot);
  };
  const auto exportTo = [this](const char* format) {
    return sigc::bind(sigc::mem_fun(*this, &MainWindow::on_export), std::string(format));
  };
  using W = MainWindow;

  addMenu("FileMenu", "File");
  addStock("FileOpen", Stock::OPEN, "Open", "Open a HTK file", handler(&W::on_open_dialog));
  m_refActionGroup->add(Gtk::Action::create("FileExport", Stock::SAVE_AS, "Export to"));
  add("FileExportPNG", "PNG", "Export the current graph to PNG format", exportTo("png"));
  add("FileExportSVG", "SVG", "Export the current graph to SVG format", exportTo("svg"));
  add("FileExportDIA", "DIA", "Export the current graph to DIA format", exportTo("dia"));
  add("FileExportPostscript", "Postscript", "Export the current graph to Postscript format",
      exportTo("ps"));
  add("FileExportPostscript2", "Postscript for PDF",
      "Export the current graph to Postscript for PDF format", exportTo("ps2"));
  addStock("FileClose", Stock::CLOSE, "Close", "Close the file", handler(&W::on_close));
  addStock("FileQuit", Stock::QUIT, "Quit", "Quit the application", handler(&W::on_quit));

  addMenu("DisplayMenu", "Display");
  addStock("DisplayZoomIn", Stock::ZOOM_IN, "Zoom in", "Increase zoom", handler(&W::on_zoom_in));
  addStock("DisplayZoomOut", Stock::ZOOM_OUT, "Zoom out", "Decrease zoom",
           handler(&W::on_zoom_out));
  addStock("DisplayZoomFit", Stock::ZOOM_FIT, "Zoom fit", "The graph will fit in the window",
           handler(&W::on_zoom_fit));
  addStock("DisplayShortestPath", Stock::GO_FORWARD, "Shortest path",
           "Display the shortest path on the graph", handler(&W::on_shortest_path));
  addStock("DisplayShortestPathSelected", Stock::GOTO_LAST, "S.P. with edge",
           "Display the shortest path using the selected edge", handler(&W::on_path_with_edge));
  addMenu("Edges", "Edges");
  for (const auto& [name, label, operation] :
       {std::make_tuple("DisplayDefault", "Default display (in/out fields)",
                        &W::on_display_default),
        std::make_tuple("DisplaySelectedXML", "Display the selected XML field(s)",
                        &W::on_display_selected_xml),
        std::make_tuple("DisplayValue", "Display edge value", &W::on_display_value)})
    add(name, label, label, handler(operation));
  add("Scores", "Scores...", "Change the displayed scores", handler(&W::on_scores));

  addMenu("SoundMenu", "Sound");
  addStock("FileOpenSound", Stock::OPEN, "Open", "Open the sound file matching the current grah",
           handler(&W::on_open_sound));
  addStock("SoundMenuPlay", Stock::MEDIA_PLAY, "Play", "Play the sound", handler(&W::on_play));
  addStock("SoundMenuStop", Stock::MEDIA_STOP, "Stop", "Stop the sound", handler(&W::on_stop));

  addMenu("HelpMenu", "Help");
  addStock("HelpAbout", Stock::ABOUT, "About", "About " + PRODUCT_NAME, handler(&W::on_about));
}

void MainWindow::buildInterface() {
  m_LogoImage.set(IMAGE_DIR + "logo_quor.png");
  m_FundingImage.set(IMAGE_DIR + "Brellum.png");
  m_LogoItem.add(m_LogoImage);
  m_FundingItem.add(m_FundingImage);
  m_OpenButton.set_label("Open");
  m_Connections.push_back(
      m_OpenButton.signal_clicked().connect(sigc::mem_fun(*this, &MainWindow::on_open_dialog)));

  m_refUIManager = Gtk::UIManager::create();
  m_refUIManager->insert_action_group(m_refActionGroup, 0);
  add_accel_group(m_refUIManager->get_accel_group());
  try {
    m_refUIManager->add_ui_from_string(kInterface);
  } catch (const Glib::Error& error) {
    std::cout << "building menus failed: " << error.what().raw() << std::endl;
    return;  // neither bar exists
  }
  m_MainBox.pack_start(*m_refUIManager->get_widget("/MenuBar"), Gtk::PACK_SHRINK, 0);

  auto& toolBar = dynamic_cast<Gtk::Toolbar&>(*m_refUIManager->get_widget("/ToolBar"));
  toolBar.append(m_FundingItem);
  toolBar.append(m_LogoItem);
  toolBar.insert(m_OpenButton, 0);
  m_MainBox.pack_start(toolBar, Gtk::PACK_SHRINK, 0);
}

}  // namespace quorbel
