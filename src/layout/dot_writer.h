#pragma once

// From the lattice to Graphviz: its description, and the runs of `dot` that draw it.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "lattice/graph.h"

namespace quorbel {

/// Runs a command line of a POSIX shell, waits for its end, and returns its status as std::system
/// does.
using CommandRunner = std::function<int(const std::string& commandLine)>;

/// How the runs of `dot` ended, as the CommandRunner returned it; dot_failure.h reads it.
struct DotRuns {
  int image = 0;
  int layout = 0;
};

/// Writes the description of `graph` with its labels and highlighting to kDescriptionFile and has
/// `run` run Graphviz's `dot` on it twice: for the image, in the format `graph.outputFormat` ("png"
/// when empty), to `outputName` or, without one, to kImageFile; then for the layout, to
/// kLayoutFile, whatever came of the image.
///
/// On the way it searches both best paths: their totals go into `graph.bestPathScore` and (only
/// with a selected edge) `graph.selectedPathScore`, their words into `bestPathText` and
/// `selectedPathText`. `graph.outputFormat` is "png" afterwards. Links that lack the current score
/// get it as 0 where it is looked at.
///
/// The graph must have an adjacency. That the description cannot be written is not checked: `dot`
/// then runs on what is there.
DotRuns writeDotAndRun(Graph& graph, const std::optional<std::string>& outputName,
                       const CommandRunner& run);

/// Writes the description alone to `stream`; searches the paths as above.
void writeDescription(Graph& graph, std::ostream& stream);

}  // namespace quorbel
