// What all dialogs for files have in common.

#include <gtk/gtk.h>

#include "app/lattices.h"
#include "app/library_faults.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

class FileDialogs : public WindowTest {
 protected:
  FileDialogs() { std::filesystem::create_directory(folder.path() / "talks"); }

  void workFor(int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    waitFor([&] { return std::chrono::steady_clock::now() > end; });
  }

  const std::vector<const char*> all = {"FileOpen", "FileOpenSound", "FileExportPNG"};
};

/// What the toolkit says when it hands icons to a dialog that is gone fails the test.
TEST_F(FileDialogs, MayBeAnsweredWhileTheirFolderIsStillRead) {
  openLattice(kTwoWords, "talks/monday.lat");
  libraryFaults().iconDelayMs = 300;
  answer = [this](Gtk::Dialog& dialog) {
    workFor(100);
    dialog.response(Gtk::RESPONSE_CANCEL);
  };
  for (const char* action : all) activate(action);
  workFor(500);
  libraryFaults().iconDelayMs = 0;
  EXPECT_EQ(dialogs.size(), all.size());
}

TEST_F(FileDialogs, AreOffTheScreenOnceAnswered) {
  openLattice(kTwoWords, "talks/monday.lat");
  for (const char* action : all) {
    SCOPED_TRACE(action);
    activate(action);
    for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
      EXPECT_EQ(toplevel->get_visible(), toplevel == window.get());
    EXPECT_FALSE(gtk_grab_get_current());
  }
}

TEST_F(FileDialogs, MayOutliveTheWindow) {
  openLattice(kTwoWords, "talks/monday.lat");
  for (const char* action : all) activate(action);
  window.reset();
  workFor(500);
  EXPECT_EQ(dialogs.size(), all.size());
}

}  // namespace
}  // namespace quorbel
