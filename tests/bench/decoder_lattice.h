#pragma once

#include <string>

namespace quorbel {

/// Files of one random lattice as a decoder would write it, the same for every run.
struct DecoderLattice {
  std::string slfFile;  ///< HTK Standard Lattice Format, words on nodes
  std::string fstFile;  ///< the same graph with its totals as costs, for OpenFst's compiler
};

/// Writes both files into the working directory: a start and an end node with layers of `perWord`
/// alternatives between them, a layer for each word that was spoken, and `linkCount` links, of
/// which each node but the ends has at least one that enters and one that leaves it.
DecoderLattice writeDecoderLattice(int nodeCount, int linkCount, int perWord);

}  // namespace quorbel
