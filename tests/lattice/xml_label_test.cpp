#include "lattice/xml_label.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <string>
#include <vector>

#include "process_locale.h"
#include "processor_time.h"
#include "temporary_folder.h"
#include "xml_messages.h"

namespace quorbel {
namespace {

const std::string kWord = "<w text='yes' conf='0.8' empty=''/>";

std::string labelOf(const std::string& word) { return edgeXmlLabel(Graph(), word, false); }

std::string labelByName(const std::string& word, const std::vector<XmlField>& fields) {
  Graph graph;
  graph.fieldsByName = fields;
  graph.fieldsByIndex = {{0, 0}};
  return edgeXmlLabel(graph, word, false);
}

std::string labelByIndex(const std::string& word, const std::vector<IndexPath>& fields) {
  Graph graph;
  graph.fieldsByIndex = fields;
  graph.fieldsByName = {{{1}, "text"}};
  return edgeXmlLabel(graph, word, true);
}

TEST(XmlLabel, WithoutFieldsIsTheFirstAttribute) {
  EXPECT_EQ(labelOf(kWord), "yes");
  EXPECT_EQ(labelByName(kWord, {}), "yes");
  EXPECT_EQ(labelByIndex(kWord, {}), "yes");
}

TEST(XmlLabel, WithoutFieldsIsTheFirstAttributeOfTheFirstElementThatLeadsToOne) {
  EXPECT_EQ(labelOf("<w><x in='child'/></w>"), "child");
  EXPECT_EQ(labelOf("<w>text<x/><!--c--><y in='second'/></w>"), "second");
  EXPECT_EQ(labelOf("<w><x><y in='deep'/></x><z in='later'/></w>"), "deep");
  EXPECT_EQ(labelOf("<w out='outer'><x in='inner'/></w>"), "outer");
}

TEST(XmlLabel, IsNullWhereNoAttributeIsFound) {
  EXPECT_EQ(labelOf("<w/>"), "NULL");
  EXPECT_EQ(labelOf("<w>text</w>"), "NULL");
  EXPECT_EQ(labelOf("<w in=''/>"), "NULL");
  EXPECT_EQ(labelOf("<w in='' out='x'/>"), "NULL");
  EXPECT_EQ(labelOf("<w><x>text</x><y in='not reached'/></w>"), "NULL");
  EXPECT_EQ(labelOf("<w><x in=''/><y in='not reached'/></w>"), "NULL");
  EXPECT_EQ(labelByName("<w/>", {{{1}, "in"}}), "NULL");
  EXPECT_EQ(labelByIndex("<w/>", {{0, 0}}), "NULL");
}

TEST(XmlLabel, OfAPlainWordIsNullAndPrintsOneLine) {
  for (const char* word : {"hello", "good day", "", "<w>", "<w/><w/>"}) {
    PrintedText printed;
    EXPECT_EQ(labelOf(word), "NULL") << word;
    EXPECT_EQ(printed.take(), kFailed) << word;
  }
  PrintedText printed;
  EXPECT_EQ(labelByName("hello", {{{1}, "in"}, {{1}, "out"}}), "NULL");
  EXPECT_EQ(labelByIndex("hello", {{0, 0}, {0, 1}}), "NULL");
  EXPECT_EQ(printed.take(), kFailed + kFailed);
}

TEST(XmlLabel, OfAFragmentPrintsNothing) {
  PrintedText printed;
  labelOf(kWord);
  labelOf("<w/>");
  labelByName(kWord, {{{1}, "none"}});
  EXPECT_EQ(printed.take(), "");
}

TEST(XmlLabel, JoinsTheFieldsInTheirOrder) {
  EXPECT_EQ(labelByName(kWord, {{{1}, "conf"}, {{1}, "text"}}), "0.8 / yes");
  EXPECT_EQ(labelByName(kWord, {{{1}, "text"}, {{1}, "conf"}}), "yes / 0.8");
  EXPECT_EQ(labelByName(kWord, {{{1}, "text"}, {{1}, "text"}, {{1}, "conf"}}), "yes / yes / 0.8");
  EXPECT_EQ(labelByName(kWord, {{{1}, "conf"}}), "0.8");
  EXPECT_EQ(labelByIndex(kWord, {{0, 1}, {0, 0}}), "0.8 / yes");
  EXPECT_EQ(labelByIndex(kWord, {{0, 0}, {0, 1}}), "yes / 0.8");
}

TEST(XmlLabel, SkipsFieldsWithoutAValue) {
  const XmlField text = {{1}, "text"};
  const XmlField conf = {{1}, "conf"};
  const XmlField none = {{1}, "none"};
  const XmlField empty = {{1}, "empty"};
  EXPECT_EQ(labelByName(kWord, {none, text, conf}), "yes / 0.8");
  EXPECT_EQ(labelByName(kWord, {text, none, conf}), "yes / 0.8");
  EXPECT_EQ(labelByName(kWord, {text, conf, none}), "yes / 0.8");
  EXPECT_EQ(labelByName(kWord, {empty, none, conf, empty}), "0.8");
  EXPECT_EQ(labelByIndex(kWord, {{0, 2}, {0, 7}, {0, 1}, {0, 2}, {0, 0}}), "0.8 / yes");
}

TEST(XmlLabel, FallsBackToTheFirstAttributeWhereNoFieldHasAValue) {
  EXPECT_EQ(labelByName(kWord, {{{1}, "missing"}}), "yes");
  EXPECT_EQ(labelByName(kWord, {{{1}, "empty"}, {{2}, "conf"}}), "yes");
  EXPECT_EQ(labelByIndex(kWord, {{0, 9}, {3}}), "yes");
}

TEST(XmlLabel, LooksEachFieldUpFromTheRoot) {
  const std::string word = "<w><x a='1'/><y b='2' c='3'/></w>";
  EXPECT_EQ(labelByIndex(word, {{0, 0, 0}, {0, 0, 1}, {0, 0, 0}}), "1 / 1");
  EXPECT_EQ(labelByIndex("<w a='1'/>", {{0, 0}, {0, 0}, {0, 0}}), "1 / 1 / 1");
}

TEST(XmlLabel, CountsBlanksAndMarkedTextAmongTheChildren) {
  EXPECT_EQ(labelByIndex("<w> <x a='1'/><y b='2'/></w>", {{0, 0, 1}}), "1");
  EXPECT_EQ(labelByIndex("<w>t<![CDATA[d]]><x a='1'/></w>", {{0, 0, 2}}), "1");
}

TEST(XmlLabel, LetsTheCallerChooseTheKindOfFields) {
  Graph graph;
  graph.fieldsByName = {{{1}, "conf"}};
  graph.fieldsByIndex = {{0, 0}};
  for (const bool setting : {false, true}) {
    graph.labelBySelectedXml = setting;
    EXPECT_EQ(edgeXmlLabel(graph, kWord, false), "0.8");
    EXPECT_EQ(edgeXmlLabel(graph, kWord, true), "yes");
  }
}

TEST(XmlLabel, KeepsTheBytesOfAValue) {
  EXPECT_EQ(labelOf("<w in='f\xc3\xbcr \xe2\x82\xac \xf0\x9f\x98\x80'/>"),
            "f\xc3\xbcr \xe2\x82\xac \xf0\x9f\x98\x80");
  EXPECT_EQ(labelOf("<w in='a / b &quot;c&quot; [d]'/>"), "a / b \"c\" [d]");
}

TEST(XmlLabel, FollowsNestedElementsAsDeepAsTheyParse) {
  const auto nested = [](int levels) {
    std::string word;
    for (int i = 1; i < levels; ++i) word += "<w>";
    word += "<w in='deep'/>";
    for (int i = 1; i < levels; ++i) word += "</w>";
    return word;
  };
  PrintedText printed;
  EXPECT_EQ(labelOf(nested(255)), "deep");
  EXPECT_EQ(printed.take(), "");
  PrintedText printedAgain;
  EXPECT_EQ(labelOf(nested(300)), "NULL");
  EXPECT_EQ(printedAgain.take(), kFailed);
}

TEST(XmlLabel, NamesItsDocumentInTheParsersComplaints) {
  ::testing::internal::CaptureStderr();
  PrintedText printed;
  labelOf("hello");
  const std::string complaint = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(complaint.substr(0, complaint.find(' ')), "getXMLInfo.xml:1:") << complaint;
}

TEST(XmlLabel, CleansTheParserUp) {
  ASSERT_EQ(labelOf("<no:prefix in='1'/>"), "1");  // a namespace error, which libxml2 remembers
  EXPECT_EQ(xmlGetLastError(), nullptr);
  EXPECT_EQ(labelOf("<w in='2'/>"), "2");
}

/// Counts what libxml2 would load from files or the network.
class XmlLabelFromOutside : public ::testing::Test {
 protected:
  XmlLabelFromOutside() : m_Before(xmlGetExternalEntityLoader()) {
    s_Loads = 0;
    xmlSetExternalEntityLoader([](const char*, const char*, xmlParserCtxt*) {
      ++s_Loads;
      return static_cast<xmlParserInput*>(nullptr);
    });
    m_Folder.write("secret.txt", "secret");
    m_Folder.write("secret.dtd", "<!ENTITY s 'secret'><!ATTLIST w in CDATA 'secret'>");
  }
  ~XmlLabelFromOutside() override { xmlSetExternalEntityLoader(m_Before); }

