#pragma once

// Brings both forms in which Graphviz has written its "dot" output into the one that the layout
// reader scans.

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quorbel {

/// Statements of a file written by `dot -Tdot`, each as one line for the layout reader.
///
/// Old versions of Graphviz wrote a statement on one line, with every value quoted. Such lines come
/// as they are; where `dot` wrapped one with a backslash at the end of a line, the backslash stays.
///
/// Today's Graphviz writes one attribute a line, in the order of their names and without quotes
/// where it needs none. Of these statements come
///     graph [bb="..."];
///     INDEX [pos="...", width="...", height="..."];
///     INDEX -> INDEX [label="...", comment="...", lp="..."];
/// with wrapped values put together again, an attribute that a node lacks as 0 and one that an edge
/// lacks left out. A double quote inside a value comes as kInnerQuote after its backslash, so that
/// the next double quote always ends the value. A node or edge that the end of the file cuts off
/// does not come at all.
///
/// In both forms numbers of `bb`, `pos` and `lp` that `dot` wrote with an exponent (such as those
/// beyond 99,999 points) come in full.
class DotStatements {
 public:
  /// Stands for an escaped double quote; XML allows this character nowhere, so no label has it.
  static constexpr char kInnerQuote = '\x01';

  /// Reads from `stream`, which must outlive this object.
  explicit DotStatements(std::istream& stream) : m_Stream(stream) {}

  /// Puts the next statement into `line`; false at the end of the file.
  bool next(std::string& line);

 private:
  bool takeLine(std::string& line);
  bool nextLineIsAttribute();

  std::istream& m_Stream;
  std::optional<std::string> m_Ahead;  ///< a line that was looked at but not taken
};

/// The values of a statement's attributes by their names.
using DotAttributes = std::map<std::string, std::string, std::less<>>;

/// Reads the attributes of one statement of `text` from `pos`, right behind the opening bracket. A
/// value comes without its quotes and put together where `dot` wrapped it, with kInnerQuote and
/// numbers as above. `pos` moves to the closing bracket, or to the end of `text` or behind it where
/// that cuts the statement off.
DotAttributes takeDotAttributes(std::string_view text, std::size_t& pos);

/// `text` with its escaped double quotes back in place.
std::string withInnerQuotes(std::string text);

}  // namespace quorbel
