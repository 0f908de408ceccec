#include "drawing/drawing_style.h"

namespace quorbel {
namespace {

// Lines that are told apart from thin solid ones in print; `thick` is in layout points.
const std::string kThick = ", penwidth=2.5";
const std::string kDashed = ", style=dashed";
const std::string kDotted = ", style=dotted";

const std::string kBoldEnd = " Bold";  ///< behind a family, as pango takes it

std::string colouredLink(const Mark& mark) {
  if (mark.isBest) return "color=blue, fontcolor=blue";
  if (mark.isOracle) return "color=darkgreen, fontcolor=darkgreen";
  if (mark.isChosen) return "color=red, fontcolor=red";
  if (mark.isThrough) return "color=cyan, fontcolor=cyan";
  return "color=black";
}

std::string blackLink(const DrawingStyle& style, const Mark& mark) {
  std::string look = "color=black";
  if (mark.isBest || mark.isChosen) look += kThick;
  if (mark.isBest && !style.boldFont.empty()) look += ", fontname=\"" + style.boldFont + '"';
  if (!mark.isBest && !mark.isOracle && (mark.isThrough || mark.isChosen)) look += kDotted;
  return look;
}

}  // namespace

std::string styleStatements(const DrawingStyle& style) {
  std::string text;
  const std::string font = style.font.empty() ? "" : "fontname=\"" + style.font + '"';
  if (style.isTight) text += "graph [margin=0, pad=0.02];\n";
  if (style.isCompact) {
    text += "graph [ranksep=0.12, nodesep=0.1];\n";
    text += "node [width=0.3, height=0.3, margin=\"0.02,0.01\"];\nedge [arrowsize=0.7];\n";
  }
  if (!font.empty()) text += "node [" + font + "];\nedge [" + font + "];\n";
  return text;
}

std::string linkLook(const DrawingStyle& style, const Mark& mark) {
  return (style.isMonochrome ? blackLink(style, mark) : colouredLink(mark)) +
         (mark.isOracle ? kDashed : "");
}

std::string nodeLook(const DrawingStyle& style, const Mark& mark) {
  const std::string shape = style.isCompact ? "" : "shape=doubleoctagon, ";
  if (style.isMonochrome) {
    if (mark.isBest) return shape + "color=black, style=filled, fillcolor=lightgrey";
    if (mark.isOracle) return "style=dashed";
    return shape + "color=black, style=filled, fillcolor=white";
  }
  if (mark.isBest) return shape + "color=blue, style=filled, fillcolor=yellow";
  if (mark.isOracle) return "color=darkgreen, style=filled, fillcolor=palegreen";
  return shape + "color=red, style=filled, fillcolor=cyan";
}

std::string startLook(const DrawingStyle& style) {
  return std::string("shape=doublecircle, color=") + (style.isMonochrome ? "black" : "darkorange") +
         ", style=filled, fillcolor=lightgrey";
}

std::string endLook(const DrawingStyle& style) {
  return std::string("shape=doublecircle, color=") + (style.isMonochrome ? "black" : "red") +
         ", style=filled, fillcolor=lightgrey";
}

std::string boldFontOf(const std::string& font) {
  return font.empty() ? "Times-Bold" : font + kBoldEnd;
}

std::string svgWithFamilies(std::string svg, const std::string& font) {
  if (font.empty()) return svg;
  const std::string wrong = "font-family=\"" + boldFontOf(font) + '"';
  const std::string right = "font-family=\"" + font + R"(" font-weight="bold")";
  for (std::size_t at = svg.find(wrong); at != std::string::npos; at = svg.find(wrong, at)) {
    svg.replace(at, wrong.size(), right);
    at += right.size();
  }
  return svg;
}

}  // namespace quorbel
