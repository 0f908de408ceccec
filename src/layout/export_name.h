#pragma once

#include <string>

namespace quorbel {

/// The name under which a drawing in the `dot` format `format` is saved when the user chose
/// `chosen`: with "." and the extension appended unless the last characters are those of the
/// extension already. That is the format itself, but "ps" for "ps2". Case counts and a point before
/// the extension does not: "plotpng" stays, "plot.PNG" becomes "plot.PNG.png".
///
/// Throws std::out_of_range for a name shorter than the extension.
std::string exportFileName(const std::string& chosen, const std::string& format);

}  // namespace quorbel
