#include "app/canvas_geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace quorbel {

bool operator==(const Box& a, const Box& b) {
  return a.left == b.left && a.top == b.top && a.width == b.width && a.height == b.height;
}

std::ostream& operator<<(std::ostream& stream, const Box& box) {
  return stream << box.width << " x " << box.height << " at " << box.left << ", " << box.top;
}

namespace {

LayoutItem node(int x, int y, int width, int height) {
  LayoutItem item;
  item.isNode = true;
  item.x = x;
  item.y = y;
  item.width = width;
  item.height = height;
  return item;
}

LayoutItem edge(int x, int y, const std::string& label) {
  LayoutItem item;
  item.x = x;
  item.y = y;
  item.label = label;
  return item;
}

/// A mapping without any scroll, whose picture begins at the canvas' corner.
CanvasMapping plainMapping(float ratioX, float ratioY, int imageHeight, float zoom) {
  CanvasMapping mapping;
  mapping.ratioX = ratioX;
  mapping.ratioY = ratioY;
  mapping.imageHeight = imageHeight;
  mapping.zoom = zoom;
  return mapping;
}

TEST(CanvasMapping, HasRatiosOfTheUnzoomedPictureToTheLayout) {
  const CanvasMapping mapping =
      mapCanvas({1500, 800}, {1000, 300}, {750, 400}, {750, 400}, 0.5f, 0, 0);
  EXPECT_EQ(mapping.ratioX, 1.5f);
  EXPECT_EQ(mapping.ratioY, 800.0f / 300.0f);
  EXPECT_EQ(mapping.imageHeight, 800);
  EXPECT_EQ(mapping.zoom, 0.5f);
}

TEST(CanvasMapping, CutsScrollOffsetsOff) {
  const CanvasMapping mapping =
      mapCanvas({900, 900}, {900, 900}, {900, 900}, {900, 900}, 1.0f, 17.9, 300.999);
  EXPECT_EQ(mapping.scrollX, 17);
  EXPECT_EQ(mapping.scrollY, 300);
}

struct OriginCase {
  const char* what;
  int canvas, shown;
  double scroll;
  int origin;
};

const OriginCase kOrigins[] = {
    {"a canvas as large as the picture", 300, 300, 0, 0},
    {"a wider canvas has the picture in its middle", 800, 300, 0, 250},
    {"each is halved before subtracting", 800, 301, 0, 250},
    {"each is halved before subtracting", 801, 300, 0, 250},
    {"a narrower canvas", 300, 801, 0, -250},
    {"a scrolled one has it at the offset", 800, 300, 1, 1},
    {"a scrolled one has it at the offset", 300, 801, 407.5, 407},
    {"less than a pixel is no scrolling", 800, 300, 0.99, 250},
};

TEST(CanvasMapping, CentresThePictureUnlessScrolled) {
  for (const OriginCase& c : kOrigins) {
    SCOPED_TRACE(c.what);
    const int other = 100;
    const CanvasMapping across =
        mapCanvas({900, 900}, {900, 900}, {c.shown, other}, {c.canvas, other}, 1, c.scroll, 0);
    EXPECT_EQ(across.originX, c.origin);
    EXPECT_EQ(across.originY, 0);
    const CanvasMapping down =
        mapCanvas({900, 900}, {900, 900}, {other, c.shown}, {other, c.canvas}, 1, 0, c.scroll);
    EXPECT_EQ(down.originX, 0);
    EXPECT_EQ(down.originY, c.origin);
  }
}

TEST(CanvasMapping, ScrolledInOneDirectionStaysCentredInTheOther) {
  const CanvasMapping mapping =
      mapCanvas({900, 100}, {900, 100}, {900, 100}, {900, 400}, 1.0f, 200, 0);
  EXPECT_EQ(mapping.originX, 200);
  EXPECT_EQ(mapping.originY, 150);
}

TEST(NodeBox, HasItsMiddleAtTheNodeWithYUpwards) {
  EXPECT_EQ(nodeBox(plainMapping(1, 1, 800, 1), node(100, 50, 60, 40)), (Box{70, 730, 60, 40}));
}

TEST(NodeBox, IsAsWideAsTheVerticalRatioSays) {
  EXPECT_EQ(nodeBox(plainMapping(1.5f, 2, 800, 0.5f), node(100, 50, 60, 40)),
            (Box{52, 330, 60, 40}));
  EXPECT_EQ(nodeBox(plainMapping(2, 0.5f, 800, 1), node(100, 50, 60, 40)), (Box{140, 765, 30, 20}));
}

TEST(NodeBox, IsCutOffTowardsZero) {
  const CanvasMapping half = plainMapping(1, 1, 100, 0.5f);
  EXPECT_EQ(nodeBox(half, node(0, 100, 2, 2)), (Box{0, 0, 1, 1}));       // -0.5
  EXPECT_EQ(nodeBox(half, node(0, 100, 6, 6)), (Box{-1, -1, 3, 3}));     // -1.5
  EXPECT_EQ(nodeBox(half, node(11, 91, 7, 5)), (Box{3, 3, 3, 2}));       // 3.75, 3.25, 3.5, 2.5
  EXPECT_EQ(nodeBox(half, node(13, 88, 7, 5)), (Box{4, 4, 3, 2}));       // 4.75, 4.75
  EXPECT_EQ(nodeBox(half, node(-13, 122, 7, 5)), (Box{-8, -12, 3, 2}));  // -8.25, -12.25
  EXPECT_EQ(nodeBox(half, node(-14, 123, 7, 5)), (Box{-8, -12, 3, 2}));  // -8.75, -12.75
  EXPECT_EQ(nodeBox(half, node(-15, 125, 7, 5)), (Box{-9, -13, 3, 2}));  // -9.25, -13.75
}

TEST(NodeBox, IsCutOffAfterItsPlaceOnTheCanvasIsAdded) {
  CanvasMapping mapping = plainMapping(1, 1, 100, 0.5f);
  mapping.originX = 10;
  mapping.originY = 20;
  EXPECT_EQ(nodeBox(mapping, node(0, 100, 2, 2)), (Box{9, 19, 1, 1}));  // 9.5, 19.5
}

TEST(LabelBox, IsTwelvePixelsACharacterAndTwentyHigh) {
  EXPECT_EQ(labelBox(plainMapping(1, 1, 800, 1), edge(100, 50, "word")), (Box{76, 743, 48, 20}));
}

TEST(LabelBox, BeginsAThirdOfItsHeightAboveTheLabel) {
  const CanvasMapping mapping = plainMapping(1, 1, 800, 1);
  EXPECT_EQ(labelBox(mapping, edge(100, 50, "word")).top, 743);                        // 743.33
  EXPECT_EQ(labelBox(plainMapping(1, 1, 800, 0.6f), edge(100, 50, "word")).top, 446);  // 446.0
  EXPECT_EQ(labelBox(plainMapping(1, 1, 800, 0.3f), edge(100, 51, "word")).top, 222);  // 222.7
}

TEST(LabelBox, IsZoomedButNotScaledByTheRatios) {
  EXPECT_EQ(labelBox(plainMapping(1.5f, 2, 800, 0.5f), edge(100, 50, "yes")),
            (Box{66, 346, 18, 10}));
  EXPECT_EQ(labelBox(plainMapping(3, 0.25f, 800, 1), edge(100, 50, "yes")),
            (Box{282, 780, 36, 20}));
}

TEST(LabelBox, IsCutOffTowardsZero) {
  const CanvasMapping quarter = plainMapping(1, 1, 100, 0.25f);
  EXPECT_EQ(labelBox(quarter, edge(0, 100, "a")), (Box{-1, -1, 3, 5}));  // -1.5, -1.67
  EXPECT_EQ(labelBox(quarter, edge(5, 94, "a")), (Box{0, 0, 3, 5}));     // -0.25, -0.17
  EXPECT_EQ(labelBox(quarter, edge(13, 86, "a")), (Box{1, 1, 3, 5}));    // 1.75, 1.83
  const CanvasMapping odd = plainMapping(1, 1, 100, 0.37f);
  EXPECT_EQ(labelBox(odd, edge(50, 50, "abcde")).width, 22);  // 22.2
  EXPECT_EQ(labelBox(odd, edge(50, 50, "abcde")).height, 7);  // 7.4
  EXPECT_EQ(labelBox(plainMapping(1, 1, 100, 0.79f), edge(50, 50, "a")), (Box{34, 34, 9, 15}));
}

TEST(LabelBox, CountsCharactersAndNotBytes) {
  const CanvasMapping mapping = plainMapping(1, 1, 100, 1);
  const auto characters = [&](const char* label) {
    return labelBox(mapping, edge(0, 0, label)).width / 12;
  };
  EXPECT_EQ(characters(""), 0);
  EXPECT_EQ(characters("gut"), 3);
  EXPECT_EQ(characters("f\u00fcr"), 3);
  EXPECT_EQ(characters("\u65e5\u672c / \u20ac"), 6);
  EXPECT_EQ(characters("\U0001f642"), 1);
  EXPECT_EQ(characters("e\u0301"), 2);
}

TEST(LabelBox, OfTextWithoutCharactersHasNoWidthAndHoldsNothing) {
  const CanvasMapping mapping = plainMapping(1, 1, 100, 1);
  const Box box = labelBox(mapping, edge(50, 50, ""));
  EXPECT_EQ(box, (Box{50, 43, 0, 20}));
  EXPECT_FALSE(box.contains(50, 50));
}

TEST(LabelRadius, IsTheHeightOfTheLabel) {
  EXPECT_EQ(labelRadius(1.0f), 20);
  EXPECT_EQ(labelRadius(0.5f), 10);
  EXPECT_EQ(labelRadius(0.37f), 7);
  EXPECT_EQ(labelRadius(0.2f), 4);
}

TEST(Box, HoldsWhatLiesInsideItsBorder) {
  const Box box{10, 20, 30, 40};
  EXPECT_TRUE(box.contains(11, 21));
  EXPECT_TRUE(box.contains(39, 59));
  EXPECT_TRUE(box.contains(10.001, 20.001));
  EXPECT_TRUE(box.contains(39.999, 59.999));
  for (const auto& [x, y] :
       {std::pair(10.0, 40.0), std::pair(40.0, 40.0), std::pair(25.0, 20.0), std::pair(25.0, 60.0),
        std::pair(9.0, 40.0), std::pair(41.0, 40.0), std::pair(25.0, 19.0), std::pair(25.0, 61.0)})
    EXPECT_FALSE(box.contains(x, y)) << x << ", " << y;
}

TEST(EdgeAt, FindsTheFirstOfSeveralLabels) {
  const CanvasMapping mapping = plainMapping(1, 1, 100, 1);
  const std::vector<LayoutItem> items = {edge(500, 50, "far away"), edge(50, 50, "first"),
                                         edge(60, 50, "second")};
  EXPECT_EQ(edgeAt(mapping, items, 55, 50), &items[1]);  // both
  EXPECT_EQ(edgeAt(mapping, items, 85, 50), &items[2]);  // the first's ends at 80
}

TEST(EdgeAt, NeverFindsNodes) {
  const CanvasMapping mapping = plainMapping(1, 1, 100, 1);
  LayoutItem labelled = node(50, 50, 60, 40);
  labelled.label = "label";
  const std::vector<LayoutItem> items = {labelled, edge(50, 50, "label")};
  EXPECT_EQ(edgeAt(mapping, items, 50, 50), &items[1]);
  EXPECT_EQ(edgeAt(mapping, {labelled}, 50, 50), nullptr);
}

TEST(EdgeAt, FindsNothingOnABorderOrBeside) {
  const CanvasMapping mapping = plainMapping(1, 1, 100, 1);
  const std::vector<LayoutItem> items = {edge(50, 50, "word")};  // 48 x 20 at 26, 43
  EXPECT_NE(edgeAt(mapping, items, 27, 44), nullptr);
  EXPECT_NE(edgeAt(mapping, items, 73, 62), nullptr);
  for (const auto& [x, y] :
       {std::pair(26, 50), std::pair(74, 50), std::pair(50, 43), std::pair(50, 63)})
    EXPECT_EQ(edgeAt(mapping, items, x, y), nullptr) << x << ", " << y;
  EXPECT_EQ(edgeAt(mapping, {}, 50, 50), nullptr);
}

TEST(EdgeAt, TakesThePointAsItIsWithoutCuttingItOff) {
  const CanvasMapping mapping = plainMapping(1, 1, 100, 1);
  const std::vector<LayoutItem> items = {edge(50, 50, "word")};
  EXPECT_NE(edgeAt(mapping, items, 26.5, 50), nullptr);
  EXPECT_EQ(edgeAt(mapping, items, 25.5, 50), nullptr);
}

/// A random drawing and a random view of it.
struct View {
  explicit View(unsigned seed) : random(seed) {
    const Extent layout{number(50, 3000), number(50, 3000)};
    const Extent image{number(50, 3000), number(50, 3000)};
    const float zoom = std::uniform_real_distribution<float>(0.2f, 1.0f)(random);
    const Extent shown{static_cast<int>(static_cast<float>(image.width) * zoom),
                       static_cast<int>(static_cast<float>(image.height) * zoom)};
    const Extent canvas{number(50, 3000), number(50, 3000)};
    const double scrollX = number(0, 1) * number(0, 5000) / 4.0;
    const double scrollY = number(0, 1) * number(0, 5000) / 4.0;
    mapping = mapCanvas(image, layout, shown, canvas, zoom, scrollX, scrollY);
    for (int i = 0; i < 30; ++i) {
      const int x = number(-20, layout.width);
      const int y = number(-20, layout.height);
      items.push_back(number(0, 1) ? node(x, y, number(0, 200), number(0, 100))
                                   : edge(x, y, std::string(number(0, 12), 'x')));
    }
  }
  int number(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
  }

