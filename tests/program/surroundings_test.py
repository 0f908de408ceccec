"""The viewer among things that are not as they should be: `dot`, the sound device, folders, file
names and the language of the system."""

import os
import resource
import unittest

from lattices import (SMALL, SMALL_BY_VALUE, SMALL_DESCRIPTION, SMALL_WITH_BEST_PATH, write_sound)
from viewer import DOT_RUNS, STRICT, ViewerTest

WORKING_DOT = 'exec "$REAL_DOT" "$@"'


class SurroundingsTest(ViewerTest):
    def setUp(self):
        super().setUp()
        self.write("small.lat", SMALL)

    def open_small(self):
        viewer = self.start(STRICT, "small.lat")
        self.opens(viewer, "./small.lat", SMALL_DESCRIPTION)
        return viewer

    def leave(self, viewer):
        viewer.choose("File", "Quit")
        self.ends(viewer)

    def redraws(self, viewer):
        """Everything works: the lattice that is open is drawn again, and shown."""
        self.draws(viewer, lambda: viewer.choose("Display", "Edges", "Display edge value"),
                   SMALL_BY_VALUE)
        self.draws(viewer, lambda: viewer.press("Shortest path"),
                   SMALL_WITH_BEST_PATH.replace("to / zu", "1.5").replace("you / dir", "0.25"))
        self.assertEqual("Shortest Path : 1.75", viewer.status())
        self.assertEqual("Shortest path : to / zu you / dir \n", viewer.information())


class DotTest(SurroundingsTest):
    def test_without_dot_the_user_is_told_and_the_lattice_is_open(self):
        self.environment["PATH"] = str(self.programs)
        (self.programs / "dot").unlink()
        viewer = self.start(STRICT, "small.lat")
        text = viewer.error()
        self.assertIn('"dot" was not found', text)
        self.assertIn("graphviz", text)
        self.becomes("Quorbel - ./small.lat", viewer.title)
        self.assertEqual("graph : ./small.lat", viewer.status())
        viewer.choose("Help", "About")
        viewer.dialog("Quorbel v1.2 (10/2008)")
        viewer.key("Escape")
        self.replace_dot(WORKING_DOT)
        self.redraws(viewer)
        self.leave(viewer)

    def test_dot_that_fails_at_once_is_survived(self):
        self.survives_first("exit 1")

    def test_dot_that_is_killed_is_survived(self):
        self.survives_first("kill -KILL $$")

    def test_dot_that_writes_rubbish_is_survived(self):
        self.survives_first('echo "digraph G { graph [bb=" > graph.dot; echo rubbish > graph.png')

    def test_dot_that_stops_in_the_middle_is_survived(self):
        self.survives_first('"$REAL_DOT" "$@"; name=$3; head -c 300 "$name" > cut; '
                            'mv cut "$name"; exit 1')

    def test_when_dot_fails_later_the_old_picture_stays(self):
        viewer = self.open_small()
        self.replace_dot("exit 1")
        self.draws(viewer, lambda: viewer.choose("Display", "Edges", "Display edge value"),
                   SMALL_BY_VALUE)
        viewer.drawing()
        self.replace_dot(WORKING_DOT)
        self.draws(viewer, lambda: viewer.press("Shortest path"),
                   SMALL_WITH_BEST_PATH.replace("to / zu", "1.5").replace("you / dir", "0.25"))
        self.leave(viewer)

    def test_label_that_dot_refuses_keeps_the_old_picture_until_the_next_file(self):
        self.write("small.htk", SMALL.replace("to", "&quot;"))
        viewer = self.open_small()
        self.draws(viewer, lambda: viewer.open_sibling("small.htk"),
                   SMALL_DESCRIPTION.replace('"to / zu"', '"" / zu"'))
        self.becomes(f"Quorbel - ./small.htk", viewer.title)
        self.assertIn("syntax error", viewer.errors)
        viewer.drawing()
        self.draws(viewer, lambda: viewer.open_sibling("small.lat"), SMALL_DESCRIPTION)
        self.becomes("Quorbel - ./small.lat", viewer.title)
        self.redraws(viewer)
        self.leave(viewer)

    def survives_first(self, script):
        """The error box names the picture that could not be loaded; the next run draws."""
        self.replace_dot(script)
        viewer = self.start(STRICT, "small.lat")
        self.assertIn("graph.png", viewer.error())
        self.assertEqual(DOT_RUNS, self.dot_runs())
        self.replace_dot(WORKING_DOT)
        self.redraws(viewer)
        self.leave(viewer)


