#include "formats/slf_checks.h"

#include <algorithm>

namespace quorbel {
namespace {

std::string atLine(int line, const std::string& text) {
  return "line " + std::to_string(line) + ": " + text;
}

std::string nodeRange(const SlfHeader& header) {
  return "nodes are 0 to " + std::to_string(*header.nodeCount - 1);
}

std::string checkNode(const SlfHeader& header, int node, int line, const std::string& what) {
  if (node < *header.nodeCount) return "";
  return atLine(line, what + " node " + std::to_string(node) + ", but " + nodeRange(header));
}

/// Each node must be there. Memory for them is taken only for as many as there are lines.
std::string placeNodes(SlfFile& file, const std::vector<SlfRecord>& nodes, int lastLine) {
  const std::size_t count = static_cast<std::size_t>(*file.header.nodeCount);
  file.nodes.assign(std::min(count, nodes.size() + 1), SlfRecord());
  for (const SlfRecord& node : nodes) {
    if (node.id >= *file.header.nodeCount)
      return atLine(node.line,
                    "node " + std::to_string(node.id) + ", but " + nodeRange(file.header));
    const std::size_t index = static_cast<std::size_t>(node.id);
    if (index >= file.nodes.size()) continue;  // one of lower index is missing
    file.nodes[index] = node;
  }
  for (std::size_t index = 0; index < file.nodes.size(); ++index)
    if (file.nodes[index].line == 0)
      return atLine(lastLine, "the file ends without node " + std::to_string(index) + " (" +
                                  nodeRange(file.header) + ")");
  return "";
}

std::string checkLinks(const SlfFile& file) {
  const SlfHeader& header = file.header;
  for (const SlfRecord& link : file.links) {
    const std::string name = "link " + std::to_string(link.id);
    std::string error = checkNode(header, link.start, link.line, name + " leaves");
    if (error.empty()) error = checkNode(header, link.end, link.line, name + " enters");
    if (!error.empty()) return error;
  }
  if (!header.linkCount || static_cast<std::size_t>(*header.linkCount) == file.links.size())
    return "";
  return atLine(header.linkCountLine,
                "the number of links is given as " + std::to_string(*header.linkCount) +
                    ", but the file has " + std::to_string(file.links.size()));
}

}  // namespace

std::string bringTogether(SlfFile& file, const std::vector<SlfRecord>& nodes, int lastLine) {
  const SlfHeader& header = file.header;
  if (!header.nodeCount)
    return atLine(std::max(lastLine, 1),
                  "the file ends without the number of nodes (N= or NODES=)");
  if (*header.nodeCount == 0) return atLine(header.nodeCountLine, "a lattice without nodes (N=0)");
  std::string error = placeNodes(file, nodes, lastLine);
  if (error.empty()) error = checkLinks(file);
  if (error.empty() && header.start)
    error = checkNode(header, *header.start, header.startLine, "start=");
  if (error.empty() && header.end) error = checkNode(header, *header.end, header.endLine, "end=");
  return error;
}

}  // namespace quorbel
