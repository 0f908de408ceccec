#include "dot/drawing_memory.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

namespace quorbel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFirstLine = "drawing";

/// What a file begins with: by it a whole one of this drawing is known. Two descriptions may share
/// a file's name, of which the later then takes the place of the other.
std::string headOf(const std::string& format, const std::string& description, std::size_t said,
                   std::size_t bytes) {
  return std::string(kFirstLine) + ' ' + std::to_string(description.size()) + ' ' +
         std::to_string(said) + ' ' + std::to_string(bytes) + ' ' + format + '\n' + description;
}

std::string nameOf(const std::string& format, const std::string& description) {
  return format + '-' + std::to_string(std::hash<std::string>()(description));
}

/// The numbers of a file's first line and what follows up to the description's end; nothing when
/// it is not of this drawing. The stream is behind that then.
std::optional<std::pair<std::size_t, std::size_t>> takeHead(std::ifstream& stream,
                                                            const std::string& format,
                                                            const std::string& description) {
  std::string first;
  std::size_t length = 0;
  std::size_t said = 0;
  std::size_t bytes = 0;
  std::string storedFormat;
  stream >> first >> length >> said >> bytes >> storedFormat;
  if (!stream || stream.get() != '\n' || length != description.size()) return std::nullopt;
  std::string stored(length, '\0');
  stream.read(stored.data(), static_cast<std::streamsize>(length));
  const bool isIt =
      stream && first == kFirstLine && storedFormat == format && stored == description;
  return isIt ? std::make_optional(std::make_pair(said, bytes)) : std::nullopt;
}

struct RememberedFile {
  fs::file_time_type used;
  fs::path path;
  std::uintmax_t size;
};

/// The files, those that were not used for longest first. What another process takes away
/// meanwhile is left out.
std::vector<RememberedFile> filesIn(const fs::path& folder) {
  std::vector<RememberedFile> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code gone;
    const auto used = entry->last_write_time(gone);
    const auto size = gone ? 0 : entry->file_size(gone);
    if (!gone) files.push_back({used, entry->path(), size});
  }
  std::sort(files.begin(), files.end(), [](const RememberedFile& a, const RememberedFile& b) {
    return std::tie(a.used, a.path) < std::tie(b.used, b.path);
  });
  return files;
}

/// The right to write into the folder, as long as it lives.
class WritersTurn {
 public:
  explicit WritersTurn(const fs::path& folder)
      : m_Folder(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
        m_IsGiven(m_Folder >= 0 && flock(m_Folder, LOCK_EX | LOCK_NB) == 0) {}
  ~WritersTurn() {
    if (m_Folder >= 0) close(m_Folder);
  }
  WritersTurn(const WritersTurn&) = delete;
  WritersTurn& operator=(const WritersTurn&) = delete;

  bool isGiven() const { return m_IsGiven; }

 private:
  int m_Folder;
  bool m_IsGiven;
};

}  // namespace

DrawingMemory::DrawingMemory(fs::path folder, std::uintmax_t limit)
    : m_Folder(std::move(folder)), m_Limit(limit) {}

std::optional<RememberedDrawing> DrawingMemory::recall(const std::string& format,
                                                       const std::string& description) const {
  if (!isThere()) return std::nullopt;
  const fs::path path = m_Folder / nameOf(format, description);
  std::ifstream stream(path, std::ios::binary);
  const auto sizes = takeHead(stream, format, description);
  if (!sizes) return std::nullopt;
  std::error_code error;
  const auto head = headOf(format, description, sizes->first, sizes->second).size();
  if (fs::file_size(path, error) != head + sizes->first + sizes->second) return std::nullopt;
  RememberedDrawing drawing;
  const auto read = [&](std::string& text, std::size_t size) {
    text.resize(size);
    stream.read(text.data(), static_cast<std::streamsize>(size));
  };
  read(drawing.said, sizes->first);
  read(drawing.bytes, sizes->second);
  if (!stream) return std::nullopt;
  fs::last_write_time(path, fs::file_time_type::clock::now(), error);
  return drawing;
}

bool DrawingMemory::knows(const std::string& format, const std::string& description) const {
  if (!isThere()) return false;
  std::ifstream stream(m_Folder / nameOf(format, description), std::ios::binary);
  return takeHead(stream, format, description).has_value();
}

bool DrawingMemory::hasRoom() const {
  if (!isThere()) return false;
  std::error_code error;
  const fs::space_info space = fs::space(m_Folder, error);
  return !error && space.available >= m_Limit;
}

/// Whether a file of that size finds room within the limit and on the device.
bool DrawingMemory::makeRoom(std::uintmax_t size) const {
  if (size > m_Limit) return false;
  const std::vector<RememberedFile> files = filesIn(m_Folder);
  std::uintmax_t taken = 0;
  for (const RememberedFile& file : files) taken += file.size;
  std::error_code error;
  for (const RememberedFile& file : files) {
    if (taken + size <= m_Limit) break;
    fs::remove(file.path, error);
    taken -= file.size;
  }
  const fs::space_info space = fs::space(m_Folder, error);
  return !error && space.available >= size + m_Limit;
}

void DrawingMemory::remember(const std::string& format, const std::string& description,
                             const RememberedDrawing& drawing) const {
  if (!isThere()) return;
  const WritersTurn turn(m_Folder);
  if (!turn.isGiven()) return;
  const std::string head = headOf(format, description, drawing.said.size(), drawing.bytes.size());
  if (!makeRoom(head.size() + drawing.said.size() + drawing.bytes.size())) return;
  const fs::path path = m_Folder / nameOf(format, description);
  const fs::path unfinished = m_Folder / "unfinished";
  std::ofstream stream(unfinished, std::ios::binary | std::ios::trunc);
  stream << head << drawing.said << drawing.bytes;
  stream.close();
  std::error_code error;
  if (stream) fs::rename(unfinished, path, error);
  if (!stream || error) fs::remove(unfinished, error);
}

bool DrawingMemory::forgetAll() const {
  if (!isThere()) return false;
  const std::vector<RememberedFile> files = filesIn(m_Folder);
  std::error_code error;
  for (const RememberedFile& file : files) fs::remove(file.path, error);
  return !files.empty();
}

std::vector<std::string> formatsToDraw(const std::string& wanted, const std::string& description,
                                       const DrawingMemory& memory) {
  std::vector<std::string> formats = {wanted};
  const std::string other = wanted == "dot" ? "png" : "dot";
  if (memory.hasRoom() && !memory.knows(other, description))
    formats.insert(wanted == "dot" ? formats.begin() : formats.end(), other);
  return formats;
}

}  // namespace quorbel
