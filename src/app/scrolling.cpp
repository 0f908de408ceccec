#include "app/scrolling.h"

#include <algorithm>
#include <cmath>

namespace quorbel {

double scrollWithin(double wanted, int shown, int page) {
  const double furthest = std::max(0, shown - page);
  return std::clamp(std::round(wanted), 0.0, furthest);
}

double scrollKeeping(double point, const Seen& seen, int before, int after) {
  // A picture shorter than the visible stretch lies in its middle.
  const int margin = std::max(0, seen.length / 2 - before / 2);
  const double onPicture = point + seen.from - margin;
  return scrollWithin(onPicture * after / before - point, after, seen.length);
}

double scrollToMiddle(double begin, int length, int shown, int page) {
  return scrollWithin(begin + length / 2.0 - page / 2.0, shown, page);
}

}  // namespace quorbel
