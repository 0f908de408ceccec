// What comes out on paper, of the real `dot` and of Ghostscript.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <regex>

#include "drawing/drawing.h"
#include "formats/lattice_text.h"
#include "layout/dia_picture.h"
#include "measures/lattice_sections.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

constexpr double kPointsPerCentimetre = 72.0 / 2.54;
constexpr double kPixelsPerPoint = 300.0 / 72.0;
constexpr const char* kFont = "DejaVu Sans";

/// A chain of words, each with so many others beside it; of every third one they have two parts.
std::string chainText(int words, int others) {
  std::string links;
  int nodes = 1;
  int id = 0;
  const auto link = [&](int start, int end, int score) {
    links += "J=" + std::to_string(id) + " S=" + std::to_string(start) +
             " E=" + std::to_string(end) + " W=word" + std::to_string(id) +
             " a=" + std::to_string(-score) + "\n";
    ++id;
  };
  for (int word = 0; word < words; ++word) {
    const int start = nodes - 1;
    const bool isInParts = word % 3 == 2;
    const int end = nodes + (isInParts ? others : 0);
    link(start, end, 1);
    for (int other = 0; other < others; ++other) {
      link(start, isInParts ? nodes + other : end, 2);
      if (isInParts) link(nodes + other, end, 2);
    }
    nodes = end + 1;
  }
  std::string text = "N=" + std::to_string(nodes) + " L=" + std::to_string(id) + "\n";
  for (int node = 0; node < nodes; ++node)
    text += "I=" + std::to_string(node) + " t=" + std::to_string(node) + "\n";
  return text + links;
}

WordLattice latticeOf(const std::string& text) {
  WordLattice lattice;
  readText(text, lattice);
  return lattice;
}

/// Draws without a word of note, and gives the file's bytes.
std::string drawn(const WordLattice& lattice, const DrawingOptions& options,
                  const std::string& path) {
  std::string note;
  EXPECT_EQ(drawLattice(lattice, options, path, note), "");
  EXPECT_EQ(note, "");
  return textOf(path);
}

DrawingOptions columnOptions(double width) {
  DrawingOptions options;
  options.showBestPath = true;
  options.font = kFont;
  options.width = width;
  return options;
}

/// The numbers that the groups of the first match hold.
std::vector<double> numbersIn(const std::string& text, const std::string& pattern) {
  std::smatch match;
  std::vector<double> numbers;
  if (!std::regex_search(text, match, std::regex(pattern))) ADD_FAILURE() << pattern;
  for (std::size_t i = 1; i < match.size(); ++i) numbers.push_back(std::stod(match[i]));
  numbers.resize(8);
  return numbers;
}

const std::string kBox = R"((-?[\d.]+) (-?[\d.]+) (-?[\d.]+) (-?[\d.]+))";

/// Runs Ghostscript and gives what it says.
std::string ghostscript(const std::string& arguments) {
  const std::string command = "gs -dBATCH -dNOPAUSE -dSAFER " + arguments + " >said 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << textOf("said");
  return textOf("said");
}

/// Width and height of the page of out.pdf in points, of which the file itself may tell nothing
/// that is plain text.
std::vector<double> pageOfPdf() {
  ghostscript("-r144 -sDEVICE=pbmraw -sOutputFile=page out.pdf");
  std::vector<double> size = numbersIn(textOf("page"), "(?:#[^\\n]*\\s)*(\\d+)\\s(\\d+)");
  for (double& length : size) length /= 2.0;
  return size;
}

/// The width of a drawing in points, by what its file says.
double widthOf(const std::string& format, const std::string& bytes) {
  if (format == "png") return Picture("out.png").width() / kPixelsPerPoint;
  if (format == "svg") return numbersIn(bytes, "<svg width=\"([\\d.]+)pt\"")[0];
  if (format == "pdf") return pageOfPdf()[0];
  const std::vector<double> box = numbersIn(bytes, "%%BoundingBox: " + kBox);
  EXPECT_EQ(box[0], 0.0);
  EXPECT_EQ(box[1], 0.0);
  return box[2];
}

