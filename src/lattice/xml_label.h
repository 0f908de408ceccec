#pragma once

// What a link of the drawing is labelled with: fields of the XML fragment that its word may be.

#include <libxml/tree.h>

#include <string>

#include "lattice/graph.h"

namespace quorbel {

/// The label of a link with this word: the values of the fields in `graph.fieldsByIndex`
/// (`byIndex`) or `graph.fieldsByName`, joined by " / "; the first attribute value in the fragment
/// when no field is chosen or none has a value; "NULL" when the fragment has no attribute. A word
/// that is no well-formed XML prints "Failed to parse document" on standard output and gives
/// "NULL".
///
/// The fragment is parsed without substituting entities and without loading anything from outside.
/// Afterwards libxml2's global state is cleaned up: no other thread may use libxml2 meanwhile.
std::string edgeXmlLabel(const Graph& graph, const std::string& word, bool byIndex);

/// The value of the attribute `field.attribute` of the element at `field.path`, "" if there is
/// none. `node` and its following siblings count from 1, text and comments included; only the last
/// entry of a path can find an attribute, so in practice paths have one entry. The caller starts
/// `depth`, the entry of the path in force, at 0; an element there that has children and no
/// attribute moves it behind the last, where nothing is found any more.
std::string lookupFieldByName(const xmlNode* node, int& depth, const XmlField& field);

/// The value of the attribute that the last entry of `path` counts to, "" if there is none. The
/// length of the path says how deep the element lies; its other entries do not matter. Siblings,
/// then the attributes of the element, are counted from 0 on one counter, as the rows of the
/// attribute tree are. The caller starts `depth` at 0; it grows with every list of children that is
/// entered and is never lowered.
std::string lookupFieldByIndex(const xmlNode* node, int& depth, const IndexPath& path);

/// The value of the first attribute of `node` or, when it has none, of the first element that has
/// one: children are searched before siblings, and once a child was entered its siblings are all
/// that counts. "" if there is none.
std::string firstAttributeValue(const xmlNode* node);

}  // namespace quorbel
