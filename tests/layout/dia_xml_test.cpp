#include "layout/dia_xml.h"

#include <gtest/gtest.h>

#include "dia_document.h"

namespace quorbel {
namespace {

TEST(FormatLength, HasUpToFourDecimals) {
  EXPECT_EQ(formatLength(0.0352778), "0.0353");
  EXPECT_EQ(formatLength(1.27), "1.27");
  EXPECT_EQ(formatLength(12.0), "12");
  EXPECT_EQ(formatLength(-2.5), "-2.5");
  EXPECT_EQ(formatLength(100.0), "100");
}

TEST(FormatLength, KeepsTheWholePartOfLargeDrawings) {
  EXPECT_EQ(formatLength(123456789.12346), "123456789.1235");
  EXPECT_EQ(formatLength(1e20), "100000000000000000000");
}

TEST(FormatLength, ZeroHasNoSign) {
  EXPECT_EQ(formatLength(0.0), "0");
  EXPECT_EQ(formatLength(-0.0), "0");
  EXPECT_EQ(formatLength(-0.00001), "0");
}

TEST(DiaXml, EmptyDiagramHasOneLayer) {
  const std::string text = DiaXml().finish();
  const DiaDocument document(text);
  ASSERT_TRUE(document.isWellFormed()) << text;
  EXPECT_EQ(document.find("/dia:diagram/dia:layer/@name").size(), 1u);
  EXPECT_TRUE(document.find("//dia:object").empty());
}

TEST(DiaXml, TextsAndValuesAreEscaped) {
  DiaXml xml;
  xml.beginObject("a<b>&\"c\"", "0");
  xml.string("string", "<x y=\"z\">&amp;]]>'#\t\u00e9");
  xml.endObject();
  const std::string text = xml.finish();
  const DiaDocument document(text);
  ASSERT_TRUE(document.isWellFormed()) << text;
  EXPECT_EQ(document.find("//dia:object/@type").at(0), "a<b>&\"c\"");
  EXPECT_EQ(document.texts().at(0), "<x y=\"z\">&amp;]]>'#\t\u00e9");
}

TEST(DiaXml, ObjectsAreNumbered) {
  DiaXml xml;
  xml.beginObject("a", "0");
  xml.endObject();
  xml.beginGroup();
  xml.beginObject("b", "0");
  xml.endObject();
  xml.endGroup();
  const DiaDocument document(xml.finish());
  EXPECT_EQ(document.find("//dia:object/@id"), (std::vector<std::string>{"O0", "O1"}));
  EXPECT_EQ(document.find("//dia:group/dia:object/@id"), (std::vector<std::string>{"O1"}));
}

}  // namespace
}  // namespace quorbel
