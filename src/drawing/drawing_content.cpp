#include "drawing/drawing_content.h"

#include <libxml/tree.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "formats/dialect_writer.h"
#include "lattice/graph.h"
#include "lattice/htk_reader.h"
#include "lattice/number_text.h"
#include "lattice/xml_fragment.h"
#include "lattice/xml_label.h"
#include "measures/oracle.h"

namespace quorbel {
namespace {

const std::string kScoreLabel = "score";

std::string listed(const std::set<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

/// Whether some word of the lattice has the attribute; otherwise `known` gets those that there are.
bool hasAttribute(const Graph& graph, const std::string& name, std::set<std::string>& known) {
  for (const std::vector<Edge>& edges : graph.adjacency->outgoing) {
    for (const Edge& edge : edges) {
      const XmlDocument word = parseXmlFragment(edge.word, "word.xml");
      const xmlNode* root = word ? xmlDocGetRootElement(word.get()) : nullptr;
      const xmlAttr* attribute = root ? firstAttribute(root) : nullptr;
      for (; attribute; attribute = attribute->next) known.insert(xmlText(attribute->name));
      if (known.count(name) != 0) return true;
    }
  }
  return false;
}

std::string chooseLabels(Graph& graph, const std::string& field) {
  graph.fieldsByName = {{{1}, "in"}, {{1}, "out"}};
  if (field.empty()) return "";
  std::set<std::string> known = {};
  if (hasAttribute(graph, field, known)) {
    graph.fieldsByName = {{{1}, field}};
    return "";
  }
  known.insert(kScoreLabel);
  graph.labelByValue = field == kScoreLabel;
  if (graph.labelByValue) return "";
  return "no word has the attribute \"" + field + "\"; labels can be: " + listed(known);
}

/// The label of each link, in the order of the links; of `scores`, too, which are those of that
/// name.
std::vector<std::string> labelsOf(const Graph& graph, const std::string& scoreName,
                                  const std::vector<double>& scores) {
  std::vector<std::string> labels;
  for (const std::vector<Edge>& edges : graph.adjacency->outgoing) {
    for (const Edge& edge : edges) {
      const double cost = edge.scores.count(scoreName) == 0 ? 0.0 : -scores[labels.size()];
      labels.push_back(graph.labelByValue ? formatNumber(cost)
                                          : edgeXmlLabel(graph, edge.word, false));
    }
  }
  return labels;
}

/// Finds the paths that are to be marked.
std::string chooseMarks(const WordLattice& lattice, const DrawingOptions& options,
                        const std::vector<double>& scores, DrawingMarks& marks) {
  std::string error;
  if (options.throughLink) {
    const auto isIt = [&](const WordLink& link) { return link.id == *options.throughLink; };
    const auto link = std::find_if(lattice.links.begin(), lattice.links.end(), isIt);
    if (link == lattice.links.end())
      return "there is no link " + std::to_string(*options.throughLink);
    marks.chosenLink = static_cast<std::size_t>(link - lattice.links.begin());
    error = findBestPathThrough(lattice, scores, *marks.chosenLink, marks.throughLink.emplace());
  }
  if (!error.empty() || !options.showBestPath || options.reference) return error;
  std::vector<LatticePath> paths;
  error = findBestPaths(lattice, scores, 1, paths);
  if (error.empty()) marks.best = std::move(paths[0]);
  return error;
}

/// Brings the lattice into the viewer's own graph, by way of the text that the viewer would read.
std::string viewerGraph(const WordLattice& lattice, Graph& graph) {
  std::string text;
  const std::string error = dialectText(lattice, text);
  return error.empty() ? readHtkLattice(graph, "the lattice", text) : error;
}

std::vector<std::string> wordsIn(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

std::string errorsText(const std::string& path, const EditCounts& counts) {
  const int errors = counts.total();
  const std::string number = errors == 0 ? "no" : std::to_string(errors);
  return path + ": " + number + (errors == 1 ? " error" : " errors");
}

/// What the legend has to say: entries for those kinds of lines that there are.
std::vector<LegendEntry> legendFor(const OracleResult& result, const DrawingStyle& style) {
  Mark best;
  best.isBest = true;
  Mark oracle;
  oracle.isOracle = true;
  Mark both = best;
  both.isOracle = true;
  const std::set<std::size_t> ofBest(result.best.links.begin(), result.best.links.end());
  const std::set<std::size_t> ofOracle(result.oracle.links.begin(), result.oracle.links.end());
  if (ofBest == ofOracle)
    return {{errorsText("best and oracle path", result.oracle.counts), linkLook(style, both)}};
  std::vector<LegendEntry> legend = {
      {errorsText("best path", result.best.counts), linkLook(style, best)},
      {errorsText("oracle path", result.oracle.counts), linkLook(style, oracle)}};
  const auto isShared = [&](std::size_t link) { return ofOracle.count(link) != 0; };
  if (std::any_of(ofBest.begin(), ofBest.end(), isShared))
    legend.push_back({"both", linkLook(style, both)});
  return legend;
}

/// Marks the best path by the scores and the one that is nearest to the options' reference.
std::string compareWith(const DrawingOptions& options, WordLattice lattice,
                        const std::vector<double>& scores, const DrawingStyle& style,
                        DrawingContent& content) {
  for (std::size_t i = 0; i < scores.size(); ++i) lattice.links[i].total = scores[i];
  OracleResult result;
  std::string error =
      compareWithReference(lattice, wordsIn(*options.reference), options.matching, result);
  if (!error.empty()) return error;
  content.marks.best.emplace().links = result.best.links;
  content.marks.oracle.emplace().links = result.oracle.links;
  content.legend = legendFor(result, style);
  return "";
}

}  // namespace

std::string findContent(const WordLattice& lattice, const DrawingOptions& options,
                        const DrawingStyle& style, DrawingContent& content) {
  Graph graph;
  if (std::string error = viewerGraph(lattice, graph); !error.empty()) return error;
  const std::string& scoreName = options.scoreName.empty() ? kTotalName : options.scoreName;
  const auto scores = scoresNamed(lattice, scoreName);
  if (!scores) return noSuchScore(lattice, scoreName);
  std::string error = chooseLabels(graph, options.labelField);
  if (error.empty()) error = chooseMarks(lattice, options, *scores, content.marks);
  if (error.empty() && options.reference)
    error = compareWith(options, lattice, *scores, style, content);
  if (error.empty()) content.labels = labelsOf(graph, scoreName, *scores);
  return error;
}

}  // namespace quorbel
