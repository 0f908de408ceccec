#include "app/lattices.h"
#include "app/window_fixture.h"
#include "sound/sound_files.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

/// The sound that belongs to a lattice, looked for when the lattice is opened.
class LatticeSound : public WindowTest {
 protected:
  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }

  void writeTone(const std::string& name, int frames = 800) const {
    writeWav(pathOf(name), 8000, 1, testTone(frames, 1));
  }
};

TEST_F(LatticeSound, StandsBesideTheLattice) {
  writeTone("utt.wav", 700);
  const TestWindow& w = openLattice(kTwoWords, "utt.lat");
  EXPECT_EQ(w.m_SoundPath, pathOf("utt.wav"));
  EXPECT_TRUE(w.m_SoundLoaded);
  EXPECT_EQ(w.m_Audio.frames(), 700);
}

TEST_F(LatticeSound, IsCutAtTheFirstDotOfTheName) {
  writeTone("utt.wav");
  const TestWindow& w = openLattice(kTwoWords, "utt.best.lat");
  EXPECT_EQ(w.m_SoundPath, pathOf("utt.wav"));
  EXPECT_TRUE(w.m_SoundLoaded);
}

TEST_F(LatticeSound, IsCutAtADotOfTheFolder) {
  std::filesystem::create_directory("run.1");
  writeTone("run.wav");
  const TestWindow& w = openLattice(kTwoWords, "run.1/utt.lat");
  EXPECT_EQ(w.m_SoundPath, pathOf("run.wav"));
  EXPECT_TRUE(w.m_SoundLoaded);
}

TEST_F(LatticeSound, OfARelativePathIsCutAtItsBeginning) {
  folder.write("utt.lat", kTwoWords);
  writeTone("utt.wav");
  const TestWindow& w = showWindow("utt.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - ./utt.lat");
  EXPECT_EQ(w.m_SoundPath, ".wav");
  EXPECT_FALSE(w.m_SoundLoaded);
}

TEST_F(LatticeSound, StaysThatOfTheLatticeBeforeWhenThereIsNoDot) {
  writeTone("first.wav");
  TestWindow& w = openLattice(kTwoWords, "first.lat");
  openLattice(kTwoWords, "second");
  EXPECT_EQ(w.m_SoundPath, pathOf("first.wav"));
  EXPECT_TRUE(w.m_SoundLoaded);

  std::filesystem::remove("first.wav");
  openLattice(kTwoWords, "third");
  EXPECT_EQ(w.m_SoundPath, pathOf("first.wav"));
  EXPECT_FALSE(w.m_SoundLoaded);
}

TEST_F(LatticeSound, MayBeAbsent) {
  const TestWindow& w = openLattice(kTwoWords, "utt.lat");
  EXPECT_EQ(w.m_SoundPath, pathOf("utt.wav"));
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_EQ(dialogs, Texts());
}

TEST_F(LatticeSound, ThatCannotBeDecodedIsSaidAndTheLatticeStays) {
  folder.write("utt.wav", "no sound");
  std::string titleUnderTheBox;
  answer = [&](Gtk::Dialog& dialog) {
    titleUnderTheBox = window->get_title();
    dialog.response(Gtk::RESPONSE_OK);
  };
  const TestWindow& w = openLattice(kTwoWords, "utt.lat");
  EXPECT_EQ(titleUnderTheBox, "Quorbel - " + pathOf("utt.lat"));
  EXPECT_EQ(dialogs, Texts{"Unable to load " + pathOf("utt.wav")});
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_TRUE(w.m_FileOpened);
  EXPECT_EQ(statusOf(*window), "graph : " + pathOf("utt.lat"));
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("utt.lat"));
}

TEST_F(LatticeSound, OfTheLatticeBeforeIsNotKept) {
  writeTone("first.wav");
  TestWindow& w = openLattice(kTwoWords, "first.lat");
  ASSERT_TRUE(w.m_SoundLoaded);
  openLattice(kTwoWords, "second.lat");
  EXPECT_FALSE(w.m_SoundLoaded);
  EXPECT_FALSE(w.m_Audio.samples());
}

TEST_F(LatticeSound, IsNotTouchedByALatticeThatIsRefused) {
  writeTone("first.wav");
  TestWindow& w = openLattice(kTwoWords, "first.lat");
  writeTone("second.wav");
  openLattice("nonsense\n", "second.lat");
  EXPECT_EQ(w.m_SoundPath, pathOf("first.wav"));
  EXPECT_FALSE(w.m_SoundLoaded);
}

}  // namespace
}  // namespace quorbel
