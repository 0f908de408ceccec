#include "drawing/drawing.h"

#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

#include "drawing/description.h"
#include "drawing/dot_run.h"
#include "drawing/work_folder.h"
#include "formats/dialect_writer.h"
#include "lattice/graph.h"
#include "lattice/htk_reader.h"
#include "lattice/number_text.h"
#include "lattice/xml_fragment.h"
#include "lattice/xml_label.h"
#include "layout/dia_writer.h"
#include "layout/whole_file.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

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

/// The label of each link, in the order of the links.
std::vector<std::string> labelsOf(const Graph& graph, const std::string& scoreName) {
  std::vector<std::string> labels;
  for (const std::vector<Edge>& edges : graph.adjacency->outgoing) {
    for (const Edge& edge : edges) {
      const auto score = edge.scores.find(scoreName);
      const double cost = score == edge.scores.end() ? 0.0 : score->second;
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
  if (!error.empty() || !options.showBestPath) return error;
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

/// Makes the text that asks `dot` for the drawing.
std::string describe(const WordLattice& lattice, const DrawingOptions& options,
                     std::string& description) {
  Graph graph;
  if (std::string error = viewerGraph(lattice, graph); !error.empty()) return error;
  const std::string& scoreName = options.scoreName.empty() ? kTotalName : options.scoreName;
  const auto scores = scoresNamed(lattice, scoreName);
  if (!scores) return noSuchScore(lattice, scoreName);
  DrawingMarks marks;
  std::string error = chooseLabels(graph, options.labelField);
  if (error.empty()) error = chooseMarks(lattice, options, *scores, marks);
  if (error.empty()) description = descriptionOf(lattice, labelsOf(graph, scoreName), marks);
  return error;
}

std::string textOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void passOn(const std::string& logFile) {
  std::ifstream log(logFile);
  if (log.peek() != std::ifstream::traits_type::eof()) std::cerr << log.rdbuf();
}

/// Has `dot` draw the lattice into `bytes`; all that lies in a folder meanwhile is gone then.
std::string drawInWorkFolder(const WordLattice& lattice, const DrawingOptions& options,
                             const std::string& format, const SignalsEndDot& signals,
                             std::string& bytes) {
  std::string text;
  std::string error = describe(lattice, options, text);
  if (!error.empty()) return error;

  WorkFolder folder;
  if (!folder.error().empty()) return folder.error();
  const std::string description = folder.file("lattice.dot");
  const std::string drawing = folder.file("drawing");
  const std::string log = folder.file("dot.log");
  error = writeWholeFile(description, text);
  if (!error.empty()) return error;

  const bool isDiagram = format == "dia";  // which today's dot does not write itself
  error = runDot(signals, isDiagram ? "dot" : format, drawing, description, log);
  const std::string reason = whyFull(drawing);
  if (!error.empty()) return reason.empty() ? error : error + " (" + reason + ")";
  if (!reason.empty()) return "dot made no whole drawing in the folder for work files: " + reason;
  passOn(log);
  bytes = textOf(drawing);
  if (isDiagram) {
    const std::optional<DotDrawing> layout = readDotDrawing(bytes);
    bytes = layout ? diaDiagram(*layout) : "";
  }
  return bytes.empty() ? "dot made no drawing" : "";
}

}  // namespace

std::string drawingFormat(const std::string& path) {
  constexpr std::array<const char*, 5> kFormats = {"png", "svg", "pdf", "ps", "dia"};
  const std::string extension = fs::path(path).extension();
  const auto isFormat = [&](const char* format) { return extension == std::string(".") + format; };
  const auto* const found = std::find_if(kFormats.begin(), kFormats.end(), isFormat);
  return found == kFormats.end() ? "" : *found;
}

std::string drawLattice(const WordLattice& lattice, const DrawingOptions& options,
                        const std::string& path) {
  const std::string format = drawingFormat(path);
  if (format.empty())
    return path + ": the name must end in .png, .svg, .pdf, .ps or .dia, which says the format";
  const SignalsEndDot signals;  // for as long as there is something to tidy up
  std::string drawing;
  std::string error = drawInWorkFolder(lattice, options, format, signals, drawing);
  if (error.empty() && signals.haveCome()) error = path + ": " + std::strerror(EINTR);
  return error.empty() ? writeWholeFile(path, drawing) : error;
}

}  // namespace quorbel
