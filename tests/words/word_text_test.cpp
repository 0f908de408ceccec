#include "words/word_text.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

TEST(WordText, TakesEscapesAway) {
  for (const auto& [value, bytes] : {std::pair<const char*, const char*>{"plain", "plain"},
                                     {"\\\"", "\""},
                                     {"a\\ b", "a b"},
                                     {"\\\\", "\\"},
                                     {"\\101", "A"},
                                     {"\\1012", "A2"},
                                     {"\\377", "\xFF"},
                                     {"\\400", "400"},
                                     {"\\10", "10"},
                                     {"\\18x", "18x"},
                                     {"end\\", "end\\"},
                                     {"", ""}})
    EXPECT_EQ(withoutEscapes(value), bytes) << value;
}

TEST(WordText, KeepsUtf8AndReadsTheRestAsLatin1) {
  for (const auto& [bytes, text] :
       {std::pair<const char*, const char*>{"plain", "plain"},
        {"\u00FCber", "\u00FCber"},
        {"\U0001F600", "\U0001F600"},
        {"\xFC"
         "ber",
         "\u00FCber"},
        {"\xC3", "\u00C3"},                                 // cut short
        {"\xC0\xAF", "\u00C0\u00AF"},                       // longer than needed
        {"\xE0\x80\x80", "\u00E0\u0080\u0080"},             // longer than needed
        {"\xED\xA0\x80", "\u00ED\u00A0\u0080"},             // a surrogate
        {"\xF4\x90\x80\x80", "\u00F4\u0090\u0080\u0080"}})  // beyond Unicode
    EXPECT_EQ(inUtf8(bytes), text) << text;
}

TEST(WordText, DrawsWhatWouldEndOrChangeALabel) {
  for (const auto& [text, drawable] :
       {std::pair<std::string, const char*>{"plain <s> 'x'", "plain <s> 'x'"},
        {"say \"hi\"", "say \u201Dhi\u201D"},
        {"a\\nb", "a\u2216nb"},
        {"a\nb\tc", "a\u240Ab\u2409c"},
        {std::string("\0", 1), "\u2400"},
        {"\x1F\x7F", "\u241F\u2421"},
        {"R&D; &", "R\uFF06D; &"},
        {"&lt;&#60;", "\uFF06lt;\uFF06#60;"},
        {"AT&T", "AT&T"},
        {"&;", "&;"},
        {"\uFFFE\uFFFF", "\uFFFD\uFFFD"},
        {"\u00FC", "\u00FC"}})
    EXPECT_EQ(drawableText(text), drawable) << text;
}

TEST(WordText, ShowsAnExcerptOfWholeCharacters) {
  const std::string thirtySix(36, 'x');
  for (const auto& [text, shown] : {std::pair<std::string, std::string>{"", ""},
                                    {"a\"\x01", "a\u201D\u2401"},
                                    {thirtySix + "\U00010348", thirtySix + "\U00010348"},
                                    {thirtySix + "\U00010348z", thirtySix + "\U00010348..."},
                                    {thirtySix + "a\U00010348", thirtySix + "a..."},
                                    {thirtySix + "abc\u00FC", thirtySix + "abc..."},
                                    {thirtySix + "abcde", thirtySix + "abcd..."},
                                    {thirtySix + "abc\xFC-", thirtySix + "abc\u00FC..."},
                                    {thirtySix + "\x80\x80\x80\x80\x80", thirtySix + "\u0080..."}})
    EXPECT_EQ(excerpt(text), shown) << text;
}

TEST(WordText, KeepsTheExactTextInPercents) {
  for (const auto& [text, percents] :
       {std::pair<std::string, const char*>{"say \"hi\"", "say %22hi%22"},
        {"100%\\", "100%25%5C"},
        {"\n", "%0A"},
        {"\uFFFE", "%EF%BF%BE"},
        {"\u00FC & '<>'", "\u00FC & '<>'"}}) {
    EXPECT_EQ(percentText(text), percents);
    EXPECT_EQ(withoutPercents(percents), text);
  }
  EXPECT_EQ(withoutPercents("100% %2 %zz %2g %"), "100% %2 %zz %2g %");
}

TEST(WordText, EveryByteComesBackFromPercents) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text = inUtf8("a" + std::string(1, static_cast<char>(byte)) + "b");
    EXPECT_EQ(withoutPercents(percentText(text)), text) << byte;
    EXPECT_EQ(drawableText(percentText(text)), percentText(text)) << byte;
  }
}

}  // namespace
}  // namespace quorbel
