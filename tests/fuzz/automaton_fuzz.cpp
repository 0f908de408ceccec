// The readers of Kaldi's archives and of fstprint's text, and what is done with the lattices.

#include "formats/automaton.h"
#include "formats/fst_text.h"
#include "formats/kaldi_archive.h"
#include "quiet.h"
#include "use.h"

namespace quorbel {
namespace {

void useAll(const std::uint8_t* data, std::size_t size) {
  ReadingOptions options;
  options.frameShift = size % 3 == 0 ? 1e-6 : 0.01;
  const std::string path = fileOf(data, size);
  const auto useOne = [&](const Automaton& automaton) {
    WordLattice lattice;
    if (latticeOf(automaton, options, lattice).empty()) use(lattice, size % 2 == 0);
  };
  InputFile file;
  std::string error;
  if (!file.open(path).empty()) return;
  KaldiArchive archive(file);
  constexpr int kMostLattices = 10;
  int count = 0;
  for (Automaton automaton; archive.nextName(automaton.name, error); automaton = Automaton()) {
    if (archive.read(automaton).empty()) useOne(automaton);
    if (++count == kMostLattices) break;
  }
  Automaton automaton;
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (parseFstText(text, automaton).empty()) useOne(automaton);
}

}  // namespace
}  // namespace quorbel

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quorbel::useAll(data, size);
  return 0;
}
