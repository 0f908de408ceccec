#include "app/canvas_fixture.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <sstream>
#include <utility>

namespace quorbel {
namespace {

Pixel asPixel(unsigned colour) {
  const auto part = [&](int shift) { return static_cast<int>(colour >> shift & 255u); };
  return {part(16), part(8), part(0), 255};
}

}  // namespace

TestWindow& CanvasTest::open(const std::string& lattice) {
  if (!window) {
    replaceDot("echo run >>dot-runs\nexec \"$REAL_DOT\" \"$@\"");
    showWindow();
    const auto count = [](int& repaints) {
      return [&repaints](GdkEventExpose*) {
        ++repaints;
        return false;
      };
    };
    window->m_GraphArea.signal_expose_event().connect(count(m_CanvasRepaints), false);
    window->m_SoundArea.signal_expose_event().connect(count(m_StripRepaints), false);
    waitFor([this] { return window->property_is_active().get_value(); });
  }
  openLattice(lattice);
  takeCanvasRepaints();
  takeStripRepaints();
  takeDotRuns();
  return *window;
}

int CanvasTest::takeCanvasRepaints() {
  settle();
  return std::exchange(m_CanvasRepaints, 0);
}

int CanvasTest::takeStripRepaints() {
  settle();
  return std::exchange(m_StripRepaints, 0);
}

int CanvasTest::takeDotRuns() {
  const std::size_t runs = linesOf("dot-runs").size();
  return static_cast<int>(runs - std::exchange(m_DotRunsSeen, runs));
}

GdkEvent* CanvasTest::eventOf(GdkEventType type, Gtk::Widget& widget) {
  GdkEvent* const event = gdk_event_new(type);
  event->any.window = GDK_WINDOW(g_object_ref(widget.get_window()->gobj()));
  return event;
}

bool CanvasTest::send(GdkEvent* event, Gtk::Widget& widget) {
  const bool isHandled = gtk_widget_event(widget.gobj(), event);
  gdk_event_free(event);
  return isHandled;
}

bool CanvasTest::sendMotion(double x, double y, bool isHint) {
  GdkEvent* const event = eventOf(GDK_MOTION_NOTIFY, window->m_GraphArea);
  event->motion.x = x;
  event->motion.y = y;
  event->motion.is_hint = isHint;
  return send(event, window->m_GraphArea);
}

bool CanvasTest::sendPress(GdkEventType type, unsigned button, double x, double y) {
  GdkEvent* const event = eventOf(type, window->m_GraphArea);
  event->button.button = button;
  event->button.x = x;
  event->button.y = y;
  return send(event, window->m_GraphArea);
}

bool CanvasTest::sendScroll(GdkScrollDirection direction) {
  GdkEvent* const event = eventOf(GDK_SCROLL, window->m_GraphArea);
  event->scroll.direction = direction;
  return send(event, window->m_GraphArea);
}

bool CanvasTest::sendKey(GdkEventType type, unsigned keysym) {
  GdkEvent* const event = eventOf(type, *window);
  event->key.keyval = keysym;
  return send(event, *window);
}

bool CanvasTest::sendExpose(const Box& area) {
  GdkEvent* const event = eventOf(GDK_EXPOSE, window->m_GraphArea);
  event->expose.area = {area.left, area.top, area.width, area.height};
  event->expose.region = gdk_region_rectangle(&event->expose.area);
  const bool isHandled = gtk_widget_send_expose(GTK_WIDGET(window->m_GraphArea.gobj()), event);
  gdk_event_free(event);
  return isHandled;
}

void CanvasTest::selectByPointer(const std::vector<int>& linkIds) {
  for (const int linkId : linkIds) {
    const bool isFirst = linkId == linkIds.front();
    if (!isFirst) pressKey(GDK_KEY_Control_L);
    const auto [x, y] = labelCentre(*window, linkId);
    doubleClick(window->m_GraphArea, x, y);
    if (!isFirst) releaseKey(GDK_KEY_Control_L);
  }
}

std::vector<int> CanvasTest::selectedIds() const {
  std::vector<int> ids;
  for (const LayoutItem& edge : window->m_SelectedEdges) ids.push_back(edge.linkId);
  return ids;
}

std::vector<std::string> CanvasTest::treeRows() {
  std::vector<std::string> rows;
  const Glib::RefPtr<Gtk::TreeModel> model = window->m_AttributeTree.get_model();
  if (!model) return rows;
  model->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& row) {
    const Glib::ustring name = (*row)[window->m_Columns.name];
    const Glib::ustring value = (*row)[window->m_Columns.value];
    rows.push_back(std::string(2 * (path.size() - 1), ' ') + name.raw() + "=" + value.raw());
    return false;
  });
  return rows;
}

Box CanvasTest::labelBoxOf(int linkId) const {
  return labelBox(window->canvasMapping(), edgeOf(*window, linkId));
}

Box CanvasTest::nodeBoxOf(int nodeIndex) const {
  for (const LayoutItem& item : window->m_EdgeLayouts)
    if (item.isNode && item.nodeIndex == nodeIndex) return nodeBox(window->canvasMapping(), item);
  throw std::runtime_error("no such node is drawn");
}

Pixel CanvasTest::canvasPixel(int x, int y) {
  const Glib::RefPtr<Gdk::Drawable> drawable = window->m_GraphArea.get_window();
  return asPixel(pixel(Gdk::Pixbuf::create(drawable, x, y, 1, 1), 0, 0));
}

Pixel CanvasTest::drawnPixel(int x, int y) const {
  const CanvasMapping mapping = window->canvasMapping();
  const Glib::RefPtr<Gdk::Pixbuf> shown = window->m_refShownImage;
  const int imageX = x - mapping.originX + mapping.scrollX;
  const int imageY = y - mapping.originY + mapping.scrollY;
  if (imageX < 0 || imageY < 0 || imageX >= shown->get_width() || imageY >= shown->get_height())
    return kWhite;
  return asPixel(pixel(shown, imageX, imageY));
}

void CanvasTest::expectOverDrawing(int x, int y, const std::vector<Rgba>& colours) {
  Pixel expected = drawnPixel(x, y);
  for (const Rgba& colour : colours) expected = expected.under(colour);
  const Pixel actual = canvasPixel(x, y);
  const int tolerance = colours.empty() ? 0 : 2;  // the server rounds, too
  EXPECT_LE(actual.differenceTo(expected), tolerance)
      << "at " << x << ", " << y << ": " << actual << ", expected " << expected;
}

std::string chainOf(int words) {
  std::ostringstream lattice;
  lattice << "N=" << words + 1 << " L=" << words << "\n";
  for (int i = 0; i <= words; ++i) lattice << "I=" << i << " t=" << i << "\n";
  for (int i = 0; i < words; ++i)
    lattice << "J=" << i << " S=" << i << " E=" << i + 1 << " W=<w in='word" << i << "'/> a=-1\n";
  return lattice.str();
}

std::string bundlesOf(int bundles, int words) {
  std::ostringstream lattice;
  lattice << "N=" << bundles + 1 << " L=" << bundles * words << "\n";
  for (int i = 0; i <= bundles; ++i) lattice << "I=" << i << " t=" << i << "\n";
  for (int i = 0; i < bundles * words; ++i)
    lattice << "J=" << i << " S=" << i / words << " E=" << i / words + 1 << " W=<w in='word" << i
            << "'/> a=-" << i << "\n";
  return lattice.str();
}

}  // namespace quorbel
