#include "sound/edges_in_range.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <random>
#include <vector>

namespace quorbel {
namespace {

LayoutItem node(int index, double time) {
  LayoutItem item;
  item.isNode = true;
  item.nodeIndex = index;
  item.time = time;
  return item;
}

LayoutItem edge(int linkId, int startNode, int endNode) {
  LayoutItem item;
  item.linkId = linkId;
  item.startNode = startNode;
  item.endNode = endNode;
  return item;
}

std::vector<int> linkIds(const std::vector<LayoutItem>& edges) {
  std::vector<int> ids;
  for (const LayoutItem& item : edges) ids.push_back(item.linkId);
  return ids;
}

using Ids = std::vector<int>;

TEST(EdgesInRange, TakesEdgesWhoseNodesLieInside) {
  const std::vector<LayoutItem> items = {node(0, 0.0),  node(1, 0.25), node(2, 0.5), node(3, 1.0),
                                         edge(0, 0, 1), edge(1, 1, 2), edge(2, 2, 3)};
  EXPECT_EQ(linkIds(edgesInRange(items, 0.2, 0.6)), Ids({1}));
  EXPECT_EQ(linkIds(edgesInRange(items, 0.0, 1.0)), Ids({0, 1, 2}));
  EXPECT_EQ(linkIds(edgesInRange(items, 0.3, 0.45)), Ids());
}

TEST(EdgesInRange, TheRangesEndsBelongToIt) {
  const std::vector<LayoutItem> items = {node(0, 0.25), node(1, 0.75), edge(4, 0, 1)};
  EXPECT_EQ(linkIds(edgesInRange(items, 0.25, 0.75)), Ids({4}));
  EXPECT_EQ(linkIds(edgesInRange(items, 0.2501, 0.75)), Ids());
  EXPECT_EQ(linkIds(edgesInRange(items, 0.25, 0.7499)), Ids());
}

TEST(EdgesInRange, NodesMayStandBehindTheirEdges) {
  const std::vector<LayoutItem> items = {edge(4, 0, 1), node(1, 0.75), node(0, 0.25)};
  EXPECT_EQ(linkIds(edgesInRange(items, 0.0, 1.0)), Ids({4}));
}

TEST(EdgesInRange, AnEdgeWithoutANodeIsOutside) {
  const std::vector<LayoutItem> items = {node(0, 0.2), node(1, 0.4), edge(1, 0, 7), edge(2, 7, 1),
                                         edge(3, 7, 8)};
  EXPECT_EQ(linkIds(edgesInRange(items, -10.0, 10.0)), Ids());
}

TEST(EdgesInRange, TheStartMustLieAboveMinusOneAndTheEndNotBelowIt) {
  const std::vector<LayoutItem> items = {node(0, -1.0), node(1, -0.999), node(2, -1.001),
                                         edge(0, 0, 1), edge(1, 1, 0),   edge(2, 1, 2)};
  EXPECT_EQ(linkIds(edgesInRange(items, -10.0, 10.0)), Ids({1}));
}

TEST(EdgesInRange, ALinkIdIsTakenOnce) {
  LayoutItem first = edge(5, 0, 1);
  first.label = "first";
  LayoutItem second = edge(5, 0, 1);
  second.label = "second";
  const std::vector<LayoutItem> items = {node(0, 0.1), node(1, 0.2), first, second, edge(6, 0, 1)};
  const std::vector<LayoutItem> inside = edgesInRange(items, 0.0, 1.0);
  EXPECT_EQ(linkIds(inside), Ids({5, 6}));
  EXPECT_EQ(inside.at(0).label, "first");
}

TEST(EdgesInRange, ASecondEdgeOfALinkIdCountsWhenTheFirstIsOutside) {
  const std::vector<LayoutItem> items = {node(0, 0.1), node(1, 0.2), node(2, 0.9), edge(5, 0, 2),
                                         edge(5, 0, 1)};
  const std::vector<LayoutItem> inside = edgesInRange(items, 0.0, 0.5);
  ASSERT_EQ(inside.size(), 1u);
  EXPECT_EQ(inside.at(0).endNode, 1);
}

TEST(EdgesInRange, OfSeveralNodesWithOneIndexTheFirstCounts) {
  const std::vector<LayoutItem> items = {node(0, 0.1), node(1, 0.2), node(1, 0.9), edge(5, 0, 1)};
  EXPECT_EQ(linkIds(edgesInRange(items, 0.0, 0.5)), Ids({5}));
}

TEST(EdgesInRange, ATimeThatIsNotANumberCountsAsZero) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<LayoutItem> items = {node(0, nan), node(1, 0.2), node(2, nan), edge(5, 0, 1),
                                         edge(6, 0, 2)};
  EXPECT_EQ(linkIds(edgesInRange(items, 0.0, 0.5)), Ids({5, 6}));
  EXPECT_EQ(linkIds(edgesInRange(items, 0.1, 0.5)), Ids());
}

TEST(EdgesInRange, InfiniteTimesAreOutside) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<LayoutItem> items = {node(0, 0.1), node(1, infinity), node(2, -infinity),
                                         edge(5, 0, 1), edge(6, 2, 0)};
  EXPECT_EQ(linkIds(edgesInRange(items, 0.0, 1.0)), Ids());
}

