#pragma once

// Where Graphviz put the nodes and labels of a lattice.

#include <iosfwd>
#include <vector>

#include "lattice/graph.h"
#include "lattice/layout_item.h"

namespace quorbel {

/// Reads the layout that `dot` wrote to kLayoutFile: the bounding box into `graph` and one item a
/// node and edge into `items`, in the order of the file. Each edge gets the word and score of the
/// first link that has its id, "" and 0.0 when none has; links get the current score as 0.0 where
/// they lack it. Nodes that have no slot in `graph.nodes` are left out; the index one past the last
/// has one, since a link may name it.
///
/// Without the file, or without a lattice, everything stays as it was. An edge without label, or
/// without a number in its comment, prints "comment not found in dot file" on standard output and
/// gives no item; one without label position prints "lp not found in dot file" and has none.
///
/// Throws std::out_of_range for a statement that ends amid a position; `items` then holds what came
/// before it.
void readDotLayout(Graph& graph, std::vector<LayoutItem>& items);

/// The same from an open file.
void readDotLayout(Graph& graph, std::vector<LayoutItem>& items, std::istream& stream);

}  // namespace quorbel
