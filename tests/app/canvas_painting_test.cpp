#include "app/canvas_painting.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

#include "app/box_colours.h"
#include "app/painted_picture.h"

namespace quorbel {
namespace {

constexpr int kSide = 400;  ///< of the square canvas, in layout points and in pixels

LayoutItem node(int index, int x, int y, double time = 0.0, int width = 60, int height = 40) {
  LayoutItem item;
  item.isNode = true;
  item.nodeIndex = index;
  item.x = x;
  item.y = y;
  item.width = width;
  item.height = height;
  item.time = time;
  return item;
}

LayoutItem edge(int linkId, int startNode, int endNode, int x, int y, const std::string& label) {
  LayoutItem item;
  item.linkId = linkId;
  item.startNode = startNode;
  item.endNode = endNode;
  item.x = x;
  item.y = y;
  item.label = label;
  return item;
}

/// What is to be seen on a canvas.
struct Scene {
  std::vector<LayoutItem> items;
  std::vector<LayoutItem> selected;
  int pointerX = -100;
  int pointerY = -100;
  std::optional<double> playPosition;
  CanvasMapping mapping =
      mapCanvas({kSide, kSide}, {kSide, kSide}, {kSide, kSide}, {kSide, kSide}, 1.0f, 0, 0);

  void paintOn(PaintedPicture& picture, const Box& area = {0, 0, kSide, kSide}) const {
    NodeItems nodeItems;
    nodeItems.index(items);
    BoxStamps stamps;
    paintHighlights(picture.context, mapping,
                    {items, nodeItems, selected, pointerX, pointerY, playPosition}, area, stamps);
  }
};

/// Node 0 at 50, 200 (box 60 x 40 at 20, 180), node 1 at 350, 200 (box at 320, 180), node 2 apart;
/// between the first two, edge 7 with the label box 120 x 20 at 140, 193.
Scene sceneOfOneEdge() {
  Scene scene;
  scene.items = {node(0, 50, 200, 0.0), node(1, 350, 200, 0.5), node(2, 200, 50, 1.0),
                 edge(7, 0, 1, 200, 200, "ten signs.")};
  return scene;
}

const Box kLabel{140, 193, 120, 20};
const Box kStartNode{20, 180, 60, 40};
const Box kEndNode{320, 180, 60, 40};
const Box kOtherNode{170, 330, 60, 40};

/// Checks the pixels across the middle of each side of a box, and its middle.
void expectBox(const PaintedPicture& picture, const Box& box, const Rgba& fill, const Rgba& outline,
               const Pixel& below = kWhite) {
  const int right = box.left + box.width, bottom = box.top + box.height;
  const int middleX = box.left + box.width / 2, middleY = box.top + box.height / 2;
  const Pixel filled = below.under(fill);
  const Pixel inside = filled.under(outline);
  const Pixel outside = below.under(outline);
  expectPixel(picture, middleX, middleY, filled);
  expectPixel(picture, middleX, box.top - 2, below);
  expectPixel(picture, middleX, box.top - 1, outside);
  expectPixel(picture, middleX, box.top, inside);
  expectPixel(picture, middleX, box.top + 1, filled);
  expectPixel(picture, middleX, bottom - 2, filled);
  expectPixel(picture, middleX, bottom - 1, inside);
  expectPixel(picture, middleX, bottom, outside);
  expectPixel(picture, middleX, bottom + 1, below);
  expectPixel(picture, box.left - 2, middleY, below);
  expectPixel(picture, box.left + 2, middleY, filled);
  expectPixel(picture, right - 3, middleY, filled);
  expectPixel(picture, right + 1, middleY, below);
}

void expectUntouched(const PaintedPicture& picture, const Box& box) {
  for (int y = box.top - 2; y < box.top + box.height + 2; ++y)
    for (int x = box.left - 2; x < box.left + box.width + 2; ++x)
      expectPixel(picture, x, y, kWhite, 0);
}

PaintedPicture painted(const Scene& scene) {
  PaintedPicture picture(kSide, kSide);
  picture.fillWhite();
  scene.paintOn(picture);
  return picture;
}

TEST(CanvasPainting, SelectedEdgeHasBoxesAroundItsLabelAndNodes) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {scene.items[3]};
  const PaintedPicture picture = painted(scene);
  expectBox(picture, kLabel, kSelectedLabelFill, kSelectedLabelOutline);
  expectBox(picture, kStartNode, kSelectedNodeFill, kSelectedNodeOutline);
  expectBox(picture, kEndNode, kSelectedNodeFill, kSelectedNodeOutline);
  expectUntouched(picture, kOtherNode);
}

TEST(CanvasPainting, EdgeUnderThePointerHasBoxesAroundItsLabelAndNodes) {
  Scene scene = sceneOfOneEdge();
  scene.pointerX = 200;
  scene.pointerY = 200;
  const PaintedPicture picture = painted(scene);
  expectBox(picture, kLabel, kHoveredLabelFill, kHoveredLabelOutline);
  expectBox(picture, kStartNode, kHoveredNodeFill, kHoveredNodeOutline);
  expectBox(picture, kEndNode, kHoveredNodeFill, kHoveredNodeOutline);
  expectUntouched(picture, kOtherNode);
}

TEST(CanvasPainting, NothingStandsOutWithoutSelectionPointerAndSound) {
  const PaintedPicture picture = painted(sceneOfOneEdge());
  expectUntouched(picture, {2, 2, kSide - 4, kSide - 4});
}

TEST(CanvasPainting, PointerOnABorderMarksNothing) {
  for (const auto& [x, y, isInside] :
       {std::tuple(140, 200, false), std::tuple(141, 200, true), std::tuple(259, 200, true),
        std::tuple(260, 200, false), std::tuple(200, 193, false), std::tuple(200, 194, true),
        std::tuple(200, 212, true), std::tuple(200, 213, false)}) {
    SCOPED_TRACE(std::to_string(x) + ", " + std::to_string(y));
    Scene scene = sceneOfOneEdge();
    scene.pointerX = x;
    scene.pointerY = y;
    const PaintedPicture picture = painted(scene);
    expectPixel(picture, 50, 200, isInside ? kWhite.under(kHoveredNodeFill) : kWhite);
    expectPixel(picture, 200, 200, isInside ? kWhite.under(kHoveredLabelFill) : kWhite);
  }
}

TEST(CanvasPainting, SelectedEdgeWithoutPositionIsLeftOutWithItsNodes) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {scene.items[3]};
  scene.selected[0].x = -1;
  const PaintedPicture picture = painted(scene);
  expectUntouched(picture, {2, 2, kSide - 4, kSide - 4});

