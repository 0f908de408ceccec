#pragma once

// The N best sentences of a lattice, each by the best path that says it.

#include <cstddef>
#include <vector>

#include "measures/best_paths.h"
#include "measures/best_ways.h"
#include "measures/sentence_automaton.h"

namespace quorbel {

/// The best sentences. Each is the best one but for some words at which it leaves the best way to
/// go on, and is kept as the last of these turns and the sentence without it: memory grows neither
/// with the lengths of sentences nor with the number of paths that say the same.
class RankedSentences {
 public:
  /// Finds the `count` best sentences by the sum of `scores` on their best paths, or all when there
  /// are fewer. In a cyclic lattice no score may be positive, and a sentence takes the best way to
  /// the end once it has kMostLinksAround words more than the lattice has nodes. Both arguments
  /// must outlive this object.
  RankedSentences(const WordLattice& lattice, const std::vector<double>& scores, std::size_t count);

  std::size_t size() const { return m_Ranked.size(); }

  /// The best path that says the sentence of that rank, counted from 0. Of equally good sentences
  /// the one whose path has fewer links comes first.
  LatticePath path(std::size_t rank) { return pathAlong(walk(m_Found[m_Ranked[rank]])); }

  /// The numbers of the words that a path says; the same for paths that say the same.
  std::vector<int> wordsOn(const LatticePath& path) const;

 private:
  struct Found {
    Distance more;     ///< than the best sentence
    int without;       ///< index of the sentence without the last turn; -1 for the best one
    std::size_t turn;  ///< how many words come before it
    int word;          ///< that is taken there, which may be SentenceAutomaton::kEnd

    bool operator<(const Found& other) const {  // the best is the greatest, for the heap
      return std::tie(other.more, other.without, other.turn, other.word) <
             std::tie(more, without, turn, word);
    }
  };
  struct Step {
    int state;
    std::size_t arc;  ///< that is taken from it
  };

  void search(std::size_t count);
  void addTurns(const std::vector<Step>& steps);
  void keepCandidates(std::size_t count);
  std::vector<Step> walk(const Found& found);
  LatticePath pathAlong(const std::vector<Step>& steps);
  bool isOnPath(std::size_t link, const std::vector<Step>& steps, std::size_t step,
                const SentenceAutomaton::Place& entered, SentenceAutomaton::Place& left);

  const WordLattice& m_Lattice;
  const std::vector<double>& m_Scores;
  const BestWays m_Ways;
  const std::vector<int> m_Words;
  const std::vector<std::vector<std::size_t>> m_Entering;  ///< the links that enter each node
  SentenceAutomaton m_Automaton;
  double m_Most;                      ///< what a sentence may cost more than the best
  std::vector<Found> m_Candidates;    ///< a heap
  std::vector<Found> m_Found;         ///< in the order of the search
  std::vector<std::size_t> m_Ranked;  ///< indices of the found ones in the order of their scores
};

}  // namespace quorbel
