#include "layout/node_items.h"

#include <gtest/gtest.h>

#include <limits>

namespace quorbel {
namespace {

LayoutItem node(int index, double time = 0.0) {
  LayoutItem item;
  item.isNode = true;
  item.nodeIndex = index;
  item.time = time;
  return item;
}

LayoutItem edge(int startNode, int endNode) {
  LayoutItem item;
  item.startNode = startNode;
  item.endNode = endNode;
  return item;
}

std::vector<std::size_t> positionsOf(const NodeItems& nodeItems, int nodeIndex) {
  std::vector<std::size_t> positions;
  const auto [first, last] = nodeItems.find(nodeIndex);
  for (auto it = first; it != last; ++it) {
    EXPECT_EQ(it->first, nodeIndex);
    positions.push_back(it->second);
  }
  return positions;
}

using Positions = std::vector<std::size_t>;

TEST(NodeItems, FindsNodesByTheirIndexAndNotByTheirPlace) {
  NodeItems nodeItems;
  nodeItems.index({node(3), edge(0, 3), node(0), node(7)});
  EXPECT_EQ(positionsOf(nodeItems, 3), Positions{0});
  EXPECT_EQ(positionsOf(nodeItems, 0), Positions{2});
  EXPECT_EQ(positionsOf(nodeItems, 7), Positions{3});
}

TEST(NodeItems, LeavesEdgesOut) {
  NodeItems nodeItems;
  nodeItems.index({edge(1, 2), node(1), edge(0, 1)});
  EXPECT_EQ(positionsOf(nodeItems, 0), Positions{});
  EXPECT_EQ(positionsOf(nodeItems, 2), Positions{});
  EXPECT_EQ(positionsOf(nodeItems, 1), Positions{1});
}

TEST(NodeItems, GivesAllItemsOfANodeInTheOrderOfTheList) {
  NodeItems nodeItems;
  nodeItems.index({node(2), node(1), node(2), edge(1, 2), node(2)});
  EXPECT_EQ(positionsOf(nodeItems, 2), (Positions{0, 2, 4}));
}

TEST(NodeItems, FindsNothingAmongNothing) {
  NodeItems nodeItems;
  EXPECT_EQ(positionsOf(nodeItems, 0), Positions{});
  EXPECT_EQ(nodeItems.timeOf(0, {}), 0.0);
  nodeItems.index({});
  EXPECT_EQ(positionsOf(nodeItems, 0), Positions{});
}

TEST(NodeItems, ForgetsTheListBefore) {
  NodeItems nodeItems;
  nodeItems.index({node(1), node(2)});
  nodeItems.index({edge(1, 3), node(3)});
  EXPECT_EQ(positionsOf(nodeItems, 1), Positions{});
  EXPECT_EQ(positionsOf(nodeItems, 3), Positions{1});
}

TEST(NodeItems, GiveTheTimeOfTheFirstItemOfANode) {
  const std::vector<LayoutItem> items = {edge(1, 2), node(2, 0.5), node(1, 0.25), node(2, 0.75)};
  NodeItems nodeItems;
  nodeItems.index(items);
  EXPECT_EQ(nodeItems.timeOf(1, items), 0.25);
  EXPECT_EQ(nodeItems.timeOf(2, items), 0.5);
}

TEST(NodeItems, MissingNodeHasTimeZero) {
  const std::vector<LayoutItem> items = {node(2, 0.5)};
  NodeItems nodeItems;
  nodeItems.index(items);
  EXPECT_EQ(nodeItems.timeOf(1, items), 0.0);
  EXPECT_EQ(nodeItems.timeOf(3, items), 0.0);
  EXPECT_EQ(nodeItems.timeOf(-1, items), 0.0);
}

TEST(NodeItems, TimeThatIsNoNumberCountsAsZero) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<LayoutItem> items = {node(0, std::numeric_limits<double>::quiet_NaN()),
                                         node(1, infinity)};
  NodeItems nodeItems;
  nodeItems.index(items);
  EXPECT_EQ(nodeItems.timeOf(0, items), 0.0);
  EXPECT_EQ(nodeItems.timeOf(1, items), infinity);
}

}  // namespace
}  // namespace quorbel
