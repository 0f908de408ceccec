// quorbel-lattice best: the best paths as text, CTM or HTK labels.

#include <functional>
#include <memory>
#include <utility>

#include "formats/label_formats.h"
#include "measures/best_paths.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

struct BestArguments {
  SetArguments set;
  int count = 1;
  bool hasRepeats = false;
  bool hasMarks = false;
  std::string scoreName = kTotalName;
  std::string format = "text";
};

/// Prints texts as they come, many at a time.
class Printer {
 public:
  explicit Printer(LatticeJob& job) : m_Job(job) {}

  /// Returns whether more is wanted.
  bool print(const std::string& text) {
    constexpr std::size_t kMuch = 1U << 16U;
    m_Waiting += text;
    return m_Waiting.size() < kMuch || flush();
  }

  /// Prints what waits.
  bool flush() { return m_Job.print(std::exchange(m_Waiting, "")); }

 private:
  LatticeJob& m_Job;
  std::string m_Waiting;
};

/// What makes the text of each path, given one after the other, in the format that is asked for.
std::function<std::string(const LatticePath&)> textOfPaths(const BestArguments& arguments,
                                                           const WordLattice& lattice,
                                                           const std::vector<double>& scores,
                                                           const std::string& title) {
  if (arguments.format == "ctm")
    return [&lattice, title, hasMarks = arguments.hasMarks](const LatticePath& path) {
      return pathAsCtm(lattice, path, title, hasMarks);
    };
  if (arguments.format == "htk")
    return [paths = PathsAsHtkLabels(lattice, scores)](const LatticePath& path) mutable {
      return paths.next(path);
    };
  return [paths = PathsAsText(lattice, scores, arguments.scoreName)](
             const LatticePath& path) mutable { return paths.next(path); };
}

/// What stands before and behind the paths of one of several lattices.
std::pair<std::string, std::string> frameOf(const BestArguments& arguments, const LatticeJob& job) {
  if (!job.isOneOfMany() || arguments.format == "ctm") return {};
  if (arguments.format == "htk") return {masterLabelHeading(job.title()), ".\n"};
  return {"lattice " + withControlPictures(job.name()) + "\n", ""};
}

CommandResult printBest(const BestArguments& arguments, const WordLattice& lattice,
                        LatticeJob& job) {
  job.begin("searching");
  const auto scores = scoresNamed(lattice, arguments.scoreName);
  if (!scores) return job.name() + ": " + noSuchScore(lattice, arguments.scoreName);
  const auto [before, behind] = frameOf(arguments, job);
  Printer printer(job);
  int count = 0;
  const auto print = [&, text = textOfPaths(arguments, lattice, *scores, job.title()),
                      first = before](const LatticePath& path) {
    if (++count == 1) printer.print(first);
    return printer.print(text(path));
  };
  const auto search = arguments.hasRepeats ? forBestPaths : forBestSentences;
  std::string error = search(lattice, *scores, arguments.count, print);
  if (!error.empty()) return job.name() + ": " + error;
  printer.print(behind);
  printer.flush();
  if (!lattice.hasTimes)
    job.say(job.name() + ": no node has a time; its depth in the lattice stands for it");
  if (lattice.isCyclic && count < arguments.count)
    job.say(job.name() + ": " + std::to_string(count) +
            " paths; there may be more, which go around for longer than is looked for");
  return "";
}

CommandResult runBest(const BestArguments& arguments, Progress& progress) {
  if (arguments.format == "ctm" && arguments.count > 1)
    return "best: CTM has no place for several paths; leave --nbest out or take another format";
  bool isBegun = false;
  const auto beginLabels = [&isBegun] {
    return std::exchange(isBegun, true) ? CommandResult() : printText(kMasterLabelMark);
  };
  return workOnLattices(arguments.set, progress, [&](WordLattice& lattice, LatticeJob& job) {
    if (arguments.format == "htk" && job.isOneOfMany()) job.act(beginLabels);
    return printBest(arguments, lattice, job);
  });
}

}  // namespace

Command addBest(CLI::App& app) {
  constexpr int kMostPaths = 100000;
  auto arguments = std::make_shared<BestArguments>();
  CLI::App* command =
      app.add_subcommand("best", "Print the best paths with their words and scores");
  addInputs(*command, arguments->set);
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
  return [arguments](Progress& progress) { return runBest(*arguments, progress); };
}

}  // namespace quorbel
