#pragma once

// OpenFst's own files.

#include <string>

#include "formats/automaton.h"

namespace quorbel {

/// Reads the file `bytes` by the library into `automaton`, a fresh one: with the output labels as
/// numbers, the words that its own tables have for them, and the costs as graph costs. Read are the
/// types and arcs that checkFstLayout takes.
///
/// Returns "" on success, else what is wrong.
std::string readFstBinary(const std::string& bytes, Automaton& automaton);

}  // namespace quorbel
