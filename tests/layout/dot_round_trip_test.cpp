#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "layout/dot_writer.h"
#include "layout/layout_reader.h"
#include "layout_support.h"
#include "run_by_system.h"

// From the lattice to the real `dot` and back.

namespace quorbel {
namespace {

/// A random text for a label; `dot` must be able to take it as it stands.
std::string randomLabel(std::mt19937& random, std::size_t length) {
  static const std::vector<std::string> pieces = {"a",
                                                  "bcd",
                                                  " ",
                                                  "\\n",
                                                  "\\\\",
                                                  "\\\"",
                                                  "\\x",
                                                  ".",
                                                  "-",
                                                  "1",
                                                  "\xc3\xbc",
                                                  "/",
                                                  "[",
                                                  "]",
                                                  ";",
                                                  "=",
                                                  ",",
                                                  "<",
                                                  ">",
                                                  "_",
                                                  "&",
                                                  "node",
                                                  "\nb",
                                                  "{",
                                                  "->",
                                                  "lp=",
                                                  "0",
                                                  "a long word that leaves no room",
                                                  "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"};
  std::string label = pieces[random() % pieces.size()];
  while (label.size() < length) label += pieces[random() % pieces.size()];
  return label;
}

/// A lattice with parallel, backward and looping links, nodes without links, and every way of
/// highlighting and labelling. Ids differ from each other.
Graph randomLattice(std::mt19937& random) {
  const int nodeCount = 1 + static_cast<int>(random() % 8);
  Graph graph = latticeOf(nodeCount);
  const auto node = [&] { return static_cast<int>(random() % static_cast<unsigned>(nodeCount)); };
  int id = static_cast<int>(random() % 3);
  for (unsigned links = random() % 15; links > 0; --links) {
    const int start = node();
    const int end = random() % 20 ? node() : nodeCount;
    link(graph, start, end, randomLabel(random, 1 + random() % 12), (random() % 100) / 8.0, id);
    id += 1 + static_cast<int>(random() % 5);
  }
  graph.labelByValue = random() % 4 == 0;
  graph.showBestPath = random() % 2;
  const std::vector<Edge>& first = graph.adjacency->outgoing[0];
  if (!first.empty() && random() % 2) select(graph, first[random() % first.size()].linkId);
  return graph;
}

/// What `dot` was given for each link, by the link's id.
std::map<int, std::string> labelsIn(const std::string& description) {
  std::map<int, std::string> labels;
  const std::string before = ",label = \"";
  const std::string between = "\", comment=\"ID = ";
  for (std::size_t at = description.find(before); at != std::string::npos;
       at = description.find(before, at + 1)) {
    const std::size_t begin = at + before.size();
    const std::size_t end = description.find(between, begin);
    labels[std::stoi(description.substr(end + between.size()))] =
        description.substr(begin, end - begin);
  }
  return labels;
}

/// The nodes that a description names; a link may name the one past the last.
std::set<int> nodesIn(const Graph& graph) {
  std::set<int> nodes = {0, graph.adjacency->nodeCount - 1};
  for (int start = 0; start < graph.adjacency->nodeCount; ++start) {
    for (const Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(start)]) {
      nodes.insert(start);
      nodes.insert(edge.endNode);
    }
  }
  return nodes;
}

/// Checks an edge's item against the link that it must stand for.
void checkEdge(const LayoutItem& item, const Graph& graph,
               const std::map<int, std::string>& labels) {
  ASSERT_GE(item.startNode, 0);
  ASSERT_LT(item.startNode, graph.adjacency->nodeCount);
  const auto& links = graph.adjacency->outgoing[static_cast<std::size_t>(item.startNode)];
  const auto link = std::find_if(links.begin(), links.end(),
                                 [&](const Edge& edge) { return edge.linkId == item.linkId; });
  ASSERT_NE(link, links.end());
  EXPECT_EQ(item.endNode, link->endNode);
  EXPECT_EQ(item.word, link->word);
  EXPECT_EQ(item.score, link->scores.at("cost"));
  EXPECT_EQ(item.label, labels.at(item.linkId));
}

TEST(DotRoundTrip, GivesEveryNodeAndEdgeOnceWithinTheBox) {
  constexpr unsigned kSeed = 20'240'504;
  constexpr int kLattices = 25;
  std::mt19937 random(kSeed);
  for (int i = 0; i < kLattices; ++i) {
    const TemporaryFolder folder;
    Graph graph = randomLattice(random);
    writeDotAndRun(graph, std::nullopt, runBySystem);
    const std::string description = textOf("quorbel_graph.dot");
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", lattice " + std::to_string(i) + "\n" +
                 description + textOf("graph.dot"));
    std::vector<LayoutItem> items;
    PrintedText printed;
    readDotLayout(graph, items);
    EXPECT_EQ(printed.take(), "");

    const std::map<int, std::string> labels = labelsIn(description);
    std::multiset<int> nodes, links;
    for (const LayoutItem& item : items) {
      EXPECT_GE(item.x, 0);
      EXPECT_GE(item.y, 0);
      EXPECT_LE(item.x, graph.layoutWidth);
      EXPECT_LE(item.y, graph.layoutHeight);
      if (item.isNode) {
        EXPECT_GT(item.width, 0);
        EXPECT_GT(item.height, 0);
        EXPECT_EQ(item.time, graph.nodes[static_cast<std::size_t>(item.nodeIndex)].time);
        nodes.insert(item.nodeIndex);
      } else {
        checkEdge(item, graph, labels);
        links.insert(item.linkId);
      }
    }
    const std::set<int> expectedNodes = nodesIn(graph);
    EXPECT_EQ(nodes, std::multiset<int>(expectedNodes.begin(), expectedNodes.end()));
    std::multiset<int> expectedLinks;
    for (const auto& [id, label] : labels) expectedLinks.insert(id);
    EXPECT_EQ(links, expectedLinks);
    EXPECT_EQ(textOf("graph.png").substr(1, 3), "PNG");
  }
}

