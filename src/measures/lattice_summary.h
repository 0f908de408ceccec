#pragma once

// What there is to say about a lattice at a glance.

#include <string>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// A line for each property: nodes and links, duration, start and end, whether it is cyclic, its
/// scores with their ranges, its best path, and what to mind before it is opened in the viewer.
std::string summaryOf(const WordLattice& lattice);

/// A line of such a summary: what `name` is, or, where that is "", more of the line before.
std::string summaryRow(const std::string& name, const std::string& value);

/// What the user should know of a lattice that the viewer is to open, a line each, without line
/// ends: what its reading left to say, times that are none, positive totals and what is taken from
/// them for the viewer, a best path that the viewer's search cannot reach, no path at all, a size
/// that makes drawing slow.
std::vector<std::string> warningsAbout(const WordLattice& lattice);

}  // namespace quorbel
