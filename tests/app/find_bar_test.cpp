#include <gtk/gtk.h>

#include <atkmm/object.h>

#include <algorithm>

#include "app/box_colours.h"
#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

using Ids = std::vector<int>;

/// Finding words with the bar, by real keys.
class Finding : public CanvasTest {
 protected:
  TestWindow& openAndFind(const std::string& lattice) {
    TestWindow& w = open(lattice);
    EXPECT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
    combine({GDK_KEY_Control_L}, GDK_KEY_f);
    EXPECT_TRUE(w.m_FindBar.get_visible());
    return w;
  }

  void type(unsigned keysym) {
    pressKey(keysym);
    releaseKey(keysym);
  }

  void type(const char* letters) {
    for (; *letters; ++letters)
      type(*letters == ' ' ? GDK_KEY_space : static_cast<unsigned>(*letters));
  }

  /// Types a key while others are held.
  void combine(const std::vector<unsigned>& held, unsigned keysym) {
    for (const unsigned key : held) pressKey(key);
    type(keysym);
    for (const unsigned key : held) releaseKey(key);
  }

  std::string said() const { return window->m_FindBar.found.get_text(); }
  std::string text() const { return window->m_FindBar.entry.get_text(); }

  /// Whether most of the entry is red.
  bool isRed() {
    const auto picture = pictureOf(window->m_FindBar.entry);
    int red = 0;
    for (int x = 0; x < picture->get_width(); ++x)
      if (pixel(picture, x, picture->get_height() / 2) == 0xff7070) ++red;
    return red > picture->get_width() / 2;
  }
};

TEST_F(Finding, BarIsHiddenUntilControlFOrSlash) {
  TestWindow& w = open(kTwoWords);
  EXPECT_FALSE(w.m_FindBar.get_parent());
  const int height = w.m_GraphScroll.get_height();
  combine({GDK_KEY_Control_L}, GDK_KEY_f);
  EXPECT_TRUE(w.m_FindBar.is_mapped());
  EXPECT_TRUE(w.m_FindBar.entry.has_focus());
  EXPECT_LT(w.m_GraphScroll.get_height(), height);
  const std::vector<Gtk::Widget*> parts = w.m_MainBox.get_children();
  ASSERT_EQ(parts.size(), 5u);
  EXPECT_EQ(parts[1], w.m_refUIManager->get_widget("/ToolBar"));
  EXPECT_EQ(parts[2], &w.m_FindBar);
  EXPECT_EQ(parts[3], &w.m_HPaned);
  type(GDK_KEY_Escape);
  EXPECT_FALSE(w.m_FindBar.is_mapped());
  EXPECT_EQ(w.m_GraphScroll.get_height(), height);
  type("/");
  EXPECT_TRUE(w.m_FindBar.is_mapped());
  EXPECT_TRUE(w.m_FindBar.entry.has_focus());
  EXPECT_EQ(text(), "") << "the slash opens, it is not typed";
  type("/");
  EXPECT_EQ(text(), "/") << "in the bar it is a letter as any other";
}

TEST_F(Finding, FindsAsOneTypes) {
  openAndFind(
      "N=5\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\nI=4 t=4\n"
      "J=0 S=0 E=1 W=<w in='good'/> a=-1\nJ=1 S=1 E=2 W=<w in='Morning'/> a=-1\n"
      "J=2 S=2 E=3 W=<w in='morn'/> a=-1\nJ=3 S=3 E=4 W=<w in='moon'/> a=-1\n");
  EXPECT_EQ(said(), "");
  type("m");
  EXPECT_EQ(said(), "1 of 3");
  EXPECT_EQ(selectedIds(), Ids{1});
  type("o");
  EXPECT_EQ(said(), "1 of 3");
  type(GDK_KEY_F3);
  EXPECT_EQ(said(), "2 of 3");
  EXPECT_EQ(selectedIds(), Ids{2});
  type("r");
  EXPECT_EQ(said(), "2 of 2") << "what has the longer text, too, stays found";
  EXPECT_EQ(selectedIds(), Ids{2});
  type(GDK_KEY_BackSpace);
  type("o");
  EXPECT_EQ(said(), "1 of 1");
  EXPECT_EQ(selectedIds(), Ids{3});
  EXPECT_EQ(takeDotRuns(), 0);
  for (int i = 0; i < 3; ++i) type(GDK_KEY_BackSpace);
  EXPECT_EQ(said(), "");
  EXPECT_EQ(selectedIds(), Ids{3});
  EXPECT_FALSE(isRed());
  type("mo");
  EXPECT_EQ(said(), "1 of 3") << "an emptied text begins anew";
}

