#include "sound/sample_array.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <locale>
#include <string>

namespace quorbel {
namespace {

/// Memory in bytes that programs can still have without swapping; 0 when the kernel does not say.
std::uint64_t availableMemory() {
  std::ifstream meminfo("/proc/meminfo");
  meminfo.imbue(std::locale::classic());
  std::string name;
  std::uint64_t kibibytes = 0;
  while (meminfo >> name) {
    if (name == "MemAvailable:" && meminfo >> kibibytes) return kibibytes * 1024;
    meminfo.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  return 0;
}

std::uint64_t machineMemory() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGESIZE);
  if (pages <= 0 || pageSize <= 0) return 0;
  return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

}  // namespace

std::uint64_t memoryForSamples() {
  const std::uint64_t available = availableMemory();
  return (available > 0 ? available : machineMemory()) / 2;
}

SampleArray allocateSamples(std::int64_t frames, std::int32_t channels, std::uint64_t limitBytes) {
  if (frames < 0 || channels < 0) return nullptr;
  const std::uint64_t frameBytes = static_cast<std::uint64_t>(channels) * sizeof(std::int16_t);
  // Divided, not multiplied: a header can promise a product beyond 64 bits.
  if (frameBytes > 0 && static_cast<std::uint64_t>(frames) > limitBytes / frameBytes)
    return nullptr;
  const std::uint64_t bytes = static_cast<std::uint64_t>(frames) * frameBytes;
  // calloc, unlike a container, hands out large arrays as zero pages that are not touched yet.
  const std::size_t size = std::max<std::size_t>(bytes, sizeof(std::int16_t));
  return SampleArray(static_cast<std::int16_t*>(std::calloc(size, 1)));
}

}  // namespace quorbel
