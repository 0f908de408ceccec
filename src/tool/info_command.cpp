// quorbel-lattice info: what a lattice is like.

#include <memory>

#include "formats/lattice_input.h"
#include "measures/lattice_summary.h"
#include "tool/commands.h"
#include "tool/reading_arguments.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

struct InfoArguments {
  std::string in;
  ReadingOptions reading;
};

/// The names of the utterances of an archive that has several, one a line.
std::string namesIn(const LatticeInput& input) {
  std::string text;
  if (input.names().size() < 2) return text;
  for (const std::string& name : input.names())
    text += summaryRow(text.empty() ? "utterances" : "", drawableText(name));
  return text;
}

CommandResult runInfo(const InfoArguments& arguments, Progress& progress) {
  progress.begin("reading " + arguments.in);
  WordLattice lattice;
  LatticeInput input(arguments.in, arguments.reading);
  if (!input.next(lattice) || !input.skipRest()) return input.error();
  progress.begin("searching the best path");
  return printText(summaryOf(lattice) + namesIn(input));
}

}  // namespace

Command addInfo(CLI::App& app) {
  auto arguments = std::make_shared<InfoArguments>();
  CLI::App* command =
      app.add_subcommand("info", "Say how large a lattice is, which scores it has and how it ends");
  command
      ->add_option("IN", arguments->in,
                   "Lattice, plain or compressed by gzip; - is the standard input")
      ->required();
  addReadingOptions(*command, arguments->reading);
  return [arguments](Progress& progress) { return runInfo(*arguments, progress); };
}

}  // namespace quorbel
