#include "dia_picture.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <stdexcept>

namespace quorbel {
namespace {

constexpr int kFaintest = 70;  // strength of what counts as drawn

std::array<double, 3> direction(const Rgb& colour) {
  const double strength = std::max(colour.strength(), 1);
  return {(255 - colour.red) / strength, (255 - colour.green) / strength,
          (255 - colour.blue) / strength};
}

}  // namespace

int Rgb::strength() const { return 255 - std::min({red, green, blue}); }

bool Rgb::isInkOf(const Rgb& other) const {
  constexpr double kTolerance = 0.2;
  if (strength() < kFaintest) return false;
  const auto mine = direction(*this);
  const auto wanted = direction(other);
  for (std::size_t i = 0; i < mine.size(); ++i)
    if (std::abs(mine[i] - wanted[i]) > kTolerance) return false;
  return true;
}

bool Rgb::isLike(const Rgb& other, int tolerance) const {
  return std::abs(red - other.red) <= tolerance && std::abs(green - other.green) <= tolerance &&
         std::abs(blue - other.blue) <= tolerance;
}

Rgb rgbOf(const std::string& name) {
  static const std::map<std::string, Rgb> kColours = {
      {"black", {0, 0, 0}},     {"red", {255, 0, 0}},          {"blue", {0, 0, 255}},
      {"cyan", {0, 255, 255}},  {"darkorange", {255, 140, 0}}, {"lightgrey", {211, 211, 211}},
      {"yellow", {255, 255, 0}}};
  return kColours.at(name);
}

Picture::Picture(const std::string& path) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path.c_str()))
    throw std::runtime_error(path + ": " + image.message);
  image.format = PNG_FORMAT_RGB;
  m_Width = static_cast<int>(image.width);
  m_Height = static_cast<int>(image.height);
  m_Bytes.resize(PNG_IMAGE_SIZE(image));
  const png_color ground = {255, 255, 255};
  if (!png_image_finish_read(&image, &ground, m_Bytes.data(), 0, nullptr))
    throw std::runtime_error(path + ": " + image.message);
}

Rgb Picture::at(int x, int y) const {
  if (x < 0 || x >= m_Width || y < 0 || y >= m_Height) return {};
  const std::uint8_t* pixel = &m_Bytes[static_cast<std::size_t>(y * m_Width + x) * 3];
  return {pixel[0], pixel[1], pixel[2]};
}

bool Picture::hasInk(double x, double y, double radius, const Rgb& colour) const {
  for (int row = static_cast<int>(y - radius); row <= y + radius; ++row) {
    for (int column = static_cast<int>(x - radius); column <= x + radius; ++column) {
      const bool isNear = std::hypot(column + 0.5 - x, row + 0.5 - y) <= radius;
      if (isNear && at(column, row).isInkOf(colour)) return true;
    }
  }
  return false;
}

template <typename Condition>
double Picture::shareWhere(const Box& box, Condition condition) const {
  int count = 0;
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x)
      if (condition(at(x, y))) ++count;
  return count / static_cast<double>((box.right - box.left) * (box.bottom - box.top));
}

double Picture::shareOfInk(const Box& box, const Rgb& colour) const {
  return shareWhere(box, [&](const Rgb& pixel) { return pixel.isInkOf(colour); });
}

double Picture::shareUnlike(const Box& box, const Rgb& colour) const {
  return shareWhere(box, [&](const Rgb& pixel) { return !pixel.isLike(colour, kFaintest); });
}

Picture::Box Picture::drawnBox() const {
  Box box = {m_Width, m_Height, 0, 0};
  for (int y = 0; y < m_Height; ++y) {
    for (int x = 0; x < m_Width; ++x) {
      if (at(x, y).strength() < kFaintest) continue;
      box.left = std::min(box.left, x);
      box.right = std::max(box.right, x + 1);
      box.top = std::min(box.top, y);
      box.bottom = std::max(box.bottom, y + 1);
    }
  }
  return box;
}

}  // namespace quorbel
