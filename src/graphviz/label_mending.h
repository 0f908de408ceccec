#pragma once

// Labels that Graphviz can draw, whatever they hold.

#include <optional>
#include <string>
#include <string_view>

namespace quorbel {

/// The description `text`, as dot_writer.h writes it, with labels that end where they are meant to:
/// what stands between `label = "` and the `", comment="ID = NUMBER"];` at the end of its line, or
/// of a later one where the label has line ends, is the label. In it a double quote that no
/// backslash escapes gets one, and so does a backslash that would escape the closing quote. A label
/// of more than 8192 bytes is broken in between by a backslash at the end of a line, which Graphviz
/// takes out again: it refuses longer stretches. Line ends in a label may make it look like several
/// links, and it is taken for them then. All else stays as it is, byte for byte.
///
/// Returns nothing when the text is no such description, or holds a zero byte.
std::optional<std::string> mendedDescription(std::string_view text);

}  // namespace quorbel
