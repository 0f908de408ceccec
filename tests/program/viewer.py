"""Drives the finished viewer from outside, as a user does: with pointer, keys, menus and dialogs.

A test derives from ViewerTest, which gives it a folder of its own, a home of its own, and a `dot`
that notes its calls. Needs a display, a session bus and these variables in the environment:
QUORBEL_PROGRAM (the viewer) and QUORBEL_IMAGES (the folder with its pictures).
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile
import time
import unittest

from gi.repository import GLib

from accessible import application
from screen import Box, Drawing

PATIENCE_S = 120
DOT_RUNS = ["dot -Tpng -o graph.png quorbel_graph.dot", "dot -Tdot -o graph.dot quorbel_graph.dot"]
# Of the toolkit, on standard error. That it has no display is all right to say.
COMPLAINT = re.compile(r".*-(?:WARNING|CRITICAL|ERROR) \*\*(?!.*cannot open display).*")
STRICT = "--g-fatal-warnings"  # the toolkit's option to end the program with its first complaint

NOT_YET = (GLib.Error, LookupError, OSError)  # what a look at something unfinished may raise

_SETTINGS = {
    # On a busy machine the two presses of a double click may lie far apart.
    "gtkrc": "gtk-double-click-time = 3000\n",
    ".config/gtk-2.0/gtkfilechooser.ini":
        "[Filechooser Settings]\nLocationMode=path-bar\nStartupMode=cwd\n",
    ".local/share/recently-used.xbel": '<?xml version="1.0"?><xbel version="1.0"></xbel>\n',
}


class InVain(AssertionError):
    """What was waited for did not come."""


def wait_for(what, look):
    """Looks until it finds something true, and returns that."""
    deadline = time.monotonic() + PATIENCE_S
    while True:
        reason = ""
        try:
            if found := look():
                return found
        except NOT_YET as error:
            reason = f" ({error})"
        if time.monotonic() > deadline:
            raise InVain(f"waited in vain for {what}{reason}; screen: {_picture_of_screen()}")
        time.sleep(0.02)


def _picture_of_screen():
    handle, path = tempfile.mkstemp(prefix="quorbel-screen-", suffix=".png")
    os.close(handle)
    subprocess.run(["import", "-silent", "-window", "root", path], stderr=subprocess.DEVNULL)
    return path


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True, stdout=subprocess.DEVNULL)


def _process_with_focus():
    """The process id of the window that gets the keys, as text; empty without one."""
    return subprocess.run(["xdotool", "getactivewindow", "getwindowpid"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True).stdout.strip()


class Viewer:
    """A running viewer. It works in `folder`; what it says is kept in the folder `outside`."""

    program = "QUORBEL_PROGRAM"  # the variable that names it

    def __init__(self, folder, outside, command, environment):
        self.folder = folder
        self._said = pathlib.Path(tempfile.mkdtemp(prefix="said-", dir=outside))
        with open(self._said / "output", "wb") as output, open(self._said / "errors", "wb") as errors:
            self.process = subprocess.Popen(
                [*_without_privileges(), *command], cwd=folder, env=environment,
                stdin=subprocess.DEVNULL, stdout=output, stderr=errors)

    # Its life

    @property
    def process_id(self):
        return self.process.pid

    @property
    def is_running(self):
        return self.process.poll() is None

    def end_status(self):
        """Waits for the program's end and returns its exit status."""
        return self.process.wait(PATIENCE_S)

    def kill(self):
        if self.is_running:
            self.process.kill()
            self.process.wait()

    @property
    def output(self):
        return (self._said / "output").read_text("utf-8", "replace")

    @property
    def errors(self):
        return (self._said / "errors").read_text("utf-8", "replace")

    # Its windows

    def wait_for(self, what, look):
        """As the function of this name, but gives up at once when the program has ended."""
        def look_while_running():
            was_running = self.is_running
            found = look()
            if not found and not was_running:
                raise AssertionError(f"no {what}: the viewer ended with status "
                                     f"{self.process.returncode}\n{self.output}{self.errors}")
            return found
        return wait_for(what, look_while_running)

    def windows(self, role):
        shown = application(self.process_id).children
        return [window for window in shown if window.role == role and window.is_showing]

    def main_window(self):
        return self.wait_for("the main window", lambda: self.windows("frame"))[0]

    def title(self):
        return self.main_window().name

    def status(self):
        return self.main_window().find("status bar").name

    def information(self):
        return self.main_window().find("text").text

    def attributes(self):
        """The rows of the attribute tree."""
        return self._attribute_tree().rows

    def attribute_cells(self):
        return [cell for cell in self._attribute_tree().descendants() if cell.role == "table cell"]

    def _attribute_tree(self):
        scrolled_tree = self._panes().children[0]
        return scrolled_tree.children[0]

    def sound_strip(self):
        right = self._panes().find("split pane")
        return Box(*right.children[0].find("unknown").extents)

    def layout(self, zoom=None):
        """Where the drawing should be on the canvas."""
        view = self._panes().find("split pane").find("split pane").children[1]
        return Drawing(self.folder, view.find("unknown").extents, view.extents, zoom)

    def drawing(self, zoom=None):
        """The same, once it is there."""
        def look():
            drawing = self.layout(zoom)
            return drawing if drawing.is_shown() else None
        return self.wait_for("the drawing", look)

    def _panes(self):
        return self.main_window().find("split pane")

    def is_idle(self):
        """Whether no rendering is in progress; one shows its stages in the status bar."""
        return self.status() not in ("Creating graph...", "Loading graph elements...",
                                     "Loading graph image...")

    # What a user does

    def choose(self, *labels):
        """Activates the entry of the menu bar that has these labels, the menu's own first."""
        entry = self.main_window().find("menu bar")
        for label in labels:
            entry = entry.child(label)
        entry.act()

    def press(self, label):
        self.main_window().find("tool bar").find("push button", label).act()

    def siblings(self):
        """Opens the menu beside the open button and returns its entries."""
        self.main_window().find("tool bar").find("toggle button").act()
        (menu,) = self.wait_for("the sibling menu", lambda: self.windows("window"))
        return menu.children[0].children

    def open_sibling(self, name):
        (entry,) = [entry for entry in self.siblings() if entry.name == name]
        entry.act()

    def dialog(self, title):
        """The dialog of that title, once it is shown. Error boxes have the title "Error"."""
        role = "alert" if title == "Error" else "dialog"
        def look():
            return [window for window in self.windows(role) if window.name == title]
        return self.wait_for(f"the dialog {title}", look)[0]

    def error(self):
        """The text of the error box, which this answers with OK."""
        box = self.dialog("Error")
        heading, text = [part.name for part in box.descendants() if part.role == "label"]
        if heading != "Error :":
            raise AssertionError(f"heading of the error box: {heading}")
        box.find("push button", "OK").act()
        self.wait_for("the error box's end", lambda: not self.windows("alert"))
        return text

    def focus(self):
        """Waits until keys reach a window of the viewer."""
        self.wait_for("the keyboard", lambda: _process_with_focus() == str(self.process_id))

    def key(self, *names):
        self.focus()
        xdotool("key", *names)

    def close_by_window_manager(self):
        """Has the window manager ask the viewer to close, as a task bar does; comes back when it
        has asked. Needs no focus, which a key would."""
        (window,) = self.wait_for("the window manager's window", self._managed_windows)
        subprocess.run(["wmctrl", "-i", "-c", window], check=True)
        wanted = _desktops() + 1  # handled after the request, and the answer can be seen
        xdotool("set_num_desktops", wanted)
        wait_for("the window manager", lambda: _desktops() == wanted)

    def _managed_windows(self):
        listed = subprocess.run(["wmctrl", "-l", "-p"], check=True, capture_output=True).stdout
        rows = [row.split() for row in os.fsdecode(listed).splitlines()]
        return [row[0] for row in rows if row[2] == str(self.process_id)]


