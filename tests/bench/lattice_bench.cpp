// How long reading, searching, describing and laying out take, without a window: on lattices of
// growing size, beside OpenFst on the same graph, and on the examples beside their `dot` runs.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <random>

#include "lattice/htk_reader.h"
#include "lattice/shortest_path.h"
#include "layout/dot_writer.h"
#include "layout/file_names.h"
#include "layout/layout_reader.h"
#include "ratio_reporter.h"
#include "run_by_system.h"
#include "sample_lattice.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

const SampleLattice& sampleOf(int nodeCount) {
  static std::map<int, SampleLattice> samples;
  auto found = samples.find(nodeCount);
  if (found == samples.end()) {
    const std::string folder = std::filesystem::current_path().string();
    found = samples.emplace(nodeCount, writeSampleLattice(folder, nodeCount)).first;
  }
  return found->second;
}

void useDefaultLabels(Graph& graph) { graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}}; }

/// Both searches as a rendering does them, the second through a link in the middle.
void searchBoth(Graph& graph) {
  const std::size_t count = static_cast<std::size_t>(graph.adjacency->nodeCount);
  LayoutItem chosen;
  chosen.startNode = graph.adjacency->nodeCount / 2;
  chosen.endNode = chosen.startNode + 1;
  setSelectedEdge(graph, true, chosen);
  for (const bool throughSelected : {false, true}) {
    std::vector<int> nodes(count, 0);
    std::vector<int> links(count, -1);
    benchmark::DoNotOptimize(shortestPath(graph, nodes, links, throughSelected));
  }
}

void BM_Read(benchmark::State& state) {
  const SampleLattice& sample = sampleOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Graph graph;
    if (!readHtkLattice(graph, sample.latticeFile).empty()) state.SkipWithError("not read");
  }
}

/// Fewer nodes than this are searched in several lattices in turn. A processor learns the branches
/// of a short search that is repeated by heart, which makes it twice as fast as any that a
/// rendering does.
constexpr std::int64_t kNodesInTurn = 5000;

void BM_Search(benchmark::State& state) {
  currentScoreName = "a";
  std::mt19937 random(1994);
  std::uniform_real_distribution<double> cost(100.0, 400.0);
  std::vector<Graph> graphs(
      static_cast<std::size_t>(std::max<std::int64_t>(1, kNodesInTurn / state.range(0))));
  for (Graph& graph : graphs) {
    readHtkLattice(graph, sampleOf(static_cast<int>(state.range(0))).latticeFile);
    for (std::vector<Edge>& edges : graph.adjacency->outgoing)
      for (Edge& edge : edges) edge.scores[currentScoreName] = cost(random);
  }
  std::size_t turn = 0;
  for (auto _ : state) searchBoth(graphs[turn++ % graphs.size()]);
}

void BM_ReadAndSearch(benchmark::State& state) {
  const SampleLattice& sample = sampleOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Graph graph;
    readHtkLattice(graph, sample.latticeFile);
    currentScoreName = "a";
    searchBoth(graph);
  }
}

void BM_Write(benchmark::State& state) {
  Graph graph;
  readHtkLattice(graph, sampleOf(static_cast<int>(state.range(0))).latticeFile);
  useDefaultLabels(graph);
  for (auto _ : state) {
    std::ofstream stream("description.dot");
    writeDescription(graph, stream);
  }
}

void BM_ReadLayout(benchmark::State& state) {
  const SampleLattice& sample = sampleOf(static_cast<int>(state.range(0)));
  Graph graph;
  readHtkLattice(graph, sample.latticeFile);
  std::vector<LayoutItem> items;
  for (auto _ : state) {
    std::ifstream stream(sample.layoutFile);
    readDotLayout(graph, items, stream);
  }
  if (items.size() < static_cast<std::size_t>(state.range(0))) state.SkipWithError("not read");
}

void BM_OpenFst(benchmark::State& state) {
  const SampleLattice& sample = sampleOf(static_cast<int>(state.range(0)));
  const std::string command =
      "fstcompile " + sample.fstFile + " sample.fst && fstshortestpath sample.fst path.fst";
  for (auto _ : state)
    if (std::system(command.c_str()) != 0) state.SkipWithError("OpenFst's tools do not run");
}

