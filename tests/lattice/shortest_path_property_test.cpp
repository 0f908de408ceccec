// The fast search held against the plain one on random lattices.

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "extreme_numbers.h"
#include "graph_text.h"
#include "lattice/shortest_path.h"
#include "reference_search.h"

namespace quorbel {
namespace {

/// What a family of random lattices is made of.
struct Family {
  const char* name;
  int lattices;
  int mostNodes;
  int mostLinks;
  std::vector<double> costs;
  int percentWithoutScore;
  int percentBeyond;  ///< link ends that are the index nodeCount
};

void PrintTo(const Family& family, std::ostream* stream) { *stream << family.name; }

const std::vector<Family> kFamilies = {
    {"Ties", 4000, 7, 20, {0, 1, 2}, 0, 0},
    {"MissingScores", 3000, 7, 20, {0, 1, 2, 3}, 40, 5},
    {"ZerosOfBothSigns", 3000, 6, 14, {0.0, -0.0, 1, -1}, 10, 5},
    {"NegativeCosts", 4000, 7, 20, {-3, -2, -1, -0.5, 0, 1, 2, 4}, 10, 5},
    {"CostsAtTheLimit",
     4000,
     6,
     18,
     {99999999, 99999998, 99999999.5, 1e8, 2e8, -1e8, -1, 0, 1, 50000000, 49999999.5},
     10,
     10},
    {"HugeCosts",
     3000,
     6,
     18,
     {kLargestDouble, -kLargestDouble, kInfinity, -kInfinity, 1e308, 0, 1},
     10,
     10},
    {"Fractions", 2000, 8, 24, {0.1, 0.2, 0.3, 0.7, 1e-9, 1e7 / 3, 123.456}, 5, 5},
    {"ManyParallelLinks", 2000, 3, 24, {0, 1, 2, 3, -1}, 10, 10},
    {"LargerLattices", 200, 60, 240, {0, 0.5, 1, 1.5, 2, 3, 5, 8}, 5, 2},
};

/// Random lattices of one family.
class LatticeGenerator {
 public:
  LatticeGenerator(const Family& family, unsigned seed) : m_Family(family), m_Random(seed) {}

  Graph lattice() {
    Graph graph;
    const int nodeCount = number(1, m_Family.mostNodes);
    graph.adjacency = std::make_unique<LatticeAdjacency>(nodeCount, number(0, nodeCount - 1),
                                                         number(0, nodeCount - 1));
    if (chance(50)) graph.adjacency->startNode = 0;
    if (chance(50)) graph.adjacency->endNode = nodeCount - 1;
    graph.nodes.resize(graph.adjacency->outgoing.size());
    const int links = number(0, m_Family.mostLinks);
    for (int i = 0; i < links; ++i) {
      ScoreMap scores;
      if (!chance(m_Family.percentWithoutScore)) scores["a"] = cost();
      if (chance(30)) scores["b"] = 4.0;
      addEdge(*graph.adjacency, node(nodeCount), node(nodeCount), scores, "",
              chance(5) ? number(-2, 2) : 100 + i);
    }
    choose(graph);
    return graph;
  }

  int node(int nodeCount) {
    return chance(m_Family.percentBeyond) ? nodeCount : number(0, nodeCount - 1);
  }

 private:
  int number(int least, int most) { return std::uniform_int_distribution(least, most)(m_Random); }
  bool chance(int percent) { return number(0, 99) < percent; }
  double cost() {
    return m_Family
        .costs[static_cast<std::size_t>(number(0, static_cast<int>(m_Family.costs.size()) - 1))];
  }

  /// Chooses one of the links, or now and then two nodes that no link need join.
  void choose(Graph& graph) {
    const int nodeCount = graph.adjacency->nodeCount;
    graph.hasSelectedEdge = true;
    graph.selectedEdge.startNode = node(nodeCount);
    graph.selectedEdge.endNode = node(nodeCount);
    graph.selectedEdge.score = cost();
    const std::vector<Edge>& edges =
        graph.adjacency->outgoing[static_cast<std::size_t>(graph.selectedEdge.startNode)];
    if (edges.empty() || chance(20)) return;
    const Edge& edge =
        edges[static_cast<std::size_t>(number(0, static_cast<int>(edges.size()) - 1))];
    graph.selectedEdge.linkId = edge.linkId;
    graph.selectedEdge.endNode = edge.endNode;
    const auto score = edge.scores.find("a");
    graph.selectedEdge.score = score == edge.scores.end() ? 0.0 : score->second;
  }

