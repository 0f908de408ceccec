#include "app/lattice_import.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

const LatticeImport kImport = *LatticeImport::fromEnvironment("/bin/quorbel-lattice", "");

TEST(LatticeImportTest, IsThereWhenAProgramIsNamed) {
  EXPECT_FALSE(LatticeImport::fromEnvironment("", ""));
  EXPECT_FALSE(LatticeImport::fromEnvironment("", "all"));
  EXPECT_EQ(kImport.program, "/bin/quorbel-lattice");
}

TEST(LatticeImportTest, ShowsThreeHundredLinksOfMoreThanFourHundred) {
  EXPECT_EQ(kImport.most, 300u);
  EXPECT_EQ(kImport.mostWhole, 400u);
}

TEST(LatticeImportTest, ShowsAsManyLinksAsTheUserSays) {
  const auto fifty = LatticeImport::fromEnvironment("p", "50");
  EXPECT_EQ(fifty->most, 50u);
  EXPECT_EQ(fifty->mostWhole, 50u);
  EXPECT_FALSE(LatticeImport::fromEnvironment("p", "all")->most);
  for (const char* nonsense : {"0", "-1", "5x", "x", "99999999999999999999999"})
    EXPECT_EQ(LatticeImport::fromEnvironment("p", nonsense)->most, 300u) << nonsense;
}

TEST(LatticeImportTest, CommandNamesFilesToTheShellAsTheyAre) {
  EXPECT_EQ(importCommand(kImport, "/talks/it's.slf", true),
            "rm -f imported.lat; /bin/quorbel-lattice import --tell-links --unless-dialect "
            "--links 300 --links-above 400 -- '/talks/it'\\''s.slf' imported.lat "
            ">import.answer 2>import.log");
  EXPECT_EQ(importCommand(*LatticeImport::fromEnvironment("/my programs/q", "all"), "-", false),
            "rm -f imported.lat; '/my programs/q' import --tell-links -- - imported.lat "
            ">import.answer 2>import.log");
}

TEST(LatticeImportTest, FileWithoutACopyIsReadItself) {
  const ImportedLattice lattice = importedLattice("/talks/a.lat", 0, false, "", "");
  EXPECT_EQ(lattice.readPath, "/talks/a.lat");
  EXPECT_EQ(lattice.note, "");
  EXPECT_EQ(lattice.error, "");
}

TEST(LatticeImportTest, CopyIsReadAndTheNoteSaysHowMuchOfTheLatticeItIs) {
  const auto noteOf = [](const char* answer) {
    const ImportedLattice lattice = importedLattice("/talks/a.slf", 0, true, answer, "a note\n");
    EXPECT_EQ(lattice.readPath, "imported.lat");
    EXPECT_EQ(lattice.error, "");
    return lattice.note;
  };
  EXPECT_EQ(noteOf("300 of 11763 links\n"), " (300 of 11,763 links)");
  EXPECT_EQ(noteOf("299 of 999 links\n"), " (299 of 999 links)");
  EXPECT_EQ(noteOf("1000 of 1234567 links\n"), " (1,000 of 1,234,567 links)");
  EXPECT_EQ(noteOf("39 of 39 links\n"), " (imported)");
}

TEST(LatticeImportTest, FailureIsToldByTheProgramsLastLine) {
  const auto errorOf = [](int status, const char* log) {
    const ImportedLattice lattice = importedLattice("/talks/a.slf", status, false, "", log);
    EXPECT_EQ(lattice.readPath, "");
    return lattice.error;
  };
  EXPECT_EQ(errorOf(256,
                    "quorbel-lattice: reading /talks/a.slf (1 s)\n"
                    "quorbel-lattice: /talks/a.slf:4: link 3 enters node 9\n"),
            "/talks/a.slf:4: link 3 enters node 9");
  EXPECT_EQ(errorOf(127 << 8, "sh: 1: quorbel-lattice: not found\n"),
            "sh: 1: quorbel-lattice: not found");
  EXPECT_EQ(errorOf(9, ""), "/talks/a.slf could not be imported");
  EXPECT_EQ(errorOf(-1, "\n\n"), "/talks/a.slf could not be imported");
}

TEST(LatticeImportTest, SoundIsBesideTheLatticeWithItsStem) {
  EXPECT_EQ(soundBeside("/data/run.1/talk.slf.gz"), "/data/run.1/talk.wav");
  EXPECT_EQ(soundBeside("/data/run.1/talk"), "/data/run.1/talk.wav");
  EXPECT_EQ(soundBeside("/data/.talk.slf"), "/data/.wav");
  EXPECT_EQ(soundBeside("talk.slf"), "talk.wav");
}

}  // namespace
}  // namespace quorbel
