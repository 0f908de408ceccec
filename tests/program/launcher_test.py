"""The installed command with the real viewer: what a user finds on the screen and on the disk.

Needs QUORBEL_LAUNCHER (the command), QUORBEL_BUILT_LAUNCHER (the one in the build tree) and
QUORBEL_DESKTOP (the desktop entry) beside what viewer.py needs.
"""

import os
import pathlib
import re
import subprocess
import unittest

from lattices import SMALL, SMALL_DESCRIPTION, SMALL_WITH_BEST_PATH, write_sound
from viewer import DOT_RUNS, PATIENCE_S, STRICT, Viewer, ViewerTest

OTHER = SMALL.replace("to", "go").replace("you", "home")
OTHER_DESCRIPTION = SMALL_DESCRIPTION.replace("to /", "go /").replace("you /", "home /")


class LaunchedViewer(Viewer):
    """A viewer that the launcher has started: a process of its own, in a folder of its own."""

    program = "QUORBEL_LAUNCHER"

    @property
    def process_id(self):
        launcher = self.process.pid
        children = pathlib.Path(f"/proc/{launcher}/task/{launcher}/children").read_text().split()
        for child in map(int, children):
            if os.readlink(f"/proc/{child}/exe").endswith("/quorbel"):
                return child
        raise LookupError("the launcher has not started the viewer")

    @property
    def work_folder(self):
        return pathlib.Path(os.readlink(f"/proc/{self.process_id}/cwd"))

    def description(self):
        return (self.work_folder / "quorbel_graph.dot").read_text("utf-8")


class BuiltViewer(LaunchedViewer):
    program = "QUORBEL_BUILT_LAUNCHER"


