#pragma once

// What a drawing shows of a lattice: the texts of its links, the paths that are marked, and what
// the legend says of them.

#include <string>
#include <vector>

#include "drawing/description.h"
#include "drawing/drawing.h"
#include "drawing/legend.h"

namespace quorbel {

struct DrawingContent {
  std::vector<std::string> labels;  ///< of each link by its index
  DrawingMarks marks;
  std::vector<LegendEntry> legend;  ///< only with a reference
};

/// Finds what the options ask for, into `content`. Returns "", or one line that says why there is
/// no such drawing: an attribute, a score or a link that is none, or no path to be marked.
std::string findContent(const WordLattice& lattice, const DrawingOptions& options,
                        const DrawingStyle& style, DrawingContent& content);

}  // namespace quorbel
