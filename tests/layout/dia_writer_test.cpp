#include "layout/dia_writer.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <clocale>
#include <csignal>
#include <random>

#include "dia_document.h"
#include "layout_support.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

using Values = std::vector<std::string>;

constexpr const char* kEllipse = "Standard - Ellipse";
constexpr const char* kPolygon = "Standard - Polygon";
constexpr const char* kLine = "Standard - BezierLine";
constexpr const char* kText = "Standard - Text";

/// A layout with these statements in a box of 200 by 72 points: 7.0556 cm by 2.54 cm.
std::string layoutWith(const std::string& statements) {
  return "digraph G {\n\tgraph [bb=\"0,0,200,72\",\n\t\trankdir=LR\n\t];\n\tnode "
         "[label=\"\\N\"];\n" +
         statements + "}\n";
}

/// The diagram of that layout, through the files.
DiaDocument diagramWith(const std::string& statements) {
  TemporaryFolder folder;
  folder.write("graph.dot", layoutWith(statements));
  EXPECT_TRUE(writeDiaDiagram("graph.dot", "out.dia")) << statements;
  const std::string text = textOf("out.dia");
  DiaDocument document(text);
  EXPECT_TRUE(document.isWellFormed()) << text;
  return document;
}

/// Every form that the description of a lattice brings about.
std::string variedStatements() {
  return "\t0\t[color=darkorange,\n\t\tfillcolor=lightgrey,\n\t\theight=0.61111,\n\t\tpos=\"22,"
         "18\",\n"
         "\t\tshape=doublecircle,\n\t\tstyle=filled,\n\t\twidth=0.61111];\n"
         "\t1\t[color=blue,\n\t\tfillcolor=yellow,\n\t\theight=0.61111,\n\t\tpos=\"131,36.5\",\n"
         "\t\tshape=doubleoctagon,\n\t\tstyle=filled,\n\t\twidth=0.86111];\n"
         "\t2\t[height=0.5,\n\t\tpos=\"180,18\",\n\t\twidth=0.75];\n"
         "\t0 -> 1\t[color=blue,\n\t\tcomment=\"ID = 0\",\n\t\tfontcolor=blue,\n"
         "\t\tlabel=\"a \\\"b\\\" \\\\ &lt;\\n&#233;\",\n\t\tlp=\"60,45\",\n"
         "\t\tpos=\"e,86,36 36,18 48,18 60,\\\n36 76,36\"];\n"
         "\t1 -> 2\t[color=black,\n\t\tcomment=\"ID = 1\",\n"
         "\t\tpos=\"e,1.2e+05,36 36,18 48,1e-05 60,36 76,36\"];\n";
}

TEST(DiaWriter, PlainNodeIsAnUnfilledEllipseWithItsIndex) {
  const DiaDocument diagram =
      diagramWith("\t12\t[height=0.5,\n\t\tpos=\"72,36\",\n\t\twidth=0.75];\n");
  EXPECT_EQ(diagram.values(kEllipse, "elem_corner"), (Values{"1.5875,0.635"}));
  EXPECT_EQ(diagram.values(kEllipse, "elem_width"), (Values{"1.905"}));
  EXPECT_EQ(diagram.values(kEllipse, "elem_height"), (Values{"1.27"}));
  EXPECT_EQ(diagram.values(kEllipse, "border_color"), (Values{"#000000"}));
  EXPECT_EQ(diagram.values(kEllipse, "border_width"), (Values{"0.0353"}));
  EXPECT_EQ(diagram.values(kEllipse, "show_background"), (Values{"false"}));
  EXPECT_EQ(diagram.texts(), (Values{"12"}));
  EXPECT_EQ(diagram.values(kText, "obj_pos"), (Values{"2.54,1.4005"}));
  EXPECT_EQ(diagram.values(kText, "alignment"), (Values{"1"}));
  EXPECT_EQ(diagram.values(kText, "color"), (Values{"#000000"}));
  EXPECT_EQ(diagram.values(kText, "height"), (Values{"0.6174"}));
}

