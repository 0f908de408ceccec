// Labels in the viewer's description, mended: whatever a label holds, Graphviz reads one link with
// the colour, the comment and that label, and no other attribute.

#include <cgraph.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "graphviz/label_mending.h"
#include "quiet.h"

namespace quorbel {
namespace {

void claim(bool condition) {
  if (!condition) std::abort();
}

/// What Graphviz has in memory for a mended label: bare quotes. Line ends are left out, some of
/// which it loses before a quote.
std::string inMemory(const std::string& label) {
  std::string text;
  for (std::size_t at = 0; at < label.size(); ++at) {
    const char c = label[at];
    const char next = at + 1 < label.size() ? label[at + 1] : '\\';
    const bool isEscape = c == '\\' && (next == '"' || next == '\n');
    if (!isEscape && c != '\n') text += c;
    if (c == '\\' && next == '\\') {
      text += next;
      ++at;
    }
  }
  return text;
}

std::string withoutLineEnds(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
  return text;
}

void mend(const std::string& label) {
  const bool mayPassForLinks = label.find("\"];\n") != std::string::npos;
  const bool hasZero = label.find('\0') != std::string::npos;
  const bool isBrokenByOthers = label.find('\r') != std::string::npos;
  if (mayPassForLinks || hasZero || isBrokenByOthers) return;
  const auto mended =
      mendedDescription("digraph G {\nrankdir=LR;\n0 -> 1 [ color=red, fontcolor=red,label = \"" +
                        label + "\", comment=\"ID = 5\"];\n}\n");
  claim(mended.has_value());
  const std::unique_ptr<Agraph_t, int (*)(Agraph_t*)> graph(agmemread(mended->c_str()), agclose);
  claim(graph && agnnodes(graph.get()) == 2 && agnedges(graph.get()) == 1);
  Agedge_t* const edge = agfstout(graph.get(), agfstnode(graph.get()));
  int attributes = 0;
  for (Agsym_t* name = nullptr; (name = agnxtattr(graph.get(), AGEDGE, name));) ++attributes;
  claim(attributes == 4);
  char color[] = "color";
  char comment[] = "comment";
  char text[] = "label";
  claim(std::string(agget(edge, color)) == "red" && std::string(agget(edge, comment)) == "ID = 5");
  claim(withoutLineEnds(agget(edge, text)) == inMemory(label));
}

}  // namespace
}  // namespace quorbel

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  agseterr(AGMAX);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  quorbel::mend(text);
  quorbel::mendedDescription(text);
  return 0;
}
