"""import, prune, best and info, and what all commands do with what they are given."""

import gzip
import os
import re
import subprocess
import unittest

from tool import CYCLIC, EXAMPLES, IMPORTED, PROGRAM, TALK, ToolTest

COMMANDS = ("import", "prune", "best", "info", "oracle", "draw")


class HelpTest(ToolTest):
    def test_help_names_every_command(self):
        text = self.succeeds("--help")
        for command in COMMANDS:
            self.assertRegex(text, rf"(?m)^  {command} ")

    def test_every_command_has_help(self):
        options = {"import": ("IN", "OUT", "--to"),
                   "prune": ("IN", "OUT", "--to", "--links", "--beam"),
                   "best": ("IN", "--nbest", "--repeats", "--score", "--format", "--marks"),
                   "info": ("IN",),
                   "oracle": ("IN", "--reference", "--ignore", "--ignore-case", "--alignment", "--tsv"),
                   "draw": ("IN", "OUT", "--to", "--format", "--best", "--label", "--score",
                            "--through")}
        for command in COMMANDS:
            text = self.succeeds(command, "--help")
            for option in (*options[command], "--words", "--utterance", "--frame-shift",
                           "--acoustic-scale"):
                self.assertRegex(text, rf"(?m)^ +{option}\b", command)

    def test_version(self):
        self.assertRegex(self.succeeds("--version"), r"\Aquorbel-lattice \d+\.\d+\n\Z")

    def test_wrong_command_lines_are_one_line(self):
        for arguments, reason in (
                ((), "A command is required"),
                (("foo",), "The following argument was not expected: foo"),
                (("import",), "IN is required"),
                (("import", "talk.slf"), "OUT is required"),
                (("import", "talk.slf", "out.lat", "extra"),
                 "several lattices need a folder to be written to (--to FOLDER)"),
                (("oracle", "talk.slf"), "--reference is required"),
                (("best", "talk.slf", "--nbest", "0"), "--nbest: Value 0 not in range"),
                (("best", "talk.slf", "--format", "xml"), "--format: xml not in {text,ctm,htk}"),
                (("prune", "talk.slf", "out.lat"),
                 "Exactly 1 option from [--links,--beam] is required"),
                (("prune", "talk.slf", "out.lat", "--links", "3", "--beam", "2"),
                 "Exactly 1 option from [--links,--beam] is required"),
                (("prune", "talk.slf", "out.lat", "--links", "0"), "--links: Value 0 not in range"),
                (("prune", "talk.slf", "out.lat", "--beam", "nan"), "--beam: nan is no distance"),
                (("info", "no\nfile"), "no?file: No such file or directory"),
                (("info", "talk.slf", "--utterance", "speech"),
                 'talk.slf: no utterance "speech" in it'),
                (("info", "talk.slf", "--frame-shift", "0"), "--frame-shift: Value 0 not in range"),
                (("info", "talk.slf", "--acoustic-scale", "-1"),
                 "--acoustic-scale: Value -1 not in range"),
                (("prune", "talk.slf", "out.lat", "--beam", "-1"), "--beam: Value -1 not in range")):
            with self.subTest(arguments=arguments):
                self.assertIn(reason, self.fails(*arguments))
        self.assertEqual(["talk.slf", "tmp"], self.files())

    def test_a_number_out_of_range_is_told_the_range(self):
        for value in ("0", "100001"):  # how the library puts it differs between its versions
            self.assertRegex(self.fails("best", "talk.slf", "--nbest", value),
                             rf"\A--nbest: Value {value} not in range \D*\b1\D+100000\b\D*\Z")


