#pragma once

// Where a lattice can be taken apart: at the nodes that every way through it passes.

#include <cstddef>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// A lattice as sections one behind the other. A section and the next one share a node and nothing
/// else: every link belongs to one section.
struct LatticeSections {
  /// The nodes between sections in the order of paths, with the start before the first section and
  /// the end behind the last. Only one node where start and end are the same.
  std::vector<int> cuts;
  /// The section of each node, counted from 0; of a cut the one that it begins.
  std::vector<std::size_t> ofNode;

  /// How many sections there are, at least 1.
  std::size_t count() const { return cuts.size() < 2 ? 1 : cuts.size() - 1; }

  /// The section of a link from node `start` to node `end`.
  std::size_t ofLink(int start, int end) const;
};

/// Cuts the lattice at all nodes that every way from start to end passes, a way being free to go
/// along links or against them. In an acyclic lattice whose links all lie on paths these are the
/// nodes that all paths pass. Takes time in proportion to nodes and links. What hangs on a cut
/// alone belongs to the section that the cut begins, before the end to the last one; what hangs on
/// nothing belongs to the first. A lattice whose end cannot be reached is one section.
LatticeSections sectionsOf(const WordLattice& lattice);

}  // namespace quorbel
