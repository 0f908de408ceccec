#include "layout/layout_reader.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>
#include <unordered_map>

#include "lattice/blanks.h"
#include "lattice/number_text.h"
#include "layout/dot_statements.h"
#include "layout/file_names.h"

namespace quorbel {
namespace {

constexpr std::size_t kNone = std::string::npos;

/// Units of a node's size in an inch. Not the 72 points of one: boxes stand out a little around the
/// nodes that they highlight.
constexpr double kNodeUnitsPerInch = 80.0;

/// The position behind a delimiter; kNone, at which no text can begin, when it was not found.
std::size_t after(std::size_t delimiter) { return delimiter == kNone ? kNone : delimiter + 1; }

/// Whether `text` stands right before `pos`.
bool isPrecededBy(const std::string& line, std::size_t pos, const std::string& text) {
  return pos != kNone && pos >= text.size() &&
         line.compare(pos - text.size(), text.size(), text) == 0;
}

/// The integer between `begin` and the next `delimiter`, whose place goes into `end`. Throws
/// std::out_of_range when `begin` lies behind the line.
int intUpTo(const std::string& line, std::size_t begin, char delimiter, std::size_t& end) {
  end = line.find(delimiter, begin);
  return parseInt(line.substr(begin, end == kNone ? kNone : end - begin));
}

/// A node's size from inches, which some locales write with a decimal comma.
int nodeSize(std::string inches) {
  if (const std::size_t comma = inches.find(','); comma != kNone) inches[comma] = '.';
  const double size = parseDouble(inches) * kNodeUnitsPerInch;
  constexpr double kLargest = std::numeric_limits<int>::max();
  return std::abs(size) < kLargest ? static_cast<int>(size) : 0;
}

/// Scans the lines of one layout file into items.
class LayoutScanner {
 public:
  LayoutScanner(Graph& graph, std::vector<LayoutItem>& items);
  void scan(const std::string& line);

 private:
  void scanBoundingBox(const std::string& line, std::size_t pos);
  void scanNode(const std::string& line, std::size_t pos, int index);
  void scanEdge(const std::string& line, std::size_t pos, int startNode);
  bool scanLabel(const std::string& line, std::size_t& pos, LayoutItem& item) const;
  bool scanComment(const std::string& line, std::size_t& pos, LayoutItem& item) const;
  void scanLabelPosition(const std::string& line, std::size_t pos, LayoutItem& item) const;

  Graph& m_Graph;
  std::vector<LayoutItem>& m_Items;
  std::unordered_map<int, Edge*> m_Links;  ///< the first link of each id
};

LayoutScanner::LayoutScanner(Graph& graph, std::vector<LayoutItem>& items)
    : m_Graph(graph), m_Items(items) {
  for (std::size_t i = 0; i < static_cast<std::size_t>(graph.adjacency->nodeCount); ++i)
    for (Edge& edge : graph.adjacency->outgoing[i]) m_Links.emplace(edge.linkId, &edge);
}

void LayoutScanner::scan(const std::string& line) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == kNone || line[begin] == '\n' || line[begin] == '\r' || line[begin] == '\0') return;
  const std::size_t end = std::min(line.find_first_of(" =\t\n\r", begin), line.size());
  const std::string token = line.substr(begin, end - begin);
  if (token == "graph") return scanBoundingBox(line, end);
  if (token == "node") return;

  const std::size_t next = line.find_first_not_of(kBlanks, end);
  if (next == kNone) return;
  if (line[next] == '[') scanNode(line, next, parseInt(token));
  if (line[next] == '-') scanEdge(line, next, parseInt(token));
}

void LayoutScanner::scanBoundingBox(const std::string& line, std::size_t pos) {
  const std::size_t name = line.find('b', pos);
  if (name == kNone) return;
  const std::size_t left = line.find(',', name);
  const std::size_t bottom = line.find(',', after(left));
  std::size_t end;
  m_Graph.layoutWidth = intUpTo(line, after(bottom), ',', end);
  m_Graph.layoutHeight = intUpTo(line, after(end), '"', end);
}

