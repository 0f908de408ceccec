#pragma once

// A lattice as the companion program's commands work on it, whatever file it came from.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorbel {

/// The word of a link that stands for no word.
inline const std::string kNullWord = "!NULL";

/// An attribute of a word's element; UTF-8.
struct WordAttribute {
  std::string name;  ///< ASCII letters, digits, "_", "-" and "."
  std::string value;
};

/// What a link says: a word with what is known about it.
struct Word {
  std::string text = kNullWord;  ///< UTF-8, never empty
  std::vector<WordAttribute> attributes;
  std::string xml;  ///< the fragment that the file itself has, kept as it is; "" for other words

  bool isNull() const { return text == kNullWord; }
};

/// What is known of the scores of a whole lattice, with the values that HTK gives what a file does
/// not name.
struct ScoreScales {
  double acoustic = 1.0;            ///< acscale, of the score "a"
  double language = 1.0;            ///< lmscale, of the score "l"
  double pronunciation = 1.0;       ///< prscale, of the score "r"
  double wordPenalty = 0.0;         ///< wdpenalty, a log likelihood
  std::optional<double> posterior;  ///< what totals are divided by for posteriors; above 0, see
                                    ///< posteriorScale
};

/// What the totals of a lattice are divided by before they are added up over paths: what is asked
/// for, else the language model's scale where that is above 1. A recogniser scales its language
/// model up to balance acoustic scores that are far too sure of themselves; down by the same factor
/// they say how likely a path is.
double posteriorScale(const ScoreScales& scales);

/// One score of a link under its name.
struct NamedScore {
  int name = 0;  ///< index in `WordLattice::scoreNames`
  double value = 0.0;
};

struct WordLink {
  int id = 0;     ///< the file's own; unique
  int start = 0;  ///< index of the node it leaves
  int end = 0;    ///< index of the node it enters
  Word word;
  std::vector<NamedScore> scores;  ///< one of a name, in the order of `name`; log likelihoods,
                                   ///< natural where `base` says what they are
  double total = 0.0;              ///< the score by which the recogniser ranks paths, natural log
  double logPosterior = 0.0;       ///< natural log; only in an acyclic lattice, see posteriors.h
};

struct WordNode {
  double time = 0.0;   ///< seconds
  int fileIndex = -1;  ///< its index in the file; -1 for one that joins several
};

/// A lattice whose node 0 is the start and whose last node is the end. In an acyclic one every link
/// leads to a node with a higher index. Links are sorted by start and end node; of parallel ones
/// the one with the best total comes first, of equal ones that with the lowest id.
struct WordLattice {
  std::string utterance;   ///< UTF-8, "" when the file does not name it
  ScoreScales scales;      ///< how totals came about
  bool isDialect = false;  ///< the file had its words as XML fragments already
  bool hasTimes = true;    ///< the file had times; otherwise depths stand for them
  bool isCyclic = false;
  std::vector<std::string> notes;       ///< what its reading left to say; a line each, no line ends
  std::vector<std::string> scoreNames;  ///< in byte order; each is one that the viewer can show
  std::vector<WordNode> nodes;          ///< at least one
  std::vector<WordLink> links;
};

/// Where something of a node or a link stands in a list that has it for each by index.
inline std::size_t slot(int index) { return static_cast<std::size_t>(index); }

/// Names of the two scores that every link has beside its own.
inline const std::string kTotalName = "TOTAL";
inline const std::string kPosteriorName = "post";

/// Under this name a file for the viewer keeps the total of a link whose kTotalName is another
/// number, for the sake of the viewer's search (see level_shift.h). In memory there is only one.
inline const std::string kUnshiftedName = "unshifted";

/// Puts links in the order of their start and then their end nodes, of parallel ones the best
/// first; see WordLattice.
void sortLinks(WordLattice& lattice);

/// Names of all scores that links have: kTotalName, kPosteriorName in an acyclic lattice, and the
/// file's own in byte order.
std::vector<std::string> scoreNamesOf(const WordLattice& lattice);

/// The score of that name for each link; a link without it counts as 0. None when no link has it.
std::optional<std::vector<double>> scoresNamed(const WordLattice& lattice, const std::string& name);

/// What to tell a user who asked for a score that no link has.
std::string noSuchScore(const WordLattice& lattice, const std::string& name);

/// The id of the first link in the file's numbering whose total is positive, which the viewer's
/// search does not expect; none when no total is.
std::optional<int> firstPositiveTotal(const WordLattice& lattice);

}  // namespace quorbel
