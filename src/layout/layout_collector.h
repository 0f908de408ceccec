#pragma once

// What both forms of a layout become: items, with what the lattice knows about them.

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "lattice/graph.h"
#include "lattice/layout_item.h"

namespace quorbel {

/// An edge as a layout has it. What comes behind something that is missing is not looked at.
struct LayoutEdge {
  struct Place {
    int x = 0;  ///< centre of the label, layout points
    int y = 0;
  };
  int startNode = 0;
  int endNode = 0;
  std::optional<std::string> label;
  std::optional<int> linkId;
  std::optional<Place> place;
};

/// Collects one layout into the bounding box of a graph and a list of items.
class LayoutCollector {
 public:
  /// Empties `items`. The graph must have an adjacency, whose links stay where they are as long as
  /// this lives.
  LayoutCollector(Graph& graph, std::vector<LayoutItem>& items);

  void setWidth(int width) { m_Graph.layoutWidth = width; }
  void setHeight(int height) { m_Graph.layoutHeight = height; }

  /// An item for the node of this index that has nothing but its time; nothing when the lattice has
  /// no such node.
  std::optional<LayoutItem> nodeItem(int index) const;

  void addNode(const LayoutItem& item) { m_Items.push_back(item); }

  /// Appends the edge with the word and score of the first link that has its id; the link gets the
  /// current score as 0.0 when it lacks it. An edge without label or id gives no item and says so
  /// on standard output; one without a place says so and has kNoPosition.
  void addEdge(LayoutEdge edge);

 private:
  Graph& m_Graph;
  std::vector<LayoutItem>& m_Items;
  std::unordered_map<int, Edge*> m_Links;  ///< the first link of each id
};

/// A node's size from inches, which some locales write with a decimal comma; 0 for one beyond the
/// range of an integer.
int nodeSize(std::string inches);

}  // namespace quorbel
