#pragma once

// Files that every drawing of a lattice writes into the working directory.

#include <string>

namespace quorbel {

inline const std::string kDescriptionFile = "quorbel_graph.dot";  ///< what `dot` is to draw
inline const std::string kLayoutFile = "graph.dot";               ///< where `dot` put everything
inline const std::string kDefaultFormat = "png";  ///< format of the picture on screen
inline const std::string kImageFile = "graph." + kDefaultFormat;  ///< the picture on screen

}  // namespace quorbel
