#include "app/scaled_picture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace quorbel {
namespace {

using Picture = Glib::RefPtr<Gdk::Pixbuf>;

constexpr unsigned kSeed = 20261122;

/// Noise, in which no two neighbours are alike.
Picture noise(int width, int height, bool hasAlpha) {
  std::mt19937 random(kSeed);
  const Picture picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, hasAlpha, 8, width, height);
  const int bytes = picture->get_rowstride() * (height - 1) + width * picture->get_n_channels();
  for (int i = 0; i < bytes; ++i) picture->get_pixels()[i] = static_cast<guint8>(random());
  return picture;
}

/// Checks every pixel of a part of two pictures of one size.
void expectSame(const Picture& picture, const Picture& expected, const Box& part) {
  ASSERT_EQ(picture->get_width(), expected->get_width());
  ASSERT_EQ(picture->get_height(), expected->get_height());
  ASSERT_EQ(picture->get_has_alpha(), expected->get_has_alpha());
  const int channels = picture->get_n_channels();
  for (int y = part.top; y < part.top + part.height; ++y) {
    const int at = y * picture->get_rowstride() + part.left * channels;
    ASSERT_EQ(std::memcmp(picture->get_pixels() + at, expected->get_pixels() + at,
                          static_cast<std::size_t>(part.width * channels)),
              0)
        << "row " << y;
  }
}

Picture scaledAtOnce(const Picture& source, int width, int height) {
  return source->scale_simple(width, height, Gdk::INTERP_BILINEAR);
}

TEST(ScaledPicture, HasThePixelsOfAPictureScaledAtOnce) {
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  for (const bool hasAlpha : {false, true}) {
    const Picture source = noise(1501, 701, hasAlpha);
    for (const float zoom : {0.2f, 0.37f, 0.5f, 0.64f, 0.8f, 0.999f, 1.0f}) {
      SCOPED_TRACE(zoom);
      const int width = static_cast<int>(1501 * zoom);
      const int height = static_cast<int>(701 * zoom);
      ScaledPicture scaled(source, {width, height});
      const Picture expected = scaledAtOnce(source, width, height);
      // Parts that overlap and cut tiles in any place.
      for (const Box& part :
           {Box{0, 0, 1, 1}, Box{127, 63, 2, 2}, Box{width - 100, height - 70, 100, 70},
            Box{width / 3, height / 3, width / 2, height / 2}, Box{0, 0, width, height}}) {
        scaled.prepare(part);
        expectSame(scaled.picture(), expected, part);
      }
    }
  }
}

TEST(ScaledPicture, ScalesWhatIsAskedForOnce) {
  ScaledPicture scaled(noise(2000, 1000, false), {1600, 800});
  EXPECT_EQ(scaled.prepare({0, 0, 128, 64}), 1);
  EXPECT_EQ(scaled.prepare({5, 5, 123, 59}), 0);
  EXPECT_EQ(scaled.prepare({5, 5, 124, 59}), 1);
  EXPECT_EQ(scaled.prepare({127, 63, 2, 2}), 2);
  EXPECT_EQ(scaled.prepare({0, 0, 256, 128}), 0);
  EXPECT_EQ(scaled.prepare({1599, 799, 1, 1}), 1);
  EXPECT_EQ(scaled.prepare({0, 0, 1600, 800}), 13 * 13 - 5);
  EXPECT_EQ(scaled.prepare({0, 0, 1600, 800}), 0);
}

TEST(ScaledPicture, LeavesOutWhatLiesOutside) {
  ScaledPicture scaled(noise(2000, 1000, false), {1600, 800});
  EXPECT_EQ(scaled.prepare({-300, -300, 200, 200}), 0);
  EXPECT_EQ(scaled.prepare({1600, 0, 50, 50}), 0);
  EXPECT_EQ(scaled.prepare({0, 800, 50, 50}), 0);
  EXPECT_EQ(scaled.prepare({10, 10, 0, 50}), 0);
  EXPECT_EQ(scaled.prepare({-5, -5, 10, 10}), 1);
  EXPECT_EQ(scaled.prepare({1590, 790, 100, 100}), 1);
}

TEST(ScaledPicture, OfFewPixelsIsWholeAtOnce) {
  const Picture source = noise(1000, 800, true);
  ScaledPicture scaled(source, {500, 400});
  expectSame(scaled.picture(), scaledAtOnce(source, 500, 400), {0, 0, 500, 400});
  EXPECT_EQ(scaled.prepare({0, 0, 500, 400}), 0);
  ScaledPicture larger(source, {500, 401});
  EXPECT_GT(larger.prepare({0, 0, 500, 401}), 0);
}

TEST(ScaledPicture, AtFullSizeIsThePictureItself) {
  const Picture source = noise(1000, 800, true);
  ScaledPicture scaled(source, {1000, 800});
  EXPECT_EQ(scaled.picture(), source);
  EXPECT_EQ(scaled.prepare({0, 0, 1000, 800}), 0);
}

TEST(ScaledPicture, IsEmptyWithoutAPictureOrMemory) {
  EXPECT_FALSE(ScaledPicture().picture());
  EXPECT_EQ(ScaledPicture().prepare({0, 0, 10, 10}), 0);
  ScaledPicture tooLarge(noise(10, 10, true), {1 << 30, 1 << 30});
  EXPECT_FALSE(tooLarge.picture());
  EXPECT_EQ(tooLarge.prepare({0, 0, 10, 10}), 0);
}

}  // namespace
}  // namespace quorbel