  std::mt19937 random;
  CanvasMapping mapping;
  std::vector<LayoutItem> items;
};

/// The value without its fraction, when it is not so near to a whole number that single precision
/// decides.
void expectCutOff(int actual, double exact) {
  const double tolerance = 0.01;
  EXPECT_LE(std::abs(actual), std::abs(exact) + tolerance) << exact;
  EXPECT_GT(std::abs(actual), std::abs(exact) - 1 - tolerance) << exact;
  if (std::abs(exact) > 1 + tolerance) {
    EXPECT_EQ(actual > 0, exact > 0) << exact;
  }
}

TEST(CanvasGeometry, BoxesAreTheExactOnesCutOffTowardsZero) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const View view(seed);
    const CanvasMapping& m = view.mapping;
    const double sx = m.ratioX, sy = m.ratioY, zoom = m.zoom;
    const double shiftX = m.originX - m.scrollX;
    const double shiftY = m.originY - m.scrollY;
    for (const LayoutItem& item : view.items) {
      const double fromTop = m.imageHeight - item.y * sy;
      if (item.isNode) {
        const Box box = nodeBox(m, item);
        expectCutOff(box.left, (item.x * sx - 0.5 * item.width * sx) * zoom + shiftX);
        expectCutOff(box.top, (fromTop - 0.5 * item.height * sy) * zoom + shiftY);
        expectCutOff(box.width, item.width * sy * zoom);
        expectCutOff(box.height, item.height * sy * zoom);
      } else {
        const Box box = labelBox(m, item);
        const double textWidth = 12.0 * static_cast<double>(item.label.size());
        expectCutOff(box.left, (item.x * sx - 0.5 * textWidth) * zoom + shiftX);
        expectCutOff(box.top, (fromTop - 20.0 / 3) * zoom + shiftY);
        expectCutOff(box.width, textWidth * zoom);
        expectCutOff(box.height, 20 * zoom);
      }
    }
    if (HasFailure()) break;
  }
}

