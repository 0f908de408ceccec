// How a field of an XML fragment is found by name and by index.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lattice/xml_fragment.h"
#include "lattice/xml_label.h"

namespace quorbel {
namespace {

/// A parsed fragment with the lookups from its root.
class Fragment {
 public:
  explicit Fragment(const std::string& word) : m_Document(parseXmlFragment(word, "test.xml")) {
    EXPECT_NE(m_Document, nullptr) << word;
  }

  std::string byName(const IndexPath& path, const std::string& attribute) {
    m_Depth = 0;
    return lookupFieldByName(root(), m_Depth, {path, attribute});
  }
  std::string byIndex(const IndexPath& path) {
    m_Depth = 0;
    return lookupFieldByIndex(root(), m_Depth, path);
  }
  std::string first() const { return firstAttributeValue(root()); }

  /// What the last lookup left in the caller's counter.
  int depth() const { return m_Depth; }

  const xmlNode* root() const {
    return m_Document ? xmlDocGetRootElement(m_Document.get()) : nullptr;
  }

 private:
  XmlDocument m_Document;
  int m_Depth = 0;
};

TEST(XmlLookup, OfAMissingNodeFindsNothing) {
  int depth = 0;
  EXPECT_EQ(lookupFieldByName(nullptr, depth, {{1}, "a"}), "");
  EXPECT_EQ(depth, 0);
  EXPECT_EQ(lookupFieldByIndex(nullptr, depth, {0, 0}), "");
  EXPECT_EQ(depth, 1);
  EXPECT_EQ(firstAttributeValue(nullptr), "");
}

TEST(XmlLookup, ByNameFindsAnAttributeOfTheRoot) {
  Fragment fragment("<w in='1' out='2' empty=''/>");
  EXPECT_EQ(fragment.byName({1}, "in"), "1");
  EXPECT_EQ(fragment.byName({1}, "out"), "2");
  EXPECT_EQ(fragment.byName({1}, "empty"), "");
  EXPECT_EQ(fragment.depth(), 0);
}

TEST(XmlLookup, ByNameComparesTheWholeName) {
  Fragment fragment("<w in='1' inner='2' In='3' \xc3\xa4='4' xmlns:p='urn:p' p:x='5' q:y='6'/>");
  for (const char* name : {"i", "inn", "inner ", "IN", "", "p:x", "y", "xmlns:p", "p"})
    EXPECT_EQ(fragment.byName({1}, name), "") << name;
  EXPECT_EQ(fragment.byName({1}, "inner"), "2");
  EXPECT_EQ(fragment.byName({1}, "In"), "3");
  EXPECT_EQ(fragment.byName({1}, "\xc3\xa4"), "4");
  EXPECT_EQ(fragment.byName({1}, "x"), "5");
  EXPECT_EQ(fragment.byName({1}, "q:y"), "6");  // a prefix that nothing declares
}

TEST(XmlLookup, ByNameComparesNamesWithNulBytes) {
  EXPECT_EQ(Fragment("<w in='1'/>").byName({1}, std::string("in\0", 3)), "");
}

TEST(XmlLookup, ByNameCountsTheRootAndWhatFollowsItFromOne) {
  Fragment fragment("<w in='1'/><!--in='2'--><?pi in='3'?>");
  EXPECT_EQ(fragment.byName({1}, "in"), "1");
  for (const int position : {-1, 0, 2, 3, 4, 100})
    EXPECT_EQ(fragment.byName({position}, "in"), "") << position;
}

TEST(XmlLookup, ByNameCountsSiblingsOfEveryKind) {
  Fragment fragment("<w>text<a in='2'/><!--c--><b in='4'/>text<c/></w>");
  const xmlNode* first = firstChild(fragment.root());
  const std::vector<std::string> values = {"", "", "2", "", "4", "", "", ""};
  for (std::size_t position = 0; position < values.size(); ++position) {
    int depth = 0;
    EXPECT_EQ(lookupFieldByName(first, depth, {{static_cast<int>(position)}, "in"}),
              values[position])
        << position;
  }
}

TEST(XmlLookup, ByNameNeedsAPathOfOneEntry) {
  Fragment fragment("<w in='1'><x in='2'/></w>");
  EXPECT_EQ(fragment.byName({}, "in"), "");
  EXPECT_EQ(fragment.byName({1, 1}, "in"), "");
  EXPECT_EQ(fragment.byName({1, 1, 1}, "in"), "");
}

TEST(XmlLookup, ByNameUsesTheEntryThatTheCounterStandsAt) {
  Fragment fragment("<w in='1'/>");
  int depth = 1;
  EXPECT_EQ(lookupFieldByName(fragment.root(), depth, {{7, 1}, "in"}), "1");
  EXPECT_EQ(lookupFieldByName(fragment.root(), depth, {{1, 7}, "in"}), "");
  depth = 2;
  EXPECT_EQ(lookupFieldByName(fragment.root(), depth, {{1, 1}, "in"}), "");
}

TEST(XmlLookup, ByNameFindsNothingInChildren) {
  Fragment fragment("<w><x in='2'/></w>");
  EXPECT_EQ(fragment.byName({1}, "in"), "");
  EXPECT_EQ(fragment.depth(), 1);
  EXPECT_EQ(fragment.byName({1, 1}, "in"), "");
  EXPECT_EQ(fragment.depth(), 0);
}

TEST(XmlLookup, ByIndexCountsTheAttributesOfTheRootFromZero) {
  Fragment fragment("<w a='0' b='1' c='2'/>");
  EXPECT_EQ(fragment.byIndex({0, 0}), "0");
  EXPECT_EQ(fragment.byIndex({0, 1}), "1");
  EXPECT_EQ(fragment.byIndex({0, 2}), "2");
  EXPECT_EQ(fragment.byIndex({0, 3}), "");
  EXPECT_EQ(fragment.byIndex({0, -1}), "");
  EXPECT_EQ(fragment.depth(), 1);
}

TEST(XmlLookup, ByIndexComparesTheLastEntryOnly) {
  Fragment fragment("<w><x><y a='0' b='1'/></x></w>");
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 1}), "1");
  EXPECT_EQ(fragment.byIndex({7, -8, 9, 1}), "1");
  EXPECT_EQ(fragment.depth(), 3);
}

