// Who writes the diagram for Dia: `dot` where it can, else the viewer from the layout drawn anew.

#include "app/export_fixture.h"
#include "layout/file_names.h"

namespace quorbel {
namespace {

class ExportToDia : public ExportTest {
 protected:
  bool isOurs(const char* name) const {
    return textOf(folder.path() / name).find("<dia:diagram") != std::string::npos;
  }
};

TEST_F(ExportToDia, TodaysDotLeavesItToTheViewer) {
  openLattice(kTwoWays);
  watchDot();
  exportAs("FileExportDIA", "out");
  EXPECT_EQ(takeDotRuns(), runsFor("dia", pathOf("out.dia")));
  EXPECT_TRUE(isOurs("out.dia"));
  EXPECT_EQ(window->m_Graph.outputFormat, "png");
}

TEST_F(ExportToDia, ViewerReplacesAnOlderFile) {
  openLattice(kTwoWays);
  folder.write("out.dia", "an older diagram");
  exportAs("FileExportDIA", "out");
  EXPECT_EQ(dialogs.back(), question("out.dia"));
  EXPECT_TRUE(isOurs("out.dia"));
}

TEST_F(ExportToDia, DiagramIsThatOfTheLayoutDrawnAnew) {
  openLattice(kTwoWays);
  activate("DisplayValue");
  exportAs("FileExportDIA", "out");
  EXPECT_NE(textOf("out.dia").find("#20.25#"), std::string::npos);
  EXPECT_EQ(textOf("out.dia").find("#c / C#"), std::string::npos);
}

TEST_F(ExportToDia, DiagramOfADotThatCanIsKept) {
  openLattice(kTwoWays);
  watchDot(
      "[ \"$1\" = -Tdia ] && { printf %s 'by dot' >\"$3\"; exit; }\nexec \"$REAL_DOT\" \"$@\"");
  exportAs("FileExportDIA", "new");
  EXPECT_EQ(textOf("new.dia"), "by dot");
  folder.write("old.dia", "an older diagram");
  exportAs("FileExportDIA", "old");
  EXPECT_EQ(textOf("old.dia"), "by dot");
}

TEST_F(ExportToDia, DiagramThatDotWritesWithTheSameBytesIsKept) {
  openLattice(kTwoWays);
  folder.write("out.dia", "by dot");
  watchDot(
      "[ \"$1\" = -Tdia ] && { printf %s 'by dot' >\"$3\"; exit; }\nexec \"$REAL_DOT\" \"$@\"");
  exportAs("FileExportDIA", "out");
  EXPECT_EQ(textOf("out.dia"), "by dot");
}

TEST_F(ExportToDia, DiagramThatDotMovesIntoPlaceIsKept) {
  openLattice(kTwoWays);
  folder.write("out.dia", "by dot");
  watchDot(
      "[ \"$1\" = -Tdia ] && { printf %s 'by dot' >new; touch -r \"$3\" new; mv new \"$3\"; exit; "
      "}\n"
      "exec \"$REAL_DOT\" \"$@\"");
  exportAs("FileExportDIA", "out");
  EXPECT_EQ(textOf("out.dia"), "by dot");
}

TEST_F(ExportToDia, WithoutANewLayoutThereIsNoDiagram) {
  openLattice(kTwoWays);
  watchDot("exit 1");
  exportAs("FileExportDIA", "new");
  EXPECT_FALSE(std::filesystem::exists("new.dia"));

  folder.write("old.dia", "an older diagram");
  exportAs("FileExportDIA", "old");
  EXPECT_EQ(textOf("old.dia"), "an older diagram");
  EXPECT_EQ(dialogs, (std::vector<std::string>{
                         kSaveTitle, notWritten("new.dia", "dot failed with status 1"), kSaveTitle,
                         question("old.dia"), notWritten("old.dia", "dot failed with status 1")}));
}

TEST_F(ExportToDia, LayoutCutShortLeavesTheOlderDiagram) {
  openLattice(kTwoWays);
  watchDot("[ \"$1\" = -Tdot ] && echo 'digraph G {' >\"$3\"");
  folder.write("old.dia", "an older diagram");
  exportAs("FileExportDIA", "old");
  EXPECT_EQ(textOf("old.dia"), "an older diagram");
  EXPECT_EQ(dialogs.back(), notWritten("old.dia", "dot made no drawing"));
}

TEST_F(ExportToDia, OlderLayoutOfTheSameSecondCountsAsNew) {
  openLattice(kTwoWays);
  watchDot("[ \"$1\" = -Tdot ]");  // succeeds, leaving the layout as it lies there
  exportAs("FileExportDIA", "out");
  EXPECT_TRUE(isOurs("out.dia"));
  EXPECT_EQ(dialogs, std::vector<std::string>{kSaveTitle});
}

TEST_F(ExportToDia, OtherFormatsAreLeftToDot) {
  openLattice(kTwoWays);
  watchDot("[ \"$1\" = -Tdot ] && exec \"$REAL_DOT\" \"$@\"");
  for (const ExportFormat& format : kExportFormats) {
    if (format.format == std::string("dia")) continue;
    exportAs(format.action, "out");
    const std::string name = std::string("out.") + format.extension;
    EXPECT_FALSE(std::filesystem::exists(name));
    EXPECT_EQ(dialogs.back(), notWritten(name, "dot failed with status 1"));
  }
}

}  // namespace
}  // namespace quorbel