class ImportTest(ToolTest):
    def test_writes_the_dialect_and_nothing_else(self):
        self.assertEqual("", self.succeeds("import", "talk.slf", "talk.lat"))
        self.assertEqual(IMPORTED, self.read("talk.lat"))
        self.assertEqual(["talk.lat", "talk.slf", "tmp"], self.files())
        self.assertEqual([], list(self.temporary.iterdir()))

    def test_leaves_the_dialect_alone_when_told_to(self):
        self.assertEqual("", self.succeeds("import", "--unless-dialect", "talk.slf", "talk.lat"))
        self.assertEqual(IMPORTED, self.read("talk.lat"))
        self.assertEqual("", self.succeeds("import", "--unless-dialect", "talk.lat", "copy.lat"))
        self.assertEqual(["talk.lat", "talk.slf", "tmp"], self.files())

    def test_imports_the_dialect_where_the_viewer_would_not_read_it_whole(self):
        self.succeeds("import", "talk.slf", "talk.lat")
        plain = self.read("talk.lat")
        for name, content in (("compressed.lat", gzip.compress(plain.encode())),
                              ("no_end.lat", plain[:-1].encode()),
                              ("blank.lat", ("lmname=my lm\n" + plain).encode())):
            self.write(name, content)
            self.succeeds("import", "--unless-dialect", name, "copy.lat")
            self.assertEqual(IMPORTED, self.read("copy.lat"), name)
            (self.folder / "copy.lat").unlink()

    def test_keeps_the_likeliest_links_of_a_larger_lattice(self):
        self.succeeds("import", "talk.slf", "talk.lat")
        self.succeeds("prune", "talk.slf", "pruned.lat", "--links", 3)
        links = self.read("talk.lat").count("J=")
        kept = self.read("pruned.lat").count("J=")
        self.assertLess(kept, links)
        told = ("import", "--tell-links", "--unless-dialect", "--links", 3, "--links-above")
        for name in ("talk.slf", "talk.lat"):
            self.assertEqual(f"{kept} of {links} links\n",
                             self.succeeds(*told, links - 1, name, "copy.lat"))
            self.assertEqual(self.read("pruned.lat").count("J="), self.read("copy.lat").count("J="))
            (self.folder / "copy.lat").unlink()
        self.assertEqual(f"{links} of {links} links\n",
                         self.succeeds(*told, links, "talk.slf", "copy.lat"))
        self.assertEqual(IMPORTED, self.read("copy.lat"))
        (self.folder / "copy.lat").unlink()
        self.assertEqual("", self.succeeds(*told, links, "talk.lat", "copy.lat"))
        self.assertFalse((self.folder / "copy.lat").exists())

    def test_keeps_all_links_of_a_cyclic_lattice(self):
        self.write("ring.slf", "N=3\nI=0\nI=1\nI=2\nstart=0 end=2\nJ=0 S=0 E=1 W=a a=-1\n"
                               "J=1 S=1 E=0 W=b a=-1\nJ=2 S=1 E=2 W=c a=-1\n")
        result = self.run_tool("import", "--tell-links", "--links", 1, "ring.slf", "copy.lat")
        self.assertEqual(0, result.returncode)
        self.assertRegex(result.stderr, "ring.slf: .*cycle.*, so all links stay")
        self.assertEqual(3, len(re.findall("(?m)^J=.*W=<w in='[abc]'", self.read("copy.lat"))))

    def test_reads_compressed_files(self):
        self.write("talk.slf.gz", gzip.compress((self.folder / "talk.slf").read_bytes()))
        self.succeeds("import", "talk.slf.gz", "talk.lat")
        self.assertEqual(IMPORTED, self.read("talk.lat"))

    def test_replaces_a_file_only_when_it_succeeds(self):
        self.write("old.lat", "old")
        self.write("bad.slf", "N=2\nI=0\nI=5\n")
        self.assertEqual("bad.slf: line 3: node 5, but nodes are 0 to 1",
                         self.fails("import", "bad.slf", "old.lat"))
        self.assertEqual("old", self.read("old.lat"))
        self.succeeds("import", "talk.slf", "old.lat")
        self.assertEqual(IMPORTED, self.read("old.lat"))

    def test_never_writes_over_its_input(self):
        before = self.read("talk.slf")
        (self.folder / "link.lat").symlink_to("talk.slf")
        for out in ("talk.slf", "./talk.slf", "link.lat"):
            self.assertEqual(f"{out}: this is the file to be read; write to another",
                             self.fails("import", "talk.slf", out))
        self.assertEqual(before, self.read("talk.slf"))

    def test_says_what_it_cannot_read_or_write(self):
        self.assertEqual("none.slf: No such file or directory",
                         self.fails("import", "none.slf", "out.lat"))
        self.assertEqual("none/out.lat: No such file or directory",
                         self.fails("import", "talk.slf", "none/out.lat"))
        self.assertEqual("/dev/full: No space left on device",
                         self.fails("import", "talk.slf", "/dev/full"))

    def test_leaves_no_part_of_a_file(self):
        (self.folder / "link.lat").symlink_to("out.lat")
        for out in ("out.lat", "link.lat"):
            result = subprocess.run(
                ["sh", "-c", "trap '' XFSZ; ulimit -f 0; exec \"$@\"", "sh", PROGRAM, "import",
                 "talk.slf", out], cwd=self.folder, text=True, capture_output=True, timeout=100)
            self.assertEqual((1, "", f"quorbel-lattice: {out}: File too large\n"),
                             (result.returncode, result.stdout, result.stderr))
            self.assertFalse((self.folder / "out.lat").exists())
        self.assertTrue((self.folder / "link.lat").is_symlink())

    def test_says_when_totals_are_positive_or_times_missing(self):
        self.write("loud.slf", "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=7 S=0 E=1 W=a a=3\n")
        result = self.run_tool("import", "loud.slf", "loud.lat")
        self.assertEqual(("", 0), (result.stdout, result.returncode))
        self.assertEqual("quorbel-lattice: loud.slf: the TOTAL of 1 links is positive (the first: "
                         "J=7), so for the viewer's search a link costs 3 more for each level that "
                         "it spans, and every path 3 more; its \"unshifted\" is the true sum\n",
                         result.stderr)
        for name in ("loud.slf", "loud.lat"):
            self.assertEqual("path 1: TOTAL=3: a", self.succeeds("best", name).splitlines()[0])
            self.assertIn("score TOTAL:      3 to 3 on 1 links\n", self.succeeds("info", name))
        self.write("net.slf", "N=2 L=1\nI=0\nI=1\nJ=0 S=0 E=1 W=a\n")
        result = self.run_tool("import", "net.slf", "net.lat")
        self.assertEqual(0, result.returncode)
        self.assertEqual("quorbel-lattice: net.slf: no node has a time; its depth in the lattice "
                         "stands for it\n", result.stderr)


