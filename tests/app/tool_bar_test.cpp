// What of the tool bar shows at the window's default size.

#include <gtk/gtk.h>

#include "app/window_fixture.h"

namespace quorbel {
namespace {

class ToolBar : public WindowTest {
 protected:
  ToolBar() { g_object_get(gtk_settings_get_default(), "gtk-font-name", &m_FontBefore, nullptr); }
  ~ToolBar() override {
    setFont(m_FontBefore);
    g_free(m_FontBefore);
  }

  static void setFont(const std::string& font) {
    g_object_set(gtk_settings_get_default(), "gtk-font-name", font.c_str(), nullptr);
  }

  /// The toolkit's own font, this many times as large.
  std::string fontTimes(double factor) const {
    Pango::FontDescription font(m_FontBefore);
    font.set_size(static_cast<int>(font.get_size() * factor));
    return font.to_string();
  }

 private:
  gchar* m_FontBefore = nullptr;
};

TEST_F(ToolBar, ShowsBothPicturesAtTheDefaultSizeWithRoomForLargerFonts) {
  // DejaVu Sans is the widest of the common fonts.
  for (const std::string& font : {fontTimes(1.0), fontTimes(1.2), std::string("DejaVu Sans 10"),
                                  std::string("DejaVu Sans 12")}) {
    SCOPED_TRACE(font);
    setFont(font);
    TestWindow& w = showWindow();
    ASSERT_EQ(w.get_width(), 795);
    for (Gtk::Image* picture : {&w.m_FundingImage, &w.m_LogoImage}) {
      const Gtk::Allocation place = picture->get_allocation();
      EXPECT_TRUE(picture->is_mapped());
      EXPECT_GE(place.get_width(), picture->get_pixbuf()->get_width());
      EXPECT_GE(place.get_height(), picture->get_pixbuf()->get_height());
      EXPECT_LE(place.get_x() + place.get_width(), w.get_width());
    }
    window.reset();
  }
}

}  // namespace
}  // namespace quorbel
