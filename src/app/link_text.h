#pragma once

// What is told of a link under the pointer, without a window.

#include <string>

#include "lattice/graph.h"
#include "lattice/layout_item.h"

namespace quorbel {

/// The link of the lattice that a drawn edge shows; null when the lattice has none of its id
/// between its nodes. It belongs to `graph`. Looks only at the links of one node.
const Edge* linkOf(const Graph& graph, const LayoutItem& edge);

/// What a drawn edge holds, a line each: its label, its time such as "0.42 to 0.97 s" where the
/// times are numbers, and its scores by name, the one that counts first. UTF-8, no line end behind
/// the last.
std::string linkText(const Graph& graph, const LayoutItem& edge);

}  // namespace quorbel