class LauncherTest(ViewerTest):
    viewer_type = LaunchedViewer

    def setUp(self):
        super().setUp()
        (self.folder / "images").rename(self.outside / "images")  # the launcher has its own
        self.write("small.lat", SMALL)
        self.runtime = self.outside / "runtime"
        self.runtime.mkdir()
        self.environment["XDG_RUNTIME_DIR"] = str(self.runtime)

    def shows(self, viewer, name):
        self.becomes(f"Quorbel - {self.folder}/{name}", viewer.title)
        self.assertEqual(f"graph : {self.folder}/{name}", viewer.status())

    def leave(self, viewer):
        viewer.choose("File", "Quit")
        self.ends(viewer)

    def nothing_is_left(self, *lattices):
        self.assertEqual([], list((self.runtime / "quorbel").iterdir()))
        self.assertEqual(sorted(lattices), sorted(os.listdir(self.folder)))

    def test_lattice_of_another_form_is_imported_and_shown(self):
        self.write("plain.slf", re.sub("<w in='([a-z]*)'[^>]*>", r"\1", SMALL))
        write_sound(self.folder / "plain.wav", seconds=1)
        viewer = self.start("--import", STRICT, "plain.slf")
        path = self.folder / "plain.slf"
        self.becomes((f"Quorbel - {path} (imported)", f"graph : {path}"),
                     lambda: (viewer.title(), viewer.status()))
        self.assertEqual(SMALL_DESCRIPTION.replace(" / zu", "").replace(" / dir", ""),
                         viewer.description())
        viewer.press("Shortest path")
        self.becomes("Shortest Path : 1.75", viewer.status)
        self.leave(viewer)
        self.assertEqual(("", ""), (viewer.output, viewer.errors))
        self.nothing_is_left("small.lat", "plain.slf", "plain.wav")

    def test_large_lattice_is_shown_as_its_likeliest_links(self):
        decoder = (pathlib.Path(os.environ["QUORBEL_EXAMPLES"]) / "decoder.slf").resolve()
        for words, note in ((), "296 of 790"), (("--links", "60"), "60 of 790"):
            viewer = self.start("--import", *words, STRICT, str(decoder))
            self.becomes(f"Quorbel - {decoder} ({note} links)", viewer.title)
            self.leave(viewer)
            self.assertEqual(("", ""), (viewer.output, viewer.errors))

    def test_what_cannot_be_imported_is_said_by_the_importer(self):
        self.write("bad.slf", "N=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=7 W=a a=1\n")
        viewer = self.start("--import", STRICT, "bad.slf")
        self.assertEqual(f"{self.folder}/bad.slf: line 4: link 0 enters node 7, but nodes are 0 to 1",
                         viewer.error())
        self.becomes(("Quorbel", "No file opened"), lambda: (viewer.title(), viewer.status()))
        self.leave(viewer)

    def test_lattice_is_opened_and_nothing_is_left(self):
        write_sound(self.folder / "small.wav", seconds=1)
        viewer = self.start(STRICT, "./small.lat")
        self.shows(viewer, "small.lat")
        self.assertEqual(SMALL_DESCRIPTION, viewer.description())
        self.assertEqual(DOT_RUNS, self.dot_runs())
        self.assertEqual({"images", "quorbel_graph.dot", "graph.dot", "graph.png"},
                         set(os.listdir(viewer.work_folder)))
        self.leave(viewer)
        self.assertEqual(("", ""), (viewer.output, viewer.errors))
        self.nothing_is_left("small.lat", "small.wav")

    def test_window_is_the_one_of_the_desktop_entry(self):
        viewer = self.start("small.lat")
        self.shows(viewer, "small.lat")
        viewer.focus()
        active = subprocess.run(["xdotool", "getactivewindow"], check=True, capture_output=True,
                                text=True).stdout.strip()
        properties = subprocess.run(["xprop", "-id", active, "WM_CLASS"], check=True,
                                    capture_output=True, text=True).stdout
        entry = pathlib.Path(os.environ["QUORBEL_DESKTOP"]).read_text("utf-8")
        window_class = re.search("^StartupWMClass=(.*)$", entry, re.MULTILINE)[1]
        self.assertEqual(f'WM_CLASS(STRING) = "quorbel", "{window_class}"\n', properties)
        self.leave(viewer)

    def test_launcher_of_the_build_tree_needs_no_installation(self):
        self.viewer_type = BuiltViewer
        viewer = self.start(STRICT, "small.lat")
        self.shows(viewer, "small.lat")
        self.leave(viewer)
        self.nothing_is_left("small.lat")

    def test_two_do_not_share_files(self):
        self.write("other.lat", OTHER)
        first = self.start(STRICT, "small.lat")
        self.shows(first, "small.lat")
        second = self.start(STRICT, "other.lat")
        self.shows(second, "other.lat")
        self.assertNotEqual(first.work_folder, second.work_folder)
        first.press("Shortest path")
        self.becomes(SMALL_WITH_BEST_PATH, first.description)
        self.becomes("Shortest Path : 1.75", first.status)
        self.assertEqual(OTHER_DESCRIPTION, second.description())
        self.leave(first)
        second.press("Shortest path")
        self.becomes("Shortest path : go / zu home / dir \n", second.information)
        self.leave(second)
        self.nothing_is_left("small.lat", "other.lat")

    def test_ends_while_dot_draws(self):
        self.hold_dot()
        viewer = self.start(STRICT, "small.lat")
        self.wait_for_held_dot()
        viewer.process.terminate()
        self.assertEqual(143, viewer.process.wait(PATIENCE_S))
        self.nothing_is_left("small.lat")
        self.becomes([], self.processes_in_work_folders)

    def processes_in_work_folders(self):
        """Those that still work there, even if the folder is gone."""
        folders = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                folders.append(os.readlink(process / "cwd"))
            except OSError:  # ended meanwhile
                continue
        return [folder for folder in folders if folder.startswith(f"{self.runtime}/")]

    def test_without_display_the_status_and_the_reason_come_through(self):
        del self.environment["DISPLAY"]
        viewer = self.start("small.lat")
        self.assertEqual(1, viewer.end_status())
        self.assertRegex(viewer.errors, r"^\n?\S.*cannot open display: \n$")
        self.nothing_is_left("small.lat")

    def test_parts_without_text_have_names_for_screen_readers(self):
        viewer = self.start(STRICT, "small.lat")
        self.shows(viewer, "small.lat")
        parts = list(viewer.main_window().descendants())
        named = {part.name for part in parts}
        expected = {"Lattice", "Waveform", "Attributes of the selected links", "Words of the paths",
                    "Logo of the program", "Logo of the funding programme",
                    "Files beside the lattice"}
        self.assertEqual(set(), expected - named)
        self.assertEqual([], [part.role for part in parts if not part.name and
                              part.role in ("push button", "toggle button", "text", "icon",
                                            "tree table", "table", "unknown", "image")
                              and part.is_showing])
        self.leave(viewer)


if __name__ == "__main__":
    unittest.main()