TEST(DiaWriter, DoubleCircleIsAFilledEllipseWithinAnother) {
  const DiaDocument diagram = diagramWith(
      "\t0\t[color=darkorange,\n\t\tfillcolor=lightgrey,\n\t\theight=0.61111,\n\t\tpos=\"72,36\",\n"
      "\t\tshape=doublecircle,\n\t\tstyle=filled,\n\t\twidth=0.61111];\n");
  EXPECT_EQ(diagram.values(kEllipse, "elem_width"), (Values{"1.27", "1.5522"}));
  EXPECT_EQ(diagram.values(kEllipse, "elem_height"), (Values{"1.27", "1.5522"}));
  EXPECT_EQ(diagram.values(kEllipse, "elem_corner"), (Values{"1.905,0.635", "1.7639,0.4939"}));
  EXPECT_EQ(diagram.values(kEllipse, "border_color"), (Values{"#ff8c00", "#ff8c00"}));
  EXPECT_EQ(diagram.values(kEllipse, "show_background"), (Values{"true", "false"}));
  EXPECT_EQ(diagram.values(kEllipse, "inner_color"), (Values{"#d3d3d3"}));
  EXPECT_EQ(diagram.texts(), (Values{"0"}));
}

TEST(DiaWriter, DoubleOctagonIsAFilledPolygonWithinAnother) {
  const DiaDocument diagram = diagramWith(
      "\t3\t[color=red,\n\t\tfillcolor=cyan,\n\t\theight=0.61111,\n\t\tpos=\"0,72\",\n"
      "\t\tshape=doubleoctagon,\n\t\tstyle=filled,\n\t\twidth=0.86111];\n");
  // `dot` draws the corners 27,7.46 11.18,18 and 31,9.6 12.39,22 points from the middle.
  EXPECT_EQ(diagram.values(kPolygon, "poly_points"),
            (Values{"0.9525,0.263", "0.9525,-0.263", "0.3945,-0.635", "-0.3945,-0.635",
                    "-0.9525,-0.263", "-0.9525,0.263", "-0.3945,0.635", "0.3945,0.635",
                    "1.0936,0.3385", "1.0936,-0.3385", "0.4373,-0.7761", "-0.4373,-0.7761",
                    "-1.0936,-0.3385", "-1.0936,0.3385", "-0.4373,0.7761", "0.4373,0.7761"}));
  EXPECT_EQ(diagram.values(kPolygon, "line_color"), (Values{"#ff0000", "#ff0000"}));
  EXPECT_EQ(diagram.values(kPolygon, "line_width"), (Values{"0.0353", "0.0353"}));
  EXPECT_EQ(diagram.values(kPolygon, "show_background"), (Values{"true", "false"}));
  EXPECT_EQ(diagram.values(kPolygon, "inner_color"), (Values{"#00ffff"}));
  EXPECT_EQ(diagram.texts(), (Values{"3"}));
}

TEST(DiaWriter, ShapesOfANodeMoveTogether) {
  const DiaDocument diagram = diagramWith(variedStatements());
  EXPECT_EQ(diagram.find("//dia:layer/dia:group").size(), 3u);
  EXPECT_EQ(diagram.find("//dia:group[1]/dia:object/@type"), (Values{kEllipse, kEllipse, kText}));
  EXPECT_EQ(diagram.find("//dia:group[2]/dia:object/@type"), (Values{kPolygon, kPolygon, kText}));
  EXPECT_EQ(diagram.find("//dia:group[3]/dia:object/@type"), (Values{kEllipse, kText}));
}

TEST(DiaWriter, NodeWithoutSizeIsDrawnAtItsPlace) {
  for (const char* shape : {"ellipse", "doublecircle", "doubleoctagon"}) {
    const DiaDocument diagram =
        diagramWith(std::string("\t3\t[pos=\"72,36\",\n\t\tshape=") + shape + "];\n");
    EXPECT_EQ(diagram.values(kText, "obj_pos"), (Values{"2.54,1.4005"})) << shape;
  }
}

