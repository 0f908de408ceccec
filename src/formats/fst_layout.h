#pragma once

// How an OpenFst file is laid out. The library takes what a file says of itself for granted, and
// would ask for any amount of memory or read outside of what it has.

#include <string>
#include <string_view>

namespace quorbel {

/// The kinds of arcs that are read.
enum class FstArcs {
  Tropical,  ///< "standard"
  Log,       ///< "log"
  Log64      ///< "log64", the same with costs of double precision
};

/// Checks that the file `bytes`, of type "vector" or "const", holds all that it says: texts,
/// tables, states and arcs within its bounds, every arc between states that there are, as many arcs
/// as there is place for. `arcs` becomes the kind of its arcs.
///
/// Returns "" when the library can read it, else what is wrong, with the byte that it is about
/// where that says something.
std::string checkFstLayout(std::string_view bytes, FstArcs& arcs);

}  // namespace quorbel
