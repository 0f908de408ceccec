#pragma once

// What was really said, as files of reference transcriptions have it.

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quorbel {

/// The names under which the reference of a lattice may stand.
struct LatticeNames {
  std::string utterance;  ///< "" when the lattice has none
  std::string path;       ///< of its file; "" when the file has other lattices too
  bool isAlone = false;   ///< no other lattice is read
};

/// The references of one file: Kaldi's text ("UTTERANCE WORD..." a line), NIST's trn ("WORD...
/// (UTTERANCE)" a line), an HTK master label file, or the words of a single lattice on one line.
/// Which it is the file itself tells.
class References {
 public:
  /// Takes the text of a file. Returns "" on success, else what is wrong with which line: "line 7:
  /// ...".
  std::string parse(std::string_view text);

  /// The words of a lattice's reference, UTF-8, found by the name of its utterance, its path or
  /// that without folder and extension; null when there is none. In a master label file names
  /// count without folder and extension too, and the whole name of an utterance before its stem.
  /// Stays valid as long as this object.
  const std::vector<std::string>* find(const LatticeNames& names);

  /// The names of the references that were not found for any lattice, in the order of the file.
  std::vector<std::string> unused() const;

 private:
  struct Reference {
    std::string name;
    std::vector<std::string> words;
    bool isUsed = false;
  };

  std::string parseLabels(const std::vector<std::string>& lines);
  std::string parseTrn(const std::vector<std::string>& lines);
  std::string parseText(const std::vector<std::string>& lines);
  std::string add(std::size_t line, const std::string& name, std::vector<std::string> words);
  void addAlias(const std::string& name);
  const std::vector<std::string>* take(std::size_t index);

  std::vector<Reference> m_References;
  std::map<std::string, std::size_t> m_Names;
  std::map<std::string, std::size_t> m_Aliases;  ///< of label files; kAmbiguous for two of a name
  std::vector<std::string> m_PlainWords;         ///< of the only line, if there is one only
  bool m_IsLabelFile = false;
};

/// The name of a file without its folder, its last extension and that of gzip before: "talk" of
/// "monday/talk.slf.gz".
std::string stemOf(const std::string& path);

}  // namespace quorbel
