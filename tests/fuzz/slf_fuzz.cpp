// The reader of lattices as recognisers write them in HTK's format, and what is done with them.

#include "formats/input_file.h"
#include "formats/normalise.h"
#include "quiet.h"
#include "use.h"

namespace quorbel {
namespace {

void readAndUse(const std::uint8_t* data, std::size_t size) {
  SlfFile file;
  InputFile input;
  if (!input.open(fileOf(data, size)).empty() || !input.readRest(file.bytes).empty()) return;
  constexpr std::size_t kMostBytes = 1u << 20u;  // of what little data may be packed
  if (file.bytes.size() > kMostBytes || !parseSlf(file).empty()) return;
  WordLattice lattice;
  if (!normalise(file, lattice).empty()) return;
  use(lattice, size % 2 == 0);
}

}  // namespace
}  // namespace quorbel

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quorbel::readAndUse(data, size);
  return 0;
}
