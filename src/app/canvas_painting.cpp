#include "app/canvas_painting.h"

#include "app/rounded_box.h"

namespace quorbel {
namespace {

struct BoxColours {
  Rgba fill;
  Rgba outline;
};

constexpr BoxColours kSelectedLabel{{1, 0, 0, 0.15}, {1, 0, 0, 0.5}};
constexpr BoxColours kSelectedNode{{0, 1, 0, 0.4}, {0, 0, 1, 0.7}};
constexpr BoxColours kHoveredLabel{{0, 0, 1, 0.15}, {0, 0, 1, 0.5}};
constexpr BoxColours kHoveredNode{{1, 1, 0, 0.4}, {1, 0, 0, 0.7}};

/// The sound's beginning lights up nothing, so that a stopped cursor leaves no mark at the start.
constexpr double kFirstPlayPosition = 0.01;
/// How far ahead of the play position nodes light up, as a fraction of the utterance.
constexpr double kPlayAhead = 0.08;

class HighlightPainter {
 public:
  HighlightPainter(const Cairo::RefPtr<Cairo::Context>& context, const CanvasMapping& mapping,
                   const CanvasHighlights& highlights, const Box& area)
      : m_Context(context), m_Mapping(mapping), m_Highlights(highlights), m_Area(area) {}

  void paintEdge(const LayoutItem& edge, const BoxColours& label, const BoxColours& nodes) const {
    paintBox(labelBox(m_Mapping, edge), label, labelRadius(m_Mapping.zoom));
    paintNode(edge.startNode, nodes);
    if (edge.endNode != edge.startNode) paintNode(edge.endNode, nodes);
  }

  void paintPassedNode(const LayoutItem& node) const {
    const Box box = nodeBox(m_Mapping, node);
    if (!isVisible(box)) return;
    m_Context->set_source_rgb(0, 1, 0);
    m_Context->rectangle(box.left, box.top, box.width, box.height);
    m_Context->fill();
  }

 private:
  void paintNode(int nodeIndex, const BoxColours& colours) const {
    const auto [first, last] = m_Highlights.nodeItems.find(nodeIndex);
    for (auto node = first; node != last; ++node) {
      const Box box = nodeBox(m_Mapping, m_Highlights.items[node->second]);
      paintBox(box, colours, box.height);
    }
  }

  void paintBox(const Box& box, const BoxColours& colours, int radius) const {
    if (isVisible(box))
      drawRoundedBox(m_Context, colours.fill, colours.outline, box.left, box.top, box.width,
                     box.height, radius);
  }

  /// The outline reaches a little beyond its box.
  bool isVisible(const Box& box) const {
    constexpr int kOutline = 2;
    return box.left - kOutline < m_Area.left + m_Area.width &&
           box.left + box.width + kOutline > m_Area.left &&
           box.top - kOutline < m_Area.top + m_Area.height &&
           box.top + box.height + kOutline > m_Area.top;
  }

  const Cairo::RefPtr<Cairo::Context>& m_Context;
  const CanvasMapping& m_Mapping;
  const CanvasHighlights& m_Highlights;
  const Box& m_Area;
};

}  // namespace

void paintHighlights(const Cairo::RefPtr<Cairo::Context>& context, const CanvasMapping& mapping,
                     const CanvasHighlights& highlights, const Box& area) {
  const HighlightPainter painter(context, mapping, highlights, area);
  for (const LayoutItem& edge : highlights.selected)
    if (edge.x != LayoutItem::kNoPosition) painter.paintEdge(edge, kSelectedLabel, kSelectedNode);

  for (const LayoutItem& item : highlights.items)
    if (!item.isNode && labelBox(mapping, item).contains(highlights.pointerX, highlights.pointerY))
      painter.paintEdge(item, kHoveredLabel, kHoveredNode);

  if (!highlights.playPosition || !(*highlights.playPosition >= kFirstPlayPosition)) return;
  const double position = *highlights.playPosition;
  for (const LayoutItem& item : highlights.items)
    if (item.isNode && position < item.time && item.time < position + kPlayAhead)
      painter.paintPassedNode(item);
}

}  // namespace quorbel
