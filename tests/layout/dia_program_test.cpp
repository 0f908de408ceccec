// Diagrams in the program that they are for, next to the pictures of `dot`.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "dia_document.h"
#include "dia_picture.h"
#include "lattice/number_text.h"
#include "layout/dia_writer.h"
#include "layout/dot_writer.h"
#include "layout/file_names.h"
#include "layout_support.h"
#include "run_by_system.h"

namespace quorbel {
namespace {

constexpr double kPointsPerCentimetre = 72.0 / 2.54;
constexpr double kDiaPixelsPerPoint = 20.0 / kPointsPerCentimetre;
constexpr double kDotPixelsPerPoint = 96.0 / 72.0;
constexpr double kDotMargin = 4.0;  // layout points
/// How far a line of width 1 around a triangle of length 10 and width 7 reaches beyond its tip:
/// half of the width by the sine of half the tip's angle.
constexpr double kLineBeyondTip = 0.5 / 0.3304;

/// Has Dia export a diagram, without a display; the format is that of the output's name. Returns
/// the exit status.
int exportWithDia(const std::string& diagram, const std::string& output) {
  return std::system(
      ("HOME=\"$PWD\" env -u DISPLAY dia --export=" + output + " " + diagram + " >dia.log 2>&1")
          .c_str());
}

/// A lattice with everything that is highlighted: 0-1-7 is the best path, 0-2-3-7 the best one
/// through the selected link from 2 to 3; 4, 5 and 6 lie on neither.
Graph highlightedLattice() {
  Graph graph = latticeOf(8);
  link(graph, 0, 1, "the", 1, 0);
  link(graph, 1, 7, "best", 1, 1);
  link(graph, 0, 2, "leads", 2, 2);
  link(graph, 2, 3, "s\u00e9lection", 2, 3);
  link(graph, 3, 7, "there", 2, 4);
  link(graph, 0, 4, "plain", 5, 5);
  link(graph, 4, 5, "R & D < S", 5, 6);
  link(graph, 5, 7, "words", 5, 7);
  link(graph, 1, 5, "crossing", 5, 8);
  link(graph, 4, 6, "far", 5, 9);
  link(graph, 6, 7, "away", 5, 10);
  link(graph, 0, 7, "at once", 9, 11);
  setShowBestPath(graph, true);
  select(graph, 3);
  return graph;
}

/// A picture of the drawing, addressed by layout points.
class DrawnPicture {
 public:
  DrawnPicture(const std::string& path, double pixelsPerPoint)
      : m_Picture(path), m_PixelsPerPoint(pixelsPerPoint) {}

  void setOrigin(double left, double top) {
    m_Left = left;
    m_Top = top;
  }
  const Picture& picture() const { return m_Picture; }
  double imageX(double layoutX) const { return m_Left + layoutX * m_PixelsPerPoint; }
  double imageY(double layoutY) const { return m_Top - layoutY * m_PixelsPerPoint; }

  Rgb at(LayoutPoint point) const {
    return m_Picture.at(static_cast<int>(imageX(point.x)), static_cast<int>(imageY(point.y)));
  }
  bool hasInk(LayoutPoint point, const std::string& colour) const {
    constexpr double kRadius = 1.6;  // pixels
    return m_Picture.hasInk(imageX(point.x), imageY(point.y), kRadius, rgbOf(colour));
  }
  /// The pixels around a point; the size in layout points.
  Picture::Box around(LayoutPoint centre, double width, double height) const {
    return {static_cast<int>(imageX(centre.x - width / 2)),
            static_cast<int>(imageY(centre.y + height / 2)),
            static_cast<int>(imageX(centre.x + width / 2)),
            static_cast<int>(imageY(centre.y - height / 2))};
  }

