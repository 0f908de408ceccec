#pragma once

// Drawings made by Graphviz's library in this process.

#include <optional>
#include <string>
#include <vector>

namespace quorbel {

struct Drawing {
  std::string bytes;  ///< the file that `dot` would have written
  std::string said;   ///< what `dot` would have said of it on standard error, still to be said
};

struct LibraryDrawings {
  std::string said;               ///< the same of what comes before, such as the layout
  std::vector<Drawing> drawings;  ///< one for each format
  int status = 0;                 ///< what `dot` would have ended with
};

/// Lays out `description` as `dot` does, once, and draws it in these formats of `dot`'s option -T,
/// each at most once, "png" first. The bytes are those that Graphviz's own program writes, but for
/// "png", whose pixels are the same, and "ps" and "ps2", which have the letters of every script (by
/// cairo).
///
/// Returns nothing when the library cannot do it: because plug-ins or the description are not as
/// they should be, or descriptors are wanting. The program `dot` then says what there is to be
/// said. May be called once in a process, which should end by _exit: the library keeps much.
std::optional<LibraryDrawings> drawByLibrary(const std::string& description,
                                             const std::vector<std::string>& formats);

}  // namespace quorbel