TEST(DiaWriter, EveryColourOfTheDescriptionIsKnown) {
  const std::vector<std::pair<const char*, const char*>> colours = {
      {"black", "#000000"},     {"red", "#ff0000"},        {"blue", "#0000ff"},
      {"cyan", "#00ffff"},      {"darkorange", "#ff8c00"}, {"yellow", "#ffff00"},
      {"lightgrey", "#d3d3d3"}, {"darkgreen", "#006400"},  {"palegreen", "#98fb98"},
      {"white", "#ffffff"}};
  for (const auto& [name, value] : colours) {
    const DiaDocument diagram =
        diagramWith(std::string("\t0\t[color=") + name + ",\n\t\tfillcolor=" + name +
                    ",\n\t\tpos=\"1,2\",\n\t\tstyle=filled];\n\t0 -> 0\t[color=" + name +
                    ",\n\t\tfontcolor=" + name +
                    ",\n\t\tlabel=x,\n\t\tlp=\"1,2\",\n\t\tpos=\"0,0 1,1 2,2 3,3\"];\n");
    EXPECT_EQ(diagram.values(kEllipse, "border_color"), (Values{value}));
    EXPECT_EQ(diagram.values(kEllipse, "inner_color"), (Values{value}));
    EXPECT_EQ(diagram.values(kLine, "line_color"), (Values{value}));
    EXPECT_EQ(diagram.values(kText, "color"), (Values{"#000000", value}));
  }
}

TEST(DiaWriter, OtherColoursAreBlackLinesAndGreyFillings) {
  const DiaDocument diagram = diagramWith(
      "\t0\t[color=\"#12\\\"<\",\n\t\tfillcolor=mauve,\n\t\tpos=\"1,2\",\n\t\tstyle=filled];\n");
  EXPECT_EQ(diagram.values(kEllipse, "border_color"), (Values{"#000000"}));
  EXPECT_EQ(diagram.values(kEllipse, "inner_color"), (Values{"#d3d3d3"}));
}

TEST(DiaWriter, EdgeIsABezierLineUpToTheTipOfItsArrow) {
  const DiaDocument diagram = diagramWith(
      "\t0 -> 1\t[color=cyan,\n\t\tcomment=\"ID = 0\",\n"
      "\t\tpos=\"e,86,36 36,18 48,18 60,36 76,36\"];\n");
  EXPECT_EQ(diagram.values(kLine, "bez_points"),
            (Values{"1.27,1.905", "1.6933,1.905", "2.1167,1.27", "2.6811,1.27", "2.6811,1.27",
                    "2.6811,1.27", "3.0339,1.27"}));
  EXPECT_EQ(diagram.values(kLine, "line_color"), (Values{"#00ffff"}));
  EXPECT_EQ(diagram.values(kLine, "end_arrow"), (Values{"3"}));
  EXPECT_EQ(diagram.values(kLine, "end_arrow_length"), (Values{"0.3528"}));
  EXPECT_EQ(diagram.values(kLine, "end_arrow_width"), (Values{"0.2469"}));
  EXPECT_TRUE(diagram.values(kLine, "start_arrow").empty());
  EXPECT_TRUE(diagram.texts().empty());
}

TEST(DiaWriter, LinesMayBeThickOrBroken) {
  const std::string place = ",\n\t\tpos=\"0,0 1,1 2,2 3,3\"];\n";
  const DiaDocument diagram =
      diagramWith("\t1\t[pos=\"1,2\",\n\t\tstyle=dashed];\n\t0 -> 1\t[penwidth=2.5" + place +
                  "\t0 -> 1\t[style=dashed" + place + "\t0 -> 1\t[style=dotted" + place);
  EXPECT_EQ(diagram.values(kLine, "line_width"), (Values{"0.0882", "0.0353", "0.0353"}));
  EXPECT_EQ(diagram.values(kLine, "line_style"), (Values{"1", "4"}));
  EXPECT_EQ(diagram.values(kLine, "dashlength"), (Values{"0.2117", "0.2117"}));
  EXPECT_EQ(diagram.values(kEllipse, "line_style"), Values{"1"});
}

