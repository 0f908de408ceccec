// The lattice reader, then both searches and the description, on whatever it read. The input's
// first byte chooses labels and highlighting; the rest is the lattice file.

#include <sstream>

#include "lattice/htk_reader.h"
#include "lattice/shortest_path.h"
#include "layout/dot_writer.h"
#include "quiet.h"

namespace {

void selectSomeLink(quorbel::Graph& graph, unsigned choice) {
  for (int node = 0; node < graph.adjacency->nodeCount; ++node) {
    for (const quorbel::Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(node)]) {
      if (choice-- > 0) continue;
      quorbel::LayoutItem item;
      item.linkId = edge.linkId;
      item.startNode = node;
      item.endNode = edge.endNode;
      quorbel::setSelectedEdge(graph, true, item);
      quorbel::refreshSelectedEdgeScore(graph);
      return;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const unsigned modes = data[0];
  quorbel::Graph graph;
  graph.scoresNegated = (modes & 1u) != 0;
  graph.labelByValue = (modes & 2u) != 0;
  graph.labelBySelectedXml = (modes & 4u) != 0;
  graph.showBestPath = (modes & 8u) != 0;
  graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}};
  graph.fieldsByIndex = {{0, 1}, {0, 2, 0}};
  quorbel::readHtkLattice(graph, quorbel::fileOf(data + 1, size - 1));
  if (!graph.adjacency) return 0;
  if ((modes & 16u) != 0) selectSomeLink(graph, modes >> 5u);
  std::ostringstream description;
  quorbel::writeDescription(graph, description);
  std::vector<quorbel::LayoutItem> noItems;
  quorbel::takeTheOppositeScore(graph, !graph.scoresNegated, noItems);
  return 0;
}
