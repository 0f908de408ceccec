"""What becomes of a file of the user's that a command writes to: all of the new text or all of the old."""

import os
import resource
import shutil
import signal
import stat
import subprocess
import time
import unittest

from tool import IMPORTED, PROGRAM, ToolTest, apart

OLD = "old\n"
COMMANDS = (("import", "big.slf", "out.lat"), ("prune", "big.slf", "out.lat", "--links", "5000"),
            ("draw", "big.slf", "out.svg"))
NOBODY = 65534


def big(links):
    """A lattice of which no output fits into a few kilobytes."""
    nodes = "".join(f"I={i} t={i}\n" for i in range(links + 1))
    return f"N={links + 1} L={links}\n{nodes}" + "".join(
        f"J={i} S={i} E={i + 1} W=word{i} a=-1\n" for i in range(links))


class OutputsTest(ToolTest):
    def tearDown(self):
        self.assertEqual([], list(self.temporary.iterdir()), "work files are left")

    def run_limited(self, arguments, limit, environment=None, program=PROGRAM):
        """Runs the program with a limit of the system that `limit` sets before."""
        return apart(subprocess.run([program, *arguments], cwd=self.folder, text=True, timeout=100,
                                    env=environment or self.environment, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                    preexec_fn=limit))

    def keeps(self, names, before, what):
        self.assertEqual(before, self.files(), what)
        for name in names:
            self.assertEqual(OLD, self.read(name), (what, name))

    def test_file_size_limit_leaves_what_was_there(self):
        self.write("big.slf", big(300))
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))
        for name in ("out.lat", "out.svg"):
            self.write(name, OLD)
            os.link(self.folder / name, self.folder / ("other-" + name))
            (self.folder / ("link-" + name)).symlink_to(name)
        before = self.files()
        for command, source, out, *options in COMMANDS[:2]:
            for name in (out, "link-" + out, "new.lat"):
                result = self.run_limited([command, source, name, *options], limit)
                self.assertEqual((1, "", f"quorbel-lattice: {name}: File too large\n"),
                                 (result.returncode, result.stdout, result.stderr))
                self.keeps((out, "other-" + out), before, (command, name))
        result = self.run_limited(["draw", "big.slf", "out.svg"], limit)
        self.assertEqual((1, ""), (result.returncode, result.stdout))
        self.assertRegex(result.stderr, r"\Aquorbel-lattice: [^\n]*File too large\n\Z")
        self.keeps(("out.svg", "other-out.svg"), before, "draw")

    def test_file_size_limit_is_said_of_standard_output_too(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (8, 8))
        with open(self.folder / "best.txt", "wb") as output:
            result = apart(subprocess.run([PROGRAM, "best", "talk.slf"], cwd=self.folder, text=True,
                                          stdout=output, stderr=subprocess.PIPE, preexec_fn=limit))
        self.assertEqual((1, "quorbel-lattice: standard output: File too large\n"),
                         (result.returncode, result.stderr))

    def test_other_names_of_a_file_keep_the_old_text(self):
        self.write("out.lat", OLD)
        os.link(self.folder / "out.lat", self.folder / "other.lat")
        (self.folder / "sub").mkdir()
        (self.folder / "sub" / "link.lat").symlink_to("../middle.lat")
        (self.folder / "middle.lat").symlink_to(self.folder / "out.lat")
        self.succeeds("import", "talk.slf", "sub/link.lat")
        self.assertEqual((IMPORTED, OLD), (self.read("out.lat"), self.read("other.lat")))
        self.assertTrue((self.folder / "sub" / "link.lat").is_symlink())
        self.assertTrue((self.folder / "middle.lat").is_symlink())
        self.assertEqual(["link.lat"], os.listdir(self.folder / "sub"))

    def test_link_to_nothing_gets_its_file(self):
        (self.folder / "sub").mkdir()
        (self.folder / "link.lat").symlink_to("sub/new.lat")
        self.succeeds("import", "talk.slf", "link.lat")
        self.assertEqual(IMPORTED, self.read("sub/new.lat"))
        self.assertTrue((self.folder / "link.lat").is_symlink())
        (self.folder / "round.lat").symlink_to("round.lat")
        self.assertEqual("round.lat: Too many levels of symbolic links",
                         self.fails("import", "talk.slf", "round.lat"))

    def test_old_mode_stays_and_a_new_one_follows_the_umask(self):
        for mode in (0o600, 0o640, 0o666, 0o755):
            self.write("out.lat", OLD).chmod(mode)
            self.succeeds("import", "talk.slf", "out.lat")
            self.assertEqual(mode, stat.S_IMODE((self.folder / "out.lat").stat().st_mode))
        for mask in (0o022, 0o077, 0o777):
            for command, out in (("import", f"new{mask}.lat"), ("draw", f"new{mask}.svg")):
                result = self.run_limited([command, "talk.slf", out], lambda: os.umask(mask))
                self.assertEqual(0, result.returncode, result.stderr)
                self.assertEqual(0o666 & ~mask, stat.S_IMODE((self.folder / out).stat().st_mode))

    def test_name_may_be_as_long_as_names_can_be(self):
        name = "n" * 251 + ".lat"
        for _ in range(2):
            self.succeeds("import", "talk.slf", name)
        self.assertEqual(IMPORTED, self.read(name))

    def run_as_nobody(self, *arguments):
        """As a user whom modes bind, which they do not bind root; the project may lie in a folder
        that is closed to this one."""
        program = shutil.copy(PROGRAM, self.folder)
        os.chmod(program, 0o755)
        self.folder.chmod(0o755)
        self.temporary.chmod(0o777)
        def leave_root():
            if os.geteuid() == 0:
                os.setgroups([])
                os.setgid(NOBODY)
                os.setuid(NOBODY)
        return self.run_limited(arguments, leave_root, program=program)

    def test_file_in_a_folder_that_takes_no_other_is_not_put_at_risk(self):
        closed = self.folder / "closed"
        closed.mkdir()
        for name, mode in (("out.lat", 0o666), ("locked.lat", 0o444)):
            (closed / name).write_text(OLD)
            (closed / name).chmod(mode)
        closed.chmod(0o555)
        self.addCleanup(closed.chmod, 0o755)
        for name, error in (
                ("out.lat", "Permission denied; its folder takes no new file, and the old one is "
                            "not put at risk"),
                ("locked.lat", "Permission denied"), ("new.lat", "Permission denied")):
            result = self.run_as_nobody("import", "talk.slf", f"closed/{name}")
            self.assertEqual((1, f"quorbel-lattice: closed/{name}: {error}\n"),
                             (result.returncode, result.stderr))
        closed.chmod(0o777)
        result = self.run_as_nobody("import", "talk.slf", "closed/locked.lat")
        self.assertEqual((1, "quorbel-lattice: closed/locked.lat: Permission denied\n"),
                         (result.returncode, result.stderr))
        self.assertEqual(["locked.lat", "out.lat"], sorted(os.listdir(closed)))
        self.assertEqual([OLD, OLD], [(closed / name).read_text() for name in os.listdir(closed)])

    def test_file_of_another_in_a_folder_for_all_is_not_replaced(self):
        shared = self.folder / "shared"
        shared.mkdir()
        (shared / "out.lat").write_text(OLD)
        (shared / "out.lat").chmod(0o666)
        shared.chmod(0o1777)
        if os.geteuid() == 0:  # nobody else has files of several users
            result = self.run_as_nobody("import", "talk.slf", "shared/out.lat")
            self.assertEqual((1, "quorbel-lattice: shared/out.lat: Operation not permitted; its "
                                 "folder lets only its owner replace it\n"),
                             (result.returncode, result.stderr))
            self.assertEqual(OLD, (shared / "out.lat").read_text())
        self.succeeds("import", "talk.slf", "shared/out.lat")
        self.assertEqual(IMPORTED, (shared / "out.lat").read_text())
        self.assertEqual(["out.lat"], os.listdir(shared))

    def test_what_is_open_already_is_written_to_as_it_is(self):
        self.write("out.lat", OLD)
        node = (self.folder / "out.lat").stat().st_ino
        for name in ("/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"):
            with open(self.folder / "out.lat", "r+b") as output:
                self.assertEqual(0, self.run_tool("import", "talk.slf", name,
                                                  stdout=output).returncode)
            self.assertEqual(IMPORTED, self.read("out.lat"))
            self.assertEqual(node, (self.folder / "out.lat").stat().st_ino)
            self.assertEqual(IMPORTED, self.succeeds("import", "talk.slf", name))

    def test_signal_at_whatever_moment_leaves_all_or_nothing(self):
        self.write("big.slf", big(5000))
        wholes = {}
        for command, source, out, *options in COMMANDS[:2]:
            self.assertEqual(0, self.run_tool(command, source, out, *options).returncode)
            wholes[command] = self.read(out)
        began = time.monotonic()
        self.run_tool("import", "big.slf", "out.lat")
        taken = time.monotonic() - began
        before = self.files()
        numbers = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGQUIT, signal.SIGUSR1,
                   signal.SIGALRM, signal.SIGPIPE, signal.SIGRTMIN)
        for i in range(48):
            command, source, out, *options = COMMANDS[i % 2]
            number = numbers[i % len(numbers)]
            self.write(out, OLD)
            process = subprocess.Popen([PROGRAM, command, source, out, *options], cwd=self.folder,
                                       stderr=subprocess.PIPE)
            time.sleep(taken * (i % 12) / 10)  # a moment to try, not one to wait for
            process.send_signal(number)
            errors = process.communicate(timeout=100)[1]
            self.assertIn(process.returncode, (0, -number), errors)
            allowed = (wholes[command],) if process.returncode == 0 else (OLD, wholes[command])
            self.assertIn(self.read(out), allowed, (command, number, process.returncode))
            self.assertEqual(before, self.files())

    def test_signal_while_the_new_file_is_written_leaves_nothing_of_it(self):
        self.write("big.slf", big(5000))
        self.run_tool("import", "big.slf", "out.lat")
        whole = self.read("out.lat")
        self.write("out.lat", OLD)
        before = self.files()
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGXCPU, signal.SIGRTMAX):
            process = subprocess.Popen([PROGRAM, "import", "big.slf", "out.lat"], cwd=self.folder)
            deadline = time.monotonic() + 20
            while process.poll() is None and self.files() == before:
                self.assertLess(time.monotonic(), deadline)
            process.send_signal(number)
            process.wait(100)
            self.assertEqual(before, self.files(), number)
            if self.read("out.lat") != OLD:  # it was too late
                self.assertEqual(whole, self.read("out.lat"))
                self.write("out.lat", OLD)

    def test_signal_that_it_was_started_to_ignore_changes_nothing(self):
        self.write("big.slf", big(5000))
        before = [*self.files(), "out.lat"]
        process = subprocess.Popen(
            [PROGRAM, "import", "big.slf", "out.lat"], cwd=self.folder,
            preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        while process.poll() is None:
            process.send_signal(signal.SIGHUP)
        self.assertEqual(0, process.returncode)
        self.assertEqual(sorted(before), self.files())

    def test_closed_standard_error_is_no_place_for_the_output(self):
        self.write("loud.slf", "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=7 S=0 E=1 W=a a=3\n")
        for closed in ("2>&-", ">&- 2>&-", "<&- >&- 2>&-"):
            subprocess.run(["sh", "-c", f'"$0" import loud.slf loud.lat {closed}', PROGRAM],
                           check=True, cwd=self.folder, env=self.environment, timeout=100)
            self.assertEqual("VERSION=1.1\nN=2 L=1\nI=0 t=0\nI=1 t=1\nJ=7 S=0 E=1 W=<w in='a'/> "
                             "TOTAL=0 unshifted=3 a=3 post=0\n", self.read("loud.lat"), closed)

    def test_answers_that_cannot_be_written_fail(self):
        for arguments in (("--help",), ("--version",), ("draw", "--help"), ("info", "talk.slf"),
                          ("best", "talk.slf")):
            for target, reason in ((">/dev/full", "No space left on device"),
                                   (">&-", "Bad file descriptor")):
                result = apart(subprocess.run(
                    ["sh", "-c", f'"$0" "$@" {target}', PROGRAM, *arguments],
                    cwd=self.folder, text=True, capture_output=True))
                self.assertEqual((1, "", f"quorbel-lattice: standard output: {reason}\n"),
                                 (result.returncode, result.stdout, result.stderr), arguments)


class ReadOnceTest(ToolTest):
    """import --unless-dialect, of what can be read only once."""

    def read_from_pipe(self, text, source):
        pipe = self.folder / "pipe"
        if not pipe.exists():
            os.mkfifo(pipe)
        process = subprocess.Popen([PROGRAM, "import", "--unless-dialect", source, "out.lat"],
                                   cwd=self.folder, stdin=subprocess.PIPE, stderr=subprocess.PIPE,
                                   text=True)
        self.addCleanup(process.kill)
        if source == "pipe":
            pipe.write_text(text)
        said = process.communicate(text if source != "pipe" else "", timeout=20)
        result = apart(subprocess.CompletedProcess(process.args, process.returncode, *said))
        self.assertEqual((0, ""), (result.returncode, result.stderr))

    def test_dialect_in_a_pipe_is_left_alone(self):
        for source in ("pipe", "/dev/stdin"):
            self.read_from_pipe(IMPORTED, source)
            self.assertFalse((self.folder / "out.lat").exists(), source)

    def test_another_form_in_a_pipe_is_imported(self):
        for source in ("pipe", "/dev/stdin"):
            self.read_from_pipe(self.read("talk.slf"), source)
            self.assertEqual(IMPORTED, self.read("out.lat"), source)
            (self.folder / "out.lat").unlink()


if __name__ == "__main__":
    unittest.main()
