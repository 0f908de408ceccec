#include "measures/sentence_automaton.h"

#include <algorithm>
#include <cstring>
#include <queue>
#include <string_view>
#include <utility>

#include "words/spoken_words.h"

namespace quorbel {
namespace {

/// How many places and arcs are kept before they are forgotten: some 50 megabytes.
constexpr std::size_t kMostKept = 1500000;

bool isReached(const Distance& distance) {
  return distance.cost != std::numeric_limits<double>::infinity();
}

}  // namespace

std::vector<int> wordNumbers(const WordLattice& lattice) {
  std::unordered_map<std::string_view, int> numbers;
  std::vector<int> words;
  words.reserve(lattice.links.size());
  for (const WordLink& link : lattice.links)
    words.push_back(
        isSpoken(link.word.text)
            ? numbers.emplace(link.word.text, static_cast<int>(numbers.size())).first->second
            : -1);
  return words;
}

SentenceAutomaton::SentenceAutomaton(const WordLattice& lattice, const std::vector<double>& scores,
                                     const BestWays& ways, const std::vector<int>& words)
    : m_Lattice(lattice),
      m_Scores(scores),
      m_Ways(ways),
      m_Words(words),
      m_Most(std::numeric_limits<double>::infinity()),
      m_FirstLink(lattice.nodes.size() + 1, 0),
      m_More(lattice.nodes.size()),
      m_BestOf(words.empty() ? 0 : slot(*std::max_element(words.begin(), words.end()) + 1)) {
  for (const WordLink& link : lattice.links) ++m_FirstLink[slot(link.start) + 1];
  for (std::size_t i = 1; i < m_FirstLink.size(); ++i) m_FirstLink[i] += m_FirstLink[i - 1];
}

int SentenceAutomaton::start() {
  if (m_Kept > kMostKept) {
    m_States.clear();
    m_StateByHash.clear();
    m_Kept = 0;
  }
  reach(0, {0.0, 0});
  return stateOf(takeReached());
}

const std::vector<SentenceAutomaton::Arc>& SentenceAutomaton::arcs(int state) {
  State& asked = m_States[slot(state)];
  if (asked.arcs.empty()) makeArcs(asked);
  return asked.arcs;
}

int SentenceAutomaton::follow(int state, std::size_t arc) {
  const Arc taken = arcs(state)[arc];
  if (taken.target >= 0) return taken.target;
  for (const Place& place : m_States[slot(state)].places)
    eachLink(place, [&](std::size_t link, const Distance& more) {
      if (m_Words[link] == taken.word) reach(m_Lattice.links[link].end, more - taken.more);
    });
  const int target = stateOf(takeReached());
  m_States[slot(state)].arcs[arc].target = target;
  return target;
}

/// How much farther the end is through a link than on the best way from its node.
Distance SentenceAutomaton::detourOf(std::size_t link) const {
  const WordLink& taken = m_Lattice.links[link];
  return through(m_Scores[link], m_Ways.toEnd[slot(taken.end)]) - m_Ways.toEnd[slot(taken.start)];
}

/// Calls `take` with each link that leaves a place and leads to the end, and what that costs more.
template <typename Take>
void SentenceAutomaton::eachLink(const Place& place, Take take) const {
  for (std::size_t i = m_FirstLink[slot(place.node)]; i < m_FirstLink[slot(place.node) + 1]; ++i) {
    const Distance detour = detourOf(i);
    if (isReached(detour)) take(i, place.more + detour);
  }
}

void SentenceAutomaton::reach(int node, const Distance& more) {
  Distance& known = m_More[slot(node)];
  if (!isReached(known)) m_Reached.push_back(node);
  known = std::min(known, more);
}

/// What was reached, and what links without word lead to from there. Costs above those of the best
/// way are never below 0, so Dijkstra's algorithm serves lattices with and without cycles.
std::vector<SentenceAutomaton::Place> SentenceAutomaton::takeReached() {
  const auto isFarther = [](const Place& a, const Place& b) { return b.more < a.more; };
  std::vector<Place> waiting;
  for (const int node : m_Reached) waiting.push_back({node, m_More[slot(node)]});
  std::make_heap(waiting.begin(), waiting.end(), isFarther);
  while (!waiting.empty()) {
    std::pop_heap(waiting.begin(), waiting.end(), isFarther);
    const Place place = waiting.back();
    waiting.pop_back();
    if (m_More[slot(place.node)] < place.more) continue;  // found nearer since
    eachLink(place, [&](std::size_t link, const Distance& more) {
      const int end = m_Lattice.links[link].end;
      if (m_Words[link] >= 0 || !(more < m_More[slot(end)])) return;
      reach(end, more);
      waiting.push_back({end, more});
      std::push_heap(waiting.begin(), waiting.end(), isFarther);
    });
  }
  std::sort(m_Reached.begin(), m_Reached.end());
  std::vector<Place> places;
  for (const int node : m_Reached) {
    Distance& more = m_More[slot(node)];
    if (more.cost <= m_Most) places.push_back({node, more});
    more = Distance();
  }
  m_Reached.clear();
  return places;
}

std::uint64_t SentenceAutomaton::hashOf(const std::vector<Place>& places) {
  std::uint64_t hash = places.size();
  const auto mix = [&](std::uint64_t value) {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15u;
    hash = (hash ^ value) * kOdd;
    hash ^= hash >> 32u;
  };
  for (const Place& place : places) {
    std::uint64_t cost = 0;
    std::memcpy(&cost, &place.more.cost, sizeof cost);
    mix(cost);
    mix(static_cast<std::uint64_t>(place.node) << 32u ^
        static_cast<std::uint32_t>(place.more.links));
  }
  return hash;
}

/// The state with these places, which may be a new one.
int SentenceAutomaton::stateOf(std::vector<Place> places) {
  const auto isSame = [](const Place& a, const Place& b) {
    return a.node == b.node && a.more.cost == b.more.cost && a.more.links == b.more.links;
  };
  const std::uint64_t hash = hashOf(places);
  const auto [begin, end] = m_StateByHash.equal_range(hash);
  for (auto known = begin; known != end; ++known) {
    const std::vector<Place>& others = m_States[slot(known->second)].places;
    if (std::equal(places.begin(), places.end(), others.begin(), others.end(), isSame))
      return known->second;
  }
  m_Kept += places.size() + 1;
  m_States.push_back({std::move(places), {}});
  const int state = static_cast<int>(m_States.size()) - 1;
  m_StateByHash.emplace(hash, state);
  return state;
}

void SentenceAutomaton::makeArcs(State& state) {
  for (const Place& place : state.places) {
    if (slot(place.node) + 1 == m_Lattice.nodes.size()) state.arcs.push_back({place.more});
    eachLink(place, [&](std::size_t link, const Distance& more) {
      if (m_Words[link] < 0 || more.cost > m_Most) return;
      Distance& best = m_BestOf[slot(m_Words[link])];
      if (!isReached(best)) m_Follows.push_back(m_Words[link]);
      best = std::min(best, more);
    });
  }
  for (const int word : m_Follows) {
    state.arcs.push_back({m_BestOf[slot(word)], word});
    m_BestOf[slot(word)] = Distance();
  }
  m_Follows.clear();
  std::sort(state.arcs.begin(), state.arcs.end(), [](const Arc& a, const Arc& b) {
    return std::tie(a.more, a.word) < std::tie(b.more, b.word);
  });
  m_Kept += state.arcs.size();
}

}  // namespace quorbel
