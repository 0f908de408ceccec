#pragma once

// The viewer's drawing of a lattice, made without the viewer.

#include <optional>
#include <string>

#include "measures/oracle.h"
#include "words/word_lattice.h"

namespace quorbel {

/// What a drawing shows.
struct DrawingOptions {
  bool showBestPath = false;  ///< in blue and yellow
  std::string labelField;  ///< attribute of the words; "score" for the cost, "" for "in" and "out"
  std::string scoreName;   ///< score that the best paths follow; "" for the total
  std::optional<int> throughLink;  ///< id of a link; the best path through it is drawn in cyan
  std::optional<std::string> reference;  ///< words; with it the path nearest to them is marked as
                                         ///< well as the best one, and a legend says so
  WordMatching matching;                 ///< how words count beside the reference
  bool isMonochrome = false;             ///< in black and grey, with thick, dashed and dotted lines
  std::string font;                      ///< family of all texts; "" for Graphviz's own
  std::optional<double> fontSize;        ///< points; else 14, or 8 with a width
  std::optional<double> width;  ///< centimetres; the drawing goes over several rows to keep it
};

/// The format of a drawing by the name of its file: "png", "svg", "pdf", "eps", "ps" or
/// "dia" after the last dot, in lower case; "" for any other.
std::string drawingFormat(const std::string& path);

/// Draws the lattice with Graphviz's `dot` into the file `path`, in the format of its name, as the
/// viewer does with the same settings. The work files lie in a folder of their own under the
/// system's folder for temporary files, which is removed in any case, also when a signal ends the
/// work (see SignalsEndDot), before the drawing is written (see writeWholeFile); what `dot` says on
/// standard error is passed on when it draws.
///
/// Returns "" on success, else one line for the user; there is no new file then. `note` becomes
/// what the user should know of the new file, "" for nothing: that letters are smaller than was
/// asked.
std::string drawLattice(const WordLattice& lattice, const DrawingOptions& options,
                        const std::string& path, std::string& note);

}  // namespace quorbel
