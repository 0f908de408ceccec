// The export command: its dialog, what it runs and what it leaves alone.

#include <gdk/gdkkeysyms.h>

#include <map>
#include <tuple>

#include "app/chooser_parts.h"
#include "app/export_fixture.h"
#include "layout/file_names.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

class Export : public ExportTest {
 protected:
  /// What tells a file from one that was written anew under its name.
  using Stamp = std::tuple<std::filesystem::file_time_type, std::uintmax_t, std::string>;

  static Stamp stampOf(const std::filesystem::path& path) {
    return {std::filesystem::last_write_time(path), std::filesystem::file_size(path), textOf(path)};
  }

  /// The stamp of every file in the folder.
  std::map<std::string, Stamp> files() const {
    std::map<std::string, Stamp> stamps;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
      if (entry.is_regular_file()) stamps[entry.path().filename().string()] = stampOf(entry.path());
    return stamps;
  }

  void typeText(const std::string& text) {
    for (const char c : text) {
      const auto key = static_cast<unsigned>(c);
      pressKey(key);
      releaseKey(key);
    }
  }
};

TEST_F(Export, WithoutALatticeSaysSoAndAsksNothing) {
  showWindow();
  watchDot();
  for (const ExportFormat& format : kExportFormats) {
    activate(format.action);
    EXPECT_EQ(dialogs, Texts{"No graph opened"});
    dialogs.clear();
  }
  EXPECT_FALSE(std::filesystem::exists(kDescriptionFile));
  EXPECT_TRUE(takeDotRuns().empty());
}

TEST_F(Export, AfterClosingSaysSoToo) {
  openLattice(kTwoWays);
  activate("FileClose");
  activate("FileExportPNG");
  EXPECT_EQ(dialogs, Texts{"No graph opened"});
}

TEST_F(Export, AsksForOneNameToSaveUnder) {
  openLattice(kTwoWays);
  for (const ExportFormat& format : kExportFormats) {
    answer = [this](Gtk::Dialog& dialog) {
      auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
      EXPECT_EQ(chooser.Gtk::FileChooser::get_action(), Gtk::FILE_CHOOSER_ACTION_SAVE);
      EXPECT_FALSE(chooser.get_select_multiple());
      EXPECT_FALSE(chooser.get_do_overwrite_confirmation());
      EXPECT_EQ(chooser.get_transient_for(), window.get());
      EXPECT_TRUE(chooser.get_modal());
      EXPECT_EQ(buttonsOf(dialog), (std::vector<DialogButton>{{"gtk-cancel", Gtk::RESPONSE_CANCEL},
                                                              {"gtk-save", Gtk::RESPONSE_OK}}));
      dialog.response(Gtk::RESPONSE_CANCEL);
    };
    activate(format.action);
    EXPECT_EQ(dialogs, Texts{kSaveTitle});
    dialogs.clear();
  }
}

TEST_F(Export, CancellingLeavesEveryFileAndTheFormat) {
  TestWindow& w = openLattice(kTwoWays);
  folder.write("out.svg", "an older drawing");
  w.m_Graph.outputFormat = "as before";
  const auto before = files();
  for (const int response : {Gtk::RESPONSE_CANCEL, Gtk::RESPONSE_DELETE_EVENT, Gtk::RESPONSE_NO}) {
    answer = [&](Gtk::Dialog& dialog) {
      choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), pathOf("out.svg"), response);
    };
    activate("FileExportSVG");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(w.m_Graph.outputFormat, "as before");
  }
  EXPECT_EQ(dialogs, Texts(3, kSaveTitle));
}

TEST_F(Export, AsksDotForTheFormatAndDrawsTheLayoutAnew) {
  openLattice(kTwoWays);
  watchDot();
  for (const ExportFormat& format : kExportFormats) {
    SCOPED_TRACE(format.action);
    const std::string name = std::string("drawing-") + format.format;
    const std::string finalName = name == std::string("drawing-ps2") ? name + ".ps" : name;
    exportAs(format.action, name);
    EXPECT_EQ(takeDotRuns(), runsFor(format.format, pathOf(finalName)));
    EXPECT_TRUE(std::filesystem::exists(finalName));
  }
  EXPECT_EQ(dialogs, Texts(5, kSaveTitle));
}

