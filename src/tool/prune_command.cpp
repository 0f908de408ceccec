// quorbel-lattice prune: a smaller lattice that keeps what is likely.

#include <cmath>
#include <memory>
#include <optional>

#include "measures/prune.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"

namespace quorbel {
namespace {

struct PruneArguments {
  SetArguments set;
  std::optional<std::size_t> links;
  std::optional<double> beam;
};

CommandResult pruneLattice(const PruneArguments& arguments, WordLattice& lattice, LatticeJob& job) {
  job.begin("pruning");
  std::string error = arguments.links ? pruneToLinks(lattice, *arguments.links)
                                      : pruneToBeam(lattice, *arguments.beam);
  if (!error.empty()) return job.name() + ": " + error;
  if (arguments.links && lattice.links.size() > *arguments.links)
    job.say(job.name() + ": the best path alone has " + std::to_string(lattice.links.size()) +
            " links, all of which are kept");
  return writeDialect(lattice, job);
}

CommandResult runPrune(const PruneArguments& arguments, Progress& progress) {
  if (arguments.beam && std::isnan(*arguments.beam)) return "--beam: nan is no distance";
  return workOnLattices(arguments.set, progress, [&](WordLattice& lattice, LatticeJob& job) {
    return pruneLattice(arguments, lattice, job);
  });
}

}  // namespace

Command addPrune(CLI::App& app) {
  auto arguments = std::make_shared<PruneArguments>();
  CLI::App* command = app.add_subcommand(
      "prune", "Keep the likeliest links of a lattice, with the best path, as the viewer reads it");
  addInputsAndOutput(*command, arguments->set, "File to write, such as talk.lat");
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
  return [arguments](Progress& progress) { return runPrune(*arguments, progress); };
}

}  // namespace quorbel
