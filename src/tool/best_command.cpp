// quorbel-lattice best: the best paths as text, CTM or HTK labels.

#include <cstdio>
#include <filesystem>
#include <memory>

#include "formats/label_formats.h"
#include "formats/normalise.h"
#include "measures/best_paths.h"
#include "measures/lattice_summary.h"
#include "tool/commands.h"

namespace quorbel {
namespace {

struct BestArguments {
  std::string in;
  int count = 1;
  std::string scoreName = kTotalName;
  std::string format = "text";
};

std::string utteranceOf(const WordLattice& lattice, const std::string& path) {
  if (!lattice.utterance.empty()) return lattice.utterance;
  return std::filesystem::path(path).stem().string();
}

CommandResult runBest(const BestArguments& arguments, Progress& progress) {
  if (arguments.format == "ctm" && arguments.count > 1)
    return "best: CTM has no place for several paths; leave --nbest out or take another format";
  progress.begin("reading " + arguments.in);
  WordLattice lattice;
  if (std::string error = readWordLattice(arguments.in, lattice); !error.empty()) return error;
  progress.begin("searching");
  const auto scores = scoresNamed(lattice, arguments.scoreName);
  if (!scores) return arguments.in + ": " + noSuchScore(lattice, arguments.scoreName);
  std::vector<LatticePath> paths;
  if (std::string error = findBestPaths(lattice, *scores, arguments.count, paths); !error.empty())
    return arguments.in + ": " + error;
  if (!lattice.hasTimes)
    say(arguments.in + ": no node has a time; its depth in the lattice stands for it");

  const std::string text =
      arguments.format == "ctm"   ? pathAsCtm(lattice, paths[0], utteranceOf(lattice, arguments.in))
      : arguments.format == "htk" ? pathsAsHtkLabels(lattice, paths, *scores)
                                  : pathsAsText(lattice, paths, *scores, arguments.scoreName);
  return printText(text);
}

}  // namespace

Command addBest(CLI::App& app) {
  constexpr int kMostPaths = 100000;
  auto arguments = std::make_shared<BestArguments>();
  CLI::App* command =
      app.add_subcommand("best", "Print the best paths with their words and scores");
  command->add_option("IN", arguments->in, "Lattice, plain or compressed by gzip")->required();
  command->add_option("--nbest", arguments->count, "So many paths (1)")
      ->type_name("N")
      ->check(CLI::Range(1, kMostPaths));
  command->add_option("--score", arguments->scoreName, "Score that ranks the paths (TOTAL)")
      ->type_name("NAME");
  command
      ->add_option("--format", arguments->format,
                   "text; ctm: start, duration, word and posterior; htk: an HTK label file (text)")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"text", "ctm", "htk"}));
  return [arguments](Progress& progress) { return runBest(*arguments, progress); };
}

}  // namespace quorbel
