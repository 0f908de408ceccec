#pragma once

// Paths through a lattice as text, in the formats that transcriptions have.

#include <string>
#include <vector>

#include "measures/best_paths.h"
#include "words/word_lattice.h"

namespace quorbel {

/// Each path as a line with its rank, its score under `scoreName` and its words, then an indented
/// line for each link with start and end in seconds, word, score (`scores`, one for each link) and
/// id.
std::string pathsAsText(const WordLattice& lattice, const std::vector<LatticePath>& paths,
                        const std::vector<double>& scores, const std::string& scoreName);

/// A path as NIST's CTM: for each word the utterance (`utterance`, blanks in it become "_"),
/// channel 1, start and duration in seconds, the word and, for an acyclic lattice, its posterior.
/// Links without word are left out.
std::string pathAsCtm(const WordLattice& lattice, const LatticePath& path,
                      const std::string& utterance);

/// Paths as an HTK label file, alternatives with a line "///" between them: for each word start and
/// end in units of 100 ns, the word with HTK's quoting where it needs it, and its score. Links
/// without word are left out.
std::string pathsAsHtkLabels(const WordLattice& lattice, const std::vector<LatticePath>& paths,
                             const std::vector<double>& scores);

}  // namespace quorbel
