#include <gtk/gtk.h>

#include <map>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

class OpenDialog : public WindowTest {
 protected:
  static Gtk::FileChooserDialog& chooser(Gtk::Dialog& dialog) {
    return dynamic_cast<Gtk::FileChooserDialog&>(dialog);
  }

  /// Opens the dialog by its action, has `look` look at it, and cancels it.
  void openAndCancel(const std::function<void(Gtk::FileChooserDialog&)>& look) {
    showWindow();
    answer = [&](Gtk::Dialog& dialog) {
      look(chooser(dialog));
      dialog.response(Gtk::RESPONSE_CANCEL);
    };
    activate("FileOpen");
    EXPECT_EQ(dialogs, Names{"Please choose a HTK file"});
  }

  /// Answers the dialog by choosing this file.
  void answerWith(const std::string& path) {
    answer = [this, path](Gtk::Dialog& dialog) {
      if (GTK_IS_MESSAGE_DIALOG(dialog.gobj()))
        dialog.response(Gtk::RESPONSE_OK);
      else
        choose(chooser(dialog), path, Gtk::RESPONSE_OK);
    };
  }
};

TEST_F(OpenDialog, IsForOneFileToOpen) {
  openAndCancel([this](Gtk::FileChooserDialog& dialog) {
    EXPECT_EQ(dialog.Gtk::FileChooser::get_action(), Gtk::FILE_CHOOSER_ACTION_OPEN);
    EXPECT_FALSE(dialog.get_select_multiple());
    EXPECT_EQ(dialog.get_transient_for(), window.get());
  });
}

TEST_F(OpenDialog, HasCancelAndThenOpen) {
  openAndCancel([](Gtk::FileChooserDialog& dialog) {
    std::map<int, std::pair<std::string, int>> buttons;  // label and response, from left to right
    const std::vector<Gtk::Widget*> widgets = dialog.get_action_area()->get_children();
    for (Gtk::Widget* widget : widgets)
      buttons[widget->get_allocation().get_x()] = {dynamic_cast<Gtk::Button&>(*widget).get_label(),
                                                   dialog.get_response_for_widget(*widget)};
    ASSERT_EQ(buttons.size(), 2u);
    EXPECT_EQ(buttons.begin()->second, std::pair("gtk-cancel"s, +Gtk::RESPONSE_CANCEL));
    EXPECT_EQ(buttons.rbegin()->second, std::pair("gtk-open"s, +Gtk::RESPONSE_OK));
  });
}

TEST_F(OpenDialog, OffersLatticesFirstAndThenAnyFile) {
  openAndCancel([](Gtk::FileChooserDialog& dialog) {
    const auto accepts = [](GtkFileFilter* filter, const char* name) {
      GtkFileFilterInfo info = {};
      info.contains = GTK_FILE_FILTER_DISPLAY_NAME;
      info.display_name = name;
      return static_cast<bool>(gtk_file_filter_filter(filter, &info));
    };
    GSList* const filters = gtk_file_chooser_list_filters(GTK_FILE_CHOOSER(dialog.gobj()));
    ASSERT_EQ(g_slist_length(filters), 2u);
    auto* const lattices = GTK_FILE_FILTER(g_slist_nth_data(filters, 0));
    auto* const anyFiles = GTK_FILE_FILTER(g_slist_nth_data(filters, 1));
    g_slist_free(filters);

    EXPECT_STREQ(gtk_file_filter_get_name(lattices), "HTK files");
    EXPECT_STREQ(gtk_file_filter_get_name(anyFiles), "Any files");
    ASSERT_TRUE(dialog.get_filter());
    EXPECT_EQ(dialog.get_filter()->gobj(), lattices);
    for (const auto& [name, isLattice] :
         {std::pair("a.htk", true), std::pair("a.lat", true), std::pair("a.lat.gz", false),
          std::pair("a.LAT", false), std::pair("a.wav", false), std::pair("lat", false)}) {
      EXPECT_EQ(accepts(lattices, name), isLattice) << name;
      EXPECT_TRUE(accepts(anyFiles, name)) << name;
    }
  });
}

TEST_F(OpenDialog, OpensTheChosenFile) {
  const std::string path = folder.write("a.lat", kTwoWords);
  folder.write("a.htk", kTwoWays);
  TestWindow& w = showWindow();
  answerWith(path);
  activate("FileOpen");
  settle();
  EXPECT_EQ(dialogs, Names{"Please choose a HTK file"});
  EXPECT_EQ(w.get_title(), "Quorbel - " + path);
  EXPECT_EQ(w.m_CurrentDir, folder.path());
  EXPECT_EQ(w.m_SiblingMenu.items().size(), 2u);
}

TEST_F(OpenDialog, ClosesTheLatticeBeforeWhenAnotherIsChosen) {
  TestWindow& w = openLattice(kTwoWays, "first.lat");
  answerWith(folder.write("second.htk", kTwoWords));
  activate("FileOpen");
  EXPECT_EQ(statusOf(w), "graph : " + (folder.path() / "second.htk").string());
  w.on_close();
  EXPECT_EQ(statusOf(w), "No file opened");
}

TEST_F(OpenDialog, SaysWhatIsWrongWithTheChosenFile) {
  const std::string path = folder.write("a.lat", "nonsense\n");
  const TestWindow& w = showWindow();
  answerWith(path);
  activate("FileOpen");
  EXPECT_EQ(dialogs, (Names{"Please choose a HTK file", path + ": syntax error line 1"}));
  EXPECT_FALSE(w.m_FileOpened);
}

TEST_F(OpenDialog, CancellingChangesNothing) {
  for (const int response : {Gtk::RESPONSE_CANCEL, Gtk::RESPONSE_DELETE_EVENT}) {
    TestWindow& w = openLattice(kTwoWords, "a.lat");
    folder.write("a.new.lat", kTwoWords);
    std::filesystem::create_directory("other");
    const std::string other = folder.write("other/b.lat", kTwoWays);
    const std::string title = w.get_title();
    replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
    std::filesystem::remove("dot-ran");
    answer = [&](Gtk::Dialog& dialog) { choose(chooser(dialog), other, response); };
    activate("FileOpen");
    EXPECT_TRUE(w.m_FileOpened);
    EXPECT_EQ(w.get_title(), title);
    EXPECT_EQ(statusOf(w), "graph : " + (folder.path() / "a.lat").string());
    ASSERT_EQ(w.m_SiblingMenu.items().size(), 1u);
    EXPECT_EQ(w.m_SiblingMenu.items()[0].get_label(), "a.lat");
    EXPECT_EQ(w.m_CurrentDir, folder.path());
    EXPECT_FALSE(std::filesystem::exists("dot-ran"));
    std::filesystem::remove("a.new.lat");
  }
}

TEST_F(OpenDialog, IsHiddenWhileTheFileIsOpened) {
  showWindow();
  answerWith(folder.write("a.lat", kTwoWords));
  bool dialogShown = true;
  duringStage("Creating graph...", [&] {
    dialogShown = false;
    for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
      if (dynamic_cast<Gtk::FileChooserDialog*>(toplevel)) dialogShown |= toplevel->get_visible();
  });
  activate("FileOpen");
  EXPECT_FALSE(dialogShown);
  EXPECT_TRUE(window->m_FileOpened);
}

}  // namespace
}  // namespace quorbel
