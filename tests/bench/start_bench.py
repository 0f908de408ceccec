"""How long it takes from a command to the drawing at rest, on the display that it runs on: the viewer
beside xdot on the same description, a second look at a view, and a decoder's lattice imported.

    start_bench.py LAUNCHER

The picture of the screen is looked at again and again: it is at rest when it has not changed for a
while in which no `dot` ran. The time of the last change counts.
"""

import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Gdk", "3.0")
from gi.repository import Gdk  # noqa: E402

QUIET_S = 1.0
PATIENCE_S = 120


def screen():
    root = Gdk.get_default_root_window()
    return Gdk.pixbuf_get_from_window(root, 0, 0, root.get_width(), root.get_height()).get_pixels()


def workers():
    """The processes that draw or import."""
    found = set()
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if (process / "comm").read_text() in ("dot\n", "quorbel-lattice\n"):
                found.add(process)
        except OSError:  # ended meanwhile
            continue
    return found


THEIRS = workers()  # somebody else's, who may have left them running


def is_working():
    return bool(workers() - THEIRS)


def seconds_to_rest(act):
    """The time from `act` to the last change on the screen that it brings about."""
    shown = screen()
    start = changed = quiet_since = time.monotonic()
    has_changed = False
    act()
    while time.monotonic() - quiet_since < QUIET_S or not has_changed:
        if time.monotonic() - start > PATIENCE_S:
            raise TimeoutError
        time.sleep(0.01)
        now = screen()
        if now != shown:
            shown, changed, has_changed = now, time.monotonic(), True
            quiet_since = changed
        elif is_working():  # its drawing comes after it
            quiet_since = time.monotonic()
    return changed - start


def write_lattice(path, nodes):
    """Words between neighbouring nodes, and some that span two."""
    numbers = random.Random(20081)
    links = [(node, node + 1) for node in range(nodes - 1)]
    links += [(node, node + 2) for node in range(0, nodes - 2, 2)]
    with open(path, "w", encoding="utf-8") as lattice:
        lattice.write(f"N={nodes} L={len(links)}\n")
        lattice.writelines(f"I={node} t={node / 10}\n" for node in range(nodes))
        for link, (start, end) in enumerate(links):
            cost = numbers.randint(10, 500)
            lattice.write(f"J={link} S={start} E={end} W=<w in='word{cost}'/> a=-{cost}\n")


def write_decoder_lattice(path):
    numbers = random.Random(20082)
    nodes = 3000
    links = [(node, min(nodes - 1, node + 1 + (numbers.randint(0, 7) if further else 0)))
             for node in range(nodes - 1) for further in range(4)]
    with open(path, "w", encoding="utf-8") as lattice:
        lattice.write(f"VERSION=1.0\nlmscale=10 N={nodes} L={len(links)}\n")
        lattice.writelines(f"I={node} t={node / 20}\n" for node in range(nodes))
        lattice.writelines(
            f"J={link} S={start} E={end} W=W{numbers.randint(1, 2000)} "
            f"a=-{numbers.randint(50, 500)} l=-{numbers.random() * 5}\n"
            for link, (start, end) in enumerate(links))


class Program:
    def __init__(self, *command, **environment):
        self.seconds = seconds_to_rest(lambda: self.start(command, environment))

    def start(self, command, environment):
        self.process = subprocess.Popen(command, env=os.environ | environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def end(self):
        self.process.terminate()
        self.process.wait()
        time.sleep(0.5)  # until it is off the screen


def toggle_best_path():
    subprocess.run(["xdotool", "key", "F10", "Right", "Down", "Down", "Down", "Down", "Return"],
                   check=True)


def compare(launcher, folder, nodes):
    lattice = folder / f"lattice{nodes}.lat"
    write_lattice(lattice, nodes)
    viewer = Program(launcher, str(lattice), XDG_RUNTIME_DIR=str(folder))
    (description,) = folder.glob("quorbel/*/quorbel_graph.dot")
    copy = folder / f"lattice{nodes}.dot"
    copy.write_bytes(description.read_bytes())
    seconds_to_rest(toggle_best_path)
    second = seconds_to_rest(toggle_best_path)
    viewer.end()
    xdot = Program("xdot", str(copy))
    xdot.end()
    print(f"{nodes:4} nodes: {viewer.seconds:5.2f} s, xdot {xdot.seconds:5.2f} s: "
          f"{viewer.seconds / xdot.seconds:4.2f} (at most 1.0); "
          f"second look {second:4.2f} s (at most 0.3)", flush=True)


def main():
    (launcher,) = sys.argv[1:]
    with tempfile.TemporaryDirectory(prefix="quorbel-bench-", dir="/tmp") as name:
        folder = pathlib.Path(name)
        for nodes in (20, 100, 300):
            compare(launcher, folder, nodes)
        decoder = folder / "decoder.slf"
        write_decoder_lattice(decoder)
        viewer = Program(launcher, "--import", str(decoder), XDG_RUNTIME_DIR=str(folder))
        viewer.end()
        print(f"a decoder's 12,000 links imported: {viewer.seconds:4.2f} s (under 4)")


if __name__ == "__main__":
    main()
