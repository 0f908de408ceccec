#include "drawing/description.h"

#include "words/word_text.h"

namespace quorbel {
namespace {

using LinkColours = std::vector<const char*>;

void addNode(std::string& text, int node, const char* style) {
  text += std::to_string(node) + " [" + style + "];\n";
}

/// The nodes between start and end, from the end on: the order in which `dot` first meets nodes
/// takes part in where it puts them, and this is the viewer's.
void addInnerNodes(std::string& text, const WordLattice& lattice, const LatticePath& path,
                   const char* style) {
  for (std::size_t i = path.links.size(); i > 1; --i)
    addNode(text, lattice.links[path.links[i - 1]].start, style);
}

/// The colours of each link, of which the last that is given counts.
LinkColours coloursOf(const WordLattice& lattice, const DrawingMarks& marks) {
  LinkColours colours(lattice.links.size(), "color=black");
  const auto paint = [&](const std::optional<LatticePath>& path, const char* colour) {
    if (!path) return;
    for (const std::size_t link : path->links) colours[link] = colour;
  };
  paint(marks.throughLink, "color=cyan, fontcolor=cyan");
  if (marks.chosenLink) colours[*marks.chosenLink] = "color=red, fontcolor=red";
  paint(marks.best, "color=blue, fontcolor=blue");
  return colours;
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
                          const DrawingMarks& marks) {
  std::string text = "digraph G {\nrankdir=LR;\n";
  addNode(text, 0, "shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey");
  addNode(text, static_cast<int>(lattice.nodes.size()) - 1,
          "shape=doublecircle, color=red, style=filled, fillcolor=lightgrey");
  if (marks.throughLink)
    addInnerNodes(text, lattice, *marks.throughLink,
                  "shape=doubleoctagon, color=red, style=filled, fillcolor=cyan");
  if (marks.best)
    addInnerNodes(text, lattice, *marks.best,
                  "shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow");
  const LinkColours colours = coloursOf(lattice, marks);
  for (std::size_t i = 0; i < lattice.links.size(); ++i) {
    const WordLink& link = lattice.links[i];
    text += std::to_string(link.start) + " -> " + std::to_string(link.end) + " [" + colours[i] +
            ", label=\"" + escapedLabel(labels[i]) + "\"];\n";
  }
  return text + "}\n";
}

}  // namespace quorbel