TEST(DotRoundTrip, GivesBackLabelsOfAnyLength) {
  constexpr unsigned kSeed = 20'240'505;
  constexpr int kLabels = 300;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  const TemporaryFolder folder;
  Graph graph = latticeOf(kLabels + 1);
  for (int i = 0; i < kLabels; ++i)
    link(graph, i, i + 1, randomLabel(random, 100 + random() % 300), 1, i);
  writeDotAndRun(graph, std::nullopt, runBySystem);
  std::vector<LayoutItem> items;
  readDotLayout(graph, items);

  const std::map<int, std::string> labels = labelsIn(textOf("quorbel_graph.dot"));
  ASSERT_EQ(labels.size(), static_cast<std::size_t>(kLabels));
  EXPECT_NE(textOf("graph.dot").find("\\\n"), std::string::npos) << "nothing was wrapped";
  int count = 0;
  for (const LayoutItem& item : items) {
    if (item.isNode) continue;
    EXPECT_EQ(item.label, labels.at(item.linkId));
    ++count;
  }
  EXPECT_EQ(count, kLabels);
}

TEST(DotRoundTrip, IsTheSameUnderALocaleWithADecimalComma) {
  const TemporaryFolder folder;
  Graph graph = diamond();
  graph.labelByValue = true;
  writeDotAndRun(graph, std::nullopt, runBySystem);
  std::vector<LayoutItem> expected, items;
  readDotLayout(graph, expected);

  const EnvironmentVariable environment("LC_ALL", "de_DE.UTF-8");
  const ProcessLocale locale("de_DE.UTF-8");
  std::filesystem::remove("graph.dot");
  writeDotAndRun(graph, std::nullopt, runBySystem);
  readDotLayout(graph, items);
  ASSERT_EQ(items.size(), 8U);
  ASSERT_EQ(expected.size(), 8U);
  for (std::size_t i = 0; i < items.size(); ++i) EXPECT_EQ(asText(items[i]), asText(expected[i]));
}

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<png_byte> rgb;

  bool isYellow(int x, int y) const {
    const png_byte* pixel = rgb.data() + 3 * (static_cast<std::ptrdiff_t>(y) * width + x);
    return pixel[0] > 180 && pixel[1] > 180 && pixel[2] < 120;
  }

  bool hasYellowInColumn(int x) const {
    for (int y = 0; y < height; ++y)
      if (isYellow(x, y)) return true;
    return false;
  }

  /// The middle of the yellow columns around `x`; -1 where there are none.
  double middleOfYellow(int x) const {
    if (!hasYellowInColumn(x)) return -1;
    int first = x, last = x;
    while (first > 0 && hasYellowInColumn(first - 1)) --first;
    while (last + 1 < width && hasYellowInColumn(last + 1)) ++last;
    return (first + last + 1) / 2.0;
  }
};

