// Names of exported files that a shell would take apart.

#include "app/export_fixture.h"

namespace quorbel {
namespace {

class ExportName : public ExportTest {
 protected:
  /// Exports under each name, as a picture by `dot` and as a diagram by the viewer. Each file has
  /// its name, and nothing in a name is run: that would make a file "planted".
  void expectWritten(const std::vector<std::string>& names) {
    openLattice(kTwoWays);
    watchDot();
    for (const std::string& name : names) {
      SCOPED_TRACE(name);
      exportAs("FileExportSVG", name);
      EXPECT_EQ(takeDotRuns(), runsFor("svg", pathOf(name + ".svg")));
      EXPECT_NE(textOf(folder.path() / (name + ".svg")).find("<svg"), std::string::npos);
      std::filesystem::remove(folder.path() / (name + ".svg"));  // else the dialog completes names
      exportAs("FileExportDIA", name);
      EXPECT_EQ(takeDotRuns(), runsFor("dia", pathOf(name + ".dia")));
      EXPECT_NE(textOf(folder.path() / (name + ".dia")).find("<dia:diagram"), std::string::npos);
      EXPECT_FALSE(std::filesystem::exists("planted"));
      std::filesystem::remove(folder.path() / (name + ".dia"));
    }
    EXPECT_EQ(dialogs, std::vector<std::string>(2 * names.size(), kSaveTitle));
  }
};

TEST_F(ExportName, MayHaveBlanksAndQuotes) {
  expectWritten({"with some blanks", "it's 'quoted'", "\"double\"", "back\\slash\\", "tab\tbed"});
}

TEST_F(ExportName, MayLookLikeACommand) {
  expectWritten({"a;touch planted", "$(touch planted)", "`touch planted`", "a|touch planted",
                 "a&touch planted&", "a\ntouch planted\n", "';touch planted;'", "a>planted"});
}

TEST_F(ExportName, MayLookLikeAnOption) { expectWritten({"-dash", "-o", "--help", "-Tpng"}); }

TEST_F(ExportName, MayHaveWhatAShellReplaces) {
  expectWritten({"$HOME", "*", "a?b[c]", "a~b", "{a,b}", "!history", "%s%n", "#comment"});
}

TEST_F(ExportName, MayBeInAnyScript) {
  expectWritten({"Gr\u00fc\u00dfe", "\u65e5\u672c\u8a9e", "\u0645\u0631\u062d\u0628\u0627"});
}

TEST_F(ExportName, FolderMayHaveAnOddNameToo) {
  std::filesystem::create_directory("my; touch planted; 'notes'");
  expectWritten({"my; touch planted; 'notes'/out"});
}

}  // namespace
}  // namespace quorbel
