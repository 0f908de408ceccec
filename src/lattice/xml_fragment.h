#pragma once

// The XML fragment that a link's word may be, as libxml2 holds it.

#include <libxml/tree.h>

#include <memory>
#include <string>

namespace quorbel {

/// A parsed fragment, or none; its nodes live as long as it does.
using XmlDocument = std::unique_ptr<xmlDoc, void (*)(xmlDoc*)>;

/// Parses `word` under the document name `name`, without substituting entities and without loading
/// anything from outside. None, and "Failed to parse document" on standard output, when it is no
/// well-formed XML; libxml2 says what is wrong on standard error.
XmlDocument parseXmlFragment(const std::string& word, const char* name);

/// The first of the attributes that follow each other in `next`, or null. Only elements have them:
/// in other nodes libxml2 keeps something else in that place.
const xmlAttr* firstAttribute(const xmlNode* node);

/// The first child of a node, or null. The children of an entity reference are the entity's
/// declaration, not part of the fragment.
const xmlNode* firstChild(const xmlNode* node);

/// An attribute's value as far as its first child has it: the text up to the first entity
/// reference, or the entity's own text where the value begins with one; "" without a child.
std::string attributeValue(const xmlAttr* attribute);

/// libxml2's characters (UTF-8) as the rest of the program has them.
inline const char* xmlText(const xmlChar* characters) {
  return reinterpret_cast<const char*>(characters);
}

}  // namespace quorbel
