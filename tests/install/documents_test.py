"""What the documents link to and name is there, and programs print what is said.

Needs QUORBEL_SOURCE, the folder of the sources, and QUORBEL_STAGING, the folder that the program was
installed to.
"""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["QUORBEL_SOURCE"])
PROGRAMS = pathlib.Path(os.environ["QUORBEL_STAGING"]) / "bin"
DOCUMENTS = ("README.md", "CONTRIBUTING.md", "CHANGELOG.md", "docs/manual.md", "examples/README.md")
FOLDERS = "src|tests|scripts|docs|examples|images|desktop|packaging"


def text_of(document):
    return (SOURCE / document).read_text("utf-8")


def headings(document):
    return re.findall(r"(?m)^##+ (.+)$", text_of(document))


def anchor(heading):
    """The name by which a heading is linked to."""
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


class DocumentsTest(unittest.TestCase):
    maxDiff = None

    def test_every_relative_link_leads_somewhere(self):
        links = [(document, *link.partition("#")[::2]) for document in DOCUMENTS
                 for link in re.findall(r"\]\(([^)]+)\)", text_of(document)) if "://" not in link]
        self.assertGreaterEqual(len(links), 15)
        for document, file, part in links:
            target = (SOURCE / document).parent / file if file else SOURCE / document
            self.assertTrue(target.exists(), (document, file))
            if part:
                self.assertIn(part, [anchor(heading) for heading in headings(target)], document)

    def test_every_file_that_is_named_exists(self):
        names = [(document, name) for document in DOCUMENTS
                 for name in re.findall(rf"(?<![\w/.-])(?:{FOLDERS})/[\w./-]*\w", text_of(document))]
        self.assertGreaterEqual(len(names), 40)
        self.assertEqual([], [found for found in names if not (SOURCE / found[1]).exists()])

    def test_contents_of_the_manual_are_its_headings(self):
        contents = text_of("docs/manual.md").partition("\n## ")[0]
        self.assertEqual([(heading, anchor(heading)) for heading in headings("docs/manual.md")],
                         re.findall(r"(?m)^- \[(.+)\]\(#(.+)\)$", contents))

    def test_manual_links_only_within_itself(self):
        links = re.findall(r"\]\(([^)]+)\)", text_of("docs/manual.md"))
        self.assertEqual([], [link for link in links if not link.startswith("#")])

    def test_commands_of_the_readme_print_what_stands_below_them(self):
        commands = re.findall(r"(?m)^    \$ (quorbel-lattice (?:.*\\\n)*.*)\n((?:    [^$\n].*\n)*)",
                              text_of("README.md"))
        self.assertGreaterEqual(len(commands), 4)
        self.assertEqual(3, sum(bool(output) for _, output in commands))
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "examples").symlink_to(SOURCE / "examples")
            for command, output in commands:
                done = subprocess.run(f"{PROGRAMS}/{command}", shell=True, cwd=folder, check=True,
                                      stdout=subprocess.PIPE, text=True)
                expected = re.sub("(?m)^    ", "", output)
                shown, dots, _ = expected.partition("...\n")
                self.assertEqual(expected, done.stdout[:len(shown)] + dots if dots else done.stdout,
                                 command)

    def test_archive_of_the_manual_becomes_what_stands_below_it(self):
        section = text_of("docs/manual.md").partition("\n## Lattices of Kaldi")[2].partition("\n## ")[0]
        archive, command, imported = (block.replace("\n    ", "\n").strip() + "\n" for block in
                                      re.findall(r"(?m)((?:^    .*\n|^\n(?=    ))+)", section))
        words = re.findall(r"`(\S+ \d+)`", section.partition("`words.txt` (")[2].partition(")")[0])
        self.assertEqual(4, len(words))
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "lat.txt").write_text(archive.replace("...\n", ""), "utf-8")
            (pathlib.Path(folder) / "words.txt").write_text("\n".join(words), "utf-8")
            subprocess.run(f"{PROGRAMS}/{command}", shell=True, cwd=folder, check=True)
            self.assertEqual(imported, (pathlib.Path(folder) / "talk.lat").read_text("utf-8"))


if __name__ == "__main__":
    unittest.main()