class PruneTest(ToolTest):
    def test_keeps_the_likeliest_links(self):
        self.succeeds("prune", "talk.slf", "small.lat", "--links", "4")
        self.assertEqual(
            "VERSION=1.1\nUTTERANCE=talk\nlmscale=2\nN=4 L=4\n"
            "I=0 t=0\nI=1 t=0.4\nI=2 t=0.45\nI=3 t=1.25\n"
            "J=0 S=0 E=1 W=<w in='good' v='1'/> TOTAL=-3 a=-2 l=-0.5 post=-0.313262\n"
            "J=1 S=0 E=1 W=<w in='could' v='2'/> TOTAL=-5 a=-3 l=-1 post=-1.313262\n"
            "J=2 S=1 E=2 W=<w in='!NULL'/> TOTAL=-0.5 a=-0.5 post=0\n"
            "J=3 S=2 E=3 W=<w in='day'/> TOTAL=-1.25 a=-1.25 post=0\n", self.read("small.lat"))

    def test_keeps_what_lies_within_the_beam(self):
        self.succeeds("import", "talk.slf", "talk.lat")
        for beam, kept in ((1.9, "J=0 J=2 J=3"), (2, "J=0 J=1 J=2 J=3"),
                           (4.25, "J=0 J=1 J=2 J=4 J=3")):
            self.succeeds("prune", "talk.lat", "small.lat", "--beam", beam)
            ids = [line.split()[0] for line in self.read("small.lat").splitlines()
                   if line.startswith("J=")]
            self.assertEqual(kept, " ".join(ids), beam)

    def test_says_when_the_best_path_is_longer(self):
        result = self.run_tool("prune", "talk.slf", "small.lat", "--links", "1")
        self.assertEqual(("", 0), (result.stdout, result.returncode))
        self.assertEqual("quorbel-lattice: talk.slf: the best path alone has 3 links, all of which "
                         "are kept\n", result.stderr)
        self.assertIn("N=4 L=3\n", self.read("small.lat"))

    def test_refuses_a_cyclic_network(self):
        self.write("net.slf", CYCLIC)
        self.assertEqual("net.slf: the network has a cycle, so its links have no posterior and it "
                         "cannot be pruned", self.fails("prune", "net.slf", "x.lat", "--links", 2))
        self.assertEqual(["net.slf", "talk.slf", "tmp"], self.files())


