#include "app/selection.h"

#include <gtest/gtest.h>

#include "extreme_numbers.h"

namespace quorbel {
namespace {

LayoutItem edge(int linkId, int startNode = 0, int endNode = 0) {
  LayoutItem item;
  item.linkId = linkId;
  item.startNode = startNode;
  item.endNode = endNode;
  return item;
}

std::vector<int> linkIdsOf(const std::vector<LayoutItem>& selection) {
  std::vector<int> ids;
  for (const LayoutItem& item : selection) ids.push_back(item.linkId);
  return ids;
}

TEST(ToggleSelected, AppendsACopyWithEverythingInIt) {
  LayoutItem item;
  item.linkId = 7;
  item.x = 1;
  item.y = 2;
  item.width = 3;
  item.height = 4;
  item.nodeIndex = 5;
  item.startNode = 6;
  item.endNode = 8;
  item.time = 0.25;
  item.label = "label";
  item.word = "<w/>";
  item.score = 9.5;
  std::vector<LayoutItem> selection;
  toggleSelected(selection, item);
  item.label = item.word = "changed";

  ASSERT_EQ(selection.size(), 1u);
  const LayoutItem& copy = selection.front();
  EXPECT_EQ(copy.linkId, 7);
  EXPECT_EQ(copy.x, 1);
  EXPECT_EQ(copy.y, 2);
  EXPECT_EQ(copy.width, 3);
  EXPECT_EQ(copy.height, 4);
  EXPECT_EQ(copy.nodeIndex, 5);
  EXPECT_EQ(copy.startNode, 6);
  EXPECT_EQ(copy.endNode, 8);
  EXPECT_EQ(copy.time, 0.25);
  EXPECT_FALSE(copy.isNode);
  EXPECT_EQ(copy.label, "label");
  EXPECT_EQ(copy.word, "<w/>");
  EXPECT_EQ(copy.score, 9.5);
}

TEST(ToggleSelected, KeepsTheOrderOfSelection) {
  std::vector<LayoutItem> selection;
  for (const int id : {5, 2, 9}) toggleSelected(selection, edge(id));
  EXPECT_EQ(linkIdsOf(selection), (std::vector<int>{5, 2, 9}));
}

TEST(ToggleSelected, TakesOutTheEdgeWithTheSameLinkId) {
  std::vector<LayoutItem> selection = {edge(5), edge(2), edge(9)};
  LayoutItem elsewhere = edge(2, 3, 4);
  elsewhere.x = 100;
  elsewhere.label = "another text";
  toggleSelected(selection, elsewhere);
  EXPECT_EQ(linkIdsOf(selection), (std::vector<int>{5, 9}));
  toggleSelected(selection, elsewhere);
  EXPECT_EQ(linkIdsOf(selection), (std::vector<int>{5, 9, 2}));
}

TEST(ToggleSelected, KeepsEdgesThatDifferInTheirLinkIdAlone) {
  std::vector<LayoutItem> selection = {edge(5, 1, 2)};
  toggleSelected(selection, edge(6, 1, 2));
  EXPECT_EQ(linkIdsOf(selection), (std::vector<int>{5, 6}));
}

/// Nodes 0, 1, 2, ... of these times among other items.
std::vector<LayoutItem> drawing(const std::vector<double>& times) {
  std::vector<LayoutItem> items = {edge(1, 0, 1)};
  for (const double time : times) {
    LayoutItem node;
    node.isNode = true;
    node.nodeIndex = static_cast<int>(items.size()) - 1;
    node.time = time;
    items.push_back(node);
  }
  return items;
}

struct RangeCase {
  const char* what;
  std::vector<double> times;
  std::vector<std::pair<int, int>> edges;  ///< start and end node
  double start, end;
};

const RangeCase kRanges[] = {
    {"nothing selected", {0, 0.5, 1}, {}, 1.0, 0.0},
    {"one edge", {0, 0.25, 0.5, 1}, {{1, 2}}, 0.25, 0.5},
    {"two edges", {0, 0.25, 0.5, 1}, {{2, 3}, {1, 2}}, 0.25, 1.0},
    {"edges apart", {0, 0.125, 0.5, 0.75, 1}, {{0, 1}, {3, 4}}, 0.0, 1.0},
    {"one inside the other", {0.125, 0.25, 0.5, 0.75}, {{0, 3}, {1, 2}}, 0.125, 0.75},
    {"an edge back in time", {0, 0.25, 0.5, 1}, {{2, 1}}, 0.25, 0.5},
    {"an edge without time", {0, 0.25, 0.25, 1}, {{1, 2}}, -0.75, 1.25},
    {"an edge to its own node", {0, 0.25, 1}, {{1, 1}}, -0.75, 1.25},
    {"an edge without time at the start", {0, 0, 1}, {{0, 1}}, -1.0, 1.0},
    {"an edge without time at the end", {0, 1, 1}, {{1, 2}}, 0.0, 2.0},
    {"with one that takes time", {0, 0.5, 0.5, 1}, {{2, 3}, {1, 2}}, -0.5, 1.5},
    {"a start node that is missing", {0.75, 0.5}, {{9, 1}}, 0.0, 0.5},
    {"an end node that is missing", {0.75, 0.5}, {{1, 9}}, 0.0, 0.5},
    {"both missing", {0.75, 0.5}, {{8, 9}}, -1.0, 1.0},
    {"an empty drawing", {}, {{0, 1}}, -1.0, 1.0},
    {"times after the end", {2, 3}, {{0, 1}}, 1.0, 3.0},
    {"times before the start", {-3, -2}, {{0, 1}}, -3.0, 0.0},
    {"a time that is no number counts as 0", {kNotANumber, 0.5}, {{0, 1}}, 0.0, 0.5},
    {"two times that are no numbers", {kNotANumber, kNotANumber}, {{0, 1}}, -1.0, 1.0},
    {"an infinite time", {0, kInfinity}, {{0, 1}}, 0.0, kInfinity},
    {"two infinite times", {kInfinity, kInfinity}, {{0, 1}}, 1.0, kInfinity},
};

TEST(RangeOf, SpansTheTimesOfTheSelectedEdges) {
  for (const RangeCase& c : kRanges) {
    SCOPED_TRACE(c.what);
    const std::vector<LayoutItem> items = drawing(c.times);
    NodeItems nodeItems;
    nodeItems.index(items);
    std::vector<LayoutItem> selection;
    for (const auto& [start, end] : c.edges) selection.push_back(edge(1, start, end));
    const SoundRange range = rangeOf(selection, nodeItems, items);
    EXPECT_EQ(range.start, c.start);
    EXPECT_EQ(range.end, c.end);
  }
}

TEST(RangeOf, DoesNotDependOnTheOrderOfSelection) {
  const std::vector<LayoutItem> items = drawing({0, 0.25, 0.25, 0.75, 1});
  NodeItems nodeItems;
  nodeItems.index(items);
  const std::vector<LayoutItem> there = {edge(1, 1, 2), edge(2, 3, 4), edge(3, 4, 0)};
  const std::vector<LayoutItem> back(there.rbegin(), there.rend());
  EXPECT_EQ(rangeOf(there, nodeItems, items).start, rangeOf(back, nodeItems, items).start);
  EXPECT_EQ(rangeOf(there, nodeItems, items).end, rangeOf(back, nodeItems, items).end);
}

}  // namespace
}  // namespace quorbel
