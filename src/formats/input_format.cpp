#include "formats/input_format.h"

#include <algorithm>
#include <optional>

#include "formats/columns.h"
#include "words/decimal.h"

namespace quorbel {
namespace {

constexpr std::string_view kFstMagic = "\xD6\xFD\xB2\x7E";

bool isState(std::string_view text) {
  const std::optional<int> number = wholeInteger(text);
  return number && *number >= 0;
}

/// A line from one state to another, with a label at least.
bool isArc(std::string_view line) {
  const Columns columns(line);
  return columns.count() >= 3 && columns.count() <= Columns::kMostColumns && isState(columns[0]) &&
         isState(columns[1]);
}

bool isFinal(std::string_view line) {
  const Columns columns(line);
  return columns.count() >= 1 && columns.count() <= 2 && isState(columns[0]);
}

/// A final state of Kaldi's: its weight has several costs.
bool isKaldiFinal(std::string_view line) {
  return isFinal(line) && (Columns(line).count() == 1 || line.find(',') != std::string_view::npos);
}

/// Takes the next line off a text; "" when nothing is left.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

bool saysNothing(std::string_view line) { return Columns(line).count() == 0; }

std::string_view takeLineThatSays(std::string_view& text) {
  std::string_view line;
  while (!text.empty() && saysNothing(line)) line = takeLine(text);
  return line;
}

/// An utterance's name, a blank, and Kaldi's mark of what is binary.
bool isKaldiBinary(std::string_view bytes) {
  const std::size_t blank = bytes.find_first_of(" \n");
  return blank != std::string_view::npos && blank > 0 &&
         bytes.substr(blank, 3) == std::string_view(" \0B", 3);
}

/// A name on a line, then states and arcs. Utterances without any may stand before it. A line of
/// several words before one that might be a final state is a reference text.
bool isKaldiText(std::string_view bytes) {
  for (;;) {
    const std::string_view name = takeLineThatSays(bytes);
    if (name.empty() || isArc(name)) return false;
    const std::string_view next = takeLine(bytes);
    if (isArc(next) || (isKaldiFinal(next) && Columns(name).count() == 1)) return true;
    const bool mayBeName = name.find('=') == std::string_view::npos && name[0] != '#';
    if (!saysNothing(next) || !mayBeName || bytes.empty()) return false;
  }
}

bool isFstText(std::string_view bytes) {
  const std::string_view first = takeLineThatSays(bytes);
  return isArc(first) || (isFinal(first) && takeLineThatSays(bytes).empty());
}

}  // namespace

InputFormat formatOf(std::string_view bytes) {
  if (bytes.substr(0, kFstMagic.size()) == kFstMagic) return InputFormat::OpenFstBinary;
  if (isKaldiBinary(bytes)) return InputFormat::KaldiBinary;
  if (isFstText(bytes)) return InputFormat::OpenFstText;
  return isKaldiText(bytes) ? InputFormat::KaldiText : InputFormat::Slf;
}

}  // namespace quorbel
