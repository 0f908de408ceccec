#include "formats/input_file.h"

#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace quorbel {
namespace {

constexpr unsigned kStep = 1u << 18u;

/// Longer than any line that is no whole file of its own.
constexpr std::size_t kLongestLine = std::size_t{16} << 20u;

/// What zlib says about a file that it could not read on.
std::string reasonOf(gzFile file) {
  int code = Z_OK;
  const char* text = gzerror(file, &code);
  if (code == Z_BUF_ERROR) return "the compressed data end too early";
  if (code == Z_DATA_ERROR) return "the compressed data are damaged";
  if (code == Z_ERRNO) return std::strerror(errno);
  return text;
}

gzFile openedStandardInput() {
  const int copy = dup(STDIN_FILENO);
  gzFile opened = copy < 0 ? nullptr : gzdopen(copy, "rb");
  if (!opened && copy >= 0) close(copy);
  return opened;
}

}  // namespace

struct InputFile::Handle {
  explicit Handle(gzFile file) : m_File(file, &gzclose) { gzbuffer(file, kStep); }
  std::unique_ptr<gzFile_s, int (*)(gzFile)> m_File;
};

InputFile::InputFile() = default;
InputFile::~InputFile() = default;

std::string InputFile::open(const std::string& path) {
  errno = 0;
  gzFile opened = path == "-" ? openedStandardInput() : gzopen(path.c_str(), "rb");
  if (!opened) return errno != 0 ? std::strerror(errno) : "not enough memory";
  m_Handle = std::make_unique<Handle>(opened);
  return "";
}

bool InputFile::isCompressed() const { return gzdirect(m_Handle->m_File.get()) == 0; }

/// Reads one step more, behind what was read ahead.
std::string InputFile::fill() {
  gzFile file = m_Handle->m_File.get();
  const std::size_t used = m_Ahead.size();
  if (m_Ahead.capacity() < used + kStep) m_Ahead.reserve(2 * used + kStep);
  m_Ahead.resize(used + kStep);
  const int count = gzread(file, &m_Ahead[used], kStep);
  m_Ahead.resize(used + static_cast<std::size_t>(std::max(count, 0)));
  if (count < 0) return reasonOf(file);
  if (static_cast<unsigned>(count) == kStep) return "";
  m_IsAtEnd = true;
  int code = Z_OK;
  gzerror(file, &code);
  return code == Z_OK || code == Z_STREAM_END ? "" : reasonOf(file);
}

std::string InputFile::peek(std::string_view& bytes) {
  std::string error;
  if (m_Ahead.empty() && !m_IsAtEnd) error = fill();
  bytes = std::string_view(m_Ahead).substr(m_Taken);
  return error;
}

std::string InputFile::readRest(std::string& bytes) {
  m_Ahead.erase(0, std::exchange(m_Taken, 0));
  while (!m_IsAtEnd) {
    if (std::string error = fill(); !error.empty()) return error;
    if (m_Ahead.size() > kMostBytes)
      return "more than 256 MiB of text, which is beyond any lattice";
  }
  bytes = std::exchange(m_Ahead, {});
  return "";
}

bool InputFile::nextLine(std::string& line, std::string& error) {
  error.clear();
  std::size_t searched = m_Taken;
  std::size_t end = m_Ahead.find('\n', searched);
  while (end == std::string::npos && !m_IsAtEnd) {
    m_Ahead.erase(0, std::exchange(m_Taken, 0));
    if (m_Ahead.size() > kLongestLine) {
      error = "line " + std::to_string(m_LineNumber + 1) +
              ": more than 16 MiB in one line, which is beyond any lattice";
      return false;
    }
    searched = m_Ahead.size();
    if (error = fill(); !error.empty()) return false;
    end = m_Ahead.find('\n', searched);
  }
  if (end == std::string::npos && m_Taken == m_Ahead.size()) return false;
  end = std::min(end, m_Ahead.size());
  line.assign(m_Ahead, m_Taken, end - m_Taken);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  m_Taken = std::min(end + 1, m_Ahead.size());
  ++m_LineNumber;
  return true;
}

}  // namespace quorbel