TEST_F(Finding, EveryKeyForTheNextAndThePreviousOneGoesRound) {
  openAndFind(chainOf(4));
  type("word");
  struct Way {
    std::vector<unsigned> held;
    unsigned key;
    int step;
  };
  int at = 0;
  for (const Way& way : std::vector<Way>{{{}, GDK_KEY_Return, 1},
                                         {{}, GDK_KEY_KP_Enter, 1},
                                         {{}, GDK_KEY_F3, 1},
                                         {{GDK_KEY_Control_L}, GDK_KEY_g, 1},
                                         {{}, GDK_KEY_Return, 1},
                                         {{GDK_KEY_Shift_L}, GDK_KEY_Return, -1},
                                         {{GDK_KEY_Shift_L}, GDK_KEY_F3, -1},
                                         {{GDK_KEY_Control_L, GDK_KEY_Shift_L}, GDK_KEY_g, -1},
                                         {{GDK_KEY_Shift_R}, GDK_KEY_F3, -1}}) {
    ASSERT_EQ(selectedIds(), Ids{at});
    ASSERT_EQ(said(), std::to_string(at + 1) + " of 4");
    combine(way.held, way.key);
    at = (at + way.step + 4) % 4;
  }
  EXPECT_EQ(selectedIds(), Ids{at});
  EXPECT_EQ(text(), "word");
}

TEST_F(Finding, ButtonsDoWhatTheirKeysDo) {
  TestWindow& w = openAndFind(chainOf(4));
  type("word");
  const auto press = [this](Gtk::Button& button) {
    click(button, button.get_width() / 2, button.get_height() / 2);
  };
  press(w.m_FindBar.next);
  press(w.m_FindBar.next);
  EXPECT_EQ(said(), "3 of 4");
  press(w.m_FindBar.previous);
  EXPECT_EQ(said(), "2 of 4");
  EXPECT_EQ(selectedIds(), Ids{1});
  EXPECT_TRUE(w.m_FindBar.entry.has_focus());
  press(w.m_FindBar.close);
  EXPECT_FALSE(w.m_FindBar.get_visible());
}

TEST_F(Finding, SelectsAsADoublePressWithoutControl) {
  TestWindow& w = open(chainOf(4));
  selectByPointer({2});
  const double start = w.m_RangeStart, end = w.m_RangeEnd;
  const auto rows = treeRows();
  const std::string expected = w.m_SelectedEdges.at(0).label;
  selectByPointer({0, 1});
  w.m_DragStartX = 5;
  w.m_DragCurrentX = 9;
  combine({GDK_KEY_Control_L}, GDK_KEY_f);
  pressKey(GDK_KEY_Control_L);  // what is held does not matter
  w.m_FindBar.entry.set_text("WORD2");
  releaseKey(GDK_KEY_Control_L);
  EXPECT_EQ(selectedIds(), Ids{2});
  EXPECT_EQ(w.m_SelectedEdges.at(0).label, expected);
  EXPECT_EQ(w.m_RangeStart, start);
  EXPECT_EQ(w.m_RangeEnd, end);
  EXPECT_EQ(treeRows(), rows);
  EXPECT_EQ(w.m_DragStartX, -1);
  EXPECT_EQ(w.m_DragCurrentX, -1);
  settle();
  const Box label = labelBoxOf(2);
  expectOverDrawing(label.left + label.width / 2, label.top + label.height / 2,
                    {kSelectedLabelFill});
}

TEST_F(Finding, GivesPathAttributesAndSoundOfAWordByKeyboardAlone) {
  TestWindow& w = open(kTwoWays);
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  type("/");
  type("b / b");
  EXPECT_EQ(selectedIds(), Ids{1});
  EXPECT_EQ(treeRows(), (std::vector<std::string>{"w=", "  in=b", "  out=B"}));
  EXPECT_EQ(w.m_RangeStart, 0.0);
  EXPECT_EQ(w.m_RangeEnd, 0.5);
  type(GDK_KEY_Escape);
  type(GDK_KEY_F10);
  type(GDK_KEY_Right);
  for (int entry = 0; entry < 5; ++entry) type(GDK_KEY_Down);
  type(GDK_KEY_Return);
  ASSERT_TRUE(waitFor([&] { return w.m_ShowPathWithEdge && w.m_RunsInProgress == 0; }));
  settle();
  EXPECT_EQ(w.m_refInfoBuffer->get_text(), "Shortest path with the selected edge : b / B d / D ");
}

