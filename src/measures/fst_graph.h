#pragma once

// A word lattice as an automaton for OpenFst's algorithms. Only for the files that run them: its
// headers take long to compile.

#include <fst/vector-fst.h>

#include "words/word_lattice.h"

namespace quorbel {

/// An arc whose label is the index of its link plus 1, 0 being OpenFst's label for none.
using CostArc = fst::ArcTpl<fst::TropicalWeightTpl<double>>;
using LogArc = fst::ArcTpl<fst::LogWeightTpl<double>>;

/// The lattice with the same states as it has nodes, from node 0 to the last. Each link whose
/// `isUsed` is set costs what `scores` has for it, with its sign flipped. `isReversed` turns every
/// link around and leads from the last node to node 0; state numbers are then counted from the end,
/// so that links still lead to higher ones.
template <typename Arc>
fst::VectorFst<Arc> fstOf(const WordLattice& lattice, const std::vector<double>& scores,
                          const std::vector<char>& isUsed, bool isReversed = false) {
  using Weight = typename Arc::Weight;
  const int last = static_cast<int>(lattice.nodes.size()) - 1;
  fst::VectorFst<Arc> graph;
  graph.ReserveStates(last + 1);
  for (int state = 0; state <= last; ++state) graph.AddState();
  graph.SetStart(0);
  graph.SetFinal(last, Weight::One());
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    if (!isUsed[i]) continue;
    const WordLink& link = lattice.links[i];
    const int from = isReversed ? last - link.end : link.start;
    const int to = isReversed ? last - link.start : link.end;
    const int label = static_cast<int>(i) + 1;
    graph.AddArc(from, Arc(label, label, Weight(-scores[i]), to));
  }
  return graph;
}

}  // namespace quorbel