TEST(PrintedDrawing, KeepsToTheWidthInEveryFormat) {
  const TemporaryFolder folder;
  const WordLattice lattice = latticeOf(chainText(12, 1));
  for (const double width : {6.0, 8.4, 12.2}) {
    for (const std::string format : {"png", "svg", "pdf", "eps", "ps"}) {
      const std::string bytes = drawn(lattice, columnOptions(width), "out." + format);
      EXPECT_LE(widthOf(format, bytes), width * kPointsPerCentimetre + 0.5) << format;
      EXPECT_GE(widthOf(format, bytes), width * kPointsPerCentimetre * 0.8) << format;
    }
  }
}

TEST(PrintedDrawing, HasLettersOfTheSizeThatIsAskedFor) {
  const TemporaryFolder folder;
  const WordLattice lattice = latticeOf(chainText(8, 1));
  const auto letters = [&](const DrawingOptions& options) {
    const std::string svg = drawn(lattice, options, "out.svg");
    return numbersIn(svg, "font-size=\"([\\d.]+)\"")[0] *
           numbersIn(svg, "transform=\"scale\\(([\\d.]+)")[0];
  };
  DrawingOptions options;
  EXPECT_EQ(letters(options), 14.0);
  options.fontSize = 21.0;
  EXPECT_NEAR(letters(options), 21.0, 0.2);
  EXPECT_NEAR(letters(columnOptions(8.4)), 8.0, 0.1);
  options = columnOptions(8.4);
  options.fontSize = 6.5;
  EXPECT_NEAR(letters(options), 6.5, 0.1);
}

TEST(PrintedDrawing, IsSmallerWhereAStretchIsTooWideAndSaysSo) {
  const TemporaryFolder folder;
  WordLattice lattice = latticeOf(chainText(6, 1));
  WordLink across = lattice.links[0];
  across.id = 1000;
  across.start = 0;
  across.end = static_cast<int>(lattice.nodes.size()) - 1;
  lattice.links.push_back(across);  // no node is left that all paths pass
  sortLinks(lattice);
  std::string note;
  ASSERT_EQ(drawLattice(lattice, columnOptions(6.0), "out.pdf", note), "");
  const double size = numbersIn(note, "^letters have ([\\d.]+) points, not 8: ")[0];
  EXPECT_NEAR(widthOf("pdf", textOf("out.pdf")), 6.0 * kPointsPerCentimetre, 1.0);
  ASSERT_EQ(drawLattice(lattice, columnOptions(6.0), "out.svg", note), "");
  EXPECT_NEAR(14.0 * numbersIn(textOf("out.svg"), "transform=\"scale\\(([\\d.]+)")[0], size, 0.15);
  EXPECT_EQ(drawn(lattice, columnOptions(60.0), "out.ps").substr(0, 4), "%!PS");
}

/// The box of what is drawn, by Ghostscript.
std::vector<double> inkBox(const std::string& file) {
  const std::string command =
      "gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=bbox " + file + " 2>box >said";
  EXPECT_EQ(std::system(command.c_str()), 0) << textOf("box") << textOf("said");
  EXPECT_EQ(textOf("said"), "");
  const std::string text = textOf("box");
  EXPECT_EQ(text.find("%%BoundingBox", 1), std::string::npos) << "more than a page";
  return numbersIn(text, "%%HiResBoundingBox: " + kBox);
}

