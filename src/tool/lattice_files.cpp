#include "tool/lattice_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "formats/input_file.h"
#include "formats/input_format.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

bool isNamedLattice(fs::path path) {
  constexpr std::array<const char*, 5> kExtensions = {".lat", ".slf", ".htk", ".fst", ".ark"};
  if (path.extension() == ".gz") path = path.stem();
  return std::find(kExtensions.begin(), kExtensions.end(), path.extension()) != kExtensions.end();
}

/// Whether some line of the standard format has the count of nodes, which every file of it has.
bool hasNodeCount(std::string_view text) {
  for (std::size_t pos = 0; pos < text.size();) {
    for (const std::string_view key : {"N=", "NODES=", "nodes="})
      if (text.substr(pos, key.size()) == key) return true;
    pos = std::min(text.find('\n', pos), text.size() - 1) + 1;
  }
  return false;
}

bool beginsLikeLattice(const std::string& path) {
  InputFile file;
  std::string_view beginning;
  if (!file.open(path).empty() || !file.peek(beginning).empty()) return false;
  if (formatOf(beginning) != InputFormat::Slf) return true;
  return beginning.find('\0') == std::string_view::npos && hasNodeCount(beginning);
}

}  // namespace

std::string listLattices(const std::vector<std::string>& arguments,
                         std::vector<std::string>& files) {
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (!fs::is_directory(argument, error)) {
      files.push_back(argument);
      continue;
    }
    std::vector<std::string> found;
    fs::directory_iterator entry(argument, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      const fs::path& path = entry->path();
      const bool isHidden = path.filename().native()[0] == '.';
      std::error_code ignored;
      if (isHidden || !fs::is_regular_file(path, ignored)) continue;
      if (isNamedLattice(path) || beginsLikeLattice(path)) found.push_back(path);
    }
    if (error) return argument + ": " + error.message();
    if (found.empty()) return argument + ": no lattice in this folder";
    std::sort(found.begin(), found.end());
    files.insert(files.end(), found.begin(), found.end());
  }
  return "";
}

OutputNames::OutputNames(const std::vector<std::string>& inputs) {
  for (const std::string& input : inputs) {
    struct stat status = {};
    if (stat(input.c_str(), &status) == 0) m_Inputs.emplace(status.st_dev, status.st_ino);
  }
}

std::string OutputNames::claim(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) == 0 && m_Inputs.count({status.st_dev, status.st_ino}) != 0)
    return path + ": this is a file to be read; write to another";
  return m_Claimed.insert(path).second ? "" : path + ": another lattice was written there";
}

std::string outputIn(const std::string& folder, const std::string& name,
                     const std::string& extension) {
  std::string file = name;
  const auto isBad = [](char c) { return c == '/' || static_cast<unsigned char>(c) < ' '; };
  std::replace_if(file.begin(), file.end(), isBad, '_');
  if (file.empty() || file[0] == '.') file.insert(0, 1, '_');  // no hidden file
  return (fs::path(folder) / (file + extension)).string();
}

}  // namespace quorbel