TEST(DiaWriter, MayBeSmallerAndInAnotherFont) {
  const std::string layout = layoutWith(
      "\t0\t[height=0.5,\n\t\tpos=\"100,36\",\n\t\twidth=1];\n"
      "\t0 -> 0\t[fontname=\"Some Bold\",\n\t\tlabel=x,\n\t\tlp=\"1,2\",\n"
      "\t\tpos=\"e,3,3 0,0 1,1 2,2 3,3\"];\n");
  const DiaDocument diagram(diaDiagram(*readDotDrawing(layout), {0.5, "Some"}));
  EXPECT_EQ(diagram.values(kEllipse, "elem_corner"), Values{"1.1289,0.3175"});
  EXPECT_EQ(diagram.values(kEllipse, "elem_width"), Values{"1.27"});
  EXPECT_EQ(diagram.values(kLine, "line_width"), Values{"0.0176"});
  EXPECT_EQ(diagram.values(kLine, "end_arrow_length"), Values{"0.1764"});
  EXPECT_EQ(diagram.values(kText, "height"), (Values{"0.3087", "0.3087"}));
  EXPECT_EQ(diagram.find("//dia:font/@family"), (Values{"Some", "Some"}));
  EXPECT_EQ(diagram.find("//dia:font/@name"), (Values{"Some", "Some-Bold"}));
  EXPECT_EQ(diagram.find("//dia:font/@style"), (Values{"0", "80"}));
  for (const char* family : {"", "Times"}) {
    const DiaDocument times(diaDiagram(*readDotDrawing(layout), {1.0, family}));
    EXPECT_EQ(times.find("//dia:font/@name"), (Values{"Times-Roman", "Times-Bold"}));
    EXPECT_EQ(times.find("//dia:font/@family"), (Values{"serif", "serif"}));
  }
  for (const auto& [family, known] : {std::pair("Helvetica", "sans"), {"Courier", "monospace"}}) {
    const DiaDocument other(diaDiagram(*readDotDrawing(layout), {1.0, family}));
    EXPECT_EQ(other.find("//dia:font/@family"), (Values{known, known}));
  }
}

TEST(DiaWriter, EdgeMayHaveAnArrowAtItsStartOrNone) {
  const DiaDocument start = diagramWith("\t0 -> 1\t[pos=\"s,0,0 18,0 36,0 54,0 72,0\"];\n");
  EXPECT_EQ(start.values(kLine, "bez_points"),
            (Values{"0,2.54", "0.635,2.54", "0.635,2.54", "0.635,2.54", "1.27,2.54", "1.905,2.54",
                    "2.54,2.54"}));
  EXPECT_EQ(start.values(kLine, "start_arrow"), (Values{"3"}));
  EXPECT_EQ(start.values(kLine, "start_arrow_length"), (Values{"0.3528"}));
  EXPECT_TRUE(start.values(kLine, "end_arrow").empty());
  const DiaDocument none = diagramWith("\t0 -> 1\t[pos=\"18,0 36,0 54,0 72,0\"];\n");
  EXPECT_EQ(none.values(kLine, "bez_points").size(), 4u);
  EXPECT_TRUE(none.values(kLine, "end_arrow").empty());
}

TEST(DiaWriter, LongWrappedSplineHasAllItsPoints) {
  constexpr int kPieces = 40;
  std::string spline = "e,1210,0 0,0";
  for (int point = 1; point <= 3 * kPieces; ++point) {
    spline += " " + std::to_string(10 * point) + "," + std::to_string(point);
    if (point % 11 == 0) spline.insert(spline.size() - 1, "\\\n");
  }
  const DiaDocument diagram = diagramWith("\t0 -> 1\t[pos=\"" + spline + "\"];\n");
  const Values points = diagram.values(kLine, "bez_points");
  ASSERT_EQ(points.size(), 3u * kPieces + 1 + 3);
  EXPECT_EQ(points[33], "11.6417,1.3758");
  EXPECT_EQ(points[120], "42.3333,-1.6933");
  EXPECT_EQ(points.size() % 3, 1u);
}

TEST(DiaWriter, LabelIsCentredAtItsPlaceInItsColour) {
  const DiaDocument diagram = diagramWith(
      "\t0 -> 1\t[color=red,\n\t\tcomment=\"ID = 0\",\n\t\tfontcolor=red,\n\t\tlabel=word,\n"
      "\t\tlp=\"72,36\",\n\t\tpos=\"e,86,36 36,18 48,18 60,36 76,36\"];\n");
  EXPECT_EQ(diagram.texts(), (Values{"word"}));
  EXPECT_EQ(diagram.values(kText, "obj_pos"), (Values{"2.54,1.4005"}));
  EXPECT_EQ(diagram.values(kText, "pos"), (Values{"2.54,1.4005"}));
  EXPECT_EQ(diagram.values(kText, "color"), (Values{"#ff0000"}));
  EXPECT_EQ(diagram.values(kText, "alignment"), (Values{"1"}));
  EXPECT_EQ(diagram.values(kText, "valign"), (Values{"3"}));
}

