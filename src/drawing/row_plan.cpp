#include "drawing/row_plan.h"

#include <algorithm>
#include <limits>

namespace quorbel {

void Extent::add(double x, double y) {
  left = std::min(left, x);
  right = std::max(right, x);
  bottom = std::min(bottom, y);
  top = std::max(top, y);
}

void Extent::add(const Extent& other) {
  add(other.left, other.bottom);
  add(other.right, other.top);
}

Extent noExtent() {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  return {kFar, -kFar, kFar, -kFar};
}

std::vector<std::size_t> rowsOf(const std::vector<Extent>& pieces, double width) {
  std::vector<std::size_t> rows;
  Extent row = noExtent();
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    row.add(pieces[i]);
    if (i > 0 && row.width() <= width) continue;
    rows.push_back(i);
    row = pieces[i];
  }
  return rows;
}

}  // namespace quorbel
