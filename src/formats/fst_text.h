#pragma once

// The text that OpenFst's fstprint writes and fstcompile reads.

#include <string>
#include <string_view>

#include "formats/automaton.h"

namespace quorbel {

/// Reads a text, a line for each arc (FROM TO IN OUT [COST] of a transducer, FROM TO LABEL [COST]
/// of an acceptor) and for each final state (STATE [COST]), into `automaton`, a fresh one: with the
/// output labels, the costs as graph costs, and the state of the first line as start.
///
/// Which of both it is, the number of columns tells. Where all arcs have four of them, they are of
/// an acceptor when the last column has a cost for each that is no mere number of a label, or is
/// the only one that has numbers.
///
/// Returns "" on success, else what is wrong with which line.
std::string parseFstText(std::string_view text, Automaton& automaton);

}  // namespace quorbel
