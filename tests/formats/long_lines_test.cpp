// What one line, or very many different names, may hold: any amount, in good time.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "formats/dialect_writer.h"
#include "formats/normalise.h"
#include "lattice/processor_time.h"
#include "measures/lattice_summary.h"

namespace quorbel {
namespace {

const std::string kLink = "J=0 S=0 E=1";
const std::string kNodes = "N=2 L=1\nI=0 t=0\nI=1 t=1";

/// A different name for each number, in scattered order.
std::string scatteredKey(int i) {
  return "k" + std::to_string(static_cast<unsigned>(i) * 7919u % 1000003u);
}

/// About 1 MB of fields.
std::string fields(const std::function<std::string(int)>& field) {
  constexpr std::size_t kBytes = 1000000;
  std::string text;
  for (int i = 0; text.size() < kBytes; ++i) text += " " + field(i);
  return text;
}

class LongLines : public ::testing::Test {
 protected:
  /// Reads, summarises and writes a lattice, or sees what is wrong with it.
  void use(const std::string& text) {
    const ProcessorTime time;
    SlfFile file;
    file.bytes = text;
    WordLattice lattice;
    std::string dialect;
    if (parseSlf(file).empty() && normalise(file, lattice).empty()) {
      summaryOf(lattice);
      dialectText(lattice, dialect);
    }
    constexpr double kMostSeconds = 10;  // also where sanitizers watch
    EXPECT_LT(time.seconds(), kMostSeconds) << text.substr(0, 100);
  }
  /// The same fields on the link and on the node that it enters.
  void useOnLinkAndNode(const std::string& text) {
    use(kNodes + "\n" + kLink + text + "\n");
    use(kNodes + text + "\n" + kLink + "\n");
  }
};

TEST_F(LongLines, OfWordsWithAnApostropheThatNothingCloses) {
  useOnLinkAndNode(fields([](int) { return "W='a"; }));
}

TEST_F(LongLines, OfWordsThatBeginLikeXml) {
  useOnLinkAndNode(fields([](int) { return "W=<a"; }));
  useOnLinkAndNode(fields([](int) { return "W=<b/>"; }) + " <c>");
}

TEST_F(LongLines, OfWordsWithManyAttributes) {
  const std::string attributes = fields([](int i) { return "k" + std::to_string(i) + "='1'"; });
  useOnLinkAndNode(" W=<w" + attributes + "/>");
  useOnLinkAndNode(" W=<w" + fields([](int) { return "<a k='1'/>"; }) + "</w>");
}

TEST_F(LongLines, OfDifferentScores) {
  useOnLinkAndNode(fields([](int i) { return scatteredKey(i) + "=1"; }));
}

TEST_F(LongLines, OfDifferentTexts) {
  useOnLinkAndNode(fields([](int i) { return scatteredKey(i) + "=a"; }));
}

TEST_F(LongLines, OfKeysThatBecomeTheSameName) {
  const std::string odd = "!$%&()*+,/:;<>?@[]^`{|}";
  useOnLinkAndNode(fields([&](int i) {
    std::string key = "k";
    for (int rest = i, digit = 0; digit < 4; ++digit, rest /= static_cast<int>(odd.size()))
      key += odd[static_cast<std::size_t>(rest) % odd.size()];
    return key + (i % 2 == 0 ? "=1" : "=a");
  }));
}

TEST_F(LongLines, MayBeManyWithADifferentScoreEach) {
  constexpr int kLinks = 60000;
  std::string text = "N=2\nI=0 t=0\nI=1 t=1\n";
  for (int i = 0; i < kLinks; ++i)
    text += "J=" + std::to_string(i) + " S=0 E=1 " + scatteredKey(i) + "=1\n";
  use(text);
}

TEST_F(LongLines, WithEndPointsInThem) {
  useOnLinkAndNode(" W=" + fields([](int) { return "end=1"; }));
  useOnLinkAndNode(" W=<w in='a'>" + fields([](int) { return "end=1"; }) + "</w>");
}

}  // namespace
}  // namespace quorbel
