#pragma once

// The options that every command which reads lattices has.

#include <CLI/App.hpp>

#include "formats/reading_options.h"

namespace quorbel {

/// Adds them to a command's. `options`, which must outlive the command line's parser, gets what
/// they say.
void addReadingOptions(CLI::App& command, ReadingOptions& options);

}  // namespace quorbel
