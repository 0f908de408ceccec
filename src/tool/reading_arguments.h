#pragma once

// The options that every command which reads lattices has.

#include <CLI/App.hpp>
#include <string>

#include "formats/reading_options.h"

namespace quorbel {

/// Why `text` is no number for an option; "" when it is one. CLI11's own check of a range lets
/// "nan" pass.
std::string whyNoNumber(const std::string& text);

/// Adds them to a command's. `options`, which must outlive the command line's parser, gets what
/// they say.
void addReadingOptions(CLI::App& command, ReadingOptions& options);

}  // namespace quorbel
