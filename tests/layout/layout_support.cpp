#include "layout_support.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "layout/dot_writer.h"
#include "layout/layout_reader.h"

namespace quorbel {

Graph latticeOf(int nodeCount) {
  currentScoreName = "cost";
  Graph graph;
  graph.adjacency = std::make_unique<LatticeAdjacency>(nodeCount, 0, nodeCount - 1);
  graph.nodes.assign(graph.adjacency->outgoing.size(), Node());
  for (int i = 0; i < nodeCount; ++i)
    graph.nodes[static_cast<std::size_t>(i)].time = nodeCount < 2 ? 1.0 : i / (nodeCount - 1.0);
  return graph;
}

Graph diamond() {
  Graph graph = latticeOf(4);
  link(graph, 0, 1, "a", 1, 0);
  link(graph, 0, 2, "b", 2, 1);
  link(graph, 1, 3, "c", 1, 2);
  link(graph, 2, 3, "d", 3, 3);
  return graph;
}

std::string wordOf(const std::string& text) {
  std::string word = "<w text=\"";
  for (const char c : text) {
    switch (c) {
      case '&':
        word += "&amp;";
        break;
      case '<':
        word += "&lt;";
        break;
      case '"':
        word += "&quot;";
        break;
      case '\n':
        word += "&#10;";
        break;
      default:
        word += c;
    }
  }
  return word + "\"/>";
}

void link(Graph& graph, int start, int end, const std::string& text, double cost, int id) {
  addEdge(*graph.adjacency, start, end, {{"cost", cost}}, wordOf(text), id);
}

void select(Graph& graph, int linkId) {
  for (int start = 0; start < graph.adjacency->nodeCount; ++start) {
    for (const Edge& edge : graph.adjacency->outgoing[static_cast<std::size_t>(start)]) {
      if (edge.linkId != linkId) continue;
      LayoutItem item;
      item.linkId = linkId;
      item.startNode = start;
      item.endNode = edge.endNode;
      item.score = edge.scores.at("cost");
      return setSelectedEdge(graph, true, item);
    }
  }
  throw std::invalid_argument("the lattice has no such link");
}

std::string descriptionOf(Graph& graph) {
  std::ostringstream stream;
  writeDescription(graph, stream);
  return stream.str();
}

std::string fixture(const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(LAYOUT_FIXTURES) / name;
  if (!std::filesystem::exists(path)) throw std::invalid_argument("no fixture " + path.string());
  return textOf(path);
}

std::string asText(const LayoutItem& item) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << (item.isNode ? "node" : "edge") << " id " << item.linkId << " at " << item.x << ','
       << item.y << " size " << item.width << 'x' << item.height << " index " << item.nodeIndex
       << " from " << item.startNode << " to " << item.endNode << " time " << item.time
       << " label [" << item.label << "] word [" << item.word << "] score " << item.score << '\n';
  return text.str();
}

std::string reading(Graph& graph, const std::string& layout) {
  std::vector<LayoutItem> items;
  std::istringstream stream(layout);
  PrintedText printed;
  bool threw = false;
  try {
    readDotLayout(graph, items, stream);
  } catch (const std::out_of_range&) {
    threw = true;
  }
  std::string text;
  for (const LayoutItem& item : items) text += asText(item);
  text += "box " + std::to_string(graph.layoutWidth) + 'x' + std::to_string(graph.layoutHeight);
  text += '\n' + printed.take();
  return threw ? text + "out of range\n" : text;
}

std::string readItems(int nodeCount, const std::string& layout) {
  Graph graph = latticeOf(nodeCount);
  const std::string text = reading(graph, layout);
  const std::string noBox = "box 0x0\n";
  const std::size_t box = text.find(noBox);
  return box == std::string::npos ? text : text.substr(0, box) + text.substr(box + noBox.size());
}

EnvironmentVariable::EnvironmentVariable(const char* name, const std::string& value)
    : m_Name(name) {
  if (const char* before = std::getenv(name)) m_Before = before;
  ::setenv(name, value.c_str(), 1);
}

EnvironmentVariable::~EnvironmentVariable() { ::setenv(m_Name, m_Before.c_str(), 1); }

StandInDot::Folder::Folder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "quorbel-dot-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the stand-in");
  m_Path = pattern;
}

StandInDot::Folder::~Folder() { std::filesystem::remove_all(m_Path); }

StandInDot::StandInDot(int exitStatus)
    : m_SearchPath("PATH", m_Folder.path().string() + ":" + std::getenv("PATH")) {
  const std::filesystem::path script = m_Folder.path() / "dot";
  const std::string log = "'" + (m_Folder.path() / "runs").string() + "'";
  std::ofstream(script) << "#!/bin/sh\n"
                        << "for argument; do printf '[%s]' \"$argument\" >> " << log << "; done\n"
                        << "echo >> " << log << "\n"
                        << "exit " << exitStatus << "\n";
  std::filesystem::permissions(script, std::filesystem::perms::owner_all);
}

}  // namespace quorbel
