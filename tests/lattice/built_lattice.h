#pragma once

#include <memory>
#include <vector>

#include "lattice/graph.h"

namespace quorbel {

/// A link as a test writes it down.
struct Link {
  int start;
  int end;
  int id;
  ScoreMap scores;
};

inline Graph buildLattice(int nodeCount, int start, int end, const std::vector<Link>& links) {
  Graph graph;
  graph.adjacency = std::make_unique<LatticeAdjacency>(nodeCount, start, end);
  graph.nodes.resize(graph.adjacency->outgoing.size());
  for (const Link& link : links)
    addEdge(*graph.adjacency, link.start, link.end, link.scores, "", link.id);
  return graph;
}

/// Chooses the link that a path is to lead through.
inline void chooseLink(Graph& graph, int start, int end, double score) {
  LayoutItem item;
  item.startNode = start;
  item.endNode = end;
  item.score = score;
  setSelectedEdge(graph, true, item);
}

}  // namespace quorbel
