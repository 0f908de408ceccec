"""The installed files for the desktop and the reader, looked at by the programs they are for.

Needs QUORBEL_STAGING, the folder that the program was installed to, and QUORBEL_SOURCE.
"""

import configparser
import gzip
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as xml

STAGING = pathlib.Path(os.environ["QUORBEL_STAGING"])
SOURCE = pathlib.Path(os.environ["QUORBEL_SOURCE"])
SHARE = STAGING / "share"
MIME_FILE = SHARE / "mime" / "packages" / "quorbel.xml"
METAINFO = SHARE / "metainfo" / "quorbel.metainfo.xml"
MIME_TYPE = "text/x-htk-lattice"
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)


def run(*command, **environment):
    """Runs a program, whose messages are the test's when it fails, and returns what it prints."""
    done = subprocess.run(command, capture_output=True, text=True, env=os.environ | environment)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.stdout}{done.stderr}")
    return done.stdout + done.stderr


def desktop_entry():
    parser = configparser.ConfigParser(interpolation=None, delimiters=["="])
    parser.optionxform = str
    parser.read(SHARE / "applications" / "quorbel.desktop", "utf-8")
    return parser["Desktop Entry"]


class FilesTest(unittest.TestCase):
    maxDiff = None

    def test_all_are_there_and_nothing_else(self):
        found = {str(path.relative_to(STAGING)) for path in STAGING.rglob("*") if path.is_file()}
        examples = [path.name for path in (SOURCE / "examples").iterdir() if path.suffix != ".py"]
        expected = {
            "bin/quorbel", "bin/quorbel-lattice", "lib/quorbel/quorbel", "lib/quorbel/dot/dot",
            "share/applications/quorbel.desktop", "share/man/man1/quorbel.1.gz",
            "share/man/man1/quorbel-lattice.1.gz", "share/doc/quorbel/manual.md",
            "share/metainfo/quorbel.metainfo.xml", "share/mime/packages/quorbel.xml",
            "share/icons/hicolor/scalable/apps/quorbel.svg",
            *(f"share/icons/hicolor/{size}x{size}/apps/quorbel.png" for size in ICON_SIZES),
            *(f"share/quorbel/images/{name}.png" for name in ("logo_quor", "Brellum", "about")),
            *(f"share/doc/quorbel/examples/{name}" for name in examples)}
        self.assertEqual(sorted(expected), sorted(found))

    def test_only_programs_are_executable(self):
        executable = {str(path.relative_to(STAGING)) for path in STAGING.rglob("*")
                      if path.is_file() and path.stat().st_mode & 0o111}
        self.assertEqual({"bin/quorbel", "bin/quorbel-lattice", "lib/quorbel/quorbel",
                          "lib/quorbel/dot/dot"}, executable)

    def test_none_names_the_folder_it_was_built_in(self):
        programs = (STAGING / "bin" / "quorbel-lattice", STAGING / "lib" / "quorbel" / "quorbel",
                    STAGING / "lib" / "quorbel" / "dot" / "dot")
        files = [path for path in STAGING.rglob("*") if path.is_file() and path not in programs]
        self.assertGreater(len(files), 20)
        for path in files:
            self.assertNotIn(os.fsencode(SOURCE), path.read_bytes(), path)


