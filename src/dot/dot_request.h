#pragma once

// What the viewer asks `dot` for.

#include <optional>
#include <string>
#include <vector>

namespace quorbel {

/// "dot -TFORMAT -o OUTPUT DESCRIPTION"
struct DotRequest {
  std::string format;
  std::string output;       ///< the path of the file to write
  std::string description;  ///< the path of the file to read
};

/// The request that these arguments, without the program's name, are; nothing when they have not
/// exactly that form, or the format is none that drawByLibrary makes.
std::optional<DotRequest> dotRequest(const std::vector<std::string>& arguments);

}  // namespace quorbel
