#pragma once

#include <string>

namespace quorbel {

/// Files of one random lattice, the same for every run: `nodeCount` nodes in topological order and
/// about `linksPerNode` links a node, each with an XML word and two scores.
struct SampleLattice {
  std::string latticeFile;  ///< HTK Standard Lattice Format
  std::string fstFile;      ///< the same graph as OpenFst's compiler reads it
  std::string layoutFile;   ///< a layout of it in the form that `dot -Tdot` writes
};

/// Writes the three files into the folder `path`.
SampleLattice writeSampleLattice(const std::string& path, int nodeCount, int linksPerNode = 4);

}  // namespace quorbel
