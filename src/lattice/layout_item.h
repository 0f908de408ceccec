#pragma once

#include <string>

namespace quorbel {

/// One node or edge of the drawing as Graphviz laid it out.
///
/// Coordinates are layout points exactly as `dot` printed them: origin at the bottom left, y
/// upwards. An edge whose label has no place in the drawing has x and y of kNoPosition.
struct LayoutItem {
  static constexpr int kNoPosition = -1;

  int linkId = -1;    ///< edge: the link's id; node: -1
  int x = 0;          ///< node: centre; edge: centre of the label; layout points
  int y = 0;          ///< as x
  int width = 0;      ///< node: inches x 80, truncated; edge: 0
  int height = 0;     ///< as width
  int nodeIndex = 0;  ///< node: its index in the lattice; edge: 0
  int startNode = 0;  ///< edge: index of the node it leaves; node: 0
  int endNode = 0;    ///< edge: index of the node it enters; node: 0
  double time = 0.0;  ///< node: fraction of the utterance; edge: 0
  bool isNode = false;
  std::string label;   ///< edge: the label text as `dot` wrote it; node: empty
  std::string word;    ///< edge: the link's word, often an XML fragment; node: empty
  double score = 0.0;  ///< edge: the link's score under `currentScoreName`; node: 0
};

}  // namespace quorbel
