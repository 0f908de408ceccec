// The description of a drawing: whatever a label holds, what is read back is the link, its colour
// and, character by character, the label.

#include <cstdlib>

#include "drawing/description.h"
#include "layout/dot_record.h"
#include "layout/label_lines.h"
#include "quiet.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

void insist(bool condition) {
  if (!condition) std::abort();
}

void describe(const std::string& label) {
  WordLattice lattice;
  lattice.nodes.resize(2);
  lattice.links.resize(1);
  lattice.links[0].end = 1;
  const std::string description = descriptionOf(lattice, {label}, DrawingMarks());
  std::size_t pos = description.find("\n0 -> 1 [");
  const DotRecord link = takeDotRecord(description, pos);
  insist(description.substr(pos) == "];\n}\n");
  insist(link.kind == DotRecord::Kind::Edge && link.name == "0" && link.head == "1");
  insist(link.attributes.size() == 2 && link.attributes.at("color") == "black");
  const auto lines = labelLines(link.attributes.at("label"), {});
  insist(lines.size() == (label.empty() ? 0 : 1));
  if (!label.empty()) insist(lines[0].text == withControlPictures(inUtf8(label)));
}

}  // namespace
}  // namespace quorbel

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  quorbel::beQuiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quorbel::describe(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
