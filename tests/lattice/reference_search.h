#pragma once

// The search as a plain procedure that scans arrays and lists from end to end: slow, but short
// enough to be held against its description. Tests compare the fast search with it.

#include <vector>

#include "lattice/graph.h"

namespace quorbel {

/// Arrays of nodeCount entries.
struct ReferenceDistances {
  bool allSettled = false;
  std::vector<double> distances;
  std::vector<int> predecessors;
};

struct ReferencePath {
  double total = 0.0;
  std::vector<int> pathNodes;
  std::vector<int> linkIds;
  int nodesDropped = 0;    ///< what did not fit into `pathNodes`
  int linkIdsDropped = 0;  ///< what did not fit into `linkIds`
};

double referenceEdgeCost(LatticeAdjacency& adjacency, int from, int to);

/// The index nodeCount has no place in the arrays: as a source it is a node outside of them, as the
/// end of a link it is passed over.
ReferenceDistances referenceComputeDistances(LatticeAdjacency& adjacency, int source);

/// Nothing leads to the index nodeCount: its distance is NO_EDGE_COST and its predecessor the
/// source, unless it is the source.
ReferencePath referenceShortestPath(Graph& graph, bool throughSelected);

}  // namespace quorbel