 private:
  Picture m_Picture;
  double m_PixelsPerPoint;
  double m_Left = 0.0;  ///< pixels, of the layout's origin
  double m_Top = 0.0;   ///< as m_Left
};

/// A lattice drawn both ways.
class DiaProgram : public ::testing::Test {
 protected:
  DiaProgram() {
    Graph graph = highlightedLattice();
    writeDotAndRun(graph, std::nullopt, runBySystem);
    const auto drawing = readDotDrawing(textOf(kLayoutFile));
    if (!drawing) throw std::runtime_error("no layout");
    m_Drawing = *drawing;
    if (!writeDiaDiagram(kLayoutFile, "out.dia")) throw std::runtime_error("no diagram");
    if (exportWithDia("out.dia", "out.png") != 0) throw std::runtime_error(textOf("dia.log"));
    m_Pictures.emplace_back(kImageFile, kDotPixelsPerPoint);
    m_Pictures.emplace_back("out.png", kDiaPixelsPerPoint);
    placePictures();
  }

  /// Dia's pictures end where the diagram does: what is drawn lies at the same place in both.
  void placePictures() {
    DrawnPicture& dot = m_Pictures[0];
    dot.setOrigin(kDotMargin * kDotPixelsPerPoint,
                  (m_Drawing.topRight.y + kDotMargin) * kDotPixelsPerPoint);
    const Picture::Box dotBox = dot.picture().drawnBox();
    const Picture::Box diaBox = m_Pictures[1].picture().drawnBox();
    const double ratio = kDiaPixelsPerPoint / kDotPixelsPerPoint;
    m_Pictures[1].setOrigin((diaBox.left + diaBox.right) / 2.0 +
                                (dot.imageX(0) - (dotBox.left + dotBox.right) / 2.0) * ratio,
                            (diaBox.top + diaBox.bottom) / 2.0 +
                                (dot.imageY(0) - (dotBox.top + dotBox.bottom) / 2.0) * ratio);
  }

