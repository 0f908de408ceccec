// The layout reader, on files in either form that `dot` has written, for a small fixed lattice.

#include <sstream>
#include <stdexcept>

#include "layout/layout_reader.h"
#include "quiet.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int kNodes = 5;
  quorbel::Graph graph;
  graph.adjacency = std::make_unique<quorbel::LatticeAdjacency>(kNodes, 0, kNodes - 1);
  graph.nodes.resize(graph.adjacency->outgoing.size());
  for (int node = 0; node + 1 < kNodes; ++node)
    quorbel::addEdge(*graph.adjacency, node, node + 1, {{"a", 1.5}}, "<w in='yes'/>", node);
  std::vector<quorbel::LayoutItem> items;
  std::istringstream stream(std::string(data, data + size));
  try {
    quorbel::readDotLayout(graph, items, stream);
  } catch (const std::out_of_range&) {
    // a statement that ends amid a position
  }
  return 0;
}
