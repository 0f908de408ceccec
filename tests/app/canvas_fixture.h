#pragma once

#include <string>
#include <vector>

#include "app/lattices.h"
#include "app/painted_picture.h"
#include "app/window_fixture.h"

namespace quorbel {

/// A test of the canvas and of what is done on it, in a window with a lattice. Counts repaints and
/// runs of `dot`.
class CanvasTest : public WindowTest {
 protected:
  /// Opens the lattice; counting begins when it is drawn.
  TestWindow& open(const std::string& lattice);

  /// Repaints of the canvas and of the sound strip since the last look.
  int takeCanvasRepaints();
  int takeStripRepaints();

  /// Runs of `dot` since the last look; drawing a lattice takes two.
  int takeDotRuns();

  // Events as the toolkit hands them to a widget, for what no real pointer does on demand. They
  // return whether the event was handled.
  bool sendMotion(double x, double y, bool isHint = false);
  bool sendPress(GdkEventType type, unsigned button, double x, double y);
  bool sendScroll(GdkScrollDirection direction);
  bool sendKey(GdkEventType type, unsigned keysym);
  bool sendExpose(const Box& area);

  /// Makes the edges' labels take a double press each, the first without and all others with the
  /// left Control key held.
  void selectByPointer(const std::vector<int>& linkIds);

  /// The link ids of the selected edges, in the order of selection.
  std::vector<int> selectedIds() const;

  /// The rows of the attribute tree as the user sees them, "name=value" each, two blanks deeper for
  /// each level.
  std::vector<std::string> treeRows();

  /// Where things lie on the canvas.
  Box labelBoxOf(int linkId) const;
  Box nodeBoxOf(int nodeIndex) const;

  /// What the canvas shows at a place; it must be visible. Call `settle` before.
  Pixel canvasPixel(int x, int y);

  /// What the drawing alone would show there: white outside the picture.
  Pixel drawnPixel(int x, int y) const;

  /// Checks that the canvas shows this colour over the drawing; without one, the drawing alone.
  void expectOverDrawing(int x, int y, const std::vector<Rgba>& colours = {});

 private:
  GdkEvent* eventOf(GdkEventType type, Gtk::Widget& widget);
  bool send(GdkEvent* event, Gtk::Widget& widget);

  int m_CanvasRepaints = 0;
  int m_StripRepaints = 0;
  std::size_t m_DotRunsSeen = 0;
};

/// A row of words, one after the other, wider than the window when it is not zoomed.
std::string chainOf(int words);

/// Words side by side between each two nodes: higher than the window when it is not zoomed.
std::string bundlesOf(int bundles, int words);

}  // namespace quorbel