/// What the viewer itself does for an example, and the two runs of `dot`.
void BM_ExampleViewer(benchmark::State& state, const std::string& path) {
  Graph graph;
  useDefaultLabels(graph);
  std::vector<LayoutItem> items;
  for (auto _ : state) {
    readHtkLattice(graph, path);
    std::ofstream stream(kDescriptionFile);
    writeDescription(graph, stream);  // searches too
    stream.close();
    state.PauseTiming();
    const std::string layout = "dot -Tdot -o " + kLayoutFile + " " + kDescriptionFile;
    if (std::system(layout.c_str()) != 0) state.SkipWithError("dot does not run");
    state.ResumeTiming();
    readDotLayout(graph, items);
  }
}

void BM_ExampleDot(benchmark::State& state, const std::string& path) {
  Graph graph;
  useDefaultLabels(graph);
  readHtkLattice(graph, path);
  for (auto _ : state) {
    writeDotAndRun(graph, std::nullopt, runBySystem);
  }
}

const std::vector<std::int64_t> kNodeCounts = {500, 5000, 50000};

std::string named(const std::string& name, std::int64_t nodeCount) {
  return name + "/" + std::to_string(nodeCount) + "/real_time";
}

std::vector<std::string> registerExamples(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string extension = entry.path().extension();
    if (extension != ".lat" && extension != ".htk") continue;
    const std::string name = entry.path().stem();
    const std::string path = std::filesystem::absolute(entry.path());
    names.push_back(name);
    benchmark::RegisterBenchmark(("viewer/" + name).c_str(), BM_ExampleViewer, path)
        ->UseRealTime()
        ->Iterations(5)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("dot/" + name).c_str(), BM_ExampleDot, path)
        ->UseRealTime()
        ->Iterations(5)
        ->Unit(benchmark::kMillisecond);
  }
  return names;
}

void registerSizes() {
  const std::pair<const char*, void (*)(benchmark::State&)> all[] = {
      {"read", BM_Read},   {"search", BM_Search},          {"read+search", BM_ReadAndSearch},
      {"write", BM_Write}, {"layout-read", BM_ReadLayout}, {"openfst", BM_OpenFst}};
  for (const auto& [name, run] : all)
    for (const std::int64_t nodeCount : kNodeCounts)
      benchmark::RegisterBenchmark(name, run)->Arg(nodeCount)->UseRealTime()->Unit(
          benchmark::kMillisecond);
}

void printRatios(const RatioReporter& reporter, const std::vector<std::string>& examples) {
  std::cout << "\nRatios\n";
  for (const char* name : {"read", "search", "write", "layout-read"})
    for (std::size_t i = 1; i < kNodeCounts.size(); ++i)
      reporter.printRatio(std::string(name) + ": " + std::to_string(kNodeCounts[i]) + " to " +
                              std::to_string(kNodeCounts[i - 1]) + " nodes",
                          {named(name, kNodeCounts[i])}, {named(name, kNodeCounts[i - 1])}, 20);
  reporter.printRatio("read+search to fstcompile + fstshortestpath, 50000 nodes",
                      {named("read+search", 50000)}, {named("openfst", 50000)}, 2);
  for (const std::string& name : examples) {
    const std::string suffix = "/iterations:5/real_time";
    reporter.printRatio("viewer's share of viewer and dot, " + name, {"viewer/" + name + suffix},
                        {"dot/" + name + suffix}, 0.05);
  }
}

}  // namespace
}  // namespace quorbel

/// Takes the folder with the examples as its argument.
int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (argc != 2) {
    std::cerr << "lattice_bench: the folder with the examples is missing" << std::endl;
    return 1;
  }
  const auto examples = quorbel::registerExamples(argv[1]);
  quorbel::registerSizes();
  const quorbel::TemporaryFolder folder;
  quorbel::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  quorbel::printRatios(reporter, examples);
  return 0;
}