  const Family& m_Family;
  std::mt19937 m_Random;
};

Graph copyOf(const Graph& graph) {
  Graph copy;
  copy.adjacency = std::make_unique<LatticeAdjacency>(*graph.adjacency);
  copy.nodes = graph.nodes;
  copy.hasSelectedEdge = graph.hasSelectedEdge;
  copy.selectedEdge = graph.selectedEdge;
  return copy;
}

std::string listOf(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) text += " " + std::to_string(number);
  return text;
}

/// As many entries as there are nodes: what stands beyond does not count.
std::string describeSearch(bool allSettled, const std::vector<double>& distances,
                           const std::vector<int>& predecessors, const LatticeAdjacency& after) {
  std::string text = allSettled ? "all settled\n" : "not all settled\n";
  for (std::size_t v = 0; v < static_cast<std::size_t>(after.nodeCount); ++v) {
    text += std::to_string(v) + " at " + exactText(distances.at(v)) + " from " +
            std::to_string(predecessors.at(v)) + "\n";
  }
  return text + describeLinks(after);
}

std::string describePath(double total, const std::vector<int>& pathNodes,
                         const std::vector<int>& linkIds, const Graph& after) {
  return "total " + exactText(total) + "\nnodes" + listOf(pathNodes) + "\nlinks" + listOf(linkIds) +
         "\n" + describeLattice(after);
}

std::string fastSearch(const Graph& graph, int source) {
  LatticeAdjacency adjacency = *graph.adjacency;
  std::vector<double> distances;
  std::vector<int> predecessors;
  const bool allSettled = computeDistances(adjacency, source, distances, predecessors);
  return describeSearch(allSettled, distances, predecessors, adjacency);
}

std::string plainSearch(const Graph& graph, int source) {
  LatticeAdjacency adjacency = *graph.adjacency;
  const ReferenceDistances search = referenceComputeDistances(adjacency, source);
  return describeSearch(search.allSettled, search.distances, search.predecessors, adjacency);
}

std::string fastPath(const Graph& graph, bool throughSelected) {
  Graph copy = copyOf(graph);
  std::vector<int> pathNodes(static_cast<std::size_t>(graph.adjacency->nodeCount), 0);
  std::vector<int> linkIds(pathNodes.size(), -1);
  const double total = shortestPath(copy, pathNodes, linkIds, throughSelected);
  return describePath(total, pathNodes, linkIds, copy);
}

/// How often the lattices of a family met what is worth meeting.
struct Meetings {
  int unreachable = 0;
  int scoresAdded = 0;
  int nodesDropped = 0;
  int linkIdsDropped = 0;

  void expectAll(const Family& family, bool throughSelected) const {
    EXPECT_GT(unreachable, 0);
    EXPECT_EQ(scoresAdded > 0, family.percentWithoutScore > 0);
    EXPECT_EQ(nodesDropped > 0, throughSelected);
    EXPECT_GT(linkIdsDropped, 0);
  }
};

std::string plainPath(const Graph& graph, bool throughSelected, Meetings& meetings) {
  Graph copy = copyOf(graph);
  const ReferencePath path = referenceShortestPath(copy, throughSelected);
  meetings.unreachable += path.total >= NO_EDGE_COST;
  meetings.scoresAdded += describeLattice(copy) != describeLattice(graph);
  meetings.nodesDropped += path.nodesDropped > 0;
  meetings.linkIdsDropped += path.linkIdsDropped > 0;
  return describePath(path.total, path.pathNodes, path.linkIds, copy);
}

class FastSearch : public ::testing::TestWithParam<Family> {
 protected:
  FastSearch() { currentScoreName = "a"; }
  static constexpr unsigned kSeed = 7041776;
};
INSTANTIATE_TEST_SUITE_P(Families, FastSearch, ::testing::ValuesIn(kFamilies),
                         [](const auto& family) { return family.param.name; });

TEST_P(FastSearch, GivesTheDistancesOfThePlainOne) {
  LatticeGenerator random(GetParam(), kSeed);
  for (int i = 0; i < GetParam().lattices; ++i) {
    const Graph graph = random.lattice();
    const int source = random.node(graph.adjacency->nodeCount);
    ASSERT_EQ(fastSearch(graph, source), plainSearch(graph, source))
        << "seed " << kSeed << ", lattice " << i << " from " << source << "\n"
        << describeLattice(graph);
  }
}

TEST_P(FastSearch, GivesTheBestPathOfThePlainOne) {
  LatticeGenerator random(GetParam(), kSeed + 1);
  Meetings meetings;
  for (int i = 0; i < GetParam().lattices; ++i) {
    const Graph graph = random.lattice();
    ASSERT_EQ(fastPath(graph, false), plainPath(graph, false, meetings))
        << "seed " << kSeed + 1 << ", lattice " << i << "\n"
        << describeLattice(graph);
  }
  meetings.expectAll(GetParam(), false);
}

TEST_P(FastSearch, GivesThePathThroughALinkOfThePlainOne) {
  LatticeGenerator random(GetParam(), kSeed + 2);
  Meetings meetings;
  for (int i = 0; i < GetParam().lattices; ++i) {
    const Graph graph = random.lattice();
    ASSERT_EQ(fastPath(graph, true), plainPath(graph, true, meetings))
        << "seed " << kSeed + 2 << ", lattice " << i << " through " << graph.selectedEdge.startNode
        << " -> " << graph.selectedEdge.endNode << " at " << exactText(graph.selectedEdge.score)
        << "\n"
        << describeLattice(graph);
  }
  meetings.expectAll(GetParam(), true);
}

}  // namespace
}  // namespace quorbel
