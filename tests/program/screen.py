"""What the display shows, and where on it the drawing of a lattice lies."""

import re
import struct
import subprocess
from typing import NamedTuple

WHITE = (255, 255, 255)
LIGHT_GREY = (211, 211, 211)  # inside of the start and end node


class Screenshot:
    """The display's pixels at one moment."""

    def __init__(self):
        picture = subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "ppm:-"],
                                 check=True, capture_output=True).stdout
        header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", picture)
        self._width = int(header[1])
        self._bytes = picture[header.end():]

    def pixel(self, x, y):
        at = 3 * (y * self._width + x)
        return tuple(self._bytes[at:at + 3])

    def shows(self, colour, x, y):
        """Whether the pixel has that colour, but for rounding."""
        return all(abs(a - b) <= 2 for a, b in zip(self.pixel(x, y), colour))


class Box(NamedTuple):
    """A rectangle on the screen, in pixels."""
    left: int
    top: int
    width: int
    height: int

    @property
    def centre(self):
        return self.left + self.width // 2, self.top + self.height // 2

    def has(self, x, y, margin=0):
        return (self.left - margin < x < self.left + self.width + margin
                and self.top - margin < y < self.top + self.height + margin)

    def pixels(self, margin=0):
        for y in range(self.top + margin, self.top + self.height - margin):
            for x in range(self.left + margin, self.left + self.width - margin):
                yield x, y


class Drawing:
    """The drawing of a lattice on the viewer's canvas, read from the files in the viewer's folder.

    `canvas` and `view` are the extents on the screen of the canvas and of the scrolled window
    around it; the picture fits the view's width unless a zoom is given. The view is not scrolled.
    """

    def __init__(self, folder, canvas, view, zoom=None):
        layout = (folder / "graph.dot").read_text("utf-8")
        picture = (folder / "graph.png").read_bytes()
        self.width, self.height = struct.unpack(">II", picture[16:24])
        room_for_scroll_bar = 30
        fitting = (view[2] - room_for_scroll_bar) / self.width
        self.zoom = min(max(fitting if zoom is None else zoom, 0.2), 1.0)
        self._canvas = canvas
        box = re.search(r'bb="0,0,([\d.]+),([\d.]+)"', layout)
        self._ratio_x = self.width / int(float(box[1]))
        self._ratio_y = self.height / int(float(box[2]))
        self._nodes = {}
        self._labels = {}
        for head, body in re.findall(r"^\t(\S[^\[]*)\[([^]]*)\];", layout, re.MULTILINE):
            values = {name: quoted or plain for name, quoted, plain
                      in re.findall(r'(\w+)=(?:"([^"]*)"|([^,\s\]]+))', body)}
            if "->" in head:
                self._labels[int(values["comment"].removeprefix("ID = "))] = values
            elif head.strip().isdigit():
                self._nodes[int(head)] = values

    def _on_screen(self, image_x, image_y, width, height):
        canvas_x, canvas_y, canvas_width, canvas_height = self._canvas
        left = canvas_width // 2 - int(self.width * self.zoom) // 2
        top = canvas_height // 2 - int(self.height * self.zoom) // 2
        return Box(canvas_x + int(image_x * self.zoom + left),
                   canvas_y + int(image_y * self.zoom + top),
                   int(width * self.zoom), int(height * self.zoom))

    def _on_image(self, position):
        x, y = (int(float(number)) for number in position.split(","))
        return x * self._ratio_x, self.height - y * self._ratio_y

    def label(self, link):
        """The box around the label of the link of that id."""
        values = self._labels[link]
        x, y = self._on_image(values["lp"])
        width = 12 * len(values["label"])
        return self._on_screen(x - width / 2, y - 20 / 3, width, 20)

    def node(self, index):
        values = self._nodes[index]
        x, y = self._on_image(values["pos"])
        width, height = (int(80 * float(values[side])) for side in ("width", "height"))
        return self._on_screen(x - width * self._ratio_x / 2, y - height * self._ratio_y / 2,
                               width * self._ratio_y, height * self._ratio_y)

    @property
    def corner(self):
        """A point of the canvas outside the picture."""
        return self._canvas[0] + 8, self._canvas[1] + 8

    def beside_number(self, index):
        """A point inside a node, left of its number."""
        box = self.node(index)
        return box.left + box.width // 4, box.centre[1]

    def is_shown(self):
        """Whether the screen shows the drawing where this says, with nothing over its ends."""
        screenshot = Screenshot()
        ends = (min(self._nodes), max(self._nodes))
        return all(screenshot.shows(LIGHT_GREY, *self.beside_number(end)) for end in ends)
