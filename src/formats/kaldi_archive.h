#pragma once

// Kaldi's text archives of lattices: a line with the utterance's name, then a line for each arc and
// final state, and an empty line.

#include <string>

#include "formats/automaton.h"
#include "formats/input_file.h"

namespace quorbel {

/// Goes through an archive, of which no more than one lattice is held.
class KaldiArchive {
 public:
  /// `file` must outlive this object.
  explicit KaldiArchive(InputFile& file) : m_File(file) {}

  /// Goes on to the next utterance, past what is left of the one before, and puts its name into
  /// `name`. False at the end, and when `error` says what is wrong ("" otherwise).
  bool nextName(std::string& name, std::string& error);

  /// Whether no further utterance follows, for which the rest of this one is passed over; false
  /// where the file cannot be read on.
  bool isLast();

  /// Reads the lattice of that utterance, plain or compact, into `automaton`, a fresh one. Returns
  /// "" or what is wrong, with the line it is about.
  std::string read(Automaton& automaton);

 private:
  void lookAhead();
  bool skipRest(std::string& error);

  InputFile& m_File;
  bool m_IsInside = false;  ///< of an utterance: its empty line was not read
  bool m_IsAhead = false;   ///< the next name was looked for, with these results:
  std::string m_NextName;   ///< "" when there is none
  std::string m_NextError;
};

}  // namespace quorbel
