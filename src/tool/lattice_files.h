#pragma once

// The names of the files that a command reads and writes.

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quorbel {

/// Puts the files into `files` that arguments of a command stand for: each is a file, "-" or a
/// folder, which stands for all lattices right in it, in the order of their names. A lattice is
/// what is called so (*.lat, *.slf, *.htk, *.fst, *.ark, also compressed), or begins like one.
/// Returns "" on success, else which folder cannot be read or has none.
std::string listLattices(const std::vector<std::string>& arguments,
                         std::vector<std::string>& files);

/// The files of one command that must not be written to, and those that were written.
class OutputNames {
 public:
  explicit OutputNames(const std::vector<std::string>& inputs);

  /// Why the file `path` must not be written: it is an input, or was written before. "" when it may
  /// be, and then it counts as written.
  std::string claim(const std::string& path);

 private:
  std::set<std::pair<unsigned long, unsigned long>> m_Inputs;  ///< device and number of each file
  std::set<std::string> m_Claimed;
};

/// The path of an output in `folder`, named after a lattice: what a name of a file cannot have in
/// it becomes "_".
std::string outputIn(const std::string& folder, const std::string& name,
                     const std::string& extension);

}  // namespace quorbel
