#include <gtk/gtk.h>

#include <climits>

#include "app/window_fixture.h"

namespace quorbel {
namespace {

/// What an error box consists of while it is shown.
struct BoxContents {
  std::string primary;
  std::string secondary;
  bool primaryIsMarkup = true;
  bool secondaryIsMarkup = true;
  GtkMessageType type = GTK_MESSAGE_OTHER;
  std::vector<int> responses;  ///< of its buttons
  std::string button;
  GtkWindow* parent = nullptr;
};

BoxContents contentsOf(Gtk::Dialog& dialog) {
  BoxContents box;
  gchar* primary = nullptr;
  gchar* secondary = nullptr;
  gboolean primaryIsMarkup = true;
  gboolean secondaryIsMarkup = true;
  g_object_get(dialog.gobj(), "text", &primary, "secondary-text", &secondary, "use-markup",
               &primaryIsMarkup, "secondary-use-markup", &secondaryIsMarkup, "message-type",
               &box.type, nullptr);
  box.primary = primary;
  box.secondary = secondary;
  box.primaryIsMarkup = primaryIsMarkup;
  box.secondaryIsMarkup = secondaryIsMarkup;
  g_free(primary);
  g_free(secondary);
  const std::vector<Gtk::Widget*> buttons = dialog.get_action_area()->get_children();
  for (Gtk::Widget* button : buttons) {
    box.responses.push_back(dialog.get_response_for_widget(*button));
    box.button = dynamic_cast<Gtk::Button&>(*button).get_label();
  }
  box.parent = gtk_window_get_transient_for(GTK_WINDOW(dialog.gobj()));
  return box;
}

class ErrorBox : public WindowTest {
 protected:
  /// Shows the message and returns what the box held.
  BoxContents show(const std::string& message) {
    BoxContents box;
    answer = [&](Gtk::Dialog& dialog) {
      box = contentsOf(dialog);
      dialog.response(Gtk::RESPONSE_OK);
    };
    if (!window) showWindow();
    window->show_error(*window, message);
    return box;
  }
};

TEST_F(ErrorBox, ShowsTheMessageUnderErrorWithOneButton) {
  const BoxContents box = show("It is over");
  EXPECT_EQ(box.primary, "Error :");
  EXPECT_EQ(box.secondary, "It is over");
  EXPECT_EQ(box.type, GTK_MESSAGE_ERROR);
  EXPECT_EQ(box.responses, std::vector<int>{Gtk::RESPONSE_OK});
  EXPECT_EQ(box.button, "gtk-ok");
  EXPECT_EQ(box.parent, window->gobj());
}

TEST_F(ErrorBox, ShowsMarkupAsItStands) {
  const BoxContents box = show("<b>bold</b> & <bad");
  EXPECT_EQ(box.secondary, "<b>bold</b> & <bad");
  EXPECT_FALSE(box.primaryIsMarkup);
  EXPECT_FALSE(box.secondaryIsMarkup);
}

TEST_F(ErrorBox, ShowsTextInOtherEncodings) {
  EXPECT_EQ(show("caf\xe9: not found").secondary, "caf\xef\xbf\xbd: not found");
}

TEST_F(ErrorBox, WrapsTheLongestPath) {
  const std::string path(PATH_MAX, 'W');
  int width = 0;
  answer = [&](Gtk::Dialog& dialog) {
    width = dialog.get_width();
    dialog.response(Gtk::RESPONSE_OK);
  };
  showWindow().show_error(*window, path + ": syntax error line 1");
  EXPECT_GT(width, 0);
  EXPECT_LT(width, 1000);
}

TEST_F(ErrorBox, IsGoneAfterTheAnswer) {
  show("It is over");
  for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
    EXPECT_FALSE(dynamic_cast<Gtk::Dialog*>(toplevel));
}

TEST_F(ErrorBox, IsNotModalOfItsOwn) {
  struct {
    int unmapped = 0;
    bool modal = true;
  } seen;
  showWindow();
  answer = [&](Gtk::Dialog& dialog) {
    // while it runs the toolkit makes any dialog modal; afterwards it gets back what it was
    g_signal_connect(dialog.gobj(), "unmap", G_CALLBACK(+[](GtkWindow* box, decltype(seen)* note) {
                       ++note->unmapped;
                       note->modal = gtk_window_get_modal(box);
                     }),
                     &seen);
    dialog.response(Gtk::RESPONSE_OK);
  };
  window->show_error(*window, "It is over");
  EXPECT_EQ(seen.unmapped, 1);
  EXPECT_FALSE(seen.modal);
}

TEST_F(ErrorBox, StaysAwayWhenTheUserHasLeft) {
  showWindow();
  window->on_quit();
  window->show_error(*window, "nobody reads this");
  EXPECT_EQ(dialogs, std::vector<std::string>());
}

}  // namespace
}  // namespace quorbel
