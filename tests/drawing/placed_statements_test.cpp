#include "drawing/placed_statements.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

constexpr const char* kLayout = R"(digraph G {
	graph [bb="0,0,140,72",
		rankdir=LR
	];
	node [label="\N"];
	0	[height=0.5,
		pos="18,18.25",
		width=1];
	0 -> 1	[label="a \" \\ b",
		lp="60,45",
		pos="e,86,36 36,18 48,18 60,50 76,36;s,1,-2 3,4"];
}
)";

TEST(PlacedStatements, AreReadAndWrittenWithAllTheyHave) {
  const auto records = readStatements(kLayout);
  ASSERT_TRUE(records);
  std::string text;
  for (const DotRecord& record : *records)
    if (record.kind != DotRecord::Kind::Drawing) text += statementText(record);
  EXPECT_EQ(text,
            "node [label=\"\\N\"];\n"
            "\"0\" [height=\"0.5\", pos=\"18,18.25\", width=\"1\"];\n"
            "\"0\" -> \"1\" [label=\"a \\\" \\\\ b\", lp=\"60,45\", "
            "pos=\"e,86,36 36,18 48,18 60,50 76,36;s,1,-2 3,4\"];\n");
}

TEST(PlacedStatements, AreNoneWhereTheTextIsCutOff) {
  const std::string text = kLayout;
  for (std::size_t size = 0; size + 2 < text.size(); ++size)
    ASSERT_FALSE(readStatements(text.substr(0, size))) << size;
}

TEST(PlacedStatements, MoveWithTheirLabels) {
  auto records = readStatements(kLayout);
  ASSERT_TRUE(records);
  DotRecord& node = records->at(2);
  DotRecord& link = records->at(3);
  move(node, 100, -0.5);
  EXPECT_EQ(node.attributes.at("pos"), "118,17.75");
  move(link, -18, 1000.125);
  EXPECT_EQ(link.attributes.at("lp"), "42,1045.125");
  EXPECT_EQ(link.attributes.at("pos"),
            "e,68,1036.125 18,1018.125 30,1018.125 42,1050.125 58,1036.125;"
            "s,-17,998.125 -15,1004.125");
}

TEST(PlacedStatements, AreAsLargeAsTheirNodesCurvesAndLabels) {
  const auto records = readStatements(kLayout);
  ASSERT_TRUE(records);
  const Extent node = extentOf(records->at(2));
  EXPECT_EQ(std::make_pair(node.left, node.right), std::make_pair(-18.0, 54.0));
  EXPECT_EQ(std::make_pair(node.bottom, node.top), std::make_pair(0.25, 36.25));
  const Extent link = extentOf(records->at(3));
  EXPECT_EQ(std::make_pair(link.left, link.right), std::make_pair(1.0, 86.0));
  EXPECT_EQ(std::make_pair(link.bottom, link.top), std::make_pair(-2.0, 54.0));
}

TEST(PlacedStatements, HaveValuesInLinesThatDotCanRead) {
  DotRecord record;
  record.name = "0";
  record.attributes["label"] = std::string(8191, 'a') + "\\\"" + std::string(8192, 'b') + "c";
  EXPECT_EQ(statementText(record), "\"0\" [label=\"" + std::string(8191, 'a') + "\\\"\\\n" +
                                       std::string(8192, 'b') + "\\\nc\"];\n");
}

TEST(PlaceText, HasNoExponentAndNoMoreDecimalsThanItNeeds) {
  for (const auto& [number, text] : {std::pair<double, const char*>{0, "0"},
                                     {-0.0001, "0"},
                                     {12.5, "12.5"},
                                     {-3, "-3"},
                                     {100, "100"},
                                     {0.0625, "0.062"},
                                     {1234567.875, "1234567.875"},
                                     {1e9, "1000000000"}})
    EXPECT_EQ(placeText(number), text);
}

}  // namespace
}  // namespace quorbel