def _desktops():
    return int(subprocess.run(["xdotool", "get_num_desktops"], check=True,
                              capture_output=True).stdout)


def _without_privileges():
    """What to put before a command so that permissions of files count for root too."""
    if os.geteuid() != 0:
        return []
    return [shutil.which("setpriv"), "--bounding-set", "-dac_override,-dac_read_search"]


def move_to(place):
    """Moves the pointer in two steps, as a hand does: the one that brings it into a widget counts
    for the toolkit as entering, not as moving."""
    x, y = place
    xdotool("mousemove", x - 3, y, "mousemove", x, y)


def double_click(place):
    # Without time between them the window manager, which sees each press first, loses some.
    xdotool("mousemove", *place, "click", "--repeat", 2, "--delay", 250, 1)


class ViewerTest(unittest.TestCase):
    """Gives each test a folder, and ends the viewers that it started."""

    maxDiff = None
    folder_name = "work"
    through = ()  # the start of a command that ends with the viewer's
    viewer_type = Viewer

    def setUp(self):
        outside = tempfile.TemporaryDirectory()
        self.addCleanup(outside.cleanup)
        self.outside = pathlib.Path(outside.name)
        self.folder = self.outside / self.folder_name
        self.folder.mkdir()
        shutil.copytree(os.environ["QUORBEL_IMAGES"], self.folder / "images")
        home = self.outside / "home"
        for name, text in _SETTINGS.items():
            (home / name).parent.mkdir(parents=True, exist_ok=True)
            (home / name).write_text(text)
        self.programs = self.outside / "programs"
        self.programs.mkdir()
        self._dot_log = self.outside / "dot-log"
        self._hold = self.outside / "hold"
        self._held = self.outside / "held"
        self.replace_dot('exec "$REAL_DOT" "$@"')
        self.environment = {
            name: value for name, value in os.environ.items()
            if not name.startswith(("LC_", "XDG_", "GTK_", "ALSOFT_"))
        } | {
            "HOME": str(home), "GTK2_RC_FILES": str(home / "gtkrc"), "LANG": "C.UTF-8",
            "GTK_MODULES": "gail:atk-bridge", "ALSOFT_DRIVERS": "null",
            "PATH": f"{self.programs}:{os.environ['PATH']}", "REAL_DOT": shutil.which("dot"),
        }

    def replace_dot(self, script):
        """Puts a `dot` first on the search path that notes its call, waits while it is held up, and
        goes on with the script."""
        log, hold, held = (shlex.quote(str(path)) for path in
                           (self._dot_log, self._hold, self._held))
        program = self.programs / "dot"
        program.write_text(f"#!/bin/sh\n"
                           f'echo "dot $*" >> {log}\n'
                           f"while [ -e {hold} ]; do : > {held}; sleep 0.02; done\n"
                           f"{script}\n")
        program.chmod(0o755)

    def hold_dot(self):
        """From here on `dot` stays at its work, until release_dot or the test's end."""
        self._held.unlink(missing_ok=True)
        self._hold.touch()

    def wait_for_held_dot(self):
        wait_for("a call of dot", self._held.exists)

    def release_dot(self):
        self._hold.unlink()

    def running_dots(self):
        """The processes of the `dot` that the test has put there."""
        program = str(self.programs / "dot").encode()
        running = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                words = (process / "cmdline").read_bytes().split(b"\0")
            except OSError:  # ended meanwhile
                continue
            if program in words:
                running.append(words)
        return running

    def dot_runs(self):
        return self._dot_log.read_text().splitlines() if self._dot_log.exists() else []

    def write(self, name, text):
        (self.folder / os.fsdecode(name)).write_text(text, "utf-8")

    def start(self, *arguments, **environment):
        """Starts the viewer in the test's folder, with these changes to its environment."""
        command = [*self.through, os.environ[self.viewer_type.program], *arguments]
        viewer = self.viewer_type(self.folder, self.outside, command,
                                  self.environment | environment)
        self.addCleanup(viewer.kill)
        self.addCleanup(lambda: self.assertEqual([], COMPLAINT.findall(viewer.errors)))
        return viewer

    def becomes(self, expected, look):
        """Waits until a look finds what is expected; fails with what it found last."""
        last = []
        def look_again():
            last[:] = [look()]
            return last[0] == expected
        try:
            wait_for(repr(expected), look_again)
        except InVain:
            if last:
                self.assertEqual(expected, last[0])
            raise

    def description(self):
        return (self.folder / "quorbel_graph.dot").read_text("utf-8")

    def opens(self, viewer, title, description):
        """The viewer ends up with a lattice open and drawn, after one rendering."""
        self.becomes(f"Quorbel - {title}", viewer.title)
        self.assertEqual(f"graph : {title}", viewer.status())
        self.assertEqual(description, self.description())

    def draws(self, viewer, action, description):
        """The action brings about exactly one rendering, from that description."""
        before = self.dot_runs()
        action()
        self.becomes(before + DOT_RUNS, self.dot_runs)
        viewer.wait_for("the end of the rendering", viewer.is_idle)
        self.assertEqual(description, self.description())

    def ends(self, viewer):
        """The viewer ends well."""
        self.assertEqual(0, viewer.end_status(), viewer.errors)
