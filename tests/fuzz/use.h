#pragma once

#include "words/word_lattice.h"

namespace quorbel {

/// Aborts unless the condition holds.
void require(bool condition);

/// Does with a lattice what the commands do: best paths, their labels, pruning (`toBeam` or to half
/// of the links), and the dialect file, which the viewer must read, and label each link with its
/// word.
void use(const WordLattice& lattice, bool toBeam);

}  // namespace quorbel
