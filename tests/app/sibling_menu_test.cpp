#include <dirent.h>
#include <gtk/gtk.h>

#include <algorithm>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Names = std::vector<std::string>;

class SiblingMenu : public WindowTest {
 protected:
  SiblingMenu() { std::filesystem::create_directory("lattices"); }

  std::string pathOf(const std::string& name) const {
    return (folder.path() / "lattices" / name).string();
  }

  void writeAll(const Names& names) const {
    for (const std::string& name : names) folder.write("lattices/" + name, kTwoWords);
  }

  /// The labels of the menu's entries, in order.
  static Names entriesOf(TestWindow& w) {
    Names names;
    for (Gtk::MenuItem& item : w.m_SiblingMenu.items()) names.push_back(item.get_label());
    return names;
  }

  /// The names in the folder as its listing gives them, those of `wanted` only.
  Names listed(const Names& wanted) const {
    Names names;
    DIR* const directory = opendir(pathOf("").c_str());
    while (const dirent* entry = readdir(directory))
      if (std::find(wanted.begin(), wanted.end(), entry->d_name) != wanted.end())
        names.emplace_back(entry->d_name);
    closedir(directory);
    return names;
  }
};

TEST_F(SiblingMenu, ListsFilesOfTheSameStemInTheOrderOfTheFolder) {
  const Names siblings = {"a.lat", "a.htk", "a.1.lat", "a.txt", "a.lat~", "a.zip", "a.b", "a.wave"};
  writeAll(siblings);
  writeAll({"a.wav", "a.1.wav", "b.lat", "ab.lat", "A.lat", ".a.lat", "xwav"});
  TestWindow& w = showWindow();
  EXPECT_EQ(w.build_sibling_menu(pathOf("a.lat")), "a.lat");
  EXPECT_EQ(entriesOf(w), listed(siblings));
  EXPECT_EQ(entriesOf(w).size(), siblings.size());
  EXPECT_EQ(w.m_CurrentDir, (folder.path() / "lattices").string());
}

TEST_F(SiblingMenu, TakesCapitalsForOtherLetters) {
  writeAll({"X.lat", "X.WAV", "X.wav", "x.lat"});
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("X.lat"));
  EXPECT_EQ(entriesOf(w), listed({"X.lat", "X.WAV"}));
}

TEST_F(SiblingMenu, ComparesWholeNamesWithoutADot) {
  writeAll({"talk", "talk.lat", "talks"});
  TestWindow& w = showWindow();
  EXPECT_EQ(w.build_sibling_menu(pathOf("talk")), "talk");
  EXPECT_EQ(entriesOf(w), listed({"talk", "talk.lat"}));
}

TEST_F(SiblingMenu, LeavesOutWhatEndsInWavWithoutADotToo) {
  writeAll({"wav", "wav.lat"});
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("wav.lat"));
  EXPECT_EQ(entriesOf(w), Names{"wav.lat"});
}

TEST_F(SiblingMenu, ListsFoldersAsAnyOtherEntry) {
  writeAll({"a.lat"});
  std::filesystem::create_directory(pathOf("a.dir"));
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("a.lat"));
  EXPECT_EQ(entriesOf(w), listed({"a.lat", "a.dir"}));
}

TEST_F(SiblingMenu, IsFilledAnew) {
  writeAll({"a.lat", "b.lat"});
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("a.lat"));
  w.build_sibling_menu(pathOf("b.lat"));
  EXPECT_EQ(entriesOf(w), Names{"b.lat"});
}

TEST_F(SiblingMenu, DropsFromTheOpenButton) {
  writeAll({"a.lat"});
  TestWindow& w = showWindow();
  EXPECT_FALSE(w.m_OpenButton.get_menu());
  w.build_sibling_menu(pathOf("a.lat"));
  EXPECT_EQ(w.m_OpenButton.get_menu(), &w.m_SiblingMenu);
}

TEST_F(SiblingMenu, ShowsUnderscoresAsTheyAre) {
  writeAll({"a_b.lat", "a_b.__x"});
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("a_b.lat"));
  for (Gtk::MenuItem& item : w.m_SiblingMenu.items()) {
    const auto& label = dynamic_cast<Gtk::Label&>(*item.get_child());
    EXPECT_FALSE(label.get_use_underline());
    EXPECT_EQ(label.get_text(), item.get_label());
  }
  EXPECT_EQ(entriesOf(w), listed({"a_b.lat", "a_b.__x"}));
}

