#pragma once

// What `dot` makes of the text of a label: it is no plain text but has escapes and entities.

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quorbel {

/// How the lines of one label stand to each other.
enum class Justification { Centre, Left, Right };

struct LabelLine {
  std::string text;  ///< UTF-8, only characters that XML allows
  Justification justification = Justification::Centre;
};

/// What the letters behind a backslash stand for, such as N for the name of a node.
using LabelNames = std::map<char, std::string>;

/// The lines in which `dot` draws `label`, none for an empty one.
///
/// "\n", "\l" and "\r" end a line that is centred, to the left or to the right, "\X" is what
/// `names` has under X, and a backslash before anything else only takes its meaning away. Entities
/// ("&amp;", "&#233;") become their characters, and bytes that are not UTF-8 are taken as Latin-1.
/// U+FFFD takes the place of what is no character in XML.
std::vector<LabelLine> labelLines(std::string_view label, const LabelNames& names);

}  // namespace quorbel