  const TemporaryFolder m_Folder;
  DotDrawing m_Drawing;
  std::vector<DrawnPicture> m_Pictures;  ///< that of `dot`, that of Dia
};

LayoutPoint onCurve(const LayoutPoint* piece, double t) {
  const double s = 1.0 - t;
  const double weights[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
  LayoutPoint point;
  for (int i = 0; i < 4; ++i) {
    point.x += weights[i] * piece[i].x;
    point.y += weights[i] * piece[i].y;
  }
  return point;
}

TEST_F(DiaProgram, DrawsEverythingInTheSizeThatDotDrawsIt) {
  const Picture::Box dot = m_Pictures[0].picture().drawnBox();
  const Picture::Box dia = m_Pictures[1].picture().drawnBox();
  const double ratio = kDiaPixelsPerPoint / kDotPixelsPerPoint;
  EXPECT_NEAR(dia.right - dia.left, (dot.right - dot.left) * ratio, 2.0);
  EXPECT_NEAR(dia.bottom - dia.top, (dot.bottom - dot.top) * ratio, 2.0);
}

TEST_F(DiaProgram, DrawsNodesLikeDot) {
  ASSERT_EQ(m_Drawing.nodes.size(), 8u);
  for (const DrawnNode& node : m_Drawing.nodes) {
    for (const DrawnPicture& picture : m_Pictures) {
      SCOPED_TRACE(node.label.at(0).text + (&picture == &m_Pictures[0] ? " by dot" : " by Dia"));
      const LayoutPoint middle = node.centre;
      const Rgb filling = node.fillColour.empty() ? Rgb() : rgbOf(node.fillColour);
      // beside the number
      EXPECT_TRUE(picture.at({middle.x + 12.0, middle.y}).isLike(filling));
      EXPECT_TRUE(picture.at({middle.x - 12.0, middle.y}).isLike(filling));
      EXPECT_GT(picture.picture().shareUnlike(picture.around(middle, 8.0, 12.0), filling), 0.1);
      // the outermost line on all four sides
      EXPECT_TRUE(picture.hasInk({middle.x - node.width / 2, middle.y}, node.colour));
      EXPECT_TRUE(picture.hasInk({middle.x + node.width / 2, middle.y}, node.colour));
      EXPECT_TRUE(picture.hasInk({middle.x, middle.y - node.height / 2}, node.colour));
      EXPECT_TRUE(picture.hasInk({middle.x, middle.y + node.height / 2}, node.colour));
      if (node.shape == NodeShape::Ellipse) continue;
      // the inner line, and white between them
      EXPECT_TRUE(picture.hasInk({middle.x, middle.y + node.height / 2 - 4.0}, node.colour));
      EXPECT_LT(picture.at({middle.x, middle.y + node.height / 2 - 2.0}).strength(), 128);
    }
  }
}

TEST_F(DiaProgram, DrawsShapesOfOctagonsLikeDot) {
  int octagons = 0;
  for (const DrawnNode& node : m_Drawing.nodes) {
    if (node.shape != NodeShape::DoubleOctagon) continue;
    ++octagons;
    for (const DrawnPicture& picture : m_Pictures) {
      // where the slanting sides have their middle, and where an ellipse would bulge beyond them
      EXPECT_TRUE(picture.hasInk({node.centre.x + 21.7, node.centre.y + 15.8}, node.colour));
      EXPECT_TRUE(picture.hasInk({node.centre.x + 19.1, node.centre.y + 12.7}, node.colour));
      EXPECT_FALSE(picture.hasInk({node.centre.x + 26.5, node.centre.y + 19.5}, node.colour));
    }
  }
  EXPECT_EQ(octagons, 3);
}

TEST_F(DiaProgram, DrawsLinesLikeDot) {
  ASSERT_EQ(m_Drawing.edges.size(), 12u);
  for (const DrawnEdge& edge : m_Drawing.edges) {
    ASSERT_EQ(edge.splines.size(), 1u);
    const std::vector<LayoutPoint>& points = edge.splines[0].points;
    for (const DrawnPicture& picture : m_Pictures) {
      SCOPED_TRACE(edge.label.at(0).text + (&picture == &m_Pictures[0] ? " by dot" : " by Dia"));
      for (std::size_t piece = 0; piece + 3 < points.size(); piece += 3)
        for (const double t : {0.1, 0.3, 0.5, 0.7, 0.9})
          EXPECT_TRUE(picture.hasInk(onCurve(&points[piece], t), edge.colour))
              << "piece " << piece / 3 << " at " << t;
      const std::string other = edge.colour == "red" ? "blue" : "red";
      EXPECT_FALSE(picture.hasInk(onCurve(&points[0], 0.5), other));
    }
  }
}

TEST_F(DiaProgram, DrawsArrowHeadsLikeDot) {
  for (const DrawnEdge& edge : m_Drawing.edges) {
    const LayoutPoint foot = edge.splines.at(0).points.back();
    const LayoutPoint tip = edge.splines.at(0).endTip.value();
    const double length = std::hypot(tip.x - foot.x, tip.y - foot.y);
    // From foot to tip, or with the line around the head as well, as newer versions of `dot` count.
    EXPECT_LE(std::min(std::abs(length - 10.0), std::abs(length - 10.0 - kLineBeyondTip)), 0.5);
    const LayoutPoint along = {(tip.x - foot.x) / length, (tip.y - foot.y) / length};
    const auto beside = [&](double forward, double aside) {
      return LayoutPoint{foot.x + forward * along.x - aside * along.y,
                         foot.y + forward * along.y + aside * along.x};
    };
    for (const DrawnPicture& picture : m_Pictures) {
      SCOPED_TRACE(edge.label.at(0).text + (&picture == &m_Pictures[0] ? " by dot" : " by Dia"));
      EXPECT_GT(picture.at(beside(3.0, 0.0)).strength(), 200);
      EXPECT_TRUE(picture.at(beside(3.0, 0.0)).isInkOf(rgbOf(edge.colour)));
      EXPECT_TRUE(picture.hasInk(beside(1.5, 2.5), edge.colour));
      EXPECT_TRUE(picture.hasInk(beside(1.5, -2.5), edge.colour));
      EXPECT_TRUE(picture.hasInk(beside(8.0, 0.0), edge.colour));
    }
  }
}

TEST_F(DiaProgram, DrawsLabelsLikeDot) {
  constexpr double kAdvance = 6.0;  // less than the mean of a character, layout points
  constexpr double kHeight = 11.0;
  for (const DrawnEdge& edge : m_Drawing.edges) {
    const std::string& text = edge.label.at(0).text;
    SCOPED_TRACE(text);
    const double width = kAdvance * static_cast<double>(text.size());
    const auto shareOfInk = [&](const DrawnPicture& picture) {
      return picture.picture().shareOfInk(picture.around(edge.labelCentre, width, kHeight),
                                          rgbOf(edge.fontColour));
    };
    const double byDot = shareOfInk(m_Pictures[0]);
    const double byDia = shareOfInk(m_Pictures[1]);
    EXPECT_GT(byDot, 0.1);
    EXPECT_GT(byDia, 0.6 * byDot);
    EXPECT_LT(byDia, 1.8 * byDot);
  }
}

TEST_F(DiaProgram, ExportsPlacesTextsAndColoursAsTheDiagramHasThem) {
  ASSERT_EQ(exportWithDia("out.dia", "out.svg"), 0) << textOf("dia.log");
  const DiaDocument svg(textOf("out.svg"));
  ASSERT_TRUE(svg.isWellFormed());
  std::vector<std::string> texts;
  for (const DrawnNode& node : m_Drawing.nodes) texts.push_back(node.label.at(0).text);
  for (const DrawnEdge& edge : m_Drawing.edges) texts.push_back(edge.label.at(0).text);
  EXPECT_EQ(svg.find("//*[local-name()='tspan']"), texts);

  // Dia writes twenty units a centimetre.
  const std::vector<std::string> x = svg.find("//*[local-name()='ellipse']/@cx");
  const std::vector<std::string> styles = svg.find("//*[local-name()='ellipse']/@style");
  std::size_t ellipse = 0;
  for (const DrawnNode& node : m_Drawing.nodes) {
    if (node.shape == NodeShape::DoubleOctagon) continue;
    for (int line = node.shape == NodeShape::DoubleCircle ? 2 : 1; line > 0; --line, ++ellipse) {
      ASSERT_LT(ellipse, x.size());
      EXPECT_NEAR(parseDouble(x[ellipse]), node.centre.x * kDiaPixelsPerPoint, 0.01);
      EXPECT_EQ(styles[ellipse].find("fill: none") == std::string::npos,
                !node.fillColour.empty() && line == 2);
    }
  }
  EXPECT_EQ(ellipse, x.size());
}

TEST(DiaProgramLabels, ShowsEveryCharacter) {
  TemporaryFolder folder;
  folder.write(kLayoutFile,
               "digraph G {\n\tgraph [bb=\"0,0,200,72\"];\n"
               "\t0 -> 1\t[label=\"# \\\"a\\\" <b> &amp;&eacute; \u65e5\u672c #\\n\\\\x\",\n"
               "\t\tlp=\"100,36\",\n\t\tpos=\"e,86,36 36,18 48,18 60,36 76,36\"];\n}\n");
  ASSERT_TRUE(writeDiaDiagram(kLayoutFile, "out.dia"));
  ASSERT_EQ(exportWithDia("out.dia", "out.svg"), 0) << textOf("dia.log");
  const DiaDocument svg(textOf("out.svg"));
  EXPECT_EQ(svg.find("//*[local-name()='tspan']"),
            (std::vector<std::string>{"# \"a\" <b> &\u00e9 \u65e5\u672c #", "\\x"}));
}

TEST(DiaProgramLabels, OpensAnEmptyDiagram) {
  TemporaryFolder folder;
  folder.write(kLayoutFile, "digraph G {\n\tgraph [bb=\"0,0,0,0\"];\n}\n");
  ASSERT_TRUE(writeDiaDiagram(kLayoutFile, "out.dia"));
  EXPECT_EQ(exportWithDia("out.dia", "out.svg"), 0) << textOf("dia.log");
}

}  // namespace
}  // namespace quorbel
