#pragma once

#include <cstddef>
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

/// Writes a text archive of Kaldi's into the working directory, the same for every run: utterances
/// "utterance-0" and so on, of 40 words with 5 alternatives each and some 30 transition ids an arc,
/// until it has `bytes`. Returns the name of the last utterance.
std::string writeKaldiArchive(const std::string& path, std::size_t bytes);

}  // namespace quorbel
