#include "measures/lattice_summary.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "lattice/htk_reader.h"
#include "lattice/number_text.h"
#include "lattice/shortest_path.h"
#include "measures/best_paths.h"
#include "measures/level_shift.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// From so many links on `dot` takes several seconds for a drawing.
constexpr std::size_t kSlowToDraw = 600;

std::string nodeText(const WordLattice& lattice, std::size_t index) {
  const int inFile = lattice.nodes[index].fileIndex;
  return std::to_string(index) + (inFile < 0 ? " (joined to those of the file)"
                                             : " (" + std::to_string(inFile) + " in the file)");
}

/// The values that links have under one name.
struct ScoreRange {
  double lowest = 0.0;
  double highest = 0.0;
  std::size_t count = 0;

  void see(double value) {
    lowest = count == 0 ? value : std::min(lowest, value);
    highest = count == 0 ? value : std::max(highest, value);
    ++count;
  }
};

std::string scoreRows(const WordLattice& lattice) {
  std::map<std::string_view, ScoreRange> ranges;
  std::vector<ScoreRange*> ownRanges;
  for (const std::string& name : lattice.scoreNames) ownRanges.push_back(&ranges[name]);
  ScoreRange& totals = ranges[kTotalName];
  ScoreRange& posteriors = ranges[kPosteriorName];
  for (const WordLink& link : lattice.links) {
    totals.see(link.total);
    posteriors.see(link.logPosterior);
    for (const NamedScore& score : link.scores) ownRanges[slot(score.name)]->see(score.value);
  }
  std::string rows;
  for (const std::string& name : scoreNamesOf(lattice)) {
    const ScoreRange& range = ranges[name];
    rows += summaryRow("score " + name, formatNumber(range.lowest) + " to " +
                                            formatNumber(range.highest) + " on " +
                                            std::to_string(range.count) + " links");
  }
  return rows;
}

std::string bestPathRow(const WordLattice& lattice) {
  std::vector<LatticePath> paths;
  const std::string error = findBestPaths(lattice, *scoresNamed(lattice, kTotalName), 1, paths);
  if (!error.empty()) return summaryRow("best path", "none: " + error);
  return summaryRow("best path", kTotalName + "=" + formatNumber(paths[0].score) + ": " +
                                     drawableText(wordsOf(lattice, paths[0])));
}

std::string aboutPositiveTotals(const WordLattice& lattice, int first, const LevelShift& shift) {
  const auto isPositive = [](const WordLink& link) { return link.total > 0.0; };
  const auto count = std::count_if(lattice.links.begin(), lattice.links.end(), isPositive);
  const std::string text = "the TOTAL of " + std::to_string(count) +
                           " links is positive (the first: J=" + std::to_string(first) + ")";
  if (lattice.isCyclic)
    return text + " in a network with a cycle, so the viewer's search may miss the best path";
  return text + ", so for the viewer's search a link costs " + formatNumber(shift.perLevel) +
         " more for each level that it spans, and every path " + formatNumber(shift.ofPath) +
         " more; its \"" + kUnshiftedName + "\" is the true sum";
}

}  // namespace

std::string summaryRow(const std::string& name, const std::string& value) {
  constexpr std::size_t kColumn = 18;
  std::string text = name.empty() ? "" : name + ":";
  text.resize(std::max(kColumn, text.size() + 1), ' ');
  return text + value + "\n";
}

std::string summaryOf(const WordLattice& lattice) {
  std::string text;
  if (!lattice.utterance.empty()) text += summaryRow("utterance", drawableText(lattice.utterance));
  text += summaryRow("words", lattice.isDialect ? "XML fragments, as the viewer reads them"
                                                : "plain, to be imported for the viewer");
  text += summaryRow("nodes", std::to_string(lattice.nodes.size()));
  text += summaryRow("links", std::to_string(lattice.links.size()));
  const double duration = lattice.nodes.back().time - lattice.nodes.front().time;
  if (lattice.hasTimes) {
    text += summaryRow("duration", formatNumber(duration) + " s");
    if (duration > 0.0)
      text += summaryRow("links per second",
                         formatNumber(static_cast<double>(lattice.links.size()) / duration));
  } else {
    text += summaryRow("duration", "not known: no node has a time");
  }
  text += summaryRow("start node", nodeText(lattice, 0));
  text += summaryRow("end node", nodeText(lattice, lattice.nodes.size() - 1));
  text += summaryRow("cyclic", lattice.isCyclic ? "yes" : "no");
  text += scoreRows(lattice);
  text += bestPathRow(lattice);
  for (const std::string& warning : warningsAbout(lattice)) text += summaryRow("note", warning);
  return text;
}

std::vector<std::string> warningsAbout(const WordLattice& lattice) {
  std::vector<std::string> warnings = lattice.notes;
  if (!lattice.hasTimes)
    warnings.emplace_back("no node has a time; its depth in the lattice stands for it");
  const LevelShift shift = levelShiftOf(lattice);
  if (const std::optional<int> first = firstPositiveTotal(lattice))
    warnings.push_back(aboutPositiveTotals(lattice, *first, shift));
  std::vector<LatticePath> paths;
  const std::string error = findBestPaths(lattice, *scoresNamed(lattice, kTotalName), 1, paths);
  if (!error.empty())
    warnings.push_back("there is no best path: " + error);
  else if (shift.ofPath - paths[0].score >= NO_EDGE_COST)
    warnings.push_back("the best path costs " + formatNumber(shift.ofPath - paths[0].score) +
                       ", more than the viewer's search can reach");
  if (lattice.nodes.size() > static_cast<std::size_t>(kMostNodes))
    warnings.push_back("the viewer opens at most " + std::to_string(kMostNodes) +
                       " nodes; make it smaller with \"quorbel-lattice prune\"");
  else if (lattice.links.size() > kSlowToDraw)
    warnings.push_back("drawing " + std::to_string(lattice.links.size()) +
                       " links takes long; \"quorbel-lattice prune IN OUT --links 300\" makes a "
                       "lattice that is drawn in a moment");
  return warnings;
}

}  // namespace quorbel
