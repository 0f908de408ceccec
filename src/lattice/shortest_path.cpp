#include "lattice/shortest_path.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <queue>
#include <utility>

namespace quorbel {
namespace {

std::size_t slot(int node) { return static_cast<std::size_t>(node); }

double& currentScore(Edge& edge) { return edge.scores[currentScoreName]; }

/// What a search looks at of each link, side by side in memory. A search meets the links in the
/// order of distances, for which their scores in maps of their own lie too far apart.
class SearchedLinks {
 public:
  explicit SearchedLinks(LatticeAdjacency& adjacency) : m_Adjacency(adjacency) {
    std::size_t count = 0;
    for (const std::vector<Edge>& edges : adjacency.outgoing) count += edges.size();
    m_Links.reserve(count);
    m_First.reserve(adjacency.outgoing.size() + 1);
    for (const std::vector<Edge>& edges : adjacency.outgoing) {
      m_First.push_back(m_Links.size());
      for (const Edge& edge : edges) {
        const auto score = edge.scores.find(currentScoreName);
        const bool hasScore = score != edge.scores.end();
        m_Links.push_back({hasScore ? score->second : 0.0, edge.endNode, hasScore});
      }
    }
    m_First.push_back(m_Links.size());
  }

  bool computeDistances(int source, std::vector<double>& distances, std::vector<int>& predecessors);

 private:
  struct Link {
    double score;
    int endNode;
    bool hasScore;
  };

  /// The link's score, which the link gets when it has none.
  double look(int startNode, std::size_t link) {
    if (!m_Links[link].hasScore) {
      currentScore(m_Adjacency.outgoing[slot(startNode)][link - m_First[slot(startNode)]]);
      m_Links[link].hasScore = true;
    }
    return m_Links[link].score;
  }

  LatticeAdjacency& m_Adjacency;
  std::vector<Link> m_Links;         ///< of all nodes, in the order of their lists
  std::vector<std::size_t> m_First;  ///< where the links of each node begin, and the end of all
};

bool SearchedLinks::computeDistances(int source, std::vector<double>& distances,
                                     std::vector<int>& predecessors) {
  const int nodeCount = m_Adjacency.nodeCount;
  const std::size_t slots = m_Adjacency.outgoing.size();
  distances.assign(slots, NO_EDGE_COST);
  predecessors.assign(slots, source);
  std::vector<char> settled(slots, false);
  std::vector<int> reachedFrom(slots, -1);  // the last node whose links to this one were seen

  using Candidate = std::pair<double, int>;  // distance, node
  std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> candidates;

  // Settles a node: its first link to every node that is not settled yet may shorten the way there.
  // The links of the source give the first distances, whatever they are.
  const auto settle = [&](int node) {
    settled[slot(node)] = true;
    for (std::size_t link = m_First[slot(node)]; link < m_First[slot(node) + 1]; ++link) {
      const int end = m_Links[link].endNode;
      if (end >= nodeCount || settled[slot(end)] || reachedFrom[slot(end)] == node) continue;
      reachedFrom[slot(end)] = node;
      const double score = look(node, link);
      const double distance = node == source ? score : distances[slot(node)] + score;
      if (node != source && !(distance < distances[slot(end)])) continue;
      distances[slot(end)] = distance;
      predecessors[slot(end)] = node;
      if (distance < NO_EDGE_COST) candidates.emplace(distance, end);
    }
  };

  distances[slot(source)] = 0.0;
  settle(source);
  int settledAfterSource = 0;
  while (settledAfterSource < nodeCount - 1) {
    if (candidates.empty()) return false;
    const auto [distance, node] = candidates.top();
    candidates.pop();
    if (settled[slot(node)] || distance != distances[slot(node)]) continue;  // found shorter since
    settle(node);
    ++settledAfterSource;
  }
  return true;
}

/// Writes the nodes of a path into an array, from its end backwards, as far as there is room.
class PathWriter {
 public:
  explicit PathWriter(std::vector<int>& nodes) : m_Nodes(nodes) {}

  void write(int node) {
    if (m_Count < m_Nodes.size()) m_Nodes[m_Count] = node;
    ++m_Count;
  }

  /// Writes `from` and the nodes before it; `source` itself is not written.
  void walkBack(int from, int source, const std::vector<int>& predecessors) {
    for (int node = from; node != source; node = predecessors[slot(node)]) write(node);
  }

