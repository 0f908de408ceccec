#pragma once

// Colours of pixels on the screen, as 0xRRGGBB.

namespace quorbel::screen {

inline constexpr unsigned kWhite = 0xFFFFFF;
inline constexpr unsigned kRed = 0xFF0000;
inline constexpr unsigned kGreen = 0x00FF00;
inline constexpr unsigned kBlue = 0x0000FF;

}  // namespace quorbel::screen
