#pragma once

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <memory>
#include <string>
#include <vector>

namespace quorbel {

/// A diagram as a program reads it that knows its format.
class DiaDocument {
 public:
  explicit DiaDocument(const std::string& text)
      : m_Document(xmlReadMemory(text.data(), static_cast<int>(text.size()), "diagram.dia", nullptr,
                                 XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
                   &xmlFreeDoc) {}

  bool isWellFormed() const { return m_Document != nullptr; }

  /// The texts of what the XPath expression finds.
  std::vector<std::string> find(const std::string& expression) const {
    std::vector<std::string> texts;
    if (!m_Document) return texts;
    const std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext*)> context(
        xmlXPathNewContext(m_Document.get()), &xmlXPathFreeContext);
    xmlXPathRegisterNs(context.get(), xml("dia"), xml("http://www.lysator.liu.se/~alla/dia/"));
    const std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObject*)> found(
        xmlXPathEvalExpression(xml(expression.c_str()), context.get()), &xmlXPathFreeObject);
    if (!found) ADD_FAILURE() << "no XPath: " << expression;
    if (!found || !found->nodesetval) return texts;
    for (int i = 0; i < found->nodesetval->nodeNr; ++i) {
      const std::unique_ptr<xmlChar, void (*)(void*)> text(
          xmlNodeGetContent(found->nodesetval->nodeTab[i]), xmlFree);
      texts.emplace_back(reinterpret_cast<const char*>(text.get()));
    }
    return texts;
  }

  /// The values of an attribute of all objects of a type, in the order of the file.
  std::vector<std::string> values(const std::string& type, const std::string& attribute) const {
    return find("//dia:object[@type='" + type + "']//dia:attribute[@name='" + attribute +
                "']/*/@val");
  }

  /// The lines of text in the order of the file.
  std::vector<std::string> texts() const {
    std::vector<std::string> texts = find("//dia:string");
    for (std::string& text : texts) {
      EXPECT_GE(text.size(), 2u);
      EXPECT_EQ(text.front(), '#');
      EXPECT_EQ(text.back(), '#');
      text = text.substr(1, text.size() - 2);
    }
    return texts;
  }

 private:
  static const xmlChar* xml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

  std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> m_Document;
};

}  // namespace quorbel
