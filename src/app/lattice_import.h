#pragma once

// How lattices are opened that are not in the viewer's own form: what is asked of the program that
// imports them, and what its answer means. Nothing is run here.

#include <optional>
#include <string>

namespace quorbel {

/// How the user wants lattices imported.
struct LatticeImport {
  std::string program;              ///< path of quorbel-lattice
  std::optional<std::size_t> most;  ///< links shown of a larger lattice; all without
  std::size_t mostWhole = 0;        ///< a lattice with more links is larger

  /// From the environment that the launcher sets up: the program, and what is said of the number of
  /// links: a number, "all", or "" for 300 of the lattices with more than 400. None without a
  /// program.
  static std::optional<LatticeImport> fromEnvironment(const std::string& program,
                                                      const std::string& links);
};

// Files in the working directory while a lattice is open that is shown by a copy.
inline const std::string kImportedCopy = "imported.lat";
inline const std::string kImportAnswer = "import.answer";  ///< what the program prints
inline const std::string kImportLog = "import.log";        ///< what it says on standard error

/// The command line that writes kImportedCopy, unless the viewer is to read the file itself. What
/// can be read only once (`isFile` false) is copied in any case.
std::string importCommand(const LatticeImport& import, const std::string& path, bool isFile);

/// How a lattice is to be opened after the program has run.
struct ImportedLattice {
  std::string readPath;  ///< what the reader gets: the file of the user or its copy
  std::string note;      ///< behind the path in the window's title, "" or with a blank before it
  std::string error;     ///< one line; nothing can be read then
};

/// `status` is the program's, as waitpid tells it, `answer` and `log` what it has written into the
/// files of those names, `hasCopy` whether it has made one.
ImportedLattice importedLattice(const std::string& path, int status, bool hasCopy,
                                const std::string& answer, const std::string& log);

/// The sound of a lattice that may be in any form: the file beside it with its stem and ".wav".
std::string soundBeside(const std::string& latticePath);

}  // namespace quorbel
