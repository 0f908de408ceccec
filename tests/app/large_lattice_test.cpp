#include <fstream>
#include <string>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

constexpr int kNodes = 50000;
constexpr int kLinks = 1000000;

int startOf(int link) { return link % (kNodes - 1); }
int endOf(int link) { return startOf(link) + 1; }

std::string largestLattice() {
  std::string text = "N=" + std::to_string(kNodes) + " L=" + std::to_string(kLinks) + "\n";
  for (int i = 0; i < kNodes; ++i)
    text += "I=" + std::to_string(i) + " t=" + std::to_string(i) + "\n";
  for (int i = 0; i < kLinks; ++i)
    text += "J=" + std::to_string(i) + " S=" + std::to_string(startOf(i)) +
            " E=" + std::to_string(endOf(i)) + " W=<w in='w" + std::to_string(i) + "'/> a=-1\n";
  return text;
}

/// A layout of it as `dot` writes it. All labels but that of the last link lie on one spot.
void writeLayout(const std::string& path) {
  std::ofstream stream(path);
  stream << "digraph G {\n\tgraph [bb=\"0,0,800,400\"];\n";
  for (int i = 0; i < kNodes; ++i)
    stream << '\t' << i << "\t[pos=\"" << i % 800 << ",300\",width=\"0.1\",height=\"0.1\"];\n";
  for (int i = 0; i < kLinks; ++i)
    stream << '\t' << startOf(i) << " -> " << endOf(i) << "\t[label=w" << i
           << ", comment=\"ID = " << i << "\", lp=\"" << (i + 1 < kLinks ? 600 : 200)
           << ",100\"];\n";
  stream << "}\n";
}

class LargeLattice : public WindowTest {};

TEST_F(LargeLattice, OfAMillionLinksIsShownPointedAtAndClosed) {
  writeLayout("layout");
  const auto picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, 800, 400);
  picture->fill(0xffffffff);
  picture->save("picture.png", "png");
  replaceDot("if [ $1 = -Tpng ]; then cp picture.png $3; else cp layout $3; fi");

  TestWindow& w = openLattice(largestLattice());
  EXPECT_EQ(dialogs, std::vector<std::string>());
  EXPECT_EQ(w.m_EdgeLayouts.size(), static_cast<std::size_t>(kNodes + kLinks));
  EXPECT_EQ(edgeOf(w, kLinks - 1).word, "<w in='w999999'/>");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 49999");

  const auto [x, y] = labelCentre(w, kLinks - 1);
  movePointer(w.m_GraphArea, x, y);
  EXPECT_TRUE(waitFor([&] { return w.m_PointerX == x && w.m_PointerY == y; }));
  doubleClick(w.m_GraphArea, x, y);
  EXPECT_TRUE(waitFor([&] { return !w.m_SelectedEdges.empty(); }));
  ASSERT_EQ(w.m_SelectedEdges.size(), 1u);
  EXPECT_EQ(w.m_SelectedEdges.front().linkId, kLinks - 1);

  w.on_close();
  EXPECT_TRUE(w.m_EdgeLayouts.empty());
  replaceDot("exec \"$REAL_DOT\" \"$@\"");
  openLattice(kTwoWords, "next.lat");
  EXPECT_EQ(edgeOf(w, 1).label, "morning / Morgen");
}

}  // namespace
}  // namespace quorbel
