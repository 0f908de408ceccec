// quorbel-lattice oracle: error rates of the best and the best possible path.

#include <memory>
#include <mutex>
#include <utility>

#include "formats/input_file.h"
#include "formats/oracle_report.h"
#include "formats/references.h"
#include "measures/oracle.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"
#include "tool/reading_arguments.h"

namespace quorbel {
namespace {

struct OracleArguments {
  SetArguments set;
  std::string reference;
  WordMatching matching;
  bool hasAlignment = false;
  bool isTsv = false;
};

/// The work of one call.
class OracleWork {
 public:
  explicit OracleWork(const OracleArguments& arguments) : m_Arguments(arguments) {}

  CommandResult run(Progress& progress);

 private:
  std::string readReferences();
  CommandResult compare(const WordLattice& lattice, LatticeJob& job);
  const std::vector<std::string>* referenceOf(const WordLattice& lattice, const LatticeJob& job);
  std::string row(const std::string& name, const ErrorCounts& counts) const {
    return m_Arguments.isTsv ? tsvRow(name, counts) : tableRow(name, counts);
  }

  const OracleArguments& m_Arguments;
  std::mutex m_Mutex;  ///< for the references, which remember what was found
  References m_References;
  ErrorCounts m_All;  ///< the main thread's
};

std::string OracleWork::readReferences() {
  InputFile file;
  std::string text;
  std::string error = file.open(m_Arguments.reference);
  if (error.empty()) error = file.readRest(text);
  if (error.empty()) error = m_References.parse(text);
  return error.empty() ? "" : m_Arguments.reference + ": " + error;
}

const std::vector<std::string>* OracleWork::referenceOf(const WordLattice& lattice,
                                                        const LatticeJob& job) {
  const LatticeNames names = {lattice.utterance, job.isOfArchive() ? "" : job.path(),
                              job.isAlone()};
  const std::lock_guard<std::mutex> lock(m_Mutex);
  return m_References.find(names);
}

CommandResult OracleWork::compare(const WordLattice& lattice, LatticeJob& job) {
  const std::vector<std::string>* reference = referenceOf(lattice, job);
  if (!reference) return job.name() + ": no reference in " + m_Arguments.reference;
  job.begin("searching the oracle path");
  OracleResult result;
  std::string error = compareWithReference(lattice, *reference, m_Arguments.matching, result);
  if (!error.empty()) return job.name() + ": " + error;
  const ErrorCounts counts = errorCountsOf(lattice, result);
  std::string text = row(job.title(), counts);
  if (m_Arguments.hasAlignment) text += alignmentText(lattice, result);
  job.act([this, counts] {
    addCounts(m_All, counts);
    return CommandResult();
  });
  job.print(std::move(text));
  return "";
}

CommandResult OracleWork::run(Progress& progress) {
  if (std::string error = readReferences(); !error.empty()) return error;
  if (std::string error = printText(m_Arguments.isTsv ? tsvHeading() : tableHeading());
      !error.empty())
    return error;
  CommandResult result =
      workOnLattices(m_Arguments.set, progress,
                     [&](WordLattice& lattice, LatticeJob& job) { return compare(lattice, job); });
  std::string error = printText(row("TOTAL", m_All));
  std::string unused;
  for (const std::string& name : m_References.unused()) unused += " " + name;
  if (!unused.empty()) say(m_Arguments.reference + ": no lattice for" + unused);
  return result.empty() ? error : result;
}

}  // namespace

Command addOracle(CLI::App& app) {
  auto arguments = std::make_shared<OracleArguments>();
  CLI::App* command = app.add_subcommand(
      "oracle", "Word error rates of the best path and of the one with the fewest errors");
  addInputs(*command, arguments->set);
  command
      ->add_option("--reference", arguments->reference,
                   "What was said: Kaldi's text, NIST's trn, an HTK master label file, or the "
                   "words of the only lattice on one line")
      ->type_name("FILE")
      ->required();
  addMatchingOptions(*command, arguments->matching);
  CLI::Option* alignment =
      command->add_flag("--alignment", arguments->hasAlignment,
                        "The words of reference, best and oracle path one above the other");
  command
      ->add_flag("--tsv", arguments->isTsv,
                 "A line for each lattice with tabs between counts, and their sum as TOTAL")
      ->excludes(alignment);
  return [arguments](Progress& progress) { return OracleWork(*arguments).run(progress); };
}

}  // namespace quorbel
