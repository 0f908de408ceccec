#pragma once

// Numbers in lattice and layout files, the same under every locale: the toolkit switches the
// process to the user's, under which 0.5 may be written 0,5.

#include <string>
#include <string_view>

namespace quorbel {

/// The integer at the start of `text`, as a stream in the "C" locale extracts it: leading white
/// space is skipped, what follows the digits is ignored, no number gives 0, and one beyond the
/// type's range gives the limit on its side.
int parseInt(std::string_view text);

/// The floating-point number at the start of `text`, by the same rules. "nan", "inf" and
/// hexadecimal digits are no numbers to a stream, nor is an exponent without digits ("1e" is 0).
double parseDouble(std::string_view text);

/// The number with six significant digits in the general format, as a default-configured stream
/// writes it: 0.5, 1.23457e+06, -0, inf.
std::string formatNumber(double number);

}  // namespace quorbel
