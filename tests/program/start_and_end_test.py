"""How the viewer starts, with what arguments and surroundings, and how a user may leave it."""

import signal
import subprocess
import unittest

from lattices import SMALL, SMALL_DESCRIPTION, write_sound
from screen import Screenshot
from viewer import DOT_RUNS, STRICT, ViewerTest

ABOUT = "Quorbel v1.2 (10/2008)"


class StartTest(ViewerTest):
    def setUp(self):
        super().setUp()
        self.write("small.lat", SMALL)

    def test_without_arguments_nothing_is_open(self):
        viewer = self.start()
        self.becomes("Quorbel", viewer.title)
        self.assertEqual("No file opened", viewer.status())
        self.assertEqual("", viewer.information())
        self.assertEqual([], viewer.attributes())
        self.leave(viewer)
        self.assertEqual([], self.dot_runs())
        self.assertEqual({"images", "small.lat"}, {path.name for path in self.folder.iterdir()})

    def test_menus_offer_every_command(self):
        viewer = self.start(STRICT)
        bar = viewer.main_window().find("menu bar")
        self.assertEqual(
            ["File", ["Open",
                      "Export to", ["PNG", "SVG", "DIA", "Postscript", "Postscript for PDF"],
                      "Close", "Quit"],
             "Display", ["Zoom in", "Zoom out", "Zoom fit", "Shortest path", "S.P. with edge",
                         "Edges", ["Default display (in/out fields)",
                                   "Display the selected XML field(s)", "Display edge value"],
                         "Scores..."],
             "Sound", ["Open", "Play", "Stop"],
             "Help", ["About"]], self.labels(bar))
        tools = viewer.main_window().find("tool bar").descendants()
        self.assertEqual(
            ["Open", "Close", "Zoom fit", "Shortest path", "S.P. with edge", "Play", "Stop"],
            [tool.name for tool in tools if tool.role == "push button"])
        self.leave(viewer)

    def test_commands_do_nothing_before_a_lattice_is_open(self):
        viewer = self.start(STRICT)
        self.becomes("Quorbel", viewer.title)
        viewer.choose("File", "Close")
        for label in ("Zoom in", "Zoom out", "Zoom fit", "Shortest path", "S.P. with edge"):
            viewer.choose("Display", label)
        for label in ("Default display (in/out fields)", "Display the selected XML field(s)",
                      "Display edge value"):
            viewer.choose("Display", "Edges", label)
        viewer.choose("Display", "Scores...")
        viewer.choose("Sound", "Stop")
        viewer.choose("Help", "About")
        self.assertEqual([ABOUT], [viewer.dialog(ABOUT).name])
        self.assertEqual(1, len(viewer.windows("dialog")))
        viewer.key("Escape")
        viewer.wait_for("the dialog's end", lambda: not viewer.windows("dialog"))
        self.assertEqual("No file opened", viewer.status())
        self.leave(viewer)
        self.assertEqual([], self.dot_runs())

    def test_argument_is_opened_and_drawn(self):
        viewer = self.start(STRICT, "small.lat")
        self.opens(viewer, "./small.lat", SMALL_DESCRIPTION)
        self.assertEqual(DOT_RUNS, self.dot_runs())
        viewer.drawing()
        self.leave(viewer)

    def test_second_argument_is_ignored(self):
        self.write("other.lat", "N=1\n")
        viewer = self.start(STRICT, f"{self.folder}/small.lat", "other.lat")
        self.opens(viewer, f"{self.folder}/small.lat", SMALL_DESCRIPTION)
        self.leave(viewer)
        self.assertEqual(DOT_RUNS, self.dot_runs())

    def test_options_of_the_toolkit_are_no_lattices(self):
        viewer = self.start("--name=reader", STRICT, "small.lat", "--class=Lattices", "--sync")
        self.opens(viewer, "./small.lat", SMALL_DESCRIPTION)
        viewer.focus()
        active = subprocess.run(["xdotool", "getactivewindow"], check=True, capture_output=True,
                                text=True).stdout.strip()
        properties = subprocess.run(["xprop", "-id", active, "WM_CLASS"], check=True,
                                    capture_output=True, text=True).stdout
        self.assertEqual('WM_CLASS(STRING) = "reader", "Lattices"\n', properties)
        self.leave(viewer)

    def test_missing_lattice_is_reported_and_nothing_is_open(self):
        viewer = self.start(STRICT, "none.lat")
        self.assertEqual("./none.lat : file not found or permission denied", viewer.error())
        self.nothing_is_open(viewer)

    def test_folder_is_no_lattice(self):
        viewer = self.start(STRICT, "images")
        self.assertEqual("./images : file not found or permission denied", viewer.error())
        self.nothing_is_open(viewer)

    def test_lattice_in_a_missing_folder_is_reported(self):
        viewer = self.start(STRICT, "none/small.lat")
        self.assertIn("none", viewer.error())
        self.nothing_is_open(viewer)

    def test_without_display_the_toolkit_says_so(self):
        del self.environment["DISPLAY"]
        viewer = self.start("small.lat")
        self.assertEqual(1, viewer.end_status())
        self.assertRegex(viewer.errors, r"^\n?\S.*cannot open display: \n$")

    def test_without_its_logo_it_ends_with_a_line(self):
        (self.folder / "images" / "logo_quor.png").unlink()
        viewer = self.start("small.lat")
        self.assertEqual(1, viewer.end_status())
        self.assertRegex(viewer.errors, r"^.*images/logo_quor\.png.*\n$")
        self.assertEqual("", viewer.output)

    def test_other_pictures_may_be_missing(self):
        for name in ("Brellum.png", "about.png"):
            (self.folder / "images" / name).unlink()
        viewer = self.start(STRICT, "small.lat")
        self.opens(viewer, "./small.lat", SMALL_DESCRIPTION)
        viewer.choose("Help", "About")
        viewer.dialog(ABOUT)
        viewer.key("Escape")
        viewer.wait_for("the dialog's end", lambda: not viewer.windows("dialog"))
        self.leave(viewer)

    def labels(self, menu):
        """The labels of a menu, with a list behind that of each menu in it."""
        labels = []
        for entry in menu.children:
            if entry.role == "menu":
                labels += [entry.name, self.labels(entry)]
            elif entry.role == "menu item" and entry.name != "Empty":  # the toolkit's own, hidden
                labels.append(entry.name)
        return labels

    def nothing_is_open(self, viewer):
        self.becomes("No file opened", viewer.status)
        self.assertEqual("Quorbel", viewer.title())
        self.leave(viewer)

    def leave(self, viewer):
        viewer.choose("File", "Quit")
        self.ends(viewer)