TEST_F(Finding, BringsWhatIsFoundIntoTheMiddle) {
  TestWindow& w = open(bundlesOf(12, 14));
  combine({GDK_KEY_Control_L}, GDK_KEY_f);
  for (const float zoom : {0.5f, 0.8f, 1.0f}) {
    SCOPED_TRACE(zoom);
    w.m_Zoom = zoom / 1.25f;
    activate("DisplayZoomIn");
    settle();
    w.m_FindBar.entry.set_text("word89");
    settle();
    EXPECT_EQ(selectedIds(), Ids{89});
    const Box label = labelBoxOf(89);
    const Box seen = w.visiblePart();
    const auto expectScrolled = [](int scroll, int middle, int page, int shown) {
      EXPECT_NEAR(scroll, std::max(std::min(middle - page / 2, shown - page), 0), 1);
    };
    expectScrolled(seen.left, label.left + label.width / 2, seen.width,
                   w.m_refShownImage->get_width());
    expectScrolled(seen.top, label.top + label.height / 2, seen.height,
                   w.m_refShownImage->get_height());
    EXPECT_GT(seen.left, 0);
    EXPECT_EQ(seen.top > 0, zoom > 0.6f);
    expectOverDrawing(label.left + label.width / 2, label.top + label.height / 2,
                      {kSelectedLabelFill});
    w.m_FindBar.entry.set_text("");
    w.m_GraphScroll.get_hadjustment()->set_value(0);
  }
}

TEST_F(Finding, TurnsRedWhenNothingIsFoundAndKeepsTheSelection) {
  openAndFind(chainOf(3));
  type("word1");
  EXPECT_FALSE(isRed());
  type("x");
  EXPECT_TRUE(isRed());
  EXPECT_EQ(said(), "not found");
  EXPECT_EQ(selectedIds(), Ids{1});
  type(GDK_KEY_F3);
  combine({GDK_KEY_Shift_L}, GDK_KEY_Return);
  EXPECT_EQ(selectedIds(), Ids{1});
  type(GDK_KEY_BackSpace);
  EXPECT_FALSE(isRed());
  EXPECT_EQ(said(), "1 of 1");
}

TEST_F(Finding, TellsAScreenReaderTheWord) {
  TestWindow& w = openAndFind(kTwoWords);
  const auto heard = [&w] {
    return std::string(w.m_FindBar.entry.get_accessible()->get_description());
  };
  std::vector<std::string> changes;
  const auto note = [](AtkObject* object, AtkPropertyValues* values, gpointer list) {
    if (std::string(values->property_name) == "accessible-description")
      static_cast<std::vector<std::string>*>(list)->push_back(atk_object_get_description(object));
  };
  g_signal_connect(
      w.m_FindBar.entry.get_accessible()->gobj(), "property-change",
      G_CALLBACK(static_cast<void (*)(AtkObject*, AtkPropertyValues*, gpointer)>(note)), &changes);
  type("gut");
  EXPECT_EQ(heard(), "1 of 1: good / gut");
  ASSERT_FALSE(changes.empty());
  EXPECT_EQ(changes.back(), "1 of 1: good / gut");
  type("x");
  EXPECT_EQ(heard(), "not found");
  g_signal_handlers_disconnect_by_data(w.m_FindBar.entry.get_accessible()->gobj(), &changes);
  EXPECT_EQ(std::string(w.m_FindBar.previous.get_accessible()->get_name()), "Previous");
  EXPECT_EQ(std::string(w.m_FindBar.next.get_accessible()->get_name()), "Next");
  EXPECT_EQ(std::string(w.m_FindBar.close.get_accessible()->get_name()), "Close the find bar");
  EXPECT_EQ(std::string(w.m_FindBar.entry.get_accessible()->get_name()), "Find in the labels");
}

TEST_F(Finding, EscapeGivesTheFocusBack) {
  TestWindow& w = open(kTwoWords);
  selectByPointer({1});
  click(w.m_AttributeTree, 20, 30);
  ASSERT_TRUE(w.m_AttributeTree.has_focus());
  combine({GDK_KEY_Control_L}, GDK_KEY_f);
  ASSERT_TRUE(w.m_FindBar.entry.has_focus());
  combine({GDK_KEY_Control_L}, GDK_KEY_f);
  type(GDK_KEY_Escape);
  EXPECT_FALSE(w.m_FindBar.get_visible());
  EXPECT_TRUE(w.m_AttributeTree.has_focus());
}

