#include "measures/posteriors.h"

#include <fst/shortest-distance.h>

#include <algorithm>
#include <limits>

#include "measures/fst_graph.h"

namespace quorbel {
namespace {

/// The totals of all links, divided by `scale`.
std::vector<double> totalsOf(const WordLattice& lattice, double scale) {
  std::vector<double> totals = *scoresNamed(lattice, kTotalName);
  for (double& total : totals) total /= scale;
  return totals;
}

/// For each node the sum, in the semiring of the arcs, over all paths from the start to it, or
/// (`isReversed`) from it to the end. States are in topological order, so each is passed once; no
/// difference is too small to count.
template <typename Arc>
std::vector<double> distances(const WordLattice& lattice, const std::vector<double>& totals,
                              bool isReversed) {
  using EveryArc = fst::AnyArcFilter<Arc>;
  using Queue = fst::StateOrderQueue<int>;
  constexpr float kNoDifference = 0.0F;
  const std::vector<char> all(lattice.links.size(), true);
  const fst::VectorFst<Arc> graph = fstOf<Arc>(lattice, totals, all, isReversed);
  Queue queue;
  std::vector<typename Arc::Weight> weights;
  const fst::ShortestDistanceOptions<Arc, Queue, EveryArc> options(&queue, EveryArc(), 0,
                                                                   kNoDifference);
  fst::ShortestDistance(graph, &weights, options);

  std::vector<double> values(lattice.nodes.size(), std::numeric_limits<double>::infinity());
  for (std::size_t state = 0; state < weights.size(); ++state)
    values[isReversed ? values.size() - 1 - state : state] = weights[state].Value();
  return values;
}

/// For each link what all paths through it cost together.
template <typename Arc>
std::vector<double> costsThrough(const WordLattice& lattice, const std::vector<double>& totals,
                                 double& ofAll) {
  const std::vector<double> fromStart = distances<Arc>(lattice, totals, false);
  const std::vector<double> toEnd = distances<Arc>(lattice, totals, true);
  ofAll = fromStart.back();
  std::vector<double> costs(lattice.links.size());
  for (std::size_t i = 0; i < costs.size(); ++i) {
    const WordLink& link = lattice.links[i];
    costs[i] = fromStart[slot(link.start)] - totals[i] + toEnd[slot(link.end)];
  }
  return costs;
}

}  // namespace

void computePosteriors(WordLattice& lattice) {
  if (lattice.isCyclic) return;
  double costOfAll = 0.0;
  const std::vector<double> costs =
      costsThrough<LogArc>(lattice, totalsOf(lattice, posteriorScale(lattice.scales)), costOfAll);
  for (std::size_t i = 0; i < costs.size(); ++i) {
    const double logPosterior = costOfAll - costs[i];
    const bool isOnPath = logPosterior > kLowestLogPosterior;  // false for not-a-number too
    lattice.links[i].logPosterior = isOnPath ? std::min(logPosterior, 0.0) : kLowestLogPosterior;
  }
}

std::vector<double> bestScoresThrough(const WordLattice& lattice) {
  double costOfBest = 0.0;
  std::vector<double> scores = costsThrough<CostArc>(lattice, totalsOf(lattice, 1.0), costOfBest);
  for (double& score : scores) score = -score;
  return scores;
}

}  // namespace quorbel
