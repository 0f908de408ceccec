#pragma once

// What the labels of an automaton's arcs say.

#include "formats/automaton.h"

namespace quorbel {

/// Gives the links of `lattice`, which has one for each arc and in their order, the words that the
/// labels stand for; see latticeOf. `table` may be null.
///
/// Returns "" on success, else what is wrong with the table or with which line.
std::string nameLinks(const Automaton& automaton, WordTable* table, WordLattice& lattice);

}  // namespace quorbel