TEST(PrintedDrawing, HasHardlyAMargin) {
  const TemporaryFolder folder;
  const WordLattice lattice = latticeOf(chainText(4, 2));
  for (const bool isForColumn : {true, false}) {
    const DrawingOptions options = isForColumn ? columnOptions(8.4) : DrawingOptions();
    for (const std::string format : {"pdf", "eps", "ps"}) {
      const std::string bytes = drawn(lattice, options, "out." + format);
      const std::vector<double> page =
          format == "pdf" ? pageOfPdf()
                          : numbersIn(bytes, "%%BoundingBox: \\S+ \\S+ (\\d+) (\\d+)");
      const std::vector<double> ink = inkBox("out." + format);
      for (const std::size_t side : {0U, 1U}) {
        EXPECT_GE(ink[side], 0.0) << format;
        EXPECT_LE(ink[side + 2], page[side] + 0.5) << format;
        EXPECT_LE(ink[side], 2.5) << format;
        EXPECT_GE(ink[side + 2], page[side] - 2.5) << format;
      }
    }
    drawn(lattice, options, "out.png");
    const Picture picture("out.png");
    const Picture::Box ink = picture.drawnBox();
    constexpr int kMostPixels = 8;
    EXPECT_LE(ink.left, kMostPixels);
    EXPECT_LE(ink.top, kMostPixels);
    EXPECT_GE(ink.right, picture.width() - kMostPixels);
    EXPECT_GE(ink.bottom, picture.height() - kMostPixels);
  }
}

/// How many pixels of the picture have a colour.
int colouredPixels(const std::string& path) {
  const Picture picture(path);
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const Rgb pixel = picture.at(x, y);
      if (pixel.red != pixel.green || pixel.green != pixel.blue) ++count;
    }
  }
  return count;
}

TEST(PrintedDrawing, IsGreyInBlackAndWhite) {
  const TemporaryFolder folder;
  const WordLattice lattice = latticeOf(chainText(5, 2));
  for (DrawingOptions options : {columnOptions(8.4), DrawingOptions()}) {
    options.showBestPath = true;
    options.throughLink = 1;
    drawn(lattice, options, "out.png");
    EXPECT_GT(colouredPixels("out.png"), 100);
    options.isMonochrome = true;
    drawn(lattice, options, "out.png");
    EXPECT_EQ(colouredPixels("out.png"), 0);
  }
}

TEST(PrintedDrawing, HasItsFontsInIt) {
  const TemporaryFolder folder;
  const WordLattice lattice = latticeOf(chainText(2, 1));
  DrawingOptions options = columnOptions(8.4);
  options.isMonochrome = true;
  for (const std::string name : {"out.pdf", "out.eps", "out.ps"}) {
    drawn(lattice, options, name);
    const std::string said = ghostscript("-sDEVICE=nullpage " + name);
    EXPECT_EQ(said.find("Loading"), std::string::npos) << said;  // of a font that is wanting
  }
  ghostscript("-sDEVICE=pdfwrite -dCompatibilityLevel=1.4 -sOutputFile=plain out.pdf");
  const std::string plain = textOf("plain");
  for (const char* name : {"DejaVuSans", "DejaVuSans-Bold"})
    EXPECT_TRUE(std::regex_search(
        plain, std::regex(std::string("/FontName */[A-Z]{6}\\+") + name + "[/\\s]")))
        << name;
  const std::string svg = drawn(lattice, options, "out.svg");
  EXPECT_NE(svg.find("font-family=\"DejaVu Sans\" font-weight=\"bold\""), std::string::npos);
  EXPECT_EQ(svg.find("DejaVu Sans Bold"), std::string::npos);
}

TEST(PrintedDrawing, IsEncapsulatedPostScriptOfOnePage) {
  const TemporaryFolder folder;
  const std::string eps = drawn(latticeOf(chainText(9, 1)), columnOptions(8.4), "out.eps");
  EXPECT_EQ(eps.substr(0, eps.find('\n')), "%!PS-Adobe-3.0 EPSF-3.0");
  EXPECT_NE(eps.find("\n%%Pages: 1\n"), std::string::npos);
  EXPECT_EQ(eps.find("setpagedevice"), std::string::npos);
  inkBox("out.eps");
}

TEST(PrintedDrawing, TakesNoOddNameForAFont) {
  const TemporaryFolder folder;
  DrawingOptions options;
  for (const char* name : {"a\"b", "a\\b", "a&b", "<b>", "a\nb", "\xFF"}) {
    options.font = name;
    std::string note;
    const std::string error = drawLattice(latticeOf(chainText(1, 1)), options, "out.png", note);
    EXPECT_NE(error.find(": this is no name of a font"), std::string::npos) << name;
    EXPECT_FALSE(std::filesystem::exists("out.png"));
  }
}

