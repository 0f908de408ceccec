#include "words/decimal.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

TEST(Decimal, TakesWholeNumbersOnly) {
  EXPECT_EQ(wholeNumber("-0.5"), -0.5);
  EXPECT_EQ(wholeNumber("+2"), 2.0);
  EXPECT_EQ(wholeNumber("5."), 5.0);
  EXPECT_EQ(wholeNumber(".5"), 0.5);
  EXPECT_EQ(wholeNumber("-3.5E7"), -3.5e7);
  EXPECT_EQ(wholeNumber("1e100"), 1e100);
  for (const char* text : {"", "+", "-", "+-1", "1,5", "1 ", " 1", "nan", "inf", "-inf", "0x10",
                           "1e", "1e101", "-1e101", "1e999", "1-2"})
    EXPECT_EQ(wholeNumber(text), std::nullopt) << text;
}

TEST(Decimal, TakesWholeIntegersOnly) {
  EXPECT_EQ(wholeInteger("42"), 42);
  EXPECT_EQ(wholeInteger("+7"), 7);
  EXPECT_EQ(wholeInteger("-7"), -7);
  EXPECT_EQ(wholeInteger("2147483647"), 2147483647);
  for (const char* text : {"", "4.0", "2147483648", "x", "1x"})
    EXPECT_EQ(wholeInteger(text), std::nullopt) << text;
}

TEST(Decimal, EndsAFieldAtAComment) {
  EXPECT_EQ(numberOfField("-2#loud"), -2.0);
  EXPECT_EQ(numberOfField("-2"), -2.0);
  EXPECT_EQ(numberOfField("#2"), std::nullopt);
  EXPECT_EQ(integerOfField("7#seven"), 7);
  EXPECT_EQ(integerOfField("7.5#x"), std::nullopt);
}

TEST(Decimal, WritesTheShortestTextThatReadsBack) {
  for (const auto& [number, text] : {std::pair<double, const char*>{-90.27, "-90.27"},
                                     {0.0, "0"},
                                     {-0.0, "0"},
                                     {1e-7, "1e-07"},
                                     {1234567.0, "1234567"},
                                     {0.1 + 0.2, "0.30000000000000004"}})
    EXPECT_EQ(exactNumber(number), text);
}

TEST(Decimal, RoundsAwayTheNoiseOfSums) {
  EXPECT_EQ(rounded(-90.27 + 14.0 * -2.278), -122.162);
  EXPECT_EQ(rounded(0.1 + 0.2), 0.3);
  EXPECT_EQ(rounded(123456789012345.0), 123456789012345.0);
  EXPECT_EQ(rounded(0.0), 0.0);
}

}  // namespace
}  // namespace quorbel