 private:
  std::vector<int>& m_Nodes;
  std::size_t m_Count = 0;
};

/// Every step (from, to) between neighbours in a path written backwards. Where the path is shorter
/// than the array, its zeros stand for node 0, from which lattices usually start.
std::vector<std::pair<int, int>> stepsOf(const std::vector<int>& pathNodes) {
  std::vector<std::pair<int, int>> steps;
  for (std::size_t k = 0; k + 1 < pathNodes.size(); ++k) {
    const std::pair<int, int> step(pathNodes[k + 1], pathNodes[k]);
    if (steps.empty() || steps.back() != step) steps.push_back(step);
  }
  std::sort(steps.begin(), steps.end());
  return steps;
}

/// Collects the ids of the links that make the steps of a path. Of parallel links the first with
/// the lowest score counts, although distances are taken from the first link: the drawing shows the
/// better of two words that lead along the same path.
void collectLinks(LatticeAdjacency& adjacency, const std::vector<int>& pathNodes,
                  std::vector<int>& linkIds) {
  const std::vector<std::pair<int, int>> steps = stepsOf(pathNodes);
  std::pair<int, int> current(-1, -1);
  double bestScore = NO_EDGE_COST;
  int bestId = -1;
  std::size_t count = 0;
  const auto writeBest = [&] {
    if (count < linkIds.size()) linkIds[count] = bestId;
  };

  auto first = steps.begin();  // the first step that leaves a node not yet passed
  for (int start = 0; start < adjacency.nodeCount; ++start) {
    while (first != steps.end() && first->first < start) ++first;
    auto last = first;
    while (last != steps.end() && last->first == start) ++last;
    if (first == last) continue;
    for (Edge& edge : adjacency.outgoing[slot(start)]) {
      const std::pair<int, int> step(start, edge.endNode);
      if (!std::binary_search(first, last, step)) continue;
      const double score = currentScore(edge);
      if (step == current && !(score < bestScore)) continue;
      if (step != current && current.first != -1) {
        writeBest();
        ++count;
      }
      current = step;
      bestScore = score;
      bestId = edge.linkId;
    }
  }
  writeBest();
}

double pathThroughSelected(Graph& graph, PathWriter& path) {
  LatticeAdjacency& adjacency = *graph.adjacency;
  const int from = graph.selectedEdge.startNode;
  const int to = graph.selectedEdge.endNode;
  const auto isInside = [&](int node) { return node >= 0 && node <= adjacency.nodeCount; };
  if (!isInside(from) || !isInside(to))  // chosen from a drawing of some other lattice
    return NO_EDGE_COST + NO_EDGE_COST + graph.selectedEdge.score;

  std::vector<double> distances;
  std::vector<int> predecessors;
  SearchedLinks links(adjacency);
  links.computeDistances(to, distances, predecessors);
  path.walkBack(adjacency.endNode, to, predecessors);
  const double toEnd = distances[slot(adjacency.endNode)];
  path.write(to);
  links.computeDistances(adjacency.startNode, distances, predecessors);
  path.walkBack(from, adjacency.startNode, predecessors);
  return toEnd + distances[slot(from)] + graph.selectedEdge.score;
}

}  // namespace

bool computeDistances(LatticeAdjacency& adjacency, int source, std::vector<double>& distances,
                      std::vector<int>& predecessors) {
  return SearchedLinks(adjacency).computeDistances(source, distances, predecessors);
}

double shortestPath(Graph& graph, std::vector<int>& pathNodes, std::vector<int>& linkIds,
                    bool throughSelected) {
  if (!graph.adjacency) return -1.0;
  LatticeAdjacency& adjacency = *graph.adjacency;
  PathWriter path(pathNodes);
  double total;
  if (throughSelected) {
    total = pathThroughSelected(graph, path);
  } else {
    std::vector<double> distances;
    std::vector<int> predecessors;
    computeDistances(adjacency, adjacency.startNode, distances, predecessors);
    path.walkBack(adjacency.endNode, adjacency.startNode, predecessors);
    total = distances[slot(adjacency.endNode)];
  }
  collectLinks(adjacency, pathNodes, linkIds);
  return total;
}

void takeTheOppositeScore(Graph& graph, bool negate, std::vector<LayoutItem>& edgeLayouts) {
  if (!graph.adjacency || graph.nodes.empty()) {
    std::cout << "WARNING : takeTheOppositeScore called but either graph or nodes is NULL"
              << std::endl;
    return;
  }
  if (graph.scoresNegated == negate) return;
  graph.scoresNegated = negate;
  const auto flip = [](ScoreMap& scores) {
    for (auto& [name, score] : scores) score = -score;
  };
  for (LayoutItem& item : edgeLayouts) item.score = -item.score;
  for (Node& node : graph.nodes) flip(node.scores);
  for (std::vector<Edge>& edges : graph.adjacency->outgoing)
    for (Edge& edge : edges) flip(edge.scores);
}

}  // namespace quorbel
