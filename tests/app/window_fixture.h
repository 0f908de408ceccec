#pragma once

#include <gtest/gtest.h>
#include <gtkmm.h>

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
/// other dialog that comes up is noted in `dialogs` and answered by `answer`.
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

  /// Answers a dialog that has come up; closes it with the response that a user's first thought
  /// would be unless a test sets something else.
  std::function<void(Gtk::Dialog&)> answer;

 private:
  bool answerDialogs();
  void sendPointerTo(Gtk::Widget& widget, int x, int y);

  std::vector<GtkWidget*> m_Answered;
  sigc::connection m_Answering;
  sigc::connection m_LastResort;
};

}  // namespace quorbel
