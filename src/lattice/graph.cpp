#include "lattice/graph.h"

#include <utility>

namespace quorbel {

std::string currentScoreName;

LatticeAdjacency::LatticeAdjacency(int count, int start, int end)
    : nodeCount(count),
      startNode(start),
      endNode(end),
      outgoing(static_cast<std::size_t>(count) + 1) {}

void addEdge(LatticeAdjacency& adjacency, int start, int end, ScoreMap scores, std::string word,
             int linkId) {
  if (adjacency.nodeCount < start || adjacency.nodeCount < end || start < 0 || end < 0) return;
  adjacency.outgoing[static_cast<std::size_t>(start)].push_back(
      Edge{end, std::move(scores), std::move(word), linkId});
}

void setSelectedEdge(Graph& graph, bool selected, const LayoutItem& edge) {
  graph.hasSelectedEdge = selected;
  graph.selectedEdge = edge;
  if (!selected) graph.selectedPathScore = -1.0;
}

void setShowBestPath(Graph& graph, bool on) {
  graph.showBestPath = on;
  if (!on) graph.bestPathScore = -1.0;
}

void refreshSelectedEdgeScore(Graph& graph) {
  if (!graph.hasSelectedEdge || !graph.adjacency) return;
  for (int node = 0; node < graph.adjacency->nodeCount; ++node) {
    for (const Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(node)]) {
      if (edge.linkId != graph.selectedEdge.linkId) continue;
      const auto score = edge.scores.find(currentScoreName);
      graph.selectedEdge.score = score == edge.scores.end() ? 0.0 : score->second;
      return;
    }
  }
}

}  // namespace quorbel
