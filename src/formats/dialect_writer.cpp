#include "formats/dialect_writer.h"

#include <cmath>

#include "formats/dialect_word.h"
#include "lattice/htk_reader.h"
#include "lattice/reading_rules.h"
#include "layout/whole_file.h"
#include "measures/level_shift.h"
#include "words/decimal.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// Appends a line; blanks at its beginning move it until no stretch begins with the wrong words.
bool appendLine(std::string& text, const std::string& line) {
  for (std::size_t blanks = 0; blanks < kEndPointStretch; ++blanks) {
    if (namesEndPoint(line, blanks)) continue;
    text.append(blanks, ' ');
    text += line;
    text += '\n';
    return true;
  }
  return false;
}

void appendInteger(std::string& text, int number) { text += std::to_string(number); }

void appendHeader(std::string& text, const WordLattice& lattice) {
  text += "VERSION=1.1\n";
  if (!lattice.utterance.empty()) {
    std::string name = drawableText(lattice.utterance);
    const bool isQuoted = name.find_first_of(" '") != std::string::npos;
    appendLine(text, isQuoted ? "UTTERANCE=\"" + name + '"' : "UTTERANCE=" + name);
  }
  const ScoreScales standard;
  const auto add = [&](const char* key, double value, double unless) {
    if (value == unless) return;
    text += key;
    appendNumber(text, value);
    text += '\n';
  };
  add("acscale=", lattice.scales.acoustic, standard.acoustic);
  add("lmscale=", lattice.scales.language, standard.language);
  add("prscale=", lattice.scales.pronunciation, standard.pronunciation);
  add("wdpenalty=", lattice.scales.wordPenalty, standard.wordPenalty);
  text += "N=";
  appendInteger(text, static_cast<int>(lattice.nodes.size()));
  text += " L=";
  appendInteger(text, static_cast<int>(lattice.links.size()));
  text += '\n';
}

void appendNodes(std::string& text, const WordLattice& lattice) {
  for (std::size_t i = 0; i < lattice.nodes.size(); ++i) {
    text += "I=";
    appendInteger(text, static_cast<int>(i));
    text += " t=";
    appendNumber(text, lattice.nodes[i].time);
    text += '\n';
  }
}

/// Posteriors are rounded: digits beyond say nothing of a path and differ between machines.
double inMillionths(double value) {
  constexpr double kMillion = 1e6;
  return std::round(value * kMillion) / kMillion;
}

std::string linkLine(const WordLattice& lattice, const WordLink& link, const LevelShift& shift) {
  std::string line = "J=";
  appendInteger(line, link.id);
  line += " S=";
  appendInteger(line, link.start);
  line += " E=";
  appendInteger(line, link.end);
  line += " W=";
  appendFragment(line, link.word);
  const auto add = [&](const std::string& name, double value) {
    line += ' ';
    line += name;
    line += '=';
    appendNumber(line, value);
  };
  add(kTotalName, shiftedTotal(link, shift));
  if (shift.perLevel > 0.0) add(kUnshiftedName, link.total);
  for (const NamedScore& score : link.scores)
    add(lattice.scoreNames[slot(score.name)], score.value);
  if (!lattice.isCyclic) add(kPosteriorName, inMillionths(link.logPosterior));
  return line;
}

}  // namespace

std::string dialectText(const WordLattice& lattice, std::string& text) {
  if (lattice.nodes.size() > static_cast<std::size_t>(kMostNodes))
    return "the lattice has " + std::to_string(lattice.nodes.size()) +
           " nodes, and the viewer opens at most " + std::to_string(kMostNodes) +
           "; make it smaller with \"quorbel-lattice prune\"";
  constexpr std::size_t kUsualLine = 100;
  text.clear();
  text.reserve(kUsualLine * (lattice.links.size() + lattice.nodes.size() / 4));
  appendHeader(text, lattice);
  appendNodes(text, lattice);
  const LevelShift shift = levelShiftOf(lattice);
  for (const WordLink& link : lattice.links)
    if (!appendLine(text, linkLine(lattice, link, shift)))
      return "link " + std::to_string(link.id) +
             " has so long a word, with \"start=\" or \"end=\" in it, that the viewer would "
             "misread it";
  return "";
}

std::string writeDialectFile(const WordLattice& lattice, const std::string& path) {
  std::string text;
  const std::string error = dialectText(lattice, text);
  return error.empty() ? writeWholeFile(path, text) : path + ": " + error;
}

}  // namespace quorbel
