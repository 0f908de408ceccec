#include "lattice/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "extreme_numbers.h"
#include "graph_text.h"
#include "process_locale.h"

namespace quorbel {
namespace {

using namespace std::string_view_literals;

constexpr double kLargestDouble = std::numeric_limits<double>::max();

template <typename Number>
struct Reading {
  std::string_view text;
  Number number;
};

template <typename Number>
Number readFromStream(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  Number number{};
  stream >> number;
  return number;
}

class NumberText : public InEveryLocale {};
INSTANTIATE_TEST_SUITE_P(Locales, NumberText, kLocales);

TEST_P(NumberText, IntegersAreReadAsAStreamInTheCLocaleDoes) {
  const std::vector<Reading<int>> readings = {
      {"12", 12},
      {"-7", -7},
      {"+5", 5},
      {"010", 10},
      {" 8", 8},
      {"\v9", 9},
      {" \t\n\v\f\r3", 3},
      {"12abc", 12},
      {"1.9", 1},
      {"1,5", 1},
      {"1,000", 1},
      {"1.000", 1},
      {"1e3", 1},
      {"4\0002"sv, 4},
      {"", 0},
      {" ", 0},
      {"-", 0},
      {"+", 0},
      {"- 5", 0},
      {"--5", 0},
      {"abc", 0},
      {"nan", 0},
      {"inf", 0},
      {"0x1F", 0},
      {"\0005"sv, 0},
      {"2147483647", kLargestInt},
      {"2147483648", kLargestInt},
      {"4294967297", kLargestInt},
      {"99999999999999999999", kLargestInt},
      {"-2147483648", kSmallestInt},
      {"-2147483649", kSmallestInt},
      {"-99999999999999999999", kSmallestInt},
  };
  for (const auto& [text, number] : readings) EXPECT_EQ(parseInt(text), number) << text;
}

TEST_P(NumberText, DoublesAreReadAsAStreamInTheCLocaleDoes) {
  const std::vector<Reading<double>> readings = {
      {"0.5", 0.5},
      {"-10.25", -10.25},
      {"+5", 5.0},
      {".5", 0.5},
      {"-.5", -0.5},
      {"5.", 5.0},
      {"5.e3", 5000.0},
      {"-5.E-1x", -0.5},
      {"007", 7.0},
      {"-0", -0.0},
      {" 8.5", 8.5},
      {"\v2.5", 2.5},
      {" \t\n\v\f\r3", 3.0},
      {"1e5", 1e5},
      {"1E5", 1e5},
      {"1e+5", 1e5},
      {"1e-2", 0.01},
      {"1.5abc", 1.5},
      {"1.5.5", 1.5},
      {"1e5e5", 1e5},
      {"1,5", 1.0},
      {"1,000", 1.0},
      {"1.000", 1.0},
      {"1.000,5", 1.0},
      {"2.5\0007"sv, 2.5},
      {"", 0.0},
      {" ", 0.0},
      {".", 0.0},
      {"-", 0.0},
      {"- 5", 0.0},
      {"abc", 0.0},
      {"e5", 0.0},
      {"nan", 0.0},
      {"NaN", 0.0},
      {"inf", 0.0},
      {"-inf", 0.0},
      {"infinity", 0.0},
      {"0x1F", 0.0},
      {"1e", 0.0},
      {"1e+", 0.0},
      {"1e-", 0.0},
      {"1ex", 0.0},
      {"5.e", 0.0},
      {"0x1p3", 0.0},
      {"1e999", kLargestDouble},
      {"-1e999", -kLargestDouble},
      {"1e-999", 0.0},
      {"-1e-999", -0.0},
      {"0.1", 0.1},
      {"4.9406564584124654e-324", std::numeric_limits<double>::denorm_min()},
      {"1.7976931348623157e308", kLargestDouble},
      {"-7865.4322509765625", -7865.4322509765625},
  };
  for (const auto& [text, number] : readings)
    EXPECT_EQ(exactText(parseDouble(text)), exactText(number)) << text;
}

TEST_P(NumberText, AnyTextIsReadAsAStreamInTheCLocaleDoes) {
  constexpr unsigned kSeed = 31415;
  constexpr int kTexts = 20000;
  const std::string characters = "0123456789012345678900..eE+-, xn\t";
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<std::size_t> character(0, characters.size() - 1);
  std::uniform_int_distribution<std::size_t> shortLength(0, 8);
  std::uniform_int_distribution<std::size_t> longLength(0, 400);
  for (int i = 0; i < kTexts; ++i) {
    std::string text(i % 100 == 0 ? longLength(random) : shortLength(random), ' ');
    for (char& c : text)
      c = i % 400 == 0 ? "0123456789"[character(random) % 10] : characters[character(random)];
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", text '" + text + "'");
    ASSERT_EQ(parseInt(text), readFromStream<int>(text));
    ASSERT_EQ(exactText(parseDouble(text)), exactText(readFromStream<double>(text)));
  }
}

TEST_P(NumberText, OneNumberLeavesNothingBehindForTheNext) {
  EXPECT_EQ(parseInt("x"), 0);
  EXPECT_EQ(parseInt("17"), 17);
  EXPECT_EQ(parseDouble("1e999"), kLargestDouble);
  EXPECT_EQ(parseDouble(""), 0.0);
  EXPECT_EQ(parseDouble("2.5"), 2.5);
  EXPECT_EQ(parseInt("3"), 3);
}

TEST_P(NumberText, NumbersAreWrittenWithSixSignificantDigits) {
  const std::vector<Reading<double>> readings = {
      {"0", 0.0},
      {"-0", -0.0},
      {"0.5", 0.5},
      {"-10.25", -10.25},
      {"0.333333", 1.0 / 3},
      {"1000", 1000.0},
      {"1234.5", 1234.5},
      {"-7865.43", -7865.4322509765625},
      {"100000", 100000.0},
      {"123457", 123456.7},
      {"999999", 999999.0},
      {"1e+06", 999999.5},
      {"1e+06", 1e6},
      {"1.23457e+06", 1234567.0},
      {"1e+08", 99999999.0},
      {"0.0001", 0.0001},
      {"1e-05", 0.00001},
      {"1.79769e+308", kLargestDouble},
      {"inf", std::numeric_limits<double>::infinity()},
      {"-inf", -std::numeric_limits<double>::infinity()},
      {"nan", std::numeric_limits<double>::quiet_NaN()},
  };
  for (const auto& [text, number] : readings) EXPECT_EQ(formatNumber(number), text);
}

TEST_P(NumberText, NumbersAreWrittenAsAStreamInTheCLocaleDoes) {
  constexpr unsigned kSeed = 20240611;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
  std::uniform_int_distribution<int> exponent(-12, 12);
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  for (int i = 0; i < 2000; ++i) {
    const double number = mantissa(random) * std::pow(10.0, exponent(random));
    stream.str("");
    stream << number;
    ASSERT_EQ(formatNumber(number), stream.str());
  }
}

}  // namespace
}  // namespace quorbel
