#pragma once

#include <utility>
#include <vector>

#include "lattice/layout_item.h"

namespace quorbel {

/// Finds the nodes of a drawing by their index in the lattice, without walking the drawing.
class NodeItems {
 public:
  /// Positions in the list of items that was last indexed.
  using Positions = std::vector<std::pair<int, std::size_t>>;

  /// Indexes `items`; to be called whenever nodes of the list come, go or move within it.
  void index(const std::vector<LayoutItem>& items);

  /// The positions of the items of this node, in the order of the list, each paired with the node
  /// index. A drawing has one item a node; an odd layout file may give several or none.
  std::pair<Positions::const_iterator, Positions::const_iterator> find(int nodeIndex) const;

  /// The items of nodes with times between the two, both left out, in the order of their times: the
  /// time of each with its position.
  using Times = std::vector<std::pair<double, std::size_t>>;
  std::pair<Times::const_iterator, Times::const_iterator> between(double from, double to) const;

  /// The time of a node's first item in the list that was indexed, as a fraction of the utterance;
  /// 0.0 without an item and where malformed times made it not-a-number.
  double timeOf(int nodeIndex, const std::vector<LayoutItem>& items) const;

 private:
  Positions m_Positions;  ///< sorted by node index, then by position
  Times m_Times;          ///< sorted; times that are no numbers are left out
};

}  // namespace quorbel
