// quorbel-lattice import: a file as a recogniser wrote it becomes one that the viewer opens.

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lattice/htk_reader.h"
#include "measures/lattice_summary.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"

namespace quorbel {
namespace {

struct ImportArguments {
  SetArguments set;
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
ReadingOptions optionsOf(const ImportArguments& arguments, const std::string& path) {
  ReadingOptions options = arguments.set.reading;
  const std::filesystem::path beside = std::filesystem::path(path).replace_filename("words.txt");
  std::error_code ignored;
  if (arguments.unlessDialect && !options.words && std::filesystem::exists(beside, ignored))
    options.words = std::make_shared<WordTable>(beside);
  return options;
}

CommandResult importLattice(const ImportArguments& arguments, const WordLattice& lattice,
                            LatticeJob& job) {
  const bool isChanged = arguments.set.reading.scales.isMade();
  if (arguments.unlessDialect && !isChanged && job.plainText() &&
      isReadByViewer(*job.plainText(), lattice))
    return "";
  job.begin("searching the best path");
  const std::vector<std::string> warnings = warningsAbout(lattice);
  CommandResult error =
      writeDialect(lattice, job);  // at last: a signal before leaves what is there
  for (const std::string& warning : warnings) job.say(job.name() + ": " + warning);
  return error;
}

CommandResult runImport(const ImportArguments& arguments, Progress& progress) {
  SetManner manner;
  manner.readingOf = [&](const std::string& path) { return optionsOf(arguments, path); };
  return workOnLattices(
      arguments.set, progress,
      [&](WordLattice& lattice, LatticeJob& job) { return importLattice(arguments, lattice, job); },
      manner);
}

}  // namespace

Command addImport(CLI::App& app) {
  auto arguments = std::make_shared<ImportArguments>();
  CLI::App* command = app.add_subcommand(
      "import", "Read a lattice as a recogniser wrote it and write it as the viewer reads it");
  addInputsAndOutput(*command, arguments->set, "File to write, such as talk.lat");
  command->add_flag("--unless-dialect", arguments->unlessDialect,
                    "Write nothing when the words of IN are XML and the viewer reads it as it is");
  return [arguments](Progress& progress) { return runImport(*arguments, progress); };
}

}  // namespace quorbel
