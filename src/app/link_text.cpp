#include "app/link_text.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>

#include "app/label_search.h"
#include "lattice/number_text.h"

namespace quorbel {
namespace {

/// The time of a node in seconds; no number for a node that the lattice does not have.
double secondsOf(const Graph& graph, int node) {
  if (!graph.adjacency || node < 0 || node >= graph.adjacency->nodeCount) return std::nan("");
  return graph.nodes[static_cast<std::size_t>(node)].time * graph.duration;
}

std::string timeText(double start, double end) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(2);
  text << std::fixed << start << " to " << end << " s";
  return text.str();
}

}  // namespace

const Edge* linkOf(const Graph& graph, const LayoutItem& edge) {
  if (!graph.adjacency || edge.startNode < 0) return nullptr;
  const auto start = static_cast<std::size_t>(edge.startNode);
  if (start >= graph.adjacency->outgoing.size()) return nullptr;
  const std::vector<Edge>& links = graph.adjacency->outgoing[start];
  const auto found = std::find_if(links.begin(), links.end(), [&edge](const Edge& link) {
    return link.linkId == edge.linkId && link.endNode == edge.endNode;
  });
  return found == links.end() ? nullptr : &*found;
}

std::string linkText(const Graph& graph, const LayoutItem& edge) {
  std::string text = shownLabel(edge);
  const double start = secondsOf(graph, edge.startNode);
  const double end = secondsOf(graph, edge.endNode);
  if (std::isfinite(start) && std::isfinite(end)) text += "\n" + timeText(start, end);
  const Edge* const link = linkOf(graph, edge);
  if (!link) return text;
  const auto addScore = [&text](const ScoreMap::value_type& score) {
    text += "\n" + score.first + ": " + formatNumber(score.second);
  };
  const auto counts = link->scores.find(currentScoreName);
  if (counts != link->scores.end()) addScore(*counts);
  for (auto score = link->scores.begin(); score != link->scores.end(); ++score)
    if (score != counts) addScore(*score);
  return text;
}

}  // namespace quorbel
