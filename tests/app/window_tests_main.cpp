#include <gtest/gtest.h>
#include <gtkmm/main.h>

#include <cstdlib>

#include "temporary_folder.h"

/// The tests need a display and no sound card. What the toolkit remembers of dialogs and chosen
/// files stays out of the user's folders.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  setenv("ALSOFT_DRIVERS", "null", 0);
  setenv("NO_AT_BRIDGE", "1", 1);
  const quorbel::TemporaryFolder memory;
  for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
    setenv(name, memory.path().c_str(), 1);
  Gtk::Main toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