TEST(EdgesInRange, CopiesTheWholeItem) {
  LayoutItem original = edge(5, 0, 1);
  original.x = 17;
  original.y = 23;
  original.label = "a b";
  original.word = "<w/>";
  original.score = -1.5;
  const std::vector<LayoutItem> inside =
      edgesInRange({node(0, 0.1), node(1, 0.2), original}, 0.0, 1.0);
  ASSERT_EQ(inside.size(), 1u);
  EXPECT_EQ(inside[0].x, 17);
  EXPECT_EQ(inside[0].y, 23);
  EXPECT_EQ(inside[0].label, "a b");
  EXPECT_EQ(inside[0].word, "<w/>");
  EXPECT_EQ(inside[0].score, -1.5);
  EXPECT_FALSE(inside[0].isNode);
}

TEST(EdgesInRange, AnEmptyDrawingHasNone) { EXPECT_TRUE(edgesInRange({}, 0.0, 1.0).empty()); }

/// The plain procedure: for each edge a walk over all items.
std::vector<LayoutItem> edgesInRangeByWalking(const std::vector<LayoutItem>& items, double start,
                                              double end) {
  const auto timeOf = [&items](int index) {
    for (const LayoutItem& item : items) {
      if (item.isNode && item.nodeIndex == index) return item.time;
    }
    return -2.0;
  };
  std::vector<LayoutItem> inside;
  for (const LayoutItem& item : items) {
    if (item.isNode) continue;
    const double startTime = timeOf(item.startNode);
    const double endTime = timeOf(item.endNode);
    if (!(startTime > -1.0 && endTime >= -1.0)) continue;
    if (!(startTime >= start && endTime <= end)) continue;
    bool known = false;
    for (const LayoutItem& other : inside) known = known || other.linkId == item.linkId;
    if (!known) inside.push_back(item);
  }
  return inside;
}

TEST(EdgesInRange, EqualsTheWalkOverAllItemsOnRandomDrawings) {
  constexpr unsigned kSeed = 20240611;
  std::mt19937 random(kSeed);
  const auto below = [&random](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  std::size_t found = 0;
  for (int round = 0; round < 2000; ++round) {
    std::vector<LayoutItem> items;
    const int indices = 1 + below(12);
    const int count = below(60);
    for (int i = 0; i < count; ++i) {
      const double time = (below(28) - 6) / 20.0;
      if (below(3) == 0) items.push_back(node(below(indices), time));
      if (below(3) > 0) items.push_back(edge(below(20), below(indices), below(indices)));
    }
    const double start = below(21) / 20.0;
    const double end = below(21) / 20.0;
    const Ids fast = linkIds(edgesInRange(items, start, end));
    ASSERT_EQ(fast, linkIds(edgesInRangeByWalking(items, start, end)))
        << "seed " << kSeed << ", round " << round;
    found += fast.size();
  }
  EXPECT_GT(found, 1000u);
}

TEST(EdgesInRange, ALargeDrawingTakesNoTimeToSpeakOf) {
  constexpr int kNodes = 50000;
  std::vector<LayoutItem> items;
  for (int i = 0; i < kNodes; ++i) items.push_back(node(i, static_cast<double>(i) / kNodes));
  for (int i = 0; i < 4 * kNodes; ++i) items.push_back(edge(i, i / 4, i / 4));
  const auto begin = std::chrono::steady_clock::now();
  const std::vector<LayoutItem> inside = edgesInRange(items, 0.0, 1.0);
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(inside.size(), 4u * kNodes);
  EXPECT_LT(took.count(), 2.0) << "a walk over all nodes for each edge takes minutes";
}

}  // namespace
}  // namespace quorbel
