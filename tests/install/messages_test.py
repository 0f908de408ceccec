"""The tables of the manual name every message that the program has, and no other.

Needs QUORBEL_SOURCE, the folder of the sources.
"""

import os
import pathlib
import re
import unittest

SOURCE = pathlib.Path(os.environ["QUORBEL_SOURCE"])
PLACEHOLDER = r"\b(?:PATH|NUMBER|TEXT|OPTION|NAMES?)\b"
# Where a message leaves the program: everything up to the end of the statement is part of it.
SAYS = re.compile(r"show_error\(\*this, (.*?)\);|std::c(?:out|err) <<(.*?);|"
                  r"kDotMissing =(.*?);|std::logic_error\((.*?)\)|"
                  r"return (?:m_Path \+ )?(\"[^;]* [^;]*?);", re.DOTALL)
VIEWER = ("app", "dialogs", "lattice", "layout", "sound")  # folders of its sources
OF_OTHERS = ("cannot open display", "basic_string::substr")  # toolkit, standard library


def manual_messages():
    """The messages in the tables, as lists of their fixed parts."""
    text = (SOURCE / "docs" / "manual.md").read_text("utf-8")
    section = text.partition("## What it says")[2].partition("\n## ")[0]
    cells = [row.split("|")[1] for row in section.splitlines() if row.startswith("| ")]
    messages = [quoted for cell in cells for quoted in re.findall(r"`([^`]*)`", cell)
                if "a text that names" not in cell]
    return [message for message in messages if message not in OF_OTHERS]


def parts(message):
    message = message.removeprefix("quorbel: ")
    return [part.strip(" ,:") for part in re.split(PLACEHOLDER, message) if part.strip(" ,:")]


def literals(code):
    """The texts in a piece of C++, with adjacent ones joined."""
    joined = re.sub(r'"\s*\n\s*"', "", code)
    return [text.replace('\\"', '"') for text in re.findall(r'"((?:[^"\\]|\\.)*)"', joined)]


def viewer_messages():
    """The texts that the viewer's sources say to the user."""
    said = []
    for path in sorted(path for folder in VIEWER for path in (SOURCE / "src" / folder).glob("*.cpp")):
        code = re.sub(r"//.*", "", path.read_text("utf-8"))
        for found in SAYS.finditer(code):
            said += literals(next(group for group in found.groups() if group))
    return {text.strip(" :") for text in said if " " in text.strip()}


def launcher_messages():
    """The same of the launcher, without what is put in for variables."""
    script = (SOURCE / "src" / "launcher" / "quorbel.in").read_text("utf-8")
    said = re.findall(r'\b(?:say|stop \d) "((?:[^"]|"\$[^"]*")*?)"(?=\s)', script)
    fixed = [re.split(r"\$\(.*\)|\$\w+|\$\$", text) for text in said]
    return {part.strip(" :") for text in fixed for part in text if part.strip(" :")}


class MessagesTest(unittest.TestCase):
    maxDiff = None

    def test_every_message_of_the_manual_is_in_the_code(self):
        code = "".join(re.sub(r'"\s*\n\s*"', "", path.read_text("utf-8")).replace('\\"', '"')
                       for path in (SOURCE / "src").rglob("*") if path.suffix in (".cpp", ".in"))
        messages = manual_messages()
        self.assertGreaterEqual(len(messages), 25)
        self.assertEqual([], [part for message in messages for part in parts(message)
                              if part not in code])

    def test_every_message_of_the_viewer_is_in_the_manual(self):
        listed = [part for message in manual_messages() for part in parts(message)]
        said = viewer_messages()
        self.assertGreaterEqual(len(said), 14, said)
        self.assertEqual(set(), {text for text in said
                                 if text.removeprefix("quorbel: ") not in listed})

    def test_every_message_of_the_launcher_is_in_the_manual(self):
        listed = " ".join(part for message in manual_messages() for part in parts(message))
        said = launcher_messages()
        self.assertGreaterEqual(len(said), 9, said)
        self.assertEqual(set(), {text for text in said if text not in listed})


if __name__ == "__main__":
    unittest.main()
