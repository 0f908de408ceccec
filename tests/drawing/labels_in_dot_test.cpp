// What the real `dot` makes of a description whose labels hold anything.

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>

#include "drawing/description.h"
#include "layout/dot_record.h"
#include "temporary_folder.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

using std::string_literals::operator""s;

/// Text after text of what means something to `dot`, to XML or to neither.
std::string nastyText(std::mt19937& random) {
  static const std::vector<std::string> kPieces = {
      "\"",          "\\",
      "\\\"",        "\\n",
      "\\l",         "\\r",
      "\\N",         "\\G",
      "\\E",         "\\T",
      "\\H",         "\\L",
      "\\\n",        "&",
      "amp;",        "&lt;",
      "&#60;",       "&#x41;",
      "&#xD800;",    "&quot;",
      "&nbsp;",      "<",
      ">",           "<b>x</b>",
      "[",           "]",
      "{",           "}",
      ";",           ",",
      "=",           "->",
      "--",          "/*",
      "*/",          "//",
      "#",           "|",
      "%",           "+",
      "'",           "\n",
      "\r",          "\t",
      "\0"s,         "\x01"s,
      "\x1B",        "\x7F",
      "\xFF",        "\xC3",
      "\xE0\x80",    "\xED\xA0\x80",
      "\u00FC",      "\u0085",
      "\u2028",      "\uFFFE",
      "\U0001F600",  " ",
      "  ",          "URL=\"javascript:alert(1)\"",
      "\", URL=\"x", "\"]; 7 [image=\"/any/local.png\"]; 0 -> 7 [x=\"",
      "label=",      "subgraph",
      "x",           "word"};
  std::string text = "w";  // a label of blanks alone has no text in a drawing
  const std::size_t count = 1 + random() % 8;
  for (std::size_t i = 0; i < count; ++i) text += kPieces[random() % kPieces.size()];
  return text;
}

/// A lattice with that many links in a row.
WordLattice chainOf(int links) {
  WordLattice lattice;
  lattice.nodes.resize(slot(links) + 1);
  lattice.links.resize(slot(links));
  for (int i = 0; i < links; ++i) {
    lattice.links[slot(i)].start = i;
    lattice.links[slot(i)].end = i + 1;
  }
  return lattice;
}

std::string drawn(const TemporaryFolder& folder, const std::string& description,
                  const std::string& format) {
  folder.write("labels.dot", description);
  const std::string command = "dot -T" + format + " -o drawing labels.dot 2>messages";
  EXPECT_EQ(std::system(command.c_str()), 0) << textOf("messages");
  return textOf("drawing");
}

/// Every statement of what `dot` read: what it is about and the names of its attributes.
std::multiset<std::string> statementsOf(const std::string& text) {
  std::multiset<std::string> statements;
  std::size_t pos = text.find('{') + 1;
  for (std::size_t bracket = text.find('[', pos); bracket != std::string::npos;
       bracket = text.find('[', pos)) {
    std::string statement;
    for (const char c : text.substr(pos, bracket - pos))
      if (!std::isspace(static_cast<unsigned char>(c)) && c != ';') statement += c;
    for (const auto& attribute : takeDotRecord(text, pos).attributes)
      statement += ' ' + attribute.first;
    statements.insert(statement);
    ++pos;
  }
  return statements;
}

/// The statements that there are to be, a link each with its label and colour.
std::multiset<std::string> expectedStatements(int links) {
  std::multiset<std::string> statements = {"graph rankdir", "node label"};
  for (int i = 0; i <= links; ++i)
    if (i == 0 || i == links) statements.insert(std::to_string(i) + " color fillcolor shape style");
  for (int i = 0; i < links; ++i)
    statements.insert(std::to_string(i) + "->" + std::to_string(i + 1) + " color label");
  return statements;
}

void collectTexts(const xmlNode* node, std::set<std::string>& elements,
                  std::vector<std::string>& texts) {
  for (; node; node = node->next) {
    if (node->type != XML_ELEMENT_NODE) continue;
    const std::string name = reinterpret_cast<const char*>(node->name);
    elements.insert(name);
    for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next)
      elements.insert(name + "/" + reinterpret_cast<const char*>(attribute->name));
    if (name == "text") {
      const std::unique_ptr<xmlChar, void (*)(void*)> text(xmlNodeGetContent(node), xmlFree);
      texts.emplace_back(reinterpret_cast<const char*>(text.get()));
    }
    collectTexts(node->children, elements, texts);
  }
}

/// The text with each no-break space as a plain one: `dot` so keeps several blanks in an SVG.
std::string withPlainBlanks(std::string text) {
  const std::string noBreak = "\u00A0";
  for (std::size_t at = text.find(noBreak); at != std::string::npos; at = text.find(noBreak))
    text.replace(at, noBreak.size(), " ");
  return text;
}

TEST(LabelsInDot, AreTheTextsAndNothingElse) {
  constexpr unsigned kSeed = 9103;
  constexpr int kLinks = 60;
  SCOPED_TRACE("seed 9103");
  const TemporaryFolder folder;
  std::mt19937 random(kSeed);
  const WordLattice lattice = chainOf(kLinks);
  for (int round = 0; round < 25; ++round) {
    std::vector<std::string> labels(kLinks);
    std::generate(labels.begin(), labels.end(), [&] { return nastyText(random); });
    const std::string description = descriptionOf(lattice, labels, DrawingMarks());
    ASSERT_EQ(statementsOf(drawn(folder, description, "canon")), expectedStatements(kLinks))
        << description;

    const std::string svg = drawn(folder, description, "svg");
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
        xmlReadMemory(svg.data(), static_cast<int>(svg.size()), "drawing.svg", nullptr,
                      XML_PARSE_NONET),
        xmlFreeDoc);
    ASSERT_TRUE(document) << svg;
    std::set<std::string> elements;
    std::vector<std::string> texts;
    collectTexts(xmlDocGetRootElement(document.get()), elements, texts);
    for (const char* wrong : {"a", "image", "a/href", "script", "style"})
      ASSERT_EQ(elements.count(wrong), 0U) << wrong << " in " << svg;
    std::vector<std::string> expected;
    for (const std::string& label : labels)
      expected.push_back(withPlainBlanks(withControlPictures(inUtf8(label))));
    for (int node = 0; node <= kLinks; ++node) expected.push_back(std::to_string(node));
    for (std::string& text : texts) text = withPlainBlanks(text);
    std::sort(expected.begin(), expected.end());
    std::sort(texts.begin(), texts.end());
    ASSERT_EQ(texts, expected) << description;
  }
}

TEST(LabelsInDot, MayBeLong) {
  const TemporaryFolder folder;
  const std::string longText(100000, '"');
  const std::string description = descriptionOf(chainOf(1), {longText}, DrawingMarks());
  EXPECT_EQ(statementsOf(drawn(folder, description, "canon")), expectedStatements(1));
}

}  // namespace
}  // namespace quorbel
