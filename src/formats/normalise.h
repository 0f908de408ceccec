#pragma once

// From the records of a lattice file to the one form in which all commands work on lattices.

#include <string>

#include "formats/slf_file.h"
#include "words/word_lattice.h"

namespace quorbel {

/// Brings a parsed file into `lattice`, a fresh one: words and scores on links (see LinkFields),
/// logarithms natural, times in seconds, a lattice written backwards (dir=b) turned forward, one
/// start and one end node (see below), nodes in order, totals, posteriors.
///
/// Start and end are the nodes that the header names; else, in the viewer's dialect, the first and
/// the last; else the nodes that no link enters or leaves, of those that have links at all. Where
/// these are several, or where a link enters the start or leaves the end, a node of its own is
/// joined to them by links with no word (kNullWord). A word on a start node, which no link could
/// say, goes on such a link. Further links get the ids that follow the highest in the file.
///
/// Returns "" on success, else what is wrong with which line.
std::string normalise(const SlfFile& file, WordLattice& lattice);

}  // namespace quorbel
