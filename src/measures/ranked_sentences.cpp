#include "measures/ranked_sentences.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "measures/ranked_paths.h"

namespace quorbel {
namespace {

/// Sums of the same numbers in another order differ in their last digits.
double withNoise(double cost) { return cost + 1e-9 * std::max(1.0, std::fabs(cost)); }

bool areSame(const Distance& a, const Distance& b) { return !(a < b) && !(b < a); }

}  // namespace

RankedSentences::RankedSentences(const WordLattice& lattice, const std::vector<double>& scores,
                                 std::size_t count)
    : m_Lattice(lattice),
      m_Scores(scores),
      m_Ways(bestWaysToEnd(lattice, scores)),
      m_Words(wordNumbers(lattice)),
      m_Entering(enteringLinks(lattice)),
      m_Automaton(lattice, scores, m_Ways, m_Words),
      m_Most(std::numeric_limits<double>::infinity()) {
  if (count != 0 && m_Ways.toEnd[0].cost != std::numeric_limits<double>::infinity()) search(count);
}

void RankedSentences::search(std::size_t count) {
  std::vector<double> exact;
  m_Candidates.push_back({{0.0, 0}, -1, 0, SentenceAutomaton::kEnd});
  while (m_Found.size() < count && !m_Candidates.empty()) {
    std::pop_heap(m_Candidates.begin(), m_Candidates.end());
    m_Found.push_back(m_Candidates.back());
    m_Candidates.pop_back();
    const std::vector<Step> steps = walk(m_Found.back());
    exact.push_back(pathAlong(steps).score);
    addTurns(steps);
    constexpr std::size_t kSome = 4;
    const std::size_t wanted = count - m_Found.size();
    if (m_Candidates.size() > 2 * wanted + kSome) keepCandidates(wanted);
  }
  m_Ranked.resize(m_Found.size());
  std::iota(m_Ranked.begin(), m_Ranked.end(), std::size_t{0});
  std::stable_sort(m_Ranked.begin(), m_Ranked.end(), [&](std::size_t a, std::size_t b) {
    return exact[a] != exact[b] ? exact[a] > exact[b]
                                : m_Found[a].more.links < m_Found[b].more.links;
  });
}

/// Makes candidates of the last sentence found: with another word, or the end, behind its own last
/// turn.
void RankedSentences::addTurns(const std::vector<Step>& steps) {
  const std::size_t mostWords = m_Lattice.nodes.size() + slot(kMostLinksAround);
  const Found& found = m_Found.back();
  const int index = static_cast<int>(m_Found.size()) - 1;
  for (std::size_t i = found.without < 0 ? 0 : found.turn + 1; i < steps.size(); ++i) {
    if (m_Lattice.isCyclic && i >= mostWords) return;
    const std::vector<SentenceAutomaton::Arc>& arcs = m_Automaton.arcs(steps[i].state);
    for (std::size_t arc = 1; arc < arcs.size(); ++arc) {
      const Distance more = found.more + arcs[arc].more;
      if (more.cost > m_Most) break;
      m_Candidates.push_back({more, index, i, arcs[arc].word});
      std::push_heap(m_Candidates.begin(), m_Candidates.end());
    }
  }
}

/// Lets the candidates go but for the `count` best ones: no other will be wanted.
void RankedSentences::keepCandidates(std::size_t count) {
  const auto end = m_Candidates.begin() + static_cast<std::ptrdiff_t>(count);
  const auto isBetter = [](const Found& a, const Found& b) { return b < a; };
  std::nth_element(m_Candidates.begin(), end, m_Candidates.end(), isBetter);
  m_Most = end->more.cost;
  m_Candidates.erase(end, m_Candidates.end());
  std::make_heap(m_Candidates.begin(), m_Candidates.end());
  m_Automaton.forgetBeyond(withNoise(m_Most));
}

/// The states and arcs of a sentence, up to the arc to its end.
std::vector<RankedSentences::Step> RankedSentences::walk(const Found& found) {
  std::vector<const Found*> turns;
  for (const Found* at = &found; at->without >= 0; at = &m_Found[slot(at->without)])
    turns.push_back(at);
  std::vector<Step> steps;
  for (int state = m_Automaton.start();;) {
    const std::vector<SentenceAutomaton::Arc>& arcs = m_Automaton.arcs(state);
    std::size_t arc = 0;
    if (!turns.empty() && turns.back()->turn == steps.size()) {
      while (arcs[arc].word != turns.back()->word) ++arc;
      turns.pop_back();
    }
    steps.push_back({state, arc});
    if (arcs[arc].word == SentenceAutomaton::kEnd) return steps;
    state = m_Automaton.follow(state, arc);
  }
}

/// The best path that says a sentence, found from its end.
LatticePath RankedSentences::pathAlong(const std::vector<Step>& steps) {
  LatticePath path;
  std::size_t step = steps.size() - 1;
  SentenceAutomaton::Place place = m_Automaton.places(steps[step].state).back();  // the end
  while (step > 0 || place.node != 0) {
    const std::vector<std::size_t>& entering = m_Entering[slot(place.node)];
    SentenceAutomaton::Place left = place;
    const auto link = std::find_if(entering.begin(), entering.end(), [&](std::size_t i) {
      return isOnPath(i, steps, step, place, left);
    });
    path.links.push_back(*link);
    if (m_Words[*link] >= 0) --step;
    place = left;
  }
  std::reverse(path.links.begin(), path.links.end());
  for (const std::size_t link : path.links) path.score += m_Scores[link];
  return path;
}

/// Whether a link is how the place `entered` of the state of a step was reached; `left` becomes the
/// place that it comes from.
bool RankedSentences::isOnPath(std::size_t link, const std::vector<Step>& steps, std::size_t step,
                               const SentenceAutomaton::Place& entered,
                               SentenceAutomaton::Place& left) {
  Distance before{0.0, 0};
  if (m_Words[link] >= 0) {
    if (step == 0) return false;
    const Step& last = steps[--step];
    const SentenceAutomaton::Arc& taken = m_Automaton.arcs(last.state)[last.arc];
    if (taken.word != m_Words[link]) return false;
    before = taken.more;
  }
  const std::vector<SentenceAutomaton::Place>& places = m_Automaton.places(steps[step].state);
  const int node = m_Lattice.links[link].start;
  const auto place =
      std::lower_bound(places.begin(), places.end(), node,
                       [](const SentenceAutomaton::Place& a, int b) { return a.node < b; });
  if (place == places.end() || place->node != node) return false;
  if (!areSame(place->more + m_Automaton.detourOf(link) - before, entered.more)) return false;
  left = *place;
  return true;
}

std::vector<int> RankedSentences::wordsOn(const LatticePath& path) const {
  std::vector<int> words;
  for (const std::size_t link : path.links)
    if (m_Words[link] >= 0) words.push_back(m_Words[link]);
  return words;
}

}  // namespace quorbel
