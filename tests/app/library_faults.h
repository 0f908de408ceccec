#pragma once

namespace quorbel {

/// Which calls of libraries fail for now. The test program has functions of its own in front of
/// them, which pass a call on unless it is to fail.
struct LibraryFaults {
  bool soundDevice = false;    ///< there is none
  bool userInterface = false;  ///< the toolkit refuses the description of menus and tool bar
};

/// The one set of the process; all false at first.
LibraryFaults& libraryFaults();

}  // namespace quorbel