  scene.selected[0].x = 0;  // any other place counts
  scene.selected[0].y = -1;
  expectPixel(painted(scene), 50, 200, kWhite.under(kSelectedNodeFill));
  scene.selected[0].x = -2;
  expectPixel(painted(scene), 50, 200, kWhite.under(kSelectedNodeFill));
}

TEST(CanvasPainting, SelectedEdgeIsDrawnFromItsOwnRecord) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {edge(7, 2, 9, 200, 300, "abcde")};  // not as in the drawing; no node 9
  const PaintedPicture picture = painted(scene);
  expectBox(picture, {170, 93, 60, 20}, kSelectedLabelFill, kSelectedLabelOutline);
  expectBox(picture, kOtherNode, kSelectedNodeFill, kSelectedNodeOutline);
  expectUntouched(picture, kLabel);
  expectUntouched(picture, kStartNode);
  expectUntouched(picture, kEndNode);
}

TEST(CanvasPainting, EdgeWithoutLabelStillMarksItsNodes) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {scene.items[3]};
  scene.selected[0].label = "";
  const PaintedPicture picture = painted(scene);
  expectUntouched(picture, kLabel);
  expectBox(picture, kStartNode, kSelectedNodeFill, kSelectedNodeOutline);
}

TEST(CanvasPainting, EdgeToItsOwnNodeMarksItOnce) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {edge(8, 2, 2, 20, 20, "x")};
  expectBox(painted(scene), kOtherNode, kSelectedNodeFill, kSelectedNodeOutline);
}

