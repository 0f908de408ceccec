#include "formats/slf_source.h"

#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace quorbel {
namespace {

/// Several million links; what goes on beyond is no lattice, and may have been a small file.
constexpr std::size_t kMostBytes = std::size_t{256} << 20u;

/// What zlib says about a file that it could not read on.
std::string reasonOf(gzFile file) {
  int code = Z_OK;
  const char* text = gzerror(file, &code);
  if (code == Z_BUF_ERROR) return "the compressed data end too early";
  if (code == Z_DATA_ERROR) return "the compressed data are damaged";
  if (code == Z_ERRNO) return std::strerror(errno);
  return text;
}

}  // namespace

std::string readWholeFile(const std::string& path, std::string& bytes, bool& isCompressed) {
  constexpr unsigned kStep = 1u << 18u;
  errno = 0;
  gzFile opened = gzopen(path.c_str(), "rb");
  if (!opened) return errno != 0 ? std::strerror(errno) : "not enough memory";
  const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(opened, &gzclose);
  gzbuffer(file.get(), kStep);

  bytes.clear();
  for (std::size_t used = 0;;) {
    if (bytes.size() < used + kStep) bytes.resize(std::min(2 * used, kMostBytes) + kStep);
    const int count = gzread(file.get(), &bytes[used], kStep);
    if (count < 0) return reasonOf(file.get());
    used += static_cast<std::size_t>(count);
    if (used > kMostBytes) return "more than 256 MiB of text, which is beyond any lattice";
    if (static_cast<unsigned>(count) == kStep) continue;
    int code = Z_OK;
    gzerror(file.get(), &code);
    bytes.resize(used);
    isCompressed = gzdirect(file.get()) == 0;
    return code == Z_OK || code == Z_STREAM_END ? "" : reasonOf(file.get());
  }
}

}  // namespace quorbel