Picture readPicture(const char* path) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path)) throw std::runtime_error(image.message);
  image.format = PNG_FORMAT_RGB;
  Picture picture;
  picture.width = static_cast<int>(image.width);
  picture.height = static_cast<int>(image.height);
  picture.rgb.resize(PNG_IMAGE_SIZE(image));
  const png_color white = {255, 255, 255};
  if (!png_image_finish_read(&image, &white, picture.rgb.data(), 0, nullptr))
    throw std::runtime_error(image.message);
  return picture;
}

TEST(DotRoundTrip, OfALongChainHasEveryNodeWhereThePictureShowsIt) {
  constexpr int kNodes = 1500;
  constexpr int kWidestForExponents = 99'999;  // `dot` writes wider ones with an exponent
  constexpr int kWidestPicture = 32'767;
  const TemporaryFolder folder;
  Graph graph = latticeOf(kNodes);
  for (int i = 0; i + 1 < kNodes; ++i) link(graph, i, i + 1, "w", 1, i);
  setShowBestPath(graph, true);  // makes all but the end nodes yellow
  testing::internal::CaptureStderr();
  writeDotAndRun(graph, std::nullopt, runBySystem);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("Scaling"), std::string::npos);
  std::vector<LayoutItem> items;
  readDotLayout(graph, items);
  EXPECT_NE(textOf("graph.dot").find("e+05"), std::string::npos);
  ASSERT_GT(graph.layoutWidth, kWidestForExponents);

  const Picture picture = readPicture("graph.png");
  EXPECT_EQ(picture.width, kWidestPicture);
  const float ratioX = static_cast<float>(picture.width) / graph.layoutWidth;
  const float ratioY = static_cast<float>(picture.height) / graph.layoutHeight;
  constexpr double kNear = 2;  // pixels, of which a point is a fifth; `dot` rounds to ten points
  int labels = 0;
  std::vector<int> centres(kNodes, -1);
  for (const LayoutItem& item : items) {
    const int imageX = static_cast<int>(item.x * ratioX);
    const int imageY = static_cast<int>(picture.height - item.y * ratioY);
    if (!item.isNode) {
      EXPECT_FALSE(picture.hasYellowInColumn(imageX)) << "label " << item.linkId;
      ++labels;
      continue;
    }
    centres[static_cast<std::size_t>(item.nodeIndex)] = imageX;
    EXPECT_NEAR(imageY, picture.height / 2, 1) << "node " << item.nodeIndex;
    if (item.nodeIndex == 0 || item.nodeIndex == kNodes - 1) continue;
    EXPECT_NEAR(picture.middleOfYellow(imageX), imageX, kNear) << "node " << item.nodeIndex;
  }
  EXPECT_EQ(items.size(), static_cast<std::size_t>(2 * kNodes - 1));
  EXPECT_EQ(labels, kNodes - 1);
  for (std::size_t i = 1; i < centres.size(); ++i) EXPECT_GT(centres[i], centres[i - 1]) << i;
}

}  // namespace
}  // namespace quorbel