TEST_F(Finding, KeysInTheBarDoNotCountAsHeldButControlDoes) {
  TestWindow& w = openAndFind(chainOf(3));
  EXPECT_FALSE(w.m_ControlHeld);
  type("word1");
  type(GDK_KEY_Shift_L);
  type(GDK_KEY_F3);
  type(GDK_KEY_Return);
  EXPECT_FALSE(w.m_ControlHeld);
  pressKey(GDK_KEY_Control_L);
  EXPECT_TRUE(w.m_ControlHeld);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_FALSE(w.m_ControlHeld);
  pressKey(GDK_KEY_Escape);
  releaseKey(GDK_KEY_Escape);
  ASSERT_FALSE(w.m_FindBar.get_visible());
  EXPECT_FALSE(w.m_ControlHeld) << "pressed in the bar, let go of elsewhere";
  type("a");
  EXPECT_TRUE(w.m_ControlHeld) << "elsewhere keys count as ever";
}

TEST_F(Finding, ControlHeldInTheBarAddsByDoublePress) {
  TestWindow& w = openAndFind(chainOf(3));
  type("word1");
  pressKey(GDK_KEY_Control_L);
  const auto [x, y] = labelCentre(w, 2);
  doubleClick(w.m_GraphArea, x, y);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_EQ(selectedIds(), (Ids{1, 2}));
}

TEST_F(Finding, LooksAgainInNewLabels) {
  TestWindow& w = openAndFind(chainOf(3));
  type("word1");
  ASSERT_EQ(said(), "1 of 1");
  activate("DisplayValue");
  settle();
  EXPECT_EQ(said(), "not found");
  EXPECT_TRUE(isRed());
  EXPECT_EQ(selectedIds(), Ids{1});
  activate("DisplayDefault");
  settle();
  EXPECT_EQ(said(), "1 of 1");
  EXPECT_FALSE(isRed());
  w.on_close();
  EXPECT_EQ(said(), "");
  EXPECT_FALSE(isRed());
  type(GDK_KEY_F3);
  EXPECT_EQ(selectedIds(), Ids{});
  openLattice(chainOf(12), "next.lat");
  EXPECT_EQ(said(), "0 of 3") << "nothing is selected unasked";
  EXPECT_EQ(selectedIds(), Ids{});
  type(GDK_KEY_F3);
  EXPECT_EQ(said(), "1 of 3");
  EXPECT_EQ(selectedIds(), Ids{1});
}

TEST_F(Finding, WaitsWhileTheLatticeIsDrawnAnew) {
  TestWindow& w = openAndFind(chainOf(3));
  Ids during = {-1};
  duringStage("Loading graph elements...", [&] {
    w.m_FindBar.entry.set_text("word2");
    w.on_find_next();
    during = selectedIds();
  });
  w.renderGraph();
  EXPECT_EQ(during, Ids{});
  EXPECT_EQ(selectedIds(), Ids{2});
  EXPECT_EQ(said(), "1 of 1");
}

TEST_F(Finding, BarOpensWithoutALattice) {
  TestWindow& w = showWindow();
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  type(GDK_KEY_F3);
  EXPECT_TRUE(w.m_FindBar.get_visible()) << "with no text yet to look for the next of";
  type("word");
  EXPECT_EQ(said(), "");
  EXPECT_FALSE(isRed());
  type(GDK_KEY_Return);
  type(GDK_KEY_Escape);
  EXPECT_FALSE(w.m_FindBar.get_visible());
}

TEST_F(Finding, FindsWordsOfEveryScript) {
  TestWindow& w = openAndFind(
      "N=4\nI=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=3\n"
      "J=0 S=0 E=1 W=<w in='שלום'/> a=-1\nJ=1 S=1 E=2 W=<w in='cafe\u0301'/> a=-1\n"
      "J=2 S=2 E=3 W=<w in='Ärger'/> a=-1\n");
  for (const auto& [wanted, linkId] :
       {std::pair("לום", 0), std::pair("CAF\u00c9", 1), std::pair("ärg", 2)}) {
    w.m_FindBar.entry.set_text(wanted);
    settle();
    EXPECT_EQ(selectedIds(), Ids{linkId});
    const Box label = labelBoxOf(linkId);
    expectOverDrawing(label.left + label.width / 2, label.top + 3, {kSelectedLabelFill});
  }
}

