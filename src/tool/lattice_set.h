#pragma once

// What all commands share: the lattices that they read, one or a whole set of them, and what
// becomes of each.

#include <CLI/App.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "formats/lattice_input.h"
#include "tool/commands.h"
#include "tool/lattice_files.h"
#include "tool/ordered_work.h"
#include "words/word_lattice.h"

namespace quorbel {

/// What the command line says about the lattices that are read, and where what is written goes.
struct SetArguments {
  std::string in;                 ///< of a command that writes
  std::vector<std::string> more;  ///< further inputs; the output of a command without `to`
  std::optional<std::string> to;  ///< the folder for outputs; none where there is one output
  std::size_t jobs = 0;           ///< 0: as many as there are processors
  ReadingOptions reading;
};

/// Adds IN... and the options of reading to a command that prints.
void addInputs(CLI::App& command, SetArguments& arguments);

/// Adds IN and OUT, which `out` describes, and --to to a command that writes, beside these options.
void addInputsAndOutput(CLI::App& command, SetArguments& arguments, const std::string& out);

class LatticeSet;

/// The work on one lattice. What it prints, says and writes is done in the order of the lattices.
class LatticeJob {
 public:
  /// The file that the lattice is in, as the user named it.
  const std::string& path() const { return m_Path; }

  /// The lattice in messages: its file, and for one of an archive its utterance too.
  const std::string& name() const { return m_Name; }

  /// The name of its utterance; where it has none, its file's without folder and extension.
  const std::string& title() const { return m_Title; }

  /// Whether there may be other lattices, from which this one is to be told.
  bool isOneOfMany() const { return m_IsOneOfMany; }

  /// Whether it is the only lattice of the command.
  bool isAlone() const { return m_IsAlone; }

  /// Whether its file is an archive.
  bool isOfArchive() const { return m_IsOfArchive; }

  /// The text of its file, see LatticeInput::takePlainText.
  const std::optional<std::string>& plainText() const { return m_PlainText; }

  /// The work enters a stage, such as "reading talk.lat", which the user is told unless there are
  /// other lattices.
  void begin(const std::string& stage);

  /// Has a line said on standard error.
  void say(const std::string& line);

  /// Has a text printed. Returns false once that has failed.
  bool print(std::string text);

  /// Has `act` done, on the main thread, which returns "" or why the work on the lattice failed;
  /// not where something failed before.
  void act(std::function<CommandResult()> act, std::size_t bytes = 0);

  /// Has a text written into the lattice's output; `extension` is that of one in a folder, with its
  /// dot.
  void write(std::string text, const std::string& extension);

  /// Does the same with an output that `writeTo` writes when it is given its path, on the main
  /// thread.
  void writeBy(std::function<CommandResult(const std::string& path)> writeTo,
               const std::string& extension, std::size_t bytes = 0);

  /// Does the same where the command's manner is that of processes: `writeTo` is called in one
  /// where there may be other lattices, and otherwise at once.
  void writeApart(const std::function<CommandResult(const std::string& path)>& writeTo,
                  const std::string& extension);

 private:
  friend class LatticeSet;

  LatticeJob(LatticeSet& set, Results& results) : m_Set(set), m_Results(results) {}

  LatticeSet& m_Set;
  Results& m_Results;
  std::string m_Path;
  std::string m_Name;
  std::string m_Title;
  bool m_IsOneOfMany = false;
  bool m_IsAlone = false;
  bool m_IsOfArchive = false;
  std::optional<std::string> m_PlainText;
  std::shared_ptr<std::string> m_Error = std::make_shared<std::string>();  ///< of the actions
};

/// Has a lattice written as the viewer reads it. Returns "" or why it cannot be.
CommandResult writeDialect(const WordLattice& lattice, LatticeJob& job);

/// What a command does with a lattice, maybe on several threads at once: returns "" or why it
/// failed.
using WorkOnLattice = std::function<CommandResult(WordLattice& lattice, LatticeJob& job)>;

/// How a command goes about a set.
struct SetManner {
  /// Lattices are read on the main thread and written by processes, not both by threads.
  bool isOfProcesses = false;
  /// How the file `path` is read; as the arguments say where this is empty.
  std::function<ReadingOptions(const std::string& path)> readingOf = {};
};

/// Does the work on every lattice that the arguments stand for: all in each file, but only the
/// first where there is one output. A lattice that fails is named on standard error, and the others
/// are done; then a line says how many were. Returns "" when none failed, otherwise what the
/// command is to end with.
CommandResult workOnLattices(const SetArguments& arguments, Progress& progress,
                             const WorkOnLattice& work, const SetManner& manner = {});

}  // namespace quorbel
