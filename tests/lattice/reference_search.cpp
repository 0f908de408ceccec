#include "reference_search.h"

#include "lattice/shortest_path.h"

namespace quorbel {
namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

void writeNode(ReferencePath& path, int& index, int node) {
  if (index < static_cast<int>(path.pathNodes.size()))
    path.pathNodes[at(index)] = node;
  else
    ++path.nodesDropped;
  ++index;
}

void writeLinkId(ReferencePath& path, int count, int linkId) {
  if (count < static_cast<int>(path.linkIds.size()))
    path.linkIds[at(count)] = linkId;
  else
    ++path.linkIdsDropped;
}

double distanceOf(const ReferenceDistances& search, int node, int source) {
  if (node < static_cast<int>(search.distances.size())) return search.distances[at(node)];
  return node == source ? 0.0 : NO_EDGE_COST;
}

void walkBack(ReferencePath& path, int& index, int node, int source,
              const ReferenceDistances& search) {
  while (node != source) {
    writeNode(path, index, node);
    const bool hasPredecessor = node < static_cast<int>(search.predecessors.size());
    node = hasPredecessor ? search.predecessors[at(node)] : source;
  }
}

bool isStepOf(const std::vector<int>& pathNodes, int from, int to) {
  const int nodeCount = static_cast<int>(pathNodes.size());
  for (int k = 0; k <= nodeCount - 2; ++k)
    if (pathNodes[at(k + 1)] == from && pathNodes[at(k)] == to) return true;
  return false;
}

void collectLinks(LatticeAdjacency& adjacency, ReferencePath& path) {
  int currentStart = -1;
  int currentEnd = -1;
  double bestScore = NO_EDGE_COST;
  int bestId = -1;
  int count = 0;
  for (int i = 0; i < adjacency.nodeCount; ++i) {
    for (Edge& edge : adjacency.outgoing[at(i)]) {
      if (!isStepOf(path.pathNodes, i, edge.endNode)) continue;
      const double score = edge.scores[currentScoreName];
      if (currentStart == -1 && currentEnd == -1) {
        currentStart = i;
        currentEnd = edge.endNode;
        bestScore = score;
        bestId = edge.linkId;
      } else if (i == currentStart && edge.endNode == currentEnd) {
        if (score < bestScore) {
          bestScore = score;
          bestId = edge.linkId;
        }
      } else {
        writeLinkId(path, count, bestId);
        ++count;
        currentStart = i;
        currentEnd = edge.endNode;
        bestScore = score;
        bestId = edge.linkId;
      }
    }
  }
  writeLinkId(path, count, bestId);
}

}  // namespace

double referenceEdgeCost(LatticeAdjacency& adjacency, int from, int to) {
  if (from == to) return 0.0;
  for (Edge& edge : adjacency.outgoing[at(from)])
    if (edge.endNode == to) return edge.scores[currentScoreName];
  return NO_EDGE_COST;
}

ReferenceDistances referenceComputeDistances(LatticeAdjacency& adjacency, int source) {
  const int nodeCount = adjacency.nodeCount;
  ReferenceDistances search;
  std::vector<bool> unsettled(at(nodeCount), true);
  for (int v = 0; v < nodeCount; ++v) {
    search.distances.push_back(referenceEdgeCost(adjacency, source, v));
    search.predecessors.push_back(source);
  }
  if (source < nodeCount) unsettled[at(source)] = false;

  int settledAfterSource = 0;
  while (settledAfterSource < nodeCount - 1) {
    double minimum = NO_EDGE_COST;
    int u = -1;
    for (int v = 0; v < nodeCount; ++v) {
      if (unsettled[at(v)] && search.distances[at(v)] < minimum) {
        minimum = search.distances[at(v)];
        u = v;
      }
    }
    if (minimum == NO_EDGE_COST) return search;
    unsettled[at(u)] = false;
    ++settledAfterSource;
    for (const Edge& edge : adjacency.outgoing[at(u)]) {
      const int w = edge.endNode;
      if (w == nodeCount || !unsettled[at(w)]) continue;
      const double candidate = search.distances[at(u)] + referenceEdgeCost(adjacency, u, w);
      if (candidate < search.distances[at(w)]) {
        search.distances[at(w)] = candidate;
        search.predecessors[at(w)] = u;
      }
    }
  }
  search.allSettled = true;
  return search;
}

ReferencePath referenceShortestPath(Graph& graph, bool throughSelected) {
  LatticeAdjacency& adjacency = *graph.adjacency;
  const int s = adjacency.startNode;
  const int e = adjacency.endNode;
  ReferencePath path;
  path.pathNodes.assign(at(adjacency.nodeCount), 0);
  path.linkIds.assign(at(adjacency.nodeCount), -1);
  int index = 0;
  if (!throughSelected) {
    const ReferenceDistances search = referenceComputeDistances(adjacency, s);
    walkBack(path, index, e, s, search);
    path.total = distanceOf(search, e, s);
  } else {
    const int a = graph.selectedEdge.startNode;
    const int b = graph.selectedEdge.endNode;
    const double c = graph.selectedEdge.score;
    const ReferenceDistances fromB = referenceComputeDistances(adjacency, b);
    walkBack(path, index, e, b, fromB);
    writeNode(path, index, b);
    const ReferenceDistances fromS = referenceComputeDistances(adjacency, s);
    walkBack(path, index, a, s, fromS);
    path.total = distanceOf(fromB, e, b) + distanceOf(fromS, a, s) + c;
  }
  collectLinks(adjacency, path);
  return path;
}

}  // namespace quorbel
