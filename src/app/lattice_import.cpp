#include "app/lattice_import.h"

#include <charconv>
#include <sstream>

#include "layout/shell_word.h"

namespace quorbel {
namespace {

constexpr std::size_t kLikeliest = 300;      ///< as many as one can read
constexpr std::size_t kStillReadable = 400;  ///< cutting off fewer than a quarter is not worth it

/// "11763" as "11,763".
std::string withCommas(std::string digits) {
  constexpr std::size_t kGroup = 3;
  for (std::size_t at = digits.size(); at > kGroup;) digits.insert(at -= kGroup, ",");
  return digits;
}

/// What the title says of a copy, by an answer like "300 of 11763 links".
std::string noteOf(const std::string& answer) {
  std::istringstream words(answer);
  std::string shown;
  std::string of;
  std::string all;
  words >> shown >> of >> all;
  if (shown == all) return " (imported)";
  return " (" + withCommas(shown) + " of " + withCommas(all) + " links)";
}

/// The last line, without the name of the program that has said it.
std::string reasonIn(const std::string& log) {
  const std::string program = "quorbel-lattice: ";
  std::istringstream lines(log);
  std::string last;
  for (std::string line; std::getline(lines, line);)
    if (!line.empty()) last = line;
  return last.rfind(program, 0) == 0 ? last.substr(program.size()) : last;
}

}  // namespace

std::optional<LatticeImport> LatticeImport::fromEnvironment(const std::string& program,
                                                            const std::string& links) {
  if (program.empty()) return std::nullopt;
  if (links == "all") return LatticeImport{program, std::nullopt, 0};
  std::size_t most = 0;
  const auto [end, error] = std::from_chars(links.data(), links.data() + links.size(), most);
  const bool isNumber = error == std::errc() && end == links.data() + links.size() && most > 0;
  if (isNumber) return LatticeImport{program, most, most};
  return LatticeImport{program, kLikeliest, kStillReadable};
}

std::string importCommand(const LatticeImport& import, const std::string& path, bool isFile) {
  std::string command =
      "rm -f " + kImportedCopy + "; " + shellWord(import.program) + " import --tell-links";
  if (isFile) command += " --unless-dialect";
  if (import.most)
    command += " --links " + std::to_string(*import.most) + " --links-above " +
               std::to_string(import.mostWhole);
  return command + " -- " + shellWord(path) + " " + kImportedCopy + " >" + kImportAnswer + " 2>" +
         kImportLog;
}

ImportedLattice importedLattice(const std::string& path, int status, bool hasCopy,
                                const std::string& answer, const std::string& log) {
  if (status == 0) return {hasCopy ? kImportedCopy : path, hasCopy ? noteOf(answer) : "", ""};
  const std::string reason = reasonIn(log);
  return {"", "", reason.empty() ? path + " could not be imported" : reason};
}

std::string soundBeside(const std::string& latticePath) {
  const std::size_t name = latticePath.rfind('/') + 1;  // 0 without a folder
  return latticePath.substr(0, std::min(latticePath.find('.', name), latticePath.size())) + ".wav";
}

}  // namespace quorbel
