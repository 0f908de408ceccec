"""draw: the viewer's drawing in a file, and what becomes of its work files."""

import html
import os
import pathlib
import random
import re
import resource
import signal
import time
import unittest

from tool import EXAMPLES, ToolTest


class DrawingTest(ToolTest):
    def tearDown(self):
        self.assertEqual([], list(self.temporary.iterdir()), "work files are left")

    def draw(self, *options, source="talk.slf"):
        """The drawing as SVG: its text and the colours of links by their labels."""
        self.succeeds("draw", source, "out.svg", *options)
        return self.read("out.svg")

    def labels(self, svg):
        """The labels of links with the colour of each, "" for black."""
        return {text: colour for colour, text in re.findall(
            r'<g id="edge\d+".*?<text [^>]*?(?:fill="(\w+)")?>([^<]*)</text>', svg, re.DOTALL)}

    def texts(self, svg):
        return sorted(re.findall(r'<g id="edge\d+".*?<text [^>]*>([^<]*)</text>', svg, re.DOTALL))

    def test_comes_in_every_format(self):
        for name, begin in (("out.png", b"\x89PNG"), ("out.svg", b"<?xml"), ("out.pdf", b"%PDF"),
                            ("out.ps", b"%!PS"), ("out.dia", b"<?xml"),
                            ("out.eps", b"%!PS-Adobe-3.0 EPSF-3.0")):
            self.succeeds("draw", "talk.slf", name)
            self.assertTrue((self.folder / name).read_bytes().startswith(begin), name)
        self.assertIn("<dia:diagram", self.read("out.dia"))
        self.assertIn("today", self.read("out.dia"))
        self.assertEqual(["out.dia", "out.eps", "out.pdf", "out.png", "out.ps", "out.svg", "talk.slf",
                          "tmp"], self.files())

    def test_labels_links_with_their_words(self):
        self.assertEqual(["!NULL", "could", "day", "good", "today"], self.texts(self.draw()))

    def test_labels_links_with_a_field_or_the_cost(self):
        self.assertEqual(["!NULL", "1", "2", "day", "today"], self.texts(self.draw("--label", "v")))
        self.assertEqual(["0.5", "1.25", "3", "5", "6"], self.texts(self.draw("--label", "score")))
        self.assertEqual(["0.5", "1.25", "2", "3", "4"],
                         self.texts(self.draw("--label", "score", "--score", "a")))
        self.assertEqual('no word has the attribute "pos"; labels can be: in, score, v',
                         self.fails("draw", "talk.slf", "x.svg", "--label", "pos"))
        self.assertEqual('no link has the score "q"; there are: TOTAL, post, a, l',
                         self.fails("draw", "talk.slf", "x.svg", "--score", "q"))

    def test_marks_the_best_path(self):
        self.assertNotIn("blue", self.draw())
        self.assertEqual({"good": "blue", "could": "", "!NULL": "blue", "today": "", "day": "blue"},
                         self.labels(self.draw("--best")))

    def test_marks_the_best_path_through_a_link(self):
        self.assertEqual({"good": "cyan", "could": "", "!NULL": "", "today": "red", "day": ""},
                         self.labels(self.draw("--through", 4)))
        self.assertEqual("there is no link 5",
                         self.fails("draw", "talk.slf", "x.svg", "--through", 5))

    def test_marks_the_path_that_best_prints(self):
        self.write("parallel.slf", "N=3 L=4\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                                   "J=0 S=0 E=1 W=cat a=-1 l=-9\nJ=1 S=0 E=1 W=cap a=-50 l=-1\n"
                                   "J=2 S=1 E=2 W=sat a=-1 l=-1\nJ=3 S=0 E=2 W=hat a=-3 l=-5\n")
        self.assertEqual({"cat": "", "cap": "blue", "sat": "blue", "hat": ""}, self.labels(
            self.draw("--best", "--score", "l", source="parallel.slf")))
        self.assertEqual({"cat": "", "cap": "cyan", "sat": "red", "hat": ""}, self.labels(
            self.draw("--through", 2, "--score", "l", source="parallel.slf")))

    def test_marks_the_path_that_best_prints_in_random_lattices(self):
        seed = 9104
        numbers = random.Random(seed)
        for round in range(12):
            text = "N=5 L=12\n" + "".join(f"I={i} t={i}\n" for i in range(5))
            ends = [(0, 1), (1, 2), (2, 3), (3, 4)] * 2 + [
                tuple(sorted(numbers.sample(range(5), 2))) for _ in range(4)]
            text += "".join(f"J={j} S={s} E={e} W=w{j} a={numbers.randint(-9, 9)} "
                            f"l={-numbers.randint(0, 9)}\n" for j, (s, e) in enumerate(ends))
            self.write("random.slf", text)
            for score in ("TOTAL", "a", "l", "post"):
                with self.subTest(seed=seed, round=round, score=score, lattice=text):
                    best = self.succeeds("best", "random.slf", "--score", score)
                    colours = self.labels(self.draw("--best", "--score", score,
                                                    source="random.slf"))
                    self.assertEqual(set(re.findall(r"\t(w\d+)\t", best)),
                                     {word for word in colours if colours[word] == "blue"})

    def test_puts_a_drawing_into_a_column(self):
        self.write("words.slf", "N=9 L=8\n" + "".join(f"I={i} t={i}\n" for i in range(9)) + "".join(
            f"J={i} S={i} E={i + 1} W=word{i} a=-1\n" for i in range(8)))
        svg = self.draw("--best", "--monochrome", "--width", 8.4, "--font", "DejaVu Sans",
                        source="words.slf")
        self.assertLess(float(re.search(r'<svg width="([\d.]+)pt"', svg)[1]), 240)
        self.assertEqual([f"word{i}" for i in range(8)], self.texts(svg))
        self.assertGreater(svg.count('class="node"'), 9)
        self.assertEqual({"black", "lightgrey", "none", "transparent", "white"},
                         set(re.findall(r'(?:fill|stroke)="([^"]*)"', svg))
                         | {"black", "lightgrey", "none", "transparent", "white"})
        self.succeeds("draw", "words.slf", "out.dia", "--width", 8.4, "--monochrome")
        self.assertEqual(8, sum(f"#word{i}#" in self.read("out.dia") for i in range(8)))

    def test_marks_the_path_nearest_to_a_reference(self):
        svg = self.draw("--reference", "could today")
        self.assertEqual({"good": "blue", "could": "darkgreen", "!NULL": "blue",
                          "today": "darkgreen", "day": "blue"}, {
            text: colour for text, colour in self.labels(svg).items() if ":" not in text})
        self.assertIn(">best path: 2 errors<", svg)
        self.assertIn(">oracle path: no errors<", svg)
        self.assertNotIn(">both<", svg)
        self.assertIn("--ignore requires --reference",
                      self.fails("draw", "talk.slf", "x.svg", "--ignore", "um"))
        svg = self.draw("--reference", "um COULD ah today", "--ignore", "ah,UM", "--ignore-case")
        self.assertIn(">best path: 2 errors<", svg)
        self.assertIn(">oracle path: no errors<", svg)
        self.write("no.slf", "start=0 end=2\nN=3 L=1\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                             "J=0 S=0 E=1 W=a\n")
        self.assertEqual("no path leads from the start to the end",
                         self.fails("draw", "no.slf", "x.svg", "--reference", "a"))

    def test_says_when_letters_become_smaller_than_was_asked(self):
        result = self.run_tool("draw", "talk.slf", "out.pdf", "--width", 2, "--font-size", 9)
        self.assertRegex(result.stderr, r"\Aquorbel-lattice: out\.pdf: letters have [\d.]+ points, "
                                        r"not 9: a stretch between two nodes that all paths pass is "
                                        r"too wide for them\n\Z")
        self.assertEqual(("", 0), (result.stdout, result.returncode))

    def test_refuses_sizes_that_are_none(self):
        for option, value in (("--width", "0"), ("--width", "501"), ("--font-size", "0.5"),
                              ("--width", "nan"), ("--font-size", "nan"),
                              ("--font-size", "x")):
            self.assertIn(option, self.fails("draw", "talk.slf", "out.pdf", option, value))

    def test_draws_true_costs_where_they_are_others_to_the_viewer(self):
        self.write("loud.slf", "N=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                               "J=0 S=0 E=1 W=a a=-2\nJ=1 S=1 E=2 W=b a=-3\nJ=2 S=0 E=2 W=c a=4\n")
        self.run_tool("import", "loud.slf", "loud.lat")
        self.assertIn("J=0 S=0 E=1 W=<w in='a'/> TOTAL=-4 unshifted=-2 ", self.read("loud.lat"))
        for source in ("loud.slf", "loud.lat"):
            svg = self.draw("--best", "--label", "score", source=source)
            self.assertEqual({"2": "", "3": "", "-4": "blue"}, self.labels(html.unescape(svg)))

    def test_says_when_no_path_can_be_called_the_best(self):
        self.write("net.slf", "start=0 end=2\nN=3 L=3\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                              "J=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=1 W=b a=1\nJ=2 S=1 E=2 W=c a=-1\n")
        self.assertEqual("the network has a cycle, and the score of link 1 is positive: going around "
                         "might improve a path for ever",
                         self.fails("draw", "net.slf", "x.svg", "--best"))
        self.assertEqual(["a", "b", "c"], self.texts(self.draw(source="net.slf")))

    def test_says_when_there_is_no_path_to_mark(self):
        self.write("no.slf", "start=0 end=2\nN=3 L=2\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                             "J=0 S=0 E=1 W=a\nJ=1 S=1 E=1 W=b\n")
        self.assertEqual(["a", "b"], self.texts(self.draw(source="no.slf")))
        self.assertEqual("no path leads from the start to the end",
                         self.fails("draw", "no.slf", "x.svg", "--best"))
        self.assertEqual("no path from the start to the end takes link 1",
                         self.fails("draw", "no.slf", "x.svg", "--through", 1))
        self.assertEqual(["no.slf", "out.svg", "talk.slf", "tmp"], self.files())

    def test_keeps_words_in_their_labels(self):
        words = ['x", URL="javascript:alert(1)',
                 'x"]; 7 [image="/any/local.png"]; 0 -> 7 [comment="ID = 0',
                 "a\\", "\\N\\n\\G", "&lt;&#65;", "a\nb"]
        lines = [f"J={i} S=0 E=1 W=<w in='{self.as_xml(word)}'/> a=-{i}\n"
                 for i, word in enumerate(words)]
        self.write("odd.slf", f"N=2 L={len(words)}\nI=0 t=0\nI=1 t=1\n" + "".join(lines))
        svg = self.draw("--best", "--label", "in", source="odd.slf")
        shown = [word.replace("\n", "\u240a") for word in words]
        self.assertEqual(sorted(shown), sorted(map(html.unescape, self.texts(svg))))
        self.assertNotRegex(svg, "<a |<image|href=")
        self.assertEqual(2, svg.count('class="node"'))
        self.succeeds("draw", "odd.slf", "out.dia")
        dia = html.unescape(self.read("out.dia"))
        for word in shown:
            self.assertIn(f"#{word}#", dia)

    @staticmethod
    def as_xml(text):
        return html.escape(text).replace("\n", "&#10;")

    def test_draws_words_that_end_labels(self):
        self.write("odd.slf", "N=2 L=3\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W='\\\"' a=-1\n"
                              "J=1 S=0 E=1 W=a\\\\ a=-2\nJ=2 S=0 E=1 W=\\012 a=-3\n")
        self.assertEqual(["a\u2216", "\u201d", "\u240a"], self.texts(self.draw(source="odd.slf")))
        self.assertEqual(["%0A", "%22", "a%5C"],
                         self.texts(self.draw("--label", "exact", source="odd.slf")))

    def test_draws_words_however_long(self):
        for word in ("ab" * 50000, "R&amp;D" * 20000, "&lt;\u00fc&gt;" * 10000):
            self.write("odd.slf", f"N=2 L=1\nI=0\nI=1 t=1\nJ=0 S=0 E=1 W=<w in='{word}'/>\n")
            text = html.unescape(word)
            self.assertEqual([text], [*map(html.unescape, self.texts(self.draw(source="odd.slf")))])
            self.succeeds("draw", "odd.slf", "out.dia")
            self.assertIn(f"#{text}#", html.unescape(self.read("out.dia")))

    def test_draws_every_example(self):
        for example in sorted([*EXAMPLES.glob("*.lat"), *EXAMPLES.glob("*.htk")]):
            with self.subTest(example=example.name):
                links = re.findall(r"(?m)^J=", example.read_text("utf-8"))
                self.assertEqual(len(links), len(self.texts(self.draw("--best", source=example))))

    def test_writes_a_drawing_where_it_is_told(self):
        (self.folder / "a folder; with 'odd' name").mkdir()
        self.succeeds("draw", "talk.slf", "a folder; with 'odd' name/$(out).svg")
        self.assertIn("today", self.read("a folder; with 'odd' name/$(out).svg"))
        self.assertEqual("none/out.png: No such file or directory",
                         self.fails("draw", "talk.slf", "none/out.png"))
        for name in ("out.gif", "out", "out.PNG", ".png"):
            self.assertEqual(f"{name}: the name must end in .png, .svg, .pdf, .eps, .ps or .dia, "
                             "the format", self.fails("draw", "talk.slf", name))

    def test_says_when_there_is_no_place_for_work_files(self):
        self.environment["TMPDIR"] = "/none"
        self.assertEqual("no folder for work files in /none: No such file or directory",
                         self.fails("draw", "talk.slf", "out.png"))

    def test_work_files_may_lie_in_a_folder_named_like_an_option(self):
        folder = self.folder / "-x"
        folder.mkdir()
        self.environment["TMPDIR"] = "-x"
        self.assertIn("today", self.draw())
        self.assertEqual([], list(folder.iterdir()))

    def test_says_when_dot_is_missing(self):
        self.environment["PATH"] = str(self.folder)
        self.assertEqual('the program "dot" was not found; it belongs to Graphviz, install the '
                         'package "graphviz"', self.fails("draw", "talk.slf", "out.png"))
        self.assertEqual(["talk.slf", "tmp"], self.files())

    def test_says_when_dot_fails(self):
        self.write("out.png", "old")
        self.stand_in("#!/bin/sh\necho >&2\necho 'Error: no memory' >&2\necho more >&2\n"
                      "echo x >\"$3\"\nexit 3\n")
        self.assertEqual("dot failed with status 3: Error: no memory",
                         self.fails("draw", "talk.slf", "out.png"))
        self.stand_in("#!/bin/sh\nkill -9 $$\n")
        self.assertEqual("dot was ended by a signal (Killed)",
                         self.fails("draw", "talk.slf", "out.png"))
        self.stand_in("#!/bin/sh\nexit 143\n")  # of a shell whose own dot was ended
        self.assertEqual("dot was ended by a signal (Terminated)",
                         self.fails("draw", "talk.slf", "out.png"))
        self.stand_in("#!/bin/sh\necho 'dot: a library is missing' >&2\nexit 127\n")
        self.assertEqual('the program "dot" was not found; it belongs to Graphviz, install the '
                         'package "graphviz": dot: a library is missing',
                         self.fails("draw", "talk.slf", "out.png"))
        self.stand_in("#!/bin/sh\nexit 0\n")
        self.assertEqual("dot made no drawing", self.fails("draw", "talk.slf", "out.png"))
        self.assertEqual("dot made no drawing", self.fails("draw", "talk.slf", "out.dia"))
        self.assertEqual("old", self.read("out.png"))
        self.assertFalse((self.folder / "out.dia").exists())

    def test_passes_on_what_dot_says(self):
        self.stand_in("#!/bin/sh\necho 'dot: scaled to fit' >&2\nPATH=" + os.environ["PATH"] +
                      " exec dot \"$@\"\n")
        result = self.run_tool("draw", "talk.slf", "out.svg")
        self.assertEqual(("dot: scaled to fit\n", 0), (result.stderr, result.returncode))

    def test_says_what_it_does_when_it_takes_long(self):
        self.stand_in("#!/bin/sh\nsleep 1.5\nPATH=" + os.environ["PATH"] + " exec dot \"$@\"\n")
        result = self.run_tool("draw", "talk.slf", "out.svg")
        self.assertEqual(("quorbel-lattice: drawing 5 links (1 s)\n", "", 0),
                         (result.progress, result.stderr, result.returncode))

    def start(self, name="out.png", **options):
        return self.start_tool("draw", "talk.slf", name, **options)

    def hold_dot(self, then="exec sleep 60"):
        self.stand_in(f"#!/bin/sh\necho $$ >{self.folder}/started.new\n"
                      f"mv {self.folder}/started.new {self.folder}/started\n{then}\n")

    def held_dot(self):
        """The process of the `dot` that is held."""
        started = self.folder / "started"
        self.wait_for(started.exists, "dot")
        dot = int(started.read_text())
        started.unlink()
        return dot

    def test_ends_dot_and_cleans_up_when_it_is_told_to_end(self):
        self.hold_dot()
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGQUIT,
                       signal.SIGPIPE):
            process = self.start()
            dot = self.held_dot()
            process.send_signal(number)
            self.assertEqual("quorbel-lattice: dot was ended by a signal (Terminated)\n",
                             process.communicate(timeout=20)[1])
            self.assertEqual(1, process.returncode)
            with self.assertRaises(ProcessLookupError):
                os.kill(dot, 0)
            self.assertFalse((self.folder / "out.png").exists())

    def test_goes_on_through_a_signal_that_it_was_started_to_ignore(self):
        self.hold_dot(then=f"while ! [ -e {self.folder}/go ]; do sleep 0.02; done\n"
                           f"PATH={os.environ['PATH']} exec dot \"$@\"")
        process = self.start(preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        dot = self.held_dot()
        process.send_signal(signal.SIGHUP)
        os.kill(dot, signal.SIGHUP)
        self.write("go", "")
        errors = process.communicate(timeout=20)[1]
        self.assertEqual(0, process.returncode, errors)
        self.assertTrue((self.folder / "out.png").exists())

    def test_cleans_up_when_it_is_told_to_end_after_dot(self):
        os.mkfifo(self.folder / "out.svg")  # nobody reads what goes there
        self.hold_dot(then=f"PATH={os.environ['PATH']} exec dot \"$@\"")
        for number in (signal.SIGTERM, signal.SIGHUP):
            process = self.start("out.svg")
            dot = pathlib.Path(f"/proc/{self.held_dot()}")
            self.wait_for(lambda: not dot.exists(), "the end of dot")
            while process.poll() is None:  # the first may come before the pipe is opened
                process.send_signal(number)
                time.sleep(0.05)
            self.assertEqual("quorbel-lattice: out.svg: Interrupted system call\n",
                             process.communicate(timeout=20)[1])
            self.assertEqual((1, []), (process.returncode, list(self.temporary.iterdir())))


    def test_ends_dot_and_cleans_up_at_every_signal_that_ends_a_program(self):
        self.hold_dot()
        spared = {signal.SIGKILL, signal.SIGSTOP, signal.SIGTSTP, signal.SIGTTIN, signal.SIGTTOU,
                  signal.SIGCONT, signal.SIGCHLD, signal.SIGURG, signal.SIGWINCH, signal.SIGSEGV,
                  signal.SIGBUS, signal.SIGFPE, signal.SIGILL}
        numbers = {number for number in signal.valid_signals() if number not in spared}
        self.assertGreaterEqual(len(numbers), 40)
        for number in sorted(numbers):
            process = self.start()
            dot = self.held_dot()
            process.send_signal(number)
            self.assertIn("quorbel-lattice: dot was ended by a signal (Terminated)\n",
                          process.communicate(timeout=20)[1], number)
            self.assertEqual(1, process.returncode, number)
            with self.assertRaises(ProcessLookupError):
                os.kill(dot, 0)
            self.assertEqual([], list(self.temporary.iterdir()), number)

    def test_goes_on_where_it_was_stopped(self):
        self.hold_dot(then=f"while ! [ -e {self.folder}/go ]; do sleep 0.02; done\n"
                           f"PATH={os.environ['PATH']} exec dot \"$@\"")
        process = self.start()
        self.held_dot()
        for number in (signal.SIGTSTP, signal.SIGCONT, signal.SIGWINCH, signal.SIGCHLD):
            process.send_signal(number)
        self.write("go", "")
        errors = process.communicate(timeout=20)[1]
        self.assertEqual(0, process.returncode, errors)
        self.assertTrue((self.folder / "out.png").exists())

    def test_cleans_up_where_nothing_can_be_opened_or_read(self):
        def few_files():
            resource.setrlimit(resource.RLIMIT_NOFILE, (4, 4))
        for limit in (few_files, lambda: os.umask(0o777)):
            process = self.start(preexec_fn=limit)
            process.communicate(timeout=60)
            self.assertEqual([], list(self.temporary.iterdir()))
        self.assertEqual(0, process.returncode)

    def test_file_size_limit_ends_dot_and_cleans_up(self):
        def small_files():
            resource.setrlimit(resource.RLIMIT_FSIZE, (2048, 2048))
        for name in ("out.svg", "out.dia", "out.png"):
            process = self.start(name, preexec_fn=small_files)
            errors = process.communicate(timeout=60)[1]
            self.assertEqual(1, process.returncode)
            self.assertRegex(errors, r"(?m)^quorbel-lattice: .*File too large\)?$|"
                                     r"\(File size limit exceeded\)")
            self.assertEqual(["bin", "talk.slf", "tmp"][-2:], self.files())

    def test_says_why_dot_made_no_whole_drawing(self):
        """Here dot does not mind a limit on files, and as it stands notes no error of its end."""
        def small_files():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (2048, 2048))
        for act in ("", "head -c 5000 /dev/zero >\"$3\" 2>/dev/null\n"):
            for name in ("out.svg", "out.dia"):
                self.stand_in(f"#!/bin/sh\n{act}exit 0\n")
                process = self.start(name, preexec_fn=small_files)
                self.assertEqual("quorbel-lattice: dot made no whole drawing in the folder for "
                                 "work files: File too large\n", process.communicate(timeout=60)[1])
                self.assertEqual((1, False), (process.returncode, (self.folder / name).exists()))
        self.stand_in("#!/bin/sh\nhead -c 5000 /dev/zero >\"$3\" 2>/dev/null\nexit 3\n")
        process = self.start(preexec_fn=small_files)
        self.assertEqual("quorbel-lattice: dot failed with status 3 (File too large)\n",
                         process.communicate(timeout=60)[1])

    def test_knows_how_dot_ended_when_it_was_started_to_ignore_children(self):
        self.stand_in("#!/bin/sh\necho x >\"$3\"\necho bad >&2\nexit 3\n")
        process = self.start(preexec_fn=lambda: signal.signal(signal.SIGCHLD, signal.SIG_IGN))
        self.assertEqual("quorbel-lattice: dot failed with status 3: bad\n",
                         process.communicate(timeout=60)[1])


if __name__ == "__main__":
    unittest.main()
