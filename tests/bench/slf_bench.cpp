// How long the finished program quorbel-lattice takes for lattices as decoders write them: to
// import a large one, beside OpenFst's tools on the same graph, and to get from one of usual size
// to a picture.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "decoder_lattice.h"
#include "ratio_reporter.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

const std::string kProgram = QUORBEL_LATTICE;

void runEach(benchmark::State& state, const std::string& command) {
  for (auto _ : state)
    if (std::system(command.c_str()) != 0) state.SkipWithError("a command failed");
}

const DecoderLattice& largeLattice() {
  static const DecoderLattice files = writeDecoderLattice(50000, 190000, 125);
  return files;
}

const DecoderLattice& usualLattice() {
  static const DecoderLattice files = writeDecoderLattice(5000, 12000, 125);
  return files;
}

void BM_Import(benchmark::State& state) {
  runEach(state, kProgram + " import " + largeLattice().slfFile + " large.lat 2>import.log");
}

void BM_OpenFst(benchmark::State& state) {
  runEach(state, "fstcompile " + largeLattice().fstFile +
                     " large.fst && fstconnect large.fst connected.fst && "
                     "fstshortestpath connected.fst path.fst");
}

void BM_ToPicture(benchmark::State& state) {
  runEach(state, kProgram + " import " + usualLattice().slfFile + " usual.lat 2>import.log && " +
                     kProgram + " prune usual.lat small.lat --links 300 && " + kProgram +
                     " draw small.lat small.png");
}

/// The last step of that, nearly all of which is the run of `dot`.
void BM_Picture(benchmark::State& state) { runEach(state, kProgram + " draw small.lat small.png"); }

constexpr const char* kNames[] = {"slf-import", "slf-openfst", "slf-to-picture", "slf-picture"};

std::string timeOf(const std::string& name) { return name + "/iterations:5/real_time"; }

}  // namespace
}  // namespace quorbel

int main(int argc, char** argv) {
  using namespace quorbel;
  benchmark::Initialize(&argc, argv);
  void (*const runs[])(benchmark::State&) = {BM_Import, BM_OpenFst, BM_ToPicture, BM_Picture};
  for (std::size_t i = 0; i < std::size(runs); ++i)
    benchmark::RegisterBenchmark(kNames[i], runs[i])
        ->UseRealTime()
        ->Iterations(5)
        ->Unit(benchmark::kMillisecond);
  const TemporaryFolder folder;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::cout << "\nRatios\n";
  reporter.printRatio("import to fstcompile + fstconnect + fstshortestpath, 190000 links",
                      {timeOf("slf-import")}, {timeOf("slf-openfst")}, 8);
  reporter.printSeconds("import, prune and draw of 12000 links, seconds",
                        {timeOf("slf-to-picture")}, 5);
  reporter.printRatio("drawing's share of that", {timeOf("slf-picture")},
                      {timeOf("slf-to-picture")}, 1);
  return 0;
}
