#include "layout/label_lines.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

const LabelNames kEdgeNames = {{'G', "G"}, {'E', "3->17"}, {'T', "3"}, {'H', "17"}};

/// The lines, each behind a letter for its justification: "c:first|l:second".
std::string shown(std::string_view label, const LabelNames& names = kEdgeNames) {
  std::string text;
  for (const LabelLine& line : labelLines(label, names)) {
    if (!text.empty()) text += '|';
    text += line.justification == Justification::Left    ? "l:"
            : line.justification == Justification::Right ? "r:"
                                                         : "c:";
    text += line.text;
  }
  return text;
}

TEST(LabelLines, PlainTextIsOneCentredLine) {
  EXPECT_EQ(shown("word"), "c:word");
  EXPECT_EQ(shown("  two words "), "c:  two words ");
  EXPECT_EQ(shown(""), "");
}

TEST(LabelLines, EscapesEndLinesAndSayWhereTheyStand) {
  EXPECT_EQ(shown("a\\nb"), "c:a|c:b");
  EXPECT_EQ(shown("a\\lb\\rc"), "l:a|r:b|c:c");
  EXPECT_EQ(shown("a\\l"), "l:a");
  EXPECT_EQ(shown("\\n\\na"), "c:|c:|c:a");
  EXPECT_EQ(shown("a\nb"), "c:a|c:b");
}

TEST(LabelLines, BackslashTakesAwayAMeaning) {
  EXPECT_EQ(shown("a\\\\b"), "c:a\\b");
  EXPECT_EQ(shown("a\\\\nb"), "c:a\\nb");
  EXPECT_EQ(shown("\\\\T"), "c:\\T");
  EXPECT_EQ(shown("\\q\\\"\\L"), "c:q\"L");
  EXPECT_EQ(shown("end\\"), "c:end\\");
}

TEST(LabelLines, NamesStandBehindABackslash) {
  EXPECT_EQ(shown("\\G \\E \\T \\H \\N"), "c:G 3->17 3 17 N");
  EXPECT_EQ(shown("\\N", {{'N', "12"}}), "c:12");
}

TEST(LabelLines, EntitiesBecomeCharacters) {
  EXPECT_EQ(shown("a&amp;b&lt;c&gt;&quot;"), "c:a&b<c>\"");
  EXPECT_EQ(shown("&eacute;&#233;&#xe9;&#XE9;"), "c:\u00e9\u00e9\u00e9\u00e9");
  EXPECT_EQ(shown("&#x1F600;"), "c:\U0001F600");
  EXPECT_EQ(shown("&thetasym;"), "c:\u03d1");
  EXPECT_EQ(shown("x&#92;ny"), "c:x|c:y");
  EXPECT_EQ(shown("&amp;lt;"), "c:&lt;");
}

TEST(LabelLines, WhatIsNoEntityStays) {
  for (const char* text : {"&", "&;", "&amp", "R&D;", "&foo;", "&#;", "&#x;", "&#-5;", "&#x-5;",
                           "&#12a;", "&#0;", "&#99999999999;", "& amp;", "&averylongname;"})
    EXPECT_EQ(shown(text), std::string("c:") + text);
}

TEST(LabelLines, Utf8Stays) {
  EXPECT_EQ(shown("\u00e9\u65e5\U0001F600"), "c:\u00e9\u65e5\U0001F600");
}

TEST(LabelLines, OtherBytesAreLatin1) {
  EXPECT_EQ(shown("a\xE9z"), "c:a\u00e9z");
  EXPECT_EQ(shown("\xFF\xC3("), "c:\u00ff\u00c3(");
  EXPECT_EQ(shown("\xC3"), "c:\u00c3");
  EXPECT_EQ(shown("\xE6\x97"), "c:\u00e6\ufffd");
  EXPECT_EQ(shown("\x80"), "c:\ufffd");
}

TEST(LabelLines, WhatXmlForbidsIsReplaced) {
  EXPECT_EQ(shown("a\x01\x02z"), "c:a\ufffd\ufffdz");
  EXPECT_EQ(shown(std::string_view("a\0z", 3)), "c:a\ufffdz");
  EXPECT_EQ(shown("&#1;&#xD800;&#xFFFF;&#1114112;"), "c:\ufffd\ufffd\ufffd\ufffd");
  EXPECT_EQ(shown("\xED\xA0\x80"), "c:\ufffd");
}

}  // namespace
}  // namespace quorbel
