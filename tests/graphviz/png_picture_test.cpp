#include "graphviz/png_picture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "../dot/decoded_picture.h"

namespace quorbel {
namespace {

using Pixels = std::vector<std::uint32_t>;
using Bytes = std::vector<std::uint8_t>;

DecodedPicture pictureOf(const Pixels& pixels, unsigned width, unsigned height) {
  const auto file =
      pngPicture(reinterpret_cast<const unsigned char*>(pixels.data()), width, height);
  return decodedPicture(file.value_or(""));
}

TEST(PngPicture, OfOpaquePixelsHasNoAlpha) {
  const DecodedPicture picture =
      pictureOf({0xFF010203, 0xFFFFFFFF, 0xFF000000, 0xFF0000FF, 0xFF00FF00, 0xFFFF0000}, 3, 2);
  EXPECT_EQ(picture.width, 3U);
  EXPECT_EQ(picture.height, 2U);
  EXPECT_FALSE(picture.hasAlpha);
  EXPECT_EQ(picture.pixels, (Bytes{1, 2, 3,   255, 255, 255, 255, 255, 0,   0, 0, 255,  //
                                   0, 0, 255, 255, 0,   255, 0,   255, 255, 0, 0, 255}));
}

TEST(PngPicture, OfOneClearPixelHasAlphaAndColoursThatAreNotMultiplied) {
  const DecodedPicture picture = pictureOf({0xFF010203, 0x80804020, 0x01010100, 0x00000000}, 2, 2);
  EXPECT_TRUE(picture.hasAlpha);
  EXPECT_EQ(picture.pixels, (Bytes{1, 2, 3, 255, 255, 128, 64, 128,  //
                                   255, 255, 0, 1, 0, 0, 0, 0}));
}

TEST(PngPicture, RoundsColoursToTheNearest) {
  // 100 of 200 is 127.5, 99 of 200 is 126.2, 101 of 254 is 101.4
  const DecodedPicture picture = pictureOf({0xC8646364, 0xFE656565}, 2, 1);
  EXPECT_EQ(picture.pixels, (Bytes{128, 126, 128, 200, 101, 101, 101, 254}));
}

TEST(PngPicture, NeedsPixels) {
  EXPECT_FALSE(pngPicture(nullptr, 3, 2));
  const unsigned char pixel[4] = {};
  EXPECT_FALSE(pngPicture(pixel, 0, 1));
  EXPECT_FALSE(pngPicture(pixel, 1, 0));
}

}  // namespace
}  // namespace quorbel