TEST_F(Export, AddsTheExtensionWhereTheLastCharactersDiffer) {
  openLattice(kTwoWays);
  watchDot();
  struct Case {
    const char* action;
    const char* name;
    const char* finalName;
  };
  for (const Case& c :
       {Case{"FileExportPNG", "plotpng", "plotpng"},
        Case{"FileExportPNG", "plot.PNG", "plot.PNG.png"},
        Case{"FileExportPNG", "plot.png", "plot.png"}, Case{"FileExportPNG", "plot", "plot.png"},
        Case{"FileExportPNG", "plot.svg", "plot.svg.png"},
        Case{"FileExportPostscript2", "out", "out.ps"},
        Case{"FileExportPostscript2", "out.ps2", "out.ps2.ps"},
        Case{"FileExportPostscript2", "maps", "maps"}}) {
    SCOPED_TRACE(c.name);
    exportAs(c.action, c.name);
    const auto runs = takeDotRuns();
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0][2], pathOf(c.finalName));
    EXPECT_TRUE(std::filesystem::remove(c.finalName));  // else the dialog completes names
  }
}

TEST_F(Export, WritesTheDescriptionAndTheLayoutAnew) {
  TestWindow& w = openLattice(kTwoWays);
  activate("DisplayShortestPath");
  const std::string description = textOf(kDescriptionFile);
  const std::string layout = textOf(kLayoutFile);
  folder.write(kDescriptionFile, "stale");
  folder.write(kLayoutFile, "stale");
  w.m_Graph.bestPathText.clear();
  w.m_Graph.bestPathScore = 0.0;
  exportAs("FileExportSVG", "out.svg");
  EXPECT_EQ(textOf(kDescriptionFile), description);
  EXPECT_EQ(textOf(kLayoutFile), layout);
  EXPECT_EQ(w.m_Graph.bestPathText, "a / A c / C ");
  EXPECT_EQ(w.m_Graph.bestPathScore, 30.25);
}

TEST_F(Export, LeavesThePictureOnScreen) {
  TestWindow& w = openLattice(kTwoWays);
  const auto image = w.m_refGraphImage;
  const auto shown = w.m_refShownImage;
  const Stamp stamp = stampOf(kImageFile);
  for (const ExportFormat& format : kExportFormats) {
    exportAs(format.action, "out");
    EXPECT_EQ(stampOf(kImageFile), stamp);
  }
  EXPECT_EQ(w.m_refGraphImage, image);
  EXPECT_EQ(w.m_refShownImage, shown);
  EXPECT_EQ(w.m_EdgeLayouts.size(), 8u);
  EXPECT_EQ(statusOf(w), "graph : " + pathOf("test.lat"));
}

TEST_F(Export, NextRenderingIsInPngAgain) {
  TestWindow& w = openLattice(kTwoWays);
  watchDot();
  for (const ExportFormat& format : kExportFormats) {
    exportAs(format.action, "out");
    EXPECT_EQ(w.m_Graph.outputFormat, "png");
    takeDotRuns();
    activate("DisplayShortestPath");
    EXPECT_EQ(takeDotRuns(), runsFor("png", kImageFile));
  }
}

TEST_F(Export, DialogStaysOnScreenWhileDotRuns) {
  openLattice(kTwoWays);
  watchDot("xwininfo -name '" + std::string(kSaveTitle) +
           "' | grep 'Map State' >>dialog-state\nexec \"$REAL_DOT\" \"$@\"");
  exportAs("FileExportDIA", "out");
  EXPECT_EQ(linesOf("dialog-state"), (Texts{"  Map State: IsViewable", "  Map State: IsViewable"}));
  EXPECT_THROW(saveDialog(), std::runtime_error) << "still on screen";
}

TEST_F(Export, AsksBeforeItReplacesTheFileThatItWillWrite) {
  openLattice(kTwoWays);
  folder.write("out", "of no interest");
  exportAs("FileExportSVG", "out");
  EXPECT_EQ(dialogs, Texts{kSaveTitle});
  EXPECT_EQ(textOf("out"), "of no interest");

  folder.write("out.svg", "an older drawing");
  std::filesystem::remove("out");
  dialogs.clear();
  exportAs("FileExportSVG", "out");
  EXPECT_EQ(dialogs, (Texts{kSaveTitle, question("out.svg")}));
  EXPECT_NE(textOf("out.svg").find("<svg"), std::string::npos);
}

TEST_F(Export, QuestionBelongsToTheSaveDialog) {
  openLattice(kTwoWays);
  folder.write("50 <b>% & more.svg", "an older drawing");
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    if (!GTK_IS_MESSAGE_DIALOG(dialog.gobj())) return saveUnderName(dialog);
    EXPECT_EQ(dialog.get_transient_for(), &saveDialog());
    EXPECT_TRUE(dialog.get_modal());
    EXPECT_EQ(buttonsOf(dialog), (std::vector<DialogButton>{{"gtk-cancel", Gtk::RESPONSE_CANCEL},
                                                            {"Replace", Gtk::RESPONSE_OK}}));
    dialog.response(Gtk::RESPONSE_CANCEL);
    Glib::signal_idle().connect_once([] { saveDialog().response(Gtk::RESPONSE_CANCEL); });
  };
  exportAs("FileExportSVG", "50 <b>% & more");
  EXPECT_EQ(dialogs, (Texts{kSaveTitle, question("50 <b>% & more.svg")}));
  EXPECT_EQ(textOf("50 <b>% & more.svg"), "an older drawing");
}