class SoundDeviceTest(SurroundingsTest):
    def test_without_sound_device_everything_else_works(self):
        path = f"{self.folder}/small.lat"
        write_sound(self.folder / "small.wav", seconds=1)
        viewer = self.start(STRICT, path, ALSOFT_DRIVERS="none")
        self.opens(viewer, path, SMALL_DESCRIPTION)
        viewer.press("Play")
        viewer.press("Stop")
        self.redraws(viewer)
        self.leave(viewer)
        self.assertEqual(
            "openAL intialization failed. You will not be able to play sound\n", viewer.output)


class FolderTest(SurroundingsTest):
    def test_lattice_that_is_deleted_stays_open_until_it_is_opened_again(self):
        self.write("small.htk", SMALL)
        viewer = self.open_small()
        (self.folder / "small.lat").unlink()
        self.redraws(viewer)
        viewer.open_sibling("small.lat")
        self.assertEqual("./small.lat : file not found or permission denied", viewer.error())
        self.becomes(("Quorbel", "No file opened"), lambda: (viewer.title(), viewer.status()))
        self.draws(viewer, lambda: viewer.open_sibling("small.htk"), SMALL_DESCRIPTION)
        self.becomes("Quorbel - ./small.htk", viewer.title)
        self.leave(viewer)

    def test_working_folder_that_cannot_be_written_is_survived(self):
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)
        viewer = self.start(STRICT, "small.lat")
        self.assertIn("graph.png", viewer.error())
        self.assertEqual({"images", "small.lat"}, {path.name for path in self.folder.iterdir()})
        self.folder.chmod(0o755)
        self.redraws(viewer)
        self.leave(viewer)

    def test_lattice_that_is_replaced_is_read_when_it_is_opened_again(self):
        viewer = self.open_small()
        self.write("small.lat", SMALL.replace("you", "YOU"))
        self.redraws(viewer)
        self.draws(viewer, lambda: viewer.open_sibling("small.lat"),
                   SMALL_DESCRIPTION.replace("you / dir", "YOU / dir"))
        self.becomes("graph : ./small.lat", viewer.status)
        self.leave(viewer)

    def test_device_without_room_for_the_description_keeps_the_old_picture(self):
        self.keeps_the_picture_with_room_for(250, status="Shortest Path : 1.75")

    def test_device_without_room_for_the_layout_is_survived(self):
        self.keeps_the_picture_with_room_for(600, error="graph.png")

    def test_device_without_room_for_the_picture_is_survived(self):
        self.keeps_the_picture_with_room_for(2000, error="graph.png")

    def keeps_the_picture_with_room_for(self, size, error=None, status="graph : ./small.lat"):
        """As on a full device, what programs write beyond that many bytes is refused."""
        self.through = ["sh", "-c", 'trap "" XFSZ && exec "$@"', "sh"]
        viewer = self.open_small()
        drawing = viewer.drawing()
        _, most = resource.prlimit(viewer.process.pid, resource.RLIMIT_FSIZE)
        resource.prlimit(viewer.process.pid, resource.RLIMIT_FSIZE, (size, most))
        viewer.press("Shortest path")
        if error:
            self.assertIn(error, viewer.error())
        self.becomes(status, viewer.status)
        self.assertTrue((self.folder / "quorbel_graph.dot").stat().st_size <= size)
        viewer.wait_for("the old picture", drawing.is_shown)
        resource.prlimit(viewer.process.pid, resource.RLIMIT_FSIZE, (most, most))
        self.draws(viewer, lambda: viewer.press("Shortest path"), SMALL_DESCRIPTION)
        self.redraws(viewer)
        self.leave(viewer)

    def test_two_viewers_may_work_in_one_folder(self):
        self.write("other.lat", "N=1\n")
        first = self.open_small()
        other = self.start(STRICT, "other.lat")
        self.becomes("Quorbel - ./other.lat", other.title)
        self.redraws(first)
        self.draws(other, lambda: other.press("Shortest path"), """\
digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
0 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
}
""")
        self.leave(first)
        self.leave(other)

    def test_only_the_work_files_are_written(self):
        viewer = self.open_small()
        self.redraws(viewer)
        self.leave(viewer)
        self.assertEqual({"images", "small.lat", "quorbel_graph.dot", "graph.dot", "graph.png"},
                         {path.name for path in self.folder.iterdir()})
        self.assertEqual(SMALL, (self.folder / "small.lat").read_text())


