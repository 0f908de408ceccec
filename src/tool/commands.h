#pragma once

// The commands of quorbel-lattice. Each takes its arguments off the command line in one function
// and is carried out in another.

#include <CLI/App.hpp>
#include <functional>
#include <string>

#include "tool/progress.h"

namespace quorbel {

/// What a command gives back: "" or one line that says why it failed.
using CommandResult = std::string;

/// Carries out a command with the arguments that the parsed command line gave it, and tells how far
/// it has come.
using Command = std::function<CommandResult(Progress&)>;

/// Each adds its subcommand to `app` and returns what carries it out once the command line is
/// parsed.
Command addImport(CLI::App& app);  // import_command.cpp
Command addPrune(CLI::App& app);   // prune_command.cpp
Command addBest(CLI::App& app);    // best_command.cpp
Command addInfo(CLI::App& app);    // info_command.cpp
Command addOracle(CLI::App& app);  // oracle_command.cpp
Command addDraw(CLI::App& app);    // draw_command.cpp

/// A line as it is said: with the program's name before it, and no control character in it.
std::string saidLine(const std::string& line);

/// Prints a line on standard error, with the program's name before it.
void say(const std::string& line);

/// Prints a command's result on standard output; its failure, such as a full disk, comes back.
CommandResult printText(const std::string& text);

/// Why `out` must not be written: it is the file `in` itself. "" when it is another.
std::string checkOutput(const std::string& in, const std::string& out);

}  // namespace quorbel
