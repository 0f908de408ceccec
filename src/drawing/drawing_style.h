#pragma once

// How a drawing looks, and by which attributes `dot` is asked for that.

#include <string>

namespace quorbel {

/// How a drawing looks; as the viewer's unless something is set.
struct DrawingStyle {
  bool isMonochrome = false;  ///< what is marked is told by lines and letters, in black and grey
  bool isCompact = false;     ///< little room around nodes, as narrow columns want it
  bool isTight = false;       ///< hardly a margin around the drawing
  /// Family of all texts, without double quotes, backslashes and what is not UTF-8; "" for
  /// Graphviz's own.
  std::string font;
  std::string boldFont;  ///< of the best path's words in black and white, as font; "" for no other
};

/// What a link or a node is marked as. Of an end of the lattice only isStart and isEnd count.
struct Mark {
  bool isBest = false;     ///< on the best path
  bool isOracle = false;   ///< on the path nearest to the reference
  bool isThrough = false;  ///< on the best path through the chosen link
  bool isChosen = false;   ///< the chosen link itself
};

/// The attributes of the whole drawing, statements in lines of their own; "" for the viewer's look.
std::string styleStatements(const DrawingStyle& style);

/// The attributes of a link of that mark. The best path goes before the others.
std::string linkLook(const DrawingStyle& style, const Mark& mark);

/// The attributes of a node with one mark, and of the two ends.
std::string nodeLook(const DrawingStyle& style, const Mark& mark);
std::string startLook(const DrawingStyle& style);
std::string endLook(const DrawingStyle& style);

/// The name of the bold letters of a family; "" stands for Graphviz's own.
std::string boldFontOf(const std::string& font);

/// An SVG of `dot`, which takes the name of bold letters for that of a family ("DejaVu Sans Bold"),
/// with the family's own and the weight. No label can hold what is looked for: its double quotes
/// are entities.
std::string svgWithFamilies(std::string svg, const std::string& font);

}  // namespace quorbel
