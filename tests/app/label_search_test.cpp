#include "app/label_search.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

using Ranks = std::vector<std::size_t>;

LayoutItem nodeAt(int index, double time) {
  LayoutItem node;
  node.isNode = true;
  node.nodeIndex = index;
  node.time = time;
  return node;
}

LayoutItem edgeFrom(int start, int linkId, const std::string& label, int x, int y) {
  LayoutItem edge;
  edge.startNode = start;
  edge.endNode = start + 1;
  edge.linkId = linkId;
  edge.label = label;
  edge.x = x;
  edge.y = y;
  return edge;
}

/// A search through edges with these labels, one after the other in time.
LabelSearch searchOf(const std::vector<std::string>& labels) {
  std::vector<LayoutItem> items;
  for (const std::string& label : labels) {
    const int i = static_cast<int>(items.size()) / 2;
    items.push_back(nodeAt(i, i));
    items.push_back(edgeFrom(i, i, label, 10, 10));
  }
  NodeItems nodes;
  nodes.index(items);
  LabelSearch search;
  search.index(items, nodes);
  return search;
}

TEST(LabelSearch, FindsATextAnywhereInALabel) {
  const LabelSearch search = searchOf({"good / gut", "morning / Morgen", "evening"});
  EXPECT_EQ(search.find("good"), Ranks{0});
  EXPECT_EQ(search.find("d / g"), Ranks{0});
  EXPECT_EQ(search.find("ning"), (Ranks{1, 2}));
  EXPECT_EQ(search.find("n"), (Ranks{1, 2}));
  EXPECT_EQ(search.find("ningx"), Ranks{});
  EXPECT_EQ(search.find("gut good"), Ranks{});
}

TEST(LabelSearch, FindsAnEmptyTextNowhere) { EXPECT_EQ(searchOf({"a", ""}).find(""), Ranks{}); }

TEST(LabelSearch, TakesNoHeedOfCase) {
  const LabelSearch search = searchOf({"Straße", "ÉTÉ", "λόγος", "Привет", "MIX"});
  EXPECT_EQ(search.find("STRASSE"), Ranks{0});
  EXPECT_EQ(search.find("strasse"), Ranks{0});
  EXPECT_EQ(search.find("été"), Ranks{1});
  EXPECT_EQ(search.find("ΛΌΓΟΣ"), Ranks{2});
  EXPECT_EQ(search.find("ПРИВЕТ"), Ranks{3});
  EXPECT_EQ(search.find("mix"), Ranks{4});
}

TEST(LabelSearch, TakesALetterWithItsMarksHoweverTheyAreWritten) {
  const LabelSearch search = searchOf({"caf\u00e9", "cafe\u0301", "cafe", "q\u0323\u0307"});
  EXPECT_EQ(search.find("caf\u00e9"), (Ranks{0, 1}));
  EXPECT_EQ(search.find("CAFE\u0301"), (Ranks{0, 1}));
  EXPECT_EQ(search.find("cafe"), Ranks{2}) << "a letter with a mark is another letter";
  EXPECT_EQ(search.find("q\u0307\u0323"), Ranks{3}) << "the order of marks does not matter";
  EXPECT_EQ(search.find("\u1100\u1161"), Ranks{}) << "and nothing else is taken for a letter";
}

TEST(LabelSearch, FindsWhatIsWrittenFromRightToLeft) {
  const LabelSearch search = searchOf({"שלום עולם", "مرحبا", "hello"});
  EXPECT_EQ(search.find("עולם"), Ranks{0});
  EXPECT_EQ(search.find("של"), Ranks{0});
  EXPECT_EQ(search.find("رحب"), Ranks{1});
}

TEST(LabelSearch, SeesALabelAsItIsDrawn) {
  const LabelSearch search =
      searchOf({"AT&amp;T", "caf&#233;", R"(two\nlines)", R"(\E)", R"(a\\b)"});
  EXPECT_EQ(search.find("at&t"), Ranks{0});
  EXPECT_EQ(search.find("amp"), Ranks{});
  EXPECT_EQ(search.find("café"), Ranks{1});
  EXPECT_EQ(search.find("two lines"), Ranks{2});
  EXPECT_EQ(search.find("3->4"), Ranks{3});
  EXPECT_EQ(search.find(R"(a\b)"), Ranks{4});
}

