#include <sys/fsuid.h>
#include <sys/stat.h>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

class Opening : public WindowTest {
 protected:
  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }

  /// Expects the window to say `message` for the file and to have nothing open.
  void expectRefused(const std::string& name, const std::string& message) {
    SCOPED_TRACE(name);
    dialogs.clear();
    window->open_lattice(window->build_sibling_menu(pathOf(name)));
    EXPECT_EQ(dialogs, Texts{message});
    EXPECT_FALSE(window->m_FileOpened);
    EXPECT_EQ(statusOf(*window), "No file opened");
    EXPECT_EQ(window->get_title(), "Quorbel");
    EXPECT_FALSE(window->m_refGraphImage);
  }
};

TEST_F(Opening, ShowsTheLatticesPathAndDrawing) {
  const TestWindow& w = openLattice(kTwoWords);
  EXPECT_TRUE(w.m_FileOpened);
  EXPECT_EQ(statusOf(*window), "graph : " + pathOf("test.lat"));
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("test.lat"));
  EXPECT_EQ(w.m_EdgeLayouts.size(), 5u);
  EXPECT_TRUE(w.m_refShownImage);
  EXPECT_EQ(dialogs, Texts());
}

TEST_F(Opening, LooksInTheCurrentFolderOnly) {
  std::filesystem::create_directory("sub");
  folder.write("a.lat", kTwoWords);
  folder.write("sub/a.lat", kTwoWays);
  TestWindow& w = showWindow();
  w.m_CurrentDir = pathOf("sub");
  w.open_lattice("a.lat");
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("sub/a.lat"));
  EXPECT_EQ(w.m_Graph.adjacency->nodeCount, 4);
}

TEST_F(Opening, LabelsLinksByInAndOut) {
  TestWindow& w = openLattice(kTwoWords);
  w.m_Graph.labelByValue = true;
  w.m_Graph.labelBySelectedXml = true;
  w.m_Graph.fieldsByName.clear();
  openLattice(kTwoWords, "other.lat");
  EXPECT_FALSE(w.m_Graph.labelByValue);
  EXPECT_FALSE(w.m_Graph.labelBySelectedXml);
  ASSERT_EQ(w.m_Graph.fieldsByName.size(), 2u);
  EXPECT_EQ(w.m_Graph.fieldsByName[0].path, IndexPath{1});
  EXPECT_EQ(w.m_Graph.fieldsByName[0].attribute, "in");
  EXPECT_EQ(w.m_Graph.fieldsByName[1].path, IndexPath{1});
  EXPECT_EQ(w.m_Graph.fieldsByName[1].attribute, "out");
  EXPECT_EQ(edgeOf(w, 0).label, "good / gut");
}

TEST_F(Opening, FitsTheDrawingToTheCanvas) {
  std::string chain = "N=9 L=8\n";
  for (int i = 0; i < 9; ++i) chain += "I=" + std::to_string(i) + " t=" + std::to_string(i) + "\n";
  for (int i = 0; i < 8; ++i)
    chain += "J=" + std::to_string(i) + " S=" + std::to_string(i) + " E=" + std::to_string(i + 1) +
             " W=<w in='word'/> a=-1\n";
  TestWindow& w = openLattice(chain);
  const int room = w.m_GraphScroll.get_width() - 30;
  const int width = w.m_refGraphImage->get_width();
  ASSERT_LT(room, width);
  EXPECT_EQ(w.m_Zoom, static_cast<float>(room) / static_cast<float>(width));
  EXPECT_NEAR(w.m_refShownImage->get_width(), room, 1);
}

TEST_F(Opening, DrawsOnce) {
  replaceDot("echo \"$@\" >> calls; exec \"$REAL_DOT\" \"$@\"");
  openLattice(kTwoWords);
  EXPECT_EQ(linesOf("calls"), (Texts{"-Tpng -o graph.png quorbel_graph.dot",
                                     "-Tdot -o graph.dot quorbel_graph.dot"}));
}

TEST_F(Opening, NamesTheLatticeOnceItIsDrawn) {
  TestWindow& w = showWindow();
  std::string title;
  std::string statusBelow;
  duringStage("Loading graph image...", [&] {
    title = w.get_title();
    w.m_Statusbar.pop(TestWindow::kRunContext);
    statusBelow = statusOf(w);
    w.m_Statusbar.push("put back", TestWindow::kRunContext);
  });
  openLattice(kTwoWords);
  EXPECT_EQ(title, "Quorbel");
  EXPECT_EQ(statusBelow, "No file opened");
}

