// Loading sounds: what a matching file may hold, and the dialog that opens any other.

#include <sys/stat.h>

#include "app/chooser_parts.h"
#include "app/library_faults.h"
#include "app/pipeline_watch.h"
#include "app/sound_window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kOpenTitle = "Please choose a sound file";

class SoundLoading : public SoundWindowTest {
 protected:
  std::string matchingPath() const { return pathIn(folder, "test.wav"); }

  /// The sound beside the lattice is refused, and all else of the lattice works.
  void expectRefused() {
    TestWindow& w = openLattice(kTwoWays);
    EXPECT_EQ(dialogs, Texts{"Unable to load " + matchingPath()});
    EXPECT_FALSE(w.m_SoundLoaded);
    EXPECT_TRUE(w.m_FileOpened);
    selectEdge(3);
    activate("DisplayShortestPath");
    EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
    activate("SoundMenuPlay");
    EXPECT_TRUE(waitForEndOfSound());
    EXPECT_EQ(dialogs.size(), 1u);
  }
};

TEST_F(SoundLoading, RefusesAFolder) {
  std::filesystem::create_directory("test.wav");
  expectRefused();
}

TEST_F(SoundLoading, RefusesAPipeWithoutWaitingForIt) {
  ASSERT_EQ(mkfifo("test.wav", 0600), 0);
  expectRefused();
}

TEST_F(SoundLoading, RefusesACutFlacFile) {
  const std::string whole = pathIn(folder, "whole");
  writeSound(whole, SF_FORMAT_FLAC | SF_FORMAT_PCM_16, kSampleRate, 1, testTone(40000, 1));
  copyCut(whole, matchingPath(), 50);
  expectRefused();
}

TEST_F(SoundLoading, RefusesAnOggFileCutInItsHeader) {
  const std::string whole = pathIn(folder, "whole");
  writeSound(whole, SF_FORMAT_OGG | SF_FORMAT_VORBIS, kSampleRate, 1, testTone(40000, 1));
  copyCut(whole, matchingPath(), 1);
  expectRefused();
}

TEST_F(SoundLoading, TakesACutOggFileIfTheLibraryKnowsItsLength) {
  const std::string whole = pathIn(folder, "whole");
  writeSound(whole, SF_FORMAT_OGG | SF_FORMAT_VORBIS, kSampleRate, 1, testTone(40000, 1));
  copyCut(whole, matchingPath(), 60);
  const std::optional<Samples> readable = readWhole(matchingPath());
  if (!readable) {
    expectRefused();
    return;
  }
  const TestWindow& w = openLattice(kTwoWays);
  EXPECT_EQ(dialogs, Texts());
  ASSERT_TRUE(w.m_SoundLoaded);
  EXPECT_EQ(Samples(w.m_Audio.samples(), w.m_Audio.samples() + w.m_Audio.frames()), *readable);
}

TEST_F(SoundLoading, RefusesALengthThatMemoryCannotHold) {
  writeSound(matchingPath(), SF_FORMAT_FLAC | SF_FORMAT_PCM_16, kSampleRate, 1, testTone(4000, 1));
  promiseFlacFrames(matchingPath(), (std::uint64_t{1} << 36) - 1);
  expectRefused();
}

TEST_F(SoundLoading, TakesWhatIsThereOfACutWavFile) {
  const std::string whole = writeSoundFile("whole.wav", testTone(8000, 1));
  copyCut(whole, matchingPath(), 50);
  TestWindow& w = openLattice(kTwoWays);
  EXPECT_EQ(dialogs, Texts());
  ASSERT_TRUE(w.m_SoundLoaded);
  EXPECT_NEAR(w.m_Audio.frames(), 4000, 50);
  activate("SoundMenuPlay");
  EXPECT_EQ(w.m_Audio.segmentEnd(), w.m_Audio.frames());
  EXPECT_TRUE(waitForEndOfSound());
}

TEST_F(SoundLoading, TakesAFileForWhatItsHeaderSays) {
  const Samples samples = testTone(5000, 2);
  writeSound(matchingPath(), SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 48000, 2, samples);
  const TestWindow& w = openLattice(kTwoWays);
  EXPECT_EQ(dialogs, Texts());
  ASSERT_TRUE(w.m_SoundLoaded);
  EXPECT_EQ(w.m_Audio.channels(), 2);
  EXPECT_EQ(w.m_Audio.sampleRate(), 48000);
  EXPECT_EQ(Samples(w.m_Audio.samples(), w.m_Audio.samples() + samples.size()), samples);
}

class SoundDialog : public SoundWindowTest {
 protected:
  /// Opens the dialog by its action, has `look` look at it, and cancels it.
  void openAndCancel(const std::function<void(Gtk::FileChooserDialog&)>& look) {
    showWindow();
    answer = [&](Gtk::Dialog& dialog) {
      look(dynamic_cast<Gtk::FileChooserDialog&>(dialog));
      dialog.response(Gtk::RESPONSE_CANCEL);
    };
    activate("FileOpenSound");
    EXPECT_EQ(dialogs, Texts{kOpenTitle});
  }
};

