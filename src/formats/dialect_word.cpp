#include "formats/dialect_word.h"

#include <libxml/parser.h>

#include <algorithm>
#include <cctype>
#include <memory>

#include "lattice/xml_fragment.h"
#include "lattice/xml_label.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

constexpr const char* kExact = "exact";

/// Tells apart quickly what cannot be XML, such as "<s>": most words that begin with "<" are
/// markers of a toolkit.
bool looksLikeXml(std::string_view fragment) {
  if (fragment.size() < 4) return false;
  const unsigned char first = static_cast<unsigned char>(fragment[1]);
  if (!std::isalpha(first) && first != '_' && first < 0x80) return false;
  return fragment.find("/>") != std::string_view::npos ||
         fragment.find("</") != std::string_view::npos;
}

std::string trimmed(const std::string& text) {
  constexpr const char* kBlanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return "";
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::string textContent(const xmlNode* node) {
  const std::unique_ptr<xmlChar, void (*)(void*)> content(xmlNodeGetContent(node), xmlFree);
  return content ? xmlText(content.get()) : "";
}

const xmlNode* firstElement(const xmlNode* node) {
  while (node && node->type != XML_ELEMENT_NODE) node = node->next;
  return node;
}

/// The attribute "exact" of the first element, "" without one.
std::string exactWord(const xmlNode* node) {
  node = firstElement(node);
  if (!node) return "";
  for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next)
    if (std::string_view(xmlText(attribute->name)) == kExact)
      return withoutPercents(attributeValue(attribute));
  return "";
}

/// Appends text to an attribute in single quotes. The equals sign of "start=" and "end=" goes,
/// since the viewer looks for these words wherever a stretch of a long line begins.
void appendEscaped(std::string& line, const std::string& text) {
  const bool looksLikeEndPoint =
      text.find("start=") != std::string::npos || text.find("end=") != std::string::npos;
  for (const char c : text) {
    switch (c) {
      case '&':
        line += "&amp;";
        break;
      case '<':
        line += "&lt;";
        break;
      case '>':
        line += "&gt;";
        break;
      case '\'':
        line += "&apos;";
        break;
      case '=':
        line += looksLikeEndPoint ? "&#61;" : "=";
        break;
      default:
        line += c;
    }
  }
}

void appendAttribute(std::string& line, std::string_view name, const std::string& value) {
  line += ' ';
  line += name;
  line += "='";
  appendEscaped(line, value);
  line += '\'';
}

}  // namespace

bool isFreeAttribute(std::string_view name) {
  return name != "in" && name != "out" && name != kExact && name.substr(0, 3) != "xml";
}

bool hasTooManyAttributes(std::string_view fragment) {
  if (!looksLikeXml(fragment)) return false;
  int count = 0;
  for (std::size_t i = 0; i < fragment.size(); ++i) {
    if (fragment[i] == '<') count = 0;
    if (fragment[i] != '=') continue;
    const std::size_t value = fragment.find_first_not_of(" \t", i + 1);
    if (value == std::string_view::npos) break;
    const bool isQuoted = fragment[value] == '"' || fragment[value] == '\'';
    if (isQuoted && ++count > kMostWordAttributes) return true;
  }
  return false;
}

std::optional<std::string> wordOfFragment(std::string_view fragment) {
  if (!looksLikeXml(fragment)) return std::nullopt;
  // A fragment may have several elements, a document only one.
  const std::string document = "<r>" + std::string(fragment) + "</r>";
  constexpr int kQuiet = XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET;
  const XmlDocument parsed(xmlReadMemory(document.data(), static_cast<int>(document.size()),
                                         "word.xml", nullptr, kQuiet),
                           &xmlFreeDoc);
  const xmlNode* root = parsed ? xmlDocGetRootElement(parsed.get()) : nullptr;
  if (!root || root->next || !root->children) return std::nullopt;
  std::string word = exactWord(root->children);
  if (word.empty()) word = firstAttributeValue(root->children);
  if (word.empty()) word = trimmed(textContent(root));
  if (!word.empty()) return word;
  const xmlNode* element = firstElement(root->children);
  if (!element || !element->properties) return std::nullopt;
  return kNullWord;  // as in <w in='' out='x'/>
}

void appendFragment(std::string& line, const Word& word) {
  if (!word.xml.empty()) {
    line += word.xml;
    return;
  }
  const std::string drawable = drawableText(word.text);
  line += "<w";
  appendAttribute(line, "in", drawable);
  if (drawable != word.text) appendAttribute(line, kExact, percentText(word.text));
  for (const WordAttribute& attribute : word.attributes)
    appendAttribute(line, attribute.name, drawableText(attribute.value));
  line += "/>";
}

}  // namespace quorbel
