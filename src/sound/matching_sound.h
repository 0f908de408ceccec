#pragma once

#include <optional>
#include <string>

namespace quorbel {

/// The path of the sound file that belongs to a lattice: the lattice's path cut before its first
/// "." (wherever that stands, so a dot in a folder's name cuts there) with ".wav" added. None when
/// the path has no dot. Whether there is such a file is not looked at.
std::optional<std::string> matchingSoundPath(const std::string& latticePath);

}  // namespace quorbel
