"""scripts/run, in a project whose build and programs only note what they are asked for.

Needs QUORBEL_SOURCE, the folder of the sources.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["QUORBEL_SOURCE"])
NOTE = """#!/bin/sh
{ echo "$(basename "$0") in $PWD"; for argument; do echo "$argument"; done; } >>"$NOTES"
"""
PACKAGES = """build_packages=(b) run_packages=(r) display_packages=(d)
stop() { echo "stop: $1" >&2; exit 1; }
install_missing() { :; }
build() { echo "build $*" >>"$NOTES"; }
"""


class RunScriptTest(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="run-script-test-")
        self.addCleanup(temporary.cleanup)
        root = pathlib.Path(temporary.name).resolve()
        self.project = root / "project"
        self.folder = root / "user"
        for folder in (self.project / "scripts", self.project / "build" / "launcher", self.folder):
            folder.mkdir(parents=True)
        shutil.copy(SOURCE / "scripts" / "run", self.project / "scripts")
        (self.project / "scripts" / "packages.sh").write_text(PACKAGES)
        for program in ("build/launcher/quorbel", "scripts/with-display"):
            (self.project / program).write_text(NOTE)
            (self.project / program).chmod(0o755)
        (self.project / "examples").mkdir()
        self.example = self.project / "examples" / "greeting.lat"
        self.example.touch()
        (self.folder / "two words.lat").touch()
        self.notes = root / "notes"

    def run_script(self, *arguments, display=":0"):
        """Status, standard output, standard error, and the lines of what was called."""
        self.notes.write_text("")
        result = subprocess.run(
            [self.project / "scripts" / "run", *arguments], cwd=self.folder, text=True,
            env={"PATH": os.environ["PATH"], "NOTES": str(self.notes), "DISPLAY": display},
            stdin=subprocess.DEVNULL, capture_output=True, timeout=60)
        return result.returncode, result.stdout, result.stderr, self.notes.read_text().splitlines()

    def starts(self, expected, *arguments):
        self.assertEqual(
            (0, "Built: build/launcher/quorbel, build/quorbel-lattice\n", "",
             ["build programs", f"quorbel in {self.folder}", *expected]),
            self.run_script(*arguments))

    def test_hands_options_and_lattice_on_in_the_callers_folder(self):
        self.starts(["two words.lat"], "two words.lat")
        self.starts(["--import", "two words.lat"], "--import", "two words.lat")
        self.starts(["--name", "x", "--", "two words.lat"], "--name", "x", "--", "two words.lat")

    def test_opens_an_example_where_no_lattice_is_given(self):
        self.starts([str(self.example)])
        self.starts(["--sync", str(self.example)], "--sync")

    def test_builds_nothing_for_a_lattice_that_is_not_there(self):
        self.assertEqual((1, "", f"stop: no such lattice: {self.folder}/none.lat\n", []),
                         self.run_script("none.lat"))

    def test_draws_on_a_virtual_display_where_there_is_none(self):
        called = self.run_script("--import", "two words.lat", display="")[3]
        self.assertEqual(
            ["build programs", f"with-display in {self.folder}",
             f"{self.project}/scripts/screenshot", f"{self.project}/build/screenshot.png",
             f"{self.project}/build/launcher/quorbel", "--import", "two words.lat"], called)
        called = self.run_script("--version", display="")[3]
        self.assertEqual(["build programs", f"quorbel in {self.folder}", "--version",
                          str(self.example)], called)


if __name__ == "__main__":
    unittest.main()
