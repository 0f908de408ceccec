#pragma once

#include <string_view>

namespace quorbel {

/// What may stand between the fields of a line, in lattices and in layouts.
inline constexpr std::string_view kBlanks = " \t";

}  // namespace quorbel
