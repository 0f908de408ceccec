#include "app/in_sight.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

constexpr Box kSeen{100, 50, 200, 100};

LayoutItem placedNode(int index, int x, double time) {
  LayoutItem node;
  node.isNode = true;
  node.nodeIndex = index;
  node.x = x;
  node.y = 100;
  node.width = node.height = 20;
  node.time = time;
  return node;
}

LayoutItem placedEdge(int linkId, int start, int x) {
  LayoutItem edge;
  edge.linkId = linkId;
  edge.startNode = start;
  edge.endNode = start + 1;
  edge.x = x;
  edge.y = 100;
  edge.label = "ab";
  return edge;
}

/// A row of nodes and edges 100 pixels apart, nodes at 0, 100, 200...
class Row : public ::testing::Test {
 protected:
  Row() {
    for (int i = 0; i < 10; ++i) m_Items.push_back(placedNode(i, 100 * i, i / 10.0));
    for (int i = 8; i >= 0; --i) m_Items.push_back(placedEdge(i, i, 100 * i + 50));
    m_Nodes.index(m_Items);
  }

  /// The id of the link to be shown, -1 for none.
  int toShow(const std::vector<int>& path, int from, int width) {
    const LayoutItem* const item =
        pathOutOfSight(mapping(), m_Items, m_Nodes, path, {from, 0, width, 400});
    return item ? item->linkId : -1;
  }

  CanvasMapping mapping() const {
    return mapCanvas({1000, 200}, {1000, 200}, {1000, 200}, {1000, 200}, 1.0f, 1, 0);
  }

  std::vector<LayoutItem> m_Items;
  NodeItems m_Nodes;
};

TEST(InSight, IsWhatHasAPixelInTheVisiblePart) {
  EXPECT_TRUE(isInSight({150, 70, 10, 10}, kSeen));
  EXPECT_TRUE(isInSight({0, 0, 1000, 1000}, kSeen));
  for (const auto& [box, isSeen] :
       {std::pair(Box{90, 70, 10, 10}, false), std::pair(Box{91, 70, 10, 10}, true),
        std::pair(Box{300, 70, 10, 10}, false), std::pair(Box{299, 70, 10, 10}, true),
        std::pair(Box{150, 40, 10, 10}, false), std::pair(Box{150, 41, 10, 10}, true),
        std::pair(Box{150, 150, 10, 10}, false), std::pair(Box{150, 149, 10, 10}, true)})
    EXPECT_EQ(isInSight(box, kSeen), isSeen) << box.left << ", " << box.top;
}

TEST_F(Row, OfAPathOutOfSightTheEarliestLinkIsToBeShown) {
  EXPECT_EQ(toShow({4, 3, 5}, 0, 200), 3);
  EXPECT_EQ(toShow({5, 4, 3}, 700, 300), 3);
  EXPECT_EQ(toShow({4, 99}, 0, 200), 4);
}

TEST_F(Row, OfAPathWithAnythingInSightNothingIsToBeShown) {
  EXPECT_EQ(toShow({3, 4}, 300, 50), -1) << "a node";
  EXPECT_EQ(toShow({3, 4}, 340, 20), -1) << "a label";
  EXPECT_EQ(toShow({3, 4}, 0, 291), -1) << "the edge of the first node";
  EXPECT_EQ(toShow({3, 4}, 0, 290), 3);
  EXPECT_EQ(toShow({3, 4}, 509, 100), -1) << "the last node";
  EXPECT_EQ(toShow({3, 4}, 510, 100), 3);
}

TEST_F(Row, OfAPathThatIsNotDrawnNothingIsToBeShown) {
  EXPECT_EQ(toShow({}, 0, 200), -1);
  EXPECT_EQ(toShow({77}, 0, 200), -1);
  for (LayoutItem& item : m_Items)
    if (item.linkId == 7) item.x = LayoutItem::kNoPosition;
  EXPECT_EQ(toShow({7}, 0, 200), -1);
}

TEST_F(Row, LightIsOutOfSightWhenNoLitNodeIsSeen) {
  const auto lightLeft = [this](double position, int from, int width) {
    const auto box = lightOutOfSight(mapping(), m_Items, m_Nodes, position, {from, 0, width, 400});
    return box ? box->left : -1;
  };
  EXPECT_EQ(lightLeft(0.45, 0, 300), 490);
  EXPECT_EQ(lightLeft(0.45, 0, 490), 490);
  EXPECT_EQ(lightLeft(0.45, 0, 491), -1);
  EXPECT_EQ(lightLeft(0.45, 600, 300), 490);
  EXPECT_EQ(lightLeft(0.41, 0, 300), -1) << "none is lit";
  EXPECT_EQ(lightLeft(0.5, 0, 300), -1) << "that it passes is lit no more";
  EXPECT_EQ(lightLeft(0.95, 0, 300), -1);
  EXPECT_EQ(lightLeft(0.0099, 300, 300), -1) << "the beginning lights up nothing";
}

TEST(NodesByTime, AreThoseBetweenInOrder) {
  std::vector<LayoutItem> items = {
      placedNode(3, 0, 0.5), placedNode(1, 0, 0.25), placedNode(2, 0, std::stod("nan")),
      placedNode(4, 0, 1.0), placedEdge(1, 1, 1),    placedNode(0, 0, 0.0)};
  NodeItems nodes;
  nodes.index(items);
  const auto between = [&nodes](double from, double to) {
    std::vector<std::size_t> positions;
    const auto [first, last] = nodes.between(from, to);
    for (auto node = first; node != last; ++node) positions.push_back(node->second);
    return positions;
  };
  using Positions = std::vector<std::size_t>;
  EXPECT_EQ(between(-1, 2), (Positions{5, 1, 0, 3}));
  EXPECT_EQ(between(0, 1), (Positions{1, 0}));
  EXPECT_EQ(between(0.25, 0.26), Positions{});
  EXPECT_EQ(between(0.2, 0.25), Positions{});
  EXPECT_EQ(between(0.6, 0.4), Positions{});
}

}  // namespace
}  // namespace quorbel
