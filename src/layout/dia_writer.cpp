#include "layout/dia_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <sstream>

#include "layout/dia_xml.h"
#include "layout/whole_file.h"

namespace quorbel {
namespace {

constexpr double kCentimetresPerPoint = 2.54 / 72.0;

// How `dot` draws what its layout does not tell; layout points.
constexpr double kLineWidth = 1.0;
constexpr double kDashLength = 6.0;
constexpr double kGapBetweenOutlines = 4.0;
constexpr double kArrowLength = 10.0;
constexpr double kArrowWidth = 7.0;
constexpr double kFontSize = 14.0;
constexpr double kLineDistance = 15.0;        ///< from baseline to baseline
constexpr double kBaselineBelowMiddle = 3.7;  ///< of a single line
constexpr double kMeanAdvance = 7.2;          ///< of a character, for texts that are not centred

/// Dia's text height is that of a line; the size of its characters is this part of it.
constexpr double kFontSizePerTextHeight = 0.8;

// Numbers of Dia's choices.
constexpr int kFilledTriangle = 3;
constexpr int kAnchorIsBaseline = 3;
constexpr int kDashedLine = 1;
constexpr int kDottedLine = 4;

int alignment(Justification justification) {
  switch (justification) {
    case Justification::Left:
      return 0;
    case Justification::Right:
      return 2;
    default:
      return 1;
  }
}

std::string colourValue(const std::string& name, const char* otherwise) {
  struct Colour {
    const char* name;
    const char* value;
  };
  constexpr std::array<Colour, 10> kColours = {{{"black", "#000000"},
                                                {"blue", "#0000ff"},
                                                {"cyan", "#00ffff"},
                                                {"darkgreen", "#006400"},
                                                {"darkorange", "#ff8c00"},
                                                {"lightgrey", "#d3d3d3"},
                                                {"palegreen", "#98fb98"},
                                                {"red", "#ff0000"},
                                                {"white", "#ffffff"},
                                                {"yellow", "#ffff00"}}};
  for (const Colour& colour : kColours)
    if (name == colour.name) return colour.value;
  return otherwise;
}

std::string lineColour(const std::string& name) { return colourValue(name, "#000000"); }
std::string fillColour(const std::string& name) { return colourValue(name, "#d3d3d3"); }

/// What Dia calls a family, "" being Times. Of PostScript's own it knows only the names below.
std::string diaFamily(const std::string& family) {
  if (family.empty() || family == "Times") return "serif";
  if (family == "Helvetica") return "sans";
  return family == "Courier" ? "monospace" : family;
}

/// What PostScript calls the letters of a family, "" being Times.
std::string postscriptName(const std::string& family, bool isBold) {
  const bool isTimes = family.empty() || family == "Times";
  return (isTimes ? "Times" : family) + (isBold ? "-Bold" : isTimes ? "-Roman" : "");
}

/// The length of a text as far as it can be told without its font; layout points.
double estimatedWidth(const std::string& text) {
  const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return kMeanAdvance * static_cast<double>(std::count_if(text.begin(), text.end(), isFirstByte));
}

/// Adds the objects of one drawing to a diagram.
class DiagramWriter {
 public:
  DiagramWriter(const DotDrawing& drawing, const DiaLook& look)
      : m_Drawing(drawing), m_Look(look) {}
  std::string write();

 private:
  double centimetres(double points) const { return points * kCentimetresPerPoint * m_Look.scale; }
  DiaPoint place(LayoutPoint point) const;
  void addNode(const DrawnNode& node);
  void addEllipse(const DrawnNode& node, double inset, bool filled);
  void addOctagon(const DrawnNode& node, double outset, bool filled);
  void addPattern(LinePattern pattern);
  void addSpline(const DrawnSpline& spline, const DrawnEdge& edge);
  void addArrow(const char* end);
  void addLabel(const std::vector<LabelLine>& lines, LayoutPoint centre,
                const std::string& colourName, bool isBold = false);
  void addText(const std::string& text, Justification justification, LayoutPoint anchor,
               const std::string& colour, bool isBold);

