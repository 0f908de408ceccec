// Construction of the window: widgets, panes and signal connections. What they do is in the files
// that main_window.h names; the actions and menus are in actions.cpp.

#include "app/main_window.h"

#include <iostream>

#include "texts/product.h"

namespace quorbel {
namespace {

constexpr int kDefaultWidth = 795;
constexpr int kDefaultHeight = 550;

}  // namespace

MainWindow::MainWindow(const std::string& startupPath)
    : m_MainBox(false, 0),
      m_OpenButton(Gtk::Stock::OPEN),
      m_refInfoBuffer(Gtk::TextBuffer::create()),
      m_StartupPath(startupPath),
      m_Import(LatticeImport::fromEnvironment(Glib::getenv("QUORBEL_IMPORTER"),
                                              Glib::getenv("QUORBEL_LINKS"))) {
  if (!Glib::thread_supported()) Glib::thread_init();
  if (!m_Audio.init()) {
    std::cout << "openAL intialization failed. You will not be able to play sound" << std::endl;
  }
  clear_selection();

  set_title(PRODUCT_NAME);
  set_default_size(kDefaultWidth, kDefaultHeight);
  set_icon_from_file(IMAGE_DIR + "logo_quor.png");
  add(m_MainBox);
  addActions();
  buildInterface();
  addKeys();
  m_MainBox.pack_start(m_HPaned, Gtk::PACK_EXPAND_WIDGET, 0);
  m_MainBox.pack_start(m_Statusbar, Gtk::PACK_SHRINK, 0);
  m_Statusbar.push(kNoFile, kFileContext);
  arrangePanes();

  m_GraphArea.set_events(Gdk::POINTER_MOTION_MASK | Gdk::BUTTON_PRESS_MASK | Gdk::KEY_PRESS_MASK |
                         Gdk::KEY_RELEASE_MASK | Gdk::SCROLL_MASK);
  m_SoundArea.set_events(Gdk::POINTER_MOTION_MASK | Gdk::BUTTON_PRESS_MASK |
                         Gdk::BUTTON_RELEASE_MASK);
  connectSignals();
  nameParts();
  m_refTreeSelection = m_AttributeTree.get_selection();
  m_refTreeSelection->set_mode(Gtk::SELECTION_MULTIPLE);
  show_all_children();
}

MainWindow::~MainWindow() {
  // The toolkit may deliver events up to the last widget's end: none may reach a handler whose
  // members are gone.
  m_TickConnection.disconnect();
  m_LookConnection.disconnect();
  for (sigc::connection& connection : m_Connections) connection.disconnect();
  hide();
  get_display()->flush();  // off the screen before `dot` is waited for
}

void MainWindow::arrangePanes() {
  constexpr bool kResize = true;
  constexpr bool kShrink = true;
  m_HPaned.pack1(m_TreeScroll, !kResize, !kShrink);
  m_HPaned.pack2(m_RightPaned, kResize, !kShrink);
  m_HPaned.set_position(130);
  m_RightPaned.pack1(m_SoundScroll, !kResize, !kShrink);
  m_RightPaned.pack2(m_LowerPaned, kResize, !kShrink);
  m_RightPaned.set_position(50);
  m_LowerPaned.pack1(m_InfoScroll, !kResize, kShrink);
  m_LowerPaned.pack2(m_GraphScroll, kResize, !kShrink);
  m_LowerPaned.set_position(kInfoHeight);

  for (Gtk::ScrolledWindow* scroll : {&m_TreeScroll, &m_SoundScroll, &m_GraphScroll, &m_InfoScroll})
    scroll->set_policy(Gtk::POLICY_AUTOMATIC, Gtk::POLICY_AUTOMATIC);
  m_InfoScroll.add(m_InfoView);
  m_SoundScroll.add(m_SoundArea);
  m_GraphScroll.add(m_GraphArea);
  m_TreeScroll.add(m_AttributeTree);

  m_InfoView.set_buffer(m_refInfoBuffer);
  m_InfoView.set_editable(false);
  m_InfoView.set_wrap_mode(Gtk::WRAP_WORD_CHAR);
  m_InfoView.set_justification(Gtk::JUSTIFY_CENTER);
}

/// Handlers run after the toolkit's own, but for those of keys that would mean something else to
/// it.
void MainWindow::connectSignals() {
  constexpr bool kAfter = true;
  const auto connect = [this](auto signal, auto handler) {
    m_Connections.push_back(signal.connect(sigc::mem_fun(*this, handler), kAfter));
  };
  connect(m_SoundArea.signal_expose_event(), &MainWindow::on_sound_expose);
  connect(m_SoundArea.signal_motion_notify_event(), &MainWindow::on_sound_motion);
  connect(m_SoundArea.signal_button_press_event(), &MainWindow::on_sound_press);
  connect(m_SoundArea.signal_button_release_event(), &MainWindow::on_sound_release);
  connect(m_GraphArea.signal_expose_event(), &MainWindow::on_graph_expose);
  connect(m_GraphArea.signal_scroll_event(), &MainWindow::on_graph_scroll);
  connect(m_GraphArea.signal_motion_notify_event(), &MainWindow::on_graph_motion);
  connect(m_GraphArea.signal_button_press_event(), &MainWindow::on_graph_press);
  connect(signal_key_press_event(), &MainWindow::on_key_event);
  connect(signal_key_release_event(), &MainWindow::on_key_event);
  connect(m_GraphArea.signal_query_tooltip(), &MainWindow::on_graph_tooltip);
  connect(m_GraphArea.signal_map(), &MainWindow::on_graph_map);
  connect(m_GraphArea.signal_button_release_event(), &MainWindow::on_graph_release);
  for (Gtk::Adjustment* bar : {m_GraphScroll.get_hadjustment(), m_GraphScroll.get_vadjustment()})
    connect(bar->signal_value_changed(), &MainWindow::on_graph_scrolled);
  const auto connectBefore = [this](auto signal, auto handler) {
    m_Connections.push_back(signal.connect(sigc::mem_fun(*this, handler), !kAfter));
  };
  connectBefore(signal_key_press_event(), &MainWindow::on_key_before);
  connectBefore(m_FindBar.entry.signal_key_press_event(), &MainWindow::on_find_bar_key);
  connectBefore(m_FindBar.signal_key_press_event(), &MainWindow::on_find_bar_key);
  connect(m_FindBar.entry.signal_changed(), &MainWindow::on_find_text_changed);
  connect(m_FindBar.previous.signal_clicked(), &MainWindow::on_find_previous);
  connect(m_FindBar.next.signal_clicked(), &MainWindow::on_find_next);
  connect(m_FindBar.close.signal_clicked(), &MainWindow::on_close_find_bar);
  connect(signal_show(), &MainWindow::on_window_show);
  connect(signal_hide(), &MainWindow::endProgram);
  m_Connections.push_back(signal_grab_notify().connect(  // a dialog or menu has come or gone
      sigc::hide(sigc::mem_fun(*this, &MainWindow::lookAtPutOff))));
}

}  // namespace quorbel