TEST(DiaWriter, LabelsKeepEveryCharacter) {
  const auto label = [](const std::string& value) {
    return diagramWith("\t0 -> 1\t[label=" + value + ",\n\t\tlp=\"72,36\"];\n").texts();
  };
  EXPECT_EQ(label("\"say \\\"hi\\\" \\\\o/\""), (Values{"say \"hi\" \\o/"}));
  EXPECT_EQ(label("\"<a>&amp;&lt;b>\""), (Values{"<a>&<b>"}));
  EXPECT_EQ(label("s\u00e9lection"), (Values{"s\u00e9lection"}));
  EXPECT_EQ(label("\"\u65e5\u672c \U0001F600\""), (Values{"\u65e5\u672c \U0001F600"}));
  EXPECT_EQ(label("\" # \""), (Values{" # "}));
  EXPECT_EQ(label("\"a\xE9\x01z\""), (Values{"a\u00e9\ufffdz"}));
}

TEST(DiaWriter, LinesOfALabelStandBelowEachOther) {
  const DiaDocument diagram =
      diagramWith("\t0 -> 1\t[label=\"abcde\\nf\\lg\\r\",\n\t\tlp=\"72,36\"];\n");
  EXPECT_EQ(diagram.texts(), (Values{"abcde", "f", "g"}));
  EXPECT_EQ(diagram.values(kText, "obj_pos"),
            (Values{"2.54,0.8714", "1.905,1.4005", "3.175,1.9297"}));
  EXPECT_EQ(diagram.values(kText, "alignment"), (Values{"1", "0", "2"}));
  const DiaDocument single = diagramWith("\t0 -> 1\t[label=\"abcde\\l\",\n\t\tlp=\"72,36\"];\n");
  EXPECT_EQ(single.values(kText, "obj_pos"), (Values{"2.54,1.4005"}));
  EXPECT_EQ(single.values(kText, "alignment"), (Values{"1"}));
}

TEST(DiaWriter, EmptyLabelsAreNotDrawn) {
  EXPECT_TRUE(diagramWith("\t0 -> 1\t[label=\"\",\n\t\tlp=\"1,2\"];\n").texts().empty());
  EXPECT_TRUE(diagramWith("\t0 -> 1\t[label=\"\\n\",\n\t\tlp=\"1,2\"];\n").texts().empty());
}

TEST(DiaWriter, PlacesCountFromTheCornerOfTheBox) {
  TemporaryFolder folder;
  folder.write("graph.dot",
               "digraph G {\n\tgraph [bb=\"-72,-36,1.2e+05,1.0008e+05\"];\n"
               "\t0\t[height=1,\n\t\tpos=\"1.0000e+05,36\",\n\t\twidth=1];\n}\n");
  ASSERT_TRUE(writeDiaDiagram("graph.dot", "out.dia"));
  // 100,072 points right of the corner and 100,044 below it
  EXPECT_EQ(DiaDocument(textOf("out.dia")).values(kEllipse, "elem_corner"),
            (Values{"3529.0478,3528.06"}));
}

TEST(DiaWriter, LocaleDoesNotMatter) {
  const auto drawing = readDotDrawing(layoutWith(variedStatements()));
  ASSERT_TRUE(drawing);
  const std::string expected = diaDiagram(*drawing);
  const ProcessLocale german("de_DE.UTF-8");
  ASSERT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "de_DE.UTF-8");
  const auto again = readDotDrawing(layoutWith(variedStatements()));
  ASSERT_TRUE(again);
  EXPECT_EQ(diaDiagram(*again), expected);
}

