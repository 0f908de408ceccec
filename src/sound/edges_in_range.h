#pragma once

#include <vector>

#include "lattice/layout_item.h"

namespace quorbel {

/// The edges of a drawing that lie inside a range of time.
///
/// `items` are the drawing's nodes and edges, mixed; times and the range's ends are fractions of
/// the utterance. An edge is inside when its start node's time is not before `rangeStart` and its
/// end node's not after `rangeEnd`; both nodes must be among the items (of several with one index
/// the first counts), the start node's time above -1 and the end node's at least -1. A time that is
/// NaN counts as 0. Of several edges with one link id only the first is taken.
///
/// Returns copies in the order of `items`; the cost is linear in their number.
std::vector<LayoutItem> edgesInRange(const std::vector<LayoutItem>& items, double rangeStart,
                                     double rangeEnd);

}  // namespace quorbel