TEST(CanvasPainting, SharedNodeIsMarkedForEachSelectedEdge) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {edge(8, 0, 1, 200, 380, "x"), edge(9, 0, 1, 200, 20, "x")};
  const Pixel once = kWhite.under(kSelectedNodeFill);
  expectPixel(painted(scene), 50, 200, once.under(kSelectedNodeFill));
}

TEST(CanvasPainting, PointerComesAfterTheSelection) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {scene.items[3]};
  scene.pointerX = 200;
  scene.pointerY = 200;
  const PaintedPicture picture = painted(scene);
  expectPixel(picture, 200, 203, kWhite.under(kSelectedLabelFill).under(kHoveredLabelFill));
  expectPixel(picture, 50, 200, kWhite.under(kSelectedNodeFill).under(kHoveredNodeFill));
  expectPixel(picture, 200, 193,
              kWhite.under(kSelectedLabelFill)
                  .under(kSelectedLabelOutline)
                  .under(kHoveredLabelFill)
                  .under(kHoveredLabelOutline));
}

TEST(CanvasPainting, AllLabelsUnderThePointerAreMarked) {
  Scene scene = sceneOfOneEdge();
  scene.items.push_back(edge(8, 1, 2, 200, 200, "ten signs."));
  scene.pointerX = 200;
  scene.pointerY = 200;
  const PaintedPicture picture = painted(scene);
  expectPixel(picture, 200, 203, kWhite.under(kHoveredLabelFill).under(kHoveredLabelFill));
  expectBox(picture, kOtherNode, kHoveredNodeFill, kHoveredNodeOutline);
  expectBox(picture, kStartNode, kHoveredNodeFill, kHoveredNodeOutline);
}

TEST(CanvasPainting, LabelsHaveTheirHeightAsRadiusAndNodesTheirOwn) {
  Scene scene = sceneOfOneEdge();
  scene.items[0] = node(0, 100, 300, 0.0, 160, 60);  // 160 x 60 at 20, 70
  scene.selected = {scene.items[3]};
  const PaintedPicture picture = painted(scene);
  // a curve passes 6/8 of the way from its ends to the corner: here 20 and 10 pixels apart
  expectPixel(picture, 145, 198, kWhite.under(kSelectedLabelFill));
  expectPixel(picture, 140, 193, kWhite, 0);
  PaintedPicture expected(kSide, kSide);
  expected.fillWhite();
  drawRoundedBox(expected.context, kSelectedLabelFill, kSelectedLabelOutline, 140, 193, 120, 20,
                 20);
  drawRoundedBox(expected.context, kSelectedNodeFill, kSelectedNodeOutline, 20, 70, 160, 60, 60);
  for (int y = 60; y < 215; ++y)
    for (int x = 10; x < 270; ++x) expectPixel(picture, x, y, expected.at(x, y));
}

struct PlayCase {
  double position, time;
  bool isPassed;
};

const PlayCase kPlayCases[] = {
    {0.5, 0.5, false},         // strictly after the position
    {0.5, 0.5000001, true},    //
    {0.5, 0.4999999, false},   // passed already
    {0.5, 0.5799999, true},    //
    {0.5, 0.5 + 0.08, false},  // strictly before the position and the stretch ahead
    {0.5, 0.59, false},        //
    {0.01, 0.05, true},        // the first position that counts
    {0.0099999, 0.05, false},  //
    {0.0, 0.05, false},        //
    {-0.5, -0.45, false},      // a range that begins before the sound
    {0.99, 1.0, true},         //
    {1.0, 1.0, false},         //
    {0.95, std::numeric_limits<double>::quiet_NaN(), false},
    {std::numeric_limits<double>::quiet_NaN(), 0.5, false},
};

