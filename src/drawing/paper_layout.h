#pragma once

// A drawing of `dot` put on paper: letters of the size that is asked for, rows that fit into a
// column, and a legend.

#include <optional>
#include <string>
#include <vector>

#include "drawing/legend.h"
#include "measures/lattice_sections.h"

namespace quorbel {

/// The size in which `dot` lays out letters; layout points.
inline constexpr double kLayoutFontSize = 14.0;

struct PaperOptions {
  double fontSize = kLayoutFontSize;  ///< points on paper
  std::optional<double> width;        ///< the most that the drawing may be wide on paper; points
  std::optional<int> pixelsPerInch;   ///< of a picture made of pixels, if not Graphviz's 96
};

struct PaperLayout {
  std::string description;  ///< asks `dot` for the drawing, with all things in their places
  double scale = 1.0;       ///< how long a layout point is on paper; points
};

/// Puts the drawing of a lattice with these sections, which `dot -Tdot` wrote into `layout`, on
/// paper. All is drawn smaller or larger so that letters get their size. A row has as many sections
/// as fit into the width; the node between two rows stands at the end of one and again at the
/// beginning of the next. Where a section alone is too wide all is drawn so much smaller that it
/// fits. The legend is below.
///
/// Returns nothing when `layout` is no drawing of the lattice.
std::optional<PaperLayout> putOnPaper(const std::string& layout, const LatticeSections& sections,
                                      const std::vector<LegendEntry>& legend,
                                      const PaperOptions& options);

}  // namespace quorbel
