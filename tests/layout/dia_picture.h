#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorbel {

/// A colour of a picture on white ground.
struct Rgb {
  int red = 255;
  int green = 255;
  int blue = 255;

  /// How much a pixel differs from the ground, 0 to 255.
  int strength() const;

  /// Whether a thin line or a letter of colour `other` may have left this: a mixture of it with
  /// the ground.
  bool isInkOf(const Rgb& other) const;

  /// Whether both are one colour, up to that difference in each part.
  bool isLike(const Rgb& other, int tolerance = 4) const;
};

/// The colours of highlighting, by Graphviz's names.
Rgb rgbOf(const std::string& name);

/// A picture file in PNG, on white ground.
class Picture {
 public:
  /// Throws std::runtime_error when there is no such picture.
  explicit Picture(const std::string& path);

  int width() const { return m_Width; }
  int height() const { return m_Height; }

  /// The pixel there; the ground outside of the picture.
  Rgb at(int x, int y) const;

  /// Whether ink of that colour lies within `radius` pixels.
  bool hasInk(double x, double y, double radius, const Rgb& colour) const;

  /// A rectangle from `left` and `top` up to but not including the other two.
  struct Box {
    int left, top, right, bottom;
  };

  /// What part of a rectangle's pixels is ink of that colour.
  double shareOfInk(const Box& box, const Rgb& colour) const;

  /// What part of a rectangle's pixels is another colour than that.
  double shareUnlike(const Box& box, const Rgb& colour) const;

  /// The smallest box around everything that is drawn.
  Box drawnBox() const;

 private:
  template <typename Condition>
  double shareWhere(const Box& box, Condition condition) const;

  int m_Width = 0;
  int m_Height = 0;
  std::vector<std::uint8_t> m_Bytes;  ///< rows from the top, three bytes a pixel
};

}  // namespace quorbel
