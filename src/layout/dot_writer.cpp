#include "layout/dot_writer.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <locale>
#include <map>
#include <ostream>
#include <unordered_set>
#include <vector>

#include "lattice/number_text.h"
#include "lattice/shortest_path.h"
#include "lattice/xml_label.h"
#include "layout/file_names.h"
#include "layout/shell_word.h"

namespace quorbel {
namespace {

/// Orders node times, which malformed lattices make not-a-number: all such times are one, the last.
struct TimeOrder {
  bool operator()(double a, double b) const {
    return std::isnan(a) || std::isnan(b) ? !std::isnan(a) && std::isnan(b) : a < b;
  }
};

/// A path through the lattice as the drawing needs it.
class Path {
 public:
  Path(Graph& graph, bool throughSelected, double& total)
      : m_Nodes(static_cast<std::size_t>(graph.adjacency->nodeCount), 0) {
    std::vector<int> linkIds(m_Nodes.size(), -1);
    total = shortestPath(graph, m_Nodes, linkIds, throughSelected);
    m_LinkIds.insert(linkIds.begin(), linkIds.end());
  }

  /// The ids of the path's links, in no order.
  std::vector<int> links() const {
    std::vector<int> ids(m_LinkIds.begin(), m_LinkIds.end());
    ids.erase(std::remove(ids.begin(), ids.end(), -1), ids.end());
    return ids;
  }

  /// Whether the path has a link of that id. A link with the id -1, which also marks the unused
  /// rest of the path's links, counts as being on it.
  bool hasLink(int linkId) const { return m_LinkIds.count(linkId) != 0; }

  /// Writes a style for the nodes between the path's end node and the first node 0 before it.
  void writeNodes(std::ostream& stream, const char* style) const {
    for (std::size_t k = 1; k + 1 < m_Nodes.size() && m_Nodes[k] != 0; ++k)
      stream << m_Nodes[k] << style << '\n';
  }

  /// Notes the word of a link that leaves its start node at `time`. Of several at one time the last
  /// counts.
  void addText(double time, const std::string& text) { m_Texts[time] = text; }

  /// The words in the order of their times, each followed by a blank.
  std::string text() const {
    std::string joined;
    for (const auto& [time, text] : m_Texts) joined += text + " ";
    return joined;
  }

 private:
  std::vector<int> m_Nodes;
  std::unordered_set<int> m_LinkIds;
  std::map<double, std::string, TimeOrder> m_Texts;
};

void writeEndNodes(std::ostream& stream, int nodeCount) {
  stream << 0 << " [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n";
  stream << nodeCount - 1
         << " [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n";
}

/// Writes the links, and gives the paths the words of those that lie on them.
void writeLinks(Graph& graph, std::ostream& stream, Path& best, std::optional<Path>& selected) {
  const LayoutItem& chosen = graph.selectedEdge;
  for (int start = 0; start < graph.adjacency->nodeCount; ++start) {
    const double time = graph.nodes[static_cast<std::size_t>(start)].time;
    for (Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(start)]) {
      const char* colour = "color=black";
      if (selected) {
        const bool isChosen = edge.linkId == chosen.linkId;
        const bool isTwin = start == chosen.startNode && edge.endNode == chosen.endNode;
        if (isChosen) colour = "color=red, fontcolor=red";
        if (selected->hasLink(edge.linkId)) {
          if (!isChosen && !isTwin) colour = "color=cyan, fontcolor=cyan";
          selected->addText(time, edgeXmlLabel(graph, edge.word, false));
        }
      }
      if (best.hasLink(edge.linkId)) {
        best.addText(time, edgeXmlLabel(graph, edge.word, false));
        if (graph.showBestPath) colour = "color=blue, fontcolor=blue";
      }
      const std::string label = graph.labelByValue
                                    ? formatNumber(edge.scores[currentScoreName])
                                    : edgeXmlLabel(graph, edge.word, graph.labelBySelectedXml);
      stream << start << " -> " << edge.endNode << " [ " << colour << ",label = \"" << label
             << "\", comment=\"ID = " << edge.linkId << "\"];\n";
    }
  }
}

}  // namespace

void writeDescription(Graph& graph, std::ostream& stream) {
  stream.imbue(std::locale::classic());
  graph.bestPathText.clear();
  graph.selectedPathText.clear();
  graph.bestPathLinks.clear();
  graph.selectedPathLinks.clear();
  Path best(graph, false, graph.bestPathScore);
  std::optional<Path> selected;
  if (graph.hasSelectedEdge) selected.emplace(graph, true, graph.selectedPathScore);

  stream << "digraph G {\n";
  stream << "rankdir=LR;\n";
  writeEndNodes(stream, graph.adjacency->nodeCount);
  if (selected) {
    selected->writeNodes(stream,
                         " [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];");
  }
  if (graph.showBestPath) {
    best.writeNodes(stream, " [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];");
  }
  writeLinks(graph, stream, best, selected);
  graph.bestPathText = best.text();
  graph.bestPathLinks = best.links();
  if (selected) {
    graph.selectedPathText = selected->text();
    graph.selectedPathLinks = selected->links();
  }
  stream << "}\n";
}

DotRuns writeDotAndRun(Graph& graph, const std::optional<std::string>& outputName,
                       const CommandRunner& run) {
  std::ofstream stream(kDescriptionFile);
  writeDescription(graph, stream);
  stream.close();

  if (graph.outputFormat.empty()) graph.outputFormat = kDefaultFormat;
  const auto draw = [&run](const std::string& format, const std::string& name) {
    return run("dot -T" + format + " -o " + shellWord(name) + " " + kDescriptionFile);
  };
  DotRuns runs;
  runs.image = draw(graph.outputFormat, outputName.value_or(kImageFile));
  graph.outputFormat = kDefaultFormat;
  runs.layout = draw("dot", kLayoutFile);
  return runs;
}

}  // namespace quorbel
