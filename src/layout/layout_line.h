#pragma once

// The one-line form of layouts, a line at a time. Lines are scanned by the places of their
// characters, since values in that form know no escaped quotes.

#include <string>

#include "layout/layout_collector.h"

namespace quorbel {

/// Scans a line into `collector`: a bounding box, a node or an edge. Any other line gives nothing.
///
/// A node needs `pos`, `width` and `height` as its first quoted values and in this order, an edge
/// `label`, `comment` and `lp` in this order; what is not where it belongs is missing.
///
/// Throws std::out_of_range for a line that ends amid a position; of a box, the width may then have
/// been taken.
void scanLayoutLine(const std::string& line, LayoutCollector& collector);

}  // namespace quorbel
