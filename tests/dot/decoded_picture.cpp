#include "decoded_picture.h"

#include <png.h>

#include <stdexcept>

namespace quorbel {

DecodedPicture decodedPicture(const std::string& bytes) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()))
    throw std::runtime_error(image.message);
  DecodedPicture picture;
  picture.width = image.width;
  picture.height = image.height;
  picture.hasAlpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  image.format = PNG_FORMAT_RGBA;
  picture.pixels.resize(PNG_IMAGE_SIZE(image));
  if (!png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr))
    throw std::runtime_error(image.message);
  return picture;
}

}  // namespace quorbel