def by_menu(viewer):
    viewer.choose("File", "Quit")


def by_key(viewer):
    """The menu's entry again: while the program is busy, only its key can be sent."""
    viewer.key("ctrl+q")


def by_closing(viewer):
    viewer.close_by_window_manager()


class EndTest(ViewerTest):
    def setUp(self):
        super().setUp()
        self.write("small.lat", SMALL)

    def test_by_menu_with_nothing_open(self):
        self.leaves_when_nothing_is_open(by_menu)

    def test_by_closing_with_nothing_open(self):
        self.leaves_when_nothing_is_open(by_closing)

    def test_by_menu_when_idle(self):
        self.leaves_when_idle(by_menu)

    def test_by_key_when_idle(self):
        self.leaves_when_idle(by_key)

    def test_by_closing_when_idle(self):
        self.leaves_when_idle(by_closing)

    def test_by_key_while_rendering(self):
        self.leaves_while_rendering(by_key)

    def test_by_closing_while_rendering(self):
        self.leaves_while_rendering(by_closing)

    def test_by_key_during_the_first_rendering(self):
        self.leaves_during_the_first_rendering(by_key)

    def test_by_closing_during_the_first_rendering(self):
        self.leaves_during_the_first_rendering(by_closing)

    def test_by_menu_while_playing(self):
        self.leaves_while_playing(by_menu)

    def test_by_closing_while_playing(self):
        self.leaves_while_playing(by_closing)

    def test_closing_the_file_while_rendering_ends_dot(self):
        self.hold_dot()
        viewer = self.start(STRICT, "small.lat")
        self.wait_for_held_dot()
        viewer.key("ctrl+w")
        self.becomes("No file opened", viewer.status)
        self.assertEqual(("Quorbel", DOT_RUNS[:1]), (viewer.title(), self.dot_runs()))
        self.becomes([], self.running_dots)
        self.release_dot()
        viewer.open_sibling("small.lat")
        self.opens(viewer, "./small.lat", SMALL_DESCRIPTION)
        viewer.drawing()
        by_menu(viewer)
        self.ends(viewer)

    def test_dot_ends_with_the_viewer_whatever_ends_that(self):
        for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT, signal.SIGHUP,
                       signal.SIGABRT):
            with self.subTest(signal=number):
                self.hold_dot()
                viewer = self.start(STRICT, "small.lat", "--sync")
                self.wait_for_held_dot()
                self.assertNotEqual([], self.running_dots())
                viewer.process.send_signal(number)
                self.assertEqual(-number, viewer.end_status())
                self.becomes([], self.running_dots)

    def leaves_when_nothing_is_open(self, leave):
        viewer = self.start(STRICT)
        self.becomes("Quorbel", viewer.title)
        leave(viewer)
        self.ends(viewer)

    def leaves_when_idle(self, leave):
        viewer = self.open_small()
        leave(viewer)
        self.ends(viewer)

    def leaves_while_rendering(self, leave):
        viewer = self.open_small()
        self.hold_dot()
        viewer.press("Shortest path")
        self.wait_for_held_dot()
        self.leaves_at_once(viewer, leave)

    def leaves_during_the_first_rendering(self, leave):
        self.hold_dot()
        viewer = self.start(STRICT, "small.lat")
        self.wait_for_held_dot()
        self.leaves_at_once(viewer, leave)

    def leaves_at_once(self, viewer, leave):
        """While `dot` would not come to its end."""
        leave(viewer)
        self.ends(viewer)
        self.becomes([], self.running_dots)

    def leaves_while_playing(self, leave):
        write_sound(self.folder / "small.wav", seconds=180)
        path = f"{self.folder}/small.lat"  # in a relative path the first dot cuts the sound's name
        viewer = self.start(STRICT, path)
        self.opens(viewer, path, SMALL_DESCRIPTION)
        strip = viewer.sound_strip()
        self.assertFalse(self.shows_cursor(strip))
        viewer.press("Play")
        viewer.wait_for("the play cursor", lambda: self.shows_cursor(strip))
        leave(viewer)
        self.ends(viewer)

    def open_small(self):
        viewer = self.start(STRICT, "small.lat")
        self.opens(viewer, "./small.lat", SMALL_DESCRIPTION)
        return viewer

    def shows_cursor(self, strip):
        """Whether a red line, which is a little more than a pixel wide, crosses the sound strip."""
        screenshot = Screenshot()
        row = strip.centre[1]
        colours = [screenshot.pixel(x, row) for x in range(strip.left, strip.left + strip.width)]
        return any(red > 2 * max(green, blue) for red, green, blue in colours)


if __name__ == "__main__":
    unittest.main()