TEST(CanvasPainting, NodesJustAheadOfTheSoundAreGreen) {
  for (const PlayCase& c : kPlayCases) {
    SCOPED_TRACE(std::to_string(c.position) + " and a node at " + std::to_string(c.time));
    Scene scene = sceneOfOneEdge();
    scene.items[0].time = c.time;
    scene.items[1].time = scene.items[2].time = 5.0;
    scene.playPosition = c.position;
    const PaintedPicture picture = painted(scene);
    if (!c.isPassed) {
      expectUntouched(picture, kStartNode);
      continue;
    }
    for (const auto& [x, y] : {std::pair(20, 180), std::pair(79, 180), std::pair(20, 219),
                               std::pair(79, 219), std::pair(50, 200)})
      expectPixel(picture, x, y, kGreen, 0);
    for (const auto& [x, y] :
         {std::pair(19, 200), std::pair(80, 200), std::pair(50, 179), std::pair(50, 220)})
      expectPixel(picture, x, y, kWhite, 0);
    expectUntouched(picture, kEndNode);
    expectUntouched(picture, kOtherNode);
  }
}

TEST(CanvasPainting, SeveralNodesTurnGreenAtATime) {
  Scene scene = sceneOfOneEdge();
  scene.items[0].time = 0.52;
  scene.items[1].time = 0.55;
  scene.playPosition = 0.5;
  const PaintedPicture picture = painted(scene);
  expectPixel(picture, 50, 200, kGreen, 0);
  expectPixel(picture, 350, 200, kGreen, 0);
  expectUntouched(picture, kOtherNode);
}

TEST(CanvasPainting, GreenCoversSelectionAndPointer) {
  Scene scene = sceneOfOneEdge();
  scene.selected = {scene.items[3]};
  scene.pointerX = 200;
  scene.pointerY = 200;
  scene.items[0].time = 0.5;
  scene.playPosition = 0.45;
  const PaintedPicture picture = painted(scene);
  for (int x = 20; x < 80; ++x) expectPixel(picture, x, 185, kGreen, 0);
  expectPixel(picture, 50, 179,
              kWhite.under(kSelectedNodeOutline).under(kHoveredNodeOutline));  // beside the fill
}

TEST(CanvasPainting, EdgesAreNeverGreen) {
  Scene scene = sceneOfOneEdge();
  scene.items[3].time = 0.5;
  scene.playPosition = 0.45;
  expectUntouched(painted(scene), kLabel);
}

/// The boxes painted by the plain procedure: every list is walked from its beginning to its end.
void paintPlainly(const Scene& scene, PaintedPicture& picture) {
  const auto& context = picture.context;
  const auto paintLabel = [&](const LayoutItem& item, const Rgba& fill, const Rgba& outline) {
    const Box box = labelBox(scene.mapping, item);
    const int radius = static_cast<int>(20.0f * scene.mapping.zoom);
    drawRoundedBox(context, fill, outline, box.left, box.top, box.width, box.height, radius);
  };
  const auto paintNodes = [&](const LayoutItem& ends, const Rgba& fill, const Rgba& outline) {
    for (const LayoutItem& item : scene.items) {
      if (!item.isNode) continue;
      if (item.nodeIndex != ends.startNode && item.nodeIndex != ends.endNode) continue;
      const Box box = nodeBox(scene.mapping, item);
      drawRoundedBox(context, fill, outline, box.left, box.top, box.width, box.height, box.height);
    }
  };
  for (const LayoutItem& entry : scene.selected) {
    if (entry.x == -1) continue;
    paintLabel(entry, kSelectedLabelFill, kSelectedLabelOutline);
    paintNodes(entry, kSelectedNodeFill, kSelectedNodeOutline);
  }
  for (const LayoutItem& item : scene.items) {
    if (item.isNode) continue;
    const Box box = labelBox(scene.mapping, item);
    if (!(box.left < scene.pointerX && scene.pointerX < box.left + box.width)) continue;
    if (!(box.top < scene.pointerY && scene.pointerY < box.top + box.height)) continue;
    paintLabel(item, kHoveredLabelFill, kHoveredLabelOutline);
    paintNodes(item, kHoveredNodeFill, kHoveredNodeOutline);
  }
  if (!scene.playPosition || *scene.playPosition < 0.01) return;
  context->set_source_rgb(0, 1, 0);
  for (const LayoutItem& outer : scene.items) {
    if (outer.isNode) continue;
    for (const LayoutItem& item : scene.items) {
      if (!item.isNode || item.time <= *scene.playPosition ||
          item.time >= *scene.playPosition + 0.08)
        continue;
      const Box box = nodeBox(scene.mapping, item);
      context->rectangle(box.left, box.top, box.width, box.height);
      context->fill();
    }
  }
}

