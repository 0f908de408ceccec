#pragma once

#include <random>
#include <vector>

#include "formats/random_lattice.h"
#include "words/word_lattice.h"

namespace quorbel {

/// Gives the words of a random lattice, all of which are different, few other texts, so that many
/// paths say the same: "a", "b", "c", "<s>" and "<sil>".
void sayLittle(WordLattice& lattice, std::mt19937& random);

/// The lattice of one round of many: every third has positive scores, every third equally good
/// paths. It is read into `lattice`, a fresh one, whose words are few.
RandomLattice latticeOfFewWords(std::mt19937& random, int round, WordLattice& lattice);

/// Every path of the lattice that a random one was read into, as indices of its links.
std::vector<std::vector<std::size_t>> allPathsIn(const WordLattice& lattice,
                                                 const RandomLattice& plain);

}  // namespace quorbel
