// Labels from the XML of a word. The input's first bytes are the index path and the mode, up to a
// zero byte; the rest is the word.

#include <algorithm>

#include "lattice/xml_label.h"
#include "quiet.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::uint8_t* const end = data + size;
  const std::uint8_t* const pathEnd = std::find(data, end, std::uint8_t{0});
  if (pathEnd == end || pathEnd == data) return 0;
  const bool byIndex = (data[0] & 1u) != 0;
  const quorbel::IndexPath path(data + 1, pathEnd);
  quorbel::Graph graph;
  graph.fieldsByIndex = {path, {0, 0}};
  graph.fieldsByName = {{path, "in"}, {{1}, "out"}};
  quorbel::edgeXmlLabel(graph, std::string(pathEnd + 1, end), byIndex);
  return 0;
}
