#include "app/lattices.h"
#include "app/pipeline_watch.h"
#include "app/window_fixture.h"
#include "sound/sound_files.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

/// Plain words, which the viewer does not read as they are.
const char* const kPlain =
    "N=3 L=2\nI=0 t=0\nI=1 t=0.5\nI=2 t=1\n"
    "J=0 S=0 E=1 W=good a=-10\nJ=1 S=1 E=2 W=morning a=-20\n";

/// Lattices in other forms, with a stand-in for the program that imports them.
class Importing : public WindowTest {
 protected:
  Importing() {
    importWith(
        "grep -q 'W=<' \"$in\" && exit\n"
        "grep -q broken \"$in\" && { echo \"quorbel-lattice: $in: line 4: no such node\" >&2; exit "
        "1; }\n"
        "sed \"s/W=\\([a-z]*\\)/W=<w in='\\1'\\/>/\" \"$in\" >\"$out\"\n"
        "echo 2 of 2 links");
    std::filesystem::create_directory("run.1");
    folder.write("run.1/talk.slf", kPlain);
  }

  ~Importing() override { unsetenv("QUORBEL_IMPORTER"); }

  /// Puts the program there: a shell script with these lines after $in and $out are set.
  void importWith(const std::string& lines) {
    const std::string program = folder.write("importer",
                                             "#!/bin/sh\necho \"$*\" >>imports\n"
                                             "for word; do in=$out; out=$word; done\n" +
                                                 lines + "\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    setenv("QUORBEL_IMPORTER", program.c_str(), 1);
  }

  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }

  void chooseSibling(const std::string& name) {
    for (Gtk::MenuItem& item : window->m_SiblingMenu.items())
      if (item.get_label() == name) return item.activate();
    FAIL() << name;
  }

  void expectImported(const std::string& name) {
    TestWindow& w = *window;
    EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf(name) + " (imported)");
    EXPECT_EQ(statusOf(w), "graph : " + pathOf(name));
    EXPECT_EQ(edgeOf(w, 1).label, "morning");
    EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
    EXPECT_EQ(dialogs, Texts());
  }
};

TEST_F(Importing, AtTheStartGoesByTheUsersFile) {
  writeWav(pathOf("run.1/talk.wav"), 8000, 1, testTone(800, 1));
  folder.write("run.1/talk.lat", kTwoWords);
  TestWindow& w = showWindow(pathOf("run.1/talk.slf"));
  expectImported("run.1/talk.slf");
  EXPECT_EQ(linesOf("imports"),
            Texts{"import --tell-links --unless-dialect --links 300 --links-above 400 -- " +
                  pathOf("run.1/talk.slf") + " imported.lat"});
  EXPECT_EQ(w.m_SoundPath, pathOf("run.1/talk.wav"));
  EXPECT_TRUE(w.m_SoundLoaded);
  EXPECT_EQ(w.m_CurrentDir, pathOf("run.1"));
  EXPECT_EQ(w.m_SiblingMenu.items().size(), 2u);
}

TEST_F(Importing, ByTheDialog) {
  showWindow();
  answer = [&](Gtk::Dialog& dialog) {
    choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), pathOf("run.1/talk.slf"),
           Gtk::RESPONSE_OK);
  };
  activate("FileOpen");
  dialogs.clear();
  expectImported("run.1/talk.slf");
}

