#include "sound/matching_sound.h"

namespace quorbel {

std::optional<std::string> matchingSoundPath(const std::string& latticePath) {
  const std::string::size_type dot = latticePath.find('.');
  if (dot == std::string::npos) return std::nullopt;
  return latticePath.substr(0, dot) + ".wav";
}

}  // namespace quorbel
