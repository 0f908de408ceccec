#include "app/canvas_fixture.h"

namespace quorbel {
namespace {

using Ids = std::vector<int>;

/// Keys, and what they make of the next double press.
class ControlKey : public CanvasTest {
 protected:
  void doublePress(int linkId) {
    const auto [x, y] = labelCentre(*window, linkId);
    doubleClick(window->m_GraphArea, x, y);
  }
};

TEST_F(ControlKey, LeftOneCountsWhileItIsHeld) {
  TestWindow& w = open(kTwoWords);
  EXPECT_FALSE(w.m_ControlHeld);
  pressKey(GDK_KEY_Control_L);
  EXPECT_TRUE(w.m_ControlHeld);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_FALSE(w.m_ControlHeld);
}

TEST_F(ControlKey, AnyOtherKeyCountsAfterItsRelease) {
  TestWindow& w = open(kTwoWords);
  for (const unsigned key : {GDK_KEY_a, GDK_KEY_7, GDK_KEY_Shift_L, GDK_KEY_Control_R}) {
    SCOPED_TRACE(gdk_keyval_name(key));
    pressKey(key);
    EXPECT_FALSE(w.m_ControlHeld);
    releaseKey(key);
    EXPECT_TRUE(w.m_ControlHeld);
  }
  pressKey(GDK_KEY_a);
  EXPECT_FALSE(w.m_ControlHeld) << "until a key is pressed again";
  releaseKey(GDK_KEY_a);
}

TEST_F(ControlKey, OtherKeyPressedMeanwhileTurnsItOff) {
  TestWindow& w = open(kTwoWords);
  pressKey(GDK_KEY_Control_L);
  pressKey(GDK_KEY_a);
  EXPECT_FALSE(w.m_ControlHeld);
  releaseKey(GDK_KEY_a);
  EXPECT_TRUE(w.m_ControlHeld);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_FALSE(w.m_ControlHeld);
}

TEST_F(ControlKey, IsHandledWhicheverItIs) {
  open(kTwoWords);
  for (const unsigned key : {GDK_KEY_Control_L, GDK_KEY_Control_R, GDK_KEY_a})
    for (const GdkEventType type : {GDK_KEY_PRESS, GDK_KEY_RELEASE})
      EXPECT_TRUE(sendKey(type, key)) << gdk_keyval_name(key);
}

TEST_F(ControlKey, WithoutItADoublePressSelectsOneEdge) {
  open(chainOf(3));
  doublePress(0);
  EXPECT_EQ(selectedIds(), Ids{0});
  doublePress(2);
  EXPECT_EQ(selectedIds(), Ids{2});
}

TEST_F(ControlKey, WithoutItASelectedEdgeStaysSelected) {
  open(chainOf(3));
  selectByPointer({0, 1, 2});
  ASSERT_EQ(selectedIds(), (Ids{0, 1, 2}));
  doublePress(1);
  EXPECT_EQ(selectedIds(), Ids{1});
  doublePress(1);
  EXPECT_EQ(selectedIds(), Ids{1});
}

TEST_F(ControlKey, HeldEdgesAreAddedInTheirOrderAndTakenOut) {
  TestWindow& w = open(chainOf(3));
  pressKey(GDK_KEY_Control_L);
  doublePress(2);
  doublePress(0);
  EXPECT_EQ(selectedIds(), (Ids{2, 0}));
  doublePress(1);
  EXPECT_EQ(selectedIds(), (Ids{2, 0, 1}));
  doublePress(0);
  EXPECT_EQ(selectedIds(), (Ids{2, 1}));
  doublePress(2);
  EXPECT_EQ(selectedIds(), Ids{1});
  EXPECT_EQ(w.m_RangeStart, 1.0 / 3);
  EXPECT_EQ(w.m_RangeEnd, 2.0 / 3);
  releaseKey(GDK_KEY_Control_L);
}

TEST_F(ControlKey, TakingTheLastEdgeOutInvertsTheRangeAndKeepsTheTree) {
  TestWindow& w = open(chainOf(3));
  doublePress(1);
  const std::vector<std::string> rows = treeRows();
  ASSERT_EQ(rows, (std::vector<std::string>{"w=", "  in=word1"}));
  pressKey(GDK_KEY_Control_L);
  doublePress(1);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_EQ(selectedIds(), Ids{});
  EXPECT_EQ(w.m_RangeStart, 1.0);
  EXPECT_EQ(w.m_RangeEnd, 0.0);
  EXPECT_EQ(treeRows(), rows);
}

TEST_F(ControlKey, DoublePressBesideLabelsKeepsASelectionEvenWithoutIt) {
  TestWindow& w = open(chainOf(3));
  selectByPointer({0, 1});
  doubleClick(w.m_GraphArea, 3, 3);
  EXPECT_EQ(selectedIds(), (Ids{0, 1}));
}

TEST_F(ControlKey, ReleasedLetterAddsToTheSelection) {
  open(chainOf(3));
  doublePress(0);
  pressKey(GDK_KEY_a);
  releaseKey(GDK_KEY_a);
  doublePress(1);
  EXPECT_EQ(selectedIds(), (Ids{0, 1}));
  doublePress(0);
  EXPECT_EQ(selectedIds(), Ids{1});
  pressKey(GDK_KEY_a);
  doublePress(2);
  EXPECT_EQ(selectedIds(), Ids{2});
  releaseKey(GDK_KEY_a);
}

TEST_F(ControlKey, RightOneHeldDoesNotAdd) {
  open(chainOf(3));
  doublePress(0);
  pressKey(GDK_KEY_Control_R);
  doublePress(1);
  EXPECT_EQ(selectedIds(), Ids{1});
  releaseKey(GDK_KEY_Control_R);
  doublePress(2);
  EXPECT_EQ(selectedIds(), (Ids{1, 2}));
}

TEST_F(ControlKey, IsRememberedWhenTheFileIsClosed) {
  TestWindow& w = open(kTwoWords);
  pressKey(GDK_KEY_Control_L);
  w.on_close();
  EXPECT_TRUE(w.m_ControlHeld);
  releaseKey(GDK_KEY_Control_L);
}

TEST_F(ControlKey, WorksWithoutALattice) {
  TestWindow& w = showWindow();
  ASSERT_TRUE(waitFor([&] { return w.property_is_active().get_value(); }));
  pressKey(GDK_KEY_Control_L);
  EXPECT_TRUE(w.m_ControlHeld);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_FALSE(w.m_ControlHeld);
}

TEST_F(ControlKey, ReachesTheWindowFromTheAttributeTree) {
  TestWindow& w = open(kTwoWords);
  doublePress(1);
  click(w.m_AttributeTree, 20, 30);
  ASSERT_TRUE(w.m_AttributeTree.has_focus());
  pressKey(GDK_KEY_Control_L);
  EXPECT_TRUE(w.m_ControlHeld);
  doublePress(0);
  releaseKey(GDK_KEY_Control_L);
  EXPECT_FALSE(w.m_ControlHeld);
  EXPECT_EQ(selectedIds(), (Ids{1, 0}));
}

}  // namespace
}  // namespace quorbel
