#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "layout/layout_reader.h"
#include "layout_support.h"

// Layout files that are cut off, broken, no layouts at all, or huge: whatever they hold, reading
// them ends, and soon.

namespace quorbel {
namespace {

struct Reading {
  std::vector<std::string> items;
  bool isOutOfRange = false;
};

/// Reads a layout into `items`; false when it is out of range.
bool isRead(Graph& graph, const std::string& layout, std::vector<LayoutItem>& items) {
  std::istringstream stream(layout);
  try {
    readDotLayout(graph, items, stream);
  } catch (const std::out_of_range& error) {
    EXPECT_EQ(std::string(error.what()).find("basic_string::substr"), 0U) << error.what();
    return false;
  }
  return true;
}

Reading readingOf(Graph& graph, const std::string& layout) {
  Reading reading;
  std::vector<LayoutItem> items;
  reading.isOutOfRange = !isRead(graph, layout, items);
  for (const LayoutItem& item : items) reading.items.push_back(asText(item));
  return reading;
}

/// How many of the items that stand first are those of `whole`.
std::size_t commonItems(const Reading& reading, const Reading& whole) {
  std::size_t count = 0;
  while (count < std::min(reading.items.size(), whole.items.size()) &&
         reading.items[count] == whole.items[count])
    ++count;
  return count;
}

class LayoutReaderCutFile : public testing::TestWithParam<const char*> {};

using LayoutReaderCutFileOfTodaysForm = LayoutReaderCutFile;

TEST_P(LayoutReaderCutFileOfTodaysForm, GivesTheItemsThatAreWhole) {
  const std::string layout = fixture(GetParam());
  const std::size_t boxEnd = layout.find("\",\n");
  Graph graph = latticeOf(1500);
  const Reading whole = readingOf(graph, layout);
  PrintedText printed;
  for (std::size_t length = 0; length < layout.size(); ++length) {
    const Reading cut = readingOf(graph, layout.substr(0, length));
    ASSERT_EQ(commonItems(cut, whole), cut.items.size()) << length;
    ASSERT_TRUE(!cut.isOutOfRange || length < boxEnd) << length;
  }
  // An edge that ends before its bracket is a line like any other.
  EXPECT_EQ(printed.take().find("lp not found"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Recorded, LayoutReaderCutFileOfTodaysForm,
                         testing::Values("recorded-diamond.dot", "recorded-wrapped-labels.dot",
                                         "recorded-end-of-long-chain.dot",
                                         "recorded-fractional-coordinates.dot"));

using LayoutReaderCutFileOfTheOldForm = LayoutReaderCutFile;

TEST_P(LayoutReaderCutFileOfTheOldForm, GivesTheItemsThatAreWholeAndAtMostOneMore) {
  const std::string layout = fixture(GetParam());
  Graph graph = latticeOf(4);
  const Reading whole = readingOf(graph, layout);
  const PrintedText printed;
  for (std::size_t length = 0; length < layout.size(); ++length) {
    const Reading cut = readingOf(graph, layout.substr(0, length));
    ASSERT_LE(cut.items.size(), commonItems(cut, whole) + 1) << length;
  }
}

INSTANTIATE_TEST_SUITE_P(HandMade, LayoutReaderCutFileOfTheOldForm,
                         testing::Values("one-line-diamond.dot", "one-line-wrapped-values.dot",
                                         "one-line-labels.dot"));

TEST(LayoutReaderFile, WithBytesChangedIsReadToAnEnd) {
  constexpr unsigned kSeed = 20'240'501;
  constexpr int kFilesEach = 2000;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  const std::string telling = "\"\\[]=,;->\n\r\t {}\0bgl0";
  const PrintedText printed;
  for (const char* name : {"recorded-diamond.dot", "one-line-diamond.dot"}) {
    const std::string layout = fixture(name);
    Graph graph = latticeOf(4);
    for (int i = 0; i < kFilesEach; ++i) {
      std::string broken = layout;
      for (unsigned change = random() % 8; change > 0; --change) {
        const std::size_t at = random() % broken.size();
        const char c =
            random() % 4 ? telling[random() % telling.size()] : static_cast<char>(random() % 256);
        switch (random() % 3) {
          case 0:
            broken[at] = c;
            break;
          case 1:
            broken.insert(at, 1, c);
            break;
          default:
            broken.erase(at, 1 + random() % 20);
        }
      }
      const Reading reading = readingOf(graph, broken);
      const auto lines = std::count(broken.begin(), broken.end(), '\n') + 1;
      ASSERT_LE(static_cast<std::ptrdiff_t>(reading.items.size()), lines) << broken;
    }
  }
}

TEST(LayoutReaderFile, OfRandomBytesIsReadToAnEnd) {
  constexpr unsigned kSeed = 20'240'502;
  constexpr int kFiles = 2000;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  const PrintedText printed;
  Graph graph = latticeOf(4);
  for (int i = 0; i < kFiles; ++i) {
    std::string bytes(random() % 2000, ' ');
    for (char& c : bytes) c = static_cast<char>(random() % 256);
    readingOf(graph, bytes);
  }
}

TEST(LayoutReaderFile, OfRandomPiecesIsReadToAnEnd) {
  constexpr unsigned kSeed = 20'240'503;
  constexpr int kFiles = 5000;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  const std::vector<std::string> pieces = {"graph",    "node",
                                           "edge",     "digraph",
                                           "0",        "1",
                                           "3",        " -> ",
                                           " [",       "\t[",
                                           "];",       "]",
                                           "\"",       "\\",
                                           "\\\n",     "\n",
                                           ",",        "=",
                                           " ",        "\t",
                                           "bb=\"",    "pos=",
                                           "lp=",      "width=",
                                           "comment=", "\r",
                                           "1e+",      "-",
                                           "1e5",      "{",
                                           "}",        "label",
                                           "\"1,2\"",  std::string(1, '\0')};
  const PrintedText printed;
  Graph graph = latticeOf(4);
  for (int i = 0; i < kFiles; ++i) {
    std::string layout;
    for (unsigned count = random() % 60; count > 0; --count)
      layout += pieces[random() % pieces.size()];
    readingOf(graph, layout);
  }
}

/// Processor time, the least of a few runs: what else the machine does only makes a run longer.
double secondsToRead(const std::string& layout) {
  constexpr int kRuns = 3;
  const PrintedText printed;
  Graph graph = latticeOf(2);
  double least = std::numeric_limits<double>::infinity();
  for (int run = 0; run < kRuns; ++run) {
    const std::clock_t before = std::clock();
    std::vector<LayoutItem> items;
    isRead(graph, layout, items);
    least = std::min(least, static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
  }
  return least;
}

struct HugeFile {
  const char* name;
  std::function<std::string(int)> withCount;
};

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

void PrintTo(const HugeFile& file, std::ostream* out) { *out << file.name; }

class LayoutReaderHugeFile : public testing::TestWithParam<HugeFile> {};

TEST_P(LayoutReaderHugeFile, TakesTimeInProportionToItsSize) {
  constexpr int kCount = 12'500;
  constexpr int kTimes = 4;
  constexpr double kSlack = 2.5;  // a quadratic reader takes 16 times as long for 4 times as much
  constexpr double kTooShortToTell = 0.02;
  const double little = secondsToRead(GetParam().withCount(kCount));
  const double much = secondsToRead(GetParam().withCount(kCount * kTimes));
  EXPECT_LT(much, kTimes * kSlack * little + kTooShortToTell) << "less took " << little;
}

std::string edgesOfTodaysForm(int count) {
  std::string layout = "digraph G {\n\tgraph [bb=\"0,0,10,10\",\n\t\trankdir=LR\n\t];\n";
  for (int i = 0; i < count; ++i) {
    const std::string id = std::to_string(i);
    layout += "\t0 -> 1\t[color=black,\n\t\tcomment=\"ID = " + id + "\",\n\t\tlabel=\"word " + id +
              "\",\n\t\tlp=\"1.5,2.5\",\n\t\tpos=\"e,1.5,2 3,4 5,6 7,8 9,1.9153e+05\"];\n";
  }
  return layout + "}\n";
}

std::string edgesOfTheOldForm(int count) {
  std::string layout;
  for (int i = 0; i < count; ++i) {
    layout += "0 -> 1 [label=\"word\", comment=\"ID = " + std::to_string(i) +
              "\", pos=\"e,1,2 3,4 5,6 7,8 9,1e+05\", lp=\"1,2\"];\n";
  }
  return layout;
}

INSTANTIATE_TEST_SUITE_P(
    Of, LayoutReaderHugeFile,
    testing::Values(
        HugeFile{"EdgesOfTodaysForm", edgesOfTodaysForm},
        HugeFile{"EdgesOfTheOldForm", edgesOfTheOldForm},
        HugeFile{"LinesWithoutMeaning", [](int count) { return repeated("{\n", 10 * count); }},
        HugeFile{"OneStatementInManyWrappedLines",
                 [](int count) { return "0 [pos=\"" + repeated("1,2 1e+05\\\n", count) + "\"];"; }},
        HugeFile{"EmptyLinesBehindABackslash",
                 [](int count) { return "0 [\\" + repeated("\n", 10 * count) + "];"; }},
        HugeFile{
            "AQuoteThatNeverEnds",
            [](int count) { return "0\t[a=1,\nlabel=\"" + repeated("\n1\t[pos=", 10 * count); }},
        HugeFile{"ABracketThatNeverEnds",
                 [](int count) { return "0\t[" + repeated("a=1e+05,\n", 10 * count); }},
        HugeFile{"BrokenLines", [](int count) { return repeated("0\t[pos=\"1\n", 10 * count); }},
        HugeFile{"ManyQuotesOnOneLine",
                 [](int count) { return "0 -> 1 [label=" + repeated("\"e+", 10 * count); }},
        HugeFile{"ManyEqualsSignsOnOneLine",
                 [](int count) { return "0 -> 1 [" + repeated("x=", 10 * count); }},
        HugeFile{"ManyNamesInOneStatement",
                 [](int count) { return "0\t[a=1,\n\t\tb=" + repeated(" x", 10 * count) + "];"; }},
        HugeFile{"OneLongLabel",
                 [](int count) {
                   return "0 -> 1\t[color=black,\n\t\tlabel=\"" +
                          repeated("\\\"x\\\n", 10 * count) + "\"];\n";
                 }}),
    [](const auto& file) { return std::string(file.param.name); });

}  // namespace
}  // namespace quorbel
