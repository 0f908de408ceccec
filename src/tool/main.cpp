// quorbel-lattice: imports, prunes, ranks and draws lattices on the command line.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "tool/commands.h"

namespace quorbel {

std::string saidLine(const std::string& line) {
  std::string shown = "quorbel-lattice: " + line;
  const auto isControl = [](unsigned char c) { return std::iscntrl(c) != 0; };
  std::replace_if(shown.begin(), shown.end(), isControl, '?');  // names may have line ends
  return shown;
}

void say(const std::string& line) {
  const ProgressLineAway away;
  std::cerr << saidLine(line) + "\n" << std::flush;
}

std::string checkOutput(const std::string& in, const std::string& out) {
  std::error_code ignored;
  return std::filesystem::equivalent(in, out, ignored)
             ? out + ": this is the file to be read; write to another"
             : "";
}

CommandResult printText(const std::string& text) {
  std::optional<ProgressLineAway> away;
  if (isatty(STDOUT_FILENO) == 1) away.emplace();  // it may be the same terminal
  const bool isPrinted =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  return isPrinted ? "" : std::string("standard output: ") + std::strerror(errno);
}

namespace {

constexpr int kFailure = 1;

/// Takes the places of standard input, output and error that are closed, so that no file gets them
/// and what is said into them; reading from and writing to them goes on to fail.
void keepStandardFilesApart() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) >= 0) continue;
    const int taken = open("/dev/null", file == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    if (taken >= 0 && taken != file) close(taken);
  }
}

/// What is too large for the limit of a file is said, as what is too large for the disk. A handler,
/// unlike a signal that is ignored, is nothing that `dot` inherits.
void outliveFileSizeLimit() {
  struct sigaction action = {};
  sigaction(SIGXFSZ, nullptr, &action);
  if (action.sa_handler != SIG_DFL) return;
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  sigaction(SIGXFSZ, &action, nullptr);
}

/// The first line of a message of the command line's parser.
std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

int run(int argc, char** argv) {
  CLI::App app(
      "Imports, prunes, ranks and draws the word lattices of speech recognisers.\n"
      "Every command reads HTK's Standard Lattice Format, the Quorbel viewer's dialect of it, "
      "Kaldi's text archives, and OpenFst's files and texts.",
      "quorbel-lattice");
  app.require_subcommand(0, 1);
  app.set_version_flag("--version", "quorbel-lattice " QUORBEL_VERSION);
  std::vector<std::pair<std::string, Command>> commands;
  for (const auto& [name, add] :
       {std::pair<const char*, Command (*)(CLI::App&)>{"import", addImport},
        {"prune", addPrune},
        {"best", addBest},
        {"info", addInfo},
        {"oracle", addOracle},
        {"draw", addDraw}})
    commands.emplace_back(name, add(app));
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& asked) {  // for help or the version
    std::ostringstream text;
    app.exit(asked, text, text);
    const CommandResult error = printText(text.str());
    if (error.empty()) return 0;
    say(error);
    return kFailure;
  } catch (const CLI::ParseError& error) {
    say(firstLine(error.what()) + " (see quorbel-lattice --help)");
    return kFailure;
  }
  CommandResult error = "A command is required (see quorbel-lattice --help)";
  for (const auto& [name, command] : commands) {
    if (!app.got_subcommand(name)) continue;
    Progress progress;
    error = command(progress);
  }
  if (error.empty()) return 0;
  say(error);
  return kFailure;
}

}  // namespace
}  // namespace quorbel

int main(int argc, char** argv) {
  quorbel::keepStandardFilesApart();
  quorbel::outliveFileSizeLimit();
  try {
    return quorbel::run(argc, argv);
  } catch (const std::exception& exception) {  // such as want of memory
    quorbel::say(exception.what());
    return quorbel::kFailure;
  }
}
