#include "dialogs/about_dialog.h"

#include <gtk/gtk.h>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {
namespace {

class About : public WindowTest {
 protected:
  /// A picture that is only this test's.
  About() {
    const auto own = Gdk::Pixbuf::create(Gdk::COLORSPACE_RGB, false, 8, 123, 45);
    own->fill(0x204060ff);
    own->save("images/about.png", "png");
    answer = [this](Gtk::Dialog& dialog) {
      look(dynamic_cast<AboutDialog&>(dialog));
      close(dialog);
    };
  }

  /// Asks the dialog to close as its title bar's cross does.
  static void close(Gtk::Dialog& dialog) {
    GdkEvent* const event = gdk_event_new(GDK_DELETE);
    event->any.window = GDK_WINDOW(g_object_ref(dialog.get_window()->gobj()));
    gtk_main_do_event(event);
    gdk_event_free(event);
  }

  void look(AboutDialog& dialog) {
    isModal = dialog.get_modal();
    hasSeparator = dialog.get_has_separator();
    isResizable = dialog.get_resizable();
    isForTheWindow = dialog.get_transient_for() == window.get();
    buttonCount = dialog.get_action_area()->get_children().size();
    for (Gtk::Widget* child : dialog.get_vbox()->get_children()) {
      auto* const image = dynamic_cast<Gtk::Image*>(child);
      if (!image) continue;
      ++imageCount;
      isImageShown = image->is_mapped();
      storage = image->get_storage_type();
      if (storage == Gtk::IMAGE_PIXBUF) picture = image->get_pixbuf();
      gboolean expand = FALSE, fill = FALSE;
      guint padding = 1;
      GtkPackType pack;
      gtk_box_query_child_packing(GTK_BOX(dialog.get_vbox()->gobj()), child->gobj(), &expand, &fill,
                                  &padding, &pack);
      isPackedWhole = expand && fill && padding == 0;
    }
  }

  bool isModal = false, hasSeparator = true, isResizable = true, isForTheWindow = false;
  bool isImageShown = false, isPackedWhole = false;
  std::size_t buttonCount = 99;
  int imageCount = 0;
  Gtk::ImageType storage = Gtk::IMAGE_EMPTY;
  Glib::RefPtr<Gdk::Pixbuf> picture;
};

TEST_F(About, ShowsThePictureUnderTheVersion) {
  showWindow();
  activate("HelpAbout");
  EXPECT_EQ(dialogs, std::vector<std::string>{"Quorbel v1.2 (10/2008)"});
  ASSERT_EQ(imageCount, 1);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->get_width(), 123);
  EXPECT_EQ(picture->get_height(), 45);
  EXPECT_EQ(pixel(picture, 60, 20), 0x204060u);
  EXPECT_TRUE(isImageShown);
  EXPECT_TRUE(isPackedWhole);
}

TEST_F(About, IsAPlainModalDialogOfItsPicturesSize) {
  showWindow();
  activate("HelpAbout");
  EXPECT_TRUE(isModal);
  EXPECT_TRUE(isForTheWindow);
  EXPECT_FALSE(hasSeparator);
  EXPECT_FALSE(isResizable);
  EXPECT_EQ(buttonCount, 0u);
}

TEST_F(About, IsGoneWhenItIsClosed) {
  showWindow();
  activate("HelpAbout");
  for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
    EXPECT_FALSE(dynamic_cast<AboutDialog*>(toplevel));
  activate("HelpAbout");
  EXPECT_EQ(dialogs.size(), 2u);
}

TEST_F(About, ComesUpWithALatticeToo) {
  TestWindow& w = openLattice(kTwoWords);
  activate("HelpAbout");
  EXPECT_EQ(dialogs, std::vector<std::string>{"Quorbel v1.2 (10/2008)"});
  EXPECT_TRUE(w.m_FileOpened);
}

TEST_F(About, WithoutItsPictureShowsABrokenOne) {
  std::filesystem::remove("images/about.png");
  showWindow();
  activate("HelpAbout");
  EXPECT_EQ(dialogs, std::vector<std::string>{"Quorbel v1.2 (10/2008)"});
  EXPECT_EQ(imageCount, 1);
  EXPECT_EQ(storage, Gtk::IMAGE_STOCK);
  EXPECT_TRUE(isImageShown);
}

TEST_F(About, TakesTitleModalityAndSeparatorFromItsMaker) {
  showWindow();
  AboutDialog dialog("title", *window, false, true);
  EXPECT_EQ(dialog.get_title(), "title");
  EXPECT_FALSE(dialog.get_modal());
  EXPECT_TRUE(dialog.get_has_separator());
  EXPECT_EQ(dialog.get_transient_for(), window.get());
}

}  // namespace
}  // namespace quorbel
