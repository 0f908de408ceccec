#include "measures/best_paths.h"

#include <fst/shortest-path.h>

#include <algorithm>
#include <optional>

#include "measures/fst_graph.h"
#include "measures/ranked_paths.h"
#include "measures/ranked_sentences.h"

namespace quorbel {
namespace {

using Weight = CostArc::Weight;
using CostFst = fst::VectorFst<CostArc>;
using Filter = fst::AnyArcFilter<CostArc>;
using Links = std::vector<std::size_t>;

const std::string kNoPath = "no path leads from the start to the end";

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

/// The links of the only path in the result of a search; none when there is no path.
std::optional<Links> linksIn(const CostFst& result) {
  if (result.Start() == fst::kNoStateId) return std::nullopt;
  Links links;
  for (int state = result.Start(); result.NumArcs(state) > 0;) {
    const CostArc& arc = fst::ArcIterator<CostFst>(result, state).Value();
    links.push_back(static_cast<std::size_t>(arc.ilabel) - 1);
    state = arc.nextstate;
  }
  return links;
}

/// Searches best paths as the viewer does, so that of equally good ones it takes the same.
class ViewersSearch {
 public:
  ViewersSearch(const WordLattice& lattice, const std::vector<double>& scores)
      : m_Graph(fstOf<CostArc>(lattice, scores, std::vector<char>(lattice.links.size(), true))),
        m_HasPositive(std::any_of(scores.begin(), scores.end(), [](double s) { return s > 0.0; })) {
  }

  /// The best way from one node to another.
  std::optional<Links> way(int from, int to) {
    m_Graph.SetStart(from);
    m_Graph.SetFinal(m_Target, Weight::Zero());  // that is, no longer
    m_Graph.SetFinal(to, Weight::One());
    m_Target = to;
    std::vector<Weight> distances;
    if (m_HasPositive) {  // the states are in topological order
      fst::StateOrderQueue<int> queue;
      return search(queue, distances);
    }
    fst::ShortestFirstQueue<int, SettlingOrder> queue{SettlingOrder(distances)};
    return search(queue, distances);
  }

 private:
  template <typename Queue>
  std::optional<Links> search(Queue& queue, std::vector<Weight>& distances) const {
    constexpr float kNoDifference = 0.0F;
    CostFst result;
    fst::ShortestPathOptions<CostArc, Queue, Filter> options(&queue, Filter());
    options.delta = kNoDifference;
    fst::ShortestPath(m_Graph, &result, &distances, options);
    return linksIn(result);
  }

  CostFst m_Graph;
  bool m_HasPositive;
  int m_Target = m_Graph.NumStates() - 1;
};

LatticePath pathOf(Links links, const std::vector<double>& scores) {
  LatticePath path;
  for (const std::size_t link : links) path.score += scores[link];
  path.links = std::move(links);
  return path;
}

/// Why no path can be called the best; "" when one can.
std::string refusal(const WordLattice& lattice, const std::vector<double>& scores) {
  const auto positive =
      std::find_if(scores.begin(), scores.end(), [](double score) { return score > 0.0; });
  if (positive == scores.end() || !lattice.isCyclic) return "";
  return "the network has a cycle, and the score of link " +
         std::to_string(lattice.links[static_cast<std::size_t>(positive - scores.begin())].id) +
         " is positive: going around might improve a path for ever";
}

/// Gives the best path and then the others. It may lie anywhere among those that are equally good,
/// or behind the last of them that there is place for. `isBest` tells which of them it is.
template <typename Ranked, typename IsBest>
void takeFirst(const LatticePath& best, Ranked& ranked, std::size_t count, const IsBest& isBest,
               const TakePath& take) {
  if (!take(best)) return;
  bool isMet = false;
  for (std::size_t rank = 0; rank < ranked.size(); ++rank) {
    if (!isMet && rank + 1 == count) return;
    const LatticePath path = ranked.path(rank);
    if (!isMet && isBest(path))
      isMet = true;
    else if (!take(path))
      return;
  }
}

/// Finds the best path; gives `takeAll` it, to take all that is wanted.
template <typename TakeAll>
std::string beginWithBest(const WordLattice& lattice, const std::vector<double>& scores,
                          const TakeAll& takeAll) {
  if (std::string error = refusal(lattice, scores); !error.empty()) return error;
  const auto links =
      ViewersSearch(lattice, scores).way(0, static_cast<int>(lattice.nodes.size()) - 1);
  if (!links) return kNoPath;
  takeAll(pathOf(*links, scores));
  return "";
}

}  // namespace

std::string forBestPaths(const WordLattice& lattice, const std::vector<double>& scores, int count,
                         const TakePath& take) {
  return beginWithBest(lattice, scores, [&](const LatticePath& best) {
    RankedPaths ranked(lattice, scores, count == 1 ? 0 : slot(count));
    const auto isBest = [&](const LatticePath& path) { return path.links == best.links; };
    takeFirst(best, ranked, slot(count), isBest, take);
  });
}

std::string forBestSentences(const WordLattice& lattice, const std::vector<double>& scores,
                             int count, const TakePath& take) {
  return beginWithBest(lattice, scores, [&](const LatticePath& best) {
    RankedSentences ranked(lattice, scores, count == 1 ? 0 : slot(count));
    const auto isBest = [&, words = ranked.wordsOn(best)](const LatticePath& path) {
      return ranked.wordsOn(path) == words;
    };
    takeFirst(best, ranked, slot(count), isBest, take);
  });
}

std::string findBestPaths(const WordLattice& lattice, const std::vector<double>& scores, int count,
                          std::vector<LatticePath>& paths) {
  std::vector<LatticePath> found;
  std::string error = forBestPaths(lattice, scores, count, [&](const LatticePath& path) {
    found.push_back(path);
    return true;
  });
  if (error.empty()) paths = std::move(found);
  return error;
}

std::string findBestPathThrough(const WordLattice& lattice, const std::vector<double>& scores,
                                std::size_t link, LatticePath& path) {
  if (std::string error = refusal(lattice, scores); !error.empty()) return error;
  ViewersSearch search(lattice, scores);
  const WordLink& taken = lattice.links[link];
  std::optional<Links> links = search.way(0, taken.start);
  const auto rest = search.way(taken.end, static_cast<int>(lattice.nodes.size()) - 1);
  if (!links || !rest)
    return "no path from the start to the end takes link " + std::to_string(taken.id);
  links->push_back(link);
  links->insert(links->end(), rest->begin(), rest->end());
  path = pathOf(std::move(*links), scores);
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