TEST_F(Export, RefusingToReplaceLeadsBackToTheDialog) {
  TestWindow& w = openLattice(kTwoWays);
  w.m_Graph.outputFormat = "as before";
  for (const char* name : {"first.svg", "second.svg"}) folder.write(name, "an older drawing");
  watchDot();
  std::vector<std::string> names = {"second", "third"};
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    if (!GTK_IS_MESSAGE_DIALOG(dialog.gobj())) return saveUnderName(dialog);
    EXPECT_EQ(w.m_Graph.outputFormat, "svg");
    dialog.response(Gtk::RESPONSE_CANCEL);
    const std::string next = names.front();
    names.erase(names.begin());
    Glib::signal_idle().connect_once([this, next] { save(saveDialog(), pathOf(next)); });
  };
  exportAs("FileExportSVG", "first");
  EXPECT_EQ(dialogs, (Texts{kSaveTitle, question("first.svg"), question("second.svg")}));
  EXPECT_EQ(takeDotRuns(), runsFor("svg", pathOf("third.svg")));
  EXPECT_EQ(textOf("first.svg"), "an older drawing");
  EXPECT_EQ(textOf("second.svg"), "an older drawing");
}

TEST_F(Export, SaysWhenNoFileIsWrittenAndWhy) {
  openLattice(kTwoWays);
  watchDot("exit 1");
  for (const ExportFormat& format : kExportFormats) {
    dialogs.clear();
    exportAs(format.action, "out");
    EXPECT_EQ(takeDotRuns().size(), 2u);
    EXPECT_EQ(dialogs, (Texts{kSaveTitle, notWritten(std::string("out.") + format.extension,
                                                     "dot failed with status 1")}));
  }
  EXPECT_FALSE(std::filesystem::exists("out.png"));
  EXPECT_EQ(window->m_Graph.outputFormat, "png");
}

TEST_F(Export, SaysOnTheWindowWhenDotIsMissing) {
  openLattice(kTwoWays);
  const std::string path = std::getenv("PATH");
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    if (!GTK_IS_MESSAGE_DIALOG(dialog.gobj())) {
      setenv("PATH", folder.path().c_str(), 1);
      return saveUnderName(dialog);
    }
    EXPECT_EQ(dialog.get_transient_for(), window.get());
    EXPECT_THROW(saveDialog(), std::runtime_error) << "still on screen";
    dialog.response(Gtk::RESPONSE_OK);
  };
  for (const ExportFormat& format : kExportFormats) {
    dialogs.clear();
    exportAs(format.action, "out");
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(dialogs,
              (Texts{kSaveTitle, notWritten(std::string("out.") + format.extension,
                                            "the program \"dot\" was not found; it belongs to "
                                            "Graphviz, install the package \"graphviz\"")}));
  }
}

TEST_F(Export, SaysWhichSignalEndedDot) {
  openLattice(kTwoWays);
  watchDot("kill -TERM $$");
  exportAs("FileExportSVG", "out");
  EXPECT_EQ(dialogs,
            (Texts{kSaveTitle, notWritten("out.svg", "dot was ended by a signal (Terminated)")}));
}

TEST_F(Export, SaysWhenTheFileCannotBeWritten) {
  openLattice(kTwoWays);
  const auto saveUnderName = answer;
  std::string obstacle;
  answer = [&](Gtk::Dialog& dialog) {
    // after the answer: the dialog would complete the name to one that is there before
    if (dynamic_cast<Gtk::FileChooserDialog*>(&dialog))
      dialog.signal_response().connect([&](int) { std::filesystem::create_directory(obstacle); });
    saveUnderName(dialog);
  };
  obstacle = "drawing.png";
  exportAs("FileExportPNG", "drawing");
  obstacle = "diagram.dia";
  exportAs("FileExportDIA", "diagram");
  EXPECT_EQ(dialogs, (Texts{kSaveTitle, question("drawing.png"),
                            notWritten("drawing.png", "Is a directory"), kSaveTitle,
                            question("diagram.dia"), notWritten("diagram.dia", "Is a directory")}));
  EXPECT_TRUE(std::filesystem::is_directory("drawing.png"));
  EXPECT_TRUE(std::filesystem::is_directory("diagram.dia"));
  EXPECT_EQ(window->m_Graph.outputFormat, "png");
}