/// A thousand links, four between each two nodes; every fortieth is a "needle".
std::string thousandLinks() {
  std::string text = "N=251 L=1000\n";
  for (int i = 0; i <= 250; ++i)
    text += "I=" + std::to_string(i) + " t=" + std::to_string(i / 10.0) + "\n";
  for (int i = 0; i < 1000; ++i)
    text += "J=" + std::to_string(i) + " S=" + std::to_string(i / 4) +
            " E=" + std::to_string(i / 4 + 1) + " W=<w in='" + (i % 40 ? "straw" : "Needle") +
            std::to_string(i) + "'/> a=-1\n";
  return text;
}

/// A layout of it as `dot` writes it, which would take `dot` itself much longer.
std::string layoutOfThousandLinks() {
  std::string text = "digraph G {\n\tgraph [bb=\"0,0,25000,400\"];\n";
  for (int i = 0; i <= 250; ++i)
    text += "\t" + std::to_string(i) + "\t[pos=\"" + std::to_string(100 * i) +
            ",200\",width=\"0.4\",height=\"0.4\"];\n";
  for (int i = 0; i < 1000; ++i)
    text += "\t" + std::to_string(i / 4) + " -> " + std::to_string(i / 4 + 1) +
            "\t[label=" + (i % 40 ? "straw" : "Needle") + std::to_string(i) +
            ", comment=\"ID = " + std::to_string(i) + "\", lp=\"" +
            std::to_string(100 * (i / 4) + 50) + "," + std::to_string(350 - 100 * (i % 4)) +
            "\"];\n";
  return text + "}\n";
}

TEST_F(Finding, WordAmongAThousandLinksIsFoundAndMarked) {
  folder.write("layout", layoutOfThousandLinks());
  const auto picture = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, 25000, 400);
  picture->fill(0xffffffff);
  picture->save("picture.png", "png");
  replaceDot("if [ $1 = -Tpng ]; then cp picture.png $3; else cp layout $3; fi");
  TestWindow& w = openLattice(thousandLinks());
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  for (const float zoom : {0.2f, 0.7f, 1.0f}) {
    SCOPED_TRACE(zoom);
    w.m_Zoom = zoom / 1.25f;
    activate("DisplayZoomIn");
    settle();
    type("/");
    type("needle");
    EXPECT_EQ(said(), "1 of 25");
    EXPECT_EQ(selectedIds(), Ids{0});
    for (int i = 0; i < 12; ++i) type(GDK_KEY_F3);
    EXPECT_EQ(said(), "13 of 25");
    EXPECT_EQ(selectedIds(), Ids{480});
    const auto [x, y] = labelCentre(w, 480);
    const Box seen = w.visiblePart();
    EXPECT_NEAR(x, seen.left + seen.width / 2, 1);
    expectOverDrawing(x, y, {kSelectedLabelFill});
    type(GDK_KEY_Escape);
    w.m_FindBar.entry.set_text("");
  }
}

TEST_F(Finding, ZoomKeysZoom) {
  TestWindow& w = open(chainOf(10));
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  const float fitting = w.m_Zoom;
  ASSERT_LT(fitting, 0.6f);
  for (const unsigned key : {GDK_KEY_equal, GDK_KEY_KP_Add}) {
    w.m_Zoom = 0.5f;
    combine({GDK_KEY_Control_L}, key);
    EXPECT_EQ(w.m_Zoom, 0.5f * 1.25f) << gdk_keyval_name(key);
  }
  w.m_Zoom = 0.5f;
  combine({GDK_KEY_Control_L, GDK_KEY_Shift_L}, GDK_KEY_equal);  // plus
  EXPECT_EQ(w.m_Zoom, 0.5f * 1.25f);
  for (const unsigned key : {GDK_KEY_minus, GDK_KEY_KP_Subtract}) {
    w.m_Zoom = 0.5f;
    combine({GDK_KEY_Control_L}, key);
    EXPECT_EQ(w.m_Zoom, 0.5f * 0.8f) << gdk_keyval_name(key);
  }
  combine({GDK_KEY_Control_L}, GDK_KEY_0);
  EXPECT_EQ(w.m_Zoom, fitting);
  type("-");
  EXPECT_EQ(w.m_Zoom, fitting) << "without Control it is no key of the zoom";
}

}  // namespace
}  // namespace quorbel
