#pragma once

// The bytes of a file, whether it is compressed or not.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace quorbel {

/// How long a text may be that is held in memory as a whole: several million links. What goes on
/// beyond is no lattice, and may have been a small file.
inline constexpr std::size_t kMostBytes = std::size_t{256} << 20u;

/// A file, plain or compressed by gzip, that is read once and from its beginning to its end: it may
/// be a pipe. Of what can fail, each function gives back why, without the path ("No such file or
/// directory", "the compressed data end too early").
class InputFile {
 public:
  InputFile();
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// Opens the file `path`; "-" is the standard input. Returns "" or why it cannot be read.
  std::string open(const std::string& path);

  /// Puts the file's first bytes, up to 256 KiB, into `bytes` without taking them; they stay where
  /// they are until something is read. Returns "" or why they cannot be read.
  std::string peek(std::string_view& bytes);

  /// Puts all that is left into `bytes`. Returns "" or why it cannot be read: more than kMostBytes,
  /// too.
  std::string readRest(std::string& bytes);

  /// Puts the next line, without its end ("\n" or "\r\n"), into `line`. False at the end of the
  /// file, and when `error` says why it cannot be read ("" otherwise).
  bool nextLine(std::string& line, std::string& error);

  /// The number of the line that was read last, from 1.
  int lineNumber() const { return m_LineNumber; }

  /// Whether the file, of which something was read, is compressed.
  bool isCompressed() const;

 private:
  struct Handle;

  std::string fill();

  std::unique_ptr<Handle> m_Handle;
  std::string m_Ahead;      ///< what was read and not all taken
  std::size_t m_Taken = 0;  ///< how much of it was taken
  bool m_IsAtEnd = false;   ///< nothing follows behind what was read ahead
  int m_LineNumber = 0;
};

}  // namespace quorbel
