#pragma once

// The texts of a lattice file: what their bytes mean, and how they look in a drawing.

#include <string>
#include <string_view>

namespace quorbel {

/// The bytes that a value of HTK's Standard Lattice Format stands for: a backslash with three octal
/// digits (up to 377) is the byte of that number, a backslash before anything else gives what
/// follows, one at the end stands for itself.
std::string withoutEscapes(std::string_view value);

/// The bytes as UTF-8: as they are when they are UTF-8 already, otherwise read as Latin-1.
std::string inUtf8(std::string bytes);

/// The text with a small letter for each capital one, of any script. `text` is UTF-8.
std::string inLowerCase(const std::string& text);

/// The text as Graphviz can draw it from a label that is not escaped, and as XML can hold it. What
/// would end or change such a label looks nearly the same afterwards: a double quote becomes a
/// right double quotation mark, a backslash a set minus, a control character its picture, the
/// ampersand of what looks like an entity ("&amp;") a wide one, and what XML has no place for
/// U+FFFD. `text` is UTF-8.
std::string drawableText(const std::string& text);

/// The text with the picture of each control character in its place, and U+FFFD for what XML has no
/// place for: what drawableText does, for a label that is escaped. `text` is UTF-8.
std::string withControlPictures(const std::string& text);

/// The beginning of something of a file as a message shows it, drawable: its first 40 bytes or,
/// where a UTF-8 character would be cut, up to 3 fewer. "..." follows when there is more.
std::string excerpt(std::string_view text);

/// The text with every byte that a drawing or XML could not keep written as "%" and two hexadecimal
/// digits, "%" itself too.
std::string percentText(const std::string& text);

/// What percentText was made of. "%" without two hexadecimal digits stands for itself.
std::string withoutPercents(std::string_view text);

}  // namespace quorbel
