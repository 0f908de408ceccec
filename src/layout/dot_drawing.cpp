#include "layout/dot_drawing.h"

#include <algorithm>

#include "lattice/number_text.h"
#include "layout/dot_names.h"
#include "layout/dot_record.h"

namespace quorbel {
namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kFarthest = 1e9;  ///< layout points

double number(std::string_view text) {
  return std::clamp(parseDouble(text), -kFarthest, kFarthest);
}

/// The part of `text` before the next `delimiter`; it leaves `text` together with that.
std::string_view takePart(std::string_view& text, const char* delimiters) {
  const std::size_t end = std::min(text.find_first_of(delimiters), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

/// A point such as "12.5,7".
LayoutPoint point(std::string_view text) {
  const std::string_view x = takePart(text, ",");
  return {number(x), number(text)};
}

/// A spline such as "e,9,2 0,0 1,2 3,4 5,6"; without points when it is none.
DrawnSpline spline(std::string_view text) {
  DrawnSpline spline;
  while (!text.empty()) {
    const std::string_view part = takePart(text, kDotWhiteSpace);
    if (part.empty()) continue;
    if (part.substr(0, 2) == "e,") {
      spline.endTip = point(part.substr(2));
    } else if (part.substr(0, 2) == "s,") {
      spline.startTip = point(part.substr(2));
    } else {
      spline.points.push_back(point(part));
    }
  }
  if (spline.points.size() < 4 || spline.points.size() % 3 != 1) spline.points.clear();
  return spline;
}

std::string valueOr(const DotAttributes& attributes, std::string_view name,
                    const std::string& otherwise) {
  const std::string* value = valueOf(attributes, name);
  return value ? *value : otherwise;
}

LinePattern linePattern(const std::string& style) {
  if (style == "dashed") return LinePattern::Dashed;
  return style == "dotted" ? LinePattern::Dotted : LinePattern::Solid;
}

/// Whether a font is bold by its name, such as "Times-Bold" or "DejaVu Sans Bold".
bool isBoldFont(const std::string& name) {
  constexpr std::string_view kEnd = "Bold";
  return name.size() > kEnd.size() && name.substr(name.size() - kEnd.size()) == kEnd;
}

/// A label with its double quotes as `dot` has them in memory: bare.
std::string withBareQuotes(std::string_view label) {
  std::string text;
  for (std::size_t at = 0; at < label.size(); ++at) {
    if (label[at] == '\\' && at + 1 < label.size()) {
      ++at;
      if (label[at] != '"') text += '\\';
    }
    text += label[at];
  }
  return text;
}

/// Collects the statements of one file.
class DrawingReader {
 public:
  explicit DrawingReader(std::string_view text) : m_Text(text) {}
  std::optional<DotDrawing> read();

 private:
  void add(const DotRecord& record);
  void addBox(const DotAttributes& attributes);
  void addNode(const DotRecord& record);
  void addEdge(const DotRecord& record);

  std::string_view m_Text;
  std::string m_Name;  ///< of the whole graph
  bool m_HasBox = false;
  DotDrawing m_Drawing;
};

std::optional<DotDrawing> DrawingReader::read() {
  constexpr std::string_view kKeyword = "digraph";
  std::size_t pos = m_Text.find('{');
  if (pos == std::string_view::npos) return std::nullopt;
  const std::string_view title = withoutMargins(m_Text.substr(0, pos));
  if (title.substr(0, kKeyword.size()) != kKeyword) return std::nullopt;
  m_Name = withoutMargins(title.substr(kKeyword.size()));

  while (true) {
    const std::size_t begin = pos + 1;
    pos = m_Text.find_first_of("[;}", begin);
    if (pos == std::string_view::npos) return std::nullopt;
    if (m_Text[pos] == '}') break;
    if (m_Text[pos] == ';') continue;
    pos = begin;
    const DotRecord record = takeDotRecord(m_Text, pos);
    if (pos >= m_Text.size()) return std::nullopt;
    add(record);
  }
  if (!m_HasBox) return std::nullopt;
  return std::move(m_Drawing);
}

void DrawingReader::add(const DotRecord& record) {
  switch (record.kind) {
    case DotRecord::Kind::Drawing:
      return addBox(record.attributes);
    case DotRecord::Kind::Defaults:
      return;
    case DotRecord::Kind::Node:
      return addNode(record);
    case DotRecord::Kind::Edge:
      return addEdge(record);
  }
}

void DrawingReader::addBox(const DotAttributes& attributes) {
  const std::string* box = valueOf(attributes, "bb");
  if (!box) return;
  std::string_view numbers = *box;
  for (double* side : {&m_Drawing.bottomLeft.x, &m_Drawing.bottomLeft.y, &m_Drawing.topRight.x,
                       &m_Drawing.topRight.y})
    *side = number(takePart(numbers, ","));
  m_HasBox = true;
}

void DrawingReader::addNode(const DotRecord& record) {
  const DotAttributes& attributes = record.attributes;
  const std::string* position = valueOf(attributes, "pos");
  const std::string style = valueOr(attributes, "style", "");
  if (!position || style == "invis") return;
  DrawnNode node;
  node.centre = point(*position);
  node.width = number(valueOr(attributes, "width", "0")) * kPointsPerInch;
  node.height = number(valueOr(attributes, "height", "0")) * kPointsPerInch;
  const std::string shape = valueOr(attributes, "shape", "");
  if (shape == "doublecircle") node.shape = NodeShape::DoubleCircle;
  if (shape == "doubleoctagon") node.shape = NodeShape::DoubleOctagon;
  node.colour = valueOr(attributes, "color", "black");
  node.pattern = linePattern(style);
  if (style == "filled")
    node.fillColour = valueOr(attributes, "fillcolor", valueOr(attributes, "color", "lightgrey"));
  node.fontColour = valueOr(attributes, "fontcolor", "black");
  node.label = labelLines(withBareQuotes(valueOr(attributes, "label", "\\N")),
                          {{'G', m_Name}, {'N', record.name}});
  m_Drawing.nodes.push_back(std::move(node));
}

void DrawingReader::addEdge(const DotRecord& record) {
  const DotAttributes& attributes = record.attributes;
  DrawnEdge edge;
  edge.colour = valueOr(attributes, "color", "black");
  edge.lineWidth = number(valueOr(attributes, "penwidth", "1"));
  edge.pattern = linePattern(valueOr(attributes, "style", ""));
  edge.fontColour = valueOr(attributes, "fontcolor", "black");
  edge.isBold = isBoldFont(valueOr(attributes, "fontname", ""));
  const std::string position = valueOr(attributes, "pos", "");
  for (std::string_view rest = position; !rest.empty();) {
    DrawnSpline part = spline(takePart(rest, ";"));
    if (!part.points.empty()) edge.splines.push_back(std::move(part));
  }
  if (const std::string* place = valueOf(attributes, "lp")) {
    edge.labelCentre = point(*place);
    const std::string& from = record.name;
    const std::string& to = record.head;
    edge.label = labelLines(withBareQuotes(valueOr(attributes, "label", "")),
                            {{'G', m_Name}, {'E', from + "->" + to}, {'T', from}, {'H', to}});
  }
  m_Drawing.edges.push_back(std::move(edge));
}

}  // namespace

std::optional<DotDrawing> readDotDrawing(std::string_view layout) {
  return DrawingReader(layout).read();
}

}  // namespace quorbel
