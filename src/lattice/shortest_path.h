#pragma once

// The best path through a lattice under the score named by `currentScoreName`, and the sign that
// scores have. Language-model scale and word penalty play no part: a link costs exactly its score.
//
// A link without a score of that name costs 0.0, and gets the score by being looked at.

#include <vector>

#include "lattice/graph.h"

namespace quorbel {

/// Cost between nodes that no link joins, and so the distance of nodes that no way was found to.
inline constexpr double NO_EDGE_COST = 99999999.0;

/// Distances of all nodes from `source`, by Dijkstra's algorithm; of nodes at equal distance the
/// one with the lowest index is settled first, and of parallel links the first counts. Both arrays
/// are made nodeCount + 1 long. Returns whether every node was settled. Takes O((nodes + links) log
/// links).
///
/// A node is only settled at a distance below NO_EDGE_COST. One that was not has the predecessor
/// `source`, and as its distance NO_EDGE_COST or, where a link of the source leads to it, that
/// link's cost, be it larger or not-a-number.
///
/// With negative costs (scores that are not negated) the distances are what the algorithm yields
/// when a settled node is never looked at again.
bool computeDistances(LatticeAdjacency& adjacency, int source, std::vector<double>& distances,
                      std::vector<int>& predecessors);

/// Finds the best path from start to end node, or (`throughSelected`) the best one that leads
/// through `graph.selectedEdge`, and returns its total cost; -1.0 without a lattice. Where no way
/// was found its distance counts all the same: the total is NO_EDGE_COST without a path, and
/// through the selected edge NO_EDGE_COST for each part that is missing, plus the rest.
///
/// The caller makes both arrays nodeCount long and fills `pathNodes` with 0 and `linkIds` with -1.
/// `pathNodes` gets the nodes of the path from its end backwards, without the lattice's start node;
/// `linkIds` gets the ids of its links in order of their start nodes, of parallel links the one
/// with the lowest score. What does not fit into the arrays is dropped.
double shortestPath(Graph& graph, std::vector<int>& pathNodes, std::vector<int>& linkIds,
                    bool throughSelected);

/// Sets whether scores are kept with their sign flipped, and flips the sign of every score of the
/// lattice and of `edgeLayouts` when that changes. Without a lattice it prints a warning and
/// changes nothing.
void takeTheOppositeScore(Graph& graph, bool negate, std::vector<LayoutItem>& edgeLayouts);

}  // namespace quorbel
