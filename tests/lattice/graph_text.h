#pragma once

// Lattices and numbers as text, so that a test compares them whole and shows both when they differ.

#include <string>

#include "lattice/graph.h"

namespace quorbel {

/// The number with all its digits: "-0", "nan" and numbers that are nearly equal stay apart.
std::string exactText(double number);

/// "a=1 b=-0.5", in the map's order; a name or value that is missing shows as an empty place.
std::string describeScores(const ScoreMap& scores);

/// A line for each link, in the order of start nodes, those of the spare slot last:
/// "link 7 from 0 to 1 with a=10.5 as <w/>". Links without scores or word lack that part.
std::string describeLinks(const LatticeAdjacency& adjacency);

/// The lattice in `graph`: "3 nodes, 0 to 2", a line for each node that has a time or scores
/// ("node 1 at 0.5 with a=1"), and the links. "no lattice" without one.
std::string describeLattice(const Graph& graph);

}  // namespace quorbel
