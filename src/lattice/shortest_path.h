#pragma once

// The best path through a lattice under the score named by `currentScoreName`, and the sign that
// scores have. Language-model scale and word penalty play no part: a link costs exactly its score.
//
// A link without a score of that name costs 0.0, and gets the score by being looked at.

#include <vector>

#include "lattice/graph.h"

namespace quorbel {

/// Cost between nodes that no link joins, and the distance of nodes that cannot be reached.
inline constexpr double NO_EDGE_COST = 99999999.0;

/// Distances of all nodes from `source`, by Dijkstra's algorithm; of nodes at equal distance the
/// one with the lowest index is settled first, and of parallel links the first counts. Both arrays
/// are made nodeCount + 1 long; a node that was not reached has the distance NO_EDGE_COST and the
/// predecessor `source`. Returns whether every node was reached. Takes O((nodes + links) log
/// links).
///
/// With negative costs (scores that are not negated) the distances are what the algorithm yields
/// when a settled node is never looked at again.
bool computeDistances(LatticeAdjacency& adjacency, int source, std::vector<double>& distances,
                      std::vector<int>& predecessors);

/// Finds the best path from start to end node, or (`throughSelected`) the best one that leads
/// through `graph.selectedEdge`, and returns its total cost: NO_EDGE_COST or more when there is no
/// such path, -1.0 without a lattice.
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