TEST_F(SoundDialog, IsForOneFileToOpen) {
  openAndCancel([this](Gtk::FileChooserDialog& dialog) {
    EXPECT_EQ(dialog.Gtk::FileChooser::get_action(), Gtk::FILE_CHOOSER_ACTION_OPEN);
    EXPECT_FALSE(dialog.get_select_multiple());
    EXPECT_EQ(dialog.get_transient_for(), window.get());
  });
}

TEST_F(SoundDialog, HasCancelAndThenOpen) {
  openAndCancel([](Gtk::FileChooserDialog& dialog) {
    EXPECT_EQ(buttonsOf(dialog), (std::vector<DialogButton>{{"gtk-cancel", Gtk::RESPONSE_CANCEL},
                                                            {"gtk-open", Gtk::RESPONSE_ACCEPT}}));
  });
}

TEST_F(SoundDialog, OffersSoundsFirstAndThenAnyFile) {
  openAndCancel([](Gtk::FileChooserDialog& dialog) {
    const std::vector<GtkFileFilter*> filters = filtersOf(dialog);
    ASSERT_EQ(filters.size(), 2u);
    EXPECT_STREQ(gtk_file_filter_get_name(filters[0]), "Sound files");
    EXPECT_STREQ(gtk_file_filter_get_name(filters[1]), "Any files");
    ASSERT_TRUE(dialog.get_filter());
    EXPECT_EQ(dialog.get_filter()->gobj(), filters[0]);
    for (const auto& [name, isSound] :
         {std::pair("a.wav", true), std::pair("a.raw", true), std::pair("a.WAV", false),
          std::pair("a.wav.gz", false), std::pair("a.lat", false), std::pair("wav", false)}) {
      EXPECT_EQ(shows(filters[0], name), isSound) << name;
      EXPECT_TRUE(shows(filters[1], name)) << name;
    }
  });
}

TEST_F(SoundDialog, LoadsAndShowsTheChosenFile) {
  TestWindow& w = openWithSound(Samples(40000, 0));
  const Samples samples = quietSound(30000, 9000, 18000);
  const std::string path = writeSoundFile("chosen.wav", samples);
  strip();
  answerWithSound(path);
  activate("FileOpenSound");
  EXPECT_EQ(dialogs, Texts{kOpenTitle});
  EXPECT_EQ(w.m_SoundPath, path);
  EXPECT_TRUE(w.m_SoundLoaded);
  EXPECT_EQ(w.m_Audio.frames(), 30000);
  EXPECT_TRUE(hasColour(strip(), 100, stripHeight() / 2 + 5, 0x0000FF));
  EXPECT_TRUE(w.m_FileOpened);
}

TEST_F(SoundDialog, LoadsWithoutALatticeToo) {
  TestWindow& w = showWindow();
  answerWithSound(writeSoundFile("chosen.wav", quietSound(30000, 9000, 18000)));
  activate("FileOpenSound");
  EXPECT_TRUE(w.m_SoundLoaded);
  EXPECT_TRUE(hasColour(strip(), 100, stripHeight() / 2 + 5, 0x0000FF));
  activate("SoundMenuPlay");
  EXPECT_TRUE(w.m_Audio.isPlaying());
  activate("SoundMenuStop");
  EXPECT_TRUE(waitForEndOfSound());
}

TEST_F(SoundDialog, SaysWhichFileItCannotLoad) {
  TestWindow& w = openWithSound(quietSound(30000, 9000, 18000));
  strip();
  const std::string path = folder.write("headerless.raw", std::string(5000, '\x11'));
  answerWithSound(path);
  activate("FileOpenSound");
  EXPECT_EQ(dialogs, (Texts{kOpenTitle, "Unable to load " + path}));
  EXPECT_EQ(w.m_SoundPath, path);
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_TRUE(hasColour(strip(), 100, stripHeight() / 2 + 5, 0xFFFFFF));
  EXPECT_TRUE(w.m_FileOpened);
}

TEST_F(SoundDialog, IsHiddenWhenItsErrorIsShown) {
  showWindow();
  const std::string path = folder.write("no-sound.wav", "no sound");
  bool dialogShown = true;
  answer = [&](Gtk::Dialog& dialog) {
    if (auto* const chooser = dynamic_cast<Gtk::FileChooserDialog*>(&dialog))
      return choose(*chooser, path, Gtk::RESPONSE_ACCEPT);
    dialogShown = false;
    for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
      if (dynamic_cast<Gtk::FileChooserDialog*>(toplevel)) dialogShown |= toplevel->get_visible();
    dialog.response(Gtk::RESPONSE_OK);
  };
  activate("FileOpenSound");
  EXPECT_EQ(dialogs, (Texts{kOpenTitle, "Unable to load " + path}));
  EXPECT_FALSE(dialogShown);
}