class DesktopTest(unittest.TestCase):
    maxDiff = None

    def test_desktop_entry_is_valid(self):
        self.assertEqual("", run("desktop-file-validate",
                                 SHARE / "applications" / "quorbel.desktop"))

    def test_desktop_entry_starts_the_command_on_a_lattice(self):
        entry = desktop_entry()
        self.assertEqual(("Application", "quorbel --import %f", "quorbel",
                          f"{MIME_TYPE};application/x-htk-lattice-gzip;text/x-kaldi-lattice;"
                          "application/x-openfst;", "false"),
                         tuple(entry[key] for key in ("Type", "Exec", "Icon", "MimeType",
                                                      "Terminal")))

    def test_metainfo_is_valid(self):
        done = subprocess.run(("appstreamcli", "validate", "--no-net", METAINFO), text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:  # the program has no page on the net; newer versions want one
            self.assertEqual(["url-homepage-missing"],
                             re.findall(r"(?m)^[EW]: \S+ (\S+)$", done.stdout), done.stdout)
        root = xml.parse(METAINFO).getroot()
        self.assertEqual("quorbel.desktop", root.findtext("launchable"))
        self.assertEqual("quorbel", root.findtext("provides/binary"))
        self.assertEqual(MIME_TYPE, root.findtext("provides/mediatype"))
        version = re.search(r"VERSION ([\d.]+)", (SOURCE / "CMakeLists.txt").read_text()
                            .partition("project(")[2])[1]
        self.assertEqual(version, root.find("releases/release").get("version"))

    def test_icons_have_the_sizes_of_their_folders(self):
        for size in ICON_SIZES:
            picture = (SHARE / f"icons/hicolor/{size}x{size}/apps/quorbel.png").read_bytes()
            self.assertEqual(b"\x89PNG\r\n\x1a\n", picture[:8])
            self.assertEqual((size, size), struct.unpack(">II", picture[16:24]))
        drawing = xml.parse(SHARE / "icons/hicolor/scalable/apps/quorbel.svg").getroot()
        self.assertEqual("{http://www.w3.org/2000/svg}svg", drawing.tag)


class FileTypeTest(unittest.TestCase):
    """The type of files, as the desktop tells it with only this type and the system's known."""

    def setUp(self):
        run("xmllint", "--noout", MIME_FILE)
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        packages = self.folder / "mime" / "packages"
        packages.mkdir(parents=True)
        shutil.copy(MIME_FILE, packages)
        said = run("update-mime-database", self.folder / "mime", XDG_DATA_HOME=str(self.folder))
        self.assertNotRegex(said, "(?i)error|fail|unknown")

    def type_of(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        said = run("gio", "info", "-a", "standard::content-type", path,
                   XDG_DATA_HOME=str(self.folder))
        return re.search(r"standard::content-type: (\S+)", said)[1]

    def test_names_of_lattices(self):
        for name in ("a.lat", "a.htk", "a.1.lat", "a.slf"):
            self.assertEqual(MIME_TYPE, self.type_of(name, b"anything\n"))
        others = {"a.lat.gz": "application/x-htk-lattice-gzip",
                  "a.htk.gz": "application/x-htk-lattice-gzip",
                  "a.slf.gz": "application/x-htk-lattice-gzip",
                  "a.kaldi.txt": "text/x-kaldi-lattice", "a.fst": "application/x-openfst"}
        for name, file_type in others.items():
            self.assertEqual(file_type, self.type_of(name, b"anything\n"))
        self.assertEqual({MIME_TYPE, *others.values()},
                         set(desktop_entry()["MimeType"].rstrip(";").split(";")))
        self.assertNotEqual(MIME_TYPE, self.type_of("a.slat", b"anything\n"))

    def test_examples_are_told_by_their_content(self):
        examples = [path for path in (SOURCE / "examples").iterdir()
                    if path.suffix in (".lat", ".htk")]
        self.assertGreaterEqual(len(examples), 6)
        for example in examples:
            self.assertEqual(MIME_TYPE, self.type_of("unnamed", example.read_bytes()), example)

    def test_other_shapes_are_told_by_their_content(self):
        for content in (b"N=1\nI=0\n", b"N=2 L=1\nJ=0 S=0 E=1\n", b"NODES=1 LINKS=0\r\nI=0\r\n",
                        b"# Header (made by a recogniser)\n# more\nVERSION=1.0\nNODES=2\nI=0 t=0\n",
                        b"VERSION=1.0\nUTTERANCE=x\nlmscale=1\nN=2   L=1\n# nodes\nI=0\n"):
            self.assertEqual(MIME_TYPE, self.type_of("unnamed", content), content)

    def test_other_files_are_not_taken_for_lattices(self):
        scripts = (SOURCE / "scripts" / "test").read_bytes(), b"#!/bin/sh\nN=3\nI=0\n"
        for content in (b"", b"text\n", b"N=3\n", b"VERSION=1.0\n", b"I=0\nJ=1\n", b"AN=3\nI=0\n",
                        b"# N=3\n# I=0\n", *scripts, (SOURCE / "README.md").read_bytes(),
                        (SOURCE / "images" / "logo_quor.png").read_bytes()):
            self.assertNotEqual(MIME_TYPE, self.type_of("unnamed", content), content[:60])


def manual(page):
    return gzip.decompress((SHARE / f"man/man1/{page}.1.gz").read_bytes()).decode()


class ManualTest(unittest.TestCase):
    def setUp(self):
        self.source = manual("quorbel")

    def test_has_no_errors(self):
        for name in ("quorbel", "quorbel-lattice"):
            with tempfile.NamedTemporaryFile("w", suffix=".1") as page:
                page.write(manual(name))
                page.flush()
                said = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page.name,
                           LC_ALL="C.UTF-8")
            self.assertNotRegex(said, r"(?m)^\S*(?:troff|man|grotty).*:")

    def test_names_every_example(self):
        examples = SHARE / "doc" / "quorbel" / "examples"
        self.assertIn("/usr/share/doc/quorbel/examples", self.source)
        self.assertGreaterEqual(len(list(examples.iterdir())), 8)
        for example in examples.iterdir():
            self.assertIn(example.name, self.source)

    def test_names_the_manual_where_it_is_installed(self):
        path = "share/doc/quorbel/manual.md"
        self.assertTrue((STAGING / path).is_file())
        for name in ("quorbel", "quorbel-lattice"):
            self.assertIn(f"/usr/{path}", manual(name).partition("SEE ALSO")[2])

    def test_names_every_option_of_the_help(self):
        shown = run(STAGING / "bin" / "quorbel", "--help")
        plain = self.source.replace("\\-", "-")
        options = set(re.findall(r"--[a-z-]+", shown))
        self.assertGreaterEqual(len(options), 8)
        self.assertEqual([], sorted(option for option in options if option not in plain))

    def test_of_the_companion_names_every_option_of_its_help(self):
        plain = manual("quorbel-lattice").replace("\\-", "-")
        for command in ("import", "prune", "best", "info", "draw"):
            options = re.findall(r"--[a-z-]+", run(STAGING / "bin" / "quorbel-lattice", command,
                                                   "--help"))
            self.assertEqual([], sorted(option for option in options if option not in plain))


if __name__ == "__main__":
    unittest.main()
