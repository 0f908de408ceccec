#include "layout/layout_line.h"

#include <algorithm>
#include <utility>

#include "lattice/blanks.h"
#include "lattice/number_text.h"

namespace quorbel {
namespace {

constexpr std::size_t kNone = std::string::npos;

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

void scanBoundingBox(const std::string& line, std::size_t pos, LayoutCollector& collector) {
  const std::size_t name = line.find('b', pos);
  if (name == kNone) return;
  const std::size_t left = line.find(',', name);
  const std::size_t bottom = line.find(',', after(left));
  std::size_t end;
  collector.setWidth(intUpTo(line, after(bottom), ',', end));
  collector.setHeight(intUpTo(line, after(end), '"', end));
}

void scanNode(const std::string& line, std::size_t pos, LayoutItem item,
              LayoutCollector& collector) {
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
  collector.addNode(item);
}

/// The label; `pos` moves from behind the target to the label's end.
std::optional<std::string> scanLabel(const std::string& line, std::size_t& pos) {
  std::size_t equals = line.find('=', pos);
  while (equals != kNone && !isPrecededBy(line, equals, "label"))
    equals = line.find('=', equals + 1);
  if (equals == kNone) return std::nullopt;
  const bool isQuoted = line[equals + 1] == '"';
  const std::size_t begin = equals + (isQuoted ? 2 : 1);
  pos = line.find(isQuoted ? '"' : ' ', begin);
  return line.substr(begin, pos == kNone ? kNone : pos - begin);
}

/// The link's id; `pos` moves from the label's end to that of the comment.
std::optional<int> scanComment(const std::string& line, std::size_t& pos) {
  std::size_t quote = line.find('"', after(pos));
  while (quote != kNone && !isPrecededBy(line, quote, "comment="))
    quote = line.find('"', quote + 1);
  if (quote == kNone) return std::nullopt;
  return intUpTo(line, line.find_first_of("0123456789", quote), '"', pos);
}

std::optional<LayoutEdge::Place> scanLabelPlace(const std::string& line, std::size_t pos) {
  std::size_t quote = line.find('"', after(pos));
  while (quote != kNone && !isPrecededBy(line, quote, "lp=")) quote = line.find('"', quote + 1);
  if (quote == kNone) return std::nullopt;
  std::size_t end;
  LayoutEdge::Place place;
  place.x = intUpTo(line, after(quote), ',', end);
  place.y = intUpTo(line, after(end), '"', end);
  return place;
}

void scanEdge(const std::string& line, std::size_t pos, int startNode, LayoutCollector& collector) {
  const std::size_t arrowEnd = std::min(line.find_first_of(kBlanks, pos), line.size());
  if (line.compare(pos, arrowEnd - pos, "->") != 0) return;
  const std::size_t target = std::min(line.find_first_not_of(kBlanks, arrowEnd), line.size());
  const std::size_t targetEnd = std::min(line.find_first_of(kBlanks, target), line.size());

  LayoutEdge edge;
  edge.startNode = startNode;
  edge.endNode = parseInt(line.substr(target, targetEnd - target));
  std::size_t end = targetEnd;
  edge.label = scanLabel(line, end);
  if (edge.label) edge.linkId = scanComment(line, end);
  if (edge.linkId) edge.place = scanLabelPlace(line, end);
  collector.addEdge(std::move(edge));
}

}  // namespace

void scanLayoutLine(const std::string& line, LayoutCollector& collector) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == kNone || line[begin] == '\n' || line[begin] == '\r' || line[begin] == '\0') return;
  const std::size_t end = std::min(line.find_first_of(" =\t\n\r", begin), line.size());
  const std::string token = line.substr(begin, end - begin);
  if (token == "graph") return scanBoundingBox(line, end, collector);
  if (token == "node") return;

  const std::size_t next = line.find_first_not_of(kBlanks, end);
  if (next == kNone) return;
  if (line[next] == '[') {
    if (const auto item = collector.nodeItem(parseInt(token)))
      scanNode(line, next, *item, collector);
  }
  if (line[next] == '-') scanEdge(line, next, parseInt(token), collector);
}

}  // namespace quorbel
