// What a screen reader is told about the parts of the window that carry no text.

#include <atkmm/object.h>

#include "app/window_fixture.h"
#include "texts/product.h"

namespace quorbel {
namespace {

class AccessibleNames : public WindowTest {
 protected:
  static std::string nameOf(Gtk::Widget& widget) { return widget.get_accessible()->get_name(); }

  /// The names of all widgets below one that are of the type.
  template <typename Type>
  static std::vector<std::string> namesOfAll(Gtk::Container& container) {
    std::vector<std::string> names;
    container.foreach ([&names](Gtk::Widget& child) {
      if (dynamic_cast<Type*>(&child)) names.push_back(nameOf(child));
      if (auto* const inner = dynamic_cast<Gtk::Container*>(&child))
        for (const std::string& name : namesOfAll<Type>(*inner)) names.push_back(name);
    });
    return names;
  }
};

TEST_F(AccessibleNames, SayWhatTheAreasShow) {
  showWindow();
  EXPECT_EQ(nameOf(window->m_GraphArea), "Lattice");
  EXPECT_EQ(nameOf(window->m_SoundArea), "Waveform");
  EXPECT_EQ(nameOf(window->m_AttributeTree), "Attributes of the selected links");
  EXPECT_EQ(nameOf(window->m_InfoView), "Words of the paths");
}

TEST_F(AccessibleNames, SayWhatThePicturesAre) {
  showWindow();
  EXPECT_EQ(nameOf(window->m_LogoImage), "Logo of the program");
  EXPECT_EQ(nameOf(window->m_FundingImage), "Logo of the funding programme");
  bool hasLooked = false;
  answer = [&](Gtk::Dialog& dialog) {
    EXPECT_EQ(namesOfAll<Gtk::Image>(*dialog.get_vbox()),
              std::vector<std::string>{"About " + PRODUCT_NAME});
    hasLooked = true;
    dialog.response(Gtk::RESPONSE_CLOSE);
  };
  activate("HelpAbout");
  EXPECT_TRUE(hasLooked);
}

TEST_F(AccessibleNames, SayWhatTheArrowOpens) {
  showWindow();
  EXPECT_EQ(namesOfAll<Gtk::ToggleButton>(window->m_OpenButton),
            std::vector<std::string>{"Files beside the lattice"});
}

TEST_F(AccessibleNames, LeaveNoButtonWithoutOne) {
  showWindow();
  const std::vector<std::string> names = namesOfAll<Gtk::Button>(window->m_MainBox);
  EXPECT_EQ(names,
            (std::vector<std::string>{"Open", "Files beside the lattice", "Close", "Zoom fit",
                                      "Shortest path", "S.P. with edge", "Play", "Stop"}));
}

}  // namespace
}  // namespace quorbel
