#pragma once

// A file in HTK's Standard Lattice Format as its lines say it: header, nodes and links, not yet
// brought together. What they mean for a lattice is in normalise.h.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/slf_line.h"
#include "words/word_lattice.h"

namespace quorbel {

/// The fields that stand before the nodes and links.
struct SlfHeader {
  std::string utterance;  ///< UTF-8, "" when not given
  std::optional<int> nodeCount;
  std::optional<int> linkCount;
  int nodeCountLine = 0;
  int linkCountLine = 0;
  std::optional<int> start;  ///< node index, checked
  std::optional<int> end;    ///< node index, checked
  int startLine = 0;
  int endLine = 0;
  double base = 1.0;        ///< of the logarithms; 1 for natural ones, 0 for plain probabilities
  double timeScale = 1.0;   ///< seconds in one unit of time
  bool isBackward = false;  ///< links lead from later to earlier
  ScoreScales scales;
};

/// A field of a node or link other than those that say which one it is.
struct SlfField {
  std::string_view key;
  std::string_view value;    ///< without quotes, escapes as the file has them
  int fragmentWord = kNone;  ///< for an XML fragment: which of `SlfFile::fragmentWords` it says
  ReaderKey meaning = ReaderKey::Score;  ///< of the key, to the viewer's reader
  bool isDoubleQuoted = false;

  static constexpr int kNone = -1;
};

/// A line about a node or a link.
struct SlfRecord {
  int line = 0;   ///< from 1
  int id = 0;     ///< index of the node or id of the link
  int start = 0;  ///< link: index of the node it leaves
  int end = 0;    ///< link: index of the node it enters
  std::size_t firstField = 0;
  std::size_t fieldCount = 0;
};

/// A whole file. Fields are views into `bytes`: a file is neither copied nor moved.
struct SlfFile {
  std::string bytes;
  SlfHeader header;
  std::vector<SlfRecord> nodes;  ///< by their index
  std::vector<SlfRecord> links;  ///< in the order of the file
  std::vector<SlfField> fields;
  std::vector<FragmentWord> fragmentWords;

  SlfFile() = default;
  SlfFile(const SlfFile&) = delete;
  SlfFile& operator=(const SlfFile&) = delete;
};

/// Reads `file.bytes`, a text of versions 1.0 or 1.1 of the format or of the viewer's dialect of
/// it, into the rest of `file`: each node once, each link id once, every link between nodes that
/// there are, and as many links as the header says.
///
/// Returns "" on success, else one line for the user that begins with the line it is about:
/// "line 7: link 3 enters node 9, but nodes are 0 to 4". Sub-lattices (SUBLAT) and binary values
/// are not read.
std::string parseSlf(SlfFile& file);

}  // namespace quorbel
