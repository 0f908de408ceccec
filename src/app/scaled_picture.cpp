#include "app/scaled_picture.h"

#include <algorithm>

namespace quorbel {
namespace {

/// Small enough that scrolling by a few pixels costs little, large enough that most of the time is
/// spent on pixels.
constexpr int kTileWidth = 128;
constexpr int kTileHeight = 64;

int tilesFor(int length, int tile) { return (length + tile - 1) / tile; }

}  // namespace

ScaledPicture::ScaledPicture(const Glib::RefPtr<Gdk::Pixbuf>& source, Extent size) {
  if (size.width == source->get_width() && size.height == source->get_height()) {
    m_Picture = source;
    return;
  }
  m_Picture = Gdk::Pixbuf::create(source->get_colorspace(), source->get_has_alpha(),
                                  source->get_bits_per_sample(), size.width, size.height);
  if (!m_Picture) return;
  m_Source = source;
  m_Columns = tilesFor(size.width, kTileWidth);
  const int rows = tilesFor(size.height, kTileHeight);
  m_IsScaled.assign(static_cast<std::size_t>(m_Columns) * static_cast<std::size_t>(rows), false);
  if (size.width <= kScaledAtOnce / size.height) prepare({0, 0, size.width, size.height});
}

int ScaledPicture::prepare(const Box& part) {
  if (!m_Source) return 0;
  const int left = std::max(part.left, 0);
  const int top = std::max(part.top, 0);
  const int right = std::min(part.left + part.width, m_Picture->get_width());
  const int bottom = std::min(part.top + part.height, m_Picture->get_height());
  if (left >= right || top >= bottom) return 0;
  int scaled = 0;
  for (int row = top / kTileHeight; row * kTileHeight < bottom; ++row) {
    for (int column = left / kTileWidth; column * kTileWidth < right; ++column) {
      const auto tile = static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Columns) +
                        static_cast<std::size_t>(column);
      if (m_IsScaled[tile]) continue;
      scaleTile(column, row);
      m_IsScaled[tile] = true;
      ++scaled;
    }
  }
  return scaled;
}

void ScaledPicture::scaleTile(int column, int row) {
  const int width = m_Picture->get_width();
  const int height = m_Picture->get_height();
  const int left = column * kTileWidth;
  const int top = row * kTileHeight;
  m_Source->scale(m_Picture, left, top, std::min(kTileWidth, width - left),
                  std::min(kTileHeight, height - top), 0, 0,
                  static_cast<double>(width) / m_Source->get_width(),
                  static_cast<double>(height) / m_Source->get_height(), Gdk::INTERP_BILINEAR);
}

}  // namespace quorbel
