#pragma once

// Which words the numbers in a lattice stand for.

#include <mutex>
#include <string>
#include <unordered_map>

namespace quorbel {

/// A symbol table as OpenFst and Kaldi write it, "WORD NUMBER" on each line. Its file is read when
/// it is first needed, and then once.
class WordTable {
 public:
  /// The table in the file `path`, plain or compressed by gzip.
  explicit WordTable(std::string path) : m_Path(std::move(path)) {}

  /// Reads the file, unless that was done. Returns "", or the path and what is wrong with it. May
  /// be called on several threads.
  std::string load();

  /// The word of that number, UTF-8; null when there is none, or when nothing was loaded.
  const std::string* word(int number) const;

  const std::string& path() const { return m_Path; }

 private:
  std::string read();
  std::string takeLine(const std::string& line);

  std::string m_Path;
  std::mutex m_Mutex;  ///< for the reading
  bool m_IsRead = false;
  std::string m_Error;
  std::unordered_map<int, std::string> m_Words;
};

}  // namespace quorbel
