#pragma once

// Finding links by what their labels show, without a window.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "lattice/layout_item.h"
#include "layout/node_items.h"

namespace quorbel {

/// The text of an edge's label as it is drawn, several lines joined by blanks. UTF-8.
std::string shownLabel(const LayoutItem& edge);

/// A text in UTF-8 as a search compares it: without case, and with each letter and its marks in one
/// form, whichever they were written in. What is not UTF-8 becomes a replacement character.
std::string foldedText(const std::string& text);

/// The labels of a drawing in the order of the utterance: by the time that their links begin, those
/// of one time from left to right and then from top to bottom. Edges without a place in the drawing
/// are left out. An edge's number in this order is its rank.
class LabelSearch {
 public:
  /// Takes the edges of `items`, which `nodeItems` has indexed. The positions of edges in `items`
  /// are kept, the items are not.
  void index(const std::vector<LayoutItem>& items, const NodeItems& nodeItems);

  /// The ranks of the edges whose labels contain `text`, which may lie anywhere in them, in order.
  /// An empty text is found nowhere.
  std::vector<std::size_t> find(const std::string& text) const;

  /// The position in the indexed items of the edge of this rank.
  std::size_t position(std::size_t rank) const { return m_Labels[rank].position; }

  /// The rank of the same link as `edge` among `items`, which are those that were indexed; nothing
  /// when it is not among them or has no place.
  std::optional<std::size_t> rankOf(const LayoutItem& edge,
                                    const std::vector<LayoutItem>& items) const;

 private:
  struct Label {
    std::string text;  ///< folded
    std::size_t position;
  };

  std::vector<Label> m_Labels;  ///< by rank
};

enum class Step { Here, Next, Previous };

/// The index in `ranks`, which are in order, of the one that a step from the rank `from` leads to.
/// Behind the last follows the first, before the first the last; without `from`, `Previous` leads
/// to the last and all else to the first. `Here` stays at `from` where that is among them, and else
/// is as `Next`. Nothing when there are none.
std::optional<std::size_t> stepAmong(const std::vector<std::size_t>& ranks,
                                     std::optional<std::size_t> from, Step step);

/// What is said about a search that found `count` links, of which the one at index `chosen` is
/// selected: "3 of 12", "0 of 12", "not found".
std::string foundText(std::optional<std::size_t> chosen, std::size_t count);

}  // namespace quorbel