TEST_F(Export, NameShorterThanTheExtensionGoesToTheLastResort) {
  TestWindow& w = openLattice(kTwoWays);
  watchDot();
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    if (GTK_IS_MESSAGE_DIALOG(dialog.gobj())) return dialog.response(Gtk::RESPONSE_OK);
    save(dynamic_cast<Gtk::FileChooserDialog&>(dialog), "/a");
  };
  PrintedText printed;
  activate("FileExportPNG");
  ASSERT_EQ(dialogs.size(), 2u);
  EXPECT_EQ(dialogs[1].rfind("basic_string::substr", 0), 0u) << dialogs[1];
  EXPECT_EQ(printed.take(), dialogs[1] + "\n");
  EXPECT_TRUE(takeDotRuns().empty());
  EXPECT_EQ(w.m_Graph.outputFormat, "png");

  answer = saveUnderName;
  exportAs("FileExportPNG", "longer");
  EXPECT_TRUE(std::filesystem::exists("longer.png"));
}

TEST_F(Export, GivingUpAfterRefusingToReplaceLeavesTheFormat) {
  TestWindow& w = openLattice(kTwoWays);
  w.m_Graph.outputFormat = "as before";
  folder.write("out.svg", "an older drawing");
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    if (!GTK_IS_MESSAGE_DIALOG(dialog.gobj())) return saveUnderName(dialog);
    dialog.response(Gtk::RESPONSE_CANCEL);
    Glib::signal_idle().connect_once([] { saveDialog().response(Gtk::RESPONSE_CANCEL); });
  };
  exportAs("FileExportSVG", "out");
  EXPECT_EQ(dialogs, (Texts{kSaveTitle, question("out.svg")}));
  EXPECT_EQ(w.m_Graph.outputFormat, "as before");
}

TEST_F(Export, FormatIsSetBeforeTheNameIsLookedAtSoTheNextDrawingHasIt) {
  TestWindow& w = openLattice(kTwoWays);
  watchDot();
  answer = [&](Gtk::Dialog& dialog) {
    if (GTK_IS_MESSAGE_DIALOG(dialog.gobj())) return dialog.response(Gtk::RESPONSE_OK);
    save(dynamic_cast<Gtk::FileChooserDialog&>(dialog), "/a");
  };
  for (const auto& [action, format] :
       {std::pair("FileExportSVG", "svg"), std::pair("FileExportDIA", "dia")}) {
    activate(action);
    EXPECT_EQ(dialogs.back().rfind("basic_string::substr", 0), 0u) << dialogs.back();
    EXPECT_TRUE(takeDotRuns().empty());
    EXPECT_EQ(w.m_Graph.outputFormat, format);
    activate("DisplayShortestPath");
    EXPECT_EQ(takeDotRuns(), runsFor(format, kImageFile));
    EXPECT_EQ(w.m_Graph.outputFormat, "png");
    activate("DisplayShortestPath");
    EXPECT_EQ(takeDotRuns(), runsFor("png", kImageFile));
  }
}

TEST_F(Export, TypedNameAndReturnKeySave) {
  openLattice(kTwoWays);
  watchDot();
  answer = [&](Gtk::Dialog& dialog) {
    auto& chooser = dynamic_cast<Gtk::FileChooserDialog&>(dialog);
    chooser.set_current_folder(folder.path().string());
    EXPECT_TRUE(waitFor([&] { return chooser.get_current_folder() == folder.path().string(); }));
    Glib::signal_idle().connect_once([&] {
      settle();
      typeText("typed");
      EXPECT_TRUE(waitFor([&] { return chooser.get_filename() == pathOf("typed"); }));
      pressKey(GDK_KEY_Return);
      releaseKey(GDK_KEY_Return);
    });
  };
  activate("FileExportPostscript");
  EXPECT_EQ(takeDotRuns(), runsFor("ps", pathOf("typed.ps")));
}

TEST_F(Export, WaitsUntilTheLatticeIsDrawn) {
  TestWindow& w = openLattice(kTwoWays);
  bool wasRendering = true;
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    wasRendering = w.m_Rendering;
    saveUnderName(dialog);
  };
  duringStage("Loading graph elements...", [this] { exportAs("FileExportSVG", "out"); });
  activate("DisplayShortestPath");
  EXPECT_TRUE(waitFor([] { return std::filesystem::exists("out.svg"); }));
  EXPECT_FALSE(wasRendering);
  EXPECT_EQ(dialogs, Texts{kSaveTitle});
}

TEST_F(Export, WritesNothingOfALatticeThatWasClosedUnderItsDialog) {
  openLattice(kTwoWays);
  watchDot();
  const auto saveUnderName = answer;
  answer = [&](Gtk::Dialog& dialog) {
    window->on_close();
    saveUnderName(dialog);
  };
  exportAs("FileExportSVG", "out");
  EXPECT_TRUE(takeDotRuns().empty());
}

}  // namespace
}  // namespace quorbel
