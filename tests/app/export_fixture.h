#pragma once

#include <string>
#include <vector>

#include "app/lattices.h"
#include "app/window_fixture.h"

namespace quorbel {

/// One of the five export actions.
struct ExportFormat {
  const char* action;
  const char* format;     ///< what `dot` is asked for
  const char* extension;  ///< of the file's name
};

inline constexpr ExportFormat kExportFormats[] = {{"FileExportPNG", "png", "png"},
                                                  {"FileExportSVG", "svg", "svg"},
                                                  {"FileExportDIA", "dia", "dia"},
                                                  {"FileExportPostscript", "ps", "ps"},
                                                  {"FileExportPostscript2", "ps2", "ps"}};

/// A test that exports the drawing by the window's actions and dialogs.
class ExportTest : public WindowTest {
 protected:
  static constexpr const char* kSaveTitle = "Please choose a filename";

  /// Replaces files without being asked twice; a test may set `replaceFiles`.
  ExportTest();

  /// Exports by the action and saves under this name in the folder, or the full path.
  void exportAs(const char* action, const std::string& name);

  /// Enters the full path in the save dialog and clicks on Save.
  void save(Gtk::FileChooserDialog& dialog, const std::string& path);

  /// The save dialog that is on screen.
  static Gtk::FileChooserDialog& saveDialog();

  std::string pathOf(const std::string& name) const { return (folder.path() / name).string(); }

  /// The text of the box that asks whether to replace a file in the folder.
  std::string question(const std::string& name) const { return pathOf(name) + " exists already."; }

  /// The text of the box that says that a file in the folder could not be written.
  std::string notWritten(const std::string& name, const std::string& why) const {
    return pathOf(name) + " could not be written: " + why;
  }

  /// Has `dot` note its arguments, and then run the lines of a shell script.
  void watchDot(const std::string& script = "exec \"$REAL_DOT\" \"$@\"");

  /// The arguments of each run of `dot` since the last look.
  std::vector<std::vector<std::string>> takeDotRuns() const;

  /// The two runs for an export.
  static std::vector<std::vector<std::string>> runsFor(const std::string& format,
                                                       const std::string& path);

  bool replaceFiles = true;

 private:
  std::string m_Path;  ///< to save under
};

}  // namespace quorbel
