#pragma once

#include <gtest/gtest.h>
#include <gtkmm.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/test_window.h"
#include "temporary_folder.h"

namespace quorbel {

/// A test of the real window on a real display (scripts/with-display gives each test one).
///
/// The working directory is a folder of its own with the viewer's pictures in it. Each error box or
/// other dialog that comes up is noted in `dialogs` and answered by `answer`. Warnings of the
/// toolkit make a test fail.
class WindowTest : public ::testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  /// Shows a new window, which opens `startupPath` unless it is empty, and waits until it is drawn.
  TestWindow& showWindow(const std::string& startupPath = "");

  /// Writes the lattice and opens it in the window (made when there is none yet).
  TestWindow& openLattice(const std::string& text, const std::string& name = "test.lat");

  /// Lets the toolkit work until `condition` holds; false when it does not hold within 20 seconds.
  bool waitFor(const std::function<bool()>& condition);

  /// Lets the toolkit work until nothing is left to do and the server has drawn everything.
  void settle();

  /// Puts a program `dot` first on the search path: a shell script with this text. "$REAL_DOT" in
  /// it is the path of the real one.
  void replaceDot(const std::string& script);

  /// Activates an action as its menu entry does: what the handler throws goes to the last resort.
  void activate(const char* action);

  /// Has `act` carried out, once, by the events that the pipeline lets through at the stage that
  /// shows this text in the status bar.
  void duringStage(const char* stage, const std::function<void()>& act);

  /// Chooses the file in a dialog that has come up, and gives the response once it is chosen.
  static void choose(Gtk::FileChooserDialog& dialog, const std::string& path, int response);

  /// Asks for the window to be closed, as a click on the cross in its title bar does.
  void closeByWindowManager();

  /// The lines of a file that a stand-in writes, none when there is no such file.
  std::vector<std::string> linesOf(const std::string& name) const;

  // Real events, through the X server.
  void movePointer(Gtk::Widget& widget, int x, int y);  ///< widget pixels
  void click(Gtk::Widget& widget, int x, int y, unsigned button = 1);
  void doubleClick(Gtk::Widget& widget, int x, int y, unsigned button = 1);
  void pressButton(unsigned button = 1);
  void releaseButton(unsigned button = 1);
  void pressKey(unsigned keysym);
  void releaseKey(unsigned keysym);
  void scrollWheel(Gtk::Widget& widget, int x, int y, bool up);

  /// What the widget's window shows now.
  Glib::RefPtr<Gdk::Pixbuf> pictureOf(Gtk::Widget& widget);

  /// A pixel of a picture as 0xRRGGBB.
  static unsigned pixel(const Glib::RefPtr<Gdk::Pixbuf>& picture, int x, int y);

  /// The text on top of the status bar.
  static std::string statusOf(TestWindow& window);

  /// The edge item of the window's drawing with this link id.
  static const LayoutItem& edgeOf(const TestWindow& window, int linkId);

  /// The middle of an edge's label box on the canvas.
  static std::pair<int, int> labelCentre(const TestWindow& window, int linkId);

  TemporaryFolder folder;
  std::unique_ptr<TestWindow> window;

  /// The dialogs that came up: title, or for message boxes the secondary text.
  std::vector<std::string> dialogs;

  /// What the toolkit warned about while the window lived. A test fails when it is not empty in the
  /// end.
  std::vector<std::string> warnings;

  /// Answers a dialog that has come up; closes it with the response that a user's first thought
  /// would be unless a test sets something else.
  std::function<void(Gtk::Dialog&)> answer;

 private:
  bool answerDialogs();
  static void forget(GtkWidget* hidden, gpointer answered);
  void sendPointerTo(Gtk::Widget& widget, int x, int y);
  void awaitButtonPresses(int count);

  std::vector<GtkWidget*> m_Answered;
  std::chrono::steady_clock::time_point m_LastDoubleClick;
  sigc::connection m_Answering;
  sigc::connection m_LastResort;
};

}  // namespace quorbel
