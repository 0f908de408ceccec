#pragma once

// PNG files that are made quickly.

#include <optional>
#include <string>

namespace quorbel {

/// A PNG file of the pixels, which lie row by row from the top without gaps: native 32-bit words of
/// alpha, red, green and blue, the colours multiplied by alpha, as cairo has them. It is compressed
/// little, without filters: a lattice's drawing is mostly ground, for which that does, in a tenth
/// of the time. Without alpha where all pixels are opaque; else colours come as cairo writes them.
///
/// Returns nothing when libpng cannot make it, such as of a picture without pixels.
std::optional<std::string> pngPicture(const unsigned char* pixels, unsigned width, unsigned height);

}  // namespace quorbel
