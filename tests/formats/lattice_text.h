#pragma once

// Lattices made of text, and what the viewer makes of them.

#include <string>
#include <vector>

#include "lattice/graph.h"
#include "words/word_lattice.h"

namespace quorbel {

/// How far a score may be from the expected one.
inline constexpr double kExact = 1e-9;

/// The lattice that a text is; fails the test and gives an empty one when it is none.
void readText(const std::string& text, WordLattice& lattice);

/// What is wrong with a text, "" when nothing is.
std::string errorOf(const std::string& text);

/// The dialect file that a text becomes, or the message.
std::string importOf(const std::string& text);

/// What the viewer shows of a file when it is opened.
struct ViewerView {
  std::string error;                ///< the reader's message
  std::string scoreName;            ///< the score that counts
  double cost = 0.0;                ///< of the best path
  std::string words;                ///< along the best path
  std::vector<int> linkIds;         ///< along the best path
  std::vector<std::string> labels;  ///< of all links, in the order of the file
  Graph graph;
};

/// Opens the dialect file of this text as the viewer does: reads it, searches the best path, labels
/// each link. The text is written into the working directory.
ViewerView openInViewer(const std::string& text);

}  // namespace quorbel
