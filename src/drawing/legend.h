#pragma once

// The legend below a drawing: what its kinds of lines mean.

#include <string>
#include <vector>

namespace quorbel {

/// A kind of line: its meaning, and its attributes as linkLook gives them.
struct LegendEntry {
  std::string text;
  std::string look;
};

/// A legend as statements for a drawing whose things have their places; lengths in layout points.
struct Legend {
  std::string statements;
  double width = 0.0;
  double height = 0.0;
};

/// The legend whose top left corner is at (0, `top`). Its entries, each a line with its text above,
/// stand in as many rows as it takes not to be wider than `width`, or one entry.
Legend legendOf(const std::vector<LegendEntry>& entries, double top, double width);

}  // namespace quorbel
