// The keys: those of the window's own, beside the ones that stock items bring, and the Control key.

#include "app/main_window.h"

namespace quorbel {

/// Their actions stand in no menu.
void MainWindow::addKeys() {
  m_refKeyActions = Gtk::ActionGroup::create("Keys");
  const Glib::RefPtr<Gtk::AccelGroup> keys = Gtk::AccelGroup::create();
  const auto add = [&](const char* name, const char* key, void (MainWindow::*operation)()) {
    const Glib::RefPtr<Gtk::Action> action = Gtk::Action::create(name);
    m_refKeyActions->add(action, Gtk::AccelKey(key), sigc::mem_fun(*this, operation));
    action->set_accel_group(keys);
    action->connect_accelerator();
  };
  using W = MainWindow;
  add("Find", "<control>f", &W::on_find);
  add("FindNext", "F3", &W::on_find_next);
  add("FindNextByLetter", "<control>g", &W::on_find_next);
  add("FindPrevious", "<shift>F3", &W::on_find_previous);
  add("FindPreviousByLetter", "<control><shift>g", &W::on_find_previous);
  add("ZoomIn", "<control>plus", &W::on_zoom_in);
  add("ZoomInWithoutShift", "<control>equal", &W::on_zoom_in);
  add("ZoomInOnKeypad", "<control>KP_Add", &W::on_zoom_in);
  add("ZoomOut", "<control>minus", &W::on_zoom_out);
  add("ZoomOutOnKeypad", "<control>KP_Subtract", &W::on_zoom_out);
  add("ZoomFit", "<control>0", &W::on_zoom_fit);
  add("ZoomFitOnKeypad", "<control>KP_0", &W::on_zoom_fit);
  add_accel_group(keys);
}

/// Before any part of the window gets a key: notes which keys are the find bar's, and opens it by a
/// slash, which some parts would take for a text of their own.
bool MainWindow::on_key_before(GdkEventKey* event) {
  const bool isModified = event->state & (GDK_CONTROL_MASK | GDK_MOD1_MASK);
  if (isInFindBar()) {
    m_KeysOfFindBar.insert(event->hardware_keycode);
    return false;
  }
  m_KeysOfFindBar.erase(event->hardware_keycode);
  if (event->keyval != GDK_KEY_slash || isModified) return false;
  on_find();
  return true;
}

/// Keys of the find bar, before it gets them itself.
bool MainWindow::on_find_bar_key(GdkEventKey* event) {
  const bool isEnter = event->keyval == GDK_KEY_Return || event->keyval == GDK_KEY_KP_Enter ||
                       event->keyval == GDK_KEY_ISO_Enter;
  if (event->keyval == GDK_KEY_Escape) {
    on_close_find_bar();
  } else if (isEnter && m_FindBar.entry.has_focus()) {
    if (event->state & GDK_SHIFT_MASK)
      on_find_previous();
    else
      on_find_next();
  } else {
    return false;
  }
  return true;
}

/// Only the left Control key counts, and the release of any other key counts as holding it: after
/// one, the next double press adds to the selection. What is typed into the find bar is no such
/// key.
bool MainWindow::on_key_event(GdkEventKey* event) {
  const bool isLeftControl = event->keyval == GDK_KEY_Control_L;
  const bool isPress = event->type == GDK_KEY_PRESS;
  const bool wasOfFindBar = !isPress && m_KeysOfFindBar.erase(event->hardware_keycode) > 0;
  if (!isLeftControl && (wasOfFindBar || isInFindBar())) return true;
  m_ControlHeld = isPress ? isLeftControl : !isLeftControl;
  return true;
}

}  // namespace quorbel