  static inline int s_Loads = 0;
  TemporaryFolder m_Folder;

 private:
  xmlExternalEntityLoader m_Before;
};

TEST_F(XmlLabelFromOutside, LoadsNothing) {
  const std::string folder = "file://" + m_Folder.path().string();
  const std::vector<std::string> words = {
      "<!DOCTYPE w [<!ENTITY s SYSTEM 'secret.txt'>]><w><x>&s;</x></w>",
      "<!DOCTYPE w [<!ENTITY s SYSTEM '" + folder + "/secret.txt'>]><w>&s;</w>",
      "<!DOCTYPE w [<!ENTITY s SYSTEM 'http://localhost/secret.txt'>]><w>&s;</w>",
      "<!DOCTYPE w [<!ENTITY % s SYSTEM 'secret.dtd'> %s;]><w/>",
      "<!DOCTYPE w SYSTEM 'secret.dtd'><w/>",
      "<!DOCTYPE w PUBLIC '-//none' 'http://localhost/secret.dtd'><w/>",
  };
  for (const std::string& word : words) {
    EXPECT_EQ(labelOf(word), "NULL") << word;
    EXPECT_EQ(s_Loads, 0) << word;
  }
}

TEST_F(XmlLabelFromOutside, IncludesNothing) {
  const std::string label =
      labelOf("<w xmlns:i='http://www.w3.org/2001/XInclude'><i:include href='secret.txt'/></w>");
  EXPECT_EQ(label, "secret.txt");
  EXPECT_EQ(s_Loads, 0);
}

TEST_F(XmlLabelFromOutside, PutsNoEntityIntoAnAttribute) {
  EXPECT_EQ(labelOf("<!DOCTYPE w [<!ENTITY s SYSTEM 'secret.txt'>]><w in='&s;'/>"), "NULL");
  EXPECT_EQ(s_Loads, 0);
}

TEST(XmlLabel, IsAnEntityOfItsOwnAsItStands) {
  const std::string type = "<!DOCTYPE w [<!ENTITY e 'hello'><!ENTITY x '<x in=\"1\"/>'>]>";
  EXPECT_EQ(labelOf(type + "<w in='&e;'/>"), "hello");
  EXPECT_EQ(labelOf(type + "<w in='oh &e;'/>"), "oh ");
  EXPECT_EQ(labelOf(type + "<w>&x;</w>"), "NULL");
  EXPECT_EQ(labelOf(type + "<w>&x;<y in='2'/></w>"), "2");
}

/// Entities that stand for ten of the one before, nine times over.
std::string entityBomb() {
  std::string type = "<!DOCTYPE w [<!ENTITY e0 'bang'>";
  for (int i = 1; i < 10; ++i) {
    type += "<!ENTITY e" + std::to_string(i) + " '";
    for (int k = 0; k < 10; ++k) type += "&e" + std::to_string(i - 1) + ";";
    type += "'>";
  }
  return type + "]>";
}

TEST(XmlLabel, ExpandsNoEntityBomb) {
  constexpr double kSeconds = 5;
  const ProcessorTime time;
  const std::string raw = "&e8;&e8;&e8;&e8;&e8;&e8;&e8;&e8;&e8;&e8;";
  const std::string inAttribute = labelOf(entityBomb() + "<w in='&e9;'/>");
  EXPECT_TRUE(inAttribute == "NULL" || inAttribute == raw) << inAttribute.substr(0, 1000);
  EXPECT_EQ(labelOf(entityBomb() + "<w>&e9;</w>"), "NULL");
  EXPECT_EQ(labelOf("<!DOCTYPE w [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><w>&a;</w>"), "NULL");
  EXPECT_LT(time.seconds(), kSeconds);
}

class XmlLabelLocale : public InEveryLocale {};
INSTANTIATE_TEST_SUITE_P(Locales, XmlLabelLocale, kLocales);

TEST_P(XmlLabelLocale, LabelIsTheSame) {
  EXPECT_EQ(labelByName(kWord, {{{1}, "conf"}, {{1}, "text"}}), "0.8 / yes");
  EXPECT_EQ(labelByIndex("<w a='1,000' b='f\xc3\xbcr'/>", {{0, 0}, {0, 1}}), "1,000 / f\xc3\xbcr");
}

}  // namespace
}  // namespace quorbel
