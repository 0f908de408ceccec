#include "lattice/xml_label.h"

#include <libxml/parser.h>

#include "lattice/xml_fragment.h"

namespace quorbel {
namespace {

template <typename Field, typename Lookup>
std::string joinFields(const std::vector<Field>& fields, const xmlNode* root, Lookup lookup) {
  std::string label;
  for (const Field& field : fields) {
    int depth = 0;
    const std::string value = lookup(root, depth, field);
    if (!label.empty() && !value.empty()) label += " / ";
    label += value;
  }
  return label;
}

}  // namespace

std::string edgeXmlLabel(const Graph& graph, const std::string& word, bool byIndex) {
  XmlDocument document = parseXmlFragment(word, "getXMLInfo.xml");
  if (!document) return "NULL";
  const xmlNode* root = xmlDocGetRootElement(document.get());
  std::string label = byIndex ? joinFields(graph.fieldsByIndex, root, lookupFieldByIndex)
                              : joinFields(graph.fieldsByName, root, lookupFieldByName);
  if (label.empty()) label = firstAttributeValue(root);
  document.reset();
  xmlCleanupParser();
  return label.empty() ? "NULL" : label;
}

std::string lookupFieldByName(const xmlNode* node, int& depth, const XmlField& field) {
  const int length = static_cast<int>(field.path.size());
  if (depth >= length) return "";
  const int target = field.path[static_cast<std::size_t>(depth)];
  int position = 1;
  for (; node && position < target; node = node->next) ++position;
  if (!node || position != target || depth != length - 1) return "";

  const xmlAttr* attribute = firstAttribute(node);
  if (!attribute && firstChild(node)) depth = length;
  for (; attribute; attribute = attribute->next)
    if (field.attribute == xmlText(attribute->name)) return attributeValue(attribute);
  return "";
}

std::string lookupFieldByIndex(const xmlNode* node, int& depth, const IndexPath& path) {
  ++depth;
  const int last = static_cast<int>(path.size()) - 1;
  for (int position = 0; node; node = node->next, ++position) {
    const xmlAttr* attribute = firstAttribute(node);
    if (depth == last && attribute) {
      for (; attribute; attribute = attribute->next, ++position)
        if (position == path.back()) return attributeValue(attribute);
      return "";
    }
    if (const xmlNode* child = firstChild(node)) {
      std::string value = lookupFieldByIndex(child, depth, path);
      if (!value.empty()) return value;
    }
  }
  return "";
}

std::string firstAttributeValue(const xmlNode* node) {
  for (; node; node = node->next) {
    if (const xmlAttr* attribute = firstAttribute(node)) return attributeValue(attribute);
    if (const xmlNode* child = firstChild(node)) return firstAttributeValue(child);
  }
  return "";
}

}  // namespace quorbel
