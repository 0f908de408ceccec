#include "graph_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace quorbel {
namespace {

std::string withScores(const ScoreMap& scores) {
  return scores.empty() ? "" : " with " + describeScores(scores);
}

}  // namespace

std::string exactText(double number) {
  if (std::isnan(number)) return "nan";
  std::array<char, 32> text;
  return std::string(text.data(),
                     std::to_chars(text.data(), text.data() + text.size(), number).ptr);
}

std::string describeScores(const ScoreMap& scores) {
  std::string text;
  for (const auto& [name, score] : scores)
    text += (text.empty() ? "" : " ") + name + "=" + exactText(score);
  return text;
}

std::string describeLinks(const LatticeAdjacency& adjacency) {
  std::string text;
  for (std::size_t start = 0; start < adjacency.outgoing.size(); ++start) {
    for (const Edge& edge : adjacency.outgoing[start]) {
      text += "link " + std::to_string(edge.linkId) + " from " + std::to_string(start) + " to " +
              std::to_string(edge.endNode) + withScores(edge.scores);
      if (!edge.word.empty()) text += " as " + edge.word;
      text += "\n";
    }
  }
  return text;
}

std::string describeLattice(const Graph& graph) {
  if (!graph.adjacency) return "no lattice\n";
  const LatticeAdjacency& adjacency = *graph.adjacency;
  std::string text = std::to_string(adjacency.nodeCount) + " nodes, " +
                     std::to_string(adjacency.startNode) + " to " +
                     std::to_string(adjacency.endNode) + "\n";
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    const Node& node = graph.nodes[i];
    if (node.scores.empty() && exactText(node.time) == "0") continue;
    text += "node " + std::to_string(i) + " at " + exactText(node.time) + withScores(node.scores) +
            "\n";
  }
  return text + describeLinks(adjacency);
}

}  // namespace quorbel
