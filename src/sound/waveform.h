#pragma once

#include <cstdint>
#include <optional>
#include <vector>

// What the waveform strip shows, as numbers: columns, outline, range box and cursor in pixels of
// the view. Nothing here draws or knows the toolkit.

namespace quorbel {

/// The samples of one column of the strip, averaged: positive values and the others apart. Both in
/// sample units.
struct WaveformColumn {
  double positive = 0.0;  ///< sum of the positive values / values per column; >= 0
  double negative = 0.0;  ///< sum of the other values / values per column; <= 0
};

/// A sound summed up for one width of the view; to be computed once per load and width.
struct Waveform {
  int viewWidth = 0;          ///< the width that it was computed for; 0 in one not yet computed
  std::int64_t count = 0;     ///< the sample values shown: frames / channels
  std::int64_t perPixel = 1;  ///< the sample values per column, at least 1
  std::vector<WaveformColumn> columns;
};

struct WaveformPoint {
  double x = 0.0;
  double y = 0.0;
};

/// Two fractions of the sound.
struct SoundRange {
  double start = 0.0;
  double end = 0.0;
};

/// A stretch of the strip's width, in pixels; `width` is negative when the range ends before it
/// starts.
struct PixelSpan {
  double x = 0.0;
  double width = 0.0;
};

/// The farthest column that is handed to Cairo, in both directions: its coordinates are 24-bit
/// integers with a fraction and wrap beyond, which would bring back what lies far outside the view.
constexpr int kFarColumn = 1 << 22;

/// Sums up a sound for a view `viewWidth` pixels wide (less than 1 counts as 1).
///
/// `samples` holds at least max(frames, 0) values and may be null, which gives no column. The first
/// frames / channels values are taken in the order of the array, `perPixel` for each column. The
/// last window, which reaches up to or beyond the last value, is not read: its column is 0. There
/// are at most 2 x viewWidth columns (those beyond the view are not visible), and fewer than
/// viewWidth where the sound has fewer values. Costs one pass over those values.
Waveform computeWaveform(const std::int16_t* samples, std::int32_t frames, std::int32_t channels,
                         int viewWidth);

/// The waveform's outline for a view `viewHeight` pixels high: the points of one path, to be
/// closed.
///
/// It begins at the middle of the left edge (so there is always one point), has for each column the
/// point of its positive and that of its negative average, and ends in the middle of the last
/// column. The sound's `peak` would be viewHeight - 10 pixels from the middle; positive values lie
/// below it. A sound whose peak is 0 gives a flat line.
std::vector<WaveformPoint> waveformOutline(const Waveform& waveform, std::int32_t peak,
                                           int viewHeight);

/// The column of a position given as a fraction of the sound: int(fraction x count) / perPixel,
/// held within -kFarColumn .. kFarColumn; 0 for a NaN. `perPixel` below 1 counts as 1.
int cursorColumn(double fraction, std::int64_t count, std::int64_t perPixel);

/// The range between two columns of a view `viewWidth` pixels wide (less than 1 counts as 1),
/// whichever is the smaller: none when they are the same, as they are without a drag. The pointer
/// may leave the view: a fraction can be below 0 or above 1.
std::optional<SoundRange> dragRange(int startX, int currentX, int viewWidth);

/// Where the box of a range stands in a view `viewWidth` pixels wide: x = viewWidth x start,
/// viewWidth x (end - start) wide. Each edge is held within -kFarColumn .. kFarColumn; a NaN counts
/// as 0.
PixelSpan rangeBox(const SoundRange& range, int viewWidth);

}  // namespace quorbel
