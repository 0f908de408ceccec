#pragma once

// Where the canvas is to be scrolled to, and what of it is in sight: numbers in, numbers out, no
// widget. One direction at a time.

namespace quorbel {

/// The visible stretch of a canvas in one direction, canvas pixels.
struct Seen {
  double from = 0.0;  ///< how far the canvas is scrolled
  int length = 0;
};

/// How far a canvas that shows a picture of `shown` pixels is to be scrolled so that what lies at
/// `wanted` begins the visible stretch of `page` pixels, as far as the picture's borders allow: a
/// whole number of pixels, 0 where all of the picture is in sight.
double scrollWithin(double wanted, int shown, int page);

/// How far to scroll after the picture's length in pixels has changed from `before` to `after`, so
/// that the point of the drawing that lies `point` pixels from the beginning of the visible stretch
/// stays there, as far as the borders allow.
double scrollKeeping(double point, const Seen& seen, int before, int after);

/// How far to scroll so that the stretch of `length` pixels from `begin` (canvas pixels) lies in
/// the middle of a visible stretch of `page` pixels, as far as the borders of a picture of `shown`
/// pixels allow.
double scrollToMiddle(double begin, int length, int shown, int page);

}  // namespace quorbel
