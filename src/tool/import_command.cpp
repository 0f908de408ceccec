// quorbel-lattice import: a file as a recogniser wrote it becomes one that the viewer opens.

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lattice/htk_reader.h"
#include "measures/lattice_summary.h"
#include "measures/prune.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"

namespace quorbel {
namespace {

struct ImportArguments {
  SetArguments set;
  bool unlessDialect = false;
  std::optional<std::size_t> links;  ///< at most, where there are more than `linksAbove`
  std::size_t linksAbove = 0;
  bool tellsLinks = false;
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

/// Whether the lattice has become smaller. One that cannot be pruned, as it is cyclic or has no
/// path, stays whole.
bool isPruned(const ImportArguments& arguments, WordLattice& lattice, LatticeJob& job) {
  const std::size_t before = lattice.links.size();
  if (!arguments.links || before <= std::max(*arguments.links, arguments.linksAbove)) return false;
  const std::string reason = pruneToLinks(lattice, *arguments.links);
  if (!reason.empty()) job.say(job.name() + ": " + reason + ", so all links stay");
  return lattice.links.size() < before;
}

CommandResult importLattice(const ImportArguments& arguments, WordLattice& lattice,
                            LatticeJob& job) {
  const bool isWanted = !arguments.unlessDialect || arguments.set.reading.scales.isMade() ||
                        !job.plainText() || !isReadByViewer(*job.plainText(), lattice);
  const std::size_t linksOfIn = lattice.links.size();
  if (!isPruned(arguments, lattice, job) && !isWanted) return "";
  job.begin("searching the best path");
  const std::vector<std::string> warnings = warningsAbout(lattice);
  CommandResult error =
      writeDialect(lattice, job);  // at last: a signal before leaves what is there
  for (const std::string& warning : warnings) job.say(job.name() + ": " + warning);
  if (arguments.tellsLinks && error.empty())
    job.print(std::to_string(lattice.links.size()) + " of " + std::to_string(linksOfIn) +
              " links\n");
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
  command
      ->add_option("--links", arguments->links,
                   "Keep at most N links, those of the highest posterior probability")
      ->type_name("N")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1000000000}));
  command
      ->add_option("--links-above", arguments->linksAbove,
                   "With --links: keep all of up to this many (0)")
      ->type_name("N");
  command->add_flag("--tell-links", arguments->tellsLinks,
                    "Print how many links of how many were written");
  return [arguments](Progress& progress) { return runImport(*arguments, progress); };
}

}  // namespace quorbel
