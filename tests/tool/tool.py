"""Runs quorbel-lattice in a folder of its own for each test.

Needs QUORBEL_LATTICE, the program, and QUORBEL_EXAMPLES, the folder of the examples.
"""

import os
import pathlib
import re
import stat
import subprocess
import tempfile
import time
import unittest

PROGRAM = os.environ["QUORBEL_LATTICE"]
EXAMPLES = pathlib.Path(os.environ["QUORBEL_EXAMPLES"])

TALK = """VERSION=1.0
UTTERANCE=talk
lmscale=2
N=4 L=5
I=0 t=0.00
I=1 t=0.40
I=2 t=0.45
I=3 t=1.25
J=0 S=0 E=1 W=good v=1 a=-2 l=-0.5
J=1 S=0 E=1 W=could v=2 a=-3 l=-1
J=2 S=1 E=2 W=!NULL a=-0.5
J=3 S=2 E=3 W=day a=-1.25
J=4 S=1 E=3 W=today a=-4 l=-1
"""

IMPORTED = """VERSION=1.1
UTTERANCE=talk
lmscale=2
N=4 L=5
I=0 t=0
I=1 t=0.4
I=2 t=0.45
I=3 t=1.25
J=0 S=0 E=1 W=<w in='good' v='1'/> TOTAL=-3 a=-2 l=-0.5 post=-0.313262
J=1 S=0 E=1 W=<w in='could' v='2'/> TOTAL=-5 a=-3 l=-1 post=-1.313262
J=2 S=1 E=2 W=<w in='!NULL'/> TOTAL=-0.5 a=-0.5 post=-0.112822
J=4 S=1 E=3 W=<w in='today'/> TOTAL=-6 a=-4 l=-1 post=-2.237822
J=3 S=2 E=3 W=<w in='day'/> TOTAL=-1.25 a=-1.25 post=-0.112822
"""

ARCHIVE = """talk-1
0 1 1 1,20,5_5
1 2 2 2,30,6_6_6
2 0.5,0,

talk-2
0 1 2 1,10,7
1
"""
WORDS = "<eps> 0\ngood 1\nday 2\n"

CYCLIC = """N=3 L=3
start=0
end=2
I=0 t=0
I=1 t=1
I=2 t=2
J=0 S=0 E=1 W=a
J=1 S=1 E=1 W=b
J=2 S=1 E=2 W=c
"""


PROGRESS = re.compile(
    r"^quorbel-lattice: (?:reading|searching|pruning|writing|drawing|\d+ lattices done,)"
    r"[^\n]* \(\d+ s\)\n", re.MULTILINE)


def apart(result):
    """A finished run with the lines that tell how far it is, which come on a busy machine, taken
    from its standard error into `progress`."""
    result.progress = "".join(PROGRESS.findall(result.stderr))
    result.stderr = PROGRESS.sub("", result.stderr)
    return result


class ToolTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quorbel-tool-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.temporary = self.folder / "tmp"
        self.temporary.mkdir()
        self.environment = {**os.environ, "TMPDIR": str(self.temporary), "LC_ALL": "C.UTF-8"}
        self.environment.pop("DISPLAY", None)
        self.write("talk.slf", TALK)

    def write(self, name, text):
        path = self.folder / name
        path.write_bytes(text if isinstance(text, bytes) else text.encode())
        return path

    def read(self, name):
        return (self.folder / name).read_text("utf-8")

    def stand_in(self, text):
        """Puts a shell script before the real `dot` on the search path."""
        (self.folder / "bin").mkdir(exist_ok=True)
        script = self.write("bin/dot", text)
        script.chmod(script.stat().st_mode | stat.S_IXUSR)
        self.environment["PATH"] = f"{self.folder / 'bin'}:{os.environ['PATH']}"

    def run_tool(self, *arguments, stdout=subprocess.PIPE):
        return apart(subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.folder, text=True,
                                    env=self.environment, stdin=subprocess.DEVNULL, stdout=stdout,
                                    stderr=subprocess.PIPE, timeout=100))

    def start_tool(self, *arguments, **options):
        """A run that goes on beside the test, and ends with it."""
        process = subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, env=self.environment,
                                   stderr=subprocess.PIPE, text=True, **options)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def wait_for(self, condition, what):
        deadline = time.monotonic() + 20
        while not condition():
            self.assertLess(time.monotonic(), deadline, what)
            time.sleep(0.01)

    def succeeds(self, *arguments):
        """Standard output of a run that succeeds without a word on standard error."""
        result = self.run_tool(*arguments)
        self.assertEqual(("", 0), (result.stderr, result.returncode))
        return result.stdout

    def fails(self, *arguments):
        """The one line on standard error with which a run fails, without the program's name."""
        result = self.run_tool(*arguments)
        self.assertEqual(("", 1), (result.stdout, result.returncode), result.stderr)
        self.assertRegex(result.stderr, r"\Aquorbel-lattice: [^\n]+\n\Z")
        return result.stderr[len("quorbel-lattice: "):-1]

    def files(self):
        return sorted(path.name for path in self.folder.iterdir())
