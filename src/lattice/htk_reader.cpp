#include "lattice/htk_reader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "lattice/blanks.h"
#include "lattice/growing_scores.h"
#include "lattice/number_text.h"
#include "lattice/reading_rules.h"

namespace quorbel {
namespace {

using OpenFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Finds the lines "start=" and "end=" before anything else is read, since they may stand anywhere.
EndPoints findEndPoints(const OpenFile& file) {
  EndPoints points;
  std::array<char, kEndPointStretch + 1> stretch;
  while (std::fgets(stretch.data(), static_cast<int>(stretch.size()), file.get()))
    takeEndPoint(stretch.data(), points);
  return points;
}

EndPoints findEndPointsOfFile(const std::string& path) {
  const OpenFile file(std::fopen(path.c_str(), "rt"), &std::fclose);
  if (!file) {
    std::cerr << "ERROR: can't open: " << path << std::endl;
    std::exit(1);
  }
  return findEndPoints(file);
}

EndPoints findEndPointsOfText(std::string text) {
  const OpenFile file(fmemopen(text.data(), text.size(), "r"), &std::fclose);
  if (!file) throw std::bad_alloc();
  return findEndPoints(file);
}

bool endsLine(char c) { return c == '\n' || c == '\r' || c == '\0'; }

bool endsKey(char c) { return c == ' ' || c == '=' || c == '\t' || c == '\n' || c == '\r'; }

bool endsValue(char c) { return c == ' ' || c == '#' || c == '\t' || c == '\n' || c == '\r'; }

/// The position from `pos` on of the first character that ends what stands there, or the line's
/// end.
template <typename Ends>
std::size_t endFrom(std::string_view line, std::size_t pos, Ends ends) {
  return static_cast<std::size_t>(std::find_if(line.begin() + pos, line.end(), ends) -
                                  line.begin());
}

/// Takes a quoted word that begins at `pos`; false when it runs past the line.
bool takeQuoted(std::string_view line, std::size_t& pos, std::string& word) {
  for (++pos; pos < line.size() && line[pos] != '"'; ++pos) {
    if (line[pos] == '\\' && ++pos == line.size()) return false;
    word += line[pos];
  }
  if (pos == line.size()) return false;
  ++pos;
  return true;
}

/// Takes an XML fragment that begins at `pos`; false when its angle brackets stay open.
bool takeXml(std::string_view line, std::size_t& pos, std::string& word) {
  const std::optional<std::size_t> end = fragmentEnd(line, pos);
  if (!end) return false;
  word = line.substr(pos, *end - pos);
  pos = *end;
  return true;
}

/// Puts the records of one file into a graph, line by line.
class LatticeReading {
 public:
  LatticeReading(Graph& graph, const std::string& path, const EndPoints& points)
      : m_Graph(graph), m_Path(path), m_Points(points), m_NodeScores(graph.nodes.size()) {}

  std::string read(std::istream& stream);

 private:
  enum class Record { None, Node, Link };

  /// What the fields of a line have said so far.
  // NOLINTNEXTLINE(bugprone-exception-escape): a map of scores moves without fail
  struct Line {
    Record type = Record::None;
    int index = 0;  ///< node index or link id
    int linkStart = 1;
    int linkEnd = 1;
    ScoreMap scores;  ///< of a link; those of a node go into the graph
    GrowingScores growing;
    std::string word;
  };

  std::string readLines(std::istream& stream);
  std::string readLine(std::string_view text);
  std::string takeField(std::string_view text, std::size_t& pos);
  std::string store(ReaderKey meaning, std::string_view key, std::string_view value);
  std::string replaceLattice(int count);
  void storeScore(std::string_view key, std::string_view value);
  void addLink();
  void finish();
  std::string syntaxError(long lineNumber) const;

  bool isNodeIndex(int index) const {
    return m_Graph.adjacency && index >= 0 && index < m_Graph.adjacency->nodeCount;
  }

  /// The node that a node line is about.
  Node& lineNode() { return m_Graph.nodes[static_cast<std::size_t>(m_Line.index)]; }

