// quorbel-lattice import: a file as a recogniser wrote it becomes one that the viewer opens.

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "formats/dialect_writer.h"
#include "formats/lattice_input.h"
#include "lattice/htk_reader.h"
#include "measures/lattice_summary.h"
#include "tool/commands.h"
#include "tool/reading_arguments.h"

namespace quorbel {
namespace {

struct ImportArguments {
  std::string in;
  ReadingOptions reading;
  std::string out;
  bool unlessDialect = false;
};

/// Whether the viewer reads a file of this text as it is, with all links that `lattice` has of it.
bool isReadByViewer(const std::string& text, const WordLattice& lattice) {
  Graph graph;
  if (!lattice.isDialect || !readHtkLattice(graph, "", text).empty()) return false;
  std::size_t linksSeen = 0;
  for (const std::vector<Edge>& edges : graph.adjacency->outgoing) linksSeen += edges.size();
  const auto isOfTheFile = [&](const WordLink& link) {  // and not one that joins ends
    return lattice.nodes[slot(link.start)].fileIndex >= 0 &&
           lattice.nodes[slot(link.end)].fileIndex >= 0;
  };
  return linksSeen == static_cast<std::size_t>(
                          std::count_if(lattice.links.begin(), lattice.links.end(), isOfTheFile));
}

/// For the viewer, whose user names no table: one beside a file of Kaldi's is taken.
ReadingOptions optionsOf(const ImportArguments& arguments) {
  ReadingOptions options = arguments.reading;
  const std::filesystem::path beside =
      std::filesystem::path(arguments.in).replace_filename("words.txt");
  std::error_code ignored;
  if (arguments.unlessDialect && !options.words && std::filesystem::exists(beside, ignored))
    options.words = std::make_shared<WordTable>(beside);
  return options;
}

CommandResult runImport(const ImportArguments& arguments, Progress& progress) {
  if (std::string error = checkOutput(arguments.in, arguments.out); !error.empty()) return error;
  progress.begin("reading " + arguments.in);
  WordLattice lattice;
  LatticeInput input(arguments.in, optionsOf(arguments));
  if (!input.next(lattice)) return input.error();
  const std::optional<std::string> text = input.takePlainText();
  const bool isChanged = arguments.reading.scales.isMade();
  if (arguments.unlessDialect && !isChanged && text && isReadByViewer(*text, lattice)) return "";
  progress.begin("searching the best path");
  const std::vector<std::string> warnings = warningsAbout(lattice);
  progress.begin("writing " + arguments.out);  // at last: a signal before leaves what is there
  if (std::string error = writeDialectFile(lattice, arguments.out); !error.empty()) return error;
  for (const std::string& warning : warnings) say(arguments.in + ": " + warning);
  return "";
}

}  // namespace

Command addImport(CLI::App& app) {
  auto arguments = std::make_shared<ImportArguments>();
  CLI::App* command = app.add_subcommand(
      "import", "Read a lattice as a recogniser wrote it and write it as the viewer reads it");
  command
      ->add_option("IN", arguments->in,
                   "Lattice, plain or compressed by gzip; - is the standard input")
      ->required();
  command->add_option("OUT", arguments->out, "File to write, such as talk.lat")->required();
  command->add_flag("--unless-dialect", arguments->unlessDialect,
                    "Write nothing when the words of IN are XML and the viewer reads it as it is");
  addReadingOptions(*command, arguments->reading);
  return [arguments](Progress& progress) { return runImport(*arguments, progress); };
}

}  // namespace quorbel
