#include "layout/layout_reader.h"

#include <fstream>
#include <string>
#include <utility>
#include <variant>

#include "lattice/number_text.h"
#include "layout/dot_statements.h"
#include "layout/file_names.h"
#include "layout/layout_collector.h"
#include "layout/layout_line.h"

namespace quorbel {
namespace {

/// The integer behind that many commas of a list such as "0,0,242,106". Throws std::out_of_range
/// when the list is shorter.
int numberBehind(int commas, const std::string& list) {
  std::size_t begin = 0;
  for (; commas > 0 && begin != std::string::npos; --commas) {
    const std::size_t comma = list.find(',', begin);
    begin = comma == std::string::npos ? std::string::npos : comma + 1;
  }
  return parseInt(list.substr(begin));
}

/// Whether a lattice's node may have this name in a layout.
bool isOneWord(const std::string& name) {
  return !name.empty() && name.find_first_of(" =\t\r\n") == std::string::npos;
}

void readDrawing(const DotRecord& record, LayoutCollector& collector) {
  const std::string* box = valueOf(record.attributes, "bb");
  if (!box) return;
  collector.setWidth(numberBehind(2, *box));
  collector.setHeight(numberBehind(3, *box));
}

void readNode(const DotRecord& record, LayoutCollector& collector) {
  auto item = collector.nodeItem(parseInt(record.name));
  if (!item || !isOneWord(record.name)) return;
  const std::string* place = valueOf(record.attributes, "pos");
  if (place) item->x = numberBehind(0, *place);
  if (place && place->find(',') != std::string::npos) item->y = numberBehind(1, *place);
  if (const std::string* width = valueOf(record.attributes, "width"))
    item->width = nodeSize(*width);
  if (const std::string* height = valueOf(record.attributes, "height"))
    item->height = nodeSize(*height);
  collector.addNode(*item);
}

void readEdge(const DotRecord& record, LayoutCollector& collector) {
  if (!isOneWord(record.name)) return;
  LayoutEdge edge;
  edge.startNode = parseInt(record.name);
  edge.endNode = parseInt(record.head);
  const std::string* label = valueOf(record.attributes, "label");
  const std::string* comment = valueOf(record.attributes, "comment");
  const std::string* place = valueOf(record.attributes, "lp");
  if (label) edge.label = *label;
  const std::size_t digit = comment ? comment->find_first_of("0123456789") : std::string::npos;
  if (digit != std::string::npos) edge.linkId = parseInt(comment->substr(digit));
  if (edge.label && edge.linkId && place)
    edge.place = {numberBehind(0, *place), numberBehind(1, *place)};
  collector.addEdge(std::move(edge));
}

void readRecord(const DotRecord& record, LayoutCollector& collector) {
  switch (record.kind) {
    case DotRecord::Kind::Drawing:
      return readDrawing(record, collector);
    case DotRecord::Kind::Defaults:
      return;
    case DotRecord::Kind::Node:
      return readNode(record, collector);
    case DotRecord::Kind::Edge:
      return readEdge(record, collector);
  }
}

}  // namespace

void readDotLayout(Graph& graph, std::vector<LayoutItem>& items) {
  std::ifstream stream(kLayoutFile);
  if (stream) readDotLayout(graph, items, stream);
}

void readDotLayout(Graph& graph, std::vector<LayoutItem>& items, std::istream& stream) {
  if (!graph.adjacency) return;
  LayoutCollector collector(graph, items);
  DotStatements statements(stream);
  while (const auto statement = statements.next()) {
    if (const auto* record = std::get_if<DotRecord>(&*statement))
      readRecord(*record, collector);
    else
      scanLayoutLine(std::get<std::string>(*statement), collector);
  }
}

}  // namespace quorbel
