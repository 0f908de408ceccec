#include <gtk/gtk.h>

#include "app/lattices.h"
#include "app/library_faults.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

using Texts = std::vector<std::string>;

class StartUp : public WindowTest {
 protected:
  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }
};

TEST_F(StartUp, WithoutALatticeTheWindowIsIdle) {
  replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
  TestWindow& w = showWindow();
  EXPECT_EQ(w.get_title(), "Quorbel");
  EXPECT_EQ(statusOf(w), "No file opened");
  EXPECT_EQ(w.m_SiblingMenu.items().size(), 0u);
  EXPECT_FALSE(w.m_OpenButton.get_menu());
  EXPECT_FALSE(std::filesystem::exists("dot-ran"));
  EXPECT_EQ(dialogs, Texts());
  const Glib::RefPtr<Gdk::Pixbuf> canvas = pictureOf(w.m_GraphArea);
  for (int y = 0; y < canvas->get_height(); ++y)
    for (int x = 0; x < canvas->get_width(); ++x)
      ASSERT_EQ(pixel(canvas, x, y), 0xFFFFFFu) << x << ", " << y;
}

TEST_F(StartUp, WindowHasItsSize) {
  TestWindow& w = showWindow();
  EXPECT_EQ(w.get_width(), 795);
  EXPECT_EQ(w.get_height(), 550);
}

TEST_F(StartUp, DisplayActionsWithoutALatticeChangeNothing) {
  replaceDot("touch dot-ran; exec \"$REAL_DOT\" \"$@\"");
  TestWindow& w = showWindow();
  for (const char* action : {"DisplayZoomIn", "DisplayZoomOut", "DisplayZoomFit",
                             "DisplayShortestPath", "DisplayShortestPathSelected", "DisplayDefault",
                             "DisplaySelectedXML", "DisplayValue", "Scores", "FileClose"}) {
    SCOPED_TRACE(action);
    activate(action);
    EXPECT_EQ(w.m_Zoom, 1.0f);
    EXPECT_FALSE(w.m_ShowPath);
    EXPECT_FALSE(w.m_ShowPathWithEdge);
    EXPECT_FALSE(w.m_Graph.labelByValue);
    EXPECT_TRUE(w.m_Graph.fieldsByName.empty());
    EXPECT_EQ(statusOf(w), "No file opened");
    EXPECT_EQ(dialogs, Texts());
  }
  EXPECT_FALSE(std::filesystem::exists("dot-ran"));
}

TEST_F(StartUp, FirstShowOpensTheLattice) {
  const std::string path = folder.write("a.lat", kTwoWords);
  folder.write("a.txt", "");
  TestWindow& w = showWindow(path);
  EXPECT_EQ(w.get_title(), "Quorbel - " + path);
  EXPECT_EQ(statusOf(w), "graph : " + path);
  EXPECT_EQ(w.m_SiblingMenu.items().size(), 2u);
  EXPECT_EQ(w.m_CurrentDir, folder.path());
  EXPECT_EQ(w.m_StartupPath, "");
}

TEST_F(StartUp, LaterShowsOpenNothing) {
  replaceDot("echo \"$1\" >> runs; exec \"$REAL_DOT\" \"$@\"");
  TestWindow& w = showWindow(folder.write("a.lat", kTwoWords));
  ASSERT_EQ(linesOf("runs").size(), 2u);
  w.hide();
  settle();
  w.show();
  settle();
  EXPECT_EQ(linesOf("runs").size(), 2u);
  EXPECT_TRUE(w.m_FileOpened);

  w.on_close();
  w.hide();
  w.show();
  settle();
  EXPECT_FALSE(w.m_FileOpened);
  EXPECT_EQ(linesOf("runs").size(), 2u);
}

TEST_F(StartUp, ShownAgainTheWindowWorks) {
  TestWindow& w = showWindow();
  w.hide();
  EXPECT_TRUE(w.isQuitting());
  w.show();
  EXPECT_FALSE(w.isQuitting());
  openLattice(kTwoWords);
  EXPECT_TRUE(w.m_refShownImage);
}

TEST_F(StartUp, LatticeThatIsMissingIsSaid) {
  TestWindow& w = showWindow(pathOf("missing.lat"));
  EXPECT_EQ(dialogs, Texts{pathOf("missing.lat") + " : file not found or permission denied"});
  EXPECT_EQ(statusOf(w), "No file opened");
  EXPECT_EQ(w.m_StartupPath, "");
}

TEST_F(StartUp, FolderIsNoLattice) {
  std::filesystem::create_directory("folder");
  const TestWindow& w = showWindow(pathOf("folder"));
  EXPECT_EQ(dialogs, Texts{pathOf("folder") + " : file not found or permission denied"});
  EXPECT_FALSE(w.m_FileOpened);
}

TEST_F(StartUp, WithoutASoundDeviceItSaysSoAndGoesOn) {
  libraryFaults().soundDevice = true;
  PrintedText printed;
  TestWindow& w = showWindow(folder.write("a.lat", kTwoWords));
  libraryFaults().soundDevice = false;
  EXPECT_EQ(printed.take(), "openAL intialization failed. You will not be able to play sound\n");
  EXPECT_TRUE(w.m_FileOpened);
  EXPECT_FALSE(w.m_SoundLoaded);
}

TEST_F(StartUp, WithASoundDeviceItPrintsNothing) {
  PrintedText printed;
  showWindow();
  EXPECT_EQ(printed.take(), "");
}

TEST_F(StartUp, MissingIconLeavesTheConstructor) {
  std::filesystem::remove("images/logo_quor.png");
  EXPECT_THROW(TestWindow(""), Glib::Error);
}

TEST_F(StartUp, UnreadableIconLeavesTheConstructor) {
  folder.write("images/logo_quor.png", "no picture");
  EXPECT_THROW(TestWindow(""), Glib::Error);
}

TEST_F(StartUp, MissingToolBarPictureShowsAsBroken) {
  std::filesystem::remove("images/Brellum.png");
  TestWindow& w = showWindow();
  ASSERT_EQ(w.m_FundingImage.get_storage_type(), Gtk::IMAGE_STOCK);
  Gtk::StockID stock;
  Gtk::IconSize size;
  w.m_FundingImage.get_stock(stock, size);
  EXPECT_EQ(stock.get_string(), "gtk-missing-image");
  EXPECT_EQ(w.m_LogoImage.get_storage_type(), Gtk::IMAGE_PIXBUF);
}

}  // namespace
}  // namespace quorbel