TEST(LabelSearch, TakesWhatIsNoUtf8) {
  const LabelSearch search = searchOf({"caf\xe9", "plain"});
  EXPECT_EQ(search.find("café"), Ranks{0}) << "drawn as Latin-1";
  EXPECT_EQ(search.find("\xff\xfe"), Ranks{});
  EXPECT_EQ(foldedText("A\xff"), "a\ufffd");
}

TEST(LabelSearch, OrdersByTimeThenFromLeftToRightAndFromTopToBottom) {
  const std::vector<LayoutItem> items = {
      nodeAt(0, 0.0),
      nodeAt(1, 0.5),
      nodeAt(2, std::stod("nan")),
      edgeFrom(2, 10, "w timeless", 5, 90),
      edgeFrom(1, 11, "w later", 1, 99),
      edgeFrom(0, 12, "w low", 50, 10),
      edgeFrom(0, 13, "w high", 50, 80),
      edgeFrom(0, 14, "w right", 70, 99),
      edgeFrom(9, 15, "w without node", 1, 1),
      edgeFrom(0, 16, "w nowhere", LayoutItem::kNoPosition, LayoutItem::kNoPosition),
  };
  NodeItems nodes;
  nodes.index(items);
  LabelSearch search;
  search.index(items, nodes);
  std::vector<int> ids;
  for (const std::size_t rank : search.find("w"))
    ids.push_back(items[search.position(rank)].linkId);
  EXPECT_EQ(ids, (std::vector<int>{13, 12, 14, 11, 15, 10}));
}

TEST(LabelSearch, KnowsALinkAgain) {
  std::vector<LayoutItem> items = {nodeAt(0, 0.0), nodeAt(1, 0.5), edgeFrom(1, 7, "b", 1, 1),
                                   edgeFrom(0, 7, "a", 1, 1)};
  NodeItems nodes;
  nodes.index(items);
  LabelSearch search;
  search.index(items, nodes);
  EXPECT_EQ(search.rankOf(edgeFrom(1, 7, "other label", 9, 9), items), 1u);
  EXPECT_EQ(search.rankOf(edgeFrom(0, 7, "a", 1, 1), items), 0u);
  EXPECT_EQ(search.rankOf(edgeFrom(2, 7, "a", 1, 1), items), std::nullopt);
  EXPECT_EQ(search.rankOf(edgeFrom(0, 8, "a", 1, 1), items), std::nullopt);
}

TEST(LabelSearch, StepsAroundTheEnds) {
  const Ranks ranks = {2, 5, 9};
  struct Case {
    std::optional<std::size_t> from;
    std::size_t here, next, previous;
  };
  for (const Case& c : std::vector<Case>{{std::nullopt, 0, 0, 2},
                                         {0, 0, 0, 2},
                                         {2, 0, 1, 2},
                                         {3, 1, 1, 0},
                                         {5, 1, 2, 0},
                                         {9, 2, 0, 1},
                                         {12, 0, 0, 2}}) {
    SCOPED_TRACE(c.from ? std::to_string(*c.from) : "nothing");
    EXPECT_EQ(stepAmong(ranks, c.from, Step::Here), c.here);
    EXPECT_EQ(stepAmong(ranks, c.from, Step::Next), c.next);
    EXPECT_EQ(stepAmong(ranks, c.from, Step::Previous), c.previous);
  }
  for (const Step step : {Step::Here, Step::Next, Step::Previous}) {
    EXPECT_EQ(stepAmong({}, 3, step), std::nullopt);
    EXPECT_EQ(stepAmong({3}, 3, step), 0u);
  }
}

TEST(LabelSearch, SaysHowManyWereFound) {
  EXPECT_EQ(foundText(2, 12), "3 of 12");
  EXPECT_EQ(foundText(0, 1), "1 of 1");
  EXPECT_EQ(foundText(std::nullopt, 12), "0 of 12");
  EXPECT_EQ(foundText(std::nullopt, 0), "not found");
}

}  // namespace
}  // namespace quorbel
