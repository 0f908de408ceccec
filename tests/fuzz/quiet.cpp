#include "quiet.h"

#include <libxml/xmlerror.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace quorbel {
namespace {

void ignoreReport(void*, const char*, ...) {}

}  // namespace

void beQuiet() {
  std::cout.rdbuf(nullptr);
  xmlSetGenericErrorFunc(nullptr, ignoreReport);
}

std::string fileOf(const std::uint8_t* data, std::size_t size) {
  static const int file = memfd_create("input", 0);
  if (file < 0 || ftruncate(file, 0) != 0 ||
      pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
    std::abort();
  return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace quorbel
