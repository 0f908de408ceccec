#pragma once

#include <string>

namespace quorbel {

/// The text as one word of a POSIX shell command line: as it stands when it holds only letters,
/// digits and "_./+,:@%-", otherwise in single quotes, so that nothing in it is ever run.
std::string shellWord(const std::string& text);

}  // namespace quorbel
