#include "sound/waveform.h"

#include <algorithm>
#include <cmath>

#include "sound/truncate.h"

namespace quorbel {
namespace {

/// Pixels of the view's height that the scale leaves free.
constexpr int kHeightMargin = 10;

WaveformColumn columnOf(const std::int16_t* values, std::int64_t perPixel) {
  std::int64_t positive = 0;
  std::int64_t negative = 0;
  for (std::int64_t i = 0; i < perPixel; ++i) {
    (values[i] > 0 ? positive : negative) += values[i];
  }
  const auto average = [perPixel](std::int64_t sum) {
    return static_cast<double>(sum) / static_cast<double>(perPixel);
  };
  return {average(positive), average(negative)};
}

double withinCairo(double pixels) {
  if (std::isnan(pixels)) return 0.0;
  return std::clamp<double>(pixels, -kFarColumn, kFarColumn);
}

}  // namespace

Waveform computeWaveform(const std::int16_t* samples, std::int32_t frames, std::int32_t channels,
                         int viewWidth) {
  Waveform waveform;
  waveform.viewWidth = std::max(viewWidth, 1);
  if (samples == nullptr || channels <= 0 || frames <= 0) return waveform;
  waveform.count = frames / channels;
  waveform.perPixel = std::max<std::int64_t>(waveform.count / waveform.viewWidth, 1);
  for (std::int64_t index = 0; index < waveform.count; index += waveform.perPixel) {
    const bool isLastWindow = index + waveform.perPixel >= waveform.count;
    waveform.columns.push_back(isLastWindow ? WaveformColumn{}
                                            : columnOf(samples + index, waveform.perPixel));
  }
  return waveform;
}

std::vector<WaveformPoint> waveformOutline(const Waveform& waveform, std::int32_t peak,
                                           int viewHeight) {
  const double scale = peak > 0 ? static_cast<double>(viewHeight - kHeightMargin) / peak : 0.0;
  const double mid = viewHeight / 2;  // NOLINT(bugprone-integer-division): a whole pixel
  std::vector<WaveformPoint> points;
  points.reserve(2 * waveform.columns.size() + 2);
  points.push_back({0.0, mid});
  double x = 0.0;
  for (const WaveformColumn& column : waveform.columns) {
    points.push_back({x, column.positive * scale + mid});
    points.push_back({x, column.negative * scale + mid});
    x += 1.0;
  }
  if (!waveform.columns.empty()) points.push_back({x - 1.0, mid});
  return points;
}

int cursorColumn(double fraction, std::int64_t count, std::int64_t perPixel) {
  const std::int64_t sample = truncated(fraction * static_cast<double>(count));
  const std::int64_t column = sample / std::max<std::int64_t>(perPixel, 1);
  return static_cast<int>(std::clamp<std::int64_t>(column, -kFarColumn, kFarColumn));
}

std::optional<SoundRange> dragRange(int startX, int currentX, int viewWidth) {
  if (startX == currentX) return std::nullopt;
  const double width = std::max(viewWidth, 1);
  return SoundRange{std::min(startX, currentX) / width, std::max(startX, currentX) / width};
}

PixelSpan rangeBox(const SoundRange& range, int viewWidth) {
  const double left = withinCairo(viewWidth * range.start);
  const double right = withinCairo(viewWidth * range.end);
  return {left, right - left};
}

}  // namespace quorbel
