#include "formats/lattice_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

#include "formats/dialect_writer.h"
#include "formats/normalise.h"
#include "lattice/htk_reader.h"
#include "lattice/shortest_path.h"
#include "lattice/xml_label.h"

namespace quorbel {

void readText(const std::string& text, WordLattice& lattice) {
  SlfFile file;
  file.bytes = text;
  EXPECT_EQ(parseSlf(file), "");
  EXPECT_EQ(normalise(file, lattice), "");
}

std::string errorOf(const std::string& text) {
  SlfFile file;
  file.bytes = text;
  const std::string error = parseSlf(file);
  WordLattice lattice;
  return error.empty() ? normalise(file, lattice) : error;
}

std::string importOf(const std::string& text) {
  SlfFile file;
  file.bytes = text;
  std::string error = parseSlf(file);
  WordLattice lattice;
  if (error.empty()) error = normalise(file, lattice);
  std::string dialect;
  if (error.empty()) error = dialectText(lattice, dialect);
  return error.empty() ? dialect : error;
}

ViewerView openInViewer(const std::string& text) {
  constexpr const char* kPath = "in-viewer.lat";
  std::ofstream(kPath, std::ios::binary) << text;
  ViewerView view;
  Graph& graph = view.graph;
  graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}};
  currentScoreName.clear();
  view.error = readHtkLattice(graph, kPath);
  if (!view.error.empty()) return view;
  view.scoreName = currentScoreName;
  for (const std::vector<Edge>& edges : graph.adjacency->outgoing)
    for (const Edge& edge : edges)
      view.labels.push_back(edgeXmlLabel(graph, edge.word, graph.labelBySelectedXml));

  const std::size_t count = static_cast<std::size_t>(graph.adjacency->nodeCount);
  std::vector<int> nodes(count, 0);
  std::vector<int> links(count, -1);
  view.cost = shortestPath(graph, nodes, links, false);
  const std::set<int> onPath(links.begin(), links.end());
  const auto firstUnused = std::find(nodes.begin(), nodes.end(), 0);
  int from = 0;
  for (auto node = std::make_reverse_iterator(firstUnused); node != nodes.rend(); ++node) {
    for (const Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(from)]) {
      if (edge.endNode != *node || onPath.count(edge.linkId) == 0) continue;
      view.linkIds.push_back(edge.linkId);
      const std::string label = edgeXmlLabel(graph, edge.word, false);
      if (label != "!NULL") view.words += (view.words.empty() ? "" : " ") + label;
    }
    from = *node;
  }
  return view;
}

}  // namespace quorbel
