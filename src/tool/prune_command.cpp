// quorbel-lattice prune: a smaller lattice that keeps what is likely.

#include <cmath>
#include <memory>
#include <optional>

#include "formats/dialect_writer.h"
#include "formats/lattice_input.h"
#include "measures/prune.h"
#include "tool/commands.h"
#include "tool/reading_arguments.h"

namespace quorbel {
namespace {

struct PruneArguments {
  std::string in;
  ReadingOptions reading;
  std::string out;
  std::optional<std::size_t> links;
  std::optional<double> beam;
};

CommandResult runPrune(const PruneArguments& arguments, Progress& progress) {
  if (std::string error = checkOutput(arguments.in, arguments.out); !error.empty()) return error;
  if (arguments.beam && std::isnan(*arguments.beam)) return "--beam: nan is no distance";
  progress.begin("reading " + arguments.in);
  WordLattice lattice;
  std::string error = readWordLattice(arguments.in, lattice, arguments.reading);
  if (!error.empty()) return error;
  progress.begin("pruning");
  error = arguments.links ? pruneToLinks(lattice, *arguments.links)
                          : pruneToBeam(lattice, *arguments.beam);
  if (!error.empty()) return arguments.in + ": " + error;
  if (arguments.links && lattice.links.size() > *arguments.links)
    say(arguments.in + ": the best path alone has " + std::to_string(lattice.links.size()) +
        " links, all of which are kept");
  progress.begin("writing " + arguments.out);
  return writeDialectFile(lattice, arguments.out);
}

}  // namespace

Command addPrune(CLI::App& app) {
  auto arguments = std::make_shared<PruneArguments>();
  CLI::App* command = app.add_subcommand(
      "prune", "Keep the likeliest links of a lattice, with the best path, as the viewer reads it");
  command
      ->add_option("IN", arguments->in,
                   "Lattice, plain or compressed by gzip; - is the standard input")
      ->required();
  command->add_option("OUT", arguments->out, "File to write, such as talk.lat")->required();
  CLI::Option_group* how = command->add_option_group("How much is kept", "One of these");
  how->add_option("--links", arguments->links,
                  "At most N links, those of the highest posterior probability")
      ->type_name("N")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1000000000}));
  how->add_option("--beam", arguments->beam,
                  "Links on a path whose TOTAL is at most B below that of the best path")
      ->type_name("B")
      ->check(CLI::Range(0.0, 1e100));
  how->require_option(1);
  addReadingOptions(*command, arguments->reading);
  return [arguments](Progress& progress) { return runPrune(*arguments, progress); };
}

}  // namespace quorbel
