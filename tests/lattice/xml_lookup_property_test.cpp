// The lookups held against their description, step by step, on random fragments.

#include <gtest/gtest.h>
#include <libxml/tree.h>

#include <random>
#include <string>
#include <vector>

#include "lattice/xml_fragment.h"
#include "lattice/xml_label.h"

namespace quorbel {
namespace {

bool hasAttributes(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE && node->properties != nullptr;
}

bool hasChildren(const xmlNode* node) {
  return node->type != XML_ENTITY_REF_NODE && node->children != nullptr;
}

std::string valueOf(const xmlAttr* attribute) {
  if (!attribute->children || !attribute->children->content) return "";
  return xmlText(attribute->children->content);
}

std::string plainLookupByIndex(const xmlNode* node, int& counter, const IndexPath& path) {
  counter += 1;
  int d = counter;
  if (node == nullptr) return "";
  int p = 0;
  for (; node != nullptr; node = node->next) {
    if (d == static_cast<int>(path.size()) - 1 && hasAttributes(node)) {
      for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
        if (p == path.at(static_cast<std::size_t>(d))) return valueOf(attribute);
        p += 1;
      }
      return "";
    } else if (hasChildren(node)) {
      const std::string value = plainLookupByIndex(node->children, counter, path);
      if (!value.empty()) return value;
    }
    p += 1;
    d = counter;
  }
  return "";
}

std::string plainLookupByName(const xmlNode* node, int& counter, const XmlField& field) {
  if (node == nullptr) return "";
  const int length = static_cast<int>(field.path.size());
  if (counter >= length) return "";  // there is no entry to read
  const int target = field.path.at(static_cast<std::size_t>(counter));
  for (int number = 1; node != nullptr; node = node->next, ++number) {
    if (number != target) continue;
    if (counter != length - 1) return "";
    if (hasAttributes(node)) {
      for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next)
        if (xmlText(attribute->name) == field.attribute) return valueOf(attribute);
      return "";
    } else if (hasChildren(node)) {
      counter = length;
      return plainLookupByName(node->children, counter, field);
    }
  }
  return "";
}

std::string plainFirstValue(const xmlNode* node) {
  if (node == nullptr) return "";
  if (hasAttributes(node)) return valueOf(node->properties);
  if (hasChildren(node)) return plainFirstValue(node->children);
  return plainFirstValue(node->next);
}

/// Random fragments of nested elements, text, comments, instructions, CDATA and entities.
class FragmentGenerator {
 public:
  explicit FragmentGenerator(unsigned seed) : m_Random(seed) {}

  std::string fragment() {
    std::string word = "<!DOCTYPE w [<!ENTITY e '<x a=\"entity\"/>'><!ENTITY v 'value'>]>";
    word += element(0);
    while (chance(30)) word += chance(50) ? "<!--comment-->" : "<?pi a='1'?>";
    return word;
  }

  IndexPath path() {
    IndexPath path;
    for (int length = number(0, 6); length > 0; --length) path.push_back(number(-1, 6));
    return path;
  }

  std::string name() { return std::string(1, "abcd"[number(0, 3)]); }

 private:
  int number(int least, int most) { return std::uniform_int_distribution(least, most)(m_Random); }
  bool chance(int percent) { return number(0, 99) < percent; }

  std::string element(int depth) {
    std::string text = "<w";
    if (chance(40)) {
      for (const char* attribute : {"a", "b", "c"})
        if (chance(60)) text += std::string(" ") + attribute + "='" + value() + "'";
    }
    text += ">";
    for (int children = depth < 4 ? number(0, 3) : 0; children > 0; --children) {
      const char* const others[] = {"text", "<!--comment-->", "<?pi?>", "<![CDATA[data]]>", "&e;"};
      text += chance(65) ? element(depth + 1) : others[number(0, 4)];
    }
    return text + "</w>";
  }

  std::string value() {
    if (chance(20)) return "";
    if (chance(10)) return "&v;" + std::to_string(++m_Values);
    return std::to_string(++m_Values);
  }

  std::mt19937 m_Random;
  int m_Values = 0;  ///< gives every attribute a value of its own
};

TEST(XmlLookupSteps, LeadToTheSameValuesAndCounters) {
  constexpr unsigned kSeed = 515253;
  constexpr int kFragments = 3000;
  constexpr int kPathsEach = 10;
  FragmentGenerator random(kSeed);
  int found = 0;
  for (int i = 0; i < kFragments; ++i) {
    const std::string word = random.fragment();
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", fragment " + std::to_string(i) + " " + word);
    const XmlDocument document = parseXmlFragment(word, "test.xml");
    ASSERT_NE(document, nullptr);
    const xmlNode* root = xmlDocGetRootElement(document.get());
    ASSERT_EQ(firstAttributeValue(root), plainFirstValue(root));
    for (int k = 0; k < kPathsEach; ++k) {
      const XmlField field = {random.path(), random.name()};
      int depth = 0;
      int plainDepth = 0;
      const std::string value = lookupFieldByIndex(root, depth, field.path);
      ASSERT_EQ(value, plainLookupByIndex(root, plainDepth, field.path));
      ASSERT_EQ(depth, plainDepth);
      found += !value.empty();
      depth = plainDepth = 0;
      ASSERT_EQ(lookupFieldByName(root, depth, field), plainLookupByName(root, plainDepth, field));
      ASSERT_EQ(depth, plainDepth);
    }
  }
  EXPECT_GT(found, kFragments / 10);
}

}  // namespace
}  // namespace quorbel
