#include "app/lattices.h"
#include "app/window_fixture.h"
#include "lattice/process_locale.h"

namespace quorbel {
namespace {

/// The window in a process that writes numbers in the user's way: 0,5 and 1.000.
class LocaleWindow : public WindowTest, public ::testing::WithParamInterface<LocaleChoice> {
 protected:
  /// A chain of so many nodes, with a fractional cost on each link.
  static std::string chain(int nodes) {
    std::string text = "N=" + std::to_string(nodes) + " L=" + std::to_string(nodes - 1) + "\n";
    for (int i = 0; i < nodes; ++i) {
      const std::string number = std::to_string(i);
      text += "I=" + number + " t=" + number + ".5\n";
    }
    for (int i = 0; i + 1 < nodes; ++i) {
      const std::string number = std::to_string(i);
      text += "J=" + number + " S=" + number + " E=" + std::to_string(i + 1) + " W=<w in='w" +
              number + "'/> a=-0.5\n";
    }
    return text;
  }

  /// A stand-in that takes no time over large lattices: any picture, and the nodes in a row.
  void replaceDotByQuickOne() {
    replaceDot(
        "if [ \"$1\" = -Tpng ]; then cp images/logo_quor.png \"$3\"; exit; fi\n"
        "awk '/ -> / { n = $3 > n ? $3 : n; sub(/label = /, \"label=\"); edge[m++] = $0 }\n"
        "END { print \"digraph G {\\n\\tgraph [bb=\\\"0,0,\" n * 100 \",36.5\\\"];\"\n"
        "  for (i = 0; i <= n; i++) print \"\\t\" i \" [pos=\\\"\" i * 100 \".5,18\\\", \" \\\n"
        "    \"width=\\\"0.75\\\", height=\\\"0.5\\\"];\"\n"
        "  for (i = 0; i < m; i++) { sub(/\\];/, \", lp=\\\"\" i * 100 + 50 \".5,27\\\"];\", "
        "edge[i]); print \"\\t\" edge[i] }\n"
        "  print \"}\" }' quorbel_graph.dot > \"$3\"");
  }

 private:
  ProcessLocale m_Locale{GetParam()};
};

TEST_P(LocaleWindow, WritesAndReadsNumbersWithPoints) {
  TestWindow& w = openLattice(kTwoWays);
  activate("DisplayValue");
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 30.25");
  EXPECT_EQ(edgeOf(w, 2).label, "20.25");
  EXPECT_EQ(edgeOf(w, 1).score, 5.5);
  EXPECT_NE(textOf("quorbel_graph.dot").find("label = \"5.5\""), std::string::npos);
  EXPECT_EQ(w.m_NodeItems.timeOf(1, w.m_EdgeLayouts), 0.25);
}

TEST_P(LocaleWindow, DrawsMoreThanAThousandNodes) {
  constexpr int kWords = 1500;
  replaceDotByQuickOne();
  TestWindow& w = openLattice(chain(kWords));
  EXPECT_EQ(dialogs, std::vector<std::string>());
  ASSERT_EQ(w.m_EdgeLayouts.size(), 2u * kWords - 1);
  EXPECT_NE(textOf("quorbel_graph.dot")
                .find("\n1200 -> 1201 [ color=black,label = \"w1200\", "
                      "comment=\"ID = 1200\"];\n"),
            std::string::npos);
  EXPECT_EQ(w.m_EdgeLayouts[1200].nodeIndex, 1200);
  EXPECT_EQ(w.m_EdgeLayouts[1200].x, 120000);
  EXPECT_EQ(w.m_EdgeLayouts[1200].width, 60);
  EXPECT_EQ(edgeOf(w, 1498).endNode, 1499);
  EXPECT_EQ(edgeOf(w, 1498).x, 149850);
  EXPECT_EQ(w.m_Graph.layoutWidth, 149900);
  activate("DisplayShortestPath");
  EXPECT_EQ(statusOf(w), "Shortest Path : 749.5");
}

INSTANTIATE_TEST_SUITE_P(Locales, LocaleWindow, kLocales);

}  // namespace
}  // namespace quorbel
