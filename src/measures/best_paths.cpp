#include "measures/best_paths.h"

#include <fst/shortest-path.h>

#include <algorithm>
#include <numeric>

#include "measures/fst_graph.h"

namespace quorbel {
namespace {

using Weight = CostArc::Weight;
using CostFst = fst::VectorFst<CostArc>;
using Filter = fst::AnyArcFilter<CostArc>;
using Paths = std::vector<LatticePath>;

/// Orders states as the viewer's search settles nodes: by distance, then by number.
class SettlingOrder {
 public:
  explicit SettlingOrder(const std::vector<Weight>& distances) : m_Distances(distances) {}

  bool operator()(int a, int b) const {
    const double first = m_Distances[static_cast<std::size_t>(a)].Value();
    const double second = m_Distances[static_cast<std::size_t>(b)].Value();
    return first < second || (first == second && a < b);
  }

 private:
  const std::vector<Weight>& m_Distances;
};

double sumOf(const std::vector<double>& scores, const std::vector<std::size_t>& links) {
  return std::accumulate(links.begin(), links.end(), 0.0,
                         [&](double sum, std::size_t link) { return sum + scores[link]; });
}

/// Follows the only way on from `state`.
std::vector<std::size_t> linksFrom(const CostFst& graph, int state) {
  std::vector<std::size_t> links;
  while (graph.NumArcs(state) > 0) {
    const CostArc& arc = fst::ArcIterator<CostFst>(graph, state).Value();
    if (arc.ilabel > 0) links.push_back(static_cast<std::size_t>(arc.ilabel) - 1);
    state = arc.nextstate;
  }
  return links;
}

/// The result of OpenFst's search has one arc from its start for each path.
Paths pathsIn(const CostFst& result, const std::vector<double>& scores) {
  Paths paths;
  if (result.Start() == fst::kNoStateId) return paths;
  if (result.NumArcs(result.Start()) == 0) return {LatticePath{}};
  for (fst::ArcIterator<CostFst> arc(result, result.Start()); !arc.Done(); arc.Next()) {
    LatticePath& path = paths.emplace_back();
    if (arc.Value().ilabel > 0)
      path.links.push_back(static_cast<std::size_t>(arc.Value().ilabel) - 1);
    const std::vector<std::size_t> rest = linksFrom(result, arc.Value().nextstate);
    path.links.insert(path.links.end(), rest.begin(), rest.end());
    path.score = sumOf(scores, path.links);
  }
  std::stable_sort(paths.begin(), paths.end(),
                   [](const LatticePath& a, const LatticePath& b) { return a.score > b.score; });
  return paths;
}

template <typename Queue>
Paths search(const CostFst& graph, const std::vector<double>& scores, Queue& queue,
             std::vector<Weight>& distances, int count) {
  constexpr float kNoDifference = 0.0F;
  CostFst result;
  fst::ShortestPathOptions<CostArc, Queue, Filter> options(&queue, Filter(), count);
  options.delta = kNoDifference;
  fst::ShortestPath(graph, &result, &distances, options);
  return pathsIn(result, scores);
}

Paths onePath(const CostFst& graph, const std::vector<double>& scores, bool hasPositive) {
  std::vector<Weight> distances;
  if (hasPositive) {  // the states are in topological order
    fst::StateOrderQueue<int> queue;
    return search(graph, scores, queue, distances, 1);
  }
  fst::ShortestFirstQueue<int, SettlingOrder> queue{SettlingOrder(distances)};
  return search(graph, scores, queue, distances, 1);
}

Paths severalPaths(const CostFst& graph, const std::vector<double>& scores, int count) {
  std::vector<Weight> distances;
  fst::AutoQueue<int> queue(graph, &distances, Filter());
  return search(graph, scores, queue, distances, count);
}

}  // namespace

std::string findBestPaths(const WordLattice& lattice, const std::vector<double>& scores, int count,
                          std::vector<LatticePath>& paths) {
  const auto positive =
      std::find_if(scores.begin(), scores.end(), [](double score) { return score > 0.0; });
  const bool hasPositive = positive != scores.end();
  if (hasPositive && lattice.isCyclic)
    return "the network has a cycle, and the score of link " +
           std::to_string(lattice.links[static_cast<std::size_t>(positive - scores.begin())].id) +
           " is positive: going around might improve a path for ever";

  const std::vector<char> all(lattice.links.size(), true);
  const CostFst graph = fstOf<CostArc>(lattice, scores, all);
  Paths best = onePath(graph, scores, hasPositive);
  if (best.empty()) return "no path leads from the start to the end";
  if (count == 1) {
    paths = std::move(best);
    return "";
  }
  paths = severalPaths(graph, scores, count);
  const auto same = std::find_if(paths.begin(), paths.end(), [&](const LatticePath& path) {
    return path.links == best[0].links;
  });
  if (same == paths.end()) {  // it lost its place to equally good ones
    paths.back() = std::move(best[0]);
    std::rotate(paths.begin(), paths.end() - 1, paths.end());
  } else {
    std::rotate(paths.begin(), same, same + 1);
  }
  return "";
}

std::string wordsOf(const WordLattice& lattice, const LatticePath& path) {
  std::string words;
  for (const std::size_t index : path.links) {
    const Word& word = lattice.links[index].word;
    if (word.isNull()) continue;
    if (!words.empty()) words += ' ';
    words += word.text;
  }
  return words;
}

}  // namespace quorbel
