#pragma once

// Paths through a lattice as text, in the formats that transcriptions have.

#include <string>
#include <vector>

#include "measures/best_paths.h"
#include "words/word_lattice.h"

namespace quorbel {

/// Paths of one lattice, one after the other: each as a line with its rank, its score under
/// `scoreName` and its words, then an indented line for each link with start and end in seconds,
/// word, score and id. The text of a link is made once, however many paths take it.
class PathsAsText {
 public:
  /// `scores` has one for each link. The lattice must outlive this object.
  PathsAsText(const WordLattice& lattice, const std::vector<double>& scores, std::string scoreName);

  /// The text of the path that ranks next.
  std::string next(const LatticePath& path);

 private:
  const WordLattice& m_Lattice;
  std::string m_ScoreName;
  std::vector<std::string> m_Lines;  ///< of the links
  int m_Rank = 0;
};

/// A path as NIST's CTM: for each word the utterance (`utterance`, blanks in it become "_"),
/// channel 1, start and duration in seconds, the word and, for an acyclic lattice, its posterior.
/// Links without word are left out, and those that say what nobody says (see isSpoken) unless
/// `hasMarks` is set.
std::string pathAsCtm(const WordLattice& lattice, const LatticePath& path,
                      const std::string& utterance, bool hasMarks = false);

/// The first line of an HTK master label file, which has the label files of several utterances, and
/// the line before the labels of one of them. Behind its labels stands a line with a point.
inline const std::string kMasterLabelMark = "#!MLF!#\n";
std::string masterLabelHeading(const std::string& utterance);

/// Paths as an HTK label file, alternatives with a line "///" between them: for each word start and
/// end in units of 100 ns, the word with HTK's quoting where it needs it, and its score. Links
/// without word are left out.
class PathsAsHtkLabels {
 public:
  /// `scores` has one for each link.
  PathsAsHtkLabels(const WordLattice& lattice, const std::vector<double>& scores);

  /// The text of the next path.
  std::string next(const LatticePath& path);

 private:
  std::vector<std::string> m_Lines;  ///< of the links; "" for those without word
  bool m_IsFirst = true;
};

}  // namespace quorbel
