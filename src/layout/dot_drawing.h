#pragma once

// What `dot` drew, read from its "dot" output: shapes, lines and texts with their colours.
// What the canvas points at and highlights is read by layout_reader.h.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "layout/label_lines.h"

namespace quorbel {

/// A place in the drawing: layout points, origin at the bottom left, y upwards.
struct LayoutPoint {
  double x = 0.0;
  double y = 0.0;
};

enum class LinePattern { Solid, Dashed, Dotted };

enum class NodeShape { Ellipse, DoubleCircle, DoubleOctagon };

/// A node as it is drawn. Colours are Graphviz's names.
struct DrawnNode {
  std::vector<LabelLine> label;
  LayoutPoint centre;
  double width = 0.0;   ///< of the outermost line, layout points
  double height = 0.0;  ///< as width
  NodeShape shape = NodeShape::Ellipse;
  std::string colour;  ///< of the lines
  LinePattern pattern = LinePattern::Solid;
  std::string fillColour;  ///< empty: not filled
  std::string fontColour;
};

/// A curve of Bezier pieces, three points each after the first, with the tips of its arrow heads.
struct DrawnSpline {
  std::vector<LayoutPoint> points;
  std::optional<LayoutPoint> startTip;
  std::optional<LayoutPoint> endTip;
};

/// An edge as it is drawn. Colours are Graphviz's names.
struct DrawnEdge {
  std::vector<DrawnSpline> splines;  ///< one; `dot` joins several where lines are merged
  std::string colour;                ///< of line and arrow head
  double lineWidth = 1.0;            ///< layout points
  LinePattern pattern = LinePattern::Solid;
  std::vector<LabelLine> label;  ///< empty without a label or a place for it
  LayoutPoint labelCentre;
  std::string fontColour;
  bool isBold = false;  ///< the letters of the label, by the name of their font
};

struct DotDrawing {
  LayoutPoint bottomLeft;  ///< of the bounding box
  LayoutPoint topRight;
  std::vector<DrawnNode> nodes;  ///< in the order of the file, as the edges
  std::vector<DrawnEdge> edges;
};

/// Reads the drawing from `layout`, the text that `dot -Tdot` wrote. Coordinates beyond any real
/// drawing are cut to a billion points. A node that is invisible or without a place and a spline
/// that is none are left out. Returns nothing when the text is no such drawing or not all of it.
std::optional<DotDrawing> readDotDrawing(std::string_view layout);

}  // namespace quorbel
