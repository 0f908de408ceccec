// quorbel-lattice info: what a lattice is like.

#include <memory>

#include "formats/normalise.h"
#include "measures/lattice_summary.h"
#include "tool/commands.h"

namespace quorbel {
namespace {

CommandResult runInfo(const std::string& in, Progress& progress) {
  progress.begin("reading " + in);
  WordLattice lattice;
  if (std::string error = readWordLattice(in, lattice); !error.empty()) return error;
  progress.begin("searching the best path");
  return printText(summaryOf(lattice));
}

}  // namespace

Command addInfo(CLI::App& app) {
  auto in = std::make_shared<std::string>();
  CLI::App* command =
      app.add_subcommand("info", "Say how large a lattice is, which scores it has and how it ends");
  command->add_option("IN", *in, "Lattice, plain or compressed by gzip")->required();
  return [in](Progress& progress) { return runInfo(*in, progress); };
}

}  // namespace quorbel
