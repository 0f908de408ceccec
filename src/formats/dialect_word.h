#pragma once

// Words as XML fragments, the form in which the viewer takes them.

#include <optional>
#include <string>
#include <string_view>

#include "words/word_lattice.h"

namespace quorbel {

/// Whether `name` can be an attribute beside the word: the element's own attributes ("in",
/// "exact"), what the viewer draws beside the word ("out") and names that XML keeps for itself
/// cannot.
bool isFreeAttribute(std::string_view name);

/// More attributes than any recogniser gives a word. The time that reading an element takes grows
/// with the square of their number: a line of 1 MB would take more than ten seconds.
constexpr int kMostWordAttributes = 1000;

/// Whether an element of what may be an XML fragment has more attributes than that.
bool hasTooManyAttributes(std::string_view fragment);

/// The word that an XML fragment is: its element's attribute "exact" or the first attribute in it,
/// else its text without white space at the ends, else, where its element has an attribute that is
/// empty, kNullWord. None for what is no XML ("<s>"), or has none of these.
std::optional<std::string> wordOfFragment(std::string_view fragment);

/// The XML fragment for a word: its own one, or an element <w> whose first attribute "in" is the
/// word as a drawing can show it, followed, where that is not the very word, by "exact" (see
/// percentText) and by the other attributes, as they can be drawn.
void appendFragment(std::string& line, const Word& word);

}  // namespace quorbel
