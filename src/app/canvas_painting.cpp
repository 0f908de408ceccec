#include "app/canvas_painting.h"

#include <cairomm/surface.h>

#include <algorithm>

#include "app/play_light.h"
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

bool isVisible(const Box& box, const Box& area) {
  return box.left - kOutlineReach < area.left + area.width &&
         box.left + box.width + kOutlineReach > area.left &&
         box.top - kOutlineReach < area.top + area.height &&
         box.top + box.height + kOutlineReach > area.top;
}

/// Whether nothing of a box and its outline is cut off by the area's borders.
bool isWhole(const Box& box, const Box& area) {
  return box.left - kOutlineReach >= area.left && box.top - kOutlineReach >= area.top &&
         box.left + box.width + kOutlineReach <= area.left + area.width &&
         box.top + box.height + kOutlineReach <= area.top + area.height;
}

/// The boxes of edges to be painted, as far as they are visible.
class EdgeBoxes {
 public:
  EdgeBoxes(const CanvasMapping& mapping, const CanvasHighlights& highlights, const Box& area)
      : m_Mapping(mapping), m_Highlights(highlights), m_Area(area) {}

  /// Adds the label of an edge and then its nodes, these in the order of the drawing.
  void add(const LayoutItem& edge, const BoxColours& label, const BoxColours& nodes) {
    addBox(labelBox(m_Mapping, edge), label, labelRadius(m_Mapping.zoom));
    m_Positions.clear();
    addPositions(edge.startNode);
    if (edge.endNode != edge.startNode) addPositions(edge.endNode);
    std::sort(m_Positions.begin(), m_Positions.end());
    for (const std::size_t position : m_Positions) {
      const Box box = nodeBox(m_Mapping, m_Highlights.items[position]);
      addBox(box, nodes, box.height);
    }
  }

  /// Many boxes are stamped on a copy of the canvas in memory, which the display gets as a whole:
  /// painted one by one they would take several times as long.
  void paint(const Cairo::RefPtr<Cairo::Context>& context, BoxStamps& stamps) const {
    constexpr std::size_t kFewBoxes = 30;
    if (m_Boxes.size() <= kFewBoxes) return paintEach(context);
    const Box bounds = visibleBounds();
    const auto copy = Cairo::ImageSurface::create(Cairo::FORMAT_RGB24, bounds.width, bounds.height);
    const auto copyContext = Cairo::Context::create(copy);
    copyContext->translate(-bounds.left, -bounds.top);
    copyContext->set_source(context->get_target(), 0, 0);
    copyContext->paint();
    for (const PaintedBox& painted : m_Boxes) {
      const auto& [box, colours, radius] = painted;
      if (isWhole(box, bounds))
        stamps.draw(copyContext, colours->fill, colours->outline, box.left, box.top, box.width,
                    box.height, radius);
      else  // tracing rounds a little differently along the cut
        paintOne(copyContext, painted);
    }
    context->set_source(copy, bounds.left, bounds.top);
    context->paint();
  }

 private:
  struct PaintedBox {
    Box box;
    const BoxColours* colours;
    int radius;
  };

  void addPositions(int nodeIndex) {
    const auto [first, last] = m_Highlights.nodeItems.find(nodeIndex);
    for (auto node = first; node != last; ++node) m_Positions.push_back(node->second);
  }

  void addBox(const Box& box, const BoxColours& colours, int radius) {
    if (isVisible(box, m_Area)) m_Boxes.push_back({box, &colours, radius});
  }

  void paintEach(const Cairo::RefPtr<Cairo::Context>& context) const {
    for (const PaintedBox& painted : m_Boxes) paintOne(context, painted);
  }

  static void paintOne(const Cairo::RefPtr<Cairo::Context>& context, const PaintedBox& painted) {
    const auto& [box, colours, radius] = painted;
    drawRoundedBox(context, colours->fill, colours->outline, box.left, box.top, box.width,
                   box.height, radius);
  }

  /// The part of the area that the boxes reach.
  Box visibleBounds() const {
    int left = m_Area.left + m_Area.width;
    int top = m_Area.top + m_Area.height;
    int right = m_Area.left;
    int bottom = m_Area.top;
    for (const PaintedBox& painted : m_Boxes) {
      const Box& box = painted.box;
      left = std::min(left, box.left - kOutlineReach);
      top = std::min(top, box.top - kOutlineReach);
      right = std::max(right, box.left + box.width + kOutlineReach);
      bottom = std::max(bottom, box.top + box.height + kOutlineReach);
    }
    left = std::max(left, m_Area.left);
    top = std::max(top, m_Area.top);
    right = std::min(right, m_Area.left + m_Area.width);
    bottom = std::min(bottom, m_Area.top + m_Area.height);
    return Box{left, top, right - left, bottom - top};
  }

  const CanvasMapping& m_Mapping;
  const CanvasHighlights& m_Highlights;
  const Box& m_Area;
  std::vector<PaintedBox> m_Boxes;
  std::vector<std::size_t> m_Positions;  ///< of an edge's nodes in the drawing
};

}  // namespace

void paintHighlights(const Cairo::RefPtr<Cairo::Context>& context, const CanvasMapping& mapping,
                     const CanvasHighlights& highlights, const Box& area, BoxStamps& stamps) {
  EdgeBoxes boxes(mapping, highlights, area);
  for (const LayoutItem& edge : highlights.selected)
    if (edge.x != LayoutItem::kNoPosition) boxes.add(edge, kSelectedLabel, kSelectedNode);
  for (const LayoutItem& item : highlights.items)
    if (!item.isNode && labelBox(mapping, item).contains(highlights.pointerX, highlights.pointerY))
      boxes.add(item, kHoveredLabel, kHoveredNode);
  boxes.paint(context, stamps);

  if (!highlights.playPosition || !isAnyLit(*highlights.playPosition)) return;
  const double position = *highlights.playPosition;
  context->set_source_rgb(0, 1, 0);
  for (const LayoutItem& item : highlights.items) {
    if (!item.isNode || !isLit(item.time, position)) continue;
    const Box box = nodeBox(mapping, item);
    if (isVisible(box, area)) context->rectangle(box.left, box.top, box.width, box.height);
  }
  context->fill();
}

}  // namespace quorbel
