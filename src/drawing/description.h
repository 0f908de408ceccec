#pragma once

// The text in which quorbel-lattice asks `dot` for a drawing.

#include <optional>
#include <string>
#include <vector>

#include "drawing/drawing_style.h"
#include "measures/best_paths.h"
#include "words/word_lattice.h"

namespace quorbel {

/// What a drawing marks.
struct DrawingMarks {
  std::optional<LatticePath> best;         ///< links in blue, nodes in yellow
  std::optional<std::size_t> chosenLink;   ///< its index; in red
  std::optional<LatticePath> throughLink;  ///< with it; its other links and its nodes in cyan
  std::optional<LatticePath> oracle;       ///< dashed; in green where it is not the best as well
};

/// The label as `dot` takes it between double quotes. Whatever bytes `text` has, it ends no label,
/// is no escape and no entity: `dot` draws on one line the text's own characters. Bytes that are
/// not UTF-8 are read as Latin-1, and the picture of a control character takes its place. A long
/// label goes on in further lines of the description, each but the last ending with a backslash.
std::string escapedLabel(const std::string& text);

/// The description of a drawing, with nodes and links in the order and, unless `style` says else,
/// the colours of the viewer's own. `labels` has the text of each link by its index, whatever it
/// holds. Nothing is asked of `dot` but labels, shapes, lines, colours and fonts, which no label
/// can change.
std::string descriptionOf(const WordLattice& lattice, const std::vector<std::string>& labels,
                          const DrawingMarks& marks, const DrawingStyle& style = {});

}  // namespace quorbel
