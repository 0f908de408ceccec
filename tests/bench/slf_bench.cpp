// How long the finished program quorbel-lattice takes for lattices as decoders write them: to
// import a large one, beside OpenFst's tools on the same graph, to get from one of usual size to a
// picture, to print very many paths and sentences, to compare with a reference, and to find one
// utterance of many in an archive.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
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

const std::string& linksOfManyWords() {
  static const DecoderLattice files = writeDecoderLattice(2500, 10000, 10);
  return files.slfFile;
}

/// The 100,000 best paths through 10,000 links, each of some 250.
void BM_Best(benchmark::State& state) {
  runEach(state, kProgram + " best " + linksOfManyWords() +
                     " --nbest 100000 --repeats >/dev/null 2>best.log");
}

/// As many sentences, of which no two say the same.
void BM_Sentences(benchmark::State& state) {
  runEach(state,
          kProgram + " best " + linksOfManyWords() + " --nbest 100000 >/dev/null 2>best.log");
}

/// Sentences of three nodes with a loop, where there is a limit to going around.
void BM_Around(benchmark::State& state) {
  std::ofstream("loop.slf") << "start=0 end=2\nN=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                               "J=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=1 W=b a=-1\n"
                               "J=2 S=1 E=2 W=c a=-1\n";
  runEach(state, kProgram + " best loop.slf --nbest 100000 >/dev/null 2>best.log");
}

/// The last utterance of a Kaldi archive of 10 MB.
void BM_Archive(benchmark::State& state) {
  constexpr std::size_t kBytes = 10'000'000;
  static const std::string last = writeKaldiArchive("archive.kaldi.txt", kBytes);
  runEach(state, kProgram + " import archive.kaldi.txt archive.lat --utterance " + last +
                     " 2>archive.log");
}

/// The oracle path through 10,000 links beside 100 words.
void BM_Oracle(benchmark::State& state) {
  static const DecoderLattice files = writeDecoderLattice(2502, 10000, 25);
  std::ofstream reference("reference");
  for (int word = 1; word <= 100; ++word) reference << "WORD" << 197 * word << " ";
  reference << std::endl;
  runEach(state, kProgram + " oracle " + files.slfFile + " --reference reference >/dev/null");
}

constexpr const char* kNames[] = {"slf-import",  "slf-openfst", "slf-to-picture",
                                  "slf-picture", "slf-best",    "slf-sentences",
                                  "slf-around",  "slf-oracle",  "kaldi-archive"};

std::string timeOf(const std::string& name) { return name + "/iterations:5/real_time"; }

}  // namespace
}  // namespace quorbel

int main(int argc, char** argv) {
  using namespace quorbel;
  benchmark::Initialize(&argc, argv);
  void (*const runs[])(benchmark::State&) = {BM_Import,  BM_OpenFst, BM_ToPicture,
                                             BM_Picture, BM_Best,    BM_Sentences,
                                             BM_Around,  BM_Oracle,  BM_Archive};
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
  reporter.printSeconds("the 100000 best paths of 10000 links, seconds", {timeOf("slf-best")}, 30);
  reporter.printSeconds("as many different sentences, seconds", {timeOf("slf-sentences")}, 30);
  reporter.printSeconds("as many around one loop, seconds", {timeOf("slf-around")}, 30);
  reporter.printSeconds("the oracle path of 10000 links beside 100 words, seconds",
                        {timeOf("slf-oracle")}, 1);
  reporter.printSeconds("the last utterance of a Kaldi archive of 10 MB, seconds",
                        {timeOf("kaldi-archive")}, 1);
  return 0;
}
