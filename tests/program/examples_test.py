"""Every lattice that the project ships as an example is read and drawn.

Needs QUORBEL_EXAMPLES, the folder of the examples, beside what viewer.py needs.
"""

import os
import pathlib
import re
import shutil
import unittest

from screen import WHITE, Screenshot
from viewer import DOT_RUNS, STRICT, ViewerTest

EXAMPLES = pathlib.Path(os.environ["QUORBEL_EXAMPLES"])
BLUE = (0, 0, 255)


class ExamplesTest(ViewerTest):
    def test_every_example_is_drawn(self):
        examples = sorted([*EXAMPLES.glob("*.lat"), *EXAMPLES.glob("*.htk")])
        self.assertGreaterEqual(len(examples), 4)
        for example in examples:
            with self.subTest(example=example.name):
                shutil.copy(example, self.folder)
                self.draws_every_link(example)

    def draws_every_link(self, example):
        runs = self.dot_runs()
        viewer = self.start(STRICT, example.name)
        self.becomes(f"Quorbel - ./{example.name}", viewer.title)
        viewer.wait_for("the start node", lambda: self.shows_node_0(viewer))
        links = re.findall(r"^J=(\d+)", example.read_text("utf-8"), re.MULTILINE)
        drawn = re.findall(r'comment="ID = (\d+)"', self.description())
        self.assertEqual(sorted(links), sorted(drawn))
        self.assertEqual(runs + DOT_RUNS, self.dot_runs())
        viewer.choose("File", "Quit")
        self.ends(viewer)
        self.assertEqual("", viewer.output)

    def shows_node_0(self, viewer):
        screenshot = Screenshot()
        node = viewer.layout().node(0)
        return any(not screenshot.shows(WHITE, *place) for place in node.pixels())

    def test_example_with_a_sound_shows_it(self):
        sound = min(EXAMPLES.glob("*.wav"))
        shutil.copy(sound, self.folder)
        shutil.copy(sound.with_suffix(".lat"), self.folder)
        path = self.folder / f"{sound.stem}.lat"
        viewer = self.start(STRICT, path)
        self.becomes(f"Quorbel - {path}", viewer.title)
        strip = viewer.sound_strip()
        def shows_sound():
            screenshot = Screenshot()
            return any(screenshot.shows(BLUE, *place) for place in strip.pixels())
        viewer.wait_for("the waveform", shows_sound)
        viewer.choose("File", "Quit")
        self.ends(viewer)


if __name__ == "__main__":
    unittest.main()
