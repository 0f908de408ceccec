#pragma once

// How pieces that stand one behind the other go over several rows.

#include <cstddef>
#include <vector>

namespace quorbel {

/// A piece of a drawing that is as wide as can be: its box in layout points, y upwards.
struct Extent {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;

  double width() const { return right - left; }
  /// Grows to have that place in it.
  void add(double x, double y);
  /// Grows to have that box in it.
  void add(const Extent& other);
};

/// The box that all others are put into: it has nothing in it yet.
Extent noExtent();

/// The first piece of each row, counted from 0, so that a row has as many pieces as fit into
/// `width` from the left end of its first one to the right end of its last; one at least. Nothing
/// for no pieces.
std::vector<std::size_t> rowsOf(const std::vector<Extent>& pieces, double width);

}  // namespace quorbel
