#include "formats/dialect_word.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

std::string fragmentOf(const Word& word) {
  std::string fragment;
  appendFragment(fragment, word);
  return fragment;
}

TEST(DialectWord, IsTheExactTheFirstAttributeOrTheText) {
  for (const auto& [fragment, word] :
       {std::pair<const char*, const char*>{"<w in='good' out='gut'/>", "good"},
        {"<w in='say \u201Dhi\u201D' exact='say %22hi%22'/>", "say \"hi\""},
        {"<w><alt in='could'/>text</w>", "could"},
        {"<w> text <b>and</b> more </w>", "text and more"},
        {"<w>hi</w> <x>1</x>", "hi 1"},
        {"<w in='a'/>>> x <b/> c=1", "a"},
        {"<w in=''/>", "!NULL"},
        {"<w in='' out='gut'/>", "!NULL"},
        {"<w in=''>text</w>", "text"},
        {"<w in='R&amp;D &lt;'/>", "R&D <"}})
    EXPECT_EQ(wordOfFragment(fragment), word) << fragment;
}

TEST(DialectWord, IsNoneForWhatIsNoXmlOrSaysNothing) {
  for (const char* text : {"<s>", "</s>", "<unk>", "<s/>", "<w></w>", "<w in='a'>", "<1/>", "<>",
                           "<w in=a/>", "<w in='a' in='b'/>", "<w></v>", "<w in='&foo;'/>"})
    EXPECT_EQ(wordOfFragment(text), std::nullopt) << text;
}

TEST(DialectWord, IsWrittenAsAnElementThatReadsBack) {
  for (const char* text : {"plain", "it's", "<s>", "R&D", "say \"hi\"", "a\\b", "%", "&amp;",
                           "start=5 end=7", "\n", "\u00FCber", " blank "}) {
    Word word;
    word.text = text;
    EXPECT_EQ(wordOfFragment(fragmentOf(word)), text) << fragmentOf(word);
  }
}

TEST(DialectWord, KeepsItsAttributesAndItsOwnFragment) {
  Word word;
  word.text = "it's";
  word.attributes = {{"v", "1"}, {"note", "a \"b\" <c>"}};
  EXPECT_EQ(fragmentOf(word), "<w in='it&apos;s' v='1' note='a \u201Db\u201D &lt;c&gt;'/>");
  word.xml = "<x y='z'/>";
  EXPECT_EQ(fragmentOf(word), "<x y='z'/>");
}

}  // namespace
}  // namespace quorbel
