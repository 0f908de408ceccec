#pragma once

// What there is beside the best ways to the end of a lattice, the cheapest first.

#include <cstddef>
#include <vector>

#include "measures/best_ways.h"

namespace quorbel {

/// A link that leaves the best way from its node. `more` is what the end is farther away through it
/// than on that way: no cost below 0, and of cost 0 no fewer links.
struct Detour {
  Distance more;
  int link = 0;

  bool operator<(const Detour& other) const {
    return std::tie(more.cost, more.links, link) <
           std::tie(other.more.cost, other.more.links, other.link);
  }
};

/// All detours that can be taken on the best way from a node, as a heap for each node. The heap of
/// a node shares all but a few entries with that of the node to which its best way leads, so all
/// together have O((nodes + links) log nodes) of them (after Eppstein's "Finding the k shortest
/// paths").
class Detours {
 public:
  /// Of these best ways by these scores. The arguments are not kept.
  Detours(const WordLattice& lattice, const std::vector<double>& scores, const BestWays& ways);

  /// A place among the detours: in a heap, and behind it in the list of those that leave one node.
  struct Place {
    int heapEntry = -1;  ///< -1 in the list, where there is nothing below
    std::size_t detour = 0;
  };

  /// Calls `take` with the place of the first detour on the best way from `node`, if there is one.
  template <typename Take>
  void first(int node, Take take) const {
    takeEntry(m_HeapOf[slot(node)], take);
  }

  /// Calls `take` with each place right below, at most three: each detour but the first is right
  /// below one other, which is no farther.
  template <typename Take>
  void below(const Place& place, Take take) const {
    if (place.heapEntry >= 0) {
      takeEntry(entry(place.heapEntry).left, take);
      takeEntry(entry(place.heapEntry).right, take);
    }
    if (m_Detours[place.detour].isFollowed) take(Place{-1, place.detour + 1});
  }

  const Detour& at(const Place& place) const { return m_Detours[place.detour].detour; }

 private:
  struct Listed {
    Detour detour;
    int node;         ///< the one that it leaves
    bool isFollowed;  ///< by another of the same node
  };
  /// Stands for the detours of one node by the first of them.
  struct Entry {
    std::size_t detour;
    int left;
    int right;
    int rank;  ///< how many steps to the right there are below, and 1
  };

  const Entry& entry(int index) const { return m_Entries[slot(index)]; }
  int rankOf(int index) const { return index < 0 ? 0 : entry(index).rank; }

  template <typename Take>
  void takeEntry(int index, Take take) const {
    if (index >= 0) take(Place{index, entry(index).detour});
  }

  void list(const WordLattice& lattice, const std::vector<double>& scores, const BestWays& ways);
  int add(Entry entry);
  int merge(int a, int b);

  std::vector<Listed> m_Detours;  ///< by their nodes, of each node from the nearest on
  std::vector<Entry> m_Entries;
  std::vector<int> m_HeapOf;  ///< the top entry of each node's heap; -1 for an empty one
};

}  // namespace quorbel
