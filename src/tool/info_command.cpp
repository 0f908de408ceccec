// quorbel-lattice info: what a lattice is like.

#include <memory>

#include "measures/lattice_summary.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

CommandResult describeLattice(const WordLattice& lattice, LatticeJob& job) {
  job.begin("searching the best path");
  std::string text;
  if (job.isOneOfMany()) text = summaryRow("lattice", drawableText(job.name()));
  text += summaryOf(lattice);
  if (job.isOneOfMany()) text += "\n";
  job.print(std::move(text));
  return "";
}

}  // namespace

Command addInfo(CLI::App& app) {
  auto arguments = std::make_shared<SetArguments>();
  CLI::App* command =
      app.add_subcommand("info", "Say how large a lattice is, which scores it has and how it ends");
  addInputs(*command, *arguments);
  return [arguments](Progress& progress) {
    return workOnLattices(*arguments, progress, describeLattice);
  };
}

}  // namespace quorbel
