#include "lattice/xml_fragment.h"

#include <libxml/parser.h>

#include <iostream>

namespace quorbel {

XmlDocument parseXmlFragment(const std::string& word, const char* name) {
  constexpr int kNoOptions = 0;
  XmlDocument document(
      xmlReadMemory(word.data(), static_cast<int>(word.size()), name, nullptr, kNoOptions),
      &xmlFreeDoc);
  if (!document) std::cout << "Failed to parse document" << std::endl;
  return document;
}

const xmlAttr* firstAttribute(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE ? node->properties : nullptr;
}

const xmlNode* firstChild(const xmlNode* node) {
  return node->type == XML_ENTITY_REF_NODE ? nullptr : node->children;
}

std::string attributeValue(const xmlAttr* attribute) {
  const xmlNode* child = attribute->children;
  return child && child->content ? xmlText(child->content) : "";
}

}  // namespace quorbel
