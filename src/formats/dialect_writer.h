#pragma once

// Lattices as files in the viewer's dialect of HTK's Standard Lattice Format.

#include <string>

#include "words/word_lattice.h"

namespace quorbel {

/// Writes the lattice into `text`: header, nodes with their times, links with word, total and
/// posterior (unless cyclic) and their own scores. Read by the viewer, the default label of a link
/// is its word, its cost by default the total with its sign flipped. Where totals are positive in
/// an acyclic lattice, so much is taken from them that none is (see LevelShift), and the totals
/// themselves are a further score, kUnshiftedName.
///
/// Returns "" on success, else why the viewer could not read it: more than kMostNodes nodes, or a
/// line of which no arrangement keeps the viewer from taking part of it for the header.
std::string dialectText(const WordLattice& lattice, std::string& text);

/// Writes the lattice so to the file `path` (see writeWholeFile). Returns "" on success, else the
/// path and the reason; an old file then stays as it was.
std::string writeDialectFile(const WordLattice& lattice, const std::string& path);

}  // namespace quorbel
