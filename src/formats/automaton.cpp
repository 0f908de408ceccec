#include "formats/automaton.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "formats/automaton_words.h"
#include "formats/link_fields.h"
#include "measures/node_order.h"
#include "measures/posteriors.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

constexpr int kAcousticScore = 0;  // among the names that fill() gives the lattice
constexpr int kLanguageScore = 1;

/// Makes a lattice of one automaton.
class AutomatonReading {
 public:
  AutomatonReading(const Automaton& automaton, const ReadingOptions& options, WordLattice& lattice)
      : m_Automaton(automaton), m_Options(options), m_Lattice(lattice) {}

  std::string fill();

 private:
  std::string checkFinals() const;
  void makeNodes();
  int nodeOf(int state) const { return m_NodeOf.at(state); }
  int addNode();
  void addLink(int start, int end, const AutomatonWeight& weight);
  void joinStart();
  void joinEnd();
  void setFrames(std::vector<std::optional<double>>& times) const;

  const Automaton& m_Automaton;
  const ReadingOptions& m_Options;
  WordLattice& m_Lattice;
  std::unordered_map<int, int> m_NodeOf;  ///< by the number of the state
  std::vector<char> m_IsLeft;             ///< of each node, whether a link leaves it
  std::vector<char> m_IsEntered;
  std::vector<int> m_IdCounts;  ///< of each link by its id
  bool m_HasIds = false;
  int m_Start = 0;
  int m_End = 0;
};

std::string AutomatonReading::fill() {
  if (std::string error = checkFinals(); !error.empty()) return error;
  m_Lattice.utterance = inUtf8(m_Automaton.name);
  if (m_Automaton.hasAcousticCosts) {
    m_Lattice.scoreNames = {"a", "l"};
    m_Lattice.scales.acoustic = kKaldiAcousticScale;
  }
  makeNodes();
  m_Start = nodeOf(m_Automaton.start);
  m_Lattice.links.reserve(m_Automaton.arcs.size() + m_Automaton.finals.size() + 1);
  for (const AutomatonArc& arc : m_Automaton.arcs)
    addLink(nodeOf(arc.from), nodeOf(arc.to), arc.weight);
  std::string error = nameLinks(m_Automaton, m_Options.words.get(), m_Lattice);
  if (!error.empty()) return error;
  joinEnd();
  if (m_IsEntered[slot(m_Start)]) joinStart();
  std::vector<std::optional<double>> times(m_Lattice.nodes.size());
  orderNodes(m_Lattice, m_Start, m_End, times);
  if (m_HasIds && !m_Lattice.isCyclic) setFrames(times);
  setTimes(m_Lattice, times);
  computePosteriors(m_Lattice);
  return "";
}

std::string AutomatonReading::checkFinals() const {
  if (m_Automaton.finals.empty()) return "no state is final, so no path ends";
  std::unordered_map<int, int> lineOf;
  for (const AutomatonFinal& final : m_Automaton.finals) {
    const auto [known, isNew] = lineOf.emplace(final.state, final.line);
    if (!isNew)
      return "line " + std::to_string(final.line) + ": state " + std::to_string(final.state) +
             " was final before, on line " + std::to_string(known->second);
  }
  return "";
}

/// A node for each state, in the order of their numbers.
void AutomatonReading::makeNodes() {
  std::vector<int> states = {m_Automaton.start};
  for (const AutomatonArc& arc : m_Automaton.arcs) states.insert(states.end(), {arc.from, arc.to});
  for (const AutomatonFinal& final : m_Automaton.finals) states.push_back(final.state);
  std::sort(states.begin(), states.end());
  states.erase(std::unique(states.begin(), states.end()), states.end());
  for (const int state : states) {
    const int node = addNode();
    m_NodeOf.emplace(state, node);
    m_Lattice.nodes[slot(node)].fileIndex = state;
  }
}

int AutomatonReading::addNode() {
  m_Lattice.nodes.emplace_back();
  m_IsLeft.push_back(false);
  m_IsEntered.push_back(false);
  return static_cast<int>(m_Lattice.nodes.size()) - 1;
}

void AutomatonReading::addLink(int start, int end, const AutomatonWeight& weight) {
  WordLink& link = m_Lattice.links.emplace_back();
  link.id = static_cast<int>(m_Lattice.links.size()) - 1;
  link.start = start;
  link.end = end;
  m_IsLeft[slot(start)] = m_IsEntered[slot(end)] = true;
  m_IdCounts.push_back(weight.idCount);
  m_HasIds = m_HasIds || weight.idCount > 0;
  link.total = rounded(0.0 - (weight.graph + m_Lattice.scales.acoustic * weight.acoustic));
  if (m_Automaton.hasAcousticCosts)
    link.scores = {{kAcousticScore, 0.0 - weight.acoustic}, {kLanguageScore, 0.0 - weight.graph}};
}

void AutomatonReading::joinEnd() {
  const AutomatonFinal& first = m_Automaton.finals[0];
  m_End = nodeOf(first.state);
  const bool isEnd = m_Automaton.finals.size() == 1 && !first.hasWeight && !m_IsLeft[slot(m_End)] &&
                     (m_End != m_Start || m_Lattice.nodes.size() == 1);
  if (isEnd) return;
  m_End = addNode();
  for (const AutomatonFinal& final : m_Automaton.finals)
    addLink(nodeOf(final.state), m_End, final.weight);
}

void AutomatonReading::joinStart() {
  const int first = m_Start;
  m_Start = addNode();
  addLink(m_Start, first, AutomatonWeight());
}

/// Times by the numbers of ids. Links lead to later nodes and are sorted by where they start.
void AutomatonReading::setFrames(std::vector<std::optional<double>>& times) const {
  constexpr long kUnreached = -1;
  std::vector<long> frames(m_Lattice.nodes.size(), kUnreached);
  frames[0] = 0;
  for (const WordLink& link : m_Lattice.links) {
    const long before = frames[slot(link.start)];
    if (before == kUnreached) continue;
    long& at = frames[slot(link.end)];
    at = std::max(at, before + m_IdCounts[slot(link.id)]);
  }
  for (std::size_t i = 0; i < frames.size(); ++i)
    if (frames[i] != kUnreached)
      times[i] = rounded(static_cast<double>(frames[i]) * m_Options.frameShift);
}

}  // namespace

std::string whyFull(const Automaton& automaton) {
  constexpr std::size_t kMostArcs = 4'000'000;
  return automaton.arcs.size() + automaton.finals.size() < kMostArcs
             ? ""
             : "more than " + std::to_string(kMostArcs) +
                   " arcs and final states, which is beyond any lattice";
}

bool takeCost(std::string_view text, double& cost) {
  if (text == kInfiniteCost) {
    cost = -kLogOfZero;
    return true;
  }
  const std::optional<double> number = wholeNumber(text);
  if (number) cost = *number;
  return number.has_value();
}

std::string latticeOf(const Automaton& automaton, const ReadingOptions& options,
                      WordLattice& lattice) {
  return AutomatonReading(automaton, options, lattice).fill();
}

}  // namespace quorbel
