#include "formats/fst_text.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "formats/columns.h"
#include "formats/link_fields.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

constexpr std::size_t kFinalColumns = 2;  // at most
constexpr std::size_t kLongestAcceptor = 4;

/// Calls `take` with each line that is not blank and its number, until it returns false.
template <typename Take>
void forLines(std::string_view text, Take take) {
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const Columns columns(line);
    if (columns.count() > 0 && !take(line, columns, number)) return;
  }
}

bool isInteger(std::string_view text) { return wholeInteger(text).has_value(); }

bool isCost(std::string_view text) {
  double cost = 0.0;
  return takeCost(text, cost);
}

/// Whether arcs have one label.
bool isAcceptor(std::string_view text) {
  bool hasFive = false;
  bool hasThree = false;
  bool areCosts = true;     // all in the fourth column
  bool areIntegers = true;  // the same
  bool areNumbered = true;  // all labels in the third column are integers
  forLines(text, [&](std::string_view, const Columns& columns, int) {
    hasThree = hasThree || columns.count() == 3;
    hasFive = hasFive || columns.count() > kLongestAcceptor;
    if (columns.count() == kLongestAcceptor) {
      areCosts = areCosts && isCost(columns[3]);
      areIntegers = areIntegers && isInteger(columns[3]);
      areNumbered = areNumbered && isInteger(columns[2]);
    }
    return true;
  });
  if (hasThree || hasFive) return hasThree && !hasFive;
  return areCosts && !(areIntegers && areNumbered);
}

/// Reads the lines of one text.
class FstLines {
 public:
  FstLines(Automaton& automaton, bool isAcceptor)
      : m_Automaton(automaton), m_LabelColumn(isAcceptor ? 2 : 3) {}

  bool take(const Columns& columns, int number) {
    const std::optional<int> state = wholeInteger(columns[0]);
    if (!state || *state < 0) return false;
    if (number == m_FirstLine || m_FirstLine == 0) {
      m_FirstLine = number;
      m_Automaton.start = *state;
    }
    return columns.count() <= kFinalColumns ? takeFinal(*state, columns, number)
                                            : takeArc(*state, columns, number);
  }

 private:
  /// A state of infinite cost is none where a path can end: so states are written that have no
  /// arcs.
  bool takeFinal(int state, const Columns& columns, int number) {
    AutomatonFinal final;
    final.state = state;
    final.line = number;
    final.hasWeight = columns.count() == kFinalColumns;
    if (final.hasWeight && columns[1] == kInfiniteCost) return true;
    if (final.hasWeight && !takeCost(columns[1], final.weight.graph)) return false;
    m_Automaton.finals.push_back(final);
    return true;
  }

  bool takeArc(int from, const Columns& columns, int number) {
    const std::optional<int> to = wholeInteger(columns[1]);
    const std::size_t rest = columns.count() - m_LabelColumn;  // the label, and the cost
    if (!to || *to < 0 || columns.count() <= m_LabelColumn || rest > 2) return false;
    AutomatonArc arc;
    arc.from = from;
    arc.to = *to;
    arc.label = columns[m_LabelColumn];
    arc.line = number;
    if (rest == 2 && !takeCost(columns[m_LabelColumn + 1], arc.weight.graph)) return false;
    m_Automaton.arcs.push_back(std::move(arc));
    return true;
  }

  Automaton& m_Automaton;
  const std::size_t m_LabelColumn;
  int m_FirstLine = 0;
};

}  // namespace

std::string parseFstText(std::string_view text, Automaton& automaton) {
  const bool hasOneLabel = isAcceptor(text);
  FstLines lines(automaton, hasOneLabel);
  std::string error;
  forLines(text, [&](std::string_view line, const Columns& columns, int number) {
    error = whyFull(automaton);
    if (!error.empty())
      error = "line " + std::to_string(number) + ": " + error;
    else if (!lines.take(columns, number))
      error = "line " + std::to_string(number) + ": \"" + excerpt(line) + "\" is no arc " +
              (hasOneLabel ? "FROM TO LABEL COST" : "FROM TO IN OUT COST") +
              " and no final state STATE COST";
    return error.empty();
  });
  return error;
}

}  // namespace quorbel
