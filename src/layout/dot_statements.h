#pragma once

// Tells the two forms apart in which Graphviz has written its "dot" output, statement by statement.

#include <iosfwd>
#include <optional>
#include <string>
#include <variant>

#include "layout/dot_record.h"

namespace quorbel {

/// A line of the one-line form, or a statement of today's.
using DotStatement = std::variant<std::string, DotRecord>;

/// Statements of a file written by `dot -Tdot`.
///
/// Old versions of Graphviz wrote a statement on one line, with every value quoted. Such lines come
/// as they are but for the numbers of positions, which come in full; where `dot` wrapped one with a
/// backslash at the end of a line, the backslash stays. What is no statement, such as "}" or an
/// empty line, comes like such a line.
///
/// Today's Graphviz writes one attribute a line, in the order of their names and without quotes
/// where it needs none. Each of these statements comes as a record; one that the end of the file
/// cuts off does not come at all.
class DotStatements {
 public:
  /// Reads from `stream`, which must outlive this object.
  explicit DotStatements(std::istream& stream) : m_Stream(stream) {}

  /// The next statement; nothing at the end of the file.
  std::optional<DotStatement> next();

 private:
  bool takeLine(std::string& line);
  bool nextLineIsAttribute();

  std::istream& m_Stream;
  std::optional<std::string> m_Ahead;  ///< a line that was looked at but not taken
};

}  // namespace quorbel