class BestTest(ToolTest):
    def test_prints_the_best_path(self):
        self.assertEqual("path 1: TOTAL=-4.75: good day\n"
                         "  0\t0.4\tgood\t-3\tJ=0\n"
                         "  0.4\t0.45\t!NULL\t-0.5\tJ=2\n"
                         "  0.45\t1.25\tday\t-1.25\tJ=3\n", self.succeeds("best", "talk.slf"))

    def test_prints_several_paths_and_other_scores(self):
        text = self.succeeds("best", "talk.slf", "--nbest", 9)
        self.assertEqual(["path 1: TOTAL=-4.75: good day", "path 2: TOTAL=-6.75: could day",
                          "path 3: TOTAL=-9: good today", "path 4: TOTAL=-11: could today"],
                         [line for line in text.splitlines() if line.startswith("path")])
        text = self.succeeds("best", "talk.slf", "--score", "l", "--nbest", 2)
        self.assertEqual(["path 1: l=-0.5: good day", "path 2: l=-1: could day"],
                         [line for line in text.splitlines() if line.startswith("path")])
        self.assertEqual('talk.slf: no link has the score "q"; there are: TOTAL, post, a, l',
                         self.fails("best", "talk.slf", "--score", "q"))

    def test_prints_paths_as_they_are_found(self):
        self.write("loop.slf", CYCLIC.replace("W=b", "W=b a=-1"))
        environment = {**self.environment, "ASAN_OPTIONS": "quarantine_size_mb=1"}
        process = subprocess.Popen([PROGRAM, "best", "loop.slf", "--nbest", "4000"],
                                   cwd=self.folder, env=environment, stdout=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(0, process.returncode)
        self.assertLess(usage.ru_maxrss, 100000, "kilobytes for paths of up to 4000 links")

    def test_says_that_a_cycle_has_more_paths(self):
        self.write("loop.slf", CYCLIC)
        result = self.run_tool("best", "loop.slf", "--nbest", 3)
        self.assertEqual(("", 3), (result.stderr, result.stdout.count("path ")))
        result = self.run_tool("best", "loop.slf", "--nbest", 10005, "--format", "htk",
                               stdout=subprocess.DEVNULL)
        self.assertEqual(("quorbel-lattice: loop.slf: 10003 paths; there may be more, which go "
                          "around for longer than is looked for", 0),
                         (self.last_line(result.stderr), result.returncode))

    @staticmethod
    def last_line(text):  # before it, a slow machine says what it does
        return text.splitlines()[-1]

    def test_prints_ctm_and_htk_labels(self):
        self.assertEqual("talk 1 0.000 0.400 good 0.7311\ntalk 1 0.450 0.800 day 0.8933\n",
                         self.succeeds("best", "talk.slf", "--format", "ctm"))
        self.assertEqual("0 4000000 good -3\n4500000 12500000 day -1.25\n///\n"
                         "0 4000000 could -5\n4500000 12500000 day -1.25\n",
                         self.succeeds("best", "talk.slf", "--format", "htk", "--nbest", 2))
        self.assertEqual("best: CTM has no place for several paths; leave --nbest out or take "
                         "another format",
                         self.fails("best", "talk.slf", "--format", "ctm", "--nbest", 2))

    def test_ctm_has_marks_and_pauses_only_when_told_to(self):
        self.write("marks.slf", TALK.replace("W=good", "W=<s>").replace("W=!NULL", "W=<sil>"))
        day = "talk 1 0.450 0.800 day 0.8933\n"
        self.assertEqual(day, self.succeeds("best", "marks.slf", "--format", "ctm"))
        self.assertEqual("talk 1 0.000 0.400 <s> 0.7311\ntalk 1 0.400 0.050 <sil> 0.8933\n" + day,
                         self.succeeds("best", "marks.slf", "--format", "ctm", "--marks"))

    def test_prints_different_words_unless_repeats_are_asked_for(self):
        self.write("twice.slf", TALK.replace("W=could", "W=good").replace("W=today", "W=<sil>"))
        for repeats, expected in (
                ((), ["path 1: TOTAL=-4.75: good day", "path 2: TOTAL=-9: good <sil>"]),
                (("--repeats",), ["path 1: TOTAL=-4.75: good day", "path 2: TOTAL=-6.75: good day",
                                  "path 3: TOTAL=-9: good <sil>", "path 4: TOTAL=-11: good <sil>"])):
            text = self.succeeds("best", "twice.slf", "--nbest", 9, *repeats)
            self.assertEqual(expected, re.findall("(?m)^path.*", text))

    def test_names_the_utterance_after_the_file_without_another_name(self):
        self.write("monday.slf", "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=a\n")
        self.assertEqual("monday 1 0.000 1.000 a 1.0000\n",
                         self.succeeds("best", "monday.slf", "--format", "ctm"))

    def test_says_when_there_is_no_path(self):
        self.write("broken.slf", "start=0 end=2\nN=3 L=1\nI=0 t=0\nI=1 t=1\nI=2 t=2\n"
                                 "J=0 S=0 E=1 W=a\n")
        self.assertEqual("broken.slf: no path leads from the start to the end",
                         self.fails("best", "broken.slf"))

    def test_says_when_its_output_cannot_be_written(self):
        with open("/dev/full", "w") as full:
            result = self.run_tool("best", "talk.slf", stdout=full)
        self.assertEqual(1, result.returncode)
        self.assertEqual("quorbel-lattice: standard output: No space left on device\n",
                         result.stderr)


class InfoTest(ToolTest):
    def test_prints_a_summary(self):
        self.assertEqual("utterance:        talk\n"
                         "words:            plain, to be imported for the viewer\n"
                         "nodes:            4\n"
                         "links:            5\n"
                         "duration:         1.25 s\n"
                         "links per second: 4\n"
                         "start node:       0 (0 in the file)\n"
                         "end node:         3 (3 in the file)\n"
                         "cyclic:           no\n"
                         "score TOTAL:      -6 to -0.5 on 5 links\n"
                         "score post:       -2.23782 to -0.112822 on 5 links\n"
                         "score a:          -4 to -0.5 on 5 links\n"
                         "score l:          -1 to -0.5 on 3 links\n"
                         "best path:        TOTAL=-4.75: good day\n", self.succeeds("info", "talk.slf"))

    def test_reads_a_pipe(self):
        result = subprocess.run(f'cat talk.slf | "$QUORBEL_LATTICE" info /dev/stdin', shell=True,
                                cwd=self.folder, env=self.environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual(0, result.returncode, result.stderr)
        self.assertIn("links:            5\n", result.stdout)


KALDI = """talk-1 \n0\t1\t1\t0.5,20,7_7\n1\t2\t2\t1,30,8_9_9\n2\t0.5,0,\n
talk-2 \n0\t1\t2\t1,10,4\n1\n\n"""


class KaldiTest(ToolTest):
    """Archives go in wherever lattices do; one utterance of theirs is taken."""

    def setUp(self):
        super().setUp()
        self.write("lat.1", KALDI)
        self.write("words.txt", "<eps> 0\ngood 1\nday 2\n")

    def test_info_describes_every_utterance_or_the_one_that_is_named(self):
        text = self.succeeds("info", "lat.1", "--words", "words.txt", "--utterance", "talk-2")
        self.assertTrue(text.endswith("best path:        TOTAL=-2: day\n"), text)
        self.assertEqual("utterance:        talk-2", text.splitlines()[0])
        result = self.run_tool("info", "lat.1", "--words", "words.txt")
        self.assertEqual(("quorbel-lattice: 2 lattices done\n", 0),
                         (result.stderr, result.returncode))
        self.assertTrue(result.stdout.endswith("\n\nlattice:          lat.1: talk-2\n" + text + "\n"))
        self.assertTrue(result.stdout.startswith("lattice:          lat.1: talk-1\n"))

    def test_every_command_takes_the_options(self):
        words = ("--words", "words.txt")
        self.assertEqual("path 1: TOTAL=-52: good day\n"
                         "  0\t1\tgood\t-20.5\tJ=0\n"
                         "  1\t2.5\tday\t-31\tJ=1\n"
                         "  2.5\t2.5\t!NULL\t-0.5\tJ=2\n",
                         self.succeeds("best", "lat.1", *words, "--frame-shift", "0.5",
                                       "--acoustic-scale", "1", "--utterance", "talk-1"))
        second = (*words, "--utterance", "talk-2")
        imported = ("VERSION=1.1\nUTTERANCE=talk-2\nacscale=0.1\nN=2 L=1\nI=0 t=0\nI=1 t=0.01\n"
                    "J=0 S=0 E=1 W=<w in='day'/> TOTAL=-2 a=-10 l=-1 post=0\n")
        self.succeeds("import", "lat.1", "talk.lat", *second)
        self.assertEqual(imported, self.read("talk.lat"))
        self.succeeds("prune", "lat.1", "talk.lat", "--links", "1", *second)
        self.assertEqual(imported, self.read("talk.lat"))
        self.succeeds("draw", "lat.1", "talk.svg", *second)
        self.assertIn(">day</text>", self.read("talk.svg"))

    def test_says_when_words_are_numbers(self):
        result = self.run_tool("import", "lat.1", "talk.lat")
        self.assertEqual("quorbel-lattice: lat.1: words are shown as numbers, for want of a table of "
                         "words; --words FILE names one\n", result.stderr)
        self.assertIn("W=<w in='1'/>", self.read("talk.lat"))

    def test_takes_words_beside_the_archive_for_the_viewer(self):
        self.succeeds("import", "--unless-dialect", self.folder / "lat.1", "talk.lat")
        self.assertIn("W=<w in='good'/>", self.read("talk.lat"))
        (self.folder / "words.txt").unlink()
        result = self.run_tool("import", "--unless-dialect", "lat.1", "talk.lat")
        self.assertIn("words are shown as numbers", result.stderr)

    def test_reads_no_further_than_the_lattice_that_is_asked_for(self):
        producer = subprocess.Popen(["sh", "-c", "cat lat.1; exec yes ''"], cwd=self.folder,
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        with producer:
            result = subprocess.run([PROGRAM, "best", "-", "--words", "words.txt", "--utterance",
                                     "talk-2"], stdin=producer.stdout, capture_output=True,
                                    cwd=self.folder, timeout=100, text=True)
            producer.stdout.close()
        self.assertIn("path 1: TOTAL=-2: day\n", result.stdout)
        self.assertNotEqual(0, producer.returncode)  # it would have gone on for ever

    def test_reads_what_fstprint_writes(self):
        self.write("talk.fst.txt", "0\t1\tgood\t0.5\n1\t2\tday\n2\t0.25\n")
        self.assertEqual("TOTAL=-0.75: good day",
                         self.succeeds("info", "talk.fst.txt").splitlines()[-2].split(None, 2)[2])
        self.write("talk.fst", bytes.fromhex("d6fdb27e") + b"\xff" * 8)
        self.assertEqual("talk.fst: the file ends too early, after 12 bytes",
                         self.fails("info", "talk.fst"))

    def test_reads_the_standard_input(self):
        text = self.succeeds("info", "talk.slf")
        for name, content in (("plain", self.read("talk.slf").encode()),
                              ("packed", gzip.compress(self.read("talk.slf").encode()))):
            with self.subTest(name=name):
                result = subprocess.run([PROGRAM, "info", "-"], input=content, capture_output=True,
                                        cwd=self.folder, timeout=100)
                self.assertEqual((b"", text), (result.stderr, result.stdout.decode()))
        result = subprocess.run([PROGRAM, "info", "-"], input=b"N=x\n", capture_output=True,
                                cwd=self.folder, timeout=100)
        self.assertEqual(b"quorbel-lattice: standard input: line 1: N=x is no number from 0 on\n",
                         result.stderr)


class ScalesTest(ToolTest):
    """The scales of the header can be replaced in every command."""

    SCALES = ("--lmscale", 6, "--wdpenalty", -2, "--acoustic-scale", 0.5)

    def test_change_totals_in_every_command(self):
        self.assertEqual("path 1: TOTAL=-8.875: good day",
                         self.succeeds("best", "talk.slf", *self.SCALES).splitlines()[0])
        self.assertIn("score TOTAL:      -10 to -0.25 on 5 links\n",
                      self.succeeds("info", "talk.slf", *self.SCALES))
        self.succeeds("import", "talk.slf", "talk.lat", *self.SCALES)
        self.succeeds("prune", "talk.slf", "small.lat", "--beam", 100, *self.SCALES)
        self.assertEqual(self.read("talk.lat"), self.read("small.lat"))
        self.assertIn("acscale=0.5\nlmscale=6\nwdpenalty=-2\n", self.read("talk.lat"))
        self.assertIn("TOTAL=-6 a=-2 l=-0.5 ", self.read("talk.lat"))
        self.succeeds("draw", "talk.slf", "talk.svg", "--label", "score", *self.SCALES)
        self.assertIn(">2.625<", self.read("talk.svg"))

    def test_change_posteriors_in_every_command(self):
        self.assertEqual("talk 1 0.000 0.400 good 0.8808\ntalk 1 0.450 0.800 day 0.9859\n",
                         self.succeeds("best", "talk.slf", "--format", "ctm", "--posterior-scale", 1))
        self.assertIn("score post:       -4.26416 to -0.0141635 on 5 links\n",
                      self.succeeds("info", "talk.slf", "--posterior-scale", 1))

    def test_are_used_in_an_import_of_what_the_viewer_reads(self):
        self.succeeds("import", "talk.slf", "talk.lat")
        self.succeeds("import", "--unless-dialect", "talk.lat", "copy.lat", *self.SCALES)
        self.assertIn("acscale=0.5\nlmscale=6\nwdpenalty=-2\n", self.read("copy.lat"))

    def test_are_numbers_in_a_range(self):
        for option, value in (("--lmscale", -1), ("--acoustic-scale", "x"), ("--wdpenalty", "nan"),
                              ("--frame-shift", "nan"), ("--lmscale", "-nan"),
                              ("--posterior-scale", 0)):
            self.assertIn(option, self.fails("best", "talk.slf", option, value))


class ExamplesTest(ToolTest):
    """What is in the viewer's dialect already is as good as what is not."""

    def examples(self):
        examples = sorted([*EXAMPLES.glob("*.lat"), *EXAMPLES.glob("*.htk")])
        self.assertGreaterEqual(len(examples), 5)
        return examples

    def test_have_a_best_path_and_a_summary(self):
        for example in self.examples():
            with self.subTest(example=example.name):
                words = self.succeeds("best", example).splitlines()[0].split(": ")[2]
                self.assertIn(words, self.succeeds("info", example))
        self.assertEqual("path 1: TOTAL=-9690.25: it's hard to recognise speech",
                         self.succeeds("best", EXAMPLES / "speech.lat").splitlines()[0])

    def test_keep_their_words_when_pruned(self):
        for example in self.examples():
            with self.subTest(example=example.name):
                self.succeeds("prune", example, "small.lat", "--links", 40)
                source = {line.split()[0]: line for line in example.read_text("utf-8").splitlines()}
                kept = [line for line in self.read("small.lat").splitlines() if line[:2] == "J="]
                self.assertLessEqual(len(kept), 40)
                for line in kept:
                    word = line[line.index("W=") + 2:line.index(" TOTAL=")]
                    self.assertIn(f" W={word} ", source[line.split()[0]])


if __name__ == "__main__":
    unittest.main()