TEST_F(Opening, SecondLatticeClosesTheFirst) {
  TestWindow& w = openLattice(kTwoWays, "first.lat");
  activate("DisplayShortestPath");
  const auto [x, y] = labelCentre(w, 1);
  doubleClick(w.m_GraphArea, x, y);
  ASSERT_EQ(w.m_SelectedEdges.size(), 1u);

  std::string titleWhileDrawn;
  bool hadImage = true;
  duringStage("Creating graph...", [&] {
    titleWhileDrawn = w.get_title();
    hadImage = static_cast<bool>(w.m_refShownImage);
  });
  openLattice(kTwoWords, "second.lat");
  EXPECT_EQ(titleWhileDrawn, "Quorbel");
  EXPECT_FALSE(hadImage);
  EXPECT_FALSE(w.m_ShowPath);
  EXPECT_TRUE(w.m_SelectedEdges.empty());
  EXPECT_EQ(w.get_title(), "Quorbel - " + pathOf("second.lat"));

  EXPECT_EQ(statusOf(w), "graph : " + pathOf("second.lat"));
  w.m_Statusbar.pop(TestWindow::kFileContext);
  EXPECT_EQ(statusOf(w), "No file opened");
  w.m_Statusbar.pop(TestWindow::kFileContext);
  EXPECT_EQ(statusOf(w), "");
}

TEST_F(Opening, SaysWhatTheReaderSays) {
  showWindow();
  const std::string head = "N=2 L=1\nI=0 t=0\nI=1 t=1\n";
  const std::vector<std::tuple<std::string, std::string, std::string>> refused = {
      {"no-equals.lat", head + "J=0 S\n", ": syntax error line 4"},
      {"plain-word.lat", head + "J=0 S=0 E=1 W=word\n", ": syntax error line 4"},
      {"open-quote.lat", head + "\nJ=0 S=0 E=1 W=\"word\n", ": syntax error line 5"},
      {"open-xml.lat", head + "J=0 S=0 E=1 W=<w in='a'\n", ": syntax error line 4"},
      {"node-outside.lat", head + "I=2 t=2\n", ": syntax error line 4"},
      {"no-count.lat", "I=0 t=0\n", ": syntax error line 1"},
      {"empty.lat", "", ": syntax error line 1"},
  };
  for (const auto& [name, text, message] : refused) {
    folder.write(name, text);
    expectRefused(name, pathOf(name) + message);
  }
  for (const char* count : {"0", "-1", "50001"}) {
    folder.write("count.lat", std::string("N=") + count + "\n");
    expectRefused("count.lat", std::string("Bad number of node in HTK file : ") + count);
  }
}

TEST_F(Opening, RefusesWhatCannotBeRead) {
  showWindow();
  const std::string message = " : file not found or permission denied";
  expectRefused("missing.lat", pathOf("missing.lat") + message);
  std::filesystem::create_directory("folder.lat");
  expectRefused("folder.lat", pathOf("folder.lat") + message);
  ASSERT_EQ(mkfifo("pipe.lat", S_IRWXU), 0);
  expectRefused("pipe.lat", pathOf("pipe.lat") + message);
}

TEST_F(Opening, RefusesAFileWithoutPermission) {
  constexpr uid_t kNobody = 65534;
  showWindow();
  folder.write("secret.lat", kTwoWords);
  std::filesystem::permissions(folder.path() / "secret.lat", std::filesystem::perms::none);
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  const int before = setfsuid(kNobody);  // without an effect unless the test runs as root
  expectRefused("secret.lat", pathOf("secret.lat") + " : file not found or permission denied");
  setfsuid(static_cast<uid_t>(before));
}

TEST_F(Opening, RefusedLatticeClosesTheOneBefore) {
  TestWindow& w = openLattice(kTwoWays);
  activate("DisplayShortestPath");
  folder.write("bad.lat", "N=2\nnonsense\n");
  expectRefused("bad.lat", pathOf("bad.lat") + ": syntax error line 2");
  EXPECT_FALSE(w.m_ShowPath);
  EXPECT_TRUE(w.m_EdgeLayouts.empty());
}

TEST_F(Opening, AfterARefusedLatticeTheNextOneOpens) {
  showWindow();
  expectRefused("missing.lat", pathOf("missing.lat") + " : file not found or permission denied");
  const TestWindow& w = openLattice(kTwoWords);
  EXPECT_TRUE(w.m_FileOpened);
  EXPECT_EQ(statusOf(*window), "graph : " + pathOf("test.lat"));
}

TEST_F(Opening, RefusedLatticeStillFillsTheMenuOfSiblings) {
  folder.write("bad.lat", "");
  folder.write("bad.txt", "");
  const TestWindow& w = showWindow();
  expectRefused("bad.lat", pathOf("bad.lat") + ": syntax error line 1");
  EXPECT_EQ(w.m_CurrentDir, folder.path());
  EXPECT_EQ(window->m_SiblingMenu.items().size(), 2u);
}

}  // namespace
}  // namespace quorbel
