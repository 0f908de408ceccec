#include "lattice/xml_fragment.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <string>

#include "temporary_folder.h"
#include "xml_messages.h"

namespace quorbel {
namespace {

XmlDocument parse(const std::string& word) { return parseXmlFragment(word, "test.xml"); }

const xmlNode* rootOf(const XmlDocument& document) {
  return document ? xmlDocGetRootElement(document.get()) : nullptr;
}

/// The values of the root's attributes, each in brackets; "no document" without a root.
std::string valuesOf(const std::string& word) {
  const XmlDocument document = parse(word);
  const xmlNode* root = rootOf(document);
  if (!root) return "no document";
  std::string text;
  for (const xmlAttr* attribute = firstAttribute(root); attribute; attribute = attribute->next)
    text += "[" + attributeValue(attribute) + "]";
  return text;
}

TEST(XmlFragment, BearsTheNameItIsGiven) {
  const XmlDocument document = parse("<w/>");
  ASSERT_NE(document, nullptr);
  EXPECT_STREQ(document->URL ? xmlText(document->URL) : "none", "test.xml");
}

TEST(XmlFragment, PrintsNothingWhenItParses) {
  PrintedText printed;
  EXPECT_NE(parse("<w in='a'>b</w>"), nullptr);
  EXPECT_EQ(printed.take(), "");
}

TEST(XmlFragment, ThatIsNotWellFormedPrintsOneLineAndIsNone) {
  using namespace std::string_literals;
  for (const std::string& word : {""s,
                                  " "s,
                                  "plain"s,
                                  "good day"s,
                                  "<"s,
                                  "<w"s,
                                  "<w>"s,
                                  "<w></v>"s,
                                  "<w/><w/>"s,
                                  "<w/> x"s,
                                  "x <w/>"s,
                                  " <?xml version='1.0'?><w/>"s,
                                  "<w in=1/>"s,
                                  "<w in='1' in='2'/>"s,
                                  "<1/>"s,
                                  "<w>&none;</w>"s,
                                  "<w in='<'/>"s,
                                  "<w>\xff</w>"s,
                                  "<w\0/>"s,

                                  "<>"s,
                                  "<a<b>>"s}) {
    PrintedText printed;
    EXPECT_EQ(parse(word), nullptr) << word;
    EXPECT_EQ(printed.take(), kFailed) << word;
  }
}

TEST(XmlFragment, MayHaveADeclarationCommentsAndInstructionsAround) {
  EXPECT_EQ(valuesOf("<?xml version='1.0'?><!--a--><?b c?> <w in='1'/> <!--d--><?e f?>"), "[1]");
}

TEST(XmlFragment, ValuesAreThoseThatTheAttributesMean) {
  EXPECT_EQ(valuesOf("<w/>"), "");
  EXPECT_EQ(valuesOf("<w a='1' b=\"two\" c=' 3 '/>"), "[1][two][ 3 ]");
  EXPECT_EQ(valuesOf("<w a='' b='x'/>"), "[][x]");
  EXPECT_EQ(valuesOf("<w a='&lt;&amp;&gt;&quot;&apos;&#65;&#x42;'/>"), "[<&>\"'AB]");
  EXPECT_EQ(valuesOf("<w a='x\ty\nz'/>"), "[x y z]");
  EXPECT_EQ(valuesOf("<w a='f\xc3\xbcr \xe2\x82\xac'/>"), "[f\xc3\xbcr \xe2\x82\xac]");
  EXPECT_EQ(valuesOf("<?xml version='1.0' encoding='ISO-8859-1'?><w a='f\xfcr'/>"), "[f\xc3\xbcr]");
}

TEST(XmlFragment, NamespaceDeclarationsAreNoAttributes) {
  EXPECT_EQ(valuesOf("<w xmlns='urn:a' xmlns:p='urn:b' p:in='1' in='2'/>"), "[1][2]");
}

TEST(XmlFragment, ValueIsItsFirstPartWhereEntitiesDivideIt) {
  const std::string type = "<!DOCTYPE w [<!ENTITY e 'hello'><!ENTITY f '&e;&e;'>]>";
  EXPECT_EQ(valuesOf(type + "<w in='&e;'/>"), "[hello]");
  EXPECT_EQ(valuesOf(type + "<w in='&e; you'/>"), "[hello]");
  EXPECT_EQ(valuesOf(type + "<w in='oh &e; you'/>"), "[oh ]");
  EXPECT_EQ(valuesOf(type + "<w in='&f;'/>"), "[&e;&e;]");
}

TEST(XmlFragment, AttributeWithoutAChildHasNoValue) {
  xmlAttr attribute = {};
  EXPECT_EQ(attributeValue(&attribute), "");
  xmlNode child = {};
  attribute.children = &child;
  EXPECT_EQ(attributeValue(&attribute), "");
}

TEST(XmlFragment, OnlyElementsHaveAttributes) {
  const XmlDocument document = parse(
      "<!DOCTYPE w [<!ENTITY e '<x in=\"1\"/>'>]>"
      "<w>text<!--comment--><?pi in='2'?><![CDATA[data]]>&e;<x in='3'/></w>");
  ASSERT_NE(rootOf(document), nullptr);
  std::string values;
  for (const xmlNode* node = firstChild(rootOf(document)); node; node = node->next) {
    const xmlAttr* attribute = firstAttribute(node);
    values += attribute ? "[" + attributeValue(attribute) + "]" : "-";
  }
  EXPECT_EQ(values, "-----[3]");
}

TEST(XmlFragment, OnlyElementsHaveChildren) {
  const XmlDocument document = parse(
      "<!DOCTYPE w [<!ENTITY e '<x in=\"1\"/>'>]>"
      "<w>text<!--comment--><?pi in='2'?><![CDATA[data]]>&e;<x>y</x><x/></w>");
  ASSERT_NE(rootOf(document), nullptr);
  std::string children;
  for (const xmlNode* node = firstChild(rootOf(document)); node; node = node->next)
    children += firstChild(node) ? "+" : "-";
  EXPECT_EQ(children, "-----+-");
}

}  // namespace
}  // namespace quorbel