void LayoutScanner::scanNode(const std::string& line, std::size_t pos, int index) {
  const auto position = static_cast<std::size_t>(index);
  if (index < 0 || position >= m_Graph.nodes.size()) return;
  LayoutItem item;
  item.isNode = true;
  item.nodeIndex = index;
  item.time = m_Graph.nodes[position].time;

  std::size_t quote = line.find('"', pos);
  if (isPrecededBy(line, quote, "pos=")) {
    item.x = intUpTo(line, after(quote), ',', quote);
    item.y = intUpTo(line, after(quote), '"', quote);
  }
  const auto scanSize = [&](const char* name, int& size) {
    quote = line.find('"', after(quote));
    if (!isPrecededBy(line, quote, name)) return;
    const std::size_t begin = after(quote);
    quote = line.find('"', begin);
    size = nodeSize(line.substr(begin, quote == kNone ? kNone : quote - begin));
  };
  scanSize("width=", item.width);
  scanSize("height=", item.height);
  m_Items.push_back(item);
}

void LayoutScanner::scanEdge(const std::string& line, std::size_t pos, int startNode) {
  const std::size_t arrowEnd = std::min(line.find_first_of(kBlanks, pos), line.size());
  if (line.compare(pos, arrowEnd - pos, "->") != 0) return;
  const std::size_t target = std::min(line.find_first_not_of(kBlanks, arrowEnd), line.size());
  const std::size_t targetEnd = std::min(line.find_first_of(kBlanks, target), line.size());

  LayoutItem item;
  item.startNode = startNode;
  item.endNode = parseInt(line.substr(target, targetEnd - target));
  std::size_t end = targetEnd;
  if (!scanLabel(line, end, item) || !scanComment(line, end, item)) {
    std::cout << "comment not found in dot file" << std::endl;
    return;
  }
  scanLabelPosition(line, end, item);
  if (const auto link = m_Links.find(item.linkId); link != m_Links.end()) {
    item.word = link->second->word;
    item.score = link->second->scores[currentScoreName];
  }
  m_Items.push_back(item);
}

bool LayoutScanner::scanLabel(const std::string& line, std::size_t& pos, LayoutItem& item) const {
  std::size_t equals = line.find('=', pos);
  while (equals != kNone && !isPrecededBy(line, equals, "label"))
    equals = line.find('=', equals + 1);
  if (equals == kNone) return false;
  const bool isQuoted = line[equals + 1] == '"';
  const std::size_t begin = equals + (isQuoted ? 2 : 1);
  pos = line.find(isQuoted ? '"' : ' ', begin);
  item.label = withInnerQuotes(line.substr(begin, pos == kNone ? kNone : pos - begin));
  return true;
}

bool LayoutScanner::scanComment(const std::string& line, std::size_t& pos, LayoutItem& item) const {
  std::size_t quote = line.find('"', after(pos));
  while (quote != kNone && !isPrecededBy(line, quote, "comment="))
    quote = line.find('"', quote + 1);
  if (quote == kNone) return false;
  item.linkId = intUpTo(line, line.find_first_of("0123456789", quote), '"', pos);
  return true;
}

void LayoutScanner::scanLabelPosition(const std::string& line, std::size_t pos,
                                      LayoutItem& item) const {
  std::size_t quote = line.find('"', after(pos));
  while (quote != kNone && !isPrecededBy(line, quote, "lp=")) quote = line.find('"', quote + 1);
  if (quote == kNone) {
    std::cout << "lp not found in dot file" << std::endl;
    item.x = item.y = LayoutItem::kNoPosition;
    return;
  }
  std::size_t end;
  item.x = intUpTo(line, after(quote), ',', end);
  item.y = intUpTo(line, after(end), '"', end);
}

}  // namespace

void readDotLayout(Graph& graph, std::vector<LayoutItem>& items) {
  std::ifstream stream(kLayoutFile);
  if (stream) readDotLayout(graph, items, stream);
}

void readDotLayout(Graph& graph, std::vector<LayoutItem>& items, std::istream& stream) {
  if (!graph.adjacency) return;
  items.clear();
  LayoutScanner scanner(graph, items);
  DotStatements statements(stream);
  for (std::string line; statements.next(line);) scanner.scan(line);
}

}  // namespace quorbel