TEST(PrintedDrawing, HasALegendWithAReference) {
  const TemporaryFolder folder;
  const WordLattice lattice = latticeOf(chainText(3, 1));
  DrawingOptions options;
  for (const bool isForColumn : {true, false}) {
    if (isForColumn) options = columnOptions(8.4);
    options.reference = "word0 word3 word4";
    options.isMonochrome = true;
    const std::string svg = drawn(lattice, options, "out.svg");
    for (const char* text : {">best path: 1 error<", ">oracle path: no errors<", ">both<"})
      EXPECT_NE(svg.find(text), std::string::npos) << text;
    EXPECT_NE(svg.find("stroke-dasharray"), std::string::npos);
    EXPECT_EQ(svg.find("green"), std::string::npos);
    drawn(lattice, options, "out.png");
    EXPECT_EQ(colouredPixels("out.png"), 0);
    options = DrawingOptions();
  }
}

/// How often each text of a link or a node stands in an SVG.
std::map<std::string, int> textCounts(const std::string& svg, const std::string& kind) {
  std::map<std::string, int> counts;
  const std::regex pattern("<g id=\"" + kind + "\\d+\"[^]*?</g>");
  const std::regex text("<text [^>]*>([^<]*)</text>");
  for (std::sregex_iterator group(svg.begin(), svg.end(), pattern), end; group != end; ++group) {
    const std::string inner = group->str();
    std::smatch match;
    if (std::regex_search(inner, match, text)) ++counts[match[1]];
  }
  return counts;
}

TEST(PrintedDrawing, HasEveryLinkOnceAndNodesBetweenRowsTwice) {
  constexpr unsigned kSeed = 9204;
  SCOPED_TRACE("seed 9204");
  const TemporaryFolder folder;
  std::mt19937 random(kSeed);
  for (int round = 0; round < 8; ++round) {
    const int nodes = 12;
    std::string links;
    int count = 0;
    const auto add = [&](int start, int end) {
      links += "J=" + std::to_string(count) + " S=" + std::to_string(start) +
               " E=" + std::to_string(end) + " W=\xD7\xA9\xD7\x9C\xCC\x81" + std::to_string(count) +
               " a=-1\n";
      ++count;
    };
    for (int node = 0; node + 1 < nodes; ++node) add(node, node + 1);
    for (int i = 0; i < 10; ++i) {
      const int start = static_cast<int>(random() % (nodes - 2));
      add(start, start + 1 + static_cast<int>(random() % 2));
    }
    if (round % 2 == 1) add(6, 5);  // back
    std::string text = "N=12 L=" + std::to_string(count) + " start=0 end=11\n";
    for (int node = 0; node < nodes; ++node)
      text += "I=" + std::to_string(node) + " t=" + std::to_string(node) + "\n";
    const WordLattice lattice = latticeOf(text + links);
    SCOPED_TRACE(text + links);

    std::string note;
    DrawingOptions options = columnOptions(5.0);
    ASSERT_EQ(drawLattice(lattice, options, "out.svg", note), "");
    const std::string svg = textOf("out.svg");
    const std::map<std::string, int> words = textCounts(svg, "edge");
    ASSERT_EQ(words.size(), lattice.links.size());
    for (const auto& [word, times] : words) ASSERT_EQ(times, 1) << word;
    const std::map<std::string, int> numbers = textCounts(svg, "node");
    ASSERT_EQ(numbers.size(), lattice.nodes.size());
    const auto cuts = sectionsOf(lattice).cuts;
    int again = 0;
    for (const auto& [number, times] : numbers) {
      const bool mayStandTwice =
          std::find(cuts.begin() + 1, cuts.end() - 1, std::stoi(number)) != cuts.end() - 1;
      ASSERT_TRUE(times == 1 || (times == 2 && mayStandTwice)) << number;
      again += times - 1;
    }
    EXPECT_EQ(again > 0, cuts.size() > 2) << cuts.size();
  }
}

}  // namespace
}  // namespace quorbel
