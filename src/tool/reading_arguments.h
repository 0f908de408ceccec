#pragma once

// Options that several commands have.

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "formats/reading_options.h"
#include "measures/oracle.h"

namespace quorbel {

/// Why `text` is no number for an option; "" when it is one. CLI11's own check of a range lets
/// "nan" pass.
std::string whyNoNumber(const std::string& text);

/// Adds the options that every command which reads lattices has. `options`, which must outlive the
/// command line's parser, gets what they say.
void addReadingOptions(CLI::App& command, ReadingOptions& options);

/// Adds the options that say which words count beside a reference to a command, and returns them.
std::vector<CLI::Option*> addMatchingOptions(CLI::App& command, WordMatching& matching);

}  // namespace quorbel
