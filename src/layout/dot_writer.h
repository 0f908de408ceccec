#pragma once

// From the lattice to Graphviz: its description, and the runs of `dot` that draw it.

#include <iosfwd>
#include <optional>
#include <string>

#include "lattice/graph.h"

namespace quorbel {

/// Writes the description of `graph` with its labels and highlighting to kDescriptionFile and runs
/// Graphviz's `dot` on it twice: for the image, in the format `graph.outputFormat` ("png" when
/// empty), to `outputName` or, without one, to kImageFile; then for the layout, to kLayoutFile.
///
/// On the way it searches both best paths: their totals go into `graph.bestPathScore` and (only
/// with a selected edge) `graph.selectedPathScore`, their words into `bestPathText` and
/// `selectedPathText`. `graph.outputFormat` is "png" afterwards. Links that lack the current score
/// get it as 0 where it is looked at.
///
/// The graph must have an adjacency. Always returns true: what `dot` does, or that a file cannot be
/// written, is not checked here and shows when the files are read.
bool writeDotAndRun(Graph& graph, const std::optional<std::string>& outputName);

/// Writes the description alone to `stream`; searches the paths as above.
void writeDescription(Graph& graph, std::ostream& stream);

}  // namespace quorbel
