#pragma once

// The lattices in a file, whatever format it is in.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "formats/input_file.h"
#include "formats/input_format.h"
#include "formats/reading_options.h"
#include "words/word_lattice.h"

namespace quorbel {

class KaldiArchive;
struct SlfFile;

/// Reads a file, plain or compressed by gzip, in HTK's Standard Lattice Format, the viewer's
/// dialect of it, as a text archive of Kaldi's or as OpenFst's file or text: what it is, its
/// contents tell. An archive has several lattices, of which one at a time is held; other files have
/// one.
class LatticeInput {
 public:
  /// Opens the file `path`, "-" being the standard input.
  LatticeInput(std::string path, ReadingOptions options);
  ~LatticeInput();
  LatticeInput(const LatticeInput&) = delete;
  LatticeInput& operator=(const LatticeInput&) = delete;

  /// Puts the next lattice into `lattice`, whatever that was; where `options.utterance` is set, the
  /// next of that name. False when there is none, and when something is wrong: see error().
  bool next(WordLattice& lattice);

  /// After next() failed over one utterance of an archive: true, and next() gives the one behind
  /// it. False where nothing can follow.
  bool goOn();

  /// After next(): whether no further lattice follows. An archive is read on to the next name.
  bool isLast();

  /// Whether error() is that no lattice has the name that was asked for.
  bool isWithoutUtterance() const { return m_IsWithoutUtterance; }

  /// Goes through what is left of an archive without reading its lattices, so that names() has all.
  /// Returns false when that is wrong: see error().
  bool skipRest();

  /// Why there was no next lattice: the path and the reason, with a line number where there are
  /// lines
  /// ("talk.slf: line 7: ..."). "" at the end of the file, unless it had no lattice of the name
  /// that was asked for.
  const std::string& error() const { return m_Error; }

  /// The names of the utterances of an archive as far as it was read, UTF-8; none for other files.
  const std::vector<std::string>& names() const { return m_Names; }

  /// After next(): the text of a file in the standard format that is not compressed, for whoever
  /// reads it in another way too, since a pipe can be read only once; nothing for any other.
  std::optional<std::string> takePlainText();

 private:
  std::string begin();
  std::string readArchive(WordLattice& lattice);
  std::string readWhole(WordLattice& lattice);
  std::string readSlf(SlfFile& file, WordLattice& lattice);
  std::string readFst(const std::string& bytes, WordLattice& lattice) const;
  bool isWanted(const std::string& name) const;
  bool nextName(std::string& name, std::string& error);
  bool fail(const std::string& error);

  const std::string m_Path;
  const ReadingOptions m_Options;
  InputFile m_File;
  std::unique_ptr<KaldiArchive> m_Archive;  ///< null for files with one lattice
  InputFormat m_Format = InputFormat::Slf;
  std::vector<std::string> m_Names;
  std::size_t m_NameBytes = 0;
  std::optional<std::string> m_PlainText;
  std::string m_Error;
  bool m_IsBegun = false;
  bool m_IsWithoutUtterance = false;
  bool m_CanGoOn = false;  ///< only the utterance that was read last is wrong
  bool m_IsFound = false;  ///< a lattice was given
  bool m_IsAtEnd = false;  ///< no further lattice comes
};

/// Reads the first lattice of a file, or the one of the name that the options say. Returns "" on
/// success, else the path and what is wrong: "talk.slf: line 7: ...".
std::string readWordLattice(const std::string& path, WordLattice& lattice,
                            const ReadingOptions& options = {});

}  // namespace quorbel
