// The exported files in the programs that they are for.

#include <libxml/parser.h>

#include <cstdlib>

#include "app/colours.h"
#include "app/export_fixture.h"
#include "layout/file_names.h"

namespace quorbel {
namespace {

/// A lattice of one best path (links 0 and 2), a way around it (1 and 3), and a link beside them.
class ExportedFile : public ExportTest {
 protected:
  /// Opens the lattice and highlights the best path and that through link 1.
  TestWindow& openHighlighted() {
    TestWindow& w = openLattice(kTwoWays);
    activate("DisplayShortestPath");
    w.m_SelectedEdges.assign(1, edgeOf(w, 1));
    activate("DisplayShortestPathSelected");
    return w;
  }

  /// Whether a pixel has this colour; PostScript's own colours differ a little from it.
  static bool hasColour(const Glib::RefPtr<Gdk::Pixbuf>& picture, unsigned rgb) {
    constexpr int kDifference = 6;
    const auto isLike = [rgb](unsigned found) {
      for (const int shift : {0, 8, 16}) {
        const auto part = [shift](unsigned colour) {
          return static_cast<int>(colour >> shift & 0xFF);
        };
        if (std::abs(part(found) - part(rgb)) > kDifference) return false;
      }
      return true;
    };
    for (int y = 0; y < picture->get_height(); ++y)
      for (int x = 0; x < picture->get_width(); ++x)
        if (isLike(pixel(picture, x, y))) return true;
    return false;
  }

  /// A picture of the highlighted drawing: the colours of its paths are there.
  static void expectHighlighted(const Glib::RefPtr<Gdk::Pixbuf>& picture) {
    EXPECT_TRUE(hasColour(picture, screen::kBlue));
    EXPECT_TRUE(hasColour(picture, screen::kRed));
    EXPECT_TRUE(hasColour(picture, 0x00FFFF));
    EXPECT_TRUE(hasColour(picture, 0xFFFF00));
  }

  static double proportionsOf(const Glib::RefPtr<Gdk::Pixbuf>& picture) {
    return static_cast<double>(picture->get_width()) / picture->get_height();
  }

  static int run(const std::string& command) {
    return std::system((command + " >log 2>&1").c_str());
  }

  /// Draws a PostScript file with Ghostscript, a pixel a point.
  static Glib::RefPtr<Gdk::Pixbuf> drawPostscript(const std::string& name) {
    EXPECT_EQ(
        run("gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -r72 -sOutputFile=page.png " + name),
        0)
        << textOf("log");
    EXPECT_EQ(textOf("log"), "");
    return Gdk::Pixbuf::create_from_file("page.png");
  }
};

TEST_F(ExportedFile, PngIsThePictureOnScreen) {
  openHighlighted();
  exportAs("FileExportPNG", "out");
  EXPECT_EQ(textOf("out.png"), textOf(kImageFile));
  expectHighlighted(Gdk::Pixbuf::create_from_file("out.png"));
}

TEST_F(ExportedFile, SvgOpensAsXmlAndAsAPicture) {
  openHighlighted();
  exportAs("FileExportSVG", "out");
  xmlDoc* const document = xmlReadFile("out.svg", nullptr, XML_PARSE_NONET);
  ASSERT_TRUE(document);
  EXPECT_STREQ(reinterpret_cast<const char*>(xmlDocGetRootElement(document)->name), "svg");
  xmlFreeDoc(document);
  const auto picture = Gdk::Pixbuf::create_from_file("out.svg");
  const auto onScreen = Gdk::Pixbuf::create_from_file(kImageFile);
  EXPECT_NEAR(proportionsOf(picture), proportionsOf(onScreen), 0.05);
  EXPECT_TRUE(hasColour(picture, 0xFFFF00));
  EXPECT_TRUE(hasColour(picture, 0x00FFFF));
}

TEST_F(ExportedFile, BothPostscriptFormsOpenInGhostscript) {
  openHighlighted();
  exportAs("FileExportPostscript", "plain");
  exportAs("FileExportPostscript2", "for-pdf");
  expectHighlighted(drawPostscript("plain.ps"));
  expectHighlighted(drawPostscript("for-pdf.ps"));
  EXPECT_EQ(textOf("plain.ps").rfind("%!PS-Adobe-3.0\n", 0), 0u);
  EXPECT_NE(textOf("plain.ps"), textOf("for-pdf.ps"));
  EXPECT_EQ(
      run("gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -sOutputFile=out.pdf for-pdf.ps"), 0);
}

TEST_F(ExportedFile, DiaOpensInDia) {
  openHighlighted();
  exportAs("FileExportDIA", "out");
  EXPECT_EQ(run("HOME=\"$PWD\" env -u DISPLAY dia --export=drawn.png out.dia"), 0) << textOf("log");
  const auto picture = Gdk::Pixbuf::create_from_file("drawn.png");
  expectHighlighted(picture);
  const auto onScreen = Gdk::Pixbuf::create_from_file(kImageFile);
  EXPECT_NEAR(proportionsOf(picture), proportionsOf(onScreen), 0.1);
}

TEST_F(ExportedFile, ShowsTheLabelsOfTheDay) {
  TestWindow& w = openLattice(kTwoWays);
  const auto expectLabels = [&](const std::string& name, const std::vector<std::string>& labels) {
    for (const ExportFormat& format : kExportFormats) {
      if (format.format == std::string("png")) continue;
      const std::string path = name + "-" + format.format + "." + format.extension;
      exportAs(format.action, path);
      const std::string text = textOf(path);
      for (const std::string& label : labels)
        EXPECT_NE(text.find(label), std::string::npos) << label << " in " << path;
    }
  };
  expectLabels("words", {"a / A", "b / B", "c / C", "d / D"});
  activate("DisplayValue");
  EXPECT_EQ(edgeOf(w, 1).label, "5.5");
  expectLabels("values", {"10", "5.5", "20.25", "30"});
}

TEST_F(ExportedFile, ShowsPathsAndSelectionInTheirColours) {
  openLattice(kTwoWays);
  exportAs("FileExportSVG", "plain");
  EXPECT_EQ(textOf("plain.svg").find("stroke=\"blue\""), std::string::npos);
  TestWindow& w = *window;
  activate("DisplayShortestPath");
  w.m_SelectedEdges.assign(1, edgeOf(w, 1));
  activate("DisplayShortestPathSelected");
  exportAs("FileExportSVG", "highlighted");
  const std::string text = textOf("highlighted.svg");
  for (const char* part :
       {"stroke=\"blue\"", "stroke=\"red\"", "stroke=\"cyan\"", "fill=\"yellow\"", "fill=\"cyan\"",
        "fill=\"blue\">a / A", "fill=\"red\">b / B", "fill=\"cyan\">d / D"})
    EXPECT_NE(text.find(part), std::string::npos) << part;
}

}  // namespace
}  // namespace quorbel
