"""Several lattices in one call, and what is computed on a whole set of them."""

import contextlib
import fcntl
import gzip
import os
import pathlib
import pty
import resource
import shutil
import signal
import struct
import subprocess
import termios
import unittest

from tool import ARCHIVE, IMPORTED, PROGRAM, PROGRESS, TALK, WORDS, ToolTest, apart

BAD = "N=2\nI=0\nI=5\n"
BAD_LINE = "quorbel-lattice: {}: line 3: node 5, but nodes are 0 to 1\n"


class SetsTest(ToolTest):
    def setUp(self):
        super().setUp()
        (self.folder / "talks").mkdir()
        for name in ("a", "b", "c"):
            self.write(f"talks/{name}.slf", TALK.replace("talk", name))

    def best(self, *arguments, status=0):
        """What best prints as CTM, only its first and fifth column, and what it says."""
        result = self.run_tool("best", "--format", "ctm", *arguments)
        self.assertEqual(status, result.returncode, result.stderr)
        return ([" ".join(line.split()[::4][:2]) for line in result.stdout.splitlines()],
                result.stderr)

    @staticmethod
    def said(*names):
        return [f"{name} {word}" for name in names for word in ("good", "day")]

    def test_files_folders_and_the_standard_input_are_taken_in_their_order(self):
        result = subprocess.run([PROGRAM, "best", "--format", "ctm", "-", "talks", "talk.slf"],
                                cwd=self.folder, input=TALK.replace("talk", "z"), text=True,
                                capture_output=True, timeout=100)
        self.assertEqual("quorbel-lattice: 5 lattices done\n", result.stderr)
        self.assertEqual(list("zabct"), [line[0] for line in result.stdout.splitlines()[::2]])

    def test_the_standard_input_is_called_so_and_its_output_after_its_utterance(self):
        for text, said in ((BAD, BAD_LINE.format("standard input") +
                            "quorbel-lattice: 0 lattices done, 1 failed\n"),
                           (TALK, "quorbel-lattice: 1 lattice done\n")):
            result = subprocess.run([PROGRAM, "import", "-", "--to", "out"], cwd=self.folder,
                                    input=text, text=True, capture_output=True, timeout=100)
            self.assertEqual(said, result.stderr)
        self.assertEqual(["talk.lat"], os.listdir(self.folder / "out"))

    def test_a_folder_has_what_is_called_or_begins_like_a_lattice(self):
        self.write("talks/d.lat.gz", gzip.compress(TALK.replace("talk", "d").encode()))
        self.write("talks/lat.1", ARCHIVE)
        self.write("talks/e", "# a comment\n" + TALK.replace("talk", "e"))
        for name in ("words.txt", "notes.txt", ".hidden.slf", "sound.wav", "f.ctm"):
            self.write(f"talks/{name}", "utt 1 0 good\n")
        self.write("talks/numbers.txt", "<eps> 0\n1 1\n2 2\n")
        self.write("talks/text", "0001 good day\n0002 yes\n")
        (self.folder / "talks/g.lat").mkdir()
        words, said = self.best("talks", "--words", self.write("table", WORDS))
        self.assertEqual(self.said("a", "b", "c", "d", "e", "talk-1") + ["talk-2 day"], words)
        self.assertEqual("quorbel-lattice: 7 lattices done\n", said)
        (self.folder / "empty").mkdir()
        self.assertEqual("empty: no lattice in this folder", self.fails("info", "empty"))

    def test_progress_is_told_before_the_first_lattice_is_done(self):
        process = subprocess.Popen([PROGRAM, "best", "-", "talk.slf"], cwd=self.folder, text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        self.assertRegex(process.stderr.readline(),
                         r"\Aquorbel-lattice: 0 lattices done, of 2 files \(\d+ s\)\n\Z")
        self.assertIn("quorbel-lattice: 2 lattices done\n", process.communicate(TALK, timeout=20)[1])

    def test_one_that_fails_is_named_and_the_others_are_done(self):
        self.write("talks/b.slf", BAD)
        words, said = self.best("talks", "none", status=1)
        self.assertEqual(self.said("a", "c"), words)
        self.assertEqual(BAD_LINE.format("talks/b.slf") +
                         "quorbel-lattice: none: No such file or directory\n"
                         "quorbel-lattice: 2 lattices done, 2 failed\n", said)

    def test_an_utterance_that_fails_is_named_and_the_archive_goes_on(self):
        self.write("lat.1", ARCHIVE.replace("talk-2", "broken \n0 x y z q q q q\n\ntalk-2"))
        words, said = self.best("lat.1", "--words", self.write("words.txt", WORDS), status=1)
        self.assertEqual(self.said("talk-1") + ["talk-2 day"], words)
        self.assertRegex(said, r"\Aquorbel-lattice: lat.1: line \d+: [^\n]+\n"
                               r"quorbel-lattice: 2 lattices done, 1 failed\n\Z")

    def test_the_order_and_all_else_is_the_same_for_any_number_of_jobs(self):
        for i in range(60):
            self.write(f"talks/many{i:02}.slf", BAD if i % 7 == 3 else TALK.replace("talk", f"m{i:02}"))
        runs = [self.run_tool("best", "talks", "--nbest", 4, "--jobs", jobs) for jobs in (1, 2, 16)]
        self.assertEqual((1, 63 - 9), (runs[0].returncode, runs[0].stdout.count("path 4:")))
        for run in runs[1:]:
            self.assertEqual((runs[0].stdout, runs[0].stderr), (run.stdout, run.stderr))

    def test_outputs_go_to_a_folder(self):
        self.write("lat.1", ARCHIVE)
        words = self.write("words.txt", WORDS)
        for command in (("import",), ("prune", "--links", 9), ("draw", "--format", "svg")):
            result = self.run_tool(*command, "talks", "lat.1", "--to", "new/out", "--words", words)
            self.assertEqual(("", "quorbel-lattice: 5 lattices done\n"),
                             (result.stdout, result.stderr))
        self.assertEqual([name + end for name in ("a", "b", "c", "talk-1", "talk-2")
                          for end in (".lat", ".svg")],
                         sorted(path.name for path in (self.folder / "new/out").iterdir()))
        self.assertEqual(IMPORTED.replace("talk", "a"), self.read("new/out/a.lat"))

    def test_no_output_takes_the_place_of_an_input_or_of_another_output(self):
        (self.folder / "more").mkdir()
        self.write("more/a.lat", IMPORTED)
        result = self.run_tool("import", "talks", "more", "--to", "more", "--jobs", 1)
        self.assertEqual("quorbel-lattice: talks/a.slf: more/a.lat: this is a file to be read; write "
                         "to another\nquorbel-lattice: more/a.lat: this is a file to be read; write "
                         "to another\nquorbel-lattice: 2 lattices done, 2 failed\n", result.stderr)
        self.assertEqual(IMPORTED, self.read("more/a.lat"))
        result = self.run_tool("import", "talks", "talks/b.slf", "--to", "out")
        self.assertEqual("quorbel-lattice: talks/b.slf: out/b.lat: another lattice was written there\n"
                         "quorbel-lattice: 3 lattices done, 1 failed\n", result.stderr)

    def test_several_lattices_need_a_folder(self):
        reason = "several lattices need a folder to be written to (--to FOLDER)"
        self.assertEqual(reason, self.fails("import", "talks", "out.lat"))
        self.assertEqual(reason, self.fails("prune", "talk.slf", "talks", "out.lat", "--links", 2))
        self.assertEqual("OUT is required (see quorbel-lattice --help)",
                         self.fails("draw", "talk.slf"))
        self.assertIn("talk.slf/out: Not a directory",
                      self.fails("import", "talks", "--to", "talk.slf/out"))

    def test_an_archive_gives_its_first_lattice_where_there_is_one_output(self):
        self.write("lat.1", ARCHIVE)
        self.succeeds("import", "lat.1", "out.lat", "--words", self.write("words.txt", WORDS))
        self.assertIn("UTTERANCE=talk-1\n", self.read("out.lat"))

    def test_an_utterance_is_looked_for_in_all_files(self):
        words, said = self.best("talks", "--utterance", "b")
        self.assertEqual((self.said("b"), "quorbel-lattice: 1 lattice done\n"), (words, said))
        result = self.run_tool("best", "talks", "--utterance", "z")
        self.assertEqual((1, "", 'quorbel-lattice: talks/a.slf: no utterance "z" in it\n'),
                         (result.returncode, result.stdout, result.stderr))

    def test_labels_of_several_lattices_are_a_master_label_file(self):
        text = "#!MLF!#\n" + "".join(
            f'"*/{name}.lab"\n0 4000000 good -3\n4500000 12500000 day -1.25\n.\n' for name in "abc")
        self.assertEqual(text, self.run_tool("best", "talks", "--format", "htk").stdout)

    def test_paths_of_several_lattices_are_told_apart(self):
        text = self.run_tool("best", "talks/a.slf", "talks/b.slf").stdout
        self.assertEqual(["lattice talks/a.slf", "path 1: TOTAL=-4.75: good day",
                          "lattice talks/b.slf", "path 1: TOTAL=-4.75: good day"],
                         [line for line in text.splitlines() if line[0] != " "])

    def test_nothing_more_is_done_when_nobody_can_read_it(self):
        with open("/dev/full", "w") as full:
            result = self.run_tool("best", "talks", stdout=full)
        self.assertEqual((1, "quorbel-lattice: standard output: No space left on device\n"),
                         (result.returncode, result.stderr))

    def test_long_lists_of_several_lattices_take_no_more_memory(self):
        loop = ("start=0 end=2\nN=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                "J=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=1 W=b a=-1\nJ=2 S=1 E=2 W=c a=-1\n")
        loops = [self.write(f"loop{i}.slf", loop) for i in range(4)]
        environment = {**self.environment, "ASAN_OPTIONS": "quarantine_size_mb=1"}
        process = subprocess.Popen([PROGRAM, "best", *loops, "--nbest", "1500", "--jobs", "4"],
                                   cwd=self.folder, env=environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(0, process.returncode)
        self.assertLess(usage.ru_maxrss, 150000, "kilobytes for four texts of 20 million bytes")


class DrawingSetsTest(ToolTest):
    """Sets that are drawn, several at a time."""

    def setUp(self):
        super().setUp()
        (self.folder / "talks").mkdir()
        for name in "abcdef":
            self.write(f"talks/{name}.slf", TALK.replace("today", f"word-{name}"))

    def stand_in_for(self, script):
        """A `dot` that does something before it draws, NAME being the lattice."""
        self.stand_in("#!/bin/bash\nNAME=$(sed -n 's/.*\"word-\\(.\\).*/\\1/p' \"$4\" | head -1)\n"
                      f"{script}\nPATH={os.environ['PATH']} exec dot \"$@\"\n")

    def outputs(self):
        return "".join(sorted(path.name[:-4] for path in (self.folder / "out").iterdir()))

    def draw(self, *arguments):
        return self.run_tool("draw", "talks", "--to", "out", "--format", "svg", *arguments)

    def start(self, *arguments):
        return self.start_tool("draw", "talks", "--to", "out", *arguments)

    def test_as_many_are_drawn_at_once_as_there_are_jobs(self):
        self.stand_in_for("""echo + >>log
case $NAME in
  a|b|c) for i in $(seq 1000); do [ $(grep -c + log) -ge 3 ] && break; sleep 0.01; done;;
esac
sleep 0.05
echo - >>log""")
        result = self.draw("--jobs", 3)
        self.assertEqual(("quorbel-lattice: 6 lattices done\n", 0), (result.stderr, result.returncode))
        running = [0]
        for sign in self.read("log").split():
            running.append(running[-1] + (1 if sign == "+" else -1))
        self.assertEqual((3, 12), (max(running), len(running) - 1))
        self.assertEqual("abcdef", self.outputs())

    def test_what_is_said_of_drawings_comes_in_the_order_of_the_lattices(self):
        self.write("talks/c.slf", BAD)
        self.stand_in_for("""echo "dot: $NAME" >&2
[ "$NAME $1" = "a $WAIT" ] && while ! [ -e out/b.svg ]; do sleep 0.01; done
[ $NAME = e ] && exit 3""")
        expected = ("dot: a\ndot: b\n" + BAD_LINE.format("talks/c.slf") + "dot: d\n"
                    "quorbel-lattice: talks/e.slf: dot failed with status 3: dot: e\ndot: f\n"
                    "quorbel-lattice: 4 lattices done, 2 failed\n")
        for jobs in (1, 2, 16):
            self.environment["WAIT"] = "-Tsvg" if jobs == 2 else ""
            result = self.draw("--jobs", jobs)
            self.assertEqual((expected, "", 1), (result.stderr, result.stdout, result.returncode))
            self.assertEqual("abdf", self.outputs())
            self.assertEqual([], list(self.temporary.iterdir()))
            shutil.rmtree(self.folder / "out")

    def test_a_process_that_is_ended_is_named_and_the_others_are_done(self):
        self.stand_in_for("""[ $NAME = b ] && { rm -r "${4%/*}"; kill -9 $PPID; exit; }""")
        result = self.draw("--jobs", 2)
        self.assertEqual("quorbel-lattice: talks/b.slf: its process was ended by a signal (Killed)\n"
                         "quorbel-lattice: 5 lattices done, 1 failed\n", result.stderr)
        self.assertEqual("acdef", self.outputs())

    def test_a_signal_ends_all_that_draw_and_leaves_nothing(self):
        self.stand_in_for("""[ $NAME = a ] || { echo $$ >started-$NAME.new
mv started-$NAME.new started-$NAME; exec sleep 60; }""")
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL):
            process = self.start("--format", "svg", "--jobs", "3")
            started = [self.folder / f"started-{name}" for name in "bcd"]
            self.wait_for(lambda: all(path.exists() for path in started), "dot")
            dots = [pathlib.Path("/proc") / path.read_text().strip() for path in started]
            process.send_signal(number)
            self.assertEqual("", PROGRESS.sub("", process.communicate(timeout=20)[1]))
            self.assertEqual(-number, process.returncode)
            if number == signal.SIGKILL:  # which this program cannot wait with
                self.wait_for(lambda: not any(dot.exists() for dot in dots), "the end of dot")
                self.wait_for(lambda: not list(self.temporary.iterdir()), "removed work files")
            self.assertEqual([], [dot for dot in dots if dot.exists()])
            self.assertEqual([], list(self.temporary.iterdir()))
            self.assertEqual("a", self.outputs())
            self.assertEqual(["a.svg"], os.listdir(self.folder / "out"))
            for path in started:
                path.unlink()

    def on_terminal(self, *arguments):
        """What a run shows on a terminal of 40 columns."""
        ours, theirs = pty.openpty()
        fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 40, 0, 0))
        process = subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, stderr=theirs,
                                   stdout=theirs, env={**self.environment, "TERM": "xterm"})
        self.addCleanup(process.kill)
        os.close(theirs)
        shown = b""
        with contextlib.suppress(OSError), open(ours, "rb", buffering=0) as terminal:
            while part := terminal.read(4096):  # fails at its end
                shown += part
        process.wait(timeout=20)
        return shown.decode()

    def test_what_is_done_so_far_is_one_line_of_a_terminal(self):
        self.stand_in_for("[ $NAME = c ] && { sleep 2.2; exit 3; }")
        shown = self.on_terminal("draw", "talks", "--to", "out", "--jobs", "1")
        self.assertRegex(shown, r"\A(\rquorbel-lattice: [0-2] lattices done, of 6 \x1B\[K\r)+"
                         r"\x1B\[Kquorbel-lattice: talks/c\.slf: dot failed with status 3\r\n"
                         r"((\rquorbel-lattice: \d lattices done, of 6 \x1B\[K\r)+\x1B\[K)?"
                         r"quorbel-lattice: 5 lattices done, 1 failed\r\n\Z")

    def test_the_line_of_a_terminal_goes_at_last(self):
        self.stand_in_for("sleep 1.3")
        self.assertRegex(self.on_terminal("draw", "talk.slf", "out.svg"),
                         r"\A(\rquorbel-lattice: drawing 5 links \(\d s\)\x1B\[K\r)+\x1B\[K\Z")

    def test_what_is_done_so_far_is_said_where_there_is_no_terminal(self):
        self.stand_in_for("[ $NAME = a ] && sleep 1.5")
        result = self.draw("--jobs", 1)
        self.assertRegex(result.progress, r"\Aquorbel-lattice: 0 lattices done, of 6 files \(1 s\)\n")

    def test_few_open_files_are_enough_for_many_jobs(self):
        # A sanitizer looks at objects through a pipe, and takes them for wrong without one.
        known = self.write("known", "vptr:*\n")
        self.environment["UBSAN_OPTIONS"] = f"suppressions={known}"
        def few_files():
            resource.setrlimit(resource.RLIMIT_NOFILE, (9, 9))
        process = subprocess.run(
            [PROGRAM, "draw", "talks", "--to", "out", "--format", "svg", "--jobs", "6"],
            cwd=self.folder, env=self.environment, capture_output=True, text=True,
            preexec_fn=few_files, timeout=100)
        self.assertEqual("quorbel-lattice: 6 lattices done\n", apart(process).stderr)
        self.assertEqual("abcdef", self.outputs())


if __name__ == "__main__":
    unittest.main()
