"""One user's whole story, from opening a lattice to leaving the viewer.

The lattice has two ways to its end besides a short cut, and two links between nodes 3 and 4. By
the acoustic score "a" the way over node 2 is best, by the language score "l" that over node 1.
"""

import functools
import unittest

from screen import WHITE, Screenshot
from viewer import STRICT, ViewerTest, double_click, move_to, xdotool

WALK = """\
VERSION=1.0
UTTERANCE=walk
N=5 L=7
I=0 t=0.00
I=1 t=0.40
I=2 t=0.50
I=3 t=0.80
I=4 t=1.00
J=0 S=0 E=1 W=<w in='we' out='nous'/> a=-2 l=-1
J=1 S=0 E=2 W=<w in='he' out='il'><root base='he'/></w> a=-3 l=-0.5
J=2 S=1 E=3 W=<w in='walk' out='marchons' pos='verb'/> a=-4 l=-2
J=3 S=2 E=3 W=<w in='walks' out='marche'/> a=-2.5 l=-3
J=4 S=1 E=4 W=<w in='run' out='courons'/> a=-7 l=-6
J=5 S=3 E=4 W=<w in='home' out='rentrer'/> a=-1.25 l=-0.75
J=6 S=3 E=4 W=<w in='alone' out='seul'/> a=-1 l=-2
"""
OTHER = """\
N=2
J=0 S=0 E=1 W=<w in='ok' out='bien'/> a=-1
"""
ENDS = """\
digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
4 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
"""
JUST_OPENED = ENDS + """\
0 -> 1 [ color=black,label = "we / nous", comment="ID = 0"];
0 -> 2 [ color=black,label = "he / il", comment="ID = 1"];
1 -> 3 [ color=black,label = "walk / marchons", comment="ID = 2"];
1 -> 4 [ color=black,label = "run / courons", comment="ID = 4"];
2 -> 3 [ color=black,label = "walks / marche", comment="ID = 3"];
3 -> 4 [ color=black,label = "home / rentrer", comment="ID = 5"];
3 -> 4 [ color=black,label = "alone / seul", comment="ID = 6"];
}
"""
THROUGH_WALK = ENDS + """\
3 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
0 -> 1 [ color=cyan, fontcolor=cyan,label = "we / nous", comment="ID = 0"];
0 -> 2 [ color=black,label = "he / il", comment="ID = 1"];
1 -> 3 [ color=red, fontcolor=red,label = "walk / marchons", comment="ID = 2"];
1 -> 4 [ color=black,label = "run / courons", comment="ID = 4"];
2 -> 3 [ color=black,label = "walks / marche", comment="ID = 3"];
3 -> 4 [ color=black,label = "home / rentrer", comment="ID = 5"];
3 -> 4 [ color=cyan, fontcolor=cyan,label = "alone / seul", comment="ID = 6"];
}
"""
BOTH_PATHS = ENDS + """\
3 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
3 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
2 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=cyan, fontcolor=cyan,label = "we / nous", comment="ID = 0"];
0 -> 2 [ color=blue, fontcolor=blue,label = "he / il", comment="ID = 1"];
1 -> 3 [ color=red, fontcolor=red,label = "walk / marchons", comment="ID = 2"];
1 -> 4 [ color=black,label = "run / courons", comment="ID = 4"];
2 -> 3 [ color=blue, fontcolor=blue,label = "walks / marche", comment="ID = 3"];
3 -> 4 [ color=black,label = "home / rentrer", comment="ID = 5"];
3 -> 4 [ color=blue, fontcolor=blue,label = "alone / seul", comment="ID = 6"];
}
"""
BY_LANGUAGE_SCORE = ENDS + """\
3 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
3 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "we / nous", comment="ID = 0"];
0 -> 2 [ color=black,label = "he / il", comment="ID = 1"];
1 -> 3 [ color=blue, fontcolor=blue,label = "walk / marchons", comment="ID = 2"];
1 -> 4 [ color=black,label = "run / courons", comment="ID = 4"];
2 -> 3 [ color=black,label = "walks / marche", comment="ID = 3"];
3 -> 4 [ color=blue, fontcolor=blue,label = "home / rentrer", comment="ID = 5"];
3 -> 4 [ color=black,label = "alone / seul", comment="ID = 6"];
}
"""
# The scores' own signs make the longest way the best.
WITH_ZERO_SCORE_CHANGED = ENDS + """\
3 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=red, style=filled, fillcolor=cyan];
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "we / nous", comment="ID = 0"];
0 -> 2 [ color=black,label = "he / il", comment="ID = 1"];
1 -> 3 [ color=red, fontcolor=red,label = "walk / marchons", comment="ID = 2"];
1 -> 4 [ color=blue, fontcolor=blue,label = "run / courons", comment="ID = 4"];
2 -> 3 [ color=black,label = "walks / marche", comment="ID = 3"];
3 -> 4 [ color=black,label = "home / rentrer", comment="ID = 5"];
3 -> 4 [ color=cyan, fontcolor=cyan,label = "alone / seul", comment="ID = 6"];
}
"""
BY_VALUE = functools.reduce(
    lambda text, change: text.replace(*change),
    [("we / nous", "-1"), ("he / il", "-0.5"), ("walk / marchons", "-2"),
     ("walks / marche", "-3"), ("run / courons", "-6"), ("home / rentrer", "-0.75"),
     ("alone / seul", "-2")], WITH_ZERO_SCORE_CHANGED)
