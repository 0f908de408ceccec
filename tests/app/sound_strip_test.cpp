// The waveform on the sound strip, pixel by pixel against values computed from the samples.

#include <algorithm>
#include <cmath>

#include "app/colours.h"
#include "app/sound_window_fixture.h"

namespace quorbel {
namespace {

/// How far beyond its ends a line may reach where it meets the next one, pixels.
constexpr int kCorner = 11;

/// The vertical line of a column of the waveform.
struct ColumnLine {
  double top = 0.0;
  double bottom = 0.0;
};

/// What the samples ask for in a view of this size.
std::vector<ColumnLine> columnsOf(const Samples& samples, int channels, int width, int height) {
  const int frames = static_cast<int>(samples.size()) / channels;
  const int count = frames / channels;
  const int perPixel = std::max(count / width, 1);
  const int peak = std::max<int>(0, *std::max_element(samples.begin(), samples.end()));
  const double scale = peak > 0 ? (height - 10.0) / peak : 0.0;
  const int middle = height / 2;
  std::vector<ColumnLine> lines;
  for (int index = 0; index < count; index += perPixel) {
    double above = 0.0;
    double others = 0.0;
    if (index + perPixel < count) {
      for (int i = index; i < index + perPixel; ++i)
        (samples[static_cast<std::size_t>(i)] > 0 ? above : others) +=
            samples[static_cast<std::size_t>(i)];
    }
    lines.push_back({others / perPixel * scale + middle, above / perPixel * scale + middle});
  }
  return lines;
}

class SoundStrip : public SoundWindowTest {
 protected:
  /// Blue wherever a column's line must be, white wherever no line can reach.
  void expectWaveform(const Samples& samples, int channels = 1) {
    const auto picture = strip();
    const int width = picture->get_width();
    const int height = picture->get_height();
    const std::vector<ColumnLine> lines = columnsOf(samples, channels, width, height);
    const int drawn = std::min<int>(static_cast<int>(lines.size()), width - 1);
    for (int i = 0; i < drawn; ++i) {
      const ColumnLine& line = lines[static_cast<std::size_t>(i)];
      const int top = std::max(static_cast<int>(std::ceil(line.top)) + 1, 0);
      const int bottom = std::min(static_cast<int>(std::floor(line.bottom)) - 1, height);
      for (int y = top; y < bottom; ++y) ASSERT_TRUE(hasColour(picture, i, y, screen::kBlue));
      for (int y = 0; y < height; ++y)
        ASSERT_TRUE(!isFarFrom(lines, i, y) || hasColour(picture, i, y, screen::kWhite));
    }
    for (int i = drawn + kCorner; i < width; ++i)
      for (int y = 0; y < height; ++y) ASSERT_TRUE(hasColour(picture, i, y, screen::kWhite));
  }

  void expectAllWhite() {
    const auto picture = strip();
    for (int x = 0; x < picture->get_width(); ++x)
      for (int y = 0; y < picture->get_height(); ++y)
        ASSERT_TRUE(hasColour(picture, x, y, screen::kWhite));
  }

  /// A line along the middle, from the left edge to the right one.
  void expectFlatLine() {
    const auto picture = strip();
    const int middle = picture->get_height() / 2;
    for (int x = 0; x < picture->get_width(); ++x) {
      ASSERT_TRUE(hasColour(picture, x, middle - 1, screen::kBlue));
      ASSERT_TRUE(hasColour(picture, x, middle, screen::kBlue));
      ASSERT_TRUE(hasColour(picture, x, middle - 2, screen::kWhite));
      ASSERT_TRUE(hasColour(picture, x, middle + 1, screen::kWhite));
    }
  }

