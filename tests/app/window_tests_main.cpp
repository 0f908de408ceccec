#include <gtest/gtest.h>
#include <gtkmm/main.h>

#include <cstdlib>

/// The tests need a display and no sound card.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  setenv("ALSOFT_DRIVERS", "null", 0);
  setenv("NO_AT_BRIDGE", "1", 1);
  Gtk::Main toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