class FileNameTest(SurroundingsTest):
    folder_name = "it's the \"work\" folder; $HOME"

    def test_blanks(self):
        self.opens_in_odd_folder(b"two words.lat", "two words.lat")

    def test_quotes_and_other_characters_of_the_shell(self):
        self.opens_in_odd_folder(b"a 'b' \"c\" $(d) `e` & <f>.lat", "a 'b' \"c\" $(d) `e` & <f>.lat")

    def test_underscores_and_ampersands(self):
        self.opens_in_odd_folder(b"_my_own_&amp;_file.lat", "_my_own_&amp;_file.lat")

    def test_utf_8(self):
        self.opens_in_odd_folder("größe-日本.lat".encode(), "größe-日本.lat")

    def test_bytes_that_are_no_utf_8(self):
        self.opens_in_odd_folder(b"gr\xf6\xdfe.lat", "gr\N{REPLACEMENT CHARACTER}"
                                 "\N{REPLACEMENT CHARACTER}e.lat")

    def opens_in_odd_folder(self, name, shown):
        """The lattice opens as argument and from the menu of siblings."""
        self.write(name, SMALL)
        path = os.fsencode(self.folder) + b"/" + name
        viewer = self.start(STRICT, path)
        self.opens(viewer, f"{self.folder}/{shown}", SMALL_DESCRIPTION)
        viewer.press("Close")
        self.becomes("Quorbel", viewer.title)
        self.draws(viewer, lambda: viewer.open_sibling(shown), SMALL_DESCRIPTION)
        self.opens(viewer, f"{self.folder}/{shown}", SMALL_DESCRIPTION)
        self.redraws(viewer)
        self.leave(viewer)


class LanguageTest(SurroundingsTest):
    """More than a thousand nodes and scores with a fraction, which German writes 1.000 and 0,5."""

    NODES = 1001

    def test_german(self):
        self.writes_the_same_everywhere("de_DE.UTF-8")

    def test_american_english(self):
        self.writes_the_same_everywhere("en_US.UTF-8")

    def test_no_language(self):
        self.writes_the_same_everywhere("C")

    def writes_the_same_everywhere(self, language):
        links = range(self.NODES - 1)
        self.write("chain.lat", f"N={self.NODES}\n" + "".join(
            f"J={i} S={i} E={i + 1} W=<w in='{i}'/> a=-1.5\n" for i in links))
        # The lattice itself would take long to draw; that is not what this is about.
        self.replace_dot('echo "digraph { 0 -> 1 }" | "$REAL_DOT" "$1" "$2" "$3"')
        viewer = self.start(STRICT, "chain.lat", LANG=language, LANGUAGE=language)
        self.opens(viewer, "./chain.lat", self.expected(str, "color=black", ""))
        self.draws(viewer, lambda: viewer.choose("Display", "Edges", "Display edge value"),
                   self.expected(lambda i: "1.5", "color=black", ""))
        inner = "".join(f"{i} [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];\n"
                        for i in reversed(links[1:]))
        self.draws(viewer, lambda: viewer.press("Shortest path"),
                   self.expected(lambda i: "1.5", "color=blue, fontcolor=blue", inner))
        self.assertEqual("Shortest Path : 1500", viewer.status())
        self.leave(viewer)

    def expected(self, label, colour, path):
        last = self.NODES - 1
        return (f"digraph G {{\nrankdir=LR;\n"
                f"0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n"
                f"{last} [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];\n"
                + path
                + "".join(f'{i} -> {i + 1} [ {colour},label = "{label(i)}", comment="ID = {i}"];\n'
                          for i in range(last)) + "}\n")


if __name__ == "__main__":
    unittest.main()
