// The folder that each dialog for files shows when it comes up.

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

class DialogFolders : public WindowTest {
 protected:
  DialogFolders() { std::filesystem::create_directory(folder.path() / "talks"); }

  /// Opens each dialog by its action and expects it to show this folder, then cancels it.
  void expectFolder(const std::string& expected, const std::vector<const char*>& actions) {
    for (const char* action : actions) {
      SCOPED_TRACE(action);
      bool hasLooked = false;
      answer = [&](Gtk::Dialog& dialog) {
        auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
        waitFor([&] { return chooser.get_current_folder() == expected; });
        EXPECT_EQ(chooser.get_current_folder(), expected);
        hasLooked = true;
        dialog.response(Gtk::RESPONSE_CANCEL);
      };
      activate(action);
      EXPECT_TRUE(hasLooked);
    }
  }

  const std::vector<const char*> all = {"FileOpen", "FileOpenSound", "FileExportPNG",
                                        "FileExportDIA"};
};

TEST_F(DialogFolders, AreHomeBeforeAnyLattice) {
  showWindow();
  expectFolder(Glib::get_home_dir(), {"FileOpen", "FileOpenSound"});
}

TEST_F(DialogFolders, AreThatOfTheLattice) {
  openLattice(kTwoWords, "talks/monday.lat");
  expectFolder((folder.path() / "talks").string(), all);
}

TEST_F(DialogFolders, AreThatOfALatticeWithARelativePath) {
  folder.write("talks/monday.lat", kTwoWords);
  showWindow("talks/monday.lat");
  expectFolder((folder.path() / "talks").string(), all);
}

TEST_F(DialogFolders, StayWhenTheLatticeIsClosed) {
  openLattice(kTwoWords, "talks/monday.lat");
  activate("FileClose");
  expectFolder((folder.path() / "talks").string(), {"FileOpen", "FileOpenSound"});
}

TEST_F(DialogFolders, AreHomeForALatticeAmongTheWorkFiles) {
  openLattice(kTwoWords, "imported.lat");
  expectFolder(Glib::get_home_dir(), all);
}

TEST_F(DialogFolders, MayBeGone) {
  openLattice(kTwoWords, "talks/monday.lat");
  std::filesystem::remove_all(folder.path() / "talks");
  activate("FileOpen");
  activate("FileExportPNG");
  EXPECT_EQ(dialogs,
            (std::vector<std::string>{"Please choose a HTK file", "Please choose a filename"}));
}

}  // namespace
}  // namespace quorbel
