#include "viewer_descriptions.h"

#include <functional>
#include <sstream>
#include <stdexcept>

#include "lattice/htk_reader.h"
#include "layout/dot_writer.h"

namespace quorbel {
namespace {

void selectMiddleLink(Graph& graph) {
  std::vector<LayoutItem> items;
  for (int node = 0; node < graph.adjacency->nodeCount; ++node) {
    for (const Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(node)]) {
      LayoutItem item;
      item.linkId = edge.linkId;
      item.startNode = node;
      item.endNode = edge.endNode;
      items.push_back(item);
    }
  }
  if (!items.empty()) setSelectedEdge(graph, true, items[items.size() / 2]);
}

std::string descriptionOf(const std::string& path, const std::function<void(Graph&)>& choose) {
  Graph graph;
  graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}};
  graph.fieldsByIndex = {{0, 0}, {0, 1}};
  const std::string error = readHtkLattice(graph, path);
  if (!error.empty()) throw std::runtime_error(error);
  choose(graph);
  std::ostringstream description;
  writeDescription(graph, description);
  return description.str();
}

}  // namespace

std::vector<std::string> viewerDescriptions(const std::string& path) {
  const auto showBestPath = [](Graph& graph) { setShowBestPath(graph, true); };
  const auto showBoth = [](Graph& graph) {
    setShowBestPath(graph, true);
    selectMiddleLink(graph);
  };
  return {viewerDescription(path),
          descriptionOf(path, [](Graph& graph) { graph.labelByValue = true; }),
          descriptionOf(path, [](Graph& graph) { graph.labelBySelectedXml = true; }),
          descriptionOf(path, showBestPath),
          descriptionOf(path, selectMiddleLink),
          descriptionOf(path, showBoth)};
}

std::string viewerDescription(const std::string& path) {
  return descriptionOf(path, [](Graph&) {});
}

}  // namespace quorbel
