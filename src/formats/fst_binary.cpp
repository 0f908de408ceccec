#include "formats/fst_binary.h"

#include <fst/arc.h>
#include <fst/fst.h>
#include <fst/symbol-table.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <sstream>
#include <utility>

#include "formats/fst_layout.h"
#include "formats/link_fields.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// The decimal fraction that a number of single precision stands for: 0.1, not 0.100000001.
double asDecimal(float number) {
  constexpr std::size_t kLongest = 32;
  std::array<char, kLongest> digits{};
  auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  double decimal = 0.0;
  std::from_chars(digits.data(), end, decimal);
  return decimal;
}
double asDecimal(double number) { return number; }

/// The words that the file itself has for the labels of its arcs: its output table, or, where it
/// has one label an arc and one table, that.
template <typename Arc>
void takeWords(const fst::Fst<Arc>& graph, bool hasOneLabel, Automaton& automaton) {
  const fst::SymbolTable* table = graph.OutputSymbols();
  if (!table && hasOneLabel) table = graph.InputSymbols();
  if (!table) return;
  for (const AutomatonArc& arc : automaton.arcs) {
    const std::optional<int> number = wholeInteger(arc.label);
    if (number && *number >= 0 && automaton.words.count(*number) == 0 && table->Member(*number))
      automaton.words.emplace(*number, inUtf8(table->Find(*number)));
  }
}

template <typename Arc>
std::string takeGraph(const std::string& bytes, Automaton& automaton) {
  std::istringstream stream(bytes);
  const std::unique_ptr<fst::Fst<Arc>> graph(
      fst::Fst<Arc>::Read(stream, fst::FstReadOptions("the file")));
  if (!graph) return "the OpenFst library cannot read it";
  const auto isNoCost = [](double cost) {
    return std::isnan(cost) || cost < -kLargestNumber ||
           (cost > kLargestNumber && cost != std::numeric_limits<double>::infinity());
  };
  bool hasOneLabel = true;
  automaton.start = graph->Start();
  for (fst::StateIterator<fst::Fst<Arc>> states(*graph); !states.Done(); states.Next()) {
    const int state = states.Value();
    const std::string of = "of state " + std::to_string(state) + " is no number";
    const double last = asDecimal(graph->Final(state).Value());
    if (isNoCost(last)) return "the final cost " + of;
    if (!std::isinf(last)) {
      if (std::string full = whyFull(automaton); !full.empty()) return full;
      automaton.finals.push_back({state, last != 0.0, {last, 0.0, 0}, 0});
    }
    for (fst::ArcIterator<fst::Fst<Arc>> arcs(*graph, state); !arcs.Done(); arcs.Next()) {
      const Arc& arc = arcs.Value();
      const double cost = asDecimal(arc.weight.Value());
      if (isNoCost(cost)) return "the cost of an arc " + of;
      hasOneLabel = hasOneLabel && arc.ilabel == arc.olabel;
      if (std::string full = whyFull(automaton); !full.empty()) return full;
      const double finite = std::isinf(cost) ? -kLogOfZero : cost;
      automaton.arcs.push_back(
          {state, arc.nextstate, std::to_string(arc.olabel), {finite, 0.0, 0}, 0});
    }
  }
  takeWords(*graph, hasOneLabel, automaton);
  return "";
}

}  // namespace

std::string readFstBinary(const std::string& bytes, Automaton& automaton) {
  FstArcs arcs = FstArcs::Tropical;
  if (std::string error = checkFstLayout(bytes, arcs); !error.empty()) return error;
  if (arcs == FstArcs::Log) return takeGraph<fst::LogArc>(bytes, automaton);
  if (arcs == FstArcs::Log64) return takeGraph<fst::Log64Arc>(bytes, automaton);
  return takeGraph<fst::StdArc>(bytes, automaton);
}

}  // namespace quorbel
