"""The installed command, with a shell script in the viewer's place that notes what it was given.

Needs QUORBEL_STAGING, the folder that the program was installed to, and QUORBEL_SOURCE.
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

STAGING = pathlib.Path(os.environ["QUORBEL_STAGING"])
SOURCE = pathlib.Path(os.environ["QUORBEL_SOURCE"])
PATIENCE_S = 30
WORK_FILES = ("quorbel_graph.dot", "graph.dot", "graph.png")

# Notes its working directory, what is in it, its mode and umask, and the arguments; then acts.
STAND_IN = r"""#!/bin/sh
{ printf '%s\0' "$PWD" "$(ls -A)" "$(readlink images)" "$(stat -c %a .)" "$(umask)" "$@"; } \
  >"$NOTES/notes.$$"
mv "$NOTES/notes.$$" "$NOTES/$$"
eval "$ACT"
"""


class Notes:
    """What one stand-in was given."""

    def __init__(self, path):
        self.process_id = int(path.name)
        folder, files, images, mode, umask, *arguments = path.read_bytes().split(b"\0")[:-1]
        self.folder = pathlib.Path(os.fsdecode(folder))
        self.files = files.decode().split()
        self.images = os.path.normpath(os.fsdecode(images))
        self.mode = mode.decode()
        self.umask = umask.decode()
        self.arguments = arguments


class LauncherCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="launcher-test-")
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name).resolve()
        prefix = self.root / "usr"
        (prefix / "bin").mkdir(parents=True)
        (prefix / "lib" / "quorbel").mkdir(parents=True)
        shutil.copy(STAGING / "bin" / "quorbel", prefix / "bin")
        self.images = str(prefix / "share" / "quorbel" / "images")
        self.launcher = prefix / "bin" / "quorbel"
        viewer = prefix / "lib" / "quorbel" / "quorbel"
        viewer.write_text(STAND_IN)
        viewer.chmod(0o755)
        self.notes = self.root / "notes"
        self.folder = self.root / "user"  # where the user starts the command
        self.runtime = self.root / "runtime"
        for folder in (self.notes, self.folder, self.runtime):
            folder.mkdir()
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.root), "ACT": "",
                            "NOTES": str(self.notes), "XDG_RUNTIME_DIR": str(self.runtime)}

    def start(self, *arguments, act="", **environment):
        def default_signals():  # whatever the caller of the tests ignores
            for number in (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM):
                signal.signal(number, signal.SIG_DFL)
        process = subprocess.Popen(
            [self.launcher, *arguments], cwd=self.folder, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, preexec_fn=default_signals,
            env=self.environment | {"ACT": act} | environment)
        def end():
            process.kill()
            process.wait()
            process.stdout.close()  # a viewer that lives on, which is a failure, may keep its end
            process.stderr.close()
        self.addCleanup(end)
        return process

    def run_to_end(self, *arguments, **options):
        """Returns exit status, standard output and standard error."""
        process = self.start(*arguments, **options)
        output, errors = process.communicate(timeout=PATIENCE_S)
        return process.returncode, output.decode(), errors.decode("utf-8", "surrogateescape")

    def taken_notes(self):
        return [Notes(path) for path in sorted(self.notes.glob("[0-9]*"))]

    def given(self, *arguments, **options):
        """The notes of the stand-in of a run that ends well and says nothing."""
        self.assertEqual((0, "", ""), self.run_to_end(*arguments, **options))
        return self.last_notes()

    def last_notes(self):
        (notes,) = self.taken_notes()
        (self.notes / str(notes.process_id)).unlink()
        return notes

    def wait_for(self, condition, what):
        deadline = time.monotonic() + PATIENCE_S
        while not condition():
            self.assertLess(time.monotonic(), deadline, what)
            time.sleep(0.02)


def is_alive(process_id):
    """Whether it runs; a zombie that nobody has asked for does not."""
    try:
        state = pathlib.Path(f"/proc/{process_id}/stat").read_text().rpartition(")")[2].split()[0]
    except (FileNotFoundError, ProcessLookupError):
        return False
    return state != "Z"


class ArgumentsTest(LauncherCase):
    def opens(self, expected, *arguments):
        self.assertEqual([os.fsencode(expected)], self.given(*arguments).arguments)

    def test_without_a_lattice(self):
        self.assertEqual([], self.given().arguments)
        self.assertEqual([], self.given("").arguments)
        self.assertEqual([], self.given("--").arguments)

    def test_path_becomes_absolute_without_dots(self):
        for path in ("a.lat", "./a.lat", "../user/a.lat", "x/.././a.lat", f"{self.folder}/./a.lat",
                     f"{self.folder}//a.lat"):
            (self.folder / "x").mkdir(exist_ok=True)
            self.opens(self.folder / "a.lat", path)

    def test_folder_and_lattice_need_not_exist(self):
        self.opens(self.folder / "none" / "a.lat", "none/a.lat")

    def test_links_of_the_user_are_kept(self):
        (self.folder / "far.away").mkdir()
        (self.folder / "far.away" / "long.name.lat").touch()
        (self.folder / "near").symlink_to("far.away")
        (self.folder / "a.lat").symlink_to("far.away/long.name.lat")
        self.opens(self.folder / "a.lat", "a.lat")
        self.opens(self.folder / "near" / "long.name.lat", "near/long.name.lat")

    def test_parent_of_a_link_is_that_of_the_folder_it_leads_to(self):
        (self.folder / "deep" / "down").mkdir(parents=True)
        (self.folder / "deep" / "a.lat").touch()
        (self.folder / "near").symlink_to("deep/down")
        self.opens(self.folder / "deep" / "a.lat", "near/../a.lat")

    def test_odd_names(self):
        for name in (b"two words", b" ", b"*", b"$HOME", b"`id`", b"'", b'"', b"back\\slash",
                     b"a\nb", b"ends\n", b"ends\n\n", b"\n", "grüße.lat".encode(),
                     b"gr\xf6\xdfe.lat", b"\xff", b"-", b"%s%n", b"#", b"~"):
            with self.subTest(name=name):
                self.opens(os.fsencode(self.folder) + b"/" + name, name)

    def test_names_that_begin_with_a_dash(self):
        for name in ("-a.lat", "--help", "--version", "--", "--sync", "-n"):
            with self.subTest(name=name):
                self.opens(self.folder / name, "--", name)
                self.opens(self.folder / name, "./" + name)

    def test_options_of_the_toolkit_are_passed_on_in_order(self):
        options = [b"--display=:7", b"--name", b"reader", b"--class=Lattices", b"--screen", b"1",
                   b"--sync", b"--g-fatal-warnings", b"--gtk-module=x", b"--gtk-module", b"y",
                   b"--gdk-debug=events", b"--gtk-no-debug", b"all"]
        lattice = os.fsencode(self.folder / "a.lat")
        self.assertEqual([*options, lattice], self.given(*options, "a.lat").arguments)
        self.assertEqual([*options, lattice], self.given("a.lat", *options).arguments)
        self.assertEqual([*options, lattice], self.given(*options, "--", "a.lat").arguments)
        self.assertEqual(options, self.given(*options).arguments)

    def test_values_of_options_may_have_blanks(self):
        self.assertEqual([b"--name=two words", b"--class", b"* \n"],
                         self.given("--name=two words", "--class", "* \n").arguments)

    def test_further_lattices_are_ignored_with_one_line(self):
        self.assertEqual(
            (0, "", "quorbel: only one lattice can be opened; ignored: b.lat c?d.lat\n"),
            self.run_to_end("a.lat", "b.lat", "--sync", "c\nd.lat"))
        self.assertEqual([b"--sync", os.fsencode(self.folder / "a.lat")],
                         self.last_notes().arguments)

    def test_unknown_options_start_nothing(self):
        for option in ("--hlep", "-x", "-a.lat", "--displayed=:7", "--gtk-moduls=x", "--gdk-"):
            self.assertEqual(
                (2, "", f"quorbel: unknown option: {option} (try quorbel --help)\n"),
                self.run_to_end("a.lat", option))
        self.assertEqual((2, "", "quorbel: option without its value: --display\n"),
                         self.run_to_end("a.lat", "--display"))
        self.assertEqual([], self.taken_notes())
        self.assertEqual([], list(self.runtime.iterdir()))

    def test_version_is_that_of_the_viewer(self):
        product = (SOURCE / "src" / "texts" / "product.h").read_text()
        version = re.search(r'VERSION_TEXT = "(.*)"', product)[1]
        self.assertEqual((0, version + "\n", ""), self.run_to_end("--version"))
        self.assertEqual((0, version + "\n", ""), self.run_to_end("a.lat", "--version", "b.lat"))
        self.assertEqual([], self.taken_notes())

    def test_answers_that_cannot_be_written_start_nothing(self):
        for option in ("--help", "--version"):
            with open("/dev/full", "wb") as full:
                self.assertNotEqual(0, subprocess.run(
                    [self.launcher, option], env=self.environment, stdout=full,
                    stderr=subprocess.DEVNULL, timeout=PATIENCE_S, check=False).returncode)
        self.assertEqual([], self.taken_notes())

    def test_help_names_every_option(self):
        status, output, errors = self.run_to_end("--sync", "--help")
        self.assertEqual((0, ""), (status, errors))
        self.assertTrue(output.startswith("Usage: quorbel [OPTION]... [--] [LATTICE]\n"), output)
        options = ("--help", "--version", "--display=", "--name=", "--class=", "--sync",
                   "--g-fatal-warnings", "--gtk-", "--gdk-")
        self.assertEqual([], [option for option in options if option not in output])
        self.assertEqual([], self.taken_notes())

    def test_works_through_a_link_to_it(self):
        link = self.root / "link"
        link.symlink_to(self.launcher)
        self.launcher = link
        self.assertEqual(self.images, self.given().images)


class WorkFolderTest(LauncherCase):
    def test_is_private_and_holds_the_pictures(self):
        notes = self.given("a.lat")
        self.assertEqual(self.runtime / "quorbel", notes.folder.parent)
        self.assertEqual("700", notes.mode)
        self.assertEqual(["images"], notes.files)
        self.assertEqual(self.images, notes.images)
        self.assertEqual(0o700, (self.runtime / "quorbel").stat().st_mode & 0o777)

    def test_files_saved_elsewhere_get_the_users_mode(self):
        for mask in (0o022, 0o077, 0o002):
            before = os.umask(mask)
            try:
                self.assertEqual(mask, int(self.given().umask, 8))
            finally:
                os.umask(before)

    def test_goes_at_the_end(self):
        notes = self.given(act="touch " + " ".join(WORK_FILES))
        self.assertFalse(notes.folder.exists())
        self.assertEqual([], list((self.runtime / "quorbel").iterdir()))
        self.assertEqual([], list(self.folder.iterdir()))

    def test_what_was_saved_there_stays(self):
        status, _, errors = self.run_to_end(act="touch out.png; touch " + " ".join(WORK_FILES))
        folder = self.last_notes().folder
        self.assertEqual(0, status)
        self.assertEqual(f"quorbel: what was saved in the work folder stays there: {folder}\n",
                         errors)
        self.assertEqual(["out.png"], os.listdir(folder))

    def test_pictures_survive_its_end(self):
        os.makedirs(self.images)
        (pathlib.Path(self.images) / "logo.png").touch()
        self.given()
        self.assertEqual(["logo.png"], os.listdir(self.images))

    def test_lies_where_no_path_has_a_dot(self):
        cache = self.root / "cache"
        dotted = self.root / "with.dot"
        temporary = self.root / "temporary"
        blocked = self.root / "blocked"
        for folder in (cache, dotted, temporary, blocked):
            folder.mkdir()
        (blocked / "quorbel").touch()
        folders = {"XDG_RUNTIME_DIR": dotted, "XDG_CACHE_HOME": cache, "TMPDIR": temporary}
        def parent(**changes):
            names = {name: str(path) for name, path in (folders | changes).items()}
            folder = self.given("a.lat", **names).folder
            self.assertNotIn(".", str(folder))
            return folder.parent
        self.assertEqual(cache / "quorbel", parent())
        self.assertEqual(cache / "quorbel", parent(XDG_RUNTIME_DIR=self.root / "none"))
        self.assertEqual(cache / "quorbel", parent(XDG_RUNTIME_DIR="user"))
        self.assertEqual(cache / "quorbel", parent(XDG_RUNTIME_DIR=blocked))
        self.assertEqual(temporary, parent(XDG_CACHE_HOME=dotted))
        self.assertEqual(temporary, parent(XDG_CACHE_HOME=""))
        self.assertEqual(temporary, parent(XDG_CACHE_HOME=blocked))
        self.assertEqual(pathlib.Path("/tmp"), parent(XDG_CACHE_HOME=dotted, TMPDIR=dotted))
        self.assertEqual(pathlib.Path("/tmp"), parent(XDG_CACHE_HOME=dotted, TMPDIR=""))
        self.assertEqual([], list(dotted.iterdir()))

    def test_home_does_not_matter(self):
        for home in ("", "none", "/none/.x", "two words\n", "/"):
            self.assertEqual(self.runtime / "quorbel", self.given(HOME=home).folder.parent)
        del self.environment["HOME"]
        self.assertEqual(self.runtime / "quorbel", self.given().folder.parent)
        del self.environment["XDG_RUNTIME_DIR"]
        self.assertEqual(pathlib.Path("/tmp"), self.given().folder.parent)

    def test_may_have_an_odd_name(self):
        odd = self.root / "it's \"my\"\n$HOME *"
        odd.mkdir()
        self.assertEqual(odd / "quorbel", self.given(XDG_RUNTIME_DIR=str(odd)).folder.parent)
        self.assertEqual([], list((odd / "quorbel").iterdir()))

    def test_each_viewer_has_its_own(self):
        processes = [self.start(name, act="while ! [ -e \"$NOTES/go\" ]; do sleep 0.02; done")
                     for name in ("a.lat", "b.lat")]
        self.wait_for(lambda: len(self.taken_notes()) == 2, "both viewers")
        first, second = self.taken_notes()
        self.assertNotEqual(first.folder, second.folder)
        self.assertTrue(first.folder.is_dir() and second.folder.is_dir())
        (self.notes / "go").touch()
        self.assertEqual([0, 0], [process.wait(PATIENCE_S) for process in processes])
        self.assertFalse(first.folder.exists() or second.folder.exists())


class EndTest(LauncherCase):
    def test_exit_status_is_the_viewers(self):
        for status in (0, 1, 2, 77, 128):
            self.assertEqual((status, "", ""), self.run_to_end(act=f"exit {status}"))

    def test_exit_status_beyond_the_signals_is_the_viewers(self):
        for status in (200, 254, 255):
            self.assertEqual((status, "", ""), self.run_to_end(act=f"exit {status}"))

    def run_in_shell(self, redirections, *arguments, act=""):
        """Status of a run with standard files as a shell makes them."""
        return subprocess.run(["sh", "-c", f'"$0" "$@" {redirections}', self.launcher, *arguments],
                              cwd=self.folder, env=self.environment | {"ACT": act},
                              stdin=subprocess.DEVNULL, timeout=PATIENCE_S).returncode

    def test_closed_standard_files_are_no_matter(self):
        act = ('ls -l /proc/$$/fd >"$NOTES/fd"; echo out; echo err >&2; exit 7')
        for closed in ("2>&-", ">&-", ">&- 2>&-", "<&- >&- 2>&-"):
            with self.subTest(closed=closed):
                self.assertEqual(7, self.run_in_shell(closed, "a.lat", "b.lat", act=act))
                self.assertEqual([os.fsencode(self.folder / "a.lat")], self.last_notes().arguments)
                files = (self.notes / "fd").read_text()
                for number in (0, 1, 2):
                    self.assertRegex(files, rf" {number} -> ")
                self.assertEqual([], list((self.runtime / "quorbel").iterdir()))

    def test_readers_that_are_gone_are_no_matter(self):
        for redirection in ("stdout", "stderr"):
            with self.subTest(redirection=redirection):
                reader, writer = os.pipe()
                os.close(reader)
                process = subprocess.run(
                    [self.launcher, "a.lat", "b.lat"], cwd=self.folder, timeout=PATIENCE_S,
                    env=self.environment | {"ACT": "echo out; echo err >&2; exit 7"},
                    restore_signals=True, stdin=subprocess.DEVNULL,
                    **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL,
                       redirection: writer})
                os.close(writer)
                self.assertEqual(7, process.returncode)
                self.assertEqual([os.fsencode(self.folder / "a.lat")], self.last_notes().arguments)
                self.assertEqual([], list((self.runtime / "quorbel").iterdir()))

    def test_answers_into_closed_standard_output_fail(self):
        for option in ("--help", "--version"):
            self.assertNotEqual(0, self.run_in_shell(">&- 2>/dev/null", option))
        self.assertEqual([], self.taken_notes())

    def test_what_the_viewer_says_comes_through(self):
        self.assertEqual((3, "an output\n", "an error\n"),
                         self.run_to_end(act="echo an output; echo an error >&2; exit 3"))

    def test_viewer_ended_by_a_signal(self):
        for number in (signal.SIGSEGV, signal.SIGKILL, signal.SIGABRT, signal.SIGTERM):
            name = number.name.removeprefix("SIG")
            status, output, errors = self.run_to_end(
                act=f"touch {' '.join(WORK_FILES)}; ulimit -c 0; kill -{name} $$")
            self.assertEqual((128 + number, "",
                              f"quorbel: the viewer was ended by the signal {name}\n"),
                             (status, output, errors))
            self.assertFalse(self.last_notes().folder.exists())

    def test_work_folder_goes_though_dot_writes_a_moment_longer_than_the_viewer(self):
        write = "while :; do : >graph.png; done"
        act = f"setsid timeout 0.6 sh -c '{write}' >/dev/null 2>&1 & sleep 0.1; kill -KILL $$"
        self.assertEqual(137, self.run_to_end(act=act)[0])
        self.assertFalse(self.last_notes().folder.exists())

    def test_dot_ends_with_a_viewer_that_crashes(self):
        act = 'sleep 600 >/dev/null 2>&1 & echo $! >"$NOTES/dot"; kill -KILL $$'
        self.assertEqual(137, self.run_to_end(act=act)[0])
        self.assertFalse(is_alive(int((self.notes / "dot").read_text())))
        self.assertFalse(self.last_notes().folder.exists())

    def test_signals_end_viewer_and_dot(self):
        for number in (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM):
            with self.subTest(signal=number):
                # as the viewer runs dot: it waits for it, and both write
                process = self.start(act=f"touch {' '.join(WORK_FILES)}; sh -c 'echo $$ >"
                                         '"$NOTES/dot.new"; mv "$NOTES/dot.new" "$NOTES/dot"; '
                                         "exec sleep 600'; exit 0")
                self.wait_for((self.notes / "dot").exists, "dot")
                process.send_signal(number)
                output, errors = process.communicate(timeout=PATIENCE_S)
                self.assertEqual((128 + number, b"", b""), (process.returncode, output, errors))
                notes = self.last_notes()
                self.assertFalse(is_alive(int((self.notes / "dot").read_text())))
                self.assertFalse(is_alive(notes.process_id))
                self.assertFalse(notes.folder.exists())
                (self.notes / "dot").unlink()

    def test_signal_ends_it_at_whatever_moment(self):
        for milliseconds in range(0, 50, 2):
            with self.subTest(milliseconds=milliseconds):
                process = self.start(act="exec sleep 600")
                time.sleep(milliseconds / 1000)
                process.terminate()
                output, errors = process.communicate(timeout=PATIENCE_S)
                # the shell itself ends by the signal before it has seen to it
                self.assertIn(process.returncode, (128 + signal.SIGTERM, -signal.SIGTERM))
                self.assertEqual((b"", b""), (output, errors))
        for notes in self.taken_notes():
            self.assertFalse(is_alive(notes.process_id))
        self.assertEqual([], list(self.runtime.glob("quorbel/*")))

    def test_signal_before_the_process_is_known_ends_it(self):
        self.launcher.write_text(re.sub(r'(?m)^( *setsid .* &)$', r"\1 kill -s TERM $$",
                                        self.launcher.read_text()))
        self.assertEqual(1, self.launcher.read_text().count("kill -s TERM $$\n"))
        self.assertEqual((128 + signal.SIGTERM, "", ""), self.run_to_end(act="exec sleep 600"))
        self.assertEqual([], list((self.runtime / "quorbel").iterdir()))
        for notes in self.taken_notes():
            self.assertFalse(is_alive(notes.process_id))

    def test_viewer_that_cannot_be_started(self):
        (self.root / "usr" / "lib" / "quorbel" / "quorbel").unlink()
        status, _, errors = self.run_to_end("a.lat")
        self.assertEqual(127, status)
        self.assertIn("lib/quorbel/quorbel", errors)
        self.assertEqual([], list((self.runtime / "quorbel").iterdir()))


PLAIN = "N=2 L=1\nI=0 t=0\nI=1 t=0.5\nJ=0 S=0 E=1 W=hello a=-1.5\n"


class DotTest(LauncherCase):
    """Which `dot` the viewer finds. The stand-in for the viewer says."""

    ACT = 'command -v dot; echo "$QUORBEL_DRAWINGS"; stat -c %a "$QUORBEL_DRAWINGS"'

    def setUp(self):
        super().setUp()
        self.own = self.root / "usr" / "lib" / "quorbel" / "dot" / "dot"
        self.own.parent.mkdir()
        shutil.copy(STAGING / "lib" / "quorbel" / "dot" / "dot", self.own)
        self.graphviz = shutil.which("dot")
        self.programs = self.root / "programs"
        self.programs.mkdir()
        self.first = f"{self.programs}:{os.environ['PATH']}"

    def script(self, path, text):
        path.write_text(f"#!/bin/sh\n{text}\n")
        path.chmod(0o755)

    def uses(self, dot, **environment):
        """The viewer finds that `dot`, and has a folder for drawings if it is our own."""
        status, output, errors = self.run_to_end(
            act=self.ACT + " 2>/dev/null || true", **environment)
        self.assertEqual((0, ""), (status, errors))
        drawings = f"{self.last_notes().folder}/drawings\n700\n" if dot == self.own else "\n"
        self.assertEqual(f"{dot}\n{drawings}", output)

    def test_our_own_stands_in_for_that_of_graphviz(self):
        self.uses(self.own)
        (self.programs / "dot").symlink_to(self.graphviz)
        self.uses(self.own, PATH=self.first)
        self.uses(self.own, QUORBEL_DRAWINGS="/somebody/elses")

    def test_any_other_is_used_as_it_is(self):
        other = self.programs / "dot"
        self.script(other, f'exec {self.graphviz} "$@"')
        self.uses(other, PATH=self.first)
        self.uses(other, PATH=self.first, QUORBEL_DRAWINGS="/somebody/elses")
        other.unlink()
        shutil.copy(self.graphviz, other)  # not where its library is
        self.uses(other, PATH=self.first)

    def test_without_any_there_is_none(self):
        for name in ("sh", "setsid", "dirname", "readlink", "mkdir", "mktemp", "rm", "rmdir", "ln",
                     "sleep", "mv", "ls", "stat", "cat"):
            (self.programs / name).symlink_to(shutil.which(name))
        status, output, errors = self.run_to_end(act="command -v dot; true",
                                                 PATH=str(self.programs))
        self.assertEqual((0, "", ""), (status, output, errors))

    def test_one_that_does_not_start_is_left_out(self):
        self.script(self.own, "echo bad >&2; exit 127")
        self.uses(self.graphviz)
        self.own.unlink()
        self.uses(self.graphviz)

    def test_drawings_go_with_the_work_folder(self):
        draw = 'echo x >"$QUORBEL_DRAWINGS/png-1"; '
        self.assertEqual((0, "", ""), self.run_to_end(act=draw))
        self.assertFalse(self.last_notes().folder.exists())
        for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
            process = self.start(act=draw + 'echo $$ >"$NOTES/drawn"; exec sleep 600')
            self.wait_for((self.notes / "drawn").exists, "the viewer")
            process.send_signal(number)
            process.communicate(timeout=PATIENCE_S)
            (self.notes / "drawn").unlink()
            self.assertFalse(self.last_notes().folder.exists())
        self.assertEqual(137, self.run_to_end(act=draw + "kill -KILL $$")[0])
        self.assertFalse(self.last_notes().folder.exists())


class ImportTest(LauncherCase):
    """The viewer imports; the launcher only names what with."""

    TELL = 'printf "%s" "${QUORBEL_IMPORTER-none} ${QUORBEL_LINKS-none}"'

    def setUp(self):
        super().setUp()
        self.importer = self.launcher.parent / "quorbel-lattice"
        self.importer.write_text("#!/bin/sh\ntouch \"$NOTES/importer\"\n")
        self.importer.chmod(0o755)
        (self.folder / "talk.slf").write_text(PLAIN)

    def told(self, *arguments, **environment):
        self.environment.update(environment)
        status, output, errors = self.run_to_end(*arguments, "talk.slf", act=self.TELL)
        self.assertEqual((0, ""), (status, errors))
        notes = self.last_notes()
        self.assertEqual([os.fsencode(self.folder / "talk.slf")], notes.arguments)
        self.assertEqual(["images"], notes.files)
        return output

    def test_importer_is_named_and_the_lattice_left_alone(self):
        importer, links = self.told("--import").split(" ")
        self.assertTrue(os.path.samefile(self.importer, importer))
        self.assertEqual("none", links)
        self.assertFalse((self.notes / "importer").exists())
        self.assertEqual(PLAIN, (self.folder / "talk.slf").read_text())

    def test_number_of_links_is_handed_on(self):
        for words in (("--links", "50"), ("--links=50",)):
            self.assertEqual("50", self.told("--import", *words).split(" ")[1])
        self.assertEqual("all", self.told("--links", "all", "--import").split(" ")[1])

    def test_number_of_links_is_one(self):
        for word in ("0", "-3", "5x", "", "none", "1000000000"):
            self.assertEqual((2, "", f"quorbel: --links takes a number or all, not: {word}\n"),
                             self.run_to_end("--import", "--links", word))
        self.assertEqual((2, "", "quorbel: option without its value: --links\n"),
                         self.run_to_end("--import", "--links"))
        self.assertEqual((2, "", "quorbel: --links goes with --import\n"),
                         self.run_to_end("--links", "5"))

    def test_without_the_option_nothing_is_imported(self):
        self.assertEqual("none none", self.told())
        self.assertEqual("none none", self.told(QUORBEL_IMPORTER="/bin/false", QUORBEL_LINKS="7"))

    def test_links_of_the_surroundings_are_not_handed_on(self):
        self.assertEqual("none", self.told("--import", QUORBEL_LINKS="7").split(" ")[1])

    def test_without_the_companion_nothing_can_be_imported(self):
        self.importer.unlink()
        status, output, errors = self.run_to_end("--import", "talk.slf", act=self.TELL)
        self.assertEqual((0, "none none"), (status, output))
        self.assertRegex(errors, r"\Aquorbel: nothing can be imported: there is no program "
                                 r"\S*/quorbel-lattice\n\Z")

    def test_files_of_importing_go_with_the_work_folder(self):
        self.assertEqual(0, self.run_to_end("--import", "talk.slf",
                                            act="touch imported.lat import.answer import.log")[0])
        self.assertEqual([], list((self.runtime / "quorbel").iterdir()))


if __name__ == "__main__":
    unittest.main()
