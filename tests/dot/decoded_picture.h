#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorbel {

/// What a picture in PNG shows.
struct DecodedPicture {
  unsigned width = 0;
  unsigned height = 0;
  bool hasAlpha = false;             ///< as the file says, whatever its pixels are
  std::vector<std::uint8_t> pixels;  ///< red, green, blue, alpha; row by row from the top
};

/// Throws std::runtime_error when the bytes are no such picture.
DecodedPicture decodedPicture(const std::string& bytes);

}  // namespace quorbel
