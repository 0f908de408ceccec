#include "tool/lattice_set.h"

#include <libxml/parser.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <thread>
#include <utility>

#include "formats/dialect_writer.h"
#include "formats/references.h"
#include "layout/whole_file.h"
#include "tool/reading_arguments.h"
#include "tool/worker_processes.h"

namespace quorbel {

namespace {

constexpr const char* kStandardInput = "-";

}  // namespace

/// The lattices of one command. What is counted and said is the main thread's.
class LatticeSet {
 public:
  LatticeSet(const SetArguments& arguments, Progress& progress, const WorkOnLattice& work,
             const SetManner& manner)
      : m_Arguments(arguments), m_Progress(progress), m_Work(work), m_Manner(manner) {}

  CommandResult run();

 private:
  friend class LatticeJob;

  bool isWritten() const { return !m_Arguments.in.empty(); }
  CommandResult begin();
  void workOnFile(const std::string& path, Results& results);
  bool workOnNext(LatticeInput& input, LatticeJob& job);
  bool isArchiveTaken(const LatticeInput& input) const;
  CommandResult findOutput(const LatticeJob& job, const std::string& extension, std::string& path);
  void count(const LatticeJob& job, CommandResult error);
  void tellCount();
  CommandResult result() const;

  const SetArguments& m_Arguments;
  Progress& m_Progress;
  const WorkOnLattice& m_Work;
  const SetManner& m_Manner;
  std::vector<std::string> m_Files;
  bool m_IsSet = false;  ///< several are named, or a folder, or there is one for outputs
  std::optional<OutputNames> m_Outputs;
  std::size_t m_Done = 0;
  std::size_t m_Failed = 0;
  bool m_IsCountTold = false;  ///< at the end
  CommandResult m_FirstError;  ///< or why a file was passed over
  CommandResult m_PrintError;
};

CommandResult LatticeSet::begin() {
  std::vector<std::string> inputs = m_Arguments.more;
  const bool hasOneOutput = isWritten() && !m_Arguments.to;
  if (hasOneOutput && inputs.empty()) return "OUT is required (see quorbel-lattice --help)";
  if (hasOneOutput) inputs.resize(inputs.size() - 1);
  if (isWritten()) inputs.insert(inputs.begin(), m_Arguments.in);
  if (std::string error = listLattices(inputs, m_Files); !error.empty()) return error;
  m_IsSet = m_Arguments.to || m_Files.size() > 1 || m_Files != inputs;
  if (hasOneOutput && m_IsSet)
    return "several lattices need a folder to be written to (--to FOLDER)";
  if (hasOneOutput) return checkOutput(m_Arguments.in, m_Arguments.more[0]);
  if (!m_Arguments.to) return "";
  std::error_code failure;
  std::filesystem::create_directories(*m_Arguments.to, failure);
  if (failure) return *m_Arguments.to + ": " + failure.message();
  m_Outputs.emplace(m_Files);
  return "";
}

CommandResult LatticeSet::run() {
  if (CommandResult error = begin(); !error.empty()) return error;
  if (m_IsSet) tellCount();
  xmlInitParser();  // before there are threads that use it
  const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
  const std::size_t jobs = m_Arguments.jobs == 0 ? processors : m_Arguments.jobs;
  const auto work = [this](std::size_t number, Results& results) {
    workOnFile(m_Files[number], results);
  };
  const auto isWanted = [this] { return m_PrintError.empty(); };
  if (!m_Manner.isOfProcesses)
    workInOrder(m_Files.size(), jobs, work, isWanted);
  else if (m_Arguments.to)
    workInProcesses(m_Files.size(), jobs, work, isWanted);
  else
    workInOrder(m_Files.size(), 1, work, isWanted);
  return result();
}

void LatticeSet::workOnFile(const std::string& path, Results& results) {
  LatticeInput input(path, m_Manner.readingOf ? m_Manner.readingOf(path) : m_Arguments.reading);
  const bool isFirstOnly = m_Arguments.reading.utterance || (isWritten() && !m_Arguments.to);
  for (bool isFirst = true;; isFirst = false) {
    LatticeJob job(*this, results);
    job.m_Path = path;
    job.m_Name = path == kStandardInput ? "standard input" : path;
    job.m_IsAlone = isFirst && !m_IsSet;
    job.m_IsOneOfMany = m_IsSet;
    if (!workOnNext(input, job) || isFirstOnly) return;
  }
}

/// Whether all lattices of an archive are worked on.
bool LatticeSet::isArchiveTaken(const LatticeInput& input) const {
  return !input.names().empty() && !m_Arguments.reading.utterance &&
         (!isWritten() || m_Arguments.to);
}

/// Works on the next lattice of a file. False when there is none, or none is wanted any more.
bool LatticeSet::workOnNext(LatticeInput& input, LatticeJob& job) {
  CommandResult error;
  bool isRead = false;
  try {
    job.begin("reading " + job.path());
    WordLattice lattice;
    isRead = input.next(lattice);
    if (!isRead && input.error().empty()) return false;
    job.m_IsOneOfMany = job.m_IsOneOfMany || isArchiveTaken(input);
    if (!isRead && m_IsSet && input.isWithoutUtterance()) {  // another may have it
      job.act([this, reason = input.error()] {
        if (m_FirstError.empty()) m_FirstError = reason;
        return CommandResult();
      });
      return false;
    }
    error = input.error();
    if (isRead) {
      job.m_IsOfArchive = !input.names().empty();
      if (isArchiveTaken(input)) {
        job.m_Name += ": " + lattice.utterance;
        job.m_IsAlone = job.m_IsAlone && input.isLast();
      }
      job.m_Title = lattice.utterance.empty() ? stemOf(job.m_Path) : lattice.utterance;
      job.m_PlainText = input.takePlainText();
      error = m_Work(lattice, job);
    }
  } catch (const std::exception& exception) {  // such as want of memory
    error = job.m_Name + ": " + exception.what();
  }
  const bool isWanted = job.m_Results.hand(
      [this, error, job] { count(job, error.empty() ? *job.m_Error : error); }, error.size());
  return isWanted && (isRead || input.goOn());
}

/// Counts a lattice that is done with; `error` is "" when it did not fail.
void LatticeSet::count(const LatticeJob& job, CommandResult error) {
  ++(error.empty() ? m_Done : m_Failed);
  const bool isNamed =
      error.compare(0, job.m_Path.size(), job.m_Path) == 0 || error.rfind(job.m_Name, 0) == 0;
  if (job.m_IsOneOfMany && !isNamed && !error.empty()) error = job.m_Name + ": " + error;
  if (job.m_IsOneOfMany && !error.empty()) say(error);
  if (m_FirstError.empty()) m_FirstError = error;
  m_IsCountTold = m_IsCountTold || job.m_IsOneOfMany;
  if (m_IsCountTold) tellCount();
}

void LatticeSet::tellCount() {
  m_Progress.update(std::to_string(m_Done + m_Failed) + " lattices done, of " +
                    std::to_string(m_Files.size()) + (m_Files.size() == 1 ? " file" : " files"));
}

CommandResult LatticeSet::result() const {
  if (!m_PrintError.empty()) return m_PrintError;
  if (!m_IsCountTold) return m_FirstError;
  const std::string done =
      std::to_string(m_Done) + (m_Done == 1 ? " lattice done" : " lattices done");
  if (m_Failed != 0) return done + ", " + std::to_string(m_Failed) + " failed";
  say(done);
  return "";
}

/// Finds the path that the lattice is written to, on the main thread. Returns "" or why it must not
/// be.
CommandResult LatticeSet::findOutput(const LatticeJob& job, const std::string& extension,
                                     std::string& path) {
  if (!m_Arguments.to) {
    path = m_Arguments.more[0];
    return "";
  }
  const bool isByTitle = job.m_IsOfArchive || job.m_Path == kStandardInput;
  const std::string name = isByTitle ? job.m_Title : stemOf(job.m_Path);
  path = outputIn(*m_Arguments.to, name, extension);
  return m_Outputs->claim(path);
}

void LatticeJob::begin(const std::string& stage) {
  if (!m_IsOneOfMany) m_Set.m_Progress.begin(stage);
}

void LatticeJob::act(std::function<CommandResult()> act, std::size_t bytes) {
  m_Results.hand(
      [act = std::move(act), error = m_Error] {
        if (error->empty()) *error = act();
      },
      bytes);
}

void LatticeJob::say(const std::string& line) {
  act([line] {
    quorbel::say(line);
    return CommandResult();
  });
}

bool LatticeJob::print(std::string text) {
  const std::size_t bytes = text.size();
  return m_Results.hand(
      [&set = m_Set, text = std::move(text)] { set.m_PrintError = printText(text); }, bytes);
}

void LatticeJob::writeBy(std::function<CommandResult(const std::string& path)> writeTo,
                         const std::string& extension, std::size_t bytes) {
  const auto write = [job = *this, writeTo = std::move(writeTo), extension] {
    std::string path;
    const CommandResult error = job.m_Set.findOutput(job, extension, path);
    return error.empty() ? writeTo(path) : error;
  };
  act(write, bytes);
}

void LatticeJob::writeApart(const std::function<CommandResult(const std::string& path)>& writeTo,
                            const std::string& extension) {
  std::string path;
  *m_Error = m_Set.findOutput(*this, extension, path);
  if (m_Error->empty())
    m_Results.handApart([writeTo, path] { return writeTo(path); },
                        [error = m_Error](std::string reason) { *error = std::move(reason); });
}

void LatticeJob::write(std::string text, const std::string& extension) {
  const std::size_t bytes = text.size();
  const auto writeTo = [&progress = m_Set.m_Progress, isOneOfMany = m_IsOneOfMany,
                        text = std::move(text)](const std::string& path) {
    if (!isOneOfMany) progress.begin("writing " + path);
    return writeWholeFile(path, text);
  };
  writeBy(writeTo, extension, bytes);
}

CommandResult writeDialect(const WordLattice& lattice, LatticeJob& job) {
  std::string text;
  std::string error = dialectText(lattice, text);
  if (error.empty())
    job.write(std::move(text), ".lat");
  else
    job.writeBy([error](const std::string& path) { return path + ": " + error; }, ".lat");
  return "";
}

CommandResult workOnLattices(const SetArguments& arguments, Progress& progress,
                             const WorkOnLattice& work, const SetManner& manner) {
  return LatticeSet(arguments, progress, work, manner).run();
}

namespace {

void addReading(CLI::App& command, SetArguments& arguments) {
  constexpr int kMostJobs = 1000;
  command.add_option("--jobs", arguments.jobs, "So many lattices at once (all processors)")
      ->type_name("N")
      ->check(CLI::Range(1, kMostJobs));
  addReadingOptions(command, arguments.reading);
}

constexpr const char* kInput =
    "Lattices, plain or compressed by gzip, or folders of them; - is the standard input";

}  // namespace

void addInputs(CLI::App& command, SetArguments& arguments) {
  command.add_option("IN", arguments.more, kInput)->required();
  addReading(command, arguments);
}

void addInputsAndOutput(CLI::App& command, SetArguments& arguments, const std::string& out) {
  command.add_option("IN", arguments.in, kInput)->required();
  command.add_option("OUT", arguments.more, out + "; with --to further lattices")->expected(0, -1);
  command.add_option("--to", arguments.to, "Write a file for each lattice into this folder")
      ->type_name("FOLDER");
  addReading(command, arguments);
}

}  // namespace quorbel