  Graph& m_Graph;
  const std::string& m_Path;
  const EndPoints m_Points;
  std::vector<GrowingScores> m_NodeScores;  ///< of each node, those still to be set
  Line m_Line;
  long m_LineNumber = 1;
  bool m_CountGiven = false;
};

std::string LatticeReading::syntaxError(long lineNumber) const {
  return m_Path + ": syntax error line " + std::to_string(lineNumber);
}

std::string LatticeReading::read(std::istream& stream) {
  std::string error = readLines(stream);
  for (std::size_t i = 0; i < m_NodeScores.size(); ++i)
    m_NodeScores[i].finish(m_Graph.nodes[i].scores);
  if (error.empty()) finish();
  return error;
}

std::string LatticeReading::readLines(std::istream& stream) {
  std::string text;
  while (std::getline(stream, text) && !stream.eof()) {
    if (std::string error = readLine(text); !error.empty()) return error;
    ++m_LineNumber;
  }
  if (!stream.eof()) return m_Path + " : file not found or permission denied";
  if (m_CountGiven) return "";
  const bool endsWithLineEnd = text.empty();
  return syntaxError(endsWithLineEnd ? std::max(1L, m_LineNumber - 1) : m_LineNumber);
}

std::string LatticeReading::readLine(std::string_view text) {
  m_Line = Line();
  for (std::size_t pos = text.find_first_not_of(kBlanks);
       pos < text.size() && !endsLine(text[pos]) && text[pos] != '#';
       pos = text.find_first_not_of(kBlanks, pos)) {
    if (std::string error = takeField(text, pos); !error.empty()) return error;
  }
  if (m_Line.type == Record::Link) addLink();
  return "";
}

/// Handles the field whose key begins at `pos` and moves `pos` behind it, to the end of the line
/// when the rest of it does not count.
std::string LatticeReading::takeField(std::string_view text, std::size_t& pos) {
  const std::size_t keyEnd = endFrom(text, pos, endsKey);
  const std::string_view key = text.substr(pos, keyEnd - pos);
  const ReaderKey meaning = readerKey(key);
  if (meaning == ReaderKey::Header) {
    pos = text.size();
    return "";
  }
  pos = text.find_first_not_of(kBlanks, keyEnd);
  if (pos == std::string_view::npos || text[pos] != '=') return syntaxError(m_LineNumber);
  pos = std::min(text.find_first_not_of(kBlanks, pos + 1), text.size());

  if (meaning == ReaderKey::Word) {
    const char first = pos < text.size() ? text[pos] : '\0';
    m_Line.word.clear();
    const bool taken = first == '"'   ? takeQuoted(text, pos, m_Line.word)
                       : first == '<' ? takeXml(text, pos, m_Line.word)
                                      : false;
    return taken ? "" : syntaxError(m_LineNumber);
  }
  const std::size_t begin = pos;
  pos = endFrom(text, begin, endsValue);
  return store(meaning, key, text.substr(begin, pos - begin));
}

std::string LatticeReading::store(ReaderKey meaning, std::string_view key, std::string_view value) {
  switch (meaning) {
    case ReaderKey::NodeIndex:
      m_Line.index = parseInt(value);
      m_Line.type = Record::Node;
      return isNodeIndex(m_Line.index) ? "" : syntaxError(m_LineNumber);
    case ReaderKey::LinkId:
      m_Line.index = parseInt(value);
      m_Line.type = Record::Link;
      break;
    case ReaderKey::LinkStart:
      m_Line.linkStart = parseInt(value);
      break;
    case ReaderKey::LinkEnd:
      m_Line.linkEnd = parseInt(value);
      break;
    case ReaderKey::NodeCount:
      return replaceLattice(parseInt(value));
    case ReaderKey::Time:
      if (m_Line.type == Record::Node) lineNode().time = parseDouble(value);
      break;
    case ReaderKey::Score:
      storeScore(key, value);
      break;
    case ReaderKey::Header:
    case ReaderKey::Word:
    case ReaderKey::LinkCount:  // how many links there are shows when they come
      break;
  }
  return "";
}

void LatticeReading::storeScore(std::string_view key, std::string_view value) {
  if (m_Line.type == Record::None) return;
  const double number = parseDouble(value);
  const double score = m_Graph.scoresNegated ? -number : number;
  if (m_Line.type == Record::Link)
    m_Line.growing.set(m_Line.scores, key, score);
  else
    m_NodeScores[static_cast<std::size_t>(m_Line.index)].set(lineNode().scores, key, score);
}

std::string LatticeReading::replaceLattice(int count) {
  if (count < 1 || count > kMostNodes)
    return "Bad number of node in HTK file : " + std::to_string(count);
  const auto given = [count](int node, int otherwise) {
    return node >= 0 && node < count ? node : otherwise;
  };
  m_Graph.adjacency = std::make_unique<LatticeAdjacency>(count, given(m_Points.start, 0),
                                                         given(m_Points.end, count - 1));
  m_Graph.nodes.assign(m_Graph.adjacency->outgoing.size(), Node());
  m_NodeScores.assign(m_Graph.nodes.size(), GrowingScores());
  m_CountGiven = true;
  if (m_Line.type == Record::Node && !isNodeIndex(m_Line.index)) return syntaxError(m_LineNumber);
  return "";
}

void LatticeReading::addLink() {
  m_Line.growing.finish(m_Line.scores);
  if (!m_Line.scores.empty()) currentScoreName = m_Line.scores.begin()->first;
  if (!m_Graph.adjacency) return;  // no count was ever given: there is no lattice to link
  addEdge(*m_Graph.adjacency, m_Line.linkStart, m_Line.linkEnd, std::move(m_Line.scores),
          std::move(m_Line.word), m_Line.index);
}

void LatticeReading::finish() {
  LatticeAdjacency& adjacency = *m_Graph.adjacency;
  const std::size_t count = static_cast<std::size_t>(adjacency.nodeCount);
  const double lastTime = m_Graph.nodes[count - 1].time;
  m_Graph.duration = lastTime;
  for (std::size_t i = 0; i < count; ++i) m_Graph.nodes[i].time /= lastTime;
  for (std::size_t i = 0; i < count; ++i) {
    for (Edge& edge : adjacency.outgoing[i])
      addScores(edge.scores, m_Graph.nodes[static_cast<std::size_t>(edge.endNode)].scores);
  }
}

}  // namespace

std::string readHtkLattice(Graph& graph, const std::string& path) {
  std::ifstream stream(path);
  // the standard library's own error for a text made of nothing
  if (!stream) throw std::logic_error("basic_string: construction from null is not valid");
  const EndPoints points = findEndPointsOfFile(path);
  return LatticeReading(graph, path, points).read(stream);
}

std::string readHtkLattice(Graph& graph, const std::string& path, const std::string& text) {
  const EndPoints points = findEndPointsOfText(text);
  std::istringstream stream(text);
  return LatticeReading(graph, path, points).read(stream);
}

}  // namespace quorbel
