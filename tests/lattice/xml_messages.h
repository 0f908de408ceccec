#pragma once

#include <string>

namespace quorbel {

/// What is printed about a word that is no XML.
inline const std::string kFailed = "Failed to parse document\n";

}  // namespace quorbel
