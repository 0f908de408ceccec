// quorbel-lattice best: the best paths as text, CTM or HTK labels.

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>

#include "formats/label_formats.h"
#include "formats/lattice_input.h"
#include "measures/best_paths.h"
#include "measures/lattice_summary.h"
#include "tool/commands.h"
#include "tool/reading_arguments.h"

namespace quorbel {
namespace {

struct BestArguments {
  std::string in;
  ReadingOptions reading;
  int count = 1;
  bool hasRepeats = false;
  bool hasMarks = false;
  std::string scoreName = kTotalName;
  std::string format = "text";
};

std::string utteranceOf(const WordLattice& lattice, const std::string& path) {
  if (!lattice.utterance.empty()) return lattice.utterance;
  return std::filesystem::path(path).stem().string();
}

/// Prints texts as they come, many at a time.
class Printer {
 public:
  /// Returns whether it could be printed.
  bool print(const std::string& text) {
    constexpr std::size_t kMuch = 1u << 16u;
    m_Waiting += text;
    return m_Waiting.size() < kMuch || flush().empty();
  }

  /// Prints what waits. Returns "", or what failed first.
  const CommandResult& flush() {
    if (m_Error.empty()) m_Error = printText(m_Waiting);
    m_Waiting.clear();
    return m_Error;
  }

 private:
  std::string m_Waiting;
  CommandResult m_Error;
};

/// What makes the text of each path, given one after the other, in the format that is asked for.
std::function<std::string(const LatticePath&)> textOfPaths(const BestArguments& arguments,
                                                           const WordLattice& lattice,
                                                           const std::vector<double>& scores) {
  if (arguments.format == "ctm")
    return [&lattice, utterance = utteranceOf(lattice, arguments.in),
            hasMarks = arguments.hasMarks](const LatticePath& path) {
      return pathAsCtm(lattice, path, utterance, hasMarks);
    };
  if (arguments.format == "htk")
    return [paths = PathsAsHtkLabels(lattice, scores)](const LatticePath& path) mutable {
      return paths.next(path);
    };
  return [paths = PathsAsText(lattice, scores, arguments.scoreName)](
             const LatticePath& path) mutable { return paths.next(path); };
}

CommandResult runBest(const BestArguments& arguments, Progress& progress) {
  if (arguments.format == "ctm" && arguments.count > 1)
    return "best: CTM has no place for several paths; leave --nbest out or take another format";
  progress.begin("reading " + arguments.in);
  WordLattice lattice;
  std::string error = readWordLattice(arguments.in, lattice, arguments.reading);
  if (!error.empty()) return error;
  progress.begin("searching");
  const auto scores = scoresNamed(lattice, arguments.scoreName);
  if (!scores) return arguments.in + ": " + noSuchScore(lattice, arguments.scoreName);
  Printer printer;
  int count = 0;
  const auto print = [&, text = textOfPaths(arguments, lattice, *scores)](const LatticePath& path) {
    ++count;
    return printer.print(text(path));
  };
  const auto search = arguments.hasRepeats ? forBestPaths : forBestSentences;
  error = search(lattice, *scores, arguments.count, print);
  if (!error.empty()) return arguments.in + ": " + error;
  if (!lattice.hasTimes)
    say(arguments.in + ": no node has a time; its depth in the lattice stands for it");
  if (lattice.isCyclic && count < arguments.count)
    say(arguments.in + ": " + std::to_string(count) +
        " paths; there may be more, which go around for longer than is looked for");
  return printer.flush();
}

}  // namespace

Command addBest(CLI::App& app) {
  constexpr int kMostPaths = 100000;
  auto arguments = std::make_shared<BestArguments>();
  CLI::App* command =
      app.add_subcommand("best", "Print the best paths with their words and scores");
  command
      ->add_option("IN", arguments->in,
                   "Lattice, plain or compressed by gzip; - is the standard input")
      ->required();
  command->add_option("--nbest", arguments->count, "So many paths, of different words (1)")
      ->type_name("N")
      ->check(CLI::Range(1, kMostPaths));
  command->add_flag("--repeats", arguments->hasRepeats, "Also paths of the same words");
  command->add_option("--score", arguments->scoreName, "Score that ranks the paths (TOTAL)")
      ->type_name("NAME");
  command
      ->add_option("--format", arguments->format,
                   "text; ctm: start, duration, word and posterior; htk: an HTK label file (text)")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"text", "ctm", "htk"}));
  command->add_flag("--marks", arguments->hasMarks,
                    "CTM with sentence marks and pauses, such as <s>, </s> and <sil>");
  addReadingOptions(*command, arguments->reading);
  return [arguments](Progress& progress) { return runBest(*arguments, progress); };
}

}  // namespace quorbel
