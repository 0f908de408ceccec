// The selected links and the tree that shows the XML of the first of them.

#include "app/main_window.h"
#include "lattice/xml_fragment.h"

namespace quorbel {
namespace {

/// Fills a row with an element, and rows below it with its attributes and then its child elements.
template <typename Columns>
void fillRow(Gtk::TreeStore& store, const Gtk::TreeRow& row, const Columns& columns,
             const xmlNode* element) {
  row[columns.name] = xmlText(element->name);
  for (const xmlAttr* attribute = firstAttribute(element); attribute; attribute = attribute->next) {
    const Gtk::TreeRow child = *store.append(row.children());
    child[columns.name] = xmlText(attribute->name);
    child[columns.value] = attributeValue(attribute);
  }
  for (const xmlNode* child = firstChild(element); child; child = child->next)
    if (child->type == XML_ELEMENT_NODE)
      fillRow(store, *store.append(row.children()), columns, child);
}

}  // namespace

void MainWindow::clear_selection() {
  m_SelectedEdges.clear();
  clearAttributeTree();
}

/// Rows that are no longer shown must not pick fields: the view loses its model too, and first,
/// since the accessibility bridge asks for the cells of rows whose columns are going.
void MainWindow::clearAttributeTree() {
  m_AttributeTree.unset_model();
  m_AttributeTree.remove_all_columns();
  m_refTreeStore.reset();
}

/// Shows the XML of the first selected edge. With nothing selected, or a word that is no XML, the
/// tree stays as it is.
void MainWindow::refillAttributeTree() {
  if (m_SelectedEdges.empty()) return;
  XmlDocument document = parseXmlFragment(m_SelectedEdges.front().word, "noname.xml");
  if (!document) return;
  clearAttributeTree();
  m_refTreeStore = Gtk::TreeStore::create(m_Columns);
  fillRow(*m_refTreeStore.operator->(), *m_refTreeStore->append(), m_Columns,
          xmlDocGetRootElement(document.get()));
  m_AttributeTree.append_column("Attribute", m_Columns.name);
  m_AttributeTree.append_column("Value", m_Columns.value);
  m_AttributeTree.set_model(m_refTreeStore);
  m_AttributeTree.expand_all();
  document.reset();
  xmlCleanupParser();
}

}  // namespace quorbel
