"""What quorbel-lattice imports opens in the viewer, whose best path is the recogniser's.

Needs QUORBEL_LATTICE, the companion program, QUORBEL_FORMS, the folder of lattices in all forms, and
QUORBEL_EXAMPLES, beside what viewer.py needs.
"""

import os
import pathlib
import re
import subprocess
import unittest

from viewer import STRICT, ViewerTest

FORMS = pathlib.Path(os.environ["QUORBEL_FORMS"])
EXAMPLES = pathlib.Path(os.environ["QUORBEL_EXAMPLES"])


def lattice_tool(*arguments):
    return subprocess.run([os.environ["QUORBEL_LATTICE"], *map(str, arguments)], check=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout


class ImportedTest(ViewerTest):
    def best_path_is_shown(self, name):
        """Opens a file of the test's folder and switches the best path on: its cost and words."""
        score, words = re.match(r"path 1: TOTAL=(\S+): (.*)",
                                lattice_tool("best", self.folder / name)).groups()
        viewer = self.start(STRICT, name)
        self.becomes(f"Quorbel - ./{name}", viewer.title)
        viewer.wait_for("the drawing", viewer.is_idle)
        viewer.press("Shortest path")
        self.becomes(f"Shortest Path : {-float(score):.6g}", viewer.status)
        information = viewer.information()
        viewer.choose("File", "Quit")
        self.assertEqual(0, viewer.end_status())
        self.assertEqual("", viewer.output)
        shown = re.match("Shortest path : (.*) \n", information)[1].split(" ")
        return words, " ".join(word for word in shown if word != "!NULL")

    def test_decoders_lattice_shows_the_decoders_words(self):
        lattice_tool("prune", EXAMPLES / "decoder.slf", self.folder / "meeting.lat", "--links", 60)
        words, shown = self.best_path_is_shown("meeting.lat")
        self.assertEqual("<s> LET'S MOVE THE MEETING TO THURSDAY AFTERNOON IF THAT'S SHOOTS "
                         "EVERYONE </s>", words)
        self.assertEqual(words, shown)

    def test_lattices_of_other_forms_show_their_words(self):
        for form in ("markup-as-words", "backslash-escapes", "utf-8-and-octal", "base-10",
                     "several-starts-and-ends", "version-1.0-decoder"):
            with self.subTest(form=form):
                lattice_tool("import", FORMS / f"{form}.slf", self.folder / "form.lat")
                words, shown = self.best_path_is_shown("form.lat")
                self.assertEqual(words.replace('"', "\u201d"), shown)


if __name__ == "__main__":
    unittest.main()
