#pragma once

// In which order the nodes of a lattice stand, and their times.

#include <optional>
#include <string>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// Brings the nodes into an order in which `start` is the first, `end` the last, and every link of
/// an acyclic lattice leads to a later node; otherwise they stay in the order they are in, as far
/// as that goes. `start` must have no link that enters it and `end` none that leaves it; they are
/// the same only when there is one node. Links follow the nodes, `times` too; `isCyclic` is set.
void orderNodes(WordLattice& lattice, int start, int end,
                std::vector<std::optional<double>>& times);

/// Gives every node of an ordered lattice its time from `times`, which has one for each node that
/// the file gives one. A node without takes that of its latest neighbour before it. When the file
/// gives none, or none above 0, each node's depth stands for its time, `hasTimes` becomes false.
/// The last node's time is above 0 in any case.
void setTimes(WordLattice& lattice, const std::vector<std::optional<double>>& times);

}  // namespace quorbel
