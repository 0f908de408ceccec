#pragma once

// By which rules the viewer's reader takes a line apart. Whoever writes files for the viewer, or
// reads what it reads, asks here what it will make of them.

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorbel {

/// What a field's key says about its value.
enum class ReaderKey : unsigned char {
  Header,  ///< the rest of the line does not count
  Word,
  NodeIndex,
  LinkId,
  Time,
  LinkStart,
  LinkEnd,
  NodeCount,
  LinkCount,
  Score  ///< every other key
};

/// The meaning of a key; upper and lower case are different keys.
ReaderKey readerKey(std::string_view key);

/// Where the XML fragment that begins at the "<" at `pos` of the line ends: behind the first angle
/// bracket, of those from the line's last "<" on, that brings "<" and ">" into balance. Where more
/// are closed than were opened, at the line's end. None when brackets stay open.
std::optional<std::size_t> fragmentEnd(std::string_view line, std::size_t pos);

/// The nodes between which paths lead, as lines of their own name them.
struct EndPoints {
  static constexpr int kNotGiven = -1;
  int start = kNotGiven;
  int end = kNotGiven;
};

/// In stretches of so many bytes the reader looks at a line for start and end node: each stretch of
/// a longer line counts as a line.
inline constexpr std::size_t kEndPointStretch = 2000;

/// Puts the number into `points` that the stretch names as the start or end node, with "start=" or
/// "end=" right at its beginning. False when it names none; one beyond the type's range counts as
/// the limit on its side.
bool takeEndPoint(std::string_view stretch, EndPoints& points);

/// Whether some stretch of the line, with so many blanks before it, names a start or end node.
bool namesEndPoint(std::string_view line, std::size_t blanksBefore);

}  // namespace quorbel
