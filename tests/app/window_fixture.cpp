#include "app/window_fixture.h"

#include <X11/extensions/XTest.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <utility>

namespace quorbel {
namespace {

constexpr int kAnswerEveryMs = 20;

Display* xDisplay() { return gdk_x11_get_default_xdisplay(); }

/// The text that a dialog tells the user, or its title.
std::string dialogText(Gtk::Dialog& dialog) {
  if (!GTK_IS_MESSAGE_DIALOG(dialog.gobj())) return dialog.get_title().raw();
  gchar* secondary = nullptr;
  g_object_get(dialog.gobj(), "secondary-text", &secondary, nullptr);
  const std::string text = secondary ? secondary : "";
  g_free(secondary);
  return text;
}

/// The running test's list of warnings. The toolkit's log can be redirected once a process.
std::vector<std::string>* warningsOfTest = nullptr;

GLogWriterOutput noteWarning(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer) {
  if (warningsOfTest && (level & G_LOG_LEVEL_MASK) <= G_LOG_LEVEL_WARNING) {
    gchar* const line = g_log_writer_format_fields(level, fields, count, false);
    warningsOfTest->push_back(line);
    g_free(line);
  }
  return g_log_writer_default(level, fields, count, nullptr);
}

void noteWarningsIn(std::vector<std::string>* list) {
  if (static bool redirected = false; !std::exchange(redirected, true))
    g_log_set_writer_func(noteWarning, nullptr, nullptr);
  warningsOfTest = list;
}

/// Button presses that have reached the program.
int buttonPresses = 0;

GdkFilterReturn countButtonPresses(GdkXEvent* event, GdkEvent*, gpointer) {
  if (static_cast<XEvent*>(event)->type == ButtonPress) ++buttonPresses;
  return GDK_FILTER_CONTINUE;
}

}  // namespace

WindowTest::WindowTest() {
  noteWarningsIn(&warnings);
  gdk_window_add_filter(nullptr, countButtonPresses, nullptr);
  std::filesystem::copy(QUORBEL_IMAGES, folder.path() / "images");
  answer = [](Gtk::Dialog& dialog) {
    dialog.response(GTK_IS_MESSAGE_DIALOG(dialog.gobj()) ? Gtk::RESPONSE_OK
                                                         : Gtk::RESPONSE_DELETE_EVENT);
  };
  m_Answering = Glib::signal_timeout().connect(sigc::mem_fun(*this, &WindowTest::answerDialogs),
                                               kAnswerEveryMs);
}

WindowTest::~WindowTest() {
  gdk_window_remove_filter(nullptr, countButtonPresses, nullptr);
  m_LastResort.disconnect();
  window.reset();
  m_Answering.disconnect();
  for (GtkWidget* widget : m_Answered)
    g_signal_handlers_disconnect_by_func(widget, reinterpret_cast<gpointer>(forget), &m_Answered);
  noteWarningsIn(nullptr);
  EXPECT_EQ(warnings, std::vector<std::string>());
}

/// A dialog for files comes up again.
void WindowTest::forget(GtkWidget* hidden, gpointer answered) {
  auto& widgets = *static_cast<std::vector<GtkWidget*>*>(answered);
  widgets.erase(std::remove(widgets.begin(), widgets.end(), hidden), widgets.end());
  g_signal_handlers_disconnect_by_func(hidden, reinterpret_cast<gpointer>(forget), answered);
}

bool WindowTest::answerDialogs() {
  for (Gtk::Window* toplevel : Gtk::Window::list_toplevels()) {
    auto* dialog = dynamic_cast<Gtk::Dialog*>(toplevel);
    if (!dialog || !dialog->is_mapped()) continue;
    GtkWidget* const widget = GTK_WIDGET(dialog->gobj());
    if (std::find(m_Answered.begin(), m_Answered.end(), widget) != m_Answered.end()) continue;
    m_Answered.push_back(widget);
    g_signal_connect(widget, "hide", G_CALLBACK(forget), &m_Answered);
    dialogs.push_back(dialogText(*dialog));
    answer(*dialog);
    break;  // the list of windows may have changed
  }
  return true;
}

TestWindow& WindowTest::showWindow(const std::string& startupPath) {
  window = std::make_unique<TestWindow>(startupPath);
  m_LastResort =
      Glib::add_exception_handler(sigc::mem_fun(*window, &MainWindow::on_uncaught_exception));
  window->show();
  waitFor([this] { return window->is_mapped() && window->m_RunsInProgress == 0; });
  settle();
  return *window;
}

TestWindow& WindowTest::openLattice(const std::string& text, const std::string& name) {
  const std::string path = folder.write(name, text);
  if (!window) showWindow();
  window->open_lattice(window->build_sibling_menu(path));
  settle();
  return *window;
}

bool WindowTest::waitFor(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    if (Gtk::Main::events_pending())
      Gtk::Main::iteration();
    else
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

void WindowTest::settle() {
  constexpr int kRoundsWithoutEvents = 5;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  for (int quiet = 0; quiet < kRoundsWithoutEvents; ++quiet) {
    XSync(xDisplay(), False);
    while (Gtk::Main::events_pending() && std::chrono::steady_clock::now() < deadline) {
      Gtk::Main::iteration();
      quiet = 0;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
}

void WindowTest::replaceDot(const std::string& script) {
  const std::filesystem::path programs = folder.path() / "programs";
  const std::string path = std::getenv("PATH");
  if (std::filesystem::create_directory(programs)) {
    setenv("REAL_DOT", Glib::find_program_in_path("dot").c_str(), 1);
    setenv("PATH", (programs.string() + ":" + path).c_str(), 1);
  }
  std::filesystem::remove(programs / "dot");
  std::ofstream(programs / "dot") << "#!/bin/sh\n" << script << "\n";
  std::filesystem::permissions(programs / "dot", std::filesystem::perms::owner_all);
}

void WindowTest::activate(const char* action) {
  window->m_refActionGroup->get_action(action)->activate();
}

void WindowTest::duringStage(const char* stage, const std::function<void()>& act) {
  auto connection = std::make_shared<sigc::connection>();
  *connection =
      window->m_Statusbar.signal_text_pushed().connect([=](guint, const Glib::ustring& text) {
        if (text != stage) return;
        connection->disconnect();
        Glib::signal_idle().connect_once(act, Glib::PRIORITY_DEFAULT);
      });
}

void WindowTest::choose(Gtk::FileChooserDialog& dialog, const std::string& path, int response) {
  // A folder that the dialog still reads may take the choice away again.
  constexpr int kLooksBeforeChoosingAgain = 50;
  dialog.set_filename(path);
  Glib::signal_timeout().connect(
      [&dialog, path, response, looks = 0]() mutable {
        const bool isChosen = dialog.get_filename() == path;
        if (isChosen)
          dialog.response(response);
        else if (++looks % kLooksBeforeChoosingAgain == 0)
          dialog.set_filename(path);
        return !isChosen;
      },
      kAnswerEveryMs);
}

void WindowTest::closeByWindowManager() {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = GDK_WINDOW_XID(window->get_window()->gobj());
  event.xclient.message_type = XInternAtom(xDisplay(), "_NET_CLOSE_WINDOW", False);
  event.xclient.format = 32;
  XSendEvent(xDisplay(), DefaultRootWindow(xDisplay()), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
  XFlush(xDisplay());
}

std::vector<std::string> WindowTest::linesOf(const std::string& name) const {
  std::ifstream stream(folder.path() / name);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

void WindowTest::sendPointerTo(Gtk::Widget& widget, int x, int y) {
  int originX = 0;
  int originY = 0;
  widget.get_window()->get_origin(originX, originY);
  if (!widget.get_has_window()) {
    originX += widget.get_allocation().get_x();
    originY += widget.get_allocation().get_y();
  }
  XTestFakeMotionEvent(xDisplay(), -1, originX + x, originY + y, 0);
}

void WindowTest::movePointer(Gtk::Widget& widget, int x, int y) {
  sendPointerTo(widget, x, y);
  settle();
}

void WindowTest::pressButton(unsigned button) {
  const int before = buttonPresses;
  XTestFakeButtonEvent(xDisplay(), button, True, 0);
  awaitButtonPresses(before + 1);
}

void WindowTest::releaseButton(unsigned button) {
  XTestFakeButtonEvent(xDisplay(), button, False, 0);
  settle();
}

void WindowTest::click(Gtk::Widget& widget, int x, int y, unsigned button) {
  movePointer(widget, x, y);
  pressButton(button);
  releaseButton(button);
}

/// All four events at once: the toolkit only takes quick presses for a double press. Two such
/// double presses are kept apart, for it makes triple presses of closer ones.
void WindowTest::doubleClick(Gtk::Widget& widget, int x, int y, unsigned button) {
  const auto apart = 2 * std::chrono::milliseconds(250) + std::chrono::milliseconds(20);
  movePointer(widget, x, y);
  std::this_thread::sleep_until(m_LastDoubleClick + apart);
  const int before = buttonPresses;
  for (const Bool isPress : {True, False, True, False})
    XTestFakeButtonEvent(xDisplay(), button, isPress, 0);
  awaitButtonPresses(before + 2);
  m_LastDoubleClick = std::chrono::steady_clock::now();
}

/// The window manager holds presses back until it has looked at them.
void WindowTest::awaitButtonPresses(int count) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  XFlush(xDisplay());
  waitFor([&] { return buttonPresses >= count || std::chrono::steady_clock::now() > deadline; });
  settle();
}

void WindowTest::pressKey(unsigned keysym) {
  XTestFakeKeyEvent(xDisplay(), XKeysymToKeycode(xDisplay(), keysym), True, 0);
  settle();
}

void WindowTest::releaseKey(unsigned keysym) {
  XTestFakeKeyEvent(xDisplay(), XKeysymToKeycode(xDisplay(), keysym), False, 0);
  settle();
}

void WindowTest::scrollWheel(Gtk::Widget& widget, int x, int y, bool up) {
  click(widget, x, y, up ? 4 : 5);
}

Glib::RefPtr<Gdk::Pixbuf> WindowTest::pictureOf(Gtk::Widget& widget) {
  settle();
  const Glib::RefPtr<Gdk::Drawable> drawable = widget.get_window();
  return Gdk::Pixbuf::create(drawable, 0, 0, widget.get_width(), widget.get_height());
}

unsigned WindowTest::pixel(const Glib::RefPtr<Gdk::Pixbuf>& picture, int x, int y) {
  const guint8* bytes =
      picture->get_pixels() + y * picture->get_rowstride() + x * picture->get_n_channels();
  return static_cast<unsigned>(bytes[0]) << 16 | static_cast<unsigned>(bytes[1]) << 8 | bytes[2];
}

std::string WindowTest::statusOf(TestWindow& window) {
  GtkWidget* area = gtk_statusbar_get_message_area(window.m_Statusbar.gobj());
  GList* children = gtk_container_get_children(GTK_CONTAINER(area));
  const std::string text = gtk_label_get_text(GTK_LABEL(children->data));
  g_list_free(children);
  return text;
}

const LayoutItem& WindowTest::edgeOf(const TestWindow& window, int linkId) {
  const auto found =
      std::find_if(window.m_EdgeLayouts.begin(), window.m_EdgeLayouts.end(),
                   [&](const LayoutItem& item) { return !item.isNode && item.linkId == linkId; });
  if (found == window.m_EdgeLayouts.end()) throw std::runtime_error("no such edge is drawn");
  return *found;
}

std::pair<int, int> WindowTest::labelCentre(const TestWindow& window, int linkId) {
  const Box box = labelBox(window.canvasMapping(), edgeOf(window, linkId));
  return {box.left + box.width / 2, box.top + box.height / 2};
}

}  // namespace quorbel
