#pragma once

namespace quorbel {

/// Which calls of libraries fail or dawdle for now. The test program has functions of its own in
/// front of them, which pass a call on unless something is to go wrong.
struct LibraryFaults {
  bool soundDevice = false;    ///< there is none
  bool userInterface = false;  ///< the toolkit refuses the description of menus and tool bar
  int iconDelayMs = 0;         ///< how long the icon of a file takes, as on a slow file server
};

/// The one set of the process; all false at first.
LibraryFaults& libraryFaults();

}  // namespace quorbel