 private:
  static bool isFarFrom(const std::vector<ColumnLine>& lines, int column, int y) {
    const int last = static_cast<int>(lines.size()) - 1;
    for (int i = std::max(column - 2, 0); i <= std::min(column + 3, last); ++i) {
      const ColumnLine& line = lines[static_cast<std::size_t>(i)];
      if (y > line.top - kCorner && y < line.bottom + kCorner) return false;
    }
    return true;
  }
};

/// Loudness that changes all the time, louder at its end.
Samples swell(int values) {
  Samples samples = testTone(values, 1);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(samples.size());
    samples[i] = static_cast<std::int16_t>(samples[i] * part * (0.6 + 0.4 * std::sin(40.0 * part)));
  }
  return samples;
}

TEST_F(SoundStrip, ShowsTheSamplesOfEachColumn) {
  const Samples samples = swell(100000);
  openWithSound(samples);
  setStripHeight(200);
  expectWaveform(samples);
}

TEST_F(SoundStrip, ShowsTheSamplesAtItsFirstHeight) {
  const Samples samples = swell(100000);
  openWithSound(samples);
  expectWaveform(samples);
}

TEST_F(SoundStrip, LoudestSampleSetsTheScaleAndPositiveValuesGoDown) {
  constexpr int kThird = 60000;
  Samples samples = quietSound(kThird, 8000, 32000);  // a quarter of the loudest
  samples.insert(samples.end(), kThird, -16000);
  samples.insert(samples.end(), kThird, 0);
  openWithSound(samples);
  setStripHeight(210);
  const auto picture = strip();
  const int middle = stripHeight() / 2;
  const int full = stripHeight() - 10;
  const auto expectLine = [&](int x, int top, int bottom) {
    EXPECT_TRUE(hasColour(picture, x, top - 3, screen::kWhite));
    EXPECT_TRUE(hasColour(picture, x, top + 1, screen::kBlue));
    EXPECT_TRUE(hasColour(picture, x, bottom - 2, screen::kBlue));
    EXPECT_TRUE(hasColour(picture, x, bottom + 2, screen::kWhite));
  };
  expectLine(stripWidth() / 12, middle, middle + full / 4);
  expectLine(stripWidth() / 2, middle - full / 2, middle);
  expectLine(stripWidth() * 5 / 6, middle - 1, middle + 1);
}

TEST_F(SoundStrip, ShowsAsManyValuesOfAStereoSoundAsItHasFramesAChannel) {
  constexpr std::size_t kVisible = 30000;
  Samples samples = quietSound(kVisible, 9000, 30000);
  samples.insert(samples.end(), 3 * kVisible, -9000);
  openWithSound(samples, 2);
  setStripHeight(200);
  expectWaveform(samples, 2);
  const auto picture = strip();
  for (int x = 5; x < stripWidth() - 5; ++x) {
    ASSERT_TRUE(hasColour(picture, x, stripHeight() / 2 + 20, screen::kBlue));
    ASSERT_TRUE(hasColour(picture, x, stripHeight() / 2 - 20, screen::kWhite));
  }
}

TEST_F(SoundStrip, SilenceIsAFlatLine) {
  openWithSound(Samples(50000, 0));
  expectFlatLine();
}

TEST_F(SoundStrip, SoundWithoutPositiveValuesIsAFlatLine) {
  openWithSound(Samples(50000, -12000));
  expectFlatLine();
}

TEST_F(SoundStrip, SoundShorterThanTheStripEndsWithinIt) {
  Samples samples;
  for (int i = 0; i < 120; ++i) samples.push_back(i % 2 == 0 ? 20000 : -20000);
  samples[0] = 30000;
  openWithSound(samples);
  setStripHeight(200);
  expectWaveform(samples);
  // The last window is not read.
  EXPECT_TRUE(hasColour(strip(), 118, stripHeight() / 2 + 60, screen::kBlue));
  EXPECT_TRUE(hasColour(strip(), 122, stripHeight() / 2 + 60, screen::kWhite));
}

TEST_F(SoundStrip, SoundOfOneValueDrawsNothingThatCanBeSeen) {
  openWithSound({12345});
  EXPECT_TRUE(window->m_SoundLoaded);
  expectAllWhite();
}

TEST_F(SoundStrip, EmptySoundLeavesTheStripWhite) {
  TestWindow& w = openWithSound({});
  EXPECT_TRUE(w.m_SoundLoaded);
  expectAllWhite();
  activate("SoundMenuPlay");
  EXPECT_TRUE(waitForEndOfSound());
  dragOnStrip(100, 200);
  EXPECT_EQ(w.m_RangeStart, 100.0 / stripWidth());
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

TEST_F(SoundStrip, IsWhiteWithoutASound) {
  openLattice(kTwoWays);
  expectAllWhite();
}

TEST_F(SoundStrip, ShowsMoreThanAnHour) {
  constexpr int kSeconds = 3700;
  Samples samples(kSeconds * kSampleRate, 0);
  std::fill(samples.begin() + 3650 * kSampleRate, samples.end(), 12000);
  writeSound(pathIn(folder, "test.wav"), SF_FORMAT_FLAC | SF_FORMAT_PCM_16, kSampleRate, 1,
             samples);
  TestWindow& w = openLattice(kTwoWays);
  ASSERT_TRUE(w.m_SoundLoaded);
  setStripHeight(200);
  expectWaveform(samples);
  playHeldAt(3600 * 1000);
  const int count = kSeconds * kSampleRate;
  const int x = 3600 * kSampleRate / (count / stripWidth());
  EXPECT_TRUE(hasColour(strip(), x, 2, 0xFF0000));
}

TEST_F(SoundStrip, ColumnsAreComputedOncePerSoundAndWidth) {
  TestWindow& w = openWithSound(swell(100000));
  strip();
  const WaveformColumn* const columns = w.m_Waveform.columns.data();
  ASSERT_TRUE(columns);
  const auto picture = w.m_refWaveformPicture;
  w.m_SoundArea.queue_draw();
  strip();
  setStripHeight(stripHeight() + 40);
  EXPECT_EQ(w.m_Waveform.columns.data(), columns);
  EXPECT_EQ(w.m_Waveform.viewWidth, stripWidth());
}

TEST_F(SoundStrip, OutlineIsDrawnOncePerSoundAndSize) {
  TestWindow& w = openWithSound(swell(100000));
  strip();
  const auto picture = w.m_refWaveformPicture;
  ASSERT_TRUE(picture);
  w.m_SoundArea.queue_draw();
  strip();
  EXPECT_EQ(w.m_refWaveformPicture, picture);
}

TEST_F(SoundStrip, FollowsItsWidthAndHeight) {
  const Samples samples = swell(100000);
  TestWindow& w = openWithSound(samples);
  strip();
  const int width = stripWidth();
  w.m_HPaned.set_position(w.m_HPaned.get_position() + 150);
  setStripHeight(120);
  ASSERT_EQ(stripWidth(), width - 150);
  expectWaveform(samples);
}

TEST_F(SoundStrip, ShowsTheSoundOfTheNextLattice) {
  openWithSound(swell(100000));
  strip();
  const Samples other(30000, -5000);
  writeSoundFile("other.wav", other);
  openLattice(kTwoWords, "other.lat");
  expectFlatLine();
}

TEST_F(SoundStrip, IsWhiteAfterItsLatticeIsClosed) {
  openWithSound(swell(100000));
  strip();
  activate("FileClose");
  expectAllWhite();
}

}  // namespace
}  // namespace quorbel
