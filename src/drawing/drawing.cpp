#include "drawing/drawing.h"

#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

#include "drawing/description.h"
#include "drawing/dot_run.h"
#include "formats/dialect_writer.h"
#include "lattice/graph.h"
#include "lattice/htk_reader.h"
#include "lattice/number_text.h"
#include "lattice/xml_fragment.h"
#include "lattice/xml_label.h"
#include "layout/dia_writer.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

const std::string kScoreLabel = "score";

/// A folder for work files that goes with this object.
class WorkFolder {
 public:
  WorkFolder() {
    const char* given = std::getenv("TMPDIR");
    const fs::path parent = given && *given ? given : "/tmp";
    std::string pattern = (parent / "quorbel-lattice-XXXXXX").string();
    if (mkdtemp(pattern.data()))
      m_Path = pattern;
    else
      m_Error = "no folder for work files in " + parent.string() + ": " + std::strerror(errno);
  }
  ~WorkFolder() {
    std::error_code ignored;
    if (!m_Path.empty()) fs::remove_all(m_Path, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  /// Why there is no folder; "" when there is.
  const std::string& error() const { return m_Error; }
  std::string file(const std::string& name) const { return (m_Path / name).string(); }

 private:
  fs::path m_Path;
  std::string m_Error;
};

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

/// Brings the lattice into the viewer's own graph, by way of the file that the viewer would open.
std::string viewerGraph(const WordLattice& lattice, const WorkFolder& folder, Graph& graph) {
  const std::string path = folder.file("lattice.lat");
  std::string text;
  std::string error = dialectText(lattice, text);
  if (error.empty()) error = writeWholeFile(path, text);
  return error.empty() ? readHtkLattice(graph, path) : error;
}

/// Makes the text that asks `dot` for the drawing.
std::string describe(const WordLattice& lattice, const DrawingOptions& options,
                     const WorkFolder& folder, std::string& description) {
  Graph graph;
  if (std::string error = viewerGraph(lattice, folder, graph); !error.empty()) return error;
  const std::string& scoreName = options.scoreName.empty() ? kTotalName : options.scoreName;
  const auto scores = scoresNamed(lattice, scoreName);
  if (!scores) return noSuchScore(lattice, scoreName);
  DrawingMarks marks;
  std::string error = chooseLabels(graph, options.labelField);
  if (error.empty()) error = chooseMarks(lattice, options, *scores, marks);
  if (error.empty()) description = descriptionOf(lattice, labelsOf(graph, scoreName), marks);
  return error;
}

/// Puts the drawing where it belongs.
std::string deliver(const std::string& drawing, const std::string& path) {
  std::string bytes;
  if (!fs::exists(drawing) || fs::file_size(drawing) == 0) return "dot made no drawing";
  std::ifstream stream(drawing, std::ios::binary);
  bytes.assign(std::istreambuf_iterator<char>(stream), {});
  return writeWholeFile(path, bytes);
}

void passOn(const std::string& logFile) {
  std::ifstream log(logFile);
  if (log.peek() != std::ifstream::traits_type::eof()) std::cerr << log.rdbuf();
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
  const WorkFolder folder;
  if (!folder.error().empty()) return folder.error();

  std::string text;
  std::string error = describe(lattice, options, folder, text);
  if (!error.empty()) return error;

  const std::string description = folder.file("lattice.dot");
  const std::string drawing = folder.file("drawing");
  const std::string layout = folder.file("layout.dot");
  const std::string log = folder.file("dot.log");
  std::ofstream stream(description);
  stream << text;
  stream.close();
  if (!stream) return "the description could not be written to the temporary folder";

  const bool isDiagram = format == "dia";  // which today's dot does not write itself
  error =
      runDot(signals, isDiagram ? "dot" : format, isDiagram ? layout : drawing, description, log);
  if (!error.empty()) return error;
  passOn(log);
  if (isDiagram && !writeDiaDiagram(layout, drawing)) return "dot made no drawing";
  return deliver(drawing, path);
}

}  // namespace quorbel
