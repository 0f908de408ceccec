// The two forms that `dot` has written: any statements, written in both, give the same items.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "layout/layout_reader.h"

namespace {

constexpr int kNodes = 5;
constexpr int kMostStatements = 40;

/// A statement as `dot` knows it: values without quotes.
struct Statement {
  enum class Kind { Box, Node, Edge, NodeDefaults } kind = Kind::Node;
  int node = 0;
  int target = 0;
  std::string place;  ///< of a box "bb", of a node "pos", of an edge "lp"
  std::string width, height;
  std::optional<std::string> label, comment;
  bool hasPlace = true;
  bool isWrapped = false;  ///< today's form breaks its label with a backslash
};

std::string number(FuzzedDataProvider& data) {
  std::string text = std::to_string(data.ConsumeIntegralInRange(-2000, 400'000));
  switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
      return text + "." + std::to_string(data.ConsumeIntegralInRange(0, 999));
    case 1:
      return std::to_string(data.ConsumeIntegralInRange(1, 9)) + "." +
             std::to_string(data.ConsumeIntegralInRange(0, 9999)) +
             (data.ConsumeBool() ? "e+05" : "e-05");
    default:
      return text;
  }
}

std::string list(FuzzedDataProvider& data, int count) {
  std::string text = number(data);
  while (--count > 0) text += "," + number(data);
  return text;
}

/// A size in inches, with the decimal comma of some locales too.
std::string inches(FuzzedDataProvider& data) {
  return std::to_string(data.ConsumeIntegralInRange(0, 99)) + (data.ConsumeBool() ? "." : ",") +
         std::to_string(data.ConsumeIntegralInRange(0, 99'999));
}

/// A text that stands for itself in both forms: the one-line form has neither escaped quotes nor a
/// way to break a line.
std::string plainText(FuzzedDataProvider& data) {
  std::string text;
  for (const char c : data.ConsumeRandomLengthString(60))
    if (c != '"' && c != '\\' && c != '\n') text += c;
  return text;
}

Statement statementFrom(FuzzedDataProvider& data) {
  Statement statement;
  statement.kind =
      data.PickValueInArray({Statement::Kind::Box, Statement::Kind::Node, Statement::Kind::Edge,
                             Statement::Kind::Edge, Statement::Kind::NodeDefaults});
  statement.node = data.ConsumeIntegralInRange(-1, kNodes + 1);
  statement.target = data.ConsumeIntegralInRange(-1, kNodes + 1);
  statement.place = list(data, statement.kind == Statement::Kind::Box ? 4 : 2);
  statement.width = inches(data);
  statement.height = inches(data);
  if (data.ConsumeIntegralInRange(0, 9)) statement.label = plainText(data);
  if (data.ConsumeIntegralInRange(0, 9))
    statement.comment = "ID = " + std::to_string(data.ConsumeIntegralInRange(0, kNodes));
  statement.hasPlace = statement.kind != Statement::Kind::Edge || data.ConsumeIntegralInRange(0, 9);
  statement.isWrapped = data.ConsumeBool();
  return statement;
}

std::string quoted(const std::string& name, const std::string& value) {
  return name + "=\"" + value + '"';
}

std::string joined(const std::vector<std::string>& attributes, const std::string& between) {
  std::string text;
  for (const std::string& attribute : attributes) text += (text.empty() ? "" : between) + attribute;
  return text;
}

std::string subject(const Statement& statement) {
  const std::string node = std::to_string(statement.node);
  switch (statement.kind) {
    case Statement::Kind::Box:
      return "graph";
    case Statement::Kind::NodeDefaults:
      return "node";
    case Statement::Kind::Edge:
      return node + " -> " + std::to_string(statement.target);
    default:
      return node;
  }
}

std::string inOneLineForm(const Statement& statement) {
  std::vector<std::string> attributes;
  switch (statement.kind) {
    case Statement::Kind::Box:
      attributes = {quoted("bb", statement.place)};
      break;
    case Statement::Kind::NodeDefaults:
      attributes = {quoted("label", "\\N"), quoted("pos", statement.place)};
      break;
    case Statement::Kind::Node:
      attributes = {quoted("pos", statement.place), quoted("width", statement.width),
                    quoted("height", statement.height)};
      break;
    case Statement::Kind::Edge:
      if (statement.label) attributes.push_back(quoted("label", *statement.label));
      if (statement.comment) attributes.push_back(quoted("comment", *statement.comment));
      attributes.push_back(quoted("pos", "e,1,2 3,4 5,6 7,8 9,10"));
      if (statement.hasPlace) attributes.push_back(quoted("lp", statement.place));
      break;
  }
  return "\t" + subject(statement) + " [" + joined(attributes, ", ") + "];\n";
}

std::string inTodaysForm(const Statement& statement) {
  std::vector<std::string> attributes;
  switch (statement.kind) {
    case Statement::Kind::Box:
      return "\tgraph [" + quoted("bb", statement.place) + ",\n\t\trankdir=LR\n\t];\n";
    case Statement::Kind::NodeDefaults:
      return "\tnode [" + quoted("label", "\\N") + ",\n\t\t" + quoted("pos", statement.place) +
             "\n\t];\n";
    case Statement::Kind::Node:
      attributes = {quoted("height", statement.height), quoted("pos", statement.place),
                    quoted("width", statement.width)};
      break;
    case Statement::Kind::Edge:
      attributes = {"color=black"};
      if (statement.comment) attributes.push_back(quoted("comment", *statement.comment));
      if (statement.label) {
        std::string label = *statement.label;
        if (statement.isWrapped) label.insert(label.size() / 2, "\\\n");
        attributes.push_back(quoted("label", label));
      }
      if (statement.hasPlace) attributes.push_back(quoted("lp", statement.place));
      attributes.push_back(quoted("pos", "e,1,2 3,4 5,6 7,8 9,10"));
      break;
  }
  return "\t" + subject(statement) + "\t[" + joined(attributes, ",\n\t\t") + "];\n";
}

/// The items, the bounding box and what is printed, a line each.
std::string reading(const std::string& layout) {
  quorbel::currentScoreName = "a";
  quorbel::Graph graph;
  graph.adjacency = std::make_unique<quorbel::LatticeAdjacency>(kNodes, 0, kNodes - 1);
  graph.nodes.resize(graph.adjacency->outgoing.size());
  for (int node = 0; node + 1 < kNodes; ++node) {
    graph.nodes[static_cast<std::size_t>(node)].time = node / 4.0;
    quorbel::addEdge(*graph.adjacency, node, node + 1, {{"a", node + 0.5}}, "<w in='yes'/>", node);
  }
  std::vector<quorbel::LayoutItem> items;
  std::istringstream stream(layout);
  std::ostringstream text;
  std::streambuf* const output = std::cout.rdbuf(text.rdbuf());
  quorbel::readDotLayout(graph, items, stream);
  std::cout.rdbuf(output);
  for (const quorbel::LayoutItem& item : items) {
    text << (item.isNode ? "node " : "edge ") << item.linkId << " at " << item.x << ',' << item.y
         << " size " << item.width << 'x' << item.height << " nodes " << item.nodeIndex << ' '
         << item.startNode << ' ' << item.endNode << " time " << item.time << " label ["
         << item.label << "] word [" << item.word << "] score " << item.score << '\n';
  }
  text << "box " << graph.layoutWidth << 'x' << graph.layoutHeight << '\n';
  return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  std::string oneLine = "digraph G {\n";
  std::string todays = oneLine;
  for (int count = 0; count < kMostStatements && data.remaining_bytes() > 0; ++count) {
    const Statement statement = statementFrom(data);
    oneLine += inOneLineForm(statement);
    todays += inTodaysForm(statement);
  }
  const std::string expected = reading(oneLine + "}\n");
  const std::string items = reading(todays + "}\n");
  if (items == expected) return 0;
  std::fprintf(stderr, "%sgives\n%sbut\n%sgives\n%s", oneLine.c_str(), expected.c_str(),
               todays.c_str(), items.c_str());
  std::abort();
}
