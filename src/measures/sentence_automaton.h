#pragma once

// What can be said next: a lattice as an automaton in which every sentence has one path.

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "measures/best_ways.h"

namespace quorbel {

/// The words that links say as numbers: equal for equal words, from 0 on; -1 for links that say
/// nothing (see isSpoken).
std::vector<int> wordNumbers(const WordLattice& lattice);

/// The sentences of a lattice as a deterministic automaton. A state stands for all nodes that some
/// beginning of a sentence leads to, each with what the way there costs more than the cheapest: so
/// many beginnings share states, and none is there before it is asked for. When states take a
/// certain memory, all are forgotten and made anew where they are needed.
class SentenceAutomaton {
 public:
  /// Stands for the end of the sentence where a word is expected.
  static constexpr int kEnd = -1;

  /// What may follow in a state. `more` is what the best sentence that goes on like this costs more
  /// than the best one that goes on from the state at all.
  struct Arc {
    Distance more;
    int word = kEnd;
    int target = -1;  ///< the state behind it once it was taken, see follow
  };

  /// Of these best ways by these scores, with `words` as from wordNumbers. A path must lead to the
  /// end. The arguments must outlive this object.
  SentenceAutomaton(const WordLattice& lattice, const std::vector<double>& scores,
                    const BestWays& ways, const std::vector<int>& words);

  /// A node that may be reached, and what that costs more than the cheapest of its state.
  struct Place {
    int node;
    Distance more;
  };

  /// The state before the first word. The numbers of other states may mean nothing afterwards.
  int start();

  /// What may follow in a state, the best first, which costs nothing more. Valid until the next
  /// call of start or follow.
  const std::vector<Arc>& arcs(int state);

  /// The nodes of a state, in their order. Valid as long.
  const std::vector<Place>& places(int state) const { return m_States[slot(state)].places; }

  /// How much farther the end is through a link than on the best way from its node; its cost is
  /// infinite where the link does not lead to the end.
  Distance detourOf(std::size_t link) const;

  /// The state behind the arc of that index, which is not to be kEnd.
  int follow(int state, std::size_t arc);

  /// Lets out of the states that are made from now on what costs more than `most` above the best
  /// sentence.
  void forgetBeyond(double most) { m_Most = most; }

 private:
  struct State {
    std::vector<Place> places;  ///< by their nodes
    std::vector<Arc> arcs;      ///< empty before they are asked for
  };

  template <typename Take>
  void eachLink(const Place& place, Take take) const;
  void reach(int node, const Distance& more);
  std::vector<Place> takeReached();
  int stateOf(std::vector<Place> places);
  static std::uint64_t hashOf(const std::vector<Place>& places);
  void makeArcs(State& state);

  const WordLattice& m_Lattice;
  const std::vector<double>& m_Scores;
  const BestWays& m_Ways;
  const std::vector<int>& m_Words;
  double m_Most;
  std::vector<std::size_t> m_FirstLink;  ///< of each node and, at last, behind all
  std::vector<State> m_States;
  std::unordered_multimap<std::uint64_t, int> m_StateByHash;
  std::size_t m_Kept = 0;          ///< places and arcs of all states
  std::vector<Distance> m_More;    ///< of each node, while places are collected
  std::vector<int> m_Reached;      ///< the nodes of those
  std::vector<Distance> m_BestOf;  ///< of each word, while arcs are made
  std::vector<int> m_Follows;      ///< the words of those
};

}  // namespace quorbel
