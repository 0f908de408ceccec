#pragma once

#include <string>
#include <vector>

namespace quorbel {

/// The viewer's descriptions of the lattice in the file `path`: with its words, its scores, the
/// fields of its XML, its best path, a link selected, and best path and link together.
std::vector<std::string> viewerDescriptions(const std::string& path);

/// The first of them.
std::string viewerDescription(const std::string& path);

}  // namespace quorbel
