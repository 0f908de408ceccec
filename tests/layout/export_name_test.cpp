#include "layout/export_name.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quorbel {
namespace {

TEST(ExportFileName, AppendsTheExtensionThatIsMissing) {
  EXPECT_EQ(exportFileName("/tmp/plot", "png"), "/tmp/plot.png");
  EXPECT_EQ(exportFileName("/tmp/plot", "svg"), "/tmp/plot.svg");
  EXPECT_EQ(exportFileName("/tmp/plot", "dia"), "/tmp/plot.dia");
  EXPECT_EQ(exportFileName("/tmp/plot", "ps"), "/tmp/plot.ps");
  EXPECT_EQ(exportFileName("/tmp/plot.png", "svg"), "/tmp/plot.png.svg");
}

TEST(ExportFileName, KeepsANameThatHasTheExtension) {
  EXPECT_EQ(exportFileName("/tmp/plot.png", "png"), "/tmp/plot.png");
  EXPECT_EQ(exportFileName("/tmp/plot.dia", "dia"), "/tmp/plot.dia");
  EXPECT_EQ(exportFileName("/tmp/plot.ps", "ps"), "/tmp/plot.ps");
}

TEST(ExportFileName, PostscriptForPdfIsAPostscriptFile) {
  EXPECT_EQ(exportFileName("/tmp/out", "ps2"), "/tmp/out.ps");
  EXPECT_EQ(exportFileName("/tmp/out.ps", "ps2"), "/tmp/out.ps");
  EXPECT_EQ(exportFileName("/tmp/out.ps2", "ps2"), "/tmp/out.ps2.ps");
}

TEST(ExportFileName, DoesNotLookForThePoint) {
  EXPECT_EQ(exportFileName("plotpng", "png"), "plotpng");
  EXPECT_EQ(exportFileName("png", "png"), "png");
  EXPECT_EQ(exportFileName("steps", "ps2"), "steps");
}

TEST(ExportFileName, MindsCase) { EXPECT_EQ(exportFileName("plot.PNG", "png"), "plot.PNG.png"); }

TEST(ExportFileName, KeepsEveryOtherCharacter) {
  EXPECT_EQ(exportFileName("/tmp/-a b'c\";$(d)\xC3\xA9", "svg"), "/tmp/-a b'c\";$(d)\xC3\xA9.svg");
}

TEST(ExportFileName, ThrowsForANameShorterThanTheExtension) {
  EXPECT_THROW(exportFileName("ng", "png"), std::out_of_range);
  EXPECT_THROW(exportFileName("", "ps2"), std::out_of_range);
  EXPECT_EQ(exportFileName("ab", "ps2"), "ab.ps");
  try {
    exportFileName("a", "png");
    FAIL() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_EQ(std::string(error.what()).find("basic_string::substr"), 0u) << error.what();
  }
}

}  // namespace
}  // namespace quorbel
