// What all dialogs for files have in common.

#include <gtk/gtk.h>

#include "app/chooser_parts.h"
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

  /// What stands in the field for a file's name; "" without such a field.
  static std::string typedName(Gtk::Widget& part) {
    std::string text;
    if (G_OBJECT_TYPE_NAME(part.gobj()) == std::string("GtkFileChooserEntry"))
      return gtk_entry_get_text(GTK_ENTRY(part.gobj()));
    if (auto* const container = dynamic_cast<Gtk::Container*>(&part)) {
      const auto look = [](GtkWidget* child, gpointer found) {
        *static_cast<std::string*>(found) += typedName(*Glib::wrap(child));
      };
      gtk_container_forall(container->gobj(), look, &text);
    }
    return text;
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

/// One of each kind is enough, however often it is asked for: they live as long as the program.
TEST_F(FileDialogs, AreUsedAgain) {
  openLattice(kTwoWords, "talks/monday.lat");
  for (const char* action : all) activate(action);
  const std::size_t count = Gtk::Window::list_toplevels().size();
  for (int round = 0; round < 3; ++round)
    for (const char* action : all) activate(action);
  EXPECT_EQ(dialogs.size(), 4 * all.size());
  EXPECT_EQ(Gtk::Window::list_toplevels().size(), count);
}

TEST_F(FileDialogs, ComeUpAgainAsIfTheyWereNew) {
  openLattice(kTwoWords, "talks/monday.lat");
  // Into a field that has the focus when the folder has been read the toolkit puts what all names
  // there begin with: here that is nothing.
  folder.write("talks/tuesday.lat", kTwoWords);
  std::filesystem::create_directory("others");
  const std::string talks = (folder.path() / "talks").string();
  const std::string others = (folder.path() / "others").string();
  for (const char* action : all) {
    SCOPED_TRACE(action);
    answer = [&](Gtk::Dialog& dialog) {
      auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
      waitFor([&] { return chooser.get_current_folder() == talks; });
      const std::vector<GtkFileFilter*> filters = filtersOf(dialog);
      if (!filters.empty())
        gtk_file_chooser_set_filter(chooser.Gtk::FileChooser::gobj(), filters.back());
      if (chooser.Gtk::FileChooser::get_action() == Gtk::FILE_CHOOSER_ACTION_SAVE) {
        chooser.set_current_folder(others);
        chooser.set_current_name("typed");
        waitFor([&] { return chooser.get_filename() == others + "/typed"; });
        EXPECT_EQ(chooser.get_filename(), others + "/typed");
        dialog.response(Gtk::RESPONSE_CANCEL);
      } else {
        choose(chooser, talks + "/monday.lat", Gtk::RESPONSE_CANCEL);
      }
    };
    activate(action);
    bool hasLooked = false;
    answer = [&](Gtk::Dialog& dialog) {
      auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
      waitFor([&] { return chooser.get_current_folder() == talks; });
      EXPECT_EQ(chooser.get_current_folder(), talks);
      const std::vector<GtkFileFilter*> filters = filtersOf(dialog);
      EXPECT_EQ(gtk_file_chooser_get_filter(chooser.Gtk::FileChooser::gobj()),
                filters.empty() ? nullptr : filters.front());
      EXPECT_EQ(typedName(dialog), "");
      hasLooked = true;
      dialog.response(Gtk::RESPONSE_CANCEL);
    };
    activate(action);
    EXPECT_TRUE(hasLooked);
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