TEST(CanvasGeometry, HitTestAgreesWithTheBoxesForEveryZoom) {
  int hits = 0;
  for (unsigned seed = 1000; seed < 1500; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const View view(seed);
    const auto check = [&](double x, double y) {
      const LayoutItem* expected = nullptr;
      for (const LayoutItem& item : view.items) {
        const Box box = labelBox(view.mapping, item);
        const bool isInside =
            box.left < x && x < box.left + box.width && box.top < y && y < box.top + box.height;
        if (!item.isNode && isInside && !expected) expected = &item;
      }
      EXPECT_EQ(edgeAt(view.mapping, view.items, x, y), expected) << x << ", " << y;
      if (expected) ++hits;
    };
    for (const LayoutItem& item : view.items) {
      if (item.isNode) continue;
      const Box box = labelBox(view.mapping, item);
      for (const int x : {box.left - 1, box.left, box.left + 1, box.left + box.width / 2,
                          box.left + box.width - 1, box.left + box.width})
        for (const int y : {box.top - 1, box.top, box.top + 1, box.top + box.height / 2,
                            box.top + box.height - 1, box.top + box.height})
          check(x, y);
    }
    if (HasFailure()) break;
  }
  EXPECT_GT(hits, 10000);
}

/// Not in the picture, and far enough from the limits that right and bottom can still be added.
void expectWithinReach(const Box& box) {
  const int reach = 1000000000;
  for (const int value : {box.left, box.top, box.width, box.height}) {
    EXPECT_GE(value, -reach);
    EXPECT_LE(value, reach);
  }
}

TEST(CanvasGeometry, DrawingWithoutWidthOrHeightGivesBoxesAllTheSame) {
  for (const Extent layout : {Extent{0, 0}, Extent{0, 100}, Extent{100, 0}}) {
    const CanvasMapping mapping = mapCanvas({100, 100}, layout, {100, 100}, {100, 100}, 1, 0, 0);
    for (const int place : {-5, 0, 5}) {
      expectWithinReach(nodeBox(mapping, node(place, place, 60, 40)));
      expectWithinReach(nodeBox(mapping, node(place, place, 0, 0)));
      expectWithinReach(labelBox(mapping, edge(place, place, "word")));
      const std::vector<LayoutItem> items = {edge(place, place, "word")};
      EXPECT_EQ(edgeAt(mapping, items, 50, 50), nullptr);
    }
  }
}

}  // namespace
}  // namespace quorbel
