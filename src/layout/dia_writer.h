#pragma once

// The drawing as a diagram for Dia, for versions of `dot` that do not write that format.

#include <string>

#include "layout/dot_drawing.h"

namespace quorbel {

/// Writes the drawing whose layout `dot -Tdot` wrote to `layoutFile` as a Dia diagram to
/// `diagramFile`: nodes, edges with arrow heads, and labels, in the places, sizes and colours in
/// which `dot` draws them.
///
/// Returns false when the layout cannot be read or is cut short, or when the diagram cannot be
/// written; an existing diagram then stays as it was (see writeWholeFile). Takes memory for the
/// whole diagram, about 3 KB an edge.
bool writeDiaDiagram(const std::string& layoutFile, const std::string& diagramFile);

/// How a diagram differs from what `dot` draws by itself.
struct DiaLook {
  double scale = 1.0;  ///< how long a layout point is; points
  std::string font;    ///< family of all letters; "" for Times
};

/// The text of that diagram, XML in UTF-8; "" when memory did not suffice.
std::string diaDiagram(const DotDrawing& drawing, const DiaLook& look = {});

}  // namespace quorbel
