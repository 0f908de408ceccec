#include "formats/kaldi_archive.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

#include "formats/columns.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

std::string nameOn(const std::string& line) {
  constexpr const char* kBlanks = " \t";
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return "";
  return line.substr(begin, line.find_last_not_of(kBlanks) - begin + 1);
}

bool takeState(std::string_view text, int& state) {
  const std::optional<int> number = wholeInteger(text);
  if (!number || *number < 0) return false;
  state = *number;
  return true;
}

/// Ids with "_" between them.
bool takeIds(std::string_view ids, int& count) {
  const auto isPart = [](char c) {
    return c == '_' || std::isdigit(static_cast<unsigned char>(c));
  };
  if (!std::all_of(ids.begin(), ids.end(), isPart)) return false;
  count = ids.empty() ? 0 : 1 + static_cast<int>(std::count(ids.begin(), ids.end(), '_'));
  return true;
}

/// GRAPH,ACOUSTIC or, of a compact lattice, GRAPH,ACOUSTIC,IDS.
bool takeWeight(std::string_view text, AutomatonWeight& weight) {
  const std::size_t first = text.find(',');
  if (first == std::string_view::npos) return false;
  const std::size_t second = std::min(text.find(',', first + 1), text.size());
  return takeCost(text.substr(0, first), weight.graph) &&
         takeCost(text.substr(first + 1, second - first - 1), weight.acoustic) &&
         (second == text.size() || takeIds(text.substr(second + 1), weight.idCount));
}

/// Reads the lines of one lattice.
class KaldiLines {
 public:
  explicit KaldiLines(Automaton& automaton) : m_Automaton(automaton) {}

  /// Returns "" or what is wrong with the line.
  std::string take(const std::string& line, int number) {
    if (std::string error = whyFull(m_Automaton); !error.empty()) return error;
    const Columns columns(line);
    const bool isTaken =
        columns.count() <= 2 ? takeFinal(columns, number) : takeArc(columns, number);
    return isTaken ? ""
                   : "\"" + excerpt(line) +
                         "\" is no arc FROM TO WORD GRAPH,ACOUSTIC,IDS or FROM TO ID WORD "
                         "GRAPH,ACOUSTIC, and no final state STATE GRAPH,ACOUSTIC,IDS";
  }

 private:
  /// A state of infinite cost is none where a path can end: so states are written that have no
  /// arcs.
  bool takeFinal(const Columns& columns, int number) {
    AutomatonFinal final;
    final.line = number;
    final.hasWeight = columns.count() == 2;
    if (!takeState(columns[0], final.state)) return false;
    if (final.hasWeight && !takeWeight(columns[1], final.weight)) return false;
    beginAt(final.state);
    const bool isInfinite = columns[1].find(kInfiniteCost) != std::string_view::npos;
    if (!isInfinite) m_Automaton.finals.push_back(final);
    return true;
  }

  bool takeArc(const Columns& columns, int number) {
    AutomatonArc arc;
    arc.line = number;
    if (!takeState(columns[0], arc.from) || !takeState(columns[1], arc.to)) return false;
    const std::size_t count = columns.count();
    const bool isPlain =
        count == 5 || (count == 4 && (m_IsPlain || !takeWeight(columns[3], arc.weight)));
    if (isPlain) {
      if (!takePlain(columns, arc)) return false;
    } else if (count <= 4) {
      arc.label = columns[2];
    } else {
      return false;
    }
    beginAt(arc.from);
    m_Automaton.arcs.push_back(std::move(arc));
    return true;
  }

  /// An arc with a transition id, 0 for none, of its own column.
  bool takePlain(const Columns& columns, AutomatonArc& arc) {
    const std::optional<int> id = wholeInteger(columns[2]);
    arc.weight = AutomatonWeight();
    if (!id || *id < 0 || (columns.count() == 5 && !takeWeight(columns[4], arc.weight)))
      return false;
    m_IsPlain = true;
    arc.label = columns[3];
    arc.weight.idCount = *id == 0 ? 0 : 1;
    return true;
  }

  /// The state of the first line is the start.
  void beginAt(int state) {
    if (!std::exchange(m_IsBegun, true)) m_Automaton.start = state;
  }

  Automaton& m_Automaton;
  bool m_IsBegun = false;
  bool m_IsPlain = false;  ///< an arc had a transition id in a column of its own
};

}  // namespace

bool KaldiArchive::nextName(std::string& name, std::string& error) {
  lookAhead();
  m_IsAhead = false;
  name = m_NextName;
  error = m_NextError;
  m_IsInside = !name.empty();
  return m_IsInside;
}

bool KaldiArchive::isLast() {
  lookAhead();
  return m_NextName.empty() && m_NextError.empty();
}

/// Looks for the next name, unless that was done.
void KaldiArchive::lookAhead() {
  if (std::exchange(m_IsAhead, true)) return;
  m_NextName.clear();
  m_NextError.clear();
  if (!skipRest(m_NextError)) return;
  for (std::string line; m_NextName.empty() && m_File.nextLine(line, m_NextError);)
    m_NextName = nameOn(line);
}

/// Returns whether the file could be read so far.
bool KaldiArchive::skipRest(std::string& error) {
  for (std::string line; m_IsInside;) {
    if (!m_File.nextLine(line, error)) return error.empty();
    m_IsInside = Columns(line).count() > 0;
  }
  return true;
}

std::string KaldiArchive::read(Automaton& automaton) {
  automaton.hasAcousticCosts = true;
  const std::string atName = "line " + std::to_string(m_File.lineNumber()) + ": ";
  KaldiLines lines(automaton);
  std::size_t size = 0;
  std::string error;
  for (std::string line; m_File.nextLine(line, error);) {
    m_IsInside = Columns(line).count() > 0;
    if (!m_IsInside) break;
    const int number = m_File.lineNumber();
    size += line.size() + 1;
    if (size > kMostBytes)
      return "line " + std::to_string(number) +
             ": more than 256 MiB of text, which is beyond any lattice";
    error = lines.take(line, number);
    if (!error.empty()) return "line " + std::to_string(number) + ": " + error;
  }
  if (!error.empty()) return error;
  if (automaton.arcs.empty() && automaton.finals.empty())
    return atName + "an utterance without arcs";
  return automaton.finals.empty() ? atName + "an utterance without a final state, so no path ends"
                                  : "";
}

}  // namespace quorbel