TEST_F(SoundDialog, CancellingChangesNothing) {
  for (const int response : {Gtk::RESPONSE_CANCEL, Gtk::RESPONSE_DELETE_EVENT}) {
    TestWindow& w = openWithSound(testTone(7000, 1));
    const std::string other = writeSoundFile("other.wav", testTone(500, 1));
    answer = [&](Gtk::Dialog& dialog) {
      choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), other, response);
    };
    activate("FileOpenSound");
    EXPECT_EQ(w.m_SoundPath, pathIn(folder, "test.wav"));
    EXPECT_TRUE(w.m_SoundLoaded);
    EXPECT_EQ(w.m_Audio.frames(), 7000);
  }
  EXPECT_EQ(dialogs, (Texts{kOpenTitle, kOpenTitle}));
}

TEST_F(SoundDialog, LoadsEveryKindOfFile) {
  struct Kind {
    const char* name;
    int format;
    int sampleRate;
    int channels;
  };
  const Kind kinds[] = {
      {"a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 1},
      {"b.wav", SF_FORMAT_WAV | SF_FORMAT_ULAW, 8000, 1},
      {"c.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 44100, 2},
      {"d.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 11025, 2},
      {"e.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16000, 1},
      {"f.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 48000, 2},
      {"g.au", SF_FORMAT_AU | SF_FORMAT_PCM_16, 22050, 1},
      {"h.sph", SF_FORMAT_NIST | SF_FORMAT_PCM_16, 16000, 1},
  };
  TestWindow& w = openLattice(kTwoWays);
  for (const Kind& kind : kinds) {
    SCOPED_TRACE(kind.name);
    const std::string path = pathIn(folder, kind.name);
    writeSound(path, kind.format, kind.sampleRate, kind.channels, testTone(2000, kind.channels));
    answerWithSound(path);
    activate("FileOpenSound");
    EXPECT_TRUE(w.m_SoundLoaded);
    EXPECT_EQ(w.m_Audio.frames(), 2000);
    EXPECT_EQ(w.m_Audio.channels(), kind.channels);
    EXPECT_EQ(w.m_Audio.sampleRate(), kind.sampleRate);
    strip();
    EXPECT_EQ(w.m_Waveform.count, 2000 / kind.channels);
  }
}

TEST_F(SoundDialog, ChoiceIsLookedForAgainByALatticeWithoutADot) {
  TestWindow& w = openWithSound(testTone(7000, 1));
  const std::string chosen = writeSoundFile("chosen.wav", testTone(500, 1));
  answerWithSound(chosen);
  activate("FileOpenSound");
  openLattice(kTwoWords, "second");
  EXPECT_EQ(w.m_SoundPath, chosen);
  EXPECT_EQ(w.m_Audio.frames(), 500);
}

TEST_F(SoundDialog, WaitsUntilTheLatticeIsDrawn) {
  writeSoundFile("test.wav", testTone(7000, 1));
  TestWindow& w = openLattice(kTwoWays);
  bool wasRendering = true;
  const std::string chosen = writeSoundFile("chosen.wav", testTone(500, 1));
  answer = [&](Gtk::Dialog& dialog) {
    wasRendering = w.m_Rendering;
    choose(dynamic_cast<Gtk::FileChooserDialog&>(dialog), chosen, Gtk::RESPONSE_ACCEPT);
  };
  duringStage("Loading graph elements...", [this] { activate("FileOpenSound"); });
  openLattice(kTwoWays);
  EXPECT_TRUE(waitFor([&] { return w.m_SoundPath == chosen; }));
  EXPECT_FALSE(wasRendering);
  EXPECT_EQ(w.m_Audio.frames(), 500);
}

TEST_F(SoundDialog, ItsSoundLeavesTheStripWhenALatticeComesWithout) {
  TestWindow& w = showWindow();
  answerWithSound(writeSoundFile("chosen.wav", quietSound(30000, 9000, 18000)));
  activate("FileOpenSound");
  strip();
  const SearchPath withoutDot("/nowhere");  // the error box lets the strip be painted too early
  openLattice(kTwoWays, "silent.lat");
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_TRUE(hasColour(strip(), 100, stripHeight() / 2 + 5, 0xFFFFFF));
}

TEST_F(SoundWindowTest, WithoutADeviceEverythingButPlayingWorks) {
  libraryFaults().soundDevice = true;
  PrintedText printed;
  TestWindow& w = openWithSound(quietSound(30000, 9000, 18000));
  EXPECT_EQ(printed.take(), "openAL intialization failed. You will not be able to play sound\n");
  libraryFaults().soundDevice = false;
  EXPECT_TRUE(w.m_SoundLoaded);
  EXPECT_TRUE(hasColour(strip(), 100, stripHeight() / 2 + 5, 0x0000FF));
  dragOnStrip(0, stripWidth() - 1);
  EXPECT_EQ(w.m_SelectedEdges.size(), 2u);
  PrintedText printedLater;
  activate("SoundMenuPlay");
  EXPECT_TRUE(waitForEndOfSound());
  activate("SoundMenuStop");
  EXPECT_EQ(printedLater.take(), "");
  EXPECT_EQ(dialogs, Texts());
}

}  // namespace
}  // namespace quorbel
