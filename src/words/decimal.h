#pragma once

// Numbers as lattice files have them, exact and the same under every locale.

#include <optional>
#include <string>
#include <string_view>

namespace quorbel {

/// Largest magnitude that a number of a lattice may have: sums of products of such numbers stay
/// finite.
inline constexpr double kLargestNumber = 1e100;

/// The number that `text` is as a whole, with or without sign, point and exponent: "-0.5", "+2",
/// "5.", "-3.5E7". None for anything else, such as "1,5", "nan", "inf" or a number beyond
/// kLargestNumber.
std::optional<double> wholeNumber(std::string_view text);

/// The integer that `text` is as a whole; none for anything else or one beyond the type's range.
std::optional<int> wholeInteger(std::string_view text);

/// The same for the value of a field, up to a comment that follows it without a blank ("-2#loud").
std::optional<double> numberOfField(std::string_view value);
std::optional<int> integerOfField(std::string_view value);

/// Appends the shortest text that reads back as the same number: "-90.27", "0", "1e-07".
void appendNumber(std::string& text, double number);

/// The same as a text of its own.
std::string exactNumber(double number);

/// The number rounded to 15 significant digits. Decimal fractions that went through a product or a
/// sum lose the noise of their last bits: 14 * -2.278 - 90.27 gives -122.162.
double rounded(double number);

}  // namespace quorbel
