// The rules by which a line is taken apart, and that the reader follows them on any line.

#include "lattice/reading_rules.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "lattice/number_text.h"
#include "lattice_file.h"

namespace quorbel {
namespace {

using Position = std::optional<std::size_t>;

TEST(ReadingRules, FragmentEndsWhereTheBracketsBalanceForTheLastTime) {
  const std::string line = "W=<w>a <b/></w> c <d/> e=1";
  EXPECT_EQ(fragmentEnd(line, 2), line.find(" e=1"));
  EXPECT_EQ(fragmentEnd("<s> a=1", 0), Position(3));
  EXPECT_EQ(fragmentEnd("<a>> b=1", 0), Position(3));
  EXPECT_EQ(fragmentEnd("<a>> x <b=2", 0), Position(8));  // behind the "<" that balances
}

TEST(ReadingRules, FragmentRunsToTheEndWhereMoreBracketsCloseThanOpen) {
  EXPECT_EQ(fragmentEnd("<a>>> x <b> c=1", 0), Position(15));
  EXPECT_EQ(fragmentEnd("<a>>> <", 0), Position(7));
}

TEST(ReadingRules, FragmentHasNoEndWhereABracketStaysOpen) {
  for (const char* line : {"<w <b></w>", "<", "<a", "<a/> <b", "<a>> <<"})
    EXPECT_EQ(fragmentEnd(line, 0), std::nullopt) << line;
}

TEST(ReadingRules, StretchNamesAnEndPointWithANumberBehindTheWordItBeginsWith) {
  for (const auto& [stretch, start, end] : {std::tuple<const char*, int, int>{"start=3", 3, -1},
                                            {"end=3 W=x", -1, 3},
                                            {"end=\t\v +3", -1, 3},
                                            {"start=-3", -3, -1},
                                            {"end=99999999999", -1, 2147483647},
                                            {"start=3end=4", 3, -1},
                                            {" start=3", -1, -1},
                                            {"start =3", -1, -1},
                                            {"start=x", -1, -1},
                                            {"start=- 3", -1, -1},
                                            {"start=", -1, -1},
                                            {"end=+", -1, -1},
                                            {"End=3", -1, -1}}) {
    EndPoints points;
    EXPECT_EQ(takeEndPoint(stretch, points), start != -1 || end != -1) << stretch;
    EXPECT_EQ(points.start, start) << stretch;
    EXPECT_EQ(points.end, end) << stretch;
  }
}

/// What the line after "J=5 S=0 E=1 " is to add to a link by the rules, or the message.
class ExpectedLink {
 public:
  explicit ExpectedLink(std::string line) : m_Line(std::move(line)) {}

  std::string text() {
    while (skipBlanks(), !isEnd("#\r")) {
      if (!takeField()) return "talk.lat: syntax error line 2";
    }
    LatticeAdjacency adjacency(3, 0, 2);
    addEdge(adjacency, m_Start, m_End, m_Scores, m_Word, 5);
    return describeLinks(adjacency);
  }

 private:
  bool isEnd(const std::string& ends) const {
    return m_Pos == m_Line.size() || ends.find(m_Line[m_Pos]) != std::string::npos;
  }
  void skipBlanks() {
    while (m_Pos < m_Line.size() && (m_Line[m_Pos] == ' ' || m_Line[m_Pos] == '\t')) ++m_Pos;
  }
  std::string upTo(const std::string& ends) {
    std::string taken;
    while (!isEnd(ends)) taken += m_Line[m_Pos++];
    return taken;
  }

  bool takeField() {
    const std::string key = upTo(" =\t\r");
    const ReaderKey meaning = readerKey(key);
    if (meaning == ReaderKey::Header) {
      m_Pos = m_Line.size();
      return true;
    }
    skipBlanks();
    if (m_Pos == m_Line.size() || m_Line[m_Pos] != '=') return false;
    ++m_Pos;
    skipBlanks();
    if (meaning == ReaderKey::Word) return takeWord();
    const std::string value = upTo(" \t\r#");
    if (meaning == ReaderKey::LinkStart) m_Start = parseInt(value);
    if (meaning == ReaderKey::LinkEnd) m_End = parseInt(value);
    if (meaning == ReaderKey::Score) m_Scores[key] = -parseDouble(value);
    return true;
  }

