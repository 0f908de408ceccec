#pragma once

// Error rates of lattices as text.

#include <string>

#include "measures/oracle.h"
#include "words/word_lattice.h"

namespace quorbel {

/// What one lattice or a whole set of them has wrong.
struct ErrorCounts {
  int words = 0;  ///< of the reference
  EditCounts best;
  EditCounts oracle;
  double links = 0.0;    ///< of lattices with times
  double seconds = 0.0;  ///< of the same
};

/// The counts of one lattice.
ErrorCounts errorCountsOf(const WordLattice& lattice, const OracleResult& result);

/// Adds the counts of one to those of several.
void addCounts(ErrorCounts& all, const ErrorCounts& one);

/// A table in which columns are as wide as their headings: the line of headings, and one for a
/// lattice or all of them, with word error rates in percent. Rates of no words, and links per
/// second where no lattice has times, are "-".
std::string tableHeading();
std::string tableRow(const std::string& name, const ErrorCounts& counts);

/// The same with tabs between the fields and without rates; links per second that are not known are
/// "nan".
std::string tsvHeading();
std::string tsvRow(const std::string& name, const ErrorCounts& counts);

/// Three lines: the words of the reference, those of the best path and of the oracle path, what
/// belongs together one above the other, "***" for what is not there.
std::string alignmentText(const WordLattice& lattice, const OracleResult& result);

}  // namespace quorbel