TEST(XmlLookup, ByIndexFindsAttributesOnlyAsDeepAsThePathIsLong) {
  Fragment fragment("<w a='1'><x a='2'><y a='3'/></x></w>");
  EXPECT_EQ(fragment.byIndex({}), "");
  EXPECT_EQ(fragment.byIndex({0}), "");
  EXPECT_EQ(fragment.byIndex({0, 0}), "1");
  EXPECT_EQ(fragment.byIndex({0, 0, 0}), "2");
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 0}), "3");
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 0, 0}), "");
}

TEST(XmlLookup, ByIndexCountsSiblingsAndThenTheAttributesOnOneCounter) {
  Fragment fragment("<w>text<!--c--><x/><y a='3' b='4'/><z a='5'/></w>");
  const std::vector<std::string> values = {"", "", "", "3", "4", "", ""};
  for (std::size_t position = 0; position < values.size(); ++position)
    EXPECT_EQ(fragment.byIndex({0, 0, static_cast<int>(position)}), values[position]) << position;
}

TEST(XmlLookup, ByIndexEndsAtTheFirstSiblingWithAttributes) {
  Fragment fragment("<w><x a='0'/><y a='1' b='2'/></w>");
  EXPECT_EQ(fragment.byIndex({0, 0, 0}), "0");
  EXPECT_EQ(fragment.byIndex({0, 0, 1}), "");
  EXPECT_EQ(fragment.byIndex({0, 0, 2}), "");
}

TEST(XmlLookup, ByIndexGoesOnBehindChildrenThatHaveNothingButDeeper) {
  // The first list of children is the second level; after it every level is one deeper.
  Fragment fragment("<w><x><y>text</y></x><z a='1'/><v><u b='0'/></v></w>");
  EXPECT_EQ(fragment.byIndex({0, 0, 1}), "");         // z is passed by: the counter is beyond it
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 0, 1}), "1");  // z, after y's text raised the counter to 4
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 0, 0, 0}), "0");  // u, one more
  EXPECT_EQ(fragment.depth(), 5);
}

TEST(XmlLookup, ByIndexTakesAnEmptyValueForNone) {
  Fragment fragment("<w><x><y a=''/></x><z><v a='1'/></z></w>");
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 0}), "");
  EXPECT_EQ(fragment.byIndex({0, 0, 0, 0, 0}), "1");  // behind x and y, v lies one deeper
}

TEST(XmlLookup, ByIndexPassesCommentsAndInstructionsBehindTheRoot) {
  Fragment fragment("<w/><!--c--><?pi?>");
  for (const int position : {0, 1, 2, 3}) EXPECT_EQ(fragment.byIndex({0, position}), "");
}

TEST(XmlLookup, FirstValueIsThatOfTheFirstAttribute) {
  EXPECT_EQ(Fragment("<w in='1' out='2'/>").first(), "1");
  EXPECT_EQ(Fragment("<w in='' out='2'/>").first(), "");
  EXPECT_EQ(Fragment("<w in='1'><x in='2'/></w>").first(), "1");
}

TEST(XmlLookup, FirstValueOfChildrenEndsTheSearch) {
  EXPECT_EQ(Fragment("<w><x in='2'/></w>").first(), "2");
  EXPECT_EQ(Fragment("<w>text<x in='2'/></w>").first(), "2");
  EXPECT_EQ(Fragment("<w><x/><y in='3'/></w>").first(), "3");
  EXPECT_EQ(Fragment("<w><x>text</x><y in='3'/></w>").first(), "");
  EXPECT_EQ(Fragment("<w><x><z in='4'/></x><y in='3'/></w>").first(), "4");
  EXPECT_EQ(Fragment("<w>text</w><!--c--><?pi in='1'?>").first(), "");
}

}  // namespace
}  // namespace quorbel
