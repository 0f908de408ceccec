#pragma once

// How little the paths through a graph of words differ from a reference.

#include <cstddef>
#include <vector>

namespace quorbel {

/// The edits that make a reference what was recognised.
struct EditCounts {
  int substitutions = 0;
  int deletions = 0;
  int insertions = 0;

  int total() const { return substitutions + deletions + insertions; }
};

/// A link of a graph of words. Words are numbers, equal for equal words; links without word (-1)
/// differ from nothing.
struct EditLink {
  int start;
  int end;
  int word;
  double score;  ///< the higher the better, between paths with the same counts
};

/// A graph from node 0 to the last. Links are sorted by where they start, and lead to later nodes
/// unless it is cyclic.
struct EditGraph {
  std::size_t nodeCount = 1;
  std::vector<EditLink> links;
  bool isCyclic = false;
};

/// A place of an alignment: a word of the reference, of a path, or of both side by side.
struct AlignedPlace {
  int reference = -1;  ///< index of the word; -1 for a word that was inserted
  int link = -1;       ///< index of the link; -1 for a word that was deleted
};

/// A path beside a reference.
struct Alignment {
  EditCounts counts;
  std::vector<std::size_t> links;    ///< of the path, from the start on
  std::vector<AlignedPlace> places;  ///< all words of both, from the start on
};

/// Finds the path of all that takes the fewest edits, of those with equally many the one with the
/// fewest substitutions, then the fewest deletions, then the best score. In a cyclic graph with
/// positive scores none of them counts. Time is the product of links and reference words, in a
/// cyclic graph with the logarithms of both; memory does not grow with their product.
///
/// Returns false when no path leads to the end; `alignment` then stays as it is.
bool findFewestEdits(const EditGraph& graph, const std::vector<int>& reference,
                     Alignment& alignment);

}  // namespace quorbel
