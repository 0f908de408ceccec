#pragma once

// What a selection of edges does, without a window.

#include <vector>

#include "lattice/layout_item.h"
#include "layout/node_items.h"
#include "sound/waveform.h"

namespace quorbel {

/// Takes the edge out of the selection when one with its link id is in it, else appends a copy.
void toggleSelected(std::vector<LayoutItem>& selection, const LayoutItem& edge);

/// The stretch of sound that a selection spans, from the times of its edges' nodes among `items`;
/// a node that is missing counts as time 0.0. An edge that takes no time spans the whole sound and
/// more. An empty selection gives the inverted range 1.0 to 0.0.
SoundRange rangeOf(const std::vector<LayoutItem>& selection, const NodeItems& nodeItems,
                   const std::vector<LayoutItem>& items);

}  // namespace quorbel
