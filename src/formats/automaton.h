#pragma once

// What Kaldi's and OpenFst's files hold: states with arcs between them, and how that becomes a
// lattice.

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "formats/reading_options.h"
#include "words/word_lattice.h"

namespace quorbel {

/// What an arc or the end in a final state costs: negative logarithms.
struct AutomatonWeight {
  double graph = 0.0;
  double acoustic = 0.0;
  int idCount = 0;  ///< how many transition ids there are, each of which takes one frame
};

struct AutomatonArc {
  int from = 0;  ///< number of the state as the file has it, from 0
  int to = 0;
  std::string label;  ///< a number that stands for a word, or the word; "" for none
  AutomatonWeight weight;
  int line = 0;  ///< of the file, from 1; 0 where it has no lines
};

struct AutomatonFinal {
  int state = 0;
  bool hasWeight = false;
  AutomatonWeight weight;
  int line = 0;
};

/// An automaton as a file has it. Its start is `start`.
struct Automaton {
  std::string name;  ///< of the utterance; "" when the file names none
  int start = 0;
  bool hasAcousticCosts = false;               ///< the arcs' costs are two: graph and acoustic
  std::unordered_map<int, std::string> words;  ///< the file's own table for labels; UTF-8
  std::vector<AutomatonArc> arcs;
  std::vector<AutomatonFinal> finals;
};

/// Why an automaton takes no further arc or final state: it has four million of them, which is
/// beyond any lattice, and each takes many times the memory that it takes in a file. "" when it
/// does.
std::string whyFull(const Automaton& automaton);

/// The costs of OpenFst and Kaldi may be infinite.
inline constexpr const char* kInfiniteCost = "Infinity";

/// The cost that a text is, with kInfiniteCost as the one of what is as good as impossible. False
/// for what is no number.
bool takeCost(std::string_view text, double& cost);

/// Makes `lattice`, a fresh one, of an automaton.
///
/// A node is a state, a link an arc, with ids in the order of the arcs. The end of a path in a
/// final state is a link without word (kNullWord) to one node behind them all, which is the end;
/// only where there is a single final state, without weight, that no arc leaves, it is the end
/// itself. Where an arc enters the start, a node of its own is joined to it by a link without word.
///
/// Where labels are all numbers, they stand for words of `options.words`, else of the file's own
/// table, and 0 for none; without a table the numbers are shown, and a note of the lattice says so.
/// Labels that are not all numbers are the words themselves, of which "<eps>" and 0 are none.
///
/// The scores of a link are a, its acoustic cost, and l, its graph cost, both with their signs
/// flipped, where the automaton has these; its total is -(graph cost + acoustic cost x scale). The
/// time of a node is the number of ids on the way from the start times `options.frameShift`; of
/// different ways that with the most ids counts.
///
/// Returns "" on success, else what is wrong with which line.
std::string latticeOf(const Automaton& automaton, const ReadingOptions& options,
                      WordLattice& lattice);

}  // namespace quorbel
