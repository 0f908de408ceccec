#include "formats/label_formats.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>

#include "words/decimal.h"
#include "words/spoken_words.h"

namespace quorbel {
namespace {

double startOf(const WordLattice& lattice, const WordLink& link) {
  return lattice.nodes[static_cast<std::size_t>(link.start)].time;
}

double endOf(const WordLattice& lattice, const WordLink& link) {
  return lattice.nodes[static_cast<std::size_t>(link.end)].time;
}

/// The number with so many digits behind the point.
std::string fixed(double number, int digits) {
  std::array<char, 400> text;  // the largest double has 309 digits
  auto* const end = std::to_chars(text.data(), text.data() + text.size(), number,
                                  std::chars_format::fixed, digits)
                        .ptr;
  std::string shown(text.data(), end);
  const bool isZero = shown.find_first_not_of("-0.") == std::string::npos;
  return isZero && shown[0] == '-' ? shown.substr(1) : shown;
}

bool isBreak(char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7f'; }

/// The text on one line.
std::string onOneLine(std::string text) {
  const auto isControl = [](char c) { return c != ' ' && isBreak(c); };
  std::replace_if(text.begin(), text.end(), isControl, '_');
  return text;
}

/// The text in one column: what would end it becomes "_".
std::string inOneColumn(std::string text) {
  std::replace_if(text.begin(), text.end(), isBreak, '_');
  return text;
}

/// The text with a backslash before what would end it, control characters in octal digits.
std::string withHtkEscapes(const std::string& word) {
  std::string quoted;
  for (const char c : word) {
    const unsigned byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == 0x7F) {
      quoted += '\\';
      for (const unsigned shift : {6u, 3u, 0u})
        quoted += static_cast<char>('0' + (byte >> shift & 7u));
      continue;
    }
    if (c == '\\' || c == '"') quoted += '\\';
    quoted += c;
  }
  return quoted;
}

/// The word as HTK reads it back: in double quotes when it has blanks in it or begins like a quote
/// or a number.
std::string inHtkQuotes(const std::string& word) {
  const unsigned char first = static_cast<unsigned char>(word[0]);
  const bool isQuoted = std::any_of(word.begin(), word.end(), isBreak) || first == '\'' ||
                        first == '"' || std::isdigit(first) || first == '-' || first == '+' ||
                        first == '.';
  return isQuoted ? '"' + withHtkEscapes(word) + '"' : withHtkEscapes(word);
}

}  // namespace

PathsAsText::PathsAsText(const WordLattice& lattice, const std::vector<double>& scores,
                         std::string scoreName)
    : m_Lattice(lattice), m_ScoreName(std::move(scoreName)) {
  m_Lines.reserve(lattice.links.size());
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const WordLink& link = lattice.links[i];
    m_Lines.push_back("  " + exactNumber(startOf(lattice, link)) + "\t" +
                      exactNumber(endOf(lattice, link)) + "\t" + inOneColumn(link.word.text) +
                      "\t" + exactNumber(scores[i]) + "\tJ=" + std::to_string(link.id) + "\n");
  }
}

std::string PathsAsText::next(const LatticePath& path) {
  std::string text = "path " + std::to_string(++m_Rank) + ": " + m_ScoreName + "=" +
                     exactNumber(rounded(path.score)) + ": " + onOneLine(wordsOf(m_Lattice, path)) +
                     "\n";
  for (const std::size_t link : path.links) text += m_Lines[link];
  return text;
}

std::string pathAsCtm(const WordLattice& lattice, const LatticePath& path,
                      const std::string& utterance, bool hasMarks) {
  constexpr int kTimeDigits = 3;
  constexpr int kConfidenceDigits = 4;
  std::string text;
  for (const std::size_t index : path.links) {
    const WordLink& link = lattice.links[index];
    if (link.word.isNull() || (!hasMarks && !isSpoken(link.word.text))) continue;
    const double start = startOf(lattice, link);
    text += inOneColumn(utterance) + " 1 " + fixed(start, kTimeDigits) + " " +
            fixed(std::max(0.0, endOf(lattice, link) - start), kTimeDigits) + " " +
            inOneColumn(link.word.text);
    if (!lattice.isCyclic) text += " " + fixed(std::exp(link.logPosterior), kConfidenceDigits);
    text += "\n";
  }
  return text;
}

std::string masterLabelHeading(const std::string& utterance) {
  return "\"*/" + withHtkEscapes(utterance) + ".lab\"\n";
}

PathsAsHtkLabels::PathsAsHtkLabels(const WordLattice& lattice, const std::vector<double>& scores)
    : m_Lines(lattice.links.size()) {
  constexpr double kUnitsPerSecond = 1e7;
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const WordLink& link = lattice.links[i];
    if (!link.word.isNull())
      m_Lines[i] = fixed(startOf(lattice, link) * kUnitsPerSecond, 0) + " " +
                   fixed(endOf(lattice, link) * kUnitsPerSecond, 0) + " " +
                   inHtkQuotes(link.word.text) + " " + exactNumber(scores[i]) + "\n";
  }
}

std::string PathsAsHtkLabels::next(const LatticePath& path) {
  std::string text = m_IsFirst ? "" : "///\n";
  m_IsFirst = false;
  for (const std::size_t link : path.links) text += m_Lines[link];
  return text;
}

}  // namespace quorbel
