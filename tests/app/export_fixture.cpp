#include "app/export_fixture.h"

#include <chrono>
#include <sstream>

namespace quorbel {

ExportTest::ExportTest() {
  answer = [this](Gtk::Dialog& dialog) {
    if (auto* const chooser = dynamic_cast<Gtk::FileChooserDialog*>(&dialog))
      save(*chooser, m_Path);
    else
      dialog.response(replaceFiles ? Gtk::RESPONSE_OK : Gtk::RESPONSE_CANCEL);
  };
}

void ExportTest::exportAs(const char* action, const std::string& name) {
  m_Path = pathOf(name);
  activate(action);
}

void ExportTest::save(Gtk::FileChooserDialog& dialog, const std::string& path) {
  // While the dialog still loads the folder that it starts in, another one can get lost.
  constexpr auto kAskAgainAfter = std::chrono::milliseconds(500);
  auto askAt = std::chrono::steady_clock::now();
  const auto isEntered = [&] {
    if (dialog.get_filename() == path) return true;
    if (std::chrono::steady_clock::now() < askAt) return false;
    dialog.set_current_folder(Glib::path_get_dirname(path));
    dialog.set_current_name(Glib::path_get_basename(path));
    askAt = std::chrono::steady_clock::now() + kAskAgainAfter;
    return false;
  };
  if (!waitFor(isEntered)) {
    ADD_FAILURE() << "the dialog has " << dialog.get_filename() << " instead of " << path;
    return dialog.response(Gtk::RESPONSE_CANCEL);
  }
  const std::vector<Gtk::Widget*> buttons = dialog.get_action_area()->get_children();
  for (Gtk::Widget* button : buttons)
    if (dialog.get_response_for_widget(*button) == Gtk::RESPONSE_OK)
      dynamic_cast<Gtk::Button&>(*button).clicked();
}

Gtk::FileChooserDialog& ExportTest::saveDialog() {
  for (Gtk::Window* toplevel : Gtk::Window::list_toplevels())
    if (auto* const dialog = dynamic_cast<Gtk::FileChooserDialog*>(toplevel);
        dialog && dialog->is_mapped())
      return *dialog;
  throw std::runtime_error("no save dialog");
}

void ExportTest::watchDot(const std::string& script) {
  replaceDot("printf '%s\\0' $# \"$@\" >>dot-runs\n" + script);
}

std::vector<std::vector<std::string>> ExportTest::takeDotRuns() const {
  std::istringstream stream(textOf(folder.path() / "dot-runs"));
  std::filesystem::remove(folder.path() / "dot-runs");
  std::vector<std::vector<std::string>> runs;
  for (std::string count; std::getline(stream, count, '\0');) {
    runs.emplace_back(std::stoul(count));
    for (std::string& argument : runs.back()) std::getline(stream, argument, '\0');
  }
  return runs;
}

std::vector<std::vector<std::string>> ExportTest::runsFor(const std::string& format,
                                                          const std::string& path) {
  return {{"-T" + format, "-o", path, "quorbel_graph.dot"},
          {"-Tdot", "-o", "graph.dot", "quorbel_graph.dot"}};
}

}  // namespace quorbel