TEST_F(Importing, BesideALatticeThatIsReadAsItIs) {
  TestWindow& w = openLattice(kTwoWords, "run.1/talk.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("run.1/talk.lat"));
  chooseSibling("talk.slf");
  expectImported("run.1/talk.slf");
  chooseSibling("talk.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("run.1/talk.lat"));
  EXPECT_EQ(edgeOf(w, 1).label, "morning / Morgen");
}

TEST_F(Importing, ChangedFileIsImportedAnew) {
  showWindow(pathOf("run.1/talk.slf"));
  folder.write("run.1/talk.slf",
               std::string(kPlain).replace(std::string(kPlain).find("good"), 4, "fine"));
  chooseSibling("talk.slf");
  EXPECT_EQ(edgeOf(*window, 0).label, "fine");
}

TEST_F(Importing, PipeIsReadOnce) {
  const std::string pipe = pathOf("run.1/pipe");
  ASSERT_EQ(system(("mkfifo " + pipe + "; cat run.1/talk.slf >" + pipe + " &").c_str()), 0);
  importWith("sed \"s/W=\\([a-z]*\\)/W=<w in='\\1'\\/>/\" \"$in\" >\"$out\"; echo 2 of 2 links");
  showWindow(pipe);
  expectImported("run.1/pipe");
  EXPECT_EQ(linesOf("imports").at(0).find("--unless-dialect"), std::string::npos);
}

TEST_F(Importing, FailureIsToldInTheProgramsWordsAndNothingIsOpen) {
  TestWindow& w = openLattice(kTwoWords);
  openLattice("broken\n", "bad.slf");
  EXPECT_EQ(dialogs, Texts{pathOf("bad.slf") + ": line 4: no such node"});
  EXPECT_FALSE(w.m_FileOpened);
  EXPECT_EQ(w.get_title(), "Quorbel");
  EXPECT_EQ(statusOf(w), "No file opened");
}

TEST_F(Importing, CopyOfTheLatticeBeforeIsNotTakenForTheNext) {
  showWindow(pathOf("run.1/talk.slf"));
  importWith("exit 0");
  openLattice(kTwoWays, "ways.lat");
  EXPECT_EQ(window->get_title(), "Quorbel - " + pathOf("ways.lat"));
  EXPECT_EQ(window->m_EdgeLayouts.size(), 8u);
}

TEST_F(Importing, WindowLivesMeanwhileAndClosingEndsIt) {
  const std::vector<std::pair<const char*, bool>> ways = {{"FileClose", false}, {"FileQuit", true}};
  for (const auto& [action, isQuitting] : ways) {
    SCOPED_TRACE(action);
    window.reset();
    std::filesystem::remove("process");
    importWith("echo $$ >new; mv new process; exec sleep 600");
    showWindow();
    TestWindow& w = *window;
    std::string statusMeanwhile;
    GdkCursorType pointerMeanwhile = GDK_X_CURSOR;
    Glib::signal_timeout().connect(
        [&, action = action] {
          if (!std::filesystem::exists("process")) return true;
          statusMeanwhile = statusOf(w);
          pointerMeanwhile = pointerOf(w);
          activate("HelpAbout");
          activate(action);
          return false;
        },
        5);
    w.open_lattice(w.build_sibling_menu(pathOf("run.1/talk.slf")));
    EXPECT_EQ(statusMeanwhile, "Importing...");
    EXPECT_EQ(pointerMeanwhile, GDK_WATCH);
    EXPECT_EQ(w.isQuitting(), isQuitting);
    EXPECT_FALSE(w.m_FileOpened);
    EXPECT_EQ(statusOf(w), "No file opened");
    EXPECT_EQ(pointerOf(w), GDK_LEFT_PTR);
    const std::string stat = "/proc/" + linesOf("process").at(0) + "/stat";
    EXPECT_TRUE(waitFor([&] {
      return !std::filesystem::exists(stat) || textOf(stat).find(") Z") != std::string::npos;
    }));
    EXPECT_TRUE(waitFor([&, isQuitting = isQuitting] { return isQuitting || !dialogs.empty(); }));
    EXPECT_EQ(dialogs, Texts(isQuitting ? 0 : 1, "Quorbel v1.2 (10/2008)"));
    settle();
    dialogs.clear();
  }
}

TEST_F(Importing, DialogOffersAllLattices) {
  showWindow();
  Texts names;
  std::string inForce;
  answer = [&](Gtk::Dialog& dialog) {
    auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
    for (const Gtk::FileFilter* filter : chooser.list_filters())
      names.push_back(filter->get_name());
    inForce = chooser.get_filter()->get_name();
    GtkFileFilterInfo info = {};
    info.contains = GTK_FILE_FILTER_DISPLAY_NAME;
    for (const char* name :
         {"a.htk", "a.lat", "a.slf", "a.lat.gz", "a.slf.gz", "a.htk.gz", "a.fst", "a.kaldi.txt"}) {
      info.display_name = name;
      EXPECT_TRUE(gtk_file_filter_filter(chooser.get_filter()->gobj(), &info)) << name;
    }
    for (const char* name : {"a.txt", "a.gz", "a.wav"}) {
      info.display_name = name;
      EXPECT_FALSE(gtk_file_filter_filter(chooser.get_filter()->gobj(), &info)) << name;
    }
    dialog.response(Gtk::RESPONSE_CANCEL);
  };
  activate("FileOpen");
  EXPECT_EQ(names, (Texts{"HTK files", "All lattices", "Any files"}));
  EXPECT_EQ(inForce, "All lattices");
}

}  // namespace
}  // namespace quorbel