  bool takeWord() {
    m_Word.clear();
    if (isEnd("") || (m_Line[m_Pos] != '<' && m_Line[m_Pos] != '"')) return false;
    if (m_Line[m_Pos] == '<') {
      const Position end = fragmentEnd(m_Line, m_Pos);
      if (end) m_Word = m_Line.substr(m_Pos, *end - m_Pos);
      m_Pos = end.value_or(m_Pos);
      return end.has_value();
    }
    for (++m_Pos; !isEnd("\""); ++m_Pos) {
      if (m_Line[m_Pos] == '\\') ++m_Pos;
      if (m_Pos == m_Line.size()) return false;
      m_Word += m_Line[m_Pos];
    }
    return m_Pos++ < m_Line.size();
  }

  const std::string m_Line;
  std::size_t m_Pos = 0;
  int m_Start = 0;
  int m_End = 1;
  ScoreMap m_Scores;
  std::string m_Word;
};

class ReadingRulesFile : public LatticeFile {};

TEST_F(ReadingRulesFile, AreTheReadersOnAnyLine) {
  constexpr unsigned kSeed = 12013;
  SCOPED_TRACE("seed 12013");
  const std::vector<std::string> pieces = {
      "<",  ">", "<a>", "</a>", "<b/>",  " ",     "=",  "\"",  "\\",      "W=",   "W=<", "word=<a>",
      "#",  "'", "a=1", "b=2",  " c=-3", "S=",    "E=", "L=1", "VERSION", "end=", "t=4", "WORD=\"",
      "\t", "x", "1",   "\r",   "&lt;",  "TIME=", ">>", " d",  ">> ",     "<<"};
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
  int read = 0;
  int overrun = 0;
  for (int round = 0; round < 4000; ++round) {
    std::string line = round % 2 == 0 ? "W=<" : "";
    for (std::size_t i = piece(random) / 2; i > 0; --i) line += pieces[piece(random)];
    const std::string expected = ExpectedLink(line).text();
    ASSERT_EQ(linksOf("J=5 S=0 E=1 " + line), expected) << line;
    read += expected.rfind("link 5", 0) == 0;
    overrun += expected.find("as <") != std::string::npos &&
               line.compare(line.size() - 1, 1, expected, expected.size() - 2, 1) == 0;
  }
  EXPECT_GT(read, 400);  // or the lines say nothing
  EXPECT_GT(overrun, 40);
}

TEST_F(ReadingRulesFile, NameTheEndPointsThatTheReaderFinds) {
  constexpr unsigned kSeed = 12014;
  SCOPED_TRACE("seed 12014");
  std::mt19937 random(kSeed);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  const std::vector<std::string> names = {"start=1", "end=1", "end= 0", "end=x", "start=+1"};
  int named = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::size_t blanks = below(3) == 0 ? below(2 * kEndPointStretch) : 0;
    std::string line = "VERSION ";  // of which the reader takes no field
    while (below(3) != 0) {
      const std::size_t place = (1 + below(3)) * kEndPointStretch + below(3) - 1;
      const std::size_t size = (place + kEndPointStretch - blanks % kEndPointStretch);
      line.resize(std::max(line.size(), size), '.');
      line += names[below(names.size())];
    }
    ASSERT_EQ(latticeOf("N=3\n" + std::string(blanks, ' ') + line + "\n").substr(0, 7), "3 nodes");
    const bool isNamed = graph.adjacency->startNode != 0 || graph.adjacency->endNode != 2;
    ASSERT_EQ(namesEndPoint(line, blanks), isNamed) << blanks << " blanks, then " << line;
    named += isNamed;
  }
  EXPECT_GT(named, 200);
  EXPECT_LT(named, 1800);
}

}  // namespace
}  // namespace quorbel
