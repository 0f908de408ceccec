// The reader of OpenFst's own files. What its layout is checked for must be enough for the library,
// which must say nothing on standard error either.

#include <iostream>

#include "formats/automaton.h"
#include "formats/fst_binary.h"
#include "quiet.h"
#include "use.h"

namespace quorbel {
namespace {

/// Whatever the library says is a failure.
class NoWord : public std::streambuf {
 protected:
  int_type overflow(int_type) override {
    require(false);
    return traits_type::eof();
  }
};

void readAndUse(const std::uint8_t* data, std::size_t size) {
  Automaton automaton;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  if (!readFstBinary(bytes, automaton).empty()) return;
  WordLattice lattice;
  if (latticeOf(automaton, ReadingOptions(), lattice).empty()) use(lattice, size % 2 == 0);
}

}  // namespace
}  // namespace quorbel

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static quorbel::NoWord noWord;
  quorbel::beQuiet();
  std::cerr.rdbuf(&noWord);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quorbel::readAndUse(data, size);
  return 0;
}