/// A random scene whose boxes lie over each other and reach beyond the canvas.
Scene randomScene(unsigned seed) {
  std::mt19937 random(seed);
  const auto number = [&](int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
  };
  Scene scene;
  const int nodeCount = number(1, 8);
  const float zoom = static_cast<float>(number(4, 20)) / 20;
  const int shown = static_cast<int>(kSide * zoom);
  scene.mapping = mapCanvas({kSide, kSide}, {number(200, 600), number(200, 600)}, {shown, shown},
                            {kSide, kSide}, zoom, number(0, 1) * number(0, 50), 0);
  for (int i = 0; i < 25; ++i) {
    const int x = number(-1, kSide), y = number(-1, kSide);
    if (number(0, 2) == 0)
      scene.items.push_back(node(number(0, nodeCount - 1), x, y, number(0, 20) / 20.0,
                                 number(0, 120), number(0, 60)));
    else
      scene.items.push_back(edge(i, number(0, nodeCount), number(0, nodeCount - 1), x, y,
                                 std::string(static_cast<std::size_t>(number(0, 15)), 'x')));
  }
  const int selectedPercent = number(0, 100);
  for (const LayoutItem& item : scene.items)
    if (!item.isNode && number(0, 99) < selectedPercent) scene.selected.push_back(item);
  scene.pointerX = number(0, kSide);
  scene.pointerY = number(0, kSide);
  if (number(0, 1)) scene.playPosition = number(0, 100) / 100.0;
  return scene;
}

TEST(CanvasPainting, LooksAsThePlainProcedureMakesIt) {
  for (unsigned seed = 0; seed < 150 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const Scene scene = randomScene(seed);
    PaintedPicture expected(kSide, kSide);
    expected.fillWhite();
    paintPlainly(scene, expected);
    const PaintedPicture picture = painted(scene);
    for (int y = 0; y < kSide && !HasFailure(); ++y)
      for (int x = 0; x < kSide && !HasFailure(); ++x)
        expectPixel(picture, x, y, expected.at(x, y), 0);
  }
}

TEST(CanvasPainting, PartOfTheCanvasLooksAsItDoesInTheWhole) {
  constexpr int kCutOff = 3;  // pixels on curves differ a little where shapes are cut off
  std::mt19937 random(2008);
  const auto number = [&](int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
  };
  for (unsigned seed = 500; seed < 650 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const Scene scene = randomScene(seed);
    const PaintedPicture whole = painted(scene);
    const int left = number(0, kSide - 10), top = number(0, kSide - 10);
    const Box area{left, top, number(1, kSide - left), number(1, kSide - top)};
    PaintedPicture part(kSide, kSide);
    part.fillWhite();
    part.context->rectangle(area.left, area.top, area.width, area.height);
    part.context->clip();
    scene.paintOn(part, area);
    for (int y = 0; y < kSide && !HasFailure(); ++y) {
      for (int x = 0; x < kSide && !HasFailure(); ++x) {
        const bool isInside = area.left <= x && x < area.left + area.width && area.top <= y &&
                              y < area.top + area.height;
        expectPixel(part, x, y, isInside ? whole.at(x, y) : kWhite, isInside ? kCutOff : 0);
      }
    }
  }
}

}  // namespace
}  // namespace quorbel
