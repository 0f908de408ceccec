#pragma once

// The drawing at the current zoom. A lattice of hundreds of links has a picture of tens of millions
// of pixels, of which the window shows a fiftieth: only what is looked at is ever scaled.

#include <gdkmm/pixbuf.h>

#include <vector>

#include "app/canvas_geometry.h"

namespace quorbel {

/// A picture scaled bilinearly, tile by tile as they are asked for. Every pixel of a tile is the
/// one that scaling the whole picture at once would give.
class ScaledPicture {
 public:
  /// Pictures of up to this many pixels are scaled at once: that takes a moment.
  static constexpr int kScaledAtOnce = 200000;

  /// No picture.
  ScaledPicture() = default;

  /// `source` at `size` pixels, each side at least 1. The source is shared, not copied, and is not
  /// to change; at its own size it is the scaled picture itself.
  ScaledPicture(const Glib::RefPtr<Gdk::Pixbuf>& source, Extent size);

  /// The picture, of the full size; pixels that `prepare` was not asked for are undefined. Empty
  /// where there is none or the memory for it was short.
  const Glib::RefPtr<Gdk::Pixbuf>& picture() const { return m_Picture; }

  /// Scales what of `part` (pixels of the scaled picture) is not scaled yet; what lies outside the
  /// picture is left out. Returns how many tiles that took, 0 where all was there.
  int prepare(const Box& part);

 private:
  void scaleTile(int column, int row);

  Glib::RefPtr<Gdk::Pixbuf> m_Source;  ///< empty when nothing is left to scale
  Glib::RefPtr<Gdk::Pixbuf> m_Picture;
  int m_Columns = 0;
  std::vector<bool> m_IsScaled;  ///< by tile, row by row
};

}  // namespace quorbel
