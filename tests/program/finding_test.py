"""Finding a word by keyboard alone, as a screen reader is told of it on the accessibility bus."""

from viewer import ViewerTest, xdotool

MEETING = """\
N=4
I=0 t=0
I=1 t=0.5
I=2 t=0.75
I=3 t=1
J=0 S=0 E=1 W=<w in='move' out='schieben'/> a=-1
J=1 S=1 E=2 W=<w in='the' out='das'/> a=-1
J=2 S=2 E=3 W=<w in='meeting' out='Treffen'/> a=-1
J=3 S=1 E=3 W=<w in='greeting' out='Gruß'/> a=-3
"""


class FindingTest(ViewerTest):
    def find_entry(self, viewer):
        return viewer.main_window().find("text", "Find in the labels")

    def test_a_word_is_found_and_told(self):
        self.write("meeting.lat", MEETING)
        viewer = self.start("meeting.lat")
        viewer.drawing()
        with self.assertRaises(LookupError):
            self.find_entry(viewer)
        viewer.key("ctrl+f")
        entry = viewer.wait_for("the find bar", lambda: self.find_entry(viewer))
        xdotool("type", "--delay", 50, "eeting")
        self.becomes("1 of 2: greeting / Gruß", lambda: entry.description)
        viewer.key("F3")
        self.becomes("2 of 2: meeting / Treffen", lambda: entry.description)
        viewer.key("shift+F3")
        self.becomes("1 of 2: greeting / Gruß", lambda: entry.description)
        self.becomes([["w", ""], ["in", "greeting"], ["out", "Gruß"]], viewer.attributes)
        found = viewer.main_window().find("label", "1 of 2: greeting / Gruß")
        self.assertTrue(found.is_showing)
        for button in ("Previous", "Next", "Close the find bar"):
            self.assertTrue(viewer.main_window().find("push button", button).is_showing)
        xdotool("type", "x")
        self.becomes("not found", lambda: entry.description)
        viewer.key("Escape")
        viewer.wait_for("the bar's end", lambda: not entry.is_showing)

        # The path through what was found, from the menus.
        viewer.key("F10", "Right", "Down", "Down", "Down", "Down", "Down", "Return")
        words = viewer.main_window().find("text", "Words of the paths")
        self.becomes("Shortest path with the selected edge : move / schieben greeting / Gruß ",
                     lambda: words.text)
        viewer.choose("File", "Quit")
        self.ends(viewer)
