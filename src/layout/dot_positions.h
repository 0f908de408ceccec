#pragma once

// Positions with an exponent: beyond 99,999 points `dot` writes 1.2346e+05, of which a reader that
// keeps the leading integer would take the 1.

#include <string>
#include <string_view>

namespace quorbel {

/// Whether the attribute of this name holds positions: `bb`, `pos` or `lp`.
bool isDotPosition(std::string_view attribute);

/// The value of such an attribute, as "1.2e+05,18", with its numbers in full. What is no number
/// stays as it is.
std::string dotPositionInFull(std::string_view value);

/// A line of the one-line form with the numbers of its quoted positions in full.
std::string lineWithPositionsInFull(const std::string& line);

}  // namespace quorbel
