#pragma once

// Drawings that were made before.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quorbel {

/// A drawing with what `dot` said on standard error when it was made.
struct RememberedDrawing {
  std::string bytes;
  std::string said;
};

/// Drawings by the format and the whole text of the description. They lie in a folder, where
/// several processes may work at once: one sees of another's only what is complete, and what is
/// not, such as a file that a process left when it was ended, is as if it were not there.
class DrawingMemory {
 public:
  /// `folder` is somebody else's, who made it and removes it; "" for no memory. The files in it
  /// take `limit` bytes at most.
  explicit DrawingMemory(std::filesystem::path folder, std::uintmax_t limit = kUsualLimit);

  bool isThere() const { return !m_Folder.empty(); }

  /// The drawing; nothing when it is not remembered. It counts as used now.
  std::optional<RememberedDrawing> recall(const std::string& format,
                                          const std::string& description) const;

  /// Whether the drawing is remembered. It does not count as used.
  bool knows(const std::string& format, const std::string& description) const;

  /// Remembers the drawing. Those that were not used for longest are forgotten as far as its room
  /// is needed. It is not remembered where it is larger than the limit, or where less than the
  /// limit would stay free on the device for other files, or writing fails, or another process is
  /// just writing.
  void remember(const std::string& format, const std::string& description,
                const RememberedDrawing& drawing) const;

  /// Whether anything can be remembered: false without a folder, or where less than the limit is
  /// free on the device.
  bool hasRoom() const;

  /// Forgets all, which makes room on the device. Returns whether there was anything.
  bool forgetAll() const;

 private:
  static constexpr std::uintmax_t kUsualLimit = std::uintmax_t{64} << 20U;

  bool makeRoom(std::uintmax_t size) const;

  std::filesystem::path m_Folder;
  std::uintmax_t m_Limit;
};

/// The formats to draw now: picture and layout go together, since the one follows the other, but
/// not where the other would be forgotten at once. A picture comes first.
std::vector<std::string> formatsToDraw(const std::string& wanted, const std::string& description,
                                       const DrawingMemory& memory);

}  // namespace quorbel