TEST_F(SiblingMenu, EntryOpensItsFile) {
  writeAll({"a.lat"});
  folder.write("lattices/a.2.lat", kTwoWays);
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("a.lat"));
  w.open_lattice("a.lat");
  for (Gtk::MenuItem& item : w.m_SiblingMenu.items())
    if (item.get_label() == "a.2.lat") item.activate();
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("a.2.lat"));
  EXPECT_EQ(w.m_Graph.adjacency->nodeCount, 4);
  EXPECT_EQ(entriesOf(w), listed({"a.lat", "a.2.lat"}));
}

TEST_F(SiblingMenu, OpensByRealClicks) {
  writeAll({"a.lat"});
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("a.lat"));
  settle();
  const int arrowX = w.m_OpenButton.get_width() - 5;
  click(w.m_OpenButton, arrowX, w.m_OpenButton.get_height() / 2);
  ASSERT_TRUE(waitFor([&] { return w.m_SiblingMenu.is_mapped(); }));
  Gtk::MenuItem& item = w.m_SiblingMenu.items().front();
  click(item, 20, item.get_height() / 2);
  EXPECT_TRUE(waitFor([&] { return w.m_FileOpened && w.m_RunsInProgress == 0; }));
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("a.lat"));
}

TEST_F(SiblingMenu, StaysWhenTheLatticeIsClosed) {
  writeAll({"a.lat", "a.htk"});
  TestWindow& w = showWindow();
  w.open_lattice(w.build_sibling_menu(pathOf("a.lat")));
  w.on_close();
  EXPECT_EQ(entriesOf(w), listed({"a.lat", "a.htk"}));
  EXPECT_EQ(w.m_CurrentDir, (folder.path() / "lattices").string());
}

TEST_F(SiblingMenu, NameOfTwoCharactersIsOutOfRange) {
  writeAll({"ab.lat", "ab"});
  TestWindow& w = showWindow();
  EXPECT_THROW(w.build_sibling_menu(pathOf("ab.lat")), std::out_of_range);
  EXPECT_EQ(w.m_CurrentDir, (folder.path() / "lattices").string());
}

TEST_F(SiblingMenu, NameOfThreeCharactersIsInRange) {
  writeAll({"abc.lat", "abc", "ab"});
  TestWindow& w = showWindow();
  w.build_sibling_menu(pathOf("abc.lat"));
  EXPECT_EQ(entriesOf(w), listed({"abc.lat", "abc"}));
}

TEST_F(SiblingMenu, FolderThatCannotBeListedIsTheToolkitsError) {
  TestWindow& w = openLattice(kTwoWords, "a.lat");
  ASSERT_FALSE(w.m_SiblingMenu.items().empty());
  EXPECT_THROW(w.build_sibling_menu(pathOf("gone/a.lat")), Glib::FileError);
  EXPECT_EQ(w.m_CurrentDir, pathOf("gone"));
  EXPECT_TRUE(w.m_SiblingMenu.items().empty());
}

TEST_F(SiblingMenu, FailureAtStartUpIsSaid) {
  writeAll({"ab.lat", "ab"});
  std::string expected;
  try {
    static_cast<void>(std::string("ab").substr(std::string::size_type(-1)));
  } catch (const std::out_of_range& error) {
    expected = error.what();
  }
  PrintedText printed;
  TestWindow& w = showWindow(pathOf("ab.lat"));
  EXPECT_EQ(dialogs, Names{expected});
  EXPECT_EQ(printed.take(), expected + "\n");
  EXPECT_FALSE(w.m_FileOpened);
  openLattice(kTwoWords, "fine.lat");
  EXPECT_TRUE(w.m_FileOpened);
}

TEST_F(SiblingMenu, FolderThatIsMissingAtStartUpIsSaid) {
  std::string expected;
  try {
    Glib::Dir gone(pathOf("gone"));
  } catch (const Glib::FileError& error) {
    expected = error.what();
  }
  PrintedText printed;
  TestWindow& w = showWindow(pathOf("gone/a.lat"));
  EXPECT_EQ(dialogs, Names{expected});
  EXPECT_EQ(printed.take(), expected + "\n");
  EXPECT_FALSE(w.m_FileOpened);
}

}  // namespace
}  // namespace quorbel
