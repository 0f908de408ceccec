#pragma once

// Lattices from files in HTK Standard Lattice Format, in the dialect that the viewer accepts.

#include <string>

#include "lattice/graph.h"

namespace quorbel {

/// Most nodes that a lattice may have.
inline constexpr int kMostNodes = 50000;

/// Reads the lattice in the file `path` into `graph`, replacing the one it holds as soon as the
/// file's node count is met.
///
/// Of HTK's Standard Lattice Format it takes the node count (N=), nodes (I=, t= and scores), links
/// (J=, S=, E=, W= and scores) and lines that begin with "start=" or "end="; other header fields
/// are skipped. Every other field of a node or link is a score under the name that the file uses, 0
/// where its value is no number, sign-flipped while `graph.scoresNegated`. A word must be quoted or
/// an XML fragment. A last line without line end is not read.
///
/// At the end node times become fractions of the last node's time, and each link gets the scores of
/// the node it enters added to its own. `currentScoreName` becomes the first score name, in byte
/// order, of the last link that has scores.
///
/// Returns "" on success, else one line for the user:
///   - PATH + ": syntax error line " + NUMBER, also for a node outside the node count, and with the
///     number of its last line for a file without node count;
///   - "Bad number of node in HTK file : " + COUNT, for fewer than 1 or more than kMostNodes nodes;
///   - PATH + " : file not found or permission denied", when reading breaks off.
/// What was read before the faulty line stays in `graph`.
///
/// Throws std::logic_error when the file cannot be opened: callers check that first. Ends the
/// process with status 1 when it cannot be opened a second time.
std::string readHtkLattice(Graph& graph, const std::string& path);

/// The same of the text of a file that somebody has read already; `path` is its name in errors. No
/// file is opened, so nothing is thrown and the process goes on.
std::string readHtkLattice(Graph& graph, const std::string& path, const std::string& text);

}  // namespace quorbel
