"""The finished viewer under valgrind: what a user does in one go, without an error of memory."""

import os
import re
import unittest
from xml.etree import ElementTree

from lattices import SMALL, SMALL_DESCRIPTION, write_sound
from viewer import ViewerTest, double_click, xdotool

# Libraries that give memory to their callers.
HANDS_ON = re.compile(r"/(vgpreload_|libc\.|libstdc\+\+|libxml2|libsndfile|libopenal)")


class MemoryTest(ViewerTest):
    def setUp(self):
        super().setUp()
        self.report = self.outside / "valgrind.xml"
        self.through = ("valgrind", "--leak-check=full", "--show-leak-kinds=definite",
                        "--num-callers=60", "--xml=yes", f"--xml-file={self.report}")
        self.environment |= {"G_SLICE": "always-malloc", "G_DEBUG": "gc-friendly"}

    def test_opening_selecting_playing_exporting_and_closing(self):
        self.write("small.lat", SMALL)
        write_sound(self.folder / "small.wav", seconds=1)
        path = f"{self.folder}/small.lat"
        viewer = self.start(path)
        self.opens(viewer, path, SMALL_DESCRIPTION)
        drawing = viewer.drawing()
        double_click(drawing.label(0).centre)
        self.becomes([["w", ""], ["in", "to"], ["out", "zu"]], viewer.attributes)
        viewer.press("Play")
        viewer.press("Stop")
        viewer.press("S.P. with edge")
        self.becomes("Shortest Path : 1.75  ---  Shortest Path with the selected edge : 1.75",
                     viewer.status)
        viewer.choose("File", "Export to", "PNG")
        viewer.dialog("Please choose a filename")
        viewer.focus()
        xdotool("type", f"{self.folder}/plot")
        viewer.dialog("Please choose a filename").find("push button", "Save").act()
        viewer.wait_for("the export", (self.folder / "plot.png").exists)
        viewer.wait_for("the dialog's end", lambda: not viewer.windows("dialog"))
        viewer.press("Close")
        self.becomes("No file opened", viewer.status)
        viewer.choose("File", "Quit")
        self.ends(viewer)
        self.assertEqual([], self.complaints())

    def complaints(self):
        """Every wrong access, and memory that the project's own code took, itself or through a
        library that leaves it to its callers, and lost. What the toolkit loses is not its."""
        found = []
        for error in ElementTree.parse(self.report).getroot().findall("error"):
            stack = error.find("stack").findall("frame")
            program = os.path.realpath(os.environ["QUORBEL_PROGRAM"])
            # What was running before any library was loaded is of no file that valgrind knows.
            files = [frame.findtext("obj") or "" for frame in stack]
            takers = [file for file in files if not HANDS_ON.search(file)]
            is_leak = error.findtext("kind").startswith("Leak_")
            if not is_leak or takers[:1] == [program]:
                found.append((error.findtext("kind"), [frame.findtext("fn") for frame in stack]))
        return found


if __name__ == "__main__":
    unittest.main()
