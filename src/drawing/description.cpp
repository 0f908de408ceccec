#include "drawing/description.h"

#include "words/word_text.h"

namespace quorbel {
namespace {

void addNode(std::string& text, int node, const std::string& look) {
  text += std::to_string(node) + " [" + look + "];\n";
}

/// The nodes between start and end, from the end on: the order in which `dot` first meets nodes
/// takes part in where it puts them, and this is the viewer's.
void addInnerNodes(std::string& text, const WordLattice& lattice, const LatticePath& path,
                   const std::string& look) {
  for (std::size_t i = path.links.size(); i > 1; --i)
    addNode(text, lattice.links[path.links[i - 1]].start, look);
}

/// What each link is marked as.
std::vector<Mark> markedLinks(const WordLattice& lattice, const DrawingMarks& marks) {
  std::vector<Mark> marked(lattice.links.size());
  const auto mark = [&](const std::optional<LatticePath>& path, bool Mark::*what) {
    if (!path) return;
    for (const std::size_t link : path->links) marked[link].*what = true;
  };
  mark(marks.throughLink, &Mark::isThrough);
  if (marks.chosenLink) marked[*marks.chosenLink].isChosen = true;
  mark(marks.oracle, &Mark::isOracle);
  mark(marks.best, &Mark::isBest);
  return marked;
}

}  // namespace

std::string escapedLabel(const std::string& text) {
  constexpr std::size_t kLineBytes = 8192;  // `dot` refuses a longer stretch than twice that
  std::string escaped;
  std::size_t lineBegin = 0;
  for (const char c : withControlPictures(inUtf8(text))) {
    if (escaped.size() - lineBegin >= kLineBytes) {
      escaped += "\\\n";
      lineBegin = escaped.size();
    }
    if (c == '"' || c == '\\') escaped += '\\';
    escaped += c;
    if (c == '&') escaped += "amp;";
  }
  return escaped;
}

std::string descriptionOf(const WordLattice& lattice, const std::vector<std::string>& labels,
                          const DrawingMarks& marks, const DrawingStyle& style) {
  std::string text = "digraph G {\nrankdir=LR;\n" + styleStatements(style);
  addNode(text, 0, startLook(style));
  addNode(text, static_cast<int>(lattice.nodes.size()) - 1, endLook(style));
  // Of several statements about a node the last counts.
  const auto addNodesOf = [&](const std::optional<LatticePath>& path, bool Mark::*what) {
    Mark mark;
    mark.*what = true;
    if (path) addInnerNodes(text, lattice, *path, nodeLook(style, mark));
  };
  addNodesOf(marks.throughLink, &Mark::isThrough);
  addNodesOf(marks.oracle, &Mark::isOracle);
  addNodesOf(marks.best, &Mark::isBest);
  const std::vector<Mark> marked = markedLinks(lattice, marks);
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const WordLink& link = lattice.links[i];
    text += std::to_string(link.start) + " -> " + std::to_string(link.end) + " [" +
            linkLook(style, marked[i]) + ", label=\"" + escapedLabel(labels[i]) + "\"];\n";
  }
  return text + "}\n";
}

}  // namespace quorbel
