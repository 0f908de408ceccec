#pragma once

// Exporting the drawing into a file. Which name the file gets is in export_name.h.

#include <string>

#include "lattice/graph.h"
#include "layout/dot_writer.h"

namespace quorbel {

/// Draws the lattice anew, in the format `graph.outputFormat`, into the file `name`; as
/// writeDotAndRun otherwise. Today's Graphviz knows no "dia": where `dot` leaves no such file, the
/// layout that it drew in the same go becomes the diagram.
///
/// Returns "" when the file is written, else one line for the user: that it could not be written,
/// and why as far as that is known.
std::string exportDrawing(Graph& graph, const std::string& name, const CommandRunner& run);

/// What keeps a file of this name from being written, in the system's words ("Permission denied",
/// "No space left on device"); "" when nothing is seen that does.
std::string writeObstacle(const std::string& name);

}  // namespace quorbel
