#include "use.h"

#include <cstdint>
#include <cstdlib>

#include "formats/dialect_writer.h"
#include "formats/label_formats.h"
#include "lattice/htk_reader.h"
#include "lattice/xml_label.h"
#include "measures/best_paths.h"
#include "measures/lattice_summary.h"
#include "measures/level_shift.h"
#include "measures/prune.h"
#include "quiet.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// What the viewer makes of the lattice's file must be the lattice.
void openInViewer(const WordLattice& lattice) {
  std::string text;
  if (!dialectText(lattice, text).empty()) return;
  Graph graph;
  graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}};
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  require(readHtkLattice(graph, fileOf(bytes, text.size())).empty());
  require(graph.adjacency->nodeCount == static_cast<int>(lattice.nodes.size()));
  require(graph.adjacency->startNode == 0);
  require(graph.adjacency->endNode == graph.adjacency->nodeCount - 1);
  require(graph.nodes[lattice.nodes.size() - 1].time == 1.0);
  require(lattice.links.empty() || currentScoreName == kTotalName);
  const LevelShift shift = levelShiftOf(lattice);
  std::size_t index = 0;
  for (const std::vector<Edge>& edges : graph.adjacency->outgoing) {
    for (const Edge& edge : edges) {
      const WordLink& link = lattice.links.at(index++);
      require(edge.linkId == link.id && edge.endNode == link.end);
      require(edge.scores.at(kTotalName) == -shiftedTotal(link, shift));
      require(lattice.isCyclic || edge.scores.at(kTotalName) >= 0.0);
      if (!link.word.xml.empty()) continue;
      const std::string label = edgeXmlLabel(graph, edge.word, false);
      require(label == drawableText(link.word.text));
      require(label.find_first_of("\"\\\n") == std::string::npos);
    }
  }
  require(index == lattice.links.size());
}

void search(const WordLattice& lattice) {
  for (const std::string& name : scoreNamesOf(lattice)) {
    const std::vector<double> scores = *scoresNamed(lattice, name);
    std::vector<LatticePath> paths;
    if (!findBestPaths(lattice, scores, 3, paths).empty()) continue;
    require(!paths.empty() && paths.size() <= 3);
    PathsAsText text(lattice, scores, name);
    PathsAsHtkLabels labels(lattice, scores);
    for (const LatticePath& path : paths) {
      int node = 0;
      for (const std::size_t link : path.links) {
        require(lattice.links.at(link).start == node);
        node = lattice.links[link].end;
      }
      require(node == static_cast<int>(lattice.nodes.size()) - 1);
      pathAsCtm(lattice, path, "utterance");
      text.next(path);
      labels.next(path);
    }
  }
  summaryOf(lattice);
}

void prune(const WordLattice& lattice, bool toBeam) {
  WordLattice pruned = lattice;
  const std::size_t count = lattice.links.size() / 2 + 1;
  const std::string error = toBeam ? pruneToBeam(pruned, 3.0) : pruneToLinks(pruned, count);
  if (!error.empty()) return;
  require(pruned.links.size() <= lattice.links.size());
  search(pruned);
  openInViewer(pruned);
}

}  // namespace

void require(bool condition) {
  if (!condition) std::abort();
}

void use(const WordLattice& lattice, bool toBeam) {
  search(lattice);
  openInViewer(lattice);
  prune(lattice, toBeam);
}

}  // namespace quorbel