BY_OUT = functools.reduce(
    lambda text, change: text.replace(*change),
    [("we / nous", "nous"), ("he / il", "il"), ("walk / marchons", "marchons"),
     ("walks / marche", "marche"), ("run / courons", "courons"), ("home / rentrer", "rentrer"),
     ("alone / seul", "seul")], WITH_ZERO_SCORE_CHANGED)
OTHER_DESCRIPTION = """\
digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
1 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
0 -> 1 [ color=black,label = "ok / bien", comment="ID = 0"];
}
"""

HE, WALK_LINK, WALKS = 1, 2, 3  # links
HOVERED_LABEL = (217, 217, 255)  # what white becomes under the boxes
HOVERED_NODE = (255, 255, 153)
SELECTED_LABEL = (255, 217, 217)
SELECTED_NODE = (153, 255, 153)


class UserStoryTest(ViewerTest):
    def test_from_opening_a_lattice_to_leaving(self):
        # The first dialog starts at home: that is where this user keeps his lattices.
        home = self.environment["HOME"]
        self.environment |= {"HOME": str(self.folder), "XDG_CONFIG_HOME": f"{home}/.config",
                             "XDG_CACHE_HOME": f"{home}/.cache",
                             "XDG_DATA_HOME": f"{home}/.local/share"}
        self.write("walk.lat", WALK)
        self.write("walk.htk", OTHER)
        self.viewer = self.start(STRICT)
        self.becomes("Quorbel", self.viewer.title)

        self.open_by_dialog()
        self.point_at_a_label()
        self.select_two_links()
        self.show_path_through_the_first()
        self.show_best_path()
        self.choose_the_other_score()
        self.change_the_sign()
        self.label_by_value()
        self.label_by_a_picked_field()
        self.zoom_out_and_in()
        self.close()
        self.open_the_sibling()

        self.viewer.choose("File", "Quit")
        self.ends(self.viewer)
        self.assertEqual("", self.viewer.output)
        self.assertEqual("", self.viewer.errors)

    def open_by_dialog(self):
        self.viewer.choose("File", "Open")
        dialog = self.viewer.dialog("Please choose a HTK file")
        file = self.viewer.wait_for("the list of files",
                                    lambda: dialog.find("table cell", "walk.lat"))
        self.viewer.focus()
        left, top, _, height = file.extents
        xdotool("mousemove", left + height // 2, top + height // 2, "click", 1)
        self.viewer.wait_for("the choice of the file", lambda: file.is_selected)
        dialog.find("push button", "Open").act()
        self.opens(self.viewer, f"{self.folder}/walk.lat", JUST_OPENED)
        self.drawing = self.viewer.drawing()

    def point_at_a_label(self):
        before = Screenshot()
        move_to(self.drawing.label(WALK_LINK).centre)
        self.label_becomes(HOVERED_LABEL, WALK_LINK, before)
        for node in (1, 3):
            self.node_becomes(HOVERED_NODE, node)
        self.point_at_nothing()
        self.label_becomes(WHITE, WALK_LINK, before)

    def select_two_links(self):
        before = Screenshot()
        double_click(self.drawing.label(WALK_LINK).centre)
        rows = [["w", ""], ["in", "walk"], ["out", "marchons"], ["pos", "verb"]]
        self.becomes(rows, self.viewer.attributes)
        xdotool("keydown", "Control_L")
        double_click(self.drawing.label(WALKS).centre)
        xdotool("keyup", "Control_L")
        self.point_at_nothing()
        for link in (WALK_LINK, WALKS):
            self.label_becomes(SELECTED_LABEL, link, before)
        for node in (1, 2):
            self.node_becomes(SELECTED_NODE, node)
        self.label_becomes(WHITE, HE, before)
        self.assertEqual(rows, self.viewer.attributes())

    def show_path_through_the_first(self):
        self.draws(self.viewer, lambda: self.viewer.press("S.P. with edge"), THROUGH_WALK)
        self.tells("Shortest Path : 6.75  ---  Shortest Path with the selected edge : 7.25",
                   "Shortest path with the selected edge : we / nous walk / marchons alone / seul ")

    def show_best_path(self):
        self.draws(self.viewer, lambda: self.viewer.choose("Display", "Shortest path"), BOTH_PATHS)
        self.tells("Shortest Path : 6.75  ---  Shortest Path with the selected edge : 7.25",
                   "Shortest path : he / il walks / marche alone / seul \n"
                   "Shortest path with the selected edge : we / nous walk / marchons alone / seul ")

    def choose_the_other_score(self):
        scores = self.scores()
        self.assertEqual([("a", True), ("l", False), ("Use 0-score", True)], self.choices(scores))
        scores.find("radio button", "l").act()
        self.becomes([("a", False), ("l", True), ("Use 0-score", True)],
                     lambda: self.choices(scores))
        self.draws(self.viewer, scores.find("push button", "OK").act, BY_LANGUAGE_SCORE)
        self.tells("Shortest Path : 3.75  ---  Shortest Path with the selected edge : 3.75",
                   "Shortest path : we / nous walk / marchons home / rentrer \n"
                   "Shortest path with the selected edge : we / nous walk / marchons "
                   "home / rentrer ")

    def change_the_sign(self):
        scores = self.scores()
        scores.find("check box", "Use 0-score").act()
        self.becomes([("a", False), ("l", True), ("Use 0-score", False)],
                     lambda: self.choices(scores))
        self.draws(self.viewer, scores.find("push button", "OK").act, WITH_ZERO_SCORE_CHANGED)
        self.tells("Shortest Path : -7  ---  Shortest Path with the selected edge : -3.75",
                   "Shortest path : we / nous run / courons \n"
                   "Shortest path with the selected edge : we / nous walk / marchons "
                   "alone / seul ")

    def label_by_value(self):
        self.draws(self.viewer,
                   lambda: self.viewer.choose("Display", "Edges", "Display edge value"), BY_VALUE)
        self.tells("Shortest Path : -7  ---  Shortest Path with the selected edge : -3.75",
                   "Shortest path : we / nous run / courons \n"
                   "Shortest path with the selected edge : we / nous walk / marchons "
                   "alone / seul ")

    def label_by_a_picked_field(self):
        self.viewer.choose("Display", "Edges", "Display the selected XML field(s)")
        self.assertEqual("You need to select at least one attribute in the tree view",
                         self.viewer.error())
        (out,) = [cell for cell in self.viewer.attribute_cells() if cell.name == "out"]
        left, top, width, height = out.extents
        xdotool("mousemove", left + width // 2, top + height // 2, "click", 1)
        self.viewer.wait_for("the choice of the field", lambda: out.is_selected)
        self.draws(self.viewer,
                   lambda: self.viewer.choose("Display", "Edges",
                                              "Display the selected XML field(s)"), BY_OUT)

    def zoom_out_and_in(self):
        runs = self.dot_runs()
        zoom = self.drawing.zoom  # that of the opening
        self.viewer.drawing(zoom)
        self.viewer.choose("Display", "Zoom out")
        smaller = self.viewer.drawing(0.8 * zoom)
        xdotool("mousemove", *smaller.node(2).centre, "click", 4)
        self.drawing = self.viewer.drawing(zoom)
        self.assertEqual(runs, self.dot_runs())

    def close(self):
        node = self.drawing.beside_number(0)
        self.viewer.press("Close")
        self.becomes("Quorbel", self.viewer.title)
        self.tells("No file opened", "")
        self.assertEqual([], self.viewer.attributes())
        self.viewer.wait_for("the empty canvas", lambda: Screenshot().shows(WHITE, *node))

    def open_the_sibling(self):
        names = [entry.name for entry in self.viewer.siblings()]
        self.assertEqual(["walk.htk", "walk.lat"], sorted(names))
        xdotool("key", "Escape")
        self.draws(self.viewer, lambda: self.viewer.open_sibling("walk.htk"), OTHER_DESCRIPTION)
        self.opens(self.viewer, f"{self.folder}/walk.htk", OTHER_DESCRIPTION)
        self.tells(f"graph : {self.folder}/walk.htk", "")

    # What the steps share

    def scores(self):
        self.viewer.choose("Display", "Scores...")
        return self.viewer.dialog("Quorbel")

    def choices(self, dialog):
        return [(button.name, button.is_checked) for button in dialog.descendants()
                if button.role in ("radio button", "check box")]

    def tells(self, status, information):
        self.assertEqual((status, information),
                         (self.viewer.status(), self.viewer.information()))

    def point_at_nothing(self):
        move_to(self.drawing.corner)

    def label_becomes(self, colour, link, before):
        """What was white in the box around a label gets that colour, but for the nodes' boxes."""
        nodes = [self.drawing.node(node) for node in range(5)]
        box = self.drawing.label(link)
        white = [place for place in box.pixels(margin=box.height // 3)
                 if before.shows(WHITE, *place)
                 and not any(node.has(*place, margin=3) for node in nodes)]
        self.assertGreater(len(white), 100)
        def look():
            now = Screenshot()
            return all(now.shows(colour, *place) for place in white)
        self.viewer.wait_for(f"a label in {colour}", look)

    def node_becomes(self, colour, node):
        place = self.drawing.beside_number(node)
        self.viewer.wait_for(f"a node in {colour}", lambda: Screenshot().shows(colour, *place))


if __name__ == "__main__":
    unittest.main()