  const DotDrawing& m_Drawing;
  const DiaLook& m_Look;
  DiaXml m_Xml;
};

std::string DiagramWriter::write() {
  for (const DrawnNode& node : m_Drawing.nodes) addNode(node);
  for (const DrawnEdge& edge : m_Drawing.edges) {
    for (const DrawnSpline& spline : edge.splines) addSpline(spline, edge);
    addLabel(edge.label, edge.labelCentre, edge.fontColour, edge.isBold);
  }
  return m_Xml.finish();
}

/// Where a point of the layout lies in the diagram, the box of the drawing at its origin.
DiaPoint DiagramWriter::place(LayoutPoint point) const {
  return {centimetres(point.x - m_Drawing.bottomLeft.x),
          centimetres(m_Drawing.topRight.y - point.y)};
}

void DiagramWriter::addNode(const DrawnNode& node) {
  const bool filled = !node.fillColour.empty();
  m_Xml.beginGroup();
  switch (node.shape) {
    case NodeShape::Ellipse:
      addEllipse(node, 0.0, filled);
      break;
    case NodeShape::DoubleCircle:
      addEllipse(node, kGapBetweenOutlines, filled);
      addEllipse(node, 0.0, false);
      break;
    case NodeShape::DoubleOctagon:
      addOctagon(node, 0.0, filled);
      addOctagon(node, kGapBetweenOutlines, false);
      break;
  }
  addLabel(node.label, node.centre, node.fontColour);
  m_Xml.endGroup();
}

/// Adds an ellipse whose line runs `inset` within that of the node.
void DiagramWriter::addEllipse(const DrawnNode& node, double inset, bool filled) {
  const double width = std::max(node.width - 2.0 * inset, 0.0);
  const double height = std::max(node.height - 2.0 * inset, 0.0);
  m_Xml.beginObject("Standard - Ellipse", "0");
  m_Xml.point("elem_corner", place({node.centre.x - width / 2.0, node.centre.y + height / 2.0}));
  m_Xml.real("elem_width", centimetres(width));
  m_Xml.real("elem_height", centimetres(height));
  m_Xml.real("border_width", centimetres(kLineWidth));
  m_Xml.colour("border_color", lineColour(node.colour));
  if (filled) m_Xml.colour("inner_color", fillColour(node.fillColour));
  m_Xml.boolean("show_background", filled);
  addPattern(node.pattern);
  m_Xml.endObject();
}

/// Adds an octagon whose lines run `outset` around those of the node's inner one. That one is a
/// regular octagon, stretched to the size of the node; the lines of the other are parallel to its.
void DiagramWriter::addOctagon(const DrawnNode& node, double outset, bool filled) {
  const double tangent = std::sqrt(2.0) - 1.0;  // half a side by half the height of a regular one
  const double halfWidth = std::max(node.width / 2.0 - kGapBetweenOutlines, 0.0);
  const double halfHeight = std::max(node.height / 2.0 - kGapBetweenOutlines, 0.0);
  const double diagonal = std::hypot(halfWidth, halfHeight);
  // The upright line moves by `outset`, the slanting one too; their corner moves along the first.
  const auto shift = [&](double along, double across) {
    return along > 0.0 ? outset * (diagonal - across) / along : 0.0;
  };
  const double right = halfWidth + outset;
  const double top = halfHeight + outset;
  const double cornerY = halfHeight * tangent + shift(halfWidth, halfHeight);
  const double cornerX = halfWidth * tangent + shift(halfHeight, halfWidth);

  std::vector<DiaPoint> corners;
  for (const LayoutPoint& corner :
       {LayoutPoint{right, -cornerY}, LayoutPoint{right, cornerY}, LayoutPoint{cornerX, top},
        LayoutPoint{-cornerX, top}, LayoutPoint{-right, cornerY}, LayoutPoint{-right, -cornerY},
        LayoutPoint{-cornerX, -top}, LayoutPoint{cornerX, -top}})
    corners.push_back(place({node.centre.x + corner.x, node.centre.y + corner.y}));
  m_Xml.beginObject("Standard - Polygon", "0");
  m_Xml.points("poly_points", corners);
  m_Xml.real("line_width", centimetres(kLineWidth));
  m_Xml.colour("line_color", lineColour(node.colour));
  if (filled) m_Xml.colour("inner_color", fillColour(node.fillColour));
  m_Xml.boolean("show_background", filled);
  m_Xml.endObject();
}

/// Adds how the line of an object is broken, which a solid one does not say.
void DiagramWriter::addPattern(LinePattern pattern) {
  if (pattern == LinePattern::Solid) return;
  m_Xml.enumeration("line_style", pattern == LinePattern::Dashed ? kDashedLine : kDottedLine);
  m_Xml.real("dashlength", centimetres(kDashLength));
}

/// Adds a line. `dot` ends it at the foot of the arrow head, Dia at its tip: a straight piece leads
/// from one to the other.
void DiagramWriter::addSpline(const DrawnSpline& spline, const DrawnEdge& edge) {
  std::vector<LayoutPoint> points = spline.points;
  if (spline.startTip) {
    const LayoutPoint foot = points.front();
    points.insert(points.begin(), {*spline.startTip, foot, foot});
  }
  if (spline.endTip) {
    const LayoutPoint foot = points.back();
    points.insert(points.end(), {foot, foot, *spline.endTip});
  }
  std::vector<DiaPoint> places;
  places.reserve(points.size());
  for (const LayoutPoint& point : points) places.push_back(place(point));

  m_Xml.beginObject("Standard - BezierLine", "0");
  m_Xml.points("bez_points", places);
  m_Xml.colour("line_color", lineColour(edge.colour));
  m_Xml.real("line_width", centimetres(edge.lineWidth));
  addPattern(edge.pattern);
  if (spline.startTip) addArrow("start_arrow");
  if (spline.endTip) addArrow("end_arrow");
  m_Xml.endObject();
}

void DiagramWriter::addArrow(const char* end) {
  const std::string name = end;
  m_Xml.enumeration(end, kFilledTriangle);
  m_Xml.real((name + "_length").c_str(), centimetres(kArrowLength));
  m_Xml.real((name + "_width").c_str(), centimetres(kArrowWidth));
}

void DiagramWriter::addLabel(const std::vector<LabelLine>& lines, LayoutPoint centre,
                             const std::string& colourName, bool isBold) {
  const std::string colour = lineColour(colourName);
  double halfWidth = 0.0;
  for (const LabelLine& line : lines)
    halfWidth = std::max(halfWidth, estimatedWidth(line.text) / 2.0);
  const double distancesAbove = (static_cast<double>(lines.size()) - 1.0) / 2.0;
  double baseline = centre.y - kBaselineBelowMiddle + distancesAbove * kLineDistance;
  for (const LabelLine& line : lines) {
    // A single line fills the label: in its middle it lies right without knowing its width.
    const auto justification = lines.size() == 1 ? Justification::Centre : line.justification;
    double x = centre.x;
    if (justification == Justification::Left) x -= halfWidth;
    if (justification == Justification::Right) x += halfWidth;
    if (!line.text.empty()) addText(line.text, justification, {x, baseline}, colour, isBold);
    baseline -= kLineDistance;
  }
}

/// Adds one line of text; `anchor` is the left end, middle or right end of its baseline.
void DiagramWriter::addText(const std::string& text, Justification justification,
                            LayoutPoint anchor, const std::string& colour, bool isBold) {
  m_Xml.beginObject("Standard - Text", "1");
  m_Xml.point("obj_pos", place(anchor));
  m_Xml.beginComposite("text", "text");
  m_Xml.string("string", text);
  m_Xml.font("font", diaFamily(m_Look.font), postscriptName(m_Look.font, isBold), isBold);
  m_Xml.real("height", centimetres(kFontSize) / kFontSizePerTextHeight);
  m_Xml.point("pos", place(anchor));
  m_Xml.colour("color", colour);
  m_Xml.enumeration("alignment", alignment(justification));
  m_Xml.endComposite();
  m_Xml.enumeration("valign", kAnchorIsBaseline);
  m_Xml.endObject();
}

}  // namespace

std::string diaDiagram(const DotDrawing& drawing, const DiaLook& look) {
  return DiagramWriter(drawing, look).write();
}

bool writeDiaDiagram(const std::string& layoutFile, const std::string& diagramFile) {
  std::ifstream layout(layoutFile, std::ios::binary);
  std::ostringstream text;
  text << layout.rdbuf();
  const std::optional<DotDrawing> drawing = readDotDrawing(text.str());
  if (!drawing) return false;
  const std::string diagram = diaDiagram(*drawing);
  return !diagram.empty() && writeWholeFile(diagramFile, diagram).empty();
}

}  // namespace quorbel
