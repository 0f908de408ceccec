#include "graphviz/png_picture.h"

#include <png.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

namespace quorbel {
namespace {

constexpr unsigned kOpaque = 255;

std::uint32_t pixelAt(const unsigned char* row, std::size_t x) {
  std::uint32_t pixel = 0;
  std::memcpy(&pixel, row + 4 * x, sizeof pixel);
  return pixel;
}

unsigned alphaOf(std::uint32_t pixel) { return pixel >> 24U; }

bool isAllOpaque(const unsigned char* pixels, std::size_t count) {
  std::uint32_t all = ~std::uint32_t{0};
  for (std::size_t i = 0; i < count; ++i) all &= pixelAt(pixels, i);
  return alphaOf(all) == kOpaque;
}

/// A colour of a pixel without the alpha that it is multiplied by, which is not 0.
png_byte colourOf(std::uint32_t pixel, unsigned shift) {
  const unsigned alpha = alphaOf(pixel);
  const unsigned colour = (pixel >> shift) & 0xFFU;
  return static_cast<png_byte>(alpha == kOpaque ? colour : (colour * kOpaque + alpha / 2) / alpha);
}

void convertOpaqueRow(const unsigned char* row, std::size_t width, png_byte* out) {
  for (std::size_t x = 0; x < width; ++x, out += 3) {
    const std::uint32_t pixel = pixelAt(row, x);
    out[0] = static_cast<png_byte>(pixel >> 16U);
    out[1] = static_cast<png_byte>(pixel >> 8U);
    out[2] = static_cast<png_byte>(pixel);
  }
}

void convertRow(const unsigned char* row, std::size_t width, png_byte* out) {
  for (std::size_t x = 0; x < width; ++x) {
    const std::uint32_t pixel = pixelAt(row, x);
    const bool isSeen = alphaOf(pixel) != 0;
    for (const unsigned shift : {16U, 8U, 0U})
      *out++ = isSeen ? colourOf(pixel, shift) : png_byte{0};
    *out++ = static_cast<png_byte>(alphaOf(pixel));
  }
}

/// No exception may pass through libpng.
bool isAppended(std::string& file, const png_byte* bytes, std::size_t count) {
  try {
    file.append(reinterpret_cast<const char*>(bytes), count);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void appendBytes(png_structp png, png_bytep bytes, png_size_t count) {
  if (!isAppended(*static_cast<std::string*>(png_get_io_ptr(png)), bytes, count))
    png_error(png, "no memory");
}

void flushNothing(png_structp) {}

void ignoreWarning(png_structp, png_const_charp) {}

void jumpOut(png_structp png, png_const_charp) { png_longjmp(png, 1); }

/// Owns what libpng writes with.
class PngWriter {
 public:
  PngWriter()
      : m_Png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, jumpOut, ignoreWarning)),
        m_Info(m_Png ? png_create_info_struct(m_Png) : nullptr) {}
  ~PngWriter() { png_destroy_write_struct(&m_Png, &m_Info); }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  /// `row` has room for one of the picture.
  bool write(const unsigned char* pixels, unsigned width, unsigned height, bool withAlpha,
             png_byte* row, std::string& file) {
    constexpr int kDepth = 8;
    if (!m_Info || setjmp(png_jmpbuf(m_Png)) != 0) return false;
    png_set_write_fn(m_Png, &file, appendBytes, flushNothing);
    png_set_compression_level(m_Png, 1);
    png_set_filter(m_Png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_IHDR(m_Png, m_Info, width, height, kDepth,
                 withAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const png_color_16 white = {0, kOpaque, kOpaque, kOpaque, kOpaque};
    png_set_bKGD(m_Png, m_Info, &white);
    png_write_info(m_Png, m_Info);
    for (std::size_t y = 0; y < height; ++y) {
      const unsigned char* const from = pixels + 4 * y * width;
      withAlpha ? convertRow(from, width, row) : convertOpaqueRow(from, width, row);
      png_write_row(m_Png, row);
    }
    png_write_end(m_Png, m_Info);
    return true;
  }

 private:
  png_structp m_Png;
  png_infop m_Info;
};

}  // namespace

std::optional<std::string> pngPicture(const unsigned char* pixels, unsigned width,
                                      unsigned height) {
  if (!pixels) return std::nullopt;
  const bool withAlpha = !isAllOpaque(pixels, std::size_t{width} * height);
  std::vector<png_byte> row(std::size_t{width} * (withAlpha ? 4 : 3));
  std::string file;
  PngWriter writer;
  if (!writer.write(pixels, width, height, withAlpha, row.data(), file)) return std::nullopt;
  return file;
}

}  // namespace quorbel