TEST(DiaWriter, WithoutLayoutAnExistingDiagramStays) {
  TemporaryFolder folder;
  folder.write("out.dia", "old");
  EXPECT_FALSE(writeDiaDiagram("graph.dot", "out.dia"));
  EXPECT_EQ(textOf("out.dia"), "old");
  folder.write("graph.dot", "");
  EXPECT_FALSE(writeDiaDiagram("graph.dot", "out.dia"));
  EXPECT_FALSE(writeDiaDiagram(".", "out.dia"));
  EXPECT_EQ(textOf("out.dia"), "old");
}

TEST(DiaWriter, ReplacesAnExistingDiagram) {
  TemporaryFolder folder;
  folder.write("graph.dot", layoutWith(""));
  folder.write("out.dia", std::string(100000, 'x'));
  ASSERT_TRUE(writeDiaDiagram("graph.dot", "out.dia"));
  EXPECT_TRUE(DiaDocument(textOf("out.dia")).isWellFormed());
}

TEST(DiaWriter, LayoutThatIsCutAnywhereGivesNoDiagram) {
  TemporaryFolder folder;
  const std::string layout = layoutWith(variedStatements());
  for (std::size_t size = 0; size + 1 < layout.size(); ++size) {
    folder.write("graph.dot", layout.substr(0, size));
    ASSERT_FALSE(writeDiaDiagram("graph.dot", "out.dia")) << size;
    ASSERT_FALSE(std::filesystem::exists("out.dia")) << size;
  }
}

TEST(DiaWriter, WhateverTheLayoutTheDiagramIsWellFormed) {
  constexpr unsigned kSeed = 20240611;
  std::mt19937 random(kSeed);
  const std::string layout = layoutWith(variedStatements());
  int diagrams = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string broken = layout;
    for (auto change = random() % 6; change > 0; --change) {
      const std::size_t at = random() % broken.size();
      if (random() % 2 == 0)
        broken[at] = static_cast<char>(random());
      else
        broken[at] = "\"\\[]{};,->e9&#\n"[random() % 15];
    }
    const auto drawing = readDotDrawing(broken);
    if (!drawing) continue;
    ++diagrams;
    ASSERT_TRUE(DiaDocument(diaDiagram(*drawing)).isWellFormed())
        << "seed " << kSeed << " round " << round << "\n"
        << broken;
  }
  EXPECT_GT(diagrams, 100);
}

TEST(DiaWriter, FailsWhereNoFileCanBe) {
  TemporaryFolder folder;
  folder.write("graph.dot", layoutWith(""));
  EXPECT_FALSE(writeDiaDiagram("graph.dot", "missing/out.dia"));
  EXPECT_FALSE(writeDiaDiagram("graph.dot", "."));
}

TEST(DiaWriter, DeviceThatTakesNothingStays) {
  TemporaryFolder folder;
  folder.write("graph.dot", layoutWith(""));
  std::filesystem::create_symlink("/dev/full", "out.dia");
  EXPECT_FALSE(writeDiaDiagram("graph.dot", "out.dia"));
  EXPECT_TRUE(std::filesystem::exists("/dev/full"));
  EXPECT_TRUE(std::filesystem::is_symlink("out.dia"));
}

/// Lets no file grow beyond a size while it lives, as on a disk that is full; the signal that comes
/// with it ends a program that does not see to it.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t size) : m_Handler(std::signal(SIGXFSZ, SIG_DFL)) {
    getrlimit(RLIMIT_FSIZE, &m_Before);
    const rlimit limit = {size, m_Before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &m_Before);
    std::signal(SIGXFSZ, m_Handler);
  }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  void (*m_Handler)(int);
  rlimit m_Before{};
};

TEST(DiaWriter, LeavesNothingOfADiagramThatDoesNotFit) {
  TemporaryFolder folder;
  folder.write("graph.dot", layoutWith(variedStatements()));
  folder.write("target", "old");
  std::filesystem::create_symlink("target", "link.dia");
  {
    const SmallFiles small(1000);
    EXPECT_FALSE(writeDiaDiagram("graph.dot", "out.dia"));
    EXPECT_FALSE(writeDiaDiagram("graph.dot", "link.dia"));
    EXPECT_FALSE(writeDiaDiagram("graph.dot", "target"));
  }
  EXPECT_EQ(textOf("target"), "old");
  const std::filesystem::directory_iterator files(folder.path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 3);  // the layout, the target and its link
}

}  // namespace
}  // namespace quorbel
